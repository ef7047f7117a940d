#pragma once

#include "cards/KolumnSpel.h"

#include <utility>
#include <vector>

class FjolkView;

// Eight off: 48 cards in eight columns of six and four in free cells, eight free cells in
// all; foundations up by suit, columns down in suit.
class Eightoff : public KolumnSpel {
public:
    Eightoff(FjolkView* view, BRect frame, bool animera);
    ~Eightoff() override = default;

    void OmRaknaLuckaKort(BRect bounds) override;
    int SpelNummer() const override { return 9; }

protected:
    std::vector<std::pair<int, int>> GivOrdning() const override;
};
