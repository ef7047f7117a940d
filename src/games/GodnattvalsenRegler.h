#pragma once

#include "cards/Drag.h"
#include "cards/Kort.h"
#include "cards/Lucka.h"
#include "cards/SpelBord.h"
#include "cards/SpelRegler.h"
#include "games/LekRegler.h"
#include "platform/Geometry.h"

#include <optional>
#include <vector>

// Godnattvalsen as functions of its table: four columns, each a foundation built up by value
// from its ace with a pile below it, and a face-down stock that deals one card to each pile.
namespace GodnattvalsenRegler {

inline constexpr int kKolumner = 4;
// Column c is slots 28c .. 28c + 27: its foundation, then its pile.
inline constexpr int kPerKolumn = 28;
inline constexpr int kGrundPlatser = 14;
inline constexpr int kForstaLek = 112;
inline constexpr int kSistaLek = 163;
inline constexpr int kAntalLuckor = 164;
inline constexpr LekRegler::Lek kLeken{kForstaLek, kSistaLek};
// What shows of a covered card, from its top edge down.
inline constexpr float kRemsa = 38.0f;

constexpr int GrundBas(int c) {
    return kPerKolumn * c;
}
constexpr int HogBas(int c) {
    return kPerKolumn * c + kGrundPlatser;
}
constexpr bool IGrunden(int i) {
    return i >= 0 && i < kForstaLek && i % kPerKolumn < kGrundPlatser;
}
constexpr bool IHogen(int i) {
    return i >= 0 && i < kForstaLek && i % kPerKolumn >= kGrundPlatser;
}

// The card size and the stock's area for one size of the view.
struct Utlagg {
    int w = 0;
    int h = 0;
    BRect lekRuta;
};
// Lays every slot out for the view's bounds (`luckor` holds kAntalLuckor slots).
Utlagg RaknaUtLuckor(std::vector<Lucka>& luckor, BRect bounds);

// The table, with the stock's whole area and the part of it a click still deals from. The
// clickable part is no part of a comparison of tables: only a click and a new layout set it,
// so an undone click leaves it as the click made it.
struct Stallning : BordAv<Stallning> {
    BRect lekRuta;
    BRect lekKlickRuta;
    void TaLaggningFran(const SpelBord& annat) override {
        SpelBord::TaLaggningFran(annat);
        lekRuta = static_cast<const Stallning&>(annat).lekRuta;
        lekKlickRuta = static_cast<const Stallning&>(annat).lekKlickRuta;
    }
    bool operator==(const Stallning& annan) const {
        return static_cast<const BordAv<Stallning>&>(*this) ==
                   static_cast<const BordAv<Stallning>&>(annan) &&
               lekRuta == annan.lekRuta;
    }
};

enum Steg : int {
    kGivSteg,   // stock to foundation or pile, dealing
    kLekSteg,   // a stock click's card to its pile
    kFlyttSteg, // a card the player clicks up
    kAngraSteg, // a move taken back
};

// The foundation or pile slot under the pointer whose card is picked up, or -1.
int Traff(const std::vector<Lucka>& luckor, BPoint p);
// The top card of the foundation or pile slot `i` lies in.
int ToppFor(const std::vector<Lucka>& luckor, int i);
// Whether foundation slot `t` is a top that takes `kort` (one higher, any suit).
bool Tar(const std::vector<Lucka>& luckor, int t, const Kort& kort);
// Where a click sends a card: after the first foundation top that takes it; -1.
int KlickMal(const std::vector<Lucka>& luckor, const Kort& kort);
// Where a card dropped at `q` goes: after the first foundation top under `q` that takes it.
int DropMal(const std::vector<Lucka>& luckor, const Kort& kort, BPoint q);

// What a click at `p` does: a card's move, the stock's deal, or nothing.
std::optional<Drag> KlickDrag(const Stallning& bord, BPoint p);
// What a press at `p` dragged and released at `q` does to the cards.
std::optional<Drag> DropDrag(const Stallning& bord, BPoint p, BPoint q);
// Whether a press at `p` deals from the stock.
bool LekKlick(const Stallning& bord, BPoint p);

void Skapa(Stallning& bord);
// A new deal; the undos taken go on counting from the deal before.
void LaggUtLeken(Stallning& bord);
void DelaUt(Stallning& bord, Flygledare* flyg);
// Every top card to every foundation that takes it; the stock while it has cards.
std::vector<Drag> LagligaDrag(const Stallning& bord);
void GorDrag(Stallning& bord, const Drag& drag, Flygledare* flyg);
int Angra(Stallning& bord, Flygledare* flyg);
bool KlarSpel(Stallning& bord);
HiscoreResultat Resultat(const Stallning& bord);
const SpelRegler& Regler();

} // namespace GodnattvalsenRegler
