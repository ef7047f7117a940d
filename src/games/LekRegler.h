#pragma once

#include "cards/Drag.h"
#include "cards/SpelBord.h"

#include <vector>

// What the games with a face-down stock share: a card dealt from the stock is recorded as
// (kFranLeken, the slot it went to), and undoing such records puts the cards back on the
// stock, each on the slot above its top.
namespace LekRegler {

// The undo record's "from" for a card that came off the stock.
inline constexpr int kFranLeken = 222;

// The stock of slots forsta..sista: where its top card lies (-1 when it is empty).
struct Lek {
    int forsta;
    int sista;
    int Topp(const std::vector<Lucka>& luckor) const;
    bool Tom(const std::vector<Lucka>& luckor) const { return Topp(luckor) < 0; }
};

// A new deal up to the dealing: every slot emptied, no undos, and a fresh deck shuffled and
// laid from slot `forsta` up, the first card off the deck lowest.
void LaggLeken(SpelBord& bord, int forsta);
// The same without the shuffle: the fresh deck as it comes, its first card lowest.
void LaggOblandadLek(SpelBord& bord, int forsta);

// The start of every new deal: every slot emptied, the undo records gone, a fresh deck, not
// yet shuffled. The undo count and the game's own counters are the game's to reset.
void NyGiv(SpelBord& bord);
// The cards left in the deck, each off its top in turn, into slots forsta, forsta + 1, ...
void LaggILeken(SpelBord& bord, int forsta);
// The four aces taken out of the deck one after another, into slots sista - 3 .. sista: the
// first one found lowest.
void LaggEssenOverst(SpelBord& bord, int sista);

// Deals the stock's top card to each slot of `mal` in turn, while the stock lasts, telling
// `flyg` of each card first and recording each as (kFranLeken, slot).
void GeFranLeken(SpelBord& bord, const Lek& lek, const std::vector<int>& mal, Flygledare* flyg,
                 int steg);

// Deals the stock's top card to each slot of `mal` in turn, as a deal does, with no records.
void DelaFranLeken(SpelBord& bord, const Lek& lek, const std::vector<int>& mal, Flygledare* flyg,
                   int steg);

// Takes back the newest `antal` records, each (kFranLeken, slot): each card returns to the
// slot above the stock's top. The caller has checked that they are such records.
void AngraFranLeken(SpelBord& bord, const Lek& lek, int antal, Flygledare* flyg, int steg);

} // namespace LekRegler
