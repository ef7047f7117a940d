#include "cards/Hogar.h"

#include "cards/Luckor.h"

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
