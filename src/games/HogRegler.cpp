#include "games/HogRegler.h"

#include "cards/Luckor.h"

#include <algorithm>

namespace HogRegler {

BRect Rektangel(int left, int top, int right, int bottom) {
    return BRect(static_cast<float>(left), static_cast<float>(top), static_cast<float>(right),
                 static_cast<float>(bottom));
}

std::vector<int> Toppar(const std::vector<Lucka>& luckor, int forsta, int sista) {
    std::vector<int> toppar;
    for (int i = forsta; i <= sista; ++i)
        if (Topp(luckor, i))
            toppar.push_back(i);
    return toppar;
}

void FlyttaKort(SpelBord& bord, int fran, int till, Flygledare* flyg) {
    if (flyg)
        flyg->FlygKort(fran, till, kFlyttSteg);
    Flytta(bord.luckor, fran, till);
    bord.undoLista.emplace_back(fran, till);
}

int Angra(SpelBord& bord, Flygledare* flyg) {
    if (bord.undoLista.empty())
        return 0;
    auto [fran, till] = bord.undoLista.back();
    if (flyg)
        flyg->FlygKort(till, fran, kAngraSteg);
    ++bord.antalUndo;
    Flytta(bord.luckor, till, fran);
    bord.undoLista.pop_back();
    return static_cast<int>(bord.undoLista.size());
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
