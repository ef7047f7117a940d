#pragma once

#include "cards/Lucka.h"
#include "platform/Geometry.h"

#include <vector>

// What the games ask of their slots, written once: a pile is a run of consecutive slots
// whose top card is the last filled one.

// A slot's rectangle from whole pixels.
inline BRect HeltalsRuta(int left, int top, int right, int bottom) {
    return BRect(static_cast<float>(left), static_cast<float>(top), static_cast<float>(right),
                 static_cast<float>(bottom));
}

// Slot `i` exists and holds a card / exists and is empty.
inline bool Fylld(const std::vector<Lucka>& luckor, int i) {
    return i >= 0 && i < static_cast<int>(luckor.size()) && !luckor[i].Tom();
}
inline bool TomLucka(const std::vector<Lucka>& luckor, int i) {
    return i >= 0 && i < static_cast<int>(luckor.size()) && luckor[i].Tom();
}
// Slot `i` holds a card and the next slot none (or there is no next slot).
inline bool Topp(const std::vector<Lucka>& luckor, int i) {
    return Fylld(luckor, i) && !Fylld(luckor, i + 1);
}
// The last slot of the filled run that starts at `forsta`.
int Toppen(const std::vector<Lucka>& luckor, int forsta);
// A stock's top: walking up from `forsta`, the slot below the first empty one (up to
// `sista`); -1 when `forsta` is empty.
int LekTopp(const std::vector<Lucka>& luckor, int forsta, int sista);
// The first empty slot of `forsta`..`sista`, or -1.
int ForstaTomma(const std::vector<Lucka>& luckor, int forsta, int sista);
// How many of `forsta`..`sista` hold a card.
int AntalFyllda(const std::vector<Lucka>& luckor, int forsta, int sista);

// The first slot of `forsta`..`sista` under the pointer: a top card's whole face, or the
// band of `band` pixels at the top of a covered card that still shows; -1 for none.
int TraffMedBand(const std::vector<Lucka>& luckor, int forsta, int sista, BPoint p, float band);
// The first slot of `forsta`..`sista` that is a top and whose rectangle holds the pointer;
// -1 for none. Covered cards do not count, however much of them shows.
int ToppVid(const std::vector<Lucka>& luckor, int forsta, int sista, BPoint p);
// A slot's rectangle reaching `nedat` pixels further down: a drop a little below a pile's
// last card still lands on it.
BRect Forlangd(BRect r, float nedat);

// The card of slot `fran` moves into slot `till`.
void Flytta(std::vector<Lucka>& luckor, int fran, int till);
