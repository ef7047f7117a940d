#pragma once

#include "games/FarfarsklockaRegler.h"
#include "games/HogSpel.h"

// Farfars klocka: twelve clock piles in a ring, each started with a fixed card, and eight
// piles of five below to be played out onto the clock.
class Farfarsklocka : public HogSpel<FarfarsklockaRegler::Stallning> {
public:
    Farfarsklocka(SpelYta* view, BRect frame, bool animera);
    ~Farfarsklocka() override = default;

    void OmRaknaLuckaKort(BRect bounds) override;
    // No stock to turn and no button.
    int SpelNummer() const override { return 6; }
    const SpelRegler& Regler() const override { return FarfarsklockaRegler::Regler(); }
};
