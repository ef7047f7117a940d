#pragma once

#include "cards/Drag.h"
#include "cards/Hogar.h"
#include "cards/Kort.h"
#include "cards/Lucka.h"
#include "cards/SpelBord.h"
#include "cards/SpelRegler.h"
#include "games/LekRegler.h"
#include "platform/Geometry.h"

#include <optional>
#include <vector>

// Tower of Hanoi as functions of its table: the ace to 9 of one suit on three towers, a card
// put down only on a larger card or on an empty tower, until one tower runs 9 down to the ace.
namespace TowerRegler {

inline constexpr int kTorn = 3;
// Tower t is slots 9t .. 9t + 8 from the bottom up.
inline constexpr int kPerTorn = 9;
inline constexpr int kSistaTornLucka = 26;
// The nine cards lie here, face down, only while they are dealt.
inline constexpr int kForstaLek = 27;
inline constexpr int kSistaLek = 35;
inline constexpr int kAntalLuckor = 36;
inline constexpr LekRegler::Lek kLeken{kForstaLek, kSistaLek};
// The cards under the nine: taken off a fresh deck and left out.
inline constexpr int kBortlagda = 43;
// What shows of a covered card, from its top edge down.
inline constexpr float kRemsa = 38.0f;
// A drop tries the slots up to this one: a card on slot 26 would need a tenth card under it.
inline constexpr int kSistaDropLucka = 25;
// The table is drawn over one place more than it has slots; that place shows nothing.
inline constexpr int kRitadePlatser = 37;

constexpr bool TornBas(int i) {
    return i >= 0 && i <= kSistaTornLucka && i % kPerTorn == 0;
}

// The card size for one size of the view.
struct Utlagg {
    int w = 0;
    int h = 0;
};
// Lays every slot out for the view's bounds (`luckor` holds kAntalLuckor slots).
Utlagg RaknaUtLuckor(std::vector<Lucka>& luckor, BRect bounds);

struct Stallning : BordAv<Stallning> {
    bool operator==(const Stallning&) const = default;
};

enum Steg : int {
    kGivSteg,   // stock to tower, dealing
    kFlyttSteg, // a card the player clicks away
    kAngraSteg, // a move taken back
};

// The tower slot under the pointer whose card is picked up, or -1.
int Traff(const std::vector<Lucka>& luckor, BPoint p);
// The top card of the tower slot `i` lies in.
int ToppFor(const std::vector<Lucka>& luckor, int i);
// Where slot `j` lets `kort` go: into j when it is an empty base, into j + 1 when j is a
// top with a larger card; -1.
int PlatsVid(const std::vector<Lucka>& luckor, int j, const Kort& kort);
// Where a click sends the top card of slot `fran`: the first place after it, round the
// towers; -1.
int KlickMal(const std::vector<Lucka>& luckor, int fran);
// Where a card dropped at `q` goes: the first of slots 0..25 under `q` that takes it; -1.
int DropMal(const std::vector<Lucka>& luckor, const Kort& kort, BPoint q);
// The slot drawn at place `i` of the walk over the table, none past the last slot.
const Lucka* RitadPlats(const std::vector<Lucka>& luckor, int i);

// What a click at `p` does.
std::optional<Drag> KlickDrag(const Stallning& bord, BPoint p);
// What a press at `p` dragged and released at `q` does.
std::optional<Drag> DropDrag(const Stallning& bord, BPoint p, BPoint q);

void Skapa(Stallning& bord);
void LaggUtLeken(Stallning& bord);
void DelaUt(Stallning& bord, Flygledare* flyg);
// Every top card to its click's place and to every place a drop can put it.
std::vector<Drag> LagligaDrag(const Stallning& bord);
void GorDrag(Stallning& bord, const Drag& drag, Flygledare* flyg);
int Angra(Stallning& bord, Flygledare* flyg);
bool KlarSpel(Stallning& bord);
HiscoreResultat Resultat(const Stallning& bord);
const SpelRegler& Regler();

} // namespace TowerRegler

namespace TowerRegler {

// The table's piles in words.
std::vector<Hog> HogTabell(const Stallning& bord);

} // namespace TowerRegler
