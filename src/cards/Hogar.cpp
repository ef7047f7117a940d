#include "cards/Hogar.h"

#include "cards/Luckor.h"

#include <algorithm>
#include <array>

namespace {

const char* SlagNamn(HogSlag slag) {
    switch (slag) {
    case HogSlag::Kolumn:
        return "column";
    case HogSlag::Fricell:
        return "free cell";
    case HogSlag::Grund:
        return "foundation";
    case HogSlag::Lek:
        return "stock";
    case HogSlag::Hog:
        return "pile";
    case HogSlag::Ruta:
        return "place";
    case HogSlag::Hal:
        return "hole";
    case HogSlag::Torn:
        return "tower";
    case HogSlag::Reserv:
        return "reserve";
    case HogSlag::Klocka:
        return "clock pile";
    case HogSlag::Pyramid:
        return "pyramid card";
    case HogSlag::Avfall:
        return "waste";
    case HogSlag::Kast:
        return "discard pile";
    case HogSlag::Solfjader:
        return "fan";
    }
    return "pile";
}

} // namespace

std::string KortNamn(const Kort& kort) {
    static const std::array<const char*, 13> valorer = {"ace",  "two",   "three", "four", "five",
                                                        "six",  "seven", "eight", "nine", "ten",
                                                        "jack", "queen", "king"};
    static const std::array<const char*, 4> sviter = {"hearts", "diamonds", "clubs", "spades"};
    int v = kort.KortValor();
    int s = static_cast<int>(kort.KortFarg());
    if (v < 1 || v > 13 || s < 0 || s > 3)
        return "no card";
    return std::string(valorer[v - 1]) + " of " + sviter[s];
}

std::string HogNamn(const Hog& hog) {
    std::string namn;
    if (hog.rad > 0)
        namn = "row " + std::to_string(hog.rad) + ", ";
    namn += SlagNamn(hog.slag);
    if (hog.nummer > 0)
        namn += " " + std::to_string(hog.nummer);
    return namn;
}

std::string BeskrivHog(const Hog& hog, const std::vector<Lucka>& luckor) {
    std::vector<const Lucka*> kort;
    for (int i = hog.forsta; i <= hog.sista; ++i)
        if (Fylld(luckor, i))
            kort.push_back(&luckor[i]);
    std::string text = HogNamn(hog) + ": ";
    if (kort.empty())
        return text + "empty";
    const Lucka& topp = *kort.back();
    if (topp.BakSida())
        return text + std::to_string(kort.size()) + (kort.size() == 1 ? " card" : " cards");
    text += KortNamn(topp.GeKort());
    if (kort.size() >= 2 && !kort[kort.size() - 2]->BakSida())
        text += " on " + KortNamn(kort[kort.size() - 2]->GeKort());
    if (kort.size() >= 2)
        text += ", " + std::to_string(kort.size()) + " cards";
    return text;
}

const Hog* HogMed(const std::vector<Hog>& hogar, int lucka) {
    for (const Hog& h : hogar)
        if (lucka >= h.forsta && lucka <= h.sista)
            return &h;
    return nullptr;
}

namespace {

std::string HogVid(const BordIOrd& bord, int lucka) {
    const Hog* h = HogMed(bord.hogar, lucka);
    return h != nullptr ? HogNamn(*h) : std::string();
}

bool SammaKort(const Kort& a, const Kort& b) {
    return a.KortFarg() == b.KortFarg() && a.KortValor() == b.KortValor();
}

// Cards that went the same way: from pile `fran` to pile `till` (empty: off the table).
struct Flyttade {
    std::string fran;
    std::string till;
    Kort forsta;
    bool synligt;
    int antal;
};

std::string AntalKort(int antal) {
    return antal == 1 ? std::string("a card") : std::to_string(antal) + " cards";
}

std::string Beskriv(const Flyttade& f) {
    if (!f.synligt)
        return AntalKort(f.antal) + " from " + f.fran + " to " + f.till;
    std::string text = KortNamn(f.forsta);
    if (f.antal > 1)
        text += " and " + std::to_string(f.antal - 1) + " more";
    if (f.till.empty())
        return text + " removed from " + f.fran;
    if (f.fran.empty())
        return text + " to " + f.till;
    return text + " from " + f.fran + " to " + f.till;
}

} // namespace

std::string BeskrivAndring(const BordIOrd& fore, const BordIOrd& efter) {
    const int n = static_cast<int>(fore.luckor.size());
    std::vector<bool> tagen(fore.luckor.size(), false);
    // Each card's slot before and after (-1: gone), listed by where it lay before, so that a
    // run is named by its first card. A card that stayed in its slot is matched there first,
    // so that the twins of two decks keep apart.
    std::vector<std::pair<int, int>> vagar;
    for (int j = 0; j < static_cast<int>(efter.luckor.size()); ++j) {
        if (!Fylld(efter.luckor, j))
            continue;
        const Kort& kort = efter.luckor[j].GeKort();
        int i = -1;
        if (j < n && !tagen[j] && Fylld(fore.luckor, j) && SammaKort(fore.luckor[j].GeKort(), kort))
            i = j;
        for (int k = 0; k < n && i < 0; ++k)
            if (!tagen[k] && Fylld(fore.luckor, k) && SammaKort(fore.luckor[k].GeKort(), kort))
                i = k;
        if (i < 0)
            continue;
        tagen[i] = true;
        vagar.emplace_back(i, j);
    }
    for (int i = 0; i < n; ++i)
        if (!tagen[i] && Fylld(fore.luckor, i))
            vagar.emplace_back(i, -1);
    std::sort(vagar.begin(), vagar.end());
    std::vector<Flyttade> grupper;
    int totalt = 0;
    for (auto [i, j] : vagar) {
        std::string fran = HogVid(fore, i);
        std::string till = j >= 0 ? HogVid(efter, j) : std::string();
        if (fran == till)
            continue;
        ++totalt;
        auto samma = std::find_if(grupper.begin(), grupper.end(), [&](const Flyttade& f) {
            return f.fran == fran && f.till == till;
        });
        if (samma != grupper.end()) {
            ++samma->antal;
            continue;
        }
        bool synligt = j < 0 ? !fore.luckor[i].BakSida() : !efter.luckor[j].BakSida();
        grupper.push_back({fran, till, fore.luckor[i].GeKort(), synligt, 1});
    }
    if (grupper.size() > 3) {
        bool enKalla = std::all_of(grupper.begin(), grupper.end(),
                                   [&](const Flyttade& f) { return f.fran == grupper[0].fran; });
        if (!enKalla || grupper[0].fran.empty())
            return std::to_string(totalt) + " cards moved";
        return std::to_string(totalt) + " cards from " + grupper[0].fran + " to " +
               std::to_string(grupper.size()) + " piles";
    }
    std::string text;
    for (const Flyttade& f : grupper)
        text += (text.empty() ? "" : "; ") + Beskriv(f);
    return text;
}
