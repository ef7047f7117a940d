#pragma once

#include "games/KolumnSpel.h"

// Glädjespridaren: 45 cards face up in nine columns of 9 down to 1, the last seven on
// seven reserve piles; foundations built up by suit, columns down in alternating colours,
// and a run of any length moves as one.
class Gladjespridaren : public KolumnSpel {
public:
    Gladjespridaren(SpelYta* view, BRect frame, bool animera);
    ~Gladjespridaren() override = default;

    void OmRaknaLuckaKort(BRect bounds) override;
    int SpelNummer() const override { return 5; }
};
