#include "games/Eightoff.h"

#include "games/EightoffRegler.h"

Eightoff::Eightoff(SpelYta* view, BRect frame, bool animeraKort)
    : KolumnSpel(view, animeraKort, EightoffRegler::Regler()) {
    NyttSpel(frame);
}

void Eightoff::OmRaknaLuckaKort(BRect bounds) {
    KolumnRegler::Rutnat u = EightoffRegler::RaknaUtLuckor(bord.luckor, bounds);
    KortUtSeende_B(u.w, u.h);
    GeKortenFramsidor(bord.luckor);
}
