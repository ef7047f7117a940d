#pragma once

#include "cards/Lucka.h"
#include "games/KolumnRegler.h"
#include "platform/Geometry.h"

#include <utility>
#include <vector>

// Glädjespridaren's table: nine columns of 9 down to 1 card, seven reserve piles of one
// card each that never take a card back, four foundations in the top row, and the deck
// pile in the top-left corner.
namespace GladjespridarenRegler {

inline constexpr int kKolumner = 9;
inline constexpr int kReserver = 7;
inline constexpr int kForstaReserv = 198;
inline constexpr int kForstaGrund = 352;
// Each foundation has 22 places, of which the first thirteen are used.
inline constexpr int kGrundSteg = 22;
inline constexpr int kForstaLek = 440;
inline constexpr int kSistaLek = 491;
inline constexpr int kAntalLuckor = 492;
// Only the columns and reserve piles give up cards.
inline constexpr int kSistaTraff = 351;

const KolumnRegler::Plan& Planen();
// The rules of the game, over a column table with this plan.
const SpelRegler& Regler();

// Lays every slot out for the view's bounds; returns the card grid (w × h).
KolumnRegler::Rutnat RaknaUtLuckor(std::vector<Lucka>& luckor, BRect ram);

// Column by column, 9 cards down to 1 (d from 51 down), then the last seven cards onto
// the reserve piles.
std::vector<std::pair<int, int>> GivOrdning();

} // namespace GladjespridarenRegler
