#pragma once

#include <cstdlib>

// Whether game `spelNr` is the one the environment's FJOLK_SPEL names; every game when it
// names none. CTest runs the long random-play tests a game at a time, side by side.
inline bool SpeletValt(int spelNr) {
    const char* valt = std::getenv("FJOLK_SPEL");
    return valt == nullptr || *valt == '\0' || std::atoi(valt) == spelNr;
}
