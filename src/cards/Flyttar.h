#pragma once

#include "cards/Drag.h"
#include "cards/SpelBord.h"

// The move most games make and its undo: one card from slot to slot, recorded as the pair
// (from, to), and that pair taken back.

// The card of `fran` goes to `till`, told to `flyg` (may be null) as `steg` first, and the
// pair is recorded.
void FlyttaOchSpara(SpelBord& bord, int fran, int till, Flygledare* flyg, int steg);
// The newest record (from, to) is taken off and its card flies back from `to` as `steg`;
// one more undo is counted. Returns the records left; with none, does nothing and says 0.
int AngraSenaste(SpelBord& bord, Flygledare* flyg, int steg);
