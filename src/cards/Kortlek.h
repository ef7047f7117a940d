#pragma once

#include "cards/Kort.h"

#include <vector>

// A deck: index 0 is the bottom, the last card the top; cards are dealt from and returned
// to the top.
class Kortlek {
public:
    Kortlek();

    void NyKortlek();
    void Blanda();
    Kort GeKort();
    void TaInKort(Kort kort);
    int AntalKortKvar() const { return static_cast<int>(kort.size()); }
    Kort GeEss();
    Kort GeValtKort(kortfarg farg, int valor);

    const std::vector<Kort>& Korten() const { return kort; }

    bool operator==(const Kortlek&) const = default;

private:
    template <typename Matches> Kort TaUtForsta(Matches matches);

    std::vector<Kort> kort;
};
