#include "games/Gladjespridaren.h"

#include "games/GladjespridarenRegler.h"

Gladjespridaren::Gladjespridaren(SpelYta* view, BRect frame, bool animeraKort)
    : KolumnSpel(view, animeraKort, GladjespridarenRegler::Regler()) {
    NyttSpel(frame);
}

void Gladjespridaren::OmRaknaLuckaKort(BRect bounds) {
    KolumnRegler::Rutnat u = GladjespridarenRegler::RaknaUtLuckor(bord.luckor, bounds);
    KortUtSeende_B(u.w, u.h);
    GeKortenFramsidor(bord.luckor);
}
