#pragma once

#include "app/FjolkView.h"
#include "app/Tangentbord.h"
#include "cards/Drag.h"

#include <QString>

#include <vector>

// Playing a view with keys only, as a player without a mouse does.

// One key press and release on the view.
void Tangent(FjolkView& view, Qt::Key key, int ganger = 1);
// The focus frame moved to place `k` from the first place, by Home and Right.
void TillPlats(FjolkView& view, int k);
// Makes the gesture `gest` with the keys that make it: the frame to its place, Enter for a
// click; "." as often as the cards to take need, the arrows to where they go and Enter.
// Empty when it could, else why not.
QString GorMedTangenter(FjolkView& view, const Gest& gest);
// Makes each move with the keys that make the gesture the game names for it, each to land
// exactly as the rules make it: empty when every one did, else what the first that did not was.
QString SpelaMedTangenter(FjolkView& view, const std::vector<Drag>& dragen);
