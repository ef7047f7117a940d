#pragma once

#include "cards/Drag.h"
#include "cards/SpelBord.h"

#include <cstddef>
#include <string>
#include <vector>

// What a game knows about searching its own moves, offered to a solver beside its rules.
// Every part has a default that is right for any game, only slower.
class SokKunskap {
public:
    virtual ~SokKunskap() = default;

    // Appends what tells this table apart in a search: two tables with the same key must be
    // won alike, and either have the same moves to the same (keyed) tables, or never be
    // reached one from the other (a search takes a key it meets again for a table it has
    // searched through; one still being searched above it would hide a win). The default
    // is every card with its slot.
    virtual void Nyckel(const SpelBord& bord, std::string& nyckel) const;
    // Lists into `dragen` (emptied first) the same moves as the rules' LagligaDrag, in any
    // order, without a new list; false (the default) where the game has no such listing and
    // the rules' own is used. A move may be left out only when one listed leads to a table
    // with the same key.
    virtual bool ListaDrag(const SpelBord& bord, std::vector<Drag>& dragen) const;
    // Puts the moves in the order to try them, most promising first. A move may be dropped
    // only when another one kept leads to a table with the same key, or when the game proves
    // that a win, if there is one, can always begin with one of the moves kept.
    virtual void Ordna(const SpelBord& bord, std::vector<Drag>& dragen) const;
    // A move of `dragen` that can be made at once without losing a win: the table after it
    // can be won whenever this one can. Its index, or -1 (the default: none).
    virtual int SakertDrag(const SpelBord& bord, const std::vector<Drag>& dragen) const;
    // Whether this table can certainly not be won, whatever is played from it (the default:
    // not known). The search then tries none of its moves.
    virtual bool Hopplos(const SpelBord& bord) const;
    // A move that is most likely as good as any, for a quick first search that makes it at
    // once; a verdict that a deal cannot be won never rests on it. Its index, or -1.
    virtual int TroligtDrag(const SpelBord& bord, const std::vector<Drag>& dragen) const;
    // Leaves out, for that quick pass alone, moves that seldom lead anywhere.
    virtual void GallraHastigt(const SpelBord& bord, std::vector<Drag>& dragen) const;
    // How far the table seems from won, lower nearer: a search then tries first the moves
    // to the nearest tables, the game's order (Ordna) among equals. -1 (the default): the
    // game has no such measure.
    virtual int Avstand(const SpelBord& bord) const;
    // Avstand of the table after each of `dragen`, into `avstand` (emptied first), without
    // making them; false (the default) where the game cannot tell, and a search makes each
    // move, measures and takes it back.
    virtual bool AvstandEfter(const SpelBord& bord, const std::vector<Drag>& dragen,
                              std::vector<int>& avstand) const;
    // Whether the game offers such moves at all (a search then starts with a quick pass).
    virtual bool HarTroligaDrag() const { return false; }
    // How many orders of its moves that quick pass tries side by side, taking turns (the
    // default: one). Each order but the first draws lots among moves the measure (Avstand)
    // finds about as near; with fixed seeds, so a deal gets the same answer every time.
    virtual int Ordningar(const SpelBord& bord) const;
    // The share, in percent, of a search's limits (tables and time) the quick pass may take
    // before the complete search has the rest (the default: half).
    virtual int SnabbAndel() const { return 50; }
    // How many turns of a quick order the complete search takes each round when it takes
    // its turns among the quick pass's orders from the start, for the whole of the limits;
    // 0 (the default): it has what the quick pass leaves. For a game whose complete search
    // wins at once some deals that the quick orders find late or never.
    virtual int HelaITur() const { return 0; }
    // Whether the rules' Angra takes `drag` back to exactly this table (the undo count
    // aside); when not, a search keeps a copy to go back to. The default trusts card and run
    // moves and copies for the game's button.
    virtual bool TasTillbaka(const SpelBord& bord, const Drag& drag) const;
    // Whether a search may make the move at all: a new attempt shuffles by chance, so its
    // outcome is not known in advance.
    virtual bool Sokbart(const Drag& drag) const;
    // Whether `drag`, made right after `fore`, always leads back to the table before `fore`
    // (the default: never said). A search has seen that table, so it passes such a move by
    // without making it.
    virtual bool GarTillbaka(const Drag& fore, const Drag& drag) const;

    // What the game's button or stock does, in words.
    virtual std::string KnappNamn() const;
};

// The defaults alone.
const SokKunskap& StandardKunskap();

// The one object of a game's knowledge K, made when first asked for.
template <typename K> const SokKunskap& KunskapAv() {
    static const K kunskap;
    return kunskap;
}

// The index of the first of `dragen` that passes `test`, or -1 when none does: a SakertDrag
// or TroligtDrag that is one test of each move.
template <typename Test> int ForstaDragSom(const std::vector<Drag>& dragen, Test test) {
    for (std::size_t i = 0; i < dragen.size(); ++i)
        if (test(dragen[i]))
            return static_cast<int>(i);
    return -1;
}

// A card as one byte 1..52 (suit · 13 + value); 0 for an empty slot.
inline char KortKod(const Lucka& lucka) {
    if (lucka.Tom())
        return 0;
    const Kort& k = lucka.GeKort();
    return static_cast<char>(13 * k.KortFarg() + k.KortValor());
}
// The default key: for each filled slot, the empty slots skipped since the last one (255
// and more in several bytes) and its card.
void KortOchPlatser(const std::vector<Lucka>& luckor, int forsta, int sista, std::string& nyckel);
