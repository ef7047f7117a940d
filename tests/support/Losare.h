#pragma once

#include "cards/SpelRegler.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

// A depth-first search for a won game over a game's own rules: the moves it finds are the
// ones the rules list, so a test can make them through the view with the gestures the game
// names for them. New attempts, which shuffle, are never tried.

// What tells two tables apart for the search: by default the cards in the slots. A game
// whose counters matter (a deal number, a stock's clickable area) passes its own.
using BordNyckel = std::function<std::string(const SpelBord&)>;
std::string KortNyckel(const SpelBord& bord);

// The moves from `bord` to a won table, or none when `maxLagen` tables were tried without
// finding one. `ordning` may put the moves of a table in the order to try them (the rules'
// own order by default).
std::optional<std::vector<Drag>>
SokVinst(const SpelRegler& regler, const SpelBord& bord, int maxLagen,
         const BordNyckel& nyckel = KortNyckel,
         const std::function<void(const SpelBord&, std::vector<Drag>&)>& ordning = {});
