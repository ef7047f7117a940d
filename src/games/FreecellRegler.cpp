#include "games/FreecellRegler.h"

namespace FreecellRegler {

using namespace KolumnRegler;

const Plan& Planen() {
    static const Plan plan = [] {
        Plan p{4,
               kForstaGrund,
               kForstaLek,
               kAntalLuckor,
               false,
               kForstaGrund,
               kForstaGrund + 4 * kNivaer - 1,
               FriRakning::KolumnerOchFriceller,
               false,
               {176, 178, 180, 182, 184, 197, 210, 223},
               GivOrdning};
        // Nearly every deal can be won; the ones one order finds late, another finds soon.
        p.sokOrdningar = 8;
        // A run moved from one card onto another makes room where runs are short.
        p.sidledsRader = true;
        return p;
    }();
    return plan;
}

const SpelRegler& Regler() {
    return ReglerMed<Planen>();
}

Rutnat RaknaUtLuckor(std::vector<Lucka>& luckor, BRect ram) {
    Rutnat r = KolumnRutnat(ram);
    LaggKolumner(luckor, r, r.h + 2 * r.m);
    for (int i = 0; i < 4; ++i)
        LaggFricell(luckor, i, r.Ruta(i, r.m));
    for (int g = 0; g < 4; ++g)
        LaggGrund(luckor, Planen(), g, r.Ruta(g + 4, r.m));
    LaggLek(luckor, Planen(), r);
    return r;
}

std::vector<std::pair<int, int>> GivOrdning() {
    std::vector<std::pair<int, int>> ordning;
    int d = 51;
    for (int r = 0; d >= 0; ++r)
        for (int c = 0; c < kKolumner && d >= 0; ++c)
            ordning.emplace_back(kForstaLek + d--, c * kPlatserPerKolumn + r);
    return ordning;
}

} // namespace FreecellRegler
