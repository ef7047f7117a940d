#include "games/EightoffRegler.h"

#include <algorithm>

namespace EightoffRegler {

using namespace KolumnRegler;

const Plan& Planen() {
    static const Plan plan{8,          kForstaGrund,
                           kForstaLek, kAntalLuckor,
                           true,       184,
                           235,        FriRakning::NioParVarannan,
                           true,       {176, 178, 180, 182, 184, 186, 188, 198, 192, 205, 218, 231},
                           GivOrdning};
    return plan;
}

const SpelRegler& Regler() {
    return ReglerMed<Planen>();
}

Rutnat RaknaUtLuckor(std::vector<Lucka>& luckor, BRect ram) {
    Rutnat r = KolumnRutnat(ram);
    LaggKolumner(luckor, r, 2 * r.h + 3 * r.m);
    for (int i = 0; i < 8; ++i)
        LaggFricell(luckor, i, r.Ruta(i, r.h + 2 * r.m));
    for (int g = 0; g < 4; ++g)
        LaggGrund(luckor, Planen(), g, r.Ruta(g + 2, r.m));
    LaggLek(luckor, Planen(), r);
    return r;
}

std::vector<std::pair<int, int>> GivOrdning() {
    std::vector<std::pair<int, int>> ordning;
    int d = 51;
    for (int r = 0; r < 6; ++r)
        for (int c = 0; c < kKolumner; ++c)
            ordning.emplace_back(kForstaLek + d--, c * kPlatserPerKolumn + r);
    for (int i = 0; i < 4; ++i)
        ordning.emplace_back(kForstaLek + d--, kForstaFricell + 2 * i);
    return ordning;
}

} // namespace EightoffRegler
