#include "games/Spelfabrik.h"

#include "games/Eightoff.h"
#include "games/EightoffRegler.h"
#include "games/Freecell.h"
#include "games/FreecellRegler.h"
#include "games/Gladjespridaren.h"
#include "games/GladjespridarenRegler.h"
#include "games/Idioten.h"
#include "games/Idioten2.h"
#include "games/Idioten2Regler.h"
#include "games/IdiotenRegler.h"

namespace {

using Skapare = std::unique_ptr<Patiens> (*)(SpelYta*, BRect, bool);

template <typename Spel> std::unique_ptr<Patiens> Skapa(SpelYta* view, BRect bounds, bool animera) {
    return std::make_unique<Spel>(view, bounds, animera);
}

struct Spelet {
    const char* listNamn;
    const char* titelNamn;
    // Null until the game is built.
    Skapare skapa;
    const SpelRegler& (*regler)();
};

// The collection, by game number; a game joins it by filling its entry.
const Spelet kSpelen[kAntalSpel] = {
    {"Idioten 1", "Idioten", &Skapa<Idioten>, &IdiotenRegler::Regler},
    {"Idioten 2", "Idioten 2", &Skapa<Idioten2>, &Idioten2Regler::Regler},
    {"Godnattvalsen", "Godnattvalsen", nullptr, nullptr},
    {"Tower of Hanoi", "Tower of Hanoi", nullptr, nullptr},
    {"Kvarnen", "Kvarnen", nullptr, nullptr},
    {"Glädjespridaren", "Glädjespridaren", &Skapa<Gladjespridaren>, &GladjespridarenRegler::Regler},
    {"Farfars klocka", "Farfars Klocka", nullptr, nullptr},
    {"13-Pyramiden", "13-Pyramiden", nullptr, nullptr},
    {"Freecell", "Freecell", &Skapa<Freecell>, &FreecellRegler::Regler},
    {"Eight off", "Eight off", &Skapa<Eightoff>, &EightoffRegler::Regler},
    {"Black hole", "Black hole", nullptr, nullptr},
    {"Strategy", "Strategy", nullptr, nullptr},
};

bool Giltigt(int spelNr) {
    return spelNr >= 0 && spelNr < kAntalSpel;
}

} // namespace

std::unique_ptr<Patiens> SkapaSpel(int spelNr, SpelYta* view, BRect bounds, bool animera) {
    if (!SpelFinns(spelNr))
        return nullptr;
    return kSpelen[spelNr].skapa(view, bounds, animera);
}

bool SpelFinns(int spelNr) {
    return Giltigt(spelNr) && kSpelen[spelNr].skapa != nullptr;
}

const char* SpelNamn(int spelNr) {
    return Giltigt(spelNr) ? kSpelen[spelNr].listNamn : "";
}

const char* TitelNamn(int spelNr) {
    return Giltigt(spelNr) ? kSpelen[spelNr].titelNamn : "";
}

const SpelRegler* ReglerFor(int spelNr) {
    if (!SpelFinns(spelNr))
        return nullptr;
    return &kSpelen[spelNr].regler();
}
