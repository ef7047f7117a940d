#include "games/IdiotenRegler.h"

#include "cards/Luckor.h"
#include "games/LekRegler.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string>

namespace IdiotenRegler {

namespace {

bool ArKung(const Lucka& lucka) {
    return !lucka.Tom() && lucka.GeKort().KortValor() == 13;
}

bool FoljerPa(const Lucka& lucka, const Lucka& vanster) {
    return !lucka.Tom() && !vanster.Tom() &&
           lucka.GeKort().KortFarg() == vanster.GeKort().KortFarg() &&
           lucka.GeKort().KortValor() == vanster.GeKort().KortValor() + 1;
}

} // namespace

Utlagg RaknaUtLuckor(std::vector<Lucka>& luckor, BRect bounds) {
    const int g = kMellanrum;
    Utlagg u;
    u.h = std::max((static_cast<int>(bounds.Height()) - 40 - 5 * g) / 5, kMinstaHojd);
    u.w = std::max((static_cast<int>(bounds.Width()) - 13 * g) / 13, kMinstaBredd);
    const int w = u.w;
    const int h = u.h;

    for (int r = 0; r < kRader; ++r)
        for (int c = 0; c < kKolumner; ++c)
            luckor[kKolumner * r + c].NyPos(
                HeltalsRuta((w + g) * c, (h + g) * r + g, (w + g) * c + w, (h + g) * r + h + g));

    // The aces overlap: each lies half a card less five pixels right of the one before.
    const int essTopp = (h + g) * 4 + g;
    for (int i = 0; i < 4; ++i)
        luckor[kForstaEssPlats + i].NyPos(
            HeltalsRuta((w / 2 + g) * i, essTopp, (w / 2 + g) * i + w, essTopp + h));

    for (int j = 0; j < kSistaLekPlats - kForstaLekPlats + 1; ++j)
        luckor[kForstaLekPlats + j].NyPos(
            HeltalsRuta(3 * w + g, essTopp + j, 4 * w + g, essTopp + h + j));

    const float hoger = luckor[50].GePos().right;
    u.knapp =
        BRect(hoger - 140, static_cast<float>(4 * h + 40), hoger, static_cast<float>(4 * h + 80));
    return u;
}

BRect RaknarRuta(const std::vector<Lucka>& luckor) {
    BRect under = luckor[46].GePos();
    return BRect(under.right - 200, under.bottom + 20, under.right, under.bottom + 60);
}

bool FarLaggas(const std::vector<Lucka>& luckor, int till, const Kort& kort) {
    if (!IRutnatet(till) || !luckor[till].Tom())
        return false;
    if (ForstaKolumnen(till))
        return kort.KortValor() == 2;
    const Lucka& vanster = luckor[till - 1];
    return !vanster.Tom() && kort.KortFarg() == vanster.GeKort().KortFarg() &&
           kort.KortValor() == vanster.GeKort().KortValor() + 1;
}

int KortUnder(const std::vector<Lucka>& luckor, BPoint where) {
    for (int i = kForstaRutan; i <= kSistaRutan; ++i)
        if (!luckor[i].Tom() && luckor[i].GePos().Contains(where))
            return i;
    return -1;
}

int KlickMal(const std::vector<Lucka>& luckor, const Kort& kort) {
    for (int t = kForstaRutan; t <= kSistaRutan; ++t)
        if (FarLaggas(luckor, t, kort))
            return t;
    return -1;
}

int DropMal(const std::vector<Lucka>& luckor, const Kort& kort, BPoint where) {
    for (int t = kForstaRutan; t <= kSistaRutan; ++t)
        if (luckor[t].Tom() && luckor[t].GePos().Contains(where) && FarLaggas(luckor, t, kort))
            return t;
    return -1;
}

int RaknaKlaraKort(std::vector<Lucka>& luckor) {
    // A gap right of a king can never be filled, nor can the gaps that follow it, so
    // none of them is outlined.
    for (int i = kForstaRutan; i <= kSistaRutan; ++i) {
        Lucka& lucka = luckor[i];
        lucka.NyOkPos(false);
        if (!lucka.Tom() || ForstaKolumnen(i))
            lucka.NyKantLinje(true);
        else if (ArKung(luckor[i - 1]))
            lucka.NyKantLinje(false);
        else
            lucka.NyKantLinje(luckor[i - 1].GeKantLinje());
    }

    // A row counts from its left end: the two, then each card that follows on in suit.
    // The followers count even when the row does not start with a two, as the count always
    // did; such cards also stay put at a new attempt.
    int klara = 0;
    for (int s = 0; s < kRader * kKolumner; s += kKolumner) {
        if (!luckor[s].Tom() && luckor[s].GeKort().KortValor() == 2) {
            luckor[s].NyOkPos(true);
            ++klara;
        }
        for (int k = 1; k <= 11; ++k) {
            if (!FoljerPa(luckor[s + k], luckor[s + k - 1]))
                break;
            luckor[s + k].NyOkPos(true);
            ++klara;
        }
    }
    return klara;
}

int LekensTopp(const std::vector<Lucka>& luckor) {
    return LekTopp(luckor, kForstaLekPlats, kSistaLekPlats);
}

void Skapa(Stallning& bord) {
    bord.luckor.assign(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
    // An empty ace place is no place to play to, so it shows nothing.
    for (int i = kForstaEssPlats; i <= kSistaEssPlats; ++i)
        bord.luckor[i].NyKantLinje(false);
}

void LaggUtLeken(Stallning& bord) {
    // The first card off the deck lies at the bottom of the stock.
    LekRegler::LaggLeken(bord, kForstaLekPlats);
    bord.forsok = 1;
    bord.klaraKort = 0;
}

void DelaUt(Stallning& bord, Flygledare* flyg) {
    std::vector<Lucka>& luckor = bord.luckor;
    int topp = LekensTopp(luckor);
    for (int t = kForstaRutan; t <= kSistaRutan && topp >= kForstaLekPlats; ++t) {
        if (!luckor[t].Tom())
            continue;
        if (flyg)
            flyg->FlygKort(topp, t, kGivSteg);
        Flytta(luckor, topp, t);
        --topp;
    }

    int essPlats = kForstaEssPlats;
    for (int t = kForstaRutan; t <= kSistaRutan && essPlats <= kSistaEssPlats; ++t) {
        if (luckor[t].Tom() || luckor[t].GeKort().KortValor() != 1)
            continue;
        Flytta(luckor, t, essPlats);
        KlarSpel(bord);
        if (flyg)
            flyg->FlygKort(t, essPlats, kEssSteg);
        ++essPlats;
    }
    KlarSpel(bord);
}

void NyttForsok(Stallning& bord, Flygledare* flyg) {
    bord.undoLista.clear();
    KlarSpel(bord);
    // Everything not yet in place goes back, the aces with it.
    for (int i = kForstaRutan; i <= kSistaEssPlats; ++i) {
        Lucka& lucka = bord.luckor[i];
        if (lucka.Tom() || lucka.GeOkPos())
            continue;
        if (flyg)
            flyg->FlygKort(i, kForstaLekPlats, kSamlaSteg);
        bord.kortlek.TaInKort(lucka.GeKort());
        lucka.TaBortKort();
    }
    bord.kortlek.Blanda();
    for (int i = kForstaLekPlats; bord.kortlek.AntalKortKvar() > 0; ++i)
        bord.luckor[i].TaEmotKort(bord.kortlek.GeKort());
    DelaUt(bord, flyg);
    ++bord.forsok;
}

std::vector<Drag> LagligaDrag(const Stallning& bord) {
    const std::vector<Lucka>& luckor = bord.luckor;
    // Where each card of the grid lies, so that each gap asks only for the cards it takes.
    std::array<int, 52> var;
    var.fill(-1);
    for (int i = kForstaRutan; i <= kSistaRutan; ++i)
        if (!luckor[i].Tom())
            var[13 * luckor[i].GeKort().KortFarg() + luckor[i].GeKort().KortValor() - 1] = i;
    std::vector<Drag> drag;
    for (int till = kForstaRutan; till <= kSistaRutan; ++till) {
        if (!luckor[till].Tom())
            continue;
        for (int farg = 0; farg < 4; ++farg)
            for (int valor = 2; valor <= 13; ++valor) {
                int fran = var[13 * farg + valor - 1];
                if (fran >= 0 && FarLaggas(luckor, till, luckor[fran].GeKort()))
                    drag.push_back(KortDrag(fran, till));
            }
    }
    std::sort(drag.begin(), drag.end(), [](const Drag& a, const Drag& b) {
        return a.fran != b.fran ? a.fran < b.fran : a.till < b.till;
    });
    if (bord.forsok < kSistaGiv)
        drag.push_back(NyttForsokDrag());
    return drag;
}

void GorDrag(Stallning& bord, const Drag& drag, Flygledare* flyg) {
    if (drag.slag == DragSlag::NyttForsok) {
        NyttForsok(bord, flyg);
        return;
    }
    if (flyg)
        flyg->FlygKort(drag.fran, drag.till, kFlyttSteg);
    Flytta(bord.luckor, drag.fran, drag.till);
    bord.undoLista.emplace_back(drag.fran, drag.till);
    KlarSpel(bord);
}

int Angra(Stallning& bord, Flygledare* flyg) {
    if (bord.undoLista.empty())
        return 0;
    auto [kalla, till] = bord.undoLista.back();
    if (flyg)
        flyg->FlygKort(till, kalla, kAngraSteg);
    ++bord.antalUndo;
    Flytta(bord.luckor, till, kalla);
    bord.undoLista.pop_back();
    KlarSpel(bord);
    return static_cast<int>(bord.undoLista.size());
}

bool KlarSpel(Stallning& bord) {
    bord.klaraKort = RaknaKlaraKort(bord.luckor);
    return Vunnet(bord.klaraKort);
}

HiscoreResultat Resultat(const Stallning& bord) {
    return HiscoreResultat{bord.klaraKort, bord.forsok};
}

namespace {

// Where each card of the grid lies, by its code 13·suit + value − 1; -1 when not there.
std::array<int, 52> KortensPlatser(const std::vector<Lucka>& luckor) {
    std::array<int, 52> var;
    var.fill(-1);
    for (int i = kForstaRutan; i <= kSistaRutan; ++i)
        if (!luckor[i].Tom())
            var[static_cast<size_t>(13 * luckor[i].GeKort().KortFarg() +
                                    luckor[i].GeKort().KortValor() - 1)] = i;
    return var;
}

constexpr std::uint64_t Bit(int ruta) {
    return std::uint64_t{1} << ruta;
}
constexpr std::uint64_t kHelaRutnatet = (std::uint64_t{1} << 52) - 1;
constexpr std::uint64_t kVanstraKanten = Bit(0) | Bit(13) | Bit(26) | Bit(39);

// The grid as card codes 13·suit + value − 1: each slot's card (-1 for a gap) and each
// card's slot (-1 when it is not in the grid).
struct Rutor {
    std::array<int, 52> kort;
    std::array<int, 52> var;
    std::array<std::uint64_t, 52> egna{}; // each card's slot as a bit; 0 when not there
    std::uint64_t fyllda = 0;             // the slots that hold a card
    bool essIRutnatet = false;
};

// The grid's card codes, one byte a slot (KortKod: 0 for a gap): what tells two tables
// apart to the analysis.
using Koder = std::array<char, 52>;

Koder LasKoder(const std::vector<Lucka>& luckor) {
    Koder k;
    for (int i = kForstaRutan; i <= kSistaRutan; ++i)
        k[static_cast<size_t>(i)] = KortKod(luckor[i]);
    return k;
}

Rutor LasRutor(const Koder& koder) {
    Rutor r;
    r.var.fill(-1);
    for (int i = kForstaRutan; i <= kSistaRutan; ++i) {
        const int kod = koder[static_cast<size_t>(i)] - 1;
        r.kort[static_cast<size_t>(i)] = kod;
        if (kod < 0)
            continue;
        r.fyllda |= std::uint64_t{1} << i;
        r.egna[static_cast<size_t>(kod)] = std::uint64_t{1} << i;
        r.var[static_cast<size_t>(kod)] = i;
        if (kod % 13 == 0)
            r.essIRutnatet = true;
    }
    return r;
}

// Where the cards can still go. A two moves only into an empty slot at a row's left end,
// any other card only into the empty slot right of the card of its suit one lower. So a
// set F of cards, each with a set of slots Nar (its own slot first), is safe when:
//   a two's Nar holds only its own slot and the left ends not held by a card of F;
//   any other card's Nar holds only its own slot and the slots c + 1 (not at a row's left
//   end, not held by a card of F) for c in the Nar of its one-lower card;
//   a card of F has no slot in its Nar but its own.
// Then, whatever is played, no card of F ever moves and every card lies only in its Nar:
// take the first move that breaks this, card Y into slot h. Until then every card of F lay
// where it was, so the empty h is held by none of them; Y's one-lower card lay in some c of
// its Nar with h = c + 1 (or h is a left end and Y a two), so h is in Y's Nar after all, and
// Y is not in F, whose Nar has no empty slot. F is found largest by starting from every card
// and striking out, until nothing changes, each card whose Nar then holds another slot:
// striking out only makes the Nar larger, so no card struck out could stay.
//
// The same holds for the plays that never make some chosen moves, when the slots in
// `stangda` are filled by none of the other moves and the cards in `tvungna` make none of
// them: those cards are then counted in F from the start, and no Nar holds a slot of
// `stangda`. Whoever asks must show that the other moves indeed leave those alone as long
// as F stays put.
struct Rorlighet {
    std::uint64_t fasta = 0;             // the slots of the cards of F
    std::array<std::uint64_t, 52> nar{}; // by card code
    bool brusten = false;                // a card that was needed in F was struck out
};

// A caller that needs the cards of some slots (`behovda`) in F learns it has lost one as
// soon as that card is struck out: striking out never puts a card back. The count then
// stops, `brusten` is set, and the rest of the answer is not to be read.
Rorlighet RaknaRorlighet(const Rutor& r, std::uint64_t tvungna = 0, std::uint64_t stangda = 0,
                         std::uint64_t behovda = 0) {
    Rorlighet ro;
    std::uint64_t fasta = r.fyllda;
    // The slots a card may go to: neither held by a card of F nor closed. A card's own
    // slot is never closed, so striking it out opens it.
    std::uint64_t oppna = kHelaRutnatet & ~fasta & ~stangda;
    for (bool andrat = true; andrat;) {
        andrat = false;
        for (int farg = 0; farg < 4; ++farg) {
            std::uint64_t under = 0;
            for (int kod = 13 * farg + 1; kod < 13 * farg + 13; ++kod) {
                const std::uint64_t egen = r.egna[static_cast<size_t>(kod)];
                std::uint64_t nar = egen;
                if (egen != 0 && (tvungna & egen) == 0) {
                    const std::uint64_t dit =
                        kod == 13 * farg + 1 ? kVanstraKanten : (under << 1) & ~kVanstraKanten;
                    const std::uint64_t nya = dit & oppna;
                    nar |= nya;
                    if (nya != 0 && (fasta & egen) != 0) {
                        if (behovda & egen) {
                            ro.brusten = true;
                            return ro;
                        }
                        fasta &= ~egen;
                        oppna |= egen;
                        andrat = true;
                    }
                }
                ro.nar[static_cast<size_t>(kod)] = nar;
                under = nar;
            }
        }
    }
    ro.fasta = fasta;
    return ro;
}

// In a won table each suit fills one row, its card of value v in column v − 2. So there
// must be a row for each suit, a different one for each, where every card of the suit can
// still come to its column.
bool RaderRacker(const Rorlighet& ro) {
    // Shifting each card's Nar left by its column brings its column of every row to that
    // row's left end: what is left there after all twelve are taken together are the rows.
    std::array<unsigned, 4> mojliga{};
    for (int farg = 0; farg < 4; ++farg) {
        std::uint64_t alla = kVanstraKanten;
        for (int v = 1; v < 13; ++v)
            alla &= ro.nar[static_cast<size_t>(13 * farg + v)] >> (v - 1);
        for (int rad = 0; rad < kRader; ++rad)
            if (alla & Bit(kKolumner * rad))
                mojliga[static_cast<size_t>(farg)] |= 1u << rad;
    }
    auto ge = [&](auto&& sjalv, int farg, unsigned tagna) -> bool {
        if (farg == 4)
            return true;
        for (int rad = 0; rad < kRader; ++rad)
            if ((mojliga[static_cast<size_t>(farg)] >> rad & 1u) && !(tagna >> rad & 1u) &&
                sjalv(sjalv, farg + 1, tagna | 1u << rad))
                return true;
        return false;
    };
    return ge(ge, 0, 0);
}

// A gap and the cards its moves take: the successor of its left neighbour, or at a row's
// left end every two.
struct Oppning {
    int ruta = -1;
    std::uint64_t kortRutor = 0; // where those cards lie
    int antal = 0;               // how many moves
};

// Whether (a) and (b) of Urval hold with the cards of `fasta` (slots) known never to move.
bool UrvaletHaller(const Rutor& r, const std::array<Oppning, 52>& oppna, int antal, unsigned valda,
                   std::uint64_t fasta, std::uint64_t stangda, bool kant) {
    const std::uint64_t hallna = fasta | stangda;
    if (kant && (kVanstraKanten & ~hallna) != 0)
        return false;
    for (int i = 0; i < antal; ++i) {
        if (!(valda >> i & 1u))
            continue;
        const Oppning& o = oppna[static_cast<size_t>(i)];
        if (!ForstaKolumnen(o.ruta) && (fasta & Bit(o.ruta - 1)) == 0)
            return false;
        for (std::uint64_t kvar = o.kortRutor; kvar != 0; kvar &= kvar - 1) {
            const int p = std::countr_zero(kvar);
            if (p % kKolumner != kKolumner - 1 && r.kort[static_cast<size_t>(p)] % 13 != 12 &&
                (hallna & Bit(p + 1)) == 0)
                return false;
        }
    }
    return true;
}

// The slots whose cards (a) and (b) ask to be in F, apart from what `stangda` holds
// already: UrvaletHaller fails whenever one of them is not.
std::uint64_t Behovda(const Rutor& r, const std::array<Oppning, 52>& oppna, int antal,
                      unsigned valda, std::uint64_t stangda, bool kant) {
    std::uint64_t behov = kant ? kVanstraKanten : 0;
    for (int i = 0; i < antal; ++i) {
        if (!(valda >> i & 1u))
            continue;
        const Oppning& o = oppna[static_cast<size_t>(i)];
        if (!ForstaKolumnen(o.ruta))
            behov |= Bit(o.ruta - 1);
        for (std::uint64_t kvar = o.kortRutor; kvar != 0; kvar &= kvar - 1) {
            const int p = std::countr_zero(kvar);
            if (p % kKolumner != kKolumner - 1 && r.kort[static_cast<size_t>(p)] % 13 != 12)
                behov |= Bit(p + 1);
        }
    }
    return behov & ~stangda;
}

// Forcing cards and closing slots only makes fewer places reachable, so the cards that
// never move in every play (`fria`, from the table alone) never move in these plays either:
// when they alone show (a) and (b), the longer count is not needed.
std::uint64_t ProvaUrval(const Rutor& r, const Rorlighet& fria,
                         const std::array<Oppning, 52>& oppna, int antal, unsigned valda) {
    std::uint64_t stangda = 0;
    std::uint64_t tvungna = 0;
    bool kant = false;
    for (int i = 0; i < antal; ++i)
        if (valda >> i & 1u) {
            const Oppning& o = oppna[static_cast<size_t>(i)];
            stangda |= Bit(o.ruta);
            tvungna |= o.kortRutor;
            kant = kant || ForstaKolumnen(o.ruta);
        }
    if (UrvaletHaller(r, oppna, antal, valda, fria.fasta | tvungna, stangda, kant))
        return stangda;
    // A gap outside G, and a card that can move into one now, are in no such F.
    std::uint64_t rorliga = kHelaRutnatet & ~r.fyllda & ~stangda;
    for (int i = 0; i < antal; ++i)
        if (!(valda >> i & 1u))
            rorliga |= oppna[static_cast<size_t>(i)].kortRutor;
    if (!UrvaletHaller(r, oppna, antal, valda, ~rorliga & kHelaRutnatet, stangda, kant))
        return 0;
    const Rorlighet ro =
        RaknaRorlighet(r, tvungna, stangda, Behovda(r, oppna, antal, valda, stangda, kant));
    if (ro.brusten || !UrvaletHaller(r, oppna, antal, valda, ro.fasta, stangda, kant))
        return 0;
    return stangda;
}

// The gaps whose moves alone a search need try from this table, as slots; 0 for all.
//
// Take a set G of gaps with moves and T their moves. Suppose that in every play that makes
// no move of T:
//   (a) the left neighbour L of each gap of G not at a row's left end never moves, and when
//       G holds a left end, no two ever moves;
//   (b) for each card X that a move of T takes, from slot p, the slot p + 1 is never filled.
// Then a table that can be won is won by a play that begins with a move of T. For take a
// winning play. While no move of T is made, a gap g of G stays empty: only L's successor X
// may fill it (only a two at a left end), and that is a move of T. As a won table has gaps
// only right of kings at the rows' ends, the play makes a move t of T, say first after the
// moves w. Make t first, then w: t's card X is not moved by w (its only places are in G),
// and t's gap is filled by none of w; a move of w, card Y into slot h, finds h empty as
// before (h is neither p, held by X throughout w, nor g, empty throughout w) and Y's
// one-lower card still left of it (h − 1 is not g, empty throughout w, and not p, by (b)).
// Each move of w does to the same slots as before, so the table after t and w is the same.
//
// (a) and (b) are shown with the mobility above, counting in F from the start the cards T
// takes (they move only by T as long as (a) holds, since their places are in G) and closing
// the slots of G (filled only by T as long as (a) holds); (a) then asks that each L, and
// every left end outside G when G holds one, be in F, and (b) that p + 1 be in G or in F,
// or p end its row, or X be a king.
std::uint64_t Urval(const Rutor& r, const Rorlighet& fria) {
    if (r.essIRutnatet)
        return 0;
    std::array<Oppning, 52> oppna;
    int antal = 0;
    std::uint64_t tvaor = 0;
    for (int farg = 0; farg < 4; ++farg)
        if (r.var[static_cast<size_t>(13 * farg + 1)] >= 0)
            tvaor |= Bit(r.var[static_cast<size_t>(13 * farg + 1)]);
    for (int g = kForstaRutan; g <= kSistaRutan; ++g) {
        if (r.kort[static_cast<size_t>(g)] >= 0)
            continue;
        Oppning o;
        o.ruta = g;
        if (ForstaKolumnen(g)) {
            o.kortRutor = tvaor;
            o.antal = std::popcount(tvaor);
        } else {
            const int vanster = r.kort[static_cast<size_t>(g - 1)];
            if (vanster < 0 || vanster % 13 == 12 || r.var[static_cast<size_t>(vanster + 1)] < 0)
                continue;
            o.kortRutor = Bit(r.var[static_cast<size_t>(vanster + 1)]);
            o.antal = 1;
        }
        if (o.antal > 0 && antal < 8)
            oppna[static_cast<size_t>(antal++)] = o;
    }
    // One gap's moves are all there are.
    if (antal < 2)
        return antal == 1 ? Bit(oppna[0].ruta) : 0;
    // The smallest sets of moves first.
    std::array<std::pair<int, unsigned>, 256> prov;
    int n = 0;
    for (unsigned valda = 1; valda + 1 < (1u << antal); ++valda) {
        int drag = 0;
        for (int i = 0; i < antal; ++i)
            if (valda >> i & 1u)
                drag += oppna[static_cast<size_t>(i)].antal;
        prov[static_cast<size_t>(n++)] = {drag, valda};
    }
    std::sort(prov.begin(), prov.begin() + n);
    for (int i = 0; i < n; ++i)
        if (std::uint64_t g =
                ProvaUrval(r, fria, oppna, antal, prov[static_cast<size_t>(i)].second))
            return g;
    return 0;
}

// What the search asks of one table, looked at once: whether it is hopeless, and the gaps
// whose moves it tries (see Urval).
struct Granskning {
    Koder koder{};
    bool hopplos = false;
    std::uint64_t urval = 0;
    bool giltig = false;
};

const Granskning& Granska(const std::vector<Lucka>& luckor) {
    thread_local Granskning senast;
    const Koder koder = LasKoder(luckor);
    if (senast.giltig && senast.koder == koder)
        return senast;
    senast.koder = koder;
    senast.giltig = true;
    senast.hopplos = false;
    senast.urval = 0;
    const Rutor r = LasRutor(koder);
    if (r.essIRutnatet)
        return senast;
    const Rorlighet fria = RaknaRorlighet(r);
    senast.hopplos = !RaderRacker(fria);
    if (!senast.hopplos)
        senast.urval = Urval(r, fria);
    return senast;
}

// Whether grid slot i holds a card of a row built from a two at its left end (the count's
// mark alone also takes in cards that follow on from another card there).
bool IByggdRad(const std::vector<Lucka>& luckor, int i) {
    return !luckor[i].Tom() && luckor[i].GeOkPos() &&
           luckor[i].GeKort().KortValor() == i % kKolumner + 2;
}

bool IUrvalet(const Drag& d, std::uint64_t urval) {
    return d.slag == DragSlag::Kort && IRutnatet(d.till) && (urval & Bit(d.till)) != 0;
}

class Kunskap final : public SokKunskap {
public:
    // The rows play alike (a gap asks only for the card to its left, a row's left end for
    // any two, and each row is built alone), so the key holds the four rows in order of
    // their cards. The stock, the aces and the deal stay as they were within an attempt.
    void Nyckel(const SpelBord& b, std::string& nyckel) const override {
        const Koder koder = LasKoder(b.luckor);
        std::array<const char*, kRader> rader;
        for (int r = 0; r < kRader; ++r)
            rader[static_cast<size_t>(r)] = koder.data() + kKolumner * r;
        std::sort(rader.begin(), rader.end(),
                  [](const char* x, const char* y) { return std::memcmp(x, y, kKolumner) < 0; });
        for (const char* rad : rader)
            nyckel.append(rad, kKolumner);
        nyckel.push_back(static_cast<char>(static_cast<const Stallning&>(b).forsok));
        nyckel.push_back(static_cast<char>(LekensTopp(b.luckor) + 1));
    }

    // The moves of the fewest gaps that a winning play may begin with (see Urval); a
    // move alone goes at once. Only the search's own moves count: the new attempt is none.
    int SakertDrag(const SpelBord& b, const std::vector<Drag>& dragen) const override {
        const std::uint64_t urval = Granska(b.luckor).urval;
        if (urval == 0)
            return -1;
        int enda = -1;
        for (std::size_t i = 0; i < dragen.size(); ++i)
            if (IUrvalet(dragen[i], urval)) {
                if (enda >= 0)
                    return -1;
                enda = static_cast<int>(i);
            }
        return enda;
    }
    void Ordna(const SpelBord& b, std::vector<Drag>& dragen) const override {
        const std::uint64_t urval = Granska(b.luckor).urval;
        if (urval != 0 && std::any_of(dragen.begin(), dragen.end(),
                                      [&](const Drag& d) { return IUrvalet(d, urval); }))
            std::erase_if(dragen, [&](const Drag& d) { return !IUrvalet(d, urval); });
    }

    // No row can be given to each suit where all its cards can still come (RaderRacker).
    bool Hopplos(const SpelBord& b) const override { return Granska(b.luckor).hopplos; }

    // For the quick first pass: a card that lengthens a row built from its left end goes
    // there at once, and the tables with the most cards in place come first, a card right
    // of its one-lower card elsewhere counting a quarter of one, and a gap behind a king
    // an eighth against; in 32 orders side by side, as the deals one order finds late
    // another often finds at once.
    bool HarTroligaDrag() const override { return true; }
    int Ordningar(const SpelBord&) const override { return 32; }
    int TroligtDrag(const SpelBord& b, const std::vector<Drag>& dragen) const override {
        return ForstaDragSom(dragen, [&](const Drag& d) {
            return d.slag == DragSlag::Kort && !ForstaKolumnen(d.till) &&
                   IByggdRad(b.luckor, d.till - 1);
        });
    }
    int Avstand(const SpelBord& b) const override {
        int doda = 0;
        int byggda = 0;
        int foljer = 0;
        for (int i = kForstaRutan; i <= kSistaRutan; ++i) {
            if (b.luckor[i].Tom() && !b.luckor[i].GeKantLinje())
                ++doda;
            else if (IByggdRad(b.luckor, i))
                ++byggda;
            else if (i % kKolumner != 0 && FoljerPa(b.luckor[i], b.luckor[i - 1]))
                ++foljer;
        }
        return 8 * (kVunnet - byggda) - 2 * foljer + doda;
    }

    // Each gap asks for the one card it takes (any two at a row's left end).
    bool ListaDrag(const SpelBord& b, std::vector<Drag>& dragen) const override {
        const std::vector<Lucka>& luckor = b.luckor;
        const std::array<int, 52> var = KortensPlatser(luckor);
        dragen.clear();
        for (int till = kForstaRutan; till <= kSistaRutan; ++till) {
            if (!luckor[till].Tom())
                continue;
            if (ForstaKolumnen(till)) {
                for (int farg = 0; farg < 4; ++farg)
                    if (var[static_cast<size_t>(13 * farg + 1)] >= 0)
                        dragen.push_back(KortDrag(var[static_cast<size_t>(13 * farg + 1)], till));
                continue;
            }
            const Lucka& vanster = luckor[till - 1];
            if (vanster.Tom() || ArKung(vanster))
                continue;
            const int fran = var[static_cast<size_t>(13 * vanster.GeKort().KortFarg() +
                                                     vanster.GeKort().KortValor())];
            if (fran >= 0)
                dragen.push_back(KortDrag(fran, till));
        }
        // In the rules' order, which the search keeps.
        std::sort(dragen.begin(), dragen.end(), [](const Drag& x, const Drag& y) {
            return x.fran != y.fran ? x.fran < y.fran : x.till < y.till;
        });
        if (static_cast<const Stallning&>(b).forsok < kSistaGiv)
            dragen.push_back(NyttForsokDrag());
        return true;
    }

    std::string KnappNamn() const override { return "deal again"; }
};

} // namespace

const SpelRegler& Regler() {
    return SpeletsRegler<Stallning, Kunskap>();
}

} // namespace IdiotenRegler

namespace IdiotenRegler {

std::vector<Hog> HogTabell(const Stallning& /*bord*/) {
    std::vector<Hog> hogar;
    for (int r = 0; r < kRader; ++r)
        for (int c = 0; c < kKolumner; ++c) {
            int i = kKolumner * r + c;
            hogar.push_back({HogSlag::Ruta, c + 1, i, i, r + 1});
        }
    return hogar;
}

} // namespace IdiotenRegler
