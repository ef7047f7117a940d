#pragma once

#include "cards/Drag.h"
#include "cards/SpelBord.h"

// The single-card move most games make, and its undo: the card moves from one slot to
// another, the game's flight told of it first, and the pair (from, to) is recorded.
void FlyttaOchSpara(SpelBord& bord, int fran, int till, Flygledare* flyg, int steg);
// Takes back the newest record (from, to): the card returns from `to` to `from`, and the
// undo is counted. The caller has checked that there is a record.
void AngraSista(SpelBord& bord, Flygledare* flyg, int steg);
