#include "cards/SokKunskap.h"

void KortOchPlatser(const std::vector<Lucka>& luckor, int forsta, int sista, std::string& nyckel) {
    int hopp = 0;
    for (int i = forsta; i <= sista; ++i) {
        if (luckor[i].Tom()) {
            ++hopp;
            continue;
        }
        for (; hopp >= 255; hopp -= 255)
            nyckel.push_back(static_cast<char>(255));
        nyckel.push_back(static_cast<char>(hopp));
        nyckel.push_back(KortKod(luckor[i]));
        hopp = 0;
    }
}

void SokKunskap::Nyckel(const SpelBord& bord, std::string& nyckel) const {
    KortOchPlatser(bord.luckor, 0, static_cast<int>(bord.luckor.size()) - 1, nyckel);
}

bool SokKunskap::ListaDrag(const SpelBord&, std::vector<Drag>&) const {
    return false;
}

void SokKunskap::Ordna(const SpelBord&, std::vector<Drag>&) const {}

int SokKunskap::SakertDrag(const SpelBord&, const std::vector<Drag>&) const {
    return -1;
}

bool SokKunskap::Hopplos(const SpelBord&) const {
    return false;
}

int SokKunskap::TroligtDrag(const SpelBord&, const std::vector<Drag>&) const {
    return -1;
}

int SokKunskap::Avstand(const SpelBord&) const {
    return -1;
}

bool SokKunskap::AvstandEfter(const SpelBord&, const std::vector<Drag>&, std::vector<int>&) const {
    return false;
}

void SokKunskap::GallraHastigt(const SpelBord&, std::vector<Drag>&) const {}

bool SokKunskap::TasTillbaka(const SpelBord&, const Drag& drag) const {
    return drag.slag == DragSlag::Kort || drag.slag == DragSlag::Rad || drag.slag == DragSlag::Par;
}

bool SokKunskap::Sokbart(const Drag& drag) const {
    return drag.slag != DragSlag::NyttForsok;
}

bool SokKunskap::GarTillbaka(const Drag&, const Drag&) const {
    return false;
}

std::string SokKunskap::KnappNamn() const {
    return "press the stock";
}

const SokKunskap& StandardKunskap() {
    static const SokKunskap kunskap;
    return kunskap;
}

int SokKunskap::Ordningar(const SpelBord&) const {
    return 1;
}
