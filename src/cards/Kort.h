#pragma once

#include "platform/Geometry.h"

#include <cstdint>

// Suits 0 and 1 are red (hearts, diamonds), 2 and 3 black (clubs, spades).
enum kortfarg : int32_t { HJARTER = 0, RUTER = 1, KLOVER = 2, SPADER = 3 };

// One card: suit, value (1 = ace .. 13 = king, -1 = no card) and the rectangle of its face
// inside the shared card-face picture, from which it is drawn.
class Kort {
public:
    Kort(kortfarg nyFarg, int nyValor, BRect nyPos) : pos(nyPos), farg(nyFarg), valor(nyValor) {}

    BRect GePos() const { return pos; }
    void NyPos(BRect nyPos) { pos = nyPos; }
    void NyValor(int nyValor) { valor = nyValor; }
    int KortValor() const { return valor; }
    kortfarg KortFarg() const { return farg; }
    bool SvartFarg() const { return farg == KLOVER || farg == SPADER; }

    bool operator==(const Kort&) const = default;

private:
    BRect pos;
    kortfarg farg;
    int32_t valor;
};
