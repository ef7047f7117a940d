#include "cards/Kortlek.h"

#include <cstdlib>
#include <utility>

Kortlek::Kortlek() {
    kort.reserve(52);
    NyKortlek();
}

// The face rectangle (suit × value, 0, 0, 0) is only a filler: every game gives each card
// its real face before drawing it.
void Kortlek::NyKortlek() {
    kort.clear();
    for (int farg = 0; farg < 4; ++farg)
        for (int valor = 1; valor <= 13; ++valor)
            kort.emplace_back(static_cast<kortfarg>(farg), valor,
                              BRect(static_cast<float>(farg * valor), 0, 0, 0));
}

// Exactly 999 random transpositions with plain modulo: every deal the players know comes
// from this shuffle, uneven as it is.
void Kortlek::Blanda() {
    if (kort.empty())
        return;
    int n = static_cast<int>(kort.size());
    for (int i = 1; i < 1000; ++i) {
        int a = std::rand() % n;
        int b = std::rand() % n;
        std::swap(kort[a], kort[b]);
    }
}

Kort Kortlek::GeKort() {
    Kort overst = kort.back();
    kort.pop_back();
    return overst;
}

void Kortlek::TaInKort(Kort nytt) {
    kort.push_back(nytt);
}

// Walks up from the bottom; a match is taken out by moving the top card into its place.
// Without a match the result is the copy of the last card visited (the top card, which
// stays), or the empty card on an empty deck: callers check the value they got.
template <typename Matches> Kort Kortlek::TaUtForsta(Matches matches) {
    Kort resultat(HJARTER, -1, BRect(0, 0, 0, 0));
    for (size_t i = 0; i < kort.size(); ++i) {
        resultat = kort[i];
        if (matches(resultat)) {
            if (i + 1 != kort.size())
                kort[i] = kort.back();
            kort.pop_back();
            return resultat;
        }
    }
    return resultat;
}

Kort Kortlek::GeEss() {
    return TaUtForsta([](const Kort& k) { return k.KortValor() == 1; });
}

Kort Kortlek::GeValtKort(kortfarg farg, int valor) {
    return TaUtForsta(
        [&](const Kort& k) { return k.KortFarg() == farg && k.KortValor() == valor; });
}
