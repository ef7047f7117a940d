#pragma once

#include "solver/Losare.h"

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

// `fjolkpatience --solve`: the deal of a seed searched and told on standard output.

// The table game `spel` deals with random numbers seeded by `fro`, as the window deals it.
std::unique_ptr<SpelBord> GivFor(int spel, unsigned fro);

// One deal: the verdict, the tables searched and the time, then the moves one per line.
// Returns 0 won-able, 1 cannot be won, 2 not known.
int LosEnGiv(int spel, unsigned fro, const SokGranser& granser, std::FILE* ut);
// Seeds `forsta`..`sista`: a line per deal and the totals. Returns 0.
int LosGivar(int spel, unsigned forsta, unsigned sista, const SokGranser& granser, std::FILE* ut);

// "Winnable Deals Only": deals are tried one after another, the k-th (from 0) shuffled with
// random numbers seeded by VinnbarFro(bas, k), each searched within kVinnbarLagen positions,
// until one can be won; after kVinnbarForsok deals or kVinnbarTid the last one tried is
// played. Positions rather than time per deal, so that a seed gives the same deals on any
// machine.
inline constexpr std::uint64_t kVinnbarLagen = 30000;
inline constexpr int kVinnbarForsok = 100;
inline constexpr std::chrono::milliseconds kVinnbarTid{4000};
unsigned VinnbarFro(unsigned bas, int forsok);
SokGranser VinnbarGranser();

struct VinnbarGiv {
    unsigned fro = 0; // the seed of the deal to play
    int forsok = 0;   // deals tried
    bool hittad = false;
};
// Tries the deals from `bas` on this thread.
VinnbarGiv HittaVinnbarGiv(int spel, unsigned bas);
// "Deal 3 of 3 tried can be won", or, when none was found, that the deal played may not be.
std::string VinnbarText(int spel, const VinnbarGiv& giv);
