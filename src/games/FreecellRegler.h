#pragma once

#include "cards/Kort.h"
#include "cards/Lucka.h"
#include "games/KolumnRegler.h"
#include "platform/Geometry.h"

#include <utility>
#include <vector>

// Freecell's table: eight columns, four free cells, four foundations, and the deck pile
// the cards are dealt from.
namespace FreecellRegler {

inline constexpr int kAntalLuckor = 288;
inline constexpr int kForstaGrund = 184;
inline constexpr int kForstaLek = 236;
inline constexpr int kSistaLek = 287;

const KolumnRegler::Plan& Planen();
// The rules of the game, over a column table with this plan.
const SpelRegler& Regler();

// Lays every slot out for the view's bounds; returns the card grid (w × h).
KolumnRegler::Rutnat RaknaUtLuckor(std::vector<Lucka>& luckor, BRect ram);

// The deal: deck slot 236 + d into column slot in this order (d from 51 down).
std::vector<std::pair<int, int>> GivOrdning();

} // namespace FreecellRegler
