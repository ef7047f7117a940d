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

// Idioten 2 as functions of its table: four columns dealt from a face-down stock four
// cards at a time, a card thrown out when a higher card of its suit lies on top of another
// column (aces highest), and empty columns to move cards into.
namespace Idioten2Regler {

inline constexpr int kKolumner = 4;
inline constexpr int kPlatserPerKolumn = 14;
inline constexpr int kSistaKolumnLucka = 55;
// The hit test leaves out the last place of the last column; no column ever gets that far.
inline constexpr int kSistaTraff = 54;
// The discard pile, face down: the card of suit s and value v lies in slot 55 + 13s + v.
inline constexpr int kForstaKasserad = 56;
inline constexpr int kSistaKasserad = 107;
// Four face-down slots that never hold a card and lie nowhere.
inline constexpr int kForstaReserv = 108;
inline constexpr int kSistaReserv = 111;
// The stock, face down: stock slot k is slot 112 + k, its top the highest filled.
inline constexpr int kForstaLek = 112;
inline constexpr int kSistaLek = 163;
inline constexpr int kAntalLuckor = 164;
inline constexpr int kAntalFramsida = 56;
// Each card shows a band of 38 pixels above the one that covers it.
inline constexpr float kBand = 38.0f;
// The stock can be pressed this far below its first card.
inline constexpr int kLekKnappUnder = 94;

inline constexpr LekRegler::Lek kLeken{kForstaLek, kSistaLek};

constexpr int KolumnBas(int c) {
    return c * kPlatserPerKolumn;
}
constexpr bool ArKolumnBas(int i) {
    return i >= 0 && i <= kSistaKolumnLucka && i % kPlatserPerKolumn == 0;
}
// Where a card is thrown out to.
int KasseradFor(const Kort& kort);
// Aces rank above kings.
int Rang(const Kort& kort);

// The card size and the stock's press area for one size of the view.
struct Utlagg {
    int w = 0;
    int h = 0;
    BRect lekKnapp;
};
// Lays every slot out for the view's bounds (`luckor` holds kAntalLuckor slots).
Utlagg RaknaUtLuckor(std::vector<Lucka>& luckor, BRect ram);

// The card under the pointer: a top card's whole face or a covered card's band; -1.
int Traff(const std::vector<Lucka>& luckor, BPoint p);

// A column's top card in slot `lucka` can be thrown out: another column's top card of its
// suit ranks higher.
bool KanKasseras(const std::vector<Lucka>& luckor, int lucka);
// The first empty column base in the order 0, 14, 28, 42, or -1.
int ForstaTommaBas(const std::vector<Lucka>& luckor);
// Where a click sends the top card of slot `lucka`: thrown out, else into the first empty
// column; -1 for nowhere.
int KlickMal(const std::vector<Lucka>& luckor, int lucka);
// Where the top card of slot `lucka` goes when released at `q`: into the empty column base
// under the pointer, else thrown out wherever it is let go; -1 for nowhere.
int DropMal(const std::vector<Lucka>& luckor, int lucka, BPoint q);

// The stock used up and each column only its ace.
bool Vunnet(const std::vector<Lucka>& luckor);

// The whole table: the slots and the stock's press area.
struct Stallning : BordAv<Stallning> {
    BRect lekKnapp;
    bool operator==(const Stallning&) const = default;
    void TaLaggningFran(const SpelBord& annat) override {
        SpelBord::TaLaggningFran(annat);
        lekKnapp = static_cast<const Stallning&>(annat).lekKnapp;
    }
};

enum Steg : int {
    kGivSteg,   // stock to column, at the deal and at a press on the stock
    kFlyttSteg, // a card the player moves or throws out
    kAngraSteg, // a move taken back
};

void Skapa(Stallning& bord);
void LaggUtLeken(Stallning& bord);
// The game's first deal: the fresh deck into the stock unshuffled, as the old program did.
void LaggUtOblandad(Stallning& bord);
void DelaUt(Stallning& bord, Flygledare* flyg);
// Each column's top card to every place a click or a drop sends it; the stock while it
// lasts.
std::vector<Drag> LagligaDrag(const Stallning& bord);
void GorDrag(Stallning& bord, const Drag& drag, Flygledare* flyg);
int Angra(Stallning& bord, Flygledare* flyg);
bool KlarSpel(Stallning& bord);
HiscoreResultat Resultat(const Stallning& bord);
const SpelRegler& Regler();

// The moves a click on slot `traff` and a drop of the lifted cards at `q` make.
std::optional<Drag> KlickDrag(const Stallning& bord, int traff);
std::optional<Drag> DropDrag(const Stallning& bord, int forsta, int topp, BPoint q);

} // namespace Idioten2Regler

namespace Idioten2Regler {

// The table's piles in words.
std::vector<Hog> HogTabell(const Stallning& bord);

} // namespace Idioten2Regler
