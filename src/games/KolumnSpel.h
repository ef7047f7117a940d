#pragma once

#include "cards/Drag.h"
#include "cards/KortSpel.h"
#include "games/KolumnGester.h"
#include "games/KolumnRegler.h"

#include <optional>

// A game of overlapping columns, free cells or reserve piles, and foundations built up by
// suit: the gestures, the flights and the drawing. Its rules, KolumnRegler with the game's
// plan, decide every move. A game gives its plan, its layout and its rules.
class KolumnSpel : public KolumnGester<KolumnRegler::Stallning> {
public:
    KolumnSpel(SpelYta* view, bool animera, const SpelRegler& regler);
    ~KolumnSpel() override = default;

    void RitaSpel(QPainter& offView) override;
    const SpelRegler& Regler() const override { return regler; }
    std::optional<Gest> GestFor(const Drag& drag) const override;

    const KolumnRegler::Plan& Planen() const { return *bord.plan; }

private:
    void FlygKort(int fran, int till, int steg) override;
    void FlygRad(int forsta, int antal, int till, int steg) override;
    int Traffen(BPoint p) const override;
    std::optional<Drag> KlickDragPa(int traff) const override;
    std::optional<Drag> DropDragVid(int forsta, int topp, BPoint q) const override;
    int UnderLyft(int traff) const override;
    // The card beneath slot `lucka` in its pile, or -1 where nothing lies beneath.
    int UnderFor(int lucka, bool angra) const;

    const SpelRegler& regler;
};
