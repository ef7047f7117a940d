#pragma once

#include "cards/KolumnSpel.h"

#include <utility>
#include <vector>

class FjolkView;

// Freecell: all 52 cards face up in eight columns, four free cells of one card each, and
// four foundations built up by suit; columns are built down in alternating colours.
class Freecell : public KolumnSpel {
public:
    Freecell(FjolkView* view, BRect frame, bool animera);
    ~Freecell() override = default;

    void OmRaknaLuckaKort(BRect bounds) override;
    int SpelNummer() const override { return 8; }

protected:
    std::vector<std::pair<int, int>> GivOrdning() const override;
};
