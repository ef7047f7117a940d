#pragma once

#include "games/KolumnSpel.h"

// Eight off: 48 cards in eight columns of six and four in free cells, eight free cells in
// all; foundations up by suit, columns down in suit.
class Eightoff : public KolumnSpel {
public:
    Eightoff(SpelYta* view, BRect frame, bool animera);
    ~Eightoff() override = default;

    void OmRaknaLuckaKort(BRect bounds) override;
    int SpelNummer() const override { return 9; }
};
