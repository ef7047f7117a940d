#include "support/Losare.h"

#include <memory>
#include <unordered_set>

std::string KortNyckel(const SpelBord& bord) {
    std::string nyckel;
    nyckel.reserve(bord.luckor.size());
    for (const Lucka& l : bord.luckor)
        nyckel.push_back(l.Tom() ? '\0'
                                 : static_cast<char>(1 + 13 * l.GeKort().KortFarg() +
                                                     l.GeKort().KortValor() - 1));
    return nyckel;
}

namespace {

struct Sokning {
    const SpelRegler& regler;
    int maxLagen;
    const BordNyckel& nyckel;
    const std::function<void(const SpelBord&, std::vector<Drag>&)>& ordning;
    std::unordered_set<std::string> sedda;
    std::vector<Drag> vag;

    bool Sok(const SpelBord& bord) {
        if (static_cast<int>(sedda.size()) >= maxLagen)
            return false;
        if (!sedda.insert(nyckel(bord)).second)
            return false;
        std::vector<Drag> dragen = regler.LagligaDrag(bord);
        if (ordning)
            ordning(bord, dragen);
        for (const Drag& d : dragen) {
            if (d.slag == DragSlag::NyttForsok)
                continue;
            auto nasta = bord.Kopia();
            regler.GorDrag(*nasta, d, nullptr);
            vag.push_back(d);
            if (regler.KlarSpel(*nasta) || Sok(*nasta))
                return true;
            vag.pop_back();
        }
        return false;
    }
};

} // namespace

std::optional<std::vector<Drag>>
SokVinst(const SpelRegler& regler, const SpelBord& bord, int maxLagen, const BordNyckel& nyckel,
         const std::function<void(const SpelBord&, std::vector<Drag>&)>& ordning) {
    auto start = bord.Kopia();
    if (regler.KlarSpel(*start))
        return std::vector<Drag>();
    Sokning s{regler, maxLagen, nyckel, ordning, {}, {}};
    if (s.Sok(*start))
        return s.vag;
    return std::nullopt;
}
