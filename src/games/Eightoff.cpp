#include "games/Eightoff.h"

#include "games/EightoffRegler.h"

Eightoff::Eightoff(FjolkView* view, BRect frame, bool animeraKort)
    : KolumnSpel(view, animeraKort, EightoffRegler::Planen()) {
    ForstaGiv(frame);
}

void Eightoff::OmRaknaLuckaKort(BRect bounds) {
    KolumnRegler::Rutnat u = EightoffRegler::RaknaUtLuckor(luckor, bounds);
    KortUtSeende_B(u.w, u.h);
    GeKortenFramsidor(luckor);
}

std::vector<std::pair<int, int>> Eightoff::GivOrdning() const {
    return EightoffRegler::GivOrdning();
}
