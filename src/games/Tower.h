#pragma once

#include "cards/Drag.h"
#include "games/RegelSpel.h"
#include "games/TowerRegler.h"

#include <optional>

// Tower of Hanoi: nine cards, ace to 9, on three towers; a card goes onto a larger one or
// into an empty tower, until one tower holds them all in order.
class Tower : public LyftSpel<TowerRegler::Stallning> {
public:
    Tower(SpelYta* view, BRect frame, bool animera);
    ~Tower() override = default;

    void RitaSpel(QPainter& offView) override;
    void OmRaknaLuckaKort(BRect bounds) override;
    int SpelNummer() const override { return 3; }
    const SpelRegler& Regler() const override { return TowerRegler::Regler(); }
    std::optional<Gest> GestFor(const Drag& drag) const override;

protected:
    int Traffad(BPoint p) const override;
    int ToppAv(int lucka) const override;
    int KlickMalFor(int lucka) const override;
    int DropMalFor(int lucka, BPoint q) const override;

private:
    void FlygKort(int fran, int till, int steg) override;
};
