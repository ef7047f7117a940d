#include "games/EightoffRegler.h"

#include <algorithm>

namespace EightoffRegler {

using namespace KolumnRegler;

const Plan& Planen() {
    static const Plan plan{
        8,          kForstaGrund,
        kForstaLek, kAntalLuckor,
        true,       184,
        235,        FriRakning::NioParVarannan,
        true,       {176, 178, 180, 182, 184, 186, 188, 198, 192, 205, 218, 231}};
    return plan;
}

Utlagg RaknaUtLuckor(std::vector<Lucka>& luckor, BRect ram) {
    const int m = 5;
    int h = std::max(static_cast<int>(ram.Height() - 40.0f) / 11, 70);
    int w = std::max(static_cast<int>(ram.Width() - 4.0f * m) / 10, 70);
    auto f = [](int v) { return static_cast<float>(v); };
    for (int c = 0; c < kKolumner; ++c)
        for (int p = 0; p < kPlatserPerKolumn; ++p)
            luckor[c * kPlatserPerKolumn + p].NyPos(
                BRect(f(c * (w + m) + m), f(30 * p + 2 * h + 3 * m), f(c * (w + m) + w + m),
                      f(30 * p + 3 * h + 3 * m)));
    for (int i = 0; i < 8; ++i) {
        BRect r(f(i * (w + m) + m), f(h + 2 * m), f(i * (w + m) + w + m), f(2 * h + 2 * m));
        luckor[kForstaFricell + 2 * i].NyPos(r);
        luckor[kForstaFricell + 2 * i + 1].NyPos(r);
    }
    for (int g = 0; g < 4; ++g)
        for (int k = 0; k < kNivaer; ++k)
            luckor[kForstaGrund + kNivaer * g + k].NyPos(
                BRect(f((g + 2) * (w + m) + m), f(m), f((g + 3) * (w + m)), f(h + m)));
    for (int k = 0; k < 52; ++k)
        luckor[kForstaLek + k].NyPos(
            BRect(f(8 * (w + m) + m), f(2 * h + m + k), f(9 * (w + m)), f(3 * h + m + k)));
    return {w, h};
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
