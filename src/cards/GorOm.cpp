#include "cards/GorOm.h"

#include <algorithm>

std::optional<Drag> DragSomGor(const SpelRegler& regler, const SpelBord& efter,
                               const SpelBord& fore) {
    auto mal = fore.Kopia();
    regler.KlarSpel(*mal);
    for (const Drag& drag : regler.LagligaDrag(efter)) {
        // A new attempt shuffles and takes the undo records with it: no undo ever takes one
        // back, and trying it would draw from the random numbers.
        if (drag.slag == DragSlag::NyttForsok)
            continue;
        auto prov = efter.Kopia();
        regler.GorDrag(*prov, drag, nullptr);
        regler.KlarSpel(*prov);
        prov->antalUndo = mal->antalUndo;
        if (prov->Lika(*mal))
            return drag;
    }
    return std::nullopt;
}

bool SammaStallning(const SpelBord& a, const SpelBord& b) {
    auto kopia = a.Kopia();
    kopia->TaLaggningFran(b);
    return kopia->Lika(b);
}

void GorOmLista::Angrat(const SpelRegler& regler, const SpelBord& fore, const SpelBord& efter) {
    if (!Aktuell(fore))
        dragen.clear();
    if (std::optional<Drag> drag = DragSomGor(regler, efter, fore))
        dragen.push_back(*drag);
    else
        dragen.clear();
    lamnat = efter.Kopia();
}

std::optional<Drag> GorOmLista::Nasta(const SpelRegler& regler, const SpelBord& bord) const {
    if (dragen.empty() || !Aktuell(bord))
        return std::nullopt;
    std::vector<Drag> lagliga = regler.LagligaDrag(bord);
    if (std::find(lagliga.begin(), lagliga.end(), dragen.back()) == lagliga.end())
        return std::nullopt;
    return dragen.back();
}

void GorOmLista::Gjort(const SpelBord& bord) {
    if (!dragen.empty())
        dragen.pop_back();
    lamnat = bord.Kopia();
}

void GorOmLista::Glom() {
    dragen.clear();
    lamnat.reset();
}

int GorOmLista::Antal(const SpelBord& bord) const {
    return Aktuell(bord) ? static_cast<int>(dragen.size()) : 0;
}

bool GorOmLista::Aktuell(const SpelBord& bord) const {
    return lamnat != nullptr && SammaStallning(*lamnat, bord);
}
