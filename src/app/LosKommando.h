#pragma once

#include "solver/Losare.h"

#include <cstdint>
#include <cstdio>
#include <memory>

// `fjolkpatience --solve`: the deal of a seed searched and told on standard output.

// The table game `spel` deals with random numbers seeded by `fro`, as the window deals it.
std::unique_ptr<SpelBord> GivFor(int spel, unsigned fro);

// One deal: the verdict, the tables searched and the time, then the moves one per line.
// Returns 0 won-able, 1 cannot be won, 2 not known.
int LosEnGiv(int spel, unsigned fro, const SokGranser& granser, std::FILE* ut);
// Seeds `forsta`..`sista`: a line per deal and the totals. Returns 0.
int LosGivar(int spel, unsigned forsta, unsigned sista, const SokGranser& granser, std::FILE* ut);
