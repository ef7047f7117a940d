#pragma once

#include "cards/Drag.h"
#include "cards/Kort.h"
#include "cards/Lucka.h"
#include "cards/SpelBord.h"
#include "cards/SpelRegler.h"
#include "platform/Geometry.h"

#include <optional>
#include <vector>

// 13-Pyramiden as functions of its table: which card the pointer is on, which card a click
// or a drop pairs it with, what a press on the stock does, and how undo takes it back.
namespace PyramidenRegler {

// The pyramid, row by row: row r holds r + 1 slots from r(r + 1)/2.
inline constexpr int kForstaPyramid = 0;
inline constexpr int kSistaPyramid = 27;
inline constexpr int kRader = 7;
// A row below the pyramid that never holds a card, so that every pyramid slot has two
// slots under it to test.
inline constexpr int kForstaDolda = 28;
inline constexpr int kSistaDolda = 35;
// The waste, all at one place, growing upwards from 36.
inline constexpr int kForstaHog = 36;
inline constexpr int kSistaHog = 60;
// A partner is looked for on the waste up to here: slot 60 is never looked at.
inline constexpr int kSistaHogPartner = 59;
// The discard pile, face down, a slot for each card: 60 + 13·suit + value.
inline constexpr int kForstaKast = 61;
inline constexpr int kSistaKast = 119;
// The stock, face down, each card a pixel below the one beneath it; 120 is the bottom.
inline constexpr int kForstaLek = 120;
inline constexpr int kSistaLek = 171;
inline constexpr int kAntalLuckor = 172;
inline constexpr int kPyramidKort = 28;
// The cards the stock holds after the deal, less one: the pixels its steps reach down.
inline constexpr int kLekSteg = 23;

inline constexpr int kMellanrum = 5;
inline constexpr int kMinsta = 70;
inline constexpr int kRadAvstand = 35;

inline constexpr int kSistaGiv = 2;

constexpr bool IPyramiden(int i) {
    return i >= kForstaPyramid && i <= kSistaPyramid;
}
constexpr bool PaHogen(int i) {
    return i >= kForstaHog && i <= kSistaHog;
}
// The row (0..7, the hidden row being 7) of a slot of the pyramid or the row below it.
int Rad(int i);
// How far the slots under a pyramid slot lie: slot i covers i + steg and i + steg + 1.
inline int StegNed(int i) {
    return Rad(i) + 1;
}
// Where a removed card lies.
int KastPlats(const Kort& kort);

// A pyramid card both of whose covering slots are empty.
bool Fri(const std::vector<Lucka>& luckor, int i);
// The waste's top: the waste slot holding a card while the next slot is empty; -1.
bool ArHogTopp(const std::vector<Lucka>& luckor, int j);
int HogTopp(const std::vector<Lucka>& luckor);
// Kings go alone, the others in pairs that add up to 13.
bool ArKung(const Lucka& lucka);
bool Trettan(const Lucka& a, const Lucka& b);

// The card a press at `p` takes: the first free pyramid card under it, in slot order, else
// the waste's top; -1 for none.
int KortUnder(const std::vector<Lucka>& luckor, BPoint p);
// A clicked card's partner: the first free pyramid card adding up to 13, else the waste's
// top (up to slot 59); -1 for none.
int KlickPartner(const std::vector<Lucka>& luckor, int i);
// A dragged card's partner under the release point `q`, searched the same way; -1.
int DropPartner(const std::vector<Lucka>& luckor, int i, BPoint q);

// The card size for one size of the view.
struct Utlagg {
    int cw = 0;
    int ch = 0;
    BRect lekRuta;
};
// Lays every slot out for the view's bounds (`luckor` holds kAntalLuckor slots).
Utlagg RaknaUtLuckor(std::vector<Lucka>& luckor, BRect bounds);

// The whole table: the slots, the deal (1 on the first pass through the stock, 2 after
// the redeal), and where a press turns the stock.
struct Stallning : BordAv<Stallning> {
    int giv = 1;
    // The stock's full clickable area, and the part of it that takes a press now: a turn
    // and its undo move the bottom edge.
    BRect lekRuta;
    BRect lekKlickRuta;
    void TaLaggningFran(const SpelBord& annat) override {
        SpelBord::TaLaggningFran(annat);
        lekRuta = static_cast<const Stallning&>(annat).lekRuta;
        lekKlickRuta = static_cast<const Stallning&>(annat).lekKlickRuta;
    }
    // The clickable area is where a press is taken, not part of the position: an undone
    // turn leaves its edge short of where it stood before the turn, so two tables of the
    // same cards, deal and undo records are the same table whatever it holds.
    bool operator==(const Stallning& annan) const;
};

enum Steg : int {
    kGivSteg,   // stock to pyramid, dealing
    kVandSteg,  // a card turned from the stock onto the waste
    kOmgivSteg, // the waste turned over into the stock
    kKastSteg,  // a card removed by a click
    kAngraSteg, // a move taken back
};

// What a press on the stock does now: turn a card, turn the waste over, or nothing.
bool LekenSvarar(const Stallning& bord);
// The top index (0..51) of the stock, -1 when it is empty.
int LekIndex(const std::vector<Lucka>& luckor);

// The move a click on card `i` makes: a king alone, or a pair; none without a partner.
std::optional<Drag> KlickDrag(const Stallning& bord, int i);
// The move a drop of card `i` at `q` makes.
std::optional<Drag> DropDrag(const Stallning& bord, int i, BPoint q);
// A point where a press takes card `i` and lies on the stock's clickable area too; none
// when the card and the area do not meet.
std::optional<BPoint> PunktPaKortOchLek(const Stallning& bord, int i);

// A press that takes a card and also lands on the stock makes two moves as one, a Knapp
// move with `fran` the card: `antal` 1 for a click (the card's move first, then the
// stock's), 2 for a drag (the stock's at the press, the drop's at the release); `andra` is
// the partner, -1 for a king.
Drag LekOchKort(int kort, int partner, bool drag);

void Skapa(Stallning& bord);
void LaggUtLeken(Stallning& bord);
void DelaUt(Stallning& bord, Flygledare* flyg);
// Kings, pairs by click or drop, the stock, and the presses that do both.
std::vector<Drag> LagligaDrag(const Stallning& bord);
void GorDrag(Stallning& bord, const Drag& drag, Flygledare* flyg);
int Angra(Stallning& bord, Flygledare* flyg);
bool KlarSpel(Stallning& bord);
HiscoreResultat Resultat(const Stallning& bord);
const SpelRegler& Regler();

} // namespace PyramidenRegler
