#pragma once

#include "cards/Drag.h"
#include "cards/Kort.h"
#include "cards/Lucka.h"
#include "cards/SpelBord.h"
#include "cards/SpelRegler.h"
#include "platform/Geometry.h"

#include <vector>

// Idioten 1 as functions of its table alone: where the slots lie, where a card may go,
// where a click or a drop sends it, and how much of the game is done. The game class
// draws, animates and records moves; every decision it takes is made here, so hints and
// a solver can ask the same questions of any table.
namespace IdiotenRegler {

// The table: four rows of thirteen, slot 13·r + c is row r, column c.
inline constexpr int kRader = 4;
inline constexpr int kKolumner = 13;
inline constexpr int kForstaRutan = 0;
inline constexpr int kSistaRutan = 51;
// The aces, taken out of the grid after each deal, fan out in a fifth row.
inline constexpr int kForstaEssPlats = 52;
inline constexpr int kSistaEssPlats = 55;
// The stock, a card a pixel above the one below; slot 56 is the bottom.
inline constexpr int kForstaLekPlats = 56;
inline constexpr int kSistaLekPlats = 107;
inline constexpr int kAntalLuckor = 108;
// Two to king in each of the four rows.
inline constexpr int kVunnet = 48;
inline constexpr int kSistaGiv = 3;

inline constexpr int kMellanrum = 5;
inline constexpr int kMinstaBredd = 40;
inline constexpr int kMinstaHojd = 70;

constexpr bool IRutnatet(int lucka) {
    return lucka >= kForstaRutan && lucka <= kSistaRutan;
}
constexpr bool ForstaKolumnen(int lucka) {
    return IRutnatet(lucka) && lucka % kKolumner == 0;
}

// The card size and the button's place for one size of the view.
struct Utlagg {
    int w = 0;
    int h = 0;
    BRect knapp;
};

// Lays every slot out for the view's bounds (`luckor` holds kAntalLuckor slots).
Utlagg RaknaUtLuckor(std::vector<Lucka>& luckor, BRect bounds);

// Where the "Cards done:" box lies: below the eighth column of the bottom row.
BRect RaknarRuta(const std::vector<Lucka>& luckor);

// The one rule: an empty grid slot takes a two at a row's left end, elsewhere the card
// of the same suit one higher than its left neighbour.
bool FarLaggas(const std::vector<Lucka>& luckor, int till, const Kort& kort);

// The grid slot under the pointer whose card may be picked up, or -1.
int KortUnder(const std::vector<Lucka>& luckor, BPoint where);

// Where a click sends a card: the first empty grid slot, in index order, where it may
// go, or -1.
int KlickMal(const std::vector<Lucka>& luckor, const Kort& kort);

// Where a drop at `where` puts a card: the first empty grid slot holding the point
// where it may go, or -1.
int DropMal(const std::vector<Lucka>& luckor, const Kort& kort, BPoint where);

// Recounts the table: sets each grid slot's place mark and outline flag and returns the
// number of cards in their final place (0..48).
int RaknaKlaraKort(std::vector<Lucka>& luckor);

constexpr bool Vunnet(int klaraKort) {
    return klaraKort == kVunnet;
}

// The highest filled stock slot, or -1 when the stock is empty.
int LekensTopp(const std::vector<Lucka>& luckor);

// The whole table: the slots, the deal number (1..3), the cards done as last counted and
// the button's place.
struct Stallning : BordAv<Stallning> {
    int forsok = 1;
    int klaraKort = 0;
    BRect knapp;
    bool operator==(const Stallning&) const = default;
    void TaLaggningFran(const SpelBord& annat) override {
        SpelBord::TaLaggningFran(annat);
        knapp = static_cast<const Stallning&>(annat).knapp;
    }
};

// What the rules tell the game as they move cards, so it can let each fly its own way.
enum Steg : int {
    kGivSteg,   // stock to grid, dealing
    kEssSteg,   // an ace out of the grid; told after the ace has left, as the recount
                // decides whether its empty place shows an outline
    kFlyttSteg, // a card the player moves
    kSamlaSteg, // gathered back to the stock for a new attempt
    kAngraSteg, // a move taken back
};

void Skapa(Stallning& bord);
void LaggUtLeken(Stallning& bord);
// Fills the grid's gaps from the top of the stock, then takes the aces out.
void DelaUt(Stallning& bord, Flygledare* flyg);
// Gathers what is not in place, shuffles it and deals it again: the next deal.
void NyttForsok(Stallning& bord, Flygledare* flyg);
// Each card of the grid to every gap it may fill; the button while a deal is left.
std::vector<Drag> LagligaDrag(const Stallning& bord);
void GorDrag(Stallning& bord, const Drag& drag, Flygledare* flyg);
int Angra(Stallning& bord, Flygledare* flyg);
bool KlarSpel(Stallning& bord);
HiscoreResultat Resultat(const Stallning& bord);
const SpelRegler& Regler();

} // namespace IdiotenRegler
