#pragma once

#include "cards/Drag.h"
#include "games/GodnattvalsenRegler.h"
#include "games/RegelSpel.h"

#include <optional>

// Godnattvalsen: four foundations built up by value from their aces, a pile under each, and
// a face-down stock that deals a card onto every pile at each click.
class Godnattvalsen : public LyftSpel<GodnattvalsenRegler::Stallning> {
public:
    Godnattvalsen(SpelYta* view, BRect frame, bool animera);
    ~Godnattvalsen() override = default;

    void RitaSpel(QPainter& offView) override;
    void OmRaknaLuckaKort(BRect bounds) override;
    void SpelKnapp(BPoint where) override;
    int SpelNummer() const override { return 2; }
    const SpelRegler& Regler() const override { return GodnattvalsenRegler::Regler(); }
    std::optional<Gest> GestFor(const Drag& drag) const override;

protected:
    int Traffad(BPoint p) const override;
    int ToppAv(int lucka) const override;
    int KlickMalFor(int lucka) const override;
    int DropMalFor(int lucka, BPoint q) const override;

private:
    void FlygKort(int fran, int till, int steg) override;
};
