#pragma once

#include "cards/Drag.h"
#include "games/BlackholeRegler.h"
#include "games/RegelSpel.h"

#include <optional>

// Black hole: the ace of spades alone in the hole, the other cards in seventeen fans of
// three; a fan's top card goes into the hole when it is one higher or lower than the
// hole's top, king and ace being neighbours.
class Blackhole : public RegelSpel<BlackholeRegler::Stallning> {
public:
    Blackhole(SpelYta* view, BRect frame, bool animera);
    ~Blackhole() override = default;

    void RitaSpel(QPainter& offView) override;
    void OmRaknaLuckaKort(BRect bounds) override;
    bool FlyttaKort(SpelYta* view, BPoint where) override;
    int SpelNummer() const override { return 10; }
    const SpelRegler& Regler() const override { return BlackholeRegler::Regler(); }
    std::optional<Gest> GestFor(const Drag& drag) const override;

    int KortIHalet() const { return bord.kortKvar; }

protected:
    std::optional<Drag> SlappDrag(int lucka, BPoint q) const override;

private:
    void FlygKort(int fran, int till, int steg) override;
};
