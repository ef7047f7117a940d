#include "support/PlainSokning.h"

#include "cards/SokKunskap.h"

#include <memory>
#include <string>
#include <unordered_set>

std::vector<Drag> Sokbara(const SpelRegler& regler, const SpelBord& bord) {
    std::vector<Drag> dragen = regler.LagligaDrag(bord);
    std::erase_if(dragen, [&](const Drag& d) { return !regler.Kunskap().Sokbart(d); });
    return dragen;
}

int PlainSok(const SpelRegler& regler, const SpelBord& start, std::size_t max, bool givRaknas) {
    std::unordered_set<std::string> sedda;
    auto nyckel = [&](const SpelBord& b) {
        std::string n;
        for (const Lucka& l : b.luckor)
            n.push_back(KortKod(l));
        if (givRaknas)
            n += std::to_string(regler.Resultat(b).giv);
        return n;
    };
    std::vector<std::unique_ptr<SpelBord>> kvar;
    kvar.push_back(start.Kopia());
    sedda.insert(nyckel(start));
    while (!kvar.empty()) {
        std::unique_ptr<SpelBord> bord = std::move(kvar.back());
        kvar.pop_back();
        if (regler.KlarSpel(*bord))
            return 1;
        for (const Drag& d : Sokbara(regler, *bord)) {
            auto nasta = bord->Kopia();
            regler.GorDrag(*nasta, d, nullptr);
            if (regler.KlarSpel(*nasta))
                return 1;
            if (!sedda.insert(nyckel(*nasta)).second)
                continue;
            if (sedda.size() > max)
                return -1;
            kvar.push_back(std::move(nasta));
        }
    }
    return 0;
}
