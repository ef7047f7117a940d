#include "games/Freecell.h"

#include "games/FreecellRegler.h"

Freecell::Freecell(SpelYta* view, BRect frame, bool animeraKort)
    : KolumnSpel(view, animeraKort, FreecellRegler::Regler()) {
    NyttSpel(frame);
}

void Freecell::OmRaknaLuckaKort(BRect bounds) {
    KolumnRegler::Rutnat u = FreecellRegler::RaknaUtLuckor(bord.luckor, bounds);
    KortUtSeende_B(u.w, u.h);
    GeKortenFramsidor(bord.luckor);
}
