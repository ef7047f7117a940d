#pragma once

#include "games/HogSpel.h"
#include "games/KvarnenRegler.h"

// Kvarnen: four foundations started with the aces, twelve fanned piles of four in two rows,
// and the "Next Deal" button that gathers the piles and deals them out again.
class Kvarnen : public HogSpel<KvarnenRegler::Stallning> {
public:
    Kvarnen(SpelYta* view, BRect frame, bool animera);
    ~Kvarnen() override = default;

    void RitaSpel(QPainter& offView) override;
    void OmRaknaLuckaKort(BRect bounds) override;
    void SpelKnapp(BPoint where) override;
    int SpelNummer() const override { return 4; }
    const SpelRegler& Regler() const override { return KvarnenRegler::Regler(); }

    int Giv() const { return bord.giv; }
    BRect KnappPos() const { return bord.knapp; }
    std::vector<KnappPlats> Knappar() const override;

private:
    std::optional<BPoint> KnappPunkt() const override;
};
