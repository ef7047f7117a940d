#pragma once

#include "cards/Drag.h"
#include "cards/Hogar.h"
#include "cards/Kort.h"
#include "cards/Lucka.h"
#include "cards/SpelBord.h"
#include "cards/SpelRegler.h"
#include "platform/Geometry.h"

#include <optional>
#include <vector>

// Black hole as functions of its table: which fan top the pointer is on, whether a card
// fits on the hole, and where a click or a drop puts it.
namespace BlackholeRegler {

// The hole, all at one place, filling from 0 upwards.
inline constexpr int kForstaHal = 0;
inline constexpr int kSistaHal = 51;
// Seventeen fans of four slots, of which the first three receive cards: an empty next slot
// always marks a fan's top.
inline constexpr int kForstaSolfjader = 52;
inline constexpr int kSistaSolfjader = 119;
inline constexpr int kSolfjadrar = 17;
inline constexpr int kOvreSolfjadrar = 9;
inline constexpr int kPlatserPerSolfjader = 4;
// The stock the deal takes its cards from; 120 is the bottom, where the ace of spades lies.
inline constexpr int kForstaLek = 120;
inline constexpr int kSistaLek = 171;
inline constexpr int kAntalLuckor = 172;
// Each card of a fan shows this much of itself above the next.
inline constexpr int kSolfjaderSteg = 30;

constexpr bool ISolfjader(int i) {
    return i >= kForstaSolfjader && i <= kSistaSolfjader;
}

// A card fits on the hole's top when it is one higher or one lower, king and ace being
// neighbours both ways; suits do not matter.
bool Passar(const Kort& kort, const Kort& halTopp);

// The first empty hole slot (-1 when the hole is full) and the hole's top card slot.
int HaletsNasta(const std::vector<Lucka>& luckor);
int HaletsTopp(const std::vector<Lucka>& luckor);

// The fan top under the pointer, the first in slot order; -1.
int KortUnder(const std::vector<Lucka>& luckor, BPoint p);

// Lays every slot out for the view's bounds; returns the card width and height.
struct Utlagg {
    int cw = 0;
    int ch = 0;
};
Utlagg RaknaUtLuckor(std::vector<Lucka>& luckor, BRect bounds);

// The deal's order: the fan slots the stock's cards go to, from the stock's top down.
std::vector<int> GivPlatser();

// The whole table: the slots, the deal (always 1) and the cards in the hole as last
// counted.
struct Stallning : BordAv<Stallning> {
    int giv = 1;
    int kortKvar = 0;
    bool operator==(const Stallning&) const = default;
};

enum Steg : int {
    kGivSteg,   // stock to fan, and the ace into the hole
    kFlyttSteg, // a fan top clicked into the hole
    kAngraSteg, // a card taken back out of the hole
};

// The move a click on fan top `i` makes, and a drop of it at `q`.
std::optional<Drag> KlickDrag(const Stallning& bord, int i);
std::optional<Drag> DropDrag(const Stallning& bord, int i, BPoint q);

void Skapa(Stallning& bord);
void LaggUtLeken(Stallning& bord);
void DelaUt(Stallning& bord, Flygledare* flyg);
// Each fan top that fits, into the hole.
std::vector<Drag> LagligaDrag(const Stallning& bord);
void GorDrag(Stallning& bord, const Drag& drag, Flygledare* flyg);
int Angra(Stallning& bord, Flygledare* flyg);
bool KlarSpel(Stallning& bord);
HiscoreResultat Resultat(const Stallning& bord);
const SpelRegler& Regler();

} // namespace BlackholeRegler

namespace BlackholeRegler {

// The table's piles in words.
std::vector<Hog> HogTabell(const Stallning& bord);

} // namespace BlackholeRegler
