#pragma once

#include "cards/KortSpel.h"
#include "cards/SpelRegler.h"

#include <memory>

inline constexpr int kAntalSpel = 12;

// The game for a game number (0..11), dealt and drawn into `view`; none for a number whose
// game is not built yet.
std::unique_ptr<Patiens> SkapaSpel(int spelNr, SpelYta* view, BRect bounds, bool animera);

// Whether game `spelNr` can be played yet.
bool SpelFinns(int spelNr);

// The name in the welcome screen's list ("Idioten 1"), and the one in the window title,
// which differs a little for two games ("Idioten", "Farfars Klocka").
const char* SpelNamn(int spelNr);
const char* TitelNamn(int spelNr);

// The rules of game `spelNr`, for playing without a window; null while it is not built.
const SpelRegler* ReglerFor(int spelNr);
