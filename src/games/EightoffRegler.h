#pragma once

#include "cards/Lucka.h"
#include "games/KolumnRegler.h"
#include "platform/Geometry.h"

#include <utility>
#include <vector>

// Eight off's table: eight columns, eight free cells (one above each column), four
// foundations in a row above them, and the deck pile.
namespace EightoffRegler {

inline constexpr int kAntalLuckor = 296;
inline constexpr int kForstaGrund = 192;
inline constexpr int kForstaLek = 244;
inline constexpr int kSistaLek = 295;

const KolumnRegler::Plan& Planen();
// The rules of the game, over a column table with this plan.
const SpelRegler& Regler();

// Lays every slot out for the view's bounds; returns the card grid (w × h).
KolumnRegler::Rutnat RaknaUtLuckor(std::vector<Lucka>& luckor, BRect ram);

// Six rows into the columns, then the last four cards into free cells 176..182.
std::vector<std::pair<int, int>> GivOrdning();

} // namespace EightoffRegler
