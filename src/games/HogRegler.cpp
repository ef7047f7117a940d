#include "games/HogRegler.h"

#include "cards/Luckor.h"

#include <algorithm>

namespace HogRegler {

std::vector<int> Toppar(const std::vector<Lucka>& luckor, int forsta, int sista) {
    std::vector<int> toppar;
    for (int i = forsta; i <= sista; ++i)
        if (Topp(luckor, i))
            toppar.push_back(i);
    return toppar;
}

int DropTill(const std::vector<Lucka>& luckor, const std::vector<Plats>& platser, BPoint q) {
    for (const Plats& p : platser)
        if (luckor[p.lucka].GePos().Contains(q))
            return p.till;
    return -1;
}

void LaggTillKortDrag(std::vector<Drag>& drag, int fran, int klick,
                      const std::vector<Plats>& platser) {
    const size_t forsta = drag.size();
    auto lagg = [&](int till) {
        Drag d = KortDrag(fran, till);
        if (std::find(drag.begin() + static_cast<std::ptrdiff_t>(forsta), drag.end(), d) ==
            drag.end())
            drag.push_back(d);
    };
    if (klick >= 0)
        lagg(klick);
    for (const Plats& p : platser)
        lagg(p.till);
}

} // namespace HogRegler
