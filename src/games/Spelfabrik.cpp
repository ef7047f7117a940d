#include "games/Spelfabrik.h"

#include "games/Blackhole.h"
#include "games/BlackholeRegler.h"
#include "games/Eightoff.h"
#include "games/EightoffRegler.h"
#include "games/Farfarsklocka.h"
#include "games/FarfarsklockaRegler.h"
#include "games/Freecell.h"
#include "games/FreecellRegler.h"
#include "games/Gladjespridaren.h"
#include "games/GladjespridarenRegler.h"
#include "games/Godnattvalsen.h"
#include "games/GodnattvalsenRegler.h"
#include "games/Idioten.h"
#include "games/Idioten2.h"
#include "games/Idioten2Regler.h"
#include "games/IdiotenRegler.h"
#include "games/Kvarnen.h"
#include "games/KvarnenRegler.h"
#include "games/Pyramiden.h"
#include "games/PyramidenRegler.h"
#include "games/Strategy.h"
#include "games/StrategyRegler.h"
#include "games/Tower.h"
#include "games/TowerRegler.h"

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
    {"Godnattvalsen", "Godnattvalsen", &Skapa<Godnattvalsen>, &GodnattvalsenRegler::Regler},
    {"Tower of Hanoi", "Tower of Hanoi", &Skapa<Tower>, &TowerRegler::Regler},
    {"Kvarnen", "Kvarnen", &Skapa<Kvarnen>, &KvarnenRegler::Regler},
    {"Glädjespridaren", "Glädjespridaren", &Skapa<Gladjespridaren>, &GladjespridarenRegler::Regler},
    {"Farfars klocka", "Farfars Klocka", &Skapa<Farfarsklocka>, &FarfarsklockaRegler::Regler},
    {"13-Pyramiden", "13-Pyramiden", &Skapa<Pyramiden>, &PyramidenRegler::Regler},
    {"Freecell", "Freecell", &Skapa<Freecell>, &FreecellRegler::Regler},
    {"Eight off", "Eight off", &Skapa<Eightoff>, &EightoffRegler::Regler},
    {"Black hole", "Black hole", &Skapa<Blackhole>, &BlackholeRegler::Regler},
    {"Strategy", "Strategy", &Skapa<Strategy>, &StrategyRegler::Regler},
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
