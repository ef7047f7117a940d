#pragma once

#include "app/FjolkView.h"
#include "cards/Drag.h"
#include "cards/Hiscore.h"

#include <vector>

// Makes each move of `vag` on the game in `vy` by the gesture the game names for it, and
// checks after each that the table is what the rules make of it; a move without a gesture,
// or a gesture that did something else, fails the test (QTest::currentTestFailed).
void SpelaVagen(FjolkView& vy, const std::vector<Drag>& vag);

// Wins the game in `vy` along `vag` by gestures: one game-finished notice reaches the window,
// and the result goes first into a fresh table, with `kort`, `giv`, no undos and the
// player's name.
void VinnGenomVyn(FjolkView& vy, const std::vector<Drag>& vag, int kort, int giv);

// The hiscore table stored for game `spelNr`.
HiscoreLista LasHiscore(int spelNr);
