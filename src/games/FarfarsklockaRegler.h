#pragma once

#include "cards/Drag.h"
#include "cards/Hogar.h"
#include "cards/Kort.h"
#include "cards/Lucka.h"
#include "cards/SpelBord.h"
#include "cards/SpelRegler.h"
#include "games/HogRegler.h"
#include "platform/Geometry.h"

#include <array>
#include <vector>

// Farfars klocka: twelve clock piles, each started with a fixed card, are built up in suit
// (the ace after the king); the other forty cards lie in eight piles below, built down
// whatever the suit (any king after an ace), an empty pile taking any card. The game is won
// when the eight piles are empty.
namespace FarfarsklockaRegler {

// Clock pile k: slots 19k .. 19k + 18.
inline constexpr int kPlatserPerHog = 19;
inline constexpr int kAntalKlockhogar = 12;
inline constexpr int kForstaKlocka = 0;
inline constexpr int kSistaKlocka = 227;
// Pile p: slots 228 + 19p .. 228 + 19p + 18.
inline constexpr int kAntalHogar = 8;
inline constexpr int kForstaHog = 228;
inline constexpr int kSistaHog = 379;
// The stock, face down, used only while dealing; slot 380 is its bottom.
inline constexpr int kForstaLek = 380;
inline constexpr int kSistaLek = 431;
inline constexpr int kAntalLuckor = 432;
inline constexpr int kKortPerHog = 5;

inline constexpr int kMellanrum = 5;
inline constexpr int kMinstaStorlek = 70;

constexpr int KlockBas(int k) {
    return kForstaKlocka + kPlatserPerHog * k;
}
constexpr int HogBas(int p) {
    return kForstaHog + kPlatserPerHog * p;
}
constexpr bool ArHogBas(int lucka) {
    return lucka >= kForstaHog && lucka <= kSistaHog && (lucka - kForstaHog) % kPlatserPerHog == 0;
}
// The base of a clock pile or of a pile: nothing lies beneath its card.
constexpr bool ArBas(int lucka) {
    return ArHogBas(lucka) ||
           (lucka >= kForstaKlocka && lucka <= kSistaKlocka && lucka % kPlatserPerHog == 0);
}

// The card each clock pile starts with, taken out of the deck before the shuffle.
struct Startkort {
    kortfarg farg;
    int valor;
};
inline constexpr std::array<Startkort, kAntalKlockhogar> kStartkort{{{RUTER, 2},
                                                                     {SPADER, 3},
                                                                     {HJARTER, 4},
                                                                     {KLOVER, 5},
                                                                     {RUTER, 6},
                                                                     {SPADER, 7},
                                                                     {HJARTER, 8},
                                                                     {KLOVER, 9},
                                                                     {RUTER, 10},
                                                                     {SPADER, 11},
                                                                     {HJARTER, 12},
                                                                     {KLOVER, 13}}};

// The card size for one size of the view.
struct Utlagg {
    int w = 0;
    int h = 0;
};

// Lays every slot out for the view's bounds (`luckor` holds kAntalLuckor slots).
Utlagg RaknaUtLuckor(std::vector<Lucka>& luckor, BRect bounds);

// A clock top takes the next card of its suit, the ace after the king.
bool KlockanTar(const Kort& topp, const Kort& kort);
// A pile top takes the card one value lower whatever its suit, any king after an ace.
bool HogenTar(const Kort& topp, const Kort& kort);

// The pile top under the pointer, or -1. The clock and the stock never move.
int Traff(const std::vector<Lucka>& luckor, BPoint p);
// Where a click sends the top card of `fran`: the clock, else the first empty pile, else the
// first pile top that takes it; -1 for nowhere.
int KlickMal(const std::vector<Lucka>& luckor, int fran);
// Where the top card of `fran` dropped at `q` goes, or -1.
int DropMal(const std::vector<Lucka>& luckor, int fran, BPoint q);

struct Stallning : BordAv<Stallning> {
    bool operator==(const Stallning&) const = default;
};

void Skapa(Stallning& bord);
void LaggUtLeken(Stallning& bord);
// The starting cards to the clock, then five cards to each pile, off the top of the stock.
void DelaUt(Stallning& bord, Flygledare* flyg);
// Each pile top to every place a click or a drop sends it.
std::vector<Drag> LagligaDrag(const Stallning& bord);
void GorDrag(Stallning& bord, const Drag& drag, Flygledare* flyg);
int Angra(Stallning& bord, Flygledare* flyg);
bool KlarSpel(Stallning& bord);
// The cards on the clock.
HiscoreResultat Resultat(const Stallning& bord);
const SpelRegler& Regler();

} // namespace FarfarsklockaRegler

namespace FarfarsklockaRegler {

// The table's piles in words.
std::vector<Hog> HogTabell(const Stallning& bord);

} // namespace FarfarsklockaRegler
