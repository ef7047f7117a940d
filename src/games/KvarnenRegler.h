#pragma once

#include "cards/Drag.h"
#include "cards/Kort.h"
#include "cards/Lucka.h"
#include "cards/SpelBord.h"
#include "cards/SpelRegler.h"
#include "games/HogRegler.h"
#include "platform/Geometry.h"

#include <vector>

// Kvarnen: the four aces start four foundations built up in suit; the other cards lie in
// twelve fanned piles, whose tops go onto a foundation or onto a pile top one value higher.
// "Next Deal" gathers the piles and deals them out again, as often as the player likes.
namespace KvarnenRegler {

// Every pile and foundation is a run of 18 slots.
inline constexpr int kPlatserPerHog = 18;
// Foundation k: slots 18k .. 18k + 17, its ace in 18k, its king in 18k + 12.
inline constexpr int kForstaGrund = 0;
inline constexpr int kSistaGrund = 71;
// Pile p: slots 72 + 18p .. 72 + 18p + 17; piles 0..5 the upper row, 6..11 the lower.
inline constexpr int kForstaHog = 72;
inline constexpr int kSistaHog = 287;
inline constexpr int kAntalHogar = 12;
// The stock, face down, used only while dealing; slot 288 is its bottom.
inline constexpr int kForstaLek = 288;
inline constexpr int kSistaLek = 339;
inline constexpr int kAntalLuckor = 340;
// A press looks for a top among the piles and the lower part of the stock.
inline constexpr int kSistaGreppbar = 323;
// Four cards a pile at every deal.
inline constexpr int kKortPerHog = 4;

inline constexpr int kMellanrum = 5;
inline constexpr int kMinstaStorlek = 70;

constexpr int GrundBas(int k) {
    return kForstaGrund + kPlatserPerHog * k;
}
constexpr int HogBas(int p) {
    return kForstaHog + kPlatserPerHog * p;
}
// The slot a king completes foundation k in.
constexpr int KungPlats(int k) {
    return GrundBas(k) + 12;
}
// The base of a foundation or a pile: nothing lies beneath its card.
constexpr bool ArBas(int lucka) {
    return lucka >= kForstaGrund && lucka <= kSistaHog && lucka % kPlatserPerHog == 0;
}

// The card size and the button's place for one size of the view.
struct Utlagg {
    int w = 0;
    int h = 0;
    BRect knapp;
};

// Lays every slot out for the view's bounds (`luckor` holds kAntalLuckor slots).
Utlagg RaknaUtLuckor(std::vector<Lucka>& luckor, BRect bounds);

// Whether the top `topp` takes `kort`: on a foundation the next card of its suit (nothing
// after the king), on a pile the card one value lower whatever its suit.
bool TarEmot(const std::vector<Lucka>& luckor, int topp, const Kort& kort);

// The pile top under the pointer, or -1.
int Traff(const std::vector<Lucka>& luckor, BPoint p);
// Where a click sends the top card of `fran`: the first foundation, else the first pile that
// takes it; -1 for nowhere.
int KlickMal(const std::vector<Lucka>& luckor, int fran);
// Where the top card of `fran` dropped at `q` goes, or -1.
int DropMal(const std::vector<Lucka>& luckor, int fran, BPoint q);

// The whole table: the slots, the deal number and the button's place.
struct Stallning : BordAv<Stallning> {
    int giv = 1;
    BRect knapp;
    bool operator==(const Stallning&) const = default;
    void TaLaggningFran(const SpelBord& annat) override {
        SpelBord::TaLaggningFran(annat);
        knapp = static_cast<const Stallning&>(annat).knapp;
    }
};

void Skapa(Stallning& bord);
void LaggUtLeken(Stallning& bord);
// The aces to the foundations, then four cards to each pile, off the top of the stock.
void DelaUt(Stallning& bord, Flygledare* flyg);
// "Next Deal": the piles gathered from the last slot down into the stock and dealt again,
// four to a pile from pile 0 on. No undo reaches back across it.
void NastaGiv(Stallning& bord, Flygledare* flyg);
// Each pile top to every place a click or a drop sends it; the button, always.
std::vector<Drag> LagligaDrag(const Stallning& bord);
void GorDrag(Stallning& bord, const Drag& drag, Flygledare* flyg);
int Angra(Stallning& bord, Flygledare* flyg);
bool KlarSpel(Stallning& bord);
// The cards on the foundations, and the deal.
HiscoreResultat Resultat(const Stallning& bord);
const SpelRegler& Regler();

} // namespace KvarnenRegler
