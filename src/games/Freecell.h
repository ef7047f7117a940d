#pragma once

#include "games/KolumnSpel.h"

// Freecell: all 52 cards face up in eight columns, four free cells of one card each, and
// four foundations built up by suit; columns are built down in alternating colours.
class Freecell : public KolumnSpel {
public:
    Freecell(SpelYta* view, BRect frame, bool animera);
    ~Freecell() override = default;

    void OmRaknaLuckaKort(BRect bounds) override;
    int SpelNummer() const override { return 8; }
};
