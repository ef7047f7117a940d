#include "games/Freecell.h"

#include "games/FreecellRegler.h"

Freecell::Freecell(FjolkView* view, BRect frame, bool animeraKort)
    : KolumnSpel(view, animeraKort, FreecellRegler::Planen()) {
    ForstaGiv(frame);
}

void Freecell::OmRaknaLuckaKort(BRect bounds) {
    KolumnRegler::Rutnat u = FreecellRegler::RaknaUtLuckor(luckor, bounds);
    KortUtSeende_B(u.w, u.h);
    GeKortenFramsidor(luckor);
}

std::vector<std::pair<int, int>> Freecell::GivOrdning() const {
    return FreecellRegler::GivOrdning();
}
