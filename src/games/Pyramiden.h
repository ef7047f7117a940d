#pragma once

#include "cards/Drag.h"
#include "games/PyramidenRegler.h"
#include "games/RegelSpel.h"

#include <optional>

// 13-Pyramiden: a pyramid of 28 cards cleared by removing kings and pairs of free cards
// that add up to 13; the stock is turned a card at a time onto a waste, and turned over
// once more when it runs out.
class Pyramiden : public RegelSpel<PyramidenRegler::Stallning> {
public:
    Pyramiden(SpelYta* view, BRect frame, bool animera);
    ~Pyramiden() override = default;

    void RitaSpel(QPainter& offView) override;
    void OmRaknaLuckaKort(BRect bounds) override;
    bool FlyttaKort(SpelYta* view, BPoint where) override;
    void Drop(SpelYta* view, int target) override;
    void SpelKnapp(BPoint where) override;
    int SpelNummer() const override { return 7; }
    const SpelRegler& Regler() const override { return PyramidenRegler::Regler(); }
    std::optional<Gest> GestFor(const Drag& drag) const override;

    int Giv() const { return bord.giv; }
    BRect LekRuta() const { return bord.lekRuta; }
    BRect LekKlickRuta() const { return bord.lekKlickRuta; }

protected:
    void LaggUtOchDela(BRect bounds) override;
    std::optional<Drag> SlappDrag(int lucka, BPoint q) const override;

private:
    void FlygKort(int fran, int till, int steg) override;
    // Where a player presses to take card `i` without touching the stock; none when the
    // card shows nowhere else in the view.
    std::optional<BPoint> GreppFor(int i) const;
    // Where a release of card `i` makes `drag` on `tabell`.
    std::optional<BPoint> SlappFor(const PyramidenRegler::Stallning& tabell, int i,
                                   const Drag& drag, int mal) const;

    // The card being dragged, which the table shows gone until it is released; -1.
    int lyft = -1;
};
