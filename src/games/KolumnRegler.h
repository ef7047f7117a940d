#pragma once

#include "cards/Drag.h"
#include "cards/Hogar.h"
#include "cards/Kort.h"
#include "cards/Lucka.h"
#include "cards/Luckor.h"
#include "cards/SpelBord.h"
#include "cards/SpelRegler.h"
#include "platform/Geometry.h"

#include <optional>
#include <utility>
#include <vector>

// The games of overlapping columns, free cells or reserve piles, and foundations (Freecell,
// Eight off, Glädjespridaren) as functions of their table: which card the pointer is on,
// where a click or a drop sends a card or a run, and how many free places a run may use.
// Each game hands in its own plan.
namespace KolumnRegler {

inline constexpr int kKolumner = 8;
inline constexpr int kPlatserPerKolumn = 22;
inline constexpr int kSistaKolumnLucka = kKolumner * kPlatserPerKolumn - 1; // 175
inline constexpr int kForstaFricell = 176;
inline constexpr int kNivaer = 13;
// The undo marker before the pairs of a run moved as one.
inline constexpr int UNDO_FLERA = 1234;
// The top band of a covered card that still shows.
inline constexpr float kBand = 30.0f;
// A drop a little below a pile's last card still lands on it.
inline constexpr float kDropForlangning = 100.0f;

// How free places for a run are counted.
enum class FriRakning {
    KolumnerOchFriceller, // the empty column bases and free cells
    NioParVarannan,       // for k = 0..8: slot 22·k and slot 176 + 2k, as Eight off counts
    Obegransad,           // a run of any length may move
};

// What a game's column rules differ in.
struct Plan {
    int friceller = 4;
    int forstaGrund = 184; // foundation f level k is forstaGrund + 13f + k
    int forstaLek = 236;
    int antalLuckor = 288;
    bool sammaSvit = false;  // columns are built down in suit, not in alternating colour
    int dropGrundFran = 184; // the slots a single-card drop tries as foundations
    int dropGrundTill = 235;
    FriRakning rakning = FriRakning::KolumnerOchFriceller;
    bool svitFlagga = false; // runs compare "suit other than 0" instead of colour
    // Where an undone card flies back from without a card showing beneath it (besides
    // the column bases).
    std::vector<int> angraUtanUnder;
    // The deal: deck slot into column or free cell, in the game's order.
    std::vector<std::pair<int, int>> (*givOrdning)() = nullptr;
    int kolumner = kKolumner;
    // Piles of 22 places after the columns, each dealt one card, that never take a card.
    int reserver = 0;
    // The slots from one foundation to the next.
    int grundSteg = kNivaer;
    // A click looks for a card to build on and for an empty column in one pass, left to
    // right, instead of every card first.
    bool kolumnOchTomIEtt = false;
    // The last slot the pointer can pick a card from; -1: every slot.
    int sistaTraff = -1;
    // How many move orders a search's quick pass tries side by side.
    int sokOrdningar = 1;
    // Whether that quick pass tries a run moved off a card it could be built on onto another
    // such card (a single card moved so it never tries).
    bool sidledsRader = false;
};

// A column base of the eight-column games.
constexpr bool KolumnBas(int i) {
    return i >= 0 && i <= kSistaKolumnLucka && i % kPlatserPerKolumn == 0;
}
int SistaKolumnLucka(const Plan& plan);
bool KolumnBas(const Plan& plan, int i);
// The first place of a column or of a reserve pile: nothing lies beneath it.
bool HogBas(const Plan& plan, int i);
bool Fricell(const Plan& plan, int i);
bool GrundBas(const Plan& plan, int i);
int SistaGrund(const Plan& plan);
int SistaPlats(const Plan& plan); // the last free-cell spare, before the foundations

// The first slot under the pointer: a top card's whole face or a covered card's band; -1.
int Traff(const std::vector<Lucka>& luckor, BPoint p);
// The same over the slots the plan lets the pointer pick from.
int Traff(const Plan& plan, const std::vector<Lucka>& luckor, BPoint p);
using ::Toppen;

// A card may lie on the card in slot `under` in a column.
bool PassarPaKolumn(const Plan& plan, const Kort& under, const Kort& kort);

// Where a click sends a top card: foundation, ace place, column, empty place; -1.
int KlickMal(const Plan& plan, const std::vector<Lucka>& luckor, const Kort& kort);
// Where a single card dropped at `q` goes; -1.
int DropMal(const Plan& plan, const std::vector<Lucka>& luckor, const Kort& kort, BPoint q);

// The free places a run may use, counted the game's way.
int FriaPlatser(const Plan& plan, const std::vector<Lucka>& luckor);
// Whether hit..top falls by one card by card with the game's colour test (a drop may
// test the first card differently).
bool GiltigRad(const Plan& plan, const std::vector<Lucka>& luckor, int forsta, int topp,
               bool vidDrop);

// Where a run goes: `mal` is the slot the search stopped at, `start` where its first card
// lands (mal + 1 on a card, mal in an empty column). mal < 0: nowhere.
struct RadMal {
    int mal = -1;
    int start = -1;
};
RadMal KlickRadMal(const Plan& plan, const std::vector<Lucka>& luckor, int forsta, int topp);
RadMal DropRadMal(const Plan& plan, const std::vector<Lucka>& luckor, int forsta, int topp,
                  BPoint q);

// The grid the column games lay their table out on: cards of w × h with a margin of 5.
struct Rutnat {
    int w = 0;
    int h = 0;
    int m = 5;
    // The card place in grid column `kolumn` whose top edge is `topp`.
    BRect Ruta(int kolumn, int topp) const;
};
// The card size for the view's bounds: h = (height − 40) / 11, w = (width − 20) / 10,
// each at least 70.
Rutnat KolumnRutnat(BRect ram);
// Column c, position p at Ruta(c, 30·p + topp): each card shows a 30-pixel band.
void LaggKolumner(std::vector<Lucka>& luckor, const Rutnat& rutnat, int topp,
                  int kolumner = kKolumner);
// Free cell i and its spare slot, both at `ruta`.
void LaggFricell(std::vector<Lucka>& luckor, int i, BRect ruta);
// All levels of foundation g at `ruta`.
void LaggGrund(std::vector<Lucka>& luckor, const Plan& plan, int g, BRect ruta);
// The deck pile in grid column 8, a pixel a card, from 2h + m down.
void LaggLek(std::vector<Lucka>& luckor, const Plan& plan, const Rutnat& rutnat);

// All four kings on their foundations.
bool Vunnet(const Plan& plan, const std::vector<Lucka>& luckor);
int KortPaGrunden(const Plan& plan, const std::vector<Lucka>& luckor);

// The whole table of a column game, with the plan of the game it belongs to.
struct Stallning : BordAv<Stallning> {
    const Plan* plan = nullptr;
    bool operator==(const Stallning&) const = default;
};

enum Steg : int {
    kGivSteg,   // deck to column or free cell
    kFlyttSteg, // a card or a run the player moves
    kAngraSteg, // a move taken back
};

// A move of a run is told by where the search for its place stopped: on the card it lands
// on, or at the empty column base it fills; the undo records keep that slot.
Drag RadDragMot(int forsta, int antal, const RadMal& mal);

void Skapa(Stallning& bord); // the plan is set first
void LaggUtLeken(Stallning& bord);
void DelaUt(Stallning& bord, Flygledare* flyg);
// Every card and run that can be lifted, to every place a click or a drop can send it.
std::vector<Drag> LagligaDrag(const Stallning& bord);
// The same moves, in another order, into `ut` (emptied first): what a search lists at every
// table, found with one look at the table's places instead of one per card. With
// `enPerKlass`, of the moves of one card or run into empty places that are interchangeable
// in a search (any empty column; any empty free cell or foundation base, Eight off's first
// aside) only one is listed.
void ListaDrag(const Stallning& bord, std::vector<Drag>& ut, bool enPerKlass = false);
void GorDrag(Stallning& bord, const Drag& drag, Flygledare* flyg);
int Angra(Stallning& bord, Flygledare* flyg);
bool KlarSpel(Stallning& bord);
HiscoreResultat Resultat(const Stallning& bord);

// The rules of the column game whose plan `PlanFor` gives.
template <const Plan& (*PlanFor)()> void SkapaMed(Stallning& bord) {
    bord.plan = &PlanFor();
    Skapa(bord);
}
// What the column games know about searching their moves: the key, the order, and an ace
// going home at once where that is safe (see the comments in KolumnRegler.cpp). A game may
// bring its own.
const SokKunskap& Kunskapen();
template <const Plan& (*PlanFor)(), const SokKunskap& (*KunskapFor)() = Kunskapen>
const SpelRegler& ReglerMed() {
    static const ReglerAv<Stallning> regler(
        {SkapaMed<PlanFor>, LaggUtLeken, DelaUt, LagligaDrag, GorDrag, Angra, KlarSpel, Resultat},
        &KunskapFor());
    return regler;
}

// The moves of a single card and of a run dropped at `q`, as the gestures make them;
// std::nullopt when nothing moves.
std::optional<Drag> KlickDrag(const Stallning& bord, int traff);
std::optional<Drag> DropDrag(const Stallning& bord, int forsta, int topp, BPoint q);

} // namespace KolumnRegler

namespace KolumnRegler {

// The table's piles in words.
std::vector<Hog> HogTabell(const Stallning& bord);

} // namespace KolumnRegler
