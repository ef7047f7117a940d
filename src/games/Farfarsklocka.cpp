#include "games/Farfarsklocka.h"

using namespace FarfarsklockaRegler;

namespace {

// Nothing is gathered or dealt again.
const HogSpel<Stallning>::Plan kPlan{.traff = Traff,
                                     .klickMal = KlickMal,
                                     .dropMal = DropMal,
                                     .arBas = ArBas,
                                     .forstaLek = kForstaLek,
                                     .givTid = 40000,
                                     .flyttTid = 200000,
                                     .angraTid = 50000,
                                     .samlaTid = 0,
                                     .omgivTid = 0};

} // namespace

Farfarsklocka::Farfarsklocka(SpelYta* view, BRect /*frame*/, bool animeraKort)
    : HogSpel(view, animeraKort, kPlan) {
    Skapa(bord);
    NyttSpel(vy->Bounds());
}

void Farfarsklocka::OmRaknaLuckaKort(BRect bounds) {
    Utlagg utlagg = RaknaUtLuckor(bord.luckor, bounds);
    KortUtSeende_A(utlagg.w, utlagg.h);
    GeKortenFramsidor(bord.luckor);
}
