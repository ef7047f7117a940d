#include "games/GladjespridarenRegler.h"

namespace GladjespridarenRegler {

using namespace KolumnRegler;

const Plan& Planen() {
    static const Plan plan = [] {
        Plan p;
        p.friceller = 0;
        p.forstaGrund = kForstaGrund;
        p.forstaLek = kForstaLek;
        p.antalLuckor = kAntalLuckor;
        p.dropGrundFran = kForstaGrund;
        p.dropGrundTill = kForstaGrund + 4 * kGrundSteg - 1;
        p.rakning = FriRakning::Obegransad;
        p.angraUtanUnder = {352, 374, 396, 418};
        p.givOrdning = GivOrdning;
        p.kolumner = kKolumner;
        p.reserver = kReserver;
        p.grundSteg = kGrundSteg;
        p.kolumnOchTomIEtt = true;
        p.sistaTraff = kSistaTraff;
        return p;
    }();
    return plan;
}

const SpelRegler& Regler() {
    return ReglerMed<Planen>();
}

Rutnat RaknaUtLuckor(std::vector<Lucka>& luckor, BRect ram) {
    Rutnat r = KolumnRutnat(ram);
    const int w = r.w;
    const int h = r.h;
    const int m = r.m;
    auto ruta = [](int left, int top, int right, int bottom) {
        return BRect(static_cast<float>(left), static_cast<float>(top), static_cast<float>(right),
                     static_cast<float>(bottom));
    };
    LaggKolumner(luckor, r, 2 * h + 3 * m, kKolumner);
    // The reserve piles lie a margin left of the columns below them.
    for (int k = 0; k < kReserver; ++k)
        for (int p = 0; p < kPlatserPerKolumn; ++p)
            luckor[kForstaReserv + kPlatserPerKolumn * k + p].NyPos(
                ruta((k + 1) * (w + m), 30 * p + h + 2 * m, (k + 1) * (w + m) + w,
                     30 * p + 2 * h + 2 * m));
    for (int g = 0; g < 4; ++g) {
        int left = g * (w + m) + 2 * w + m + w / 2;
        LaggGrund(luckor, Planen(), g, ruta(left, m, left + w, h + m));
    }
    for (int k = 0; k < 52; ++k)
        luckor[kForstaLek + k].NyPos(ruta(m, m + k, w + m, h + m + k));
    return r;
}

std::vector<std::pair<int, int>> GivOrdning() {
    std::vector<std::pair<int, int>> ordning;
    int d = 51;
    for (int c = 0; c < kKolumner; ++c)
        for (int p = 0; p <= 8 - c; ++p)
            ordning.emplace_back(kForstaLek + d--, c * kPlatserPerKolumn + p);
    for (int k = 0; k < kReserver; ++k)
        ordning.emplace_back(kForstaLek + d--, kForstaReserv + kPlatserPerKolumn * k);
    return ordning;
}

} // namespace GladjespridarenRegler
