#pragma once

#include "cards/Drag.h"
#include "cards/SpelBord.h"
#include "cards/SpelRegler.h"

#include <cstddef>
#include <vector>

// The moves a search may make: every listed move but a new attempt's shuffle.
std::vector<Drag> Sokbara(const SpelRegler& regler, const SpelBord& bord);

// The plain search: every searchable move tried, in the rules' order, no safe moves; two
// tables are one when every slot holds the same card and the hiscore's deal count is the
// same, unless `givRaknas` is false for a game whose rules never read it. Returns 1 won, 0
// cannot be won, -1 more than `max` tables.
int PlainSok(const SpelRegler& regler, const SpelBord& start, std::size_t max,
             bool givRaknas = true);
