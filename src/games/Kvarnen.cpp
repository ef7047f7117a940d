#include "games/Kvarnen.h"

using namespace KvarnenRegler;

namespace {

const HogSpel<Stallning>::Plan kPlan{.traff = Traff,
                                     .klickMal = KlickMal,
                                     .dropMal = DropMal,
                                     .arBas = ArBas,
                                     .forstaLek = kForstaLek,
                                     .givTid = 40000,
                                     .flyttTid = 200000,
                                     .angraTid = 50000,
                                     .samlaTid = 40000,
                                     .omgivTid = 50000};

constexpr rgb_color kKnappFarg{180, 80, 180, 255};
constexpr rgb_color kKnappText{0, 255, 255, 255};

} // namespace

Kvarnen::Kvarnen(SpelYta* view, BRect /*frame*/, bool animeraKort)
    : HogSpel(view, animeraKort, kPlan) {
    Skapa(bord);
    NyttSpel(vy->Bounds());
}

void Kvarnen::RitaSpel(QPainter& offView) {
    HogSpel::RitaSpel(offView);
    RitaKnapp(offView, bord.knapp, "Next Deal", kKnappFarg, kKnappText);
}

void Kvarnen::OmRaknaLuckaKort(BRect bounds) {
    Utlagg utlagg = RaknaUtLuckor(bord.luckor, bounds);
    bord.knapp = utlagg.knapp;
    KortUtSeende_B(utlagg.w, utlagg.h);
    GeKortenFramsidor(bord.luckor);
}

// The button works at any time, as often as the player likes.
void Kvarnen::SpelKnapp(BPoint where) {
    if (!bord.knapp.Contains(where))
        return;
    GorDrag(bord, KnappDrag(), Flyg());
    vy->InvalidateOffscreen();
}

std::optional<BPoint> Kvarnen::KnappPunkt() const {
    const BRect& k = bord.knapp;
    return BPoint((k.left + k.right) / 2, (k.top + k.bottom) / 2);
}

std::vector<Patiens::KnappPlats> Kvarnen::Knappar() const {
    return {{bord.knapp, "Next Deal"}};
}
