#pragma once

#include "cards/KortSpel.h"

#include <memory>

class FjolkView;

inline constexpr int kAntalSpel = 12;

// The game for a game number (0..11), dealt and drawn into `view`; none for a number whose
// game is not built yet.
std::unique_ptr<Patiens> SkapaSpel(int spelNr, FjolkView* view, BRect bounds, bool animera);

// Whether game `spelNr` can be played yet.
bool SpelFinns(int spelNr);

// The names the welcome screen and the window title use.
const char* SpelNamn(int spelNr);
