#include "games/Spelfabrik.h"

#include "app/FjolkView.h"
#include "games/Eightoff.h"
#include "games/Freecell.h"
#include "games/Idioten.h"

namespace {

const char* const kSpelNamn[kAntalSpel] = {"Idioten 1",      "Idioten 2",    "Godnattvalsen",
                                           "Tower of Hanoi", "Kvarnen",      "Glädjespridaren",
                                           "Farfars klocka", "13-Pyramiden", "Freecell",
                                           "Eight off",      "Black hole",   "Strategy"};

using Skapare = std::unique_ptr<Patiens> (*)(FjolkView*, BRect, bool);

template <typename Spel>
std::unique_ptr<Patiens> Skapa(FjolkView* view, BRect bounds, bool animera) {
    return std::make_unique<Spel>(view, bounds, animera);
}

// One entry per game number; a game joins the collection by filling its entry.
const Skapare kSkapare[kAntalSpel] = {&Skapa<Idioten>,  nullptr,          nullptr, nullptr,
                                      nullptr,          nullptr,          nullptr, nullptr,
                                      &Skapa<Freecell>, &Skapa<Eightoff>, nullptr, nullptr};

} // namespace

std::unique_ptr<Patiens> SkapaSpel(int spelNr, FjolkView* view, BRect bounds, bool animera) {
    if (!SpelFinns(spelNr))
        return nullptr;
    return kSkapare[spelNr](view, bounds, animera);
}

bool SpelFinns(int spelNr) {
    return spelNr >= 0 && spelNr < kAntalSpel && kSkapare[spelNr] != nullptr;
}

const char* SpelNamn(int spelNr) {
    if (spelNr < 0 || spelNr >= kAntalSpel)
        return "";
    return kSpelNamn[spelNr];
}
