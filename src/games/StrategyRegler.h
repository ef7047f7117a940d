#pragma once

#include "cards/Drag.h"
#include "cards/Hogar.h"
#include "cards/Kort.h"
#include "cards/Lucka.h"
#include "cards/SpelBord.h"
#include "cards/SpelRegler.h"
#include "games/KolumnRegler.h"
#include "platform/Geometry.h"

#include <optional>
#include <vector>

// Strategy as functions of its table: the face-up stock's top card placed on any of eight
// piles, aces alone to the foundations while the stock lasts; then the piles' top cards to
// the foundations, built up by suit.
namespace StrategyRegler {

inline constexpr int kHogar = 8;
// Pile c is slots 53c .. 53c + 52, foundation f slots 424 + 53f .. 424 + 53f + 52.
inline constexpr int kPerHog = 53;
inline constexpr int kForstaGrund = 424;
inline constexpr int kSistaGrund = 635;
inline constexpr int kForstaLek = 636;
inline constexpr int kSistaLek = 688;
inline constexpr int kAntalLuckor = 689;
inline constexpr int kVunnet = 52;
// A drop a little below a foundation still lands on it.
inline constexpr float kDropForlangning = 100.0f;

// The bases of the piles and of the foundations.
constexpr bool Bas(int i) {
    return i >= 0 && i < kForstaLek && i % kPerHog == 0;
}
constexpr bool IGrunden(int i) {
    return i >= kForstaGrund && i <= kSistaGrund;
}

// Lays every slot out for the view's bounds; returns the card grid (w × h).
KolumnRegler::Rutnat RaknaUtLuckor(std::vector<Lucka>& luckor, BRect ram);

// The table, with the attempt (always 1) and the cards home as last counted.
struct Stallning : BordAv<Stallning> {
    int forsok = 1;
    int kortHemma = 0;
    bool operator==(const Stallning&) const = default;
};

enum Steg : int {
    kFlyttSteg, // a card the player clicks onto a pile or a foundation
    kAngraSteg, // a move taken back
};

// The stock's top card, or -1 when the stock is empty.
int LekensTopp(const std::vector<Lucka>& luckor);
// The slot a press at `p` hits: with cards in the stock any slot under it, empty or not;
// with the stock empty a pile's top card. -1 for none.
int Traff(const std::vector<Lucka>& luckor, BPoint p);
// Where a foundation takes `kort`: an ace the first empty base, another card the place
// above its suit's card one lower; -1.
int GrundMal(const std::vector<Lucka>& luckor, const Kort& kort);
// The same among the foundation slots whose lengthened rectangle holds `q`; while the stock
// has cards only an ace is placed.
int DropMal(const std::vector<Lucka>& luckor, const Kort& kort, BPoint q);

// What a click at `p` does.
std::optional<Drag> KlickDrag(const Stallning& bord, BPoint p);
// The card a press at `p` lifts when it is dragged, or -1.
int LyftVid(const std::vector<Lucka>& luckor, BPoint p);
// What a press at `p` dragged and released at `q` does.
std::optional<Drag> DropDrag(const Stallning& bord, BPoint p, BPoint q);

void Skapa(Stallning& bord);
void LaggUtLeken(Stallning& bord);
// Nothing is dealt: the stock is played from where it lies.
void DelaUt(Stallning& bord, Flygledare* flyg);
// While the stock lasts its top card to each pile, and an ace to each empty foundation;
// then every pile's top card to each foundation that takes it.
std::vector<Drag> LagligaDrag(const Stallning& bord);
void GorDrag(Stallning& bord, const Drag& drag, Flygledare* flyg);
int Angra(Stallning& bord, Flygledare* flyg);
bool KlarSpel(Stallning& bord);
HiscoreResultat Resultat(const Stallning& bord);
const SpelRegler& Regler();

} // namespace StrategyRegler

namespace StrategyRegler {

// The table's piles in words.
std::vector<Hog> HogTabell(const Stallning& bord);

} // namespace StrategyRegler
