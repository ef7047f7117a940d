#pragma once

#include "cards/Drag.h"
#include "games/IdiotenRegler.h"
#include "games/RegelSpel.h"

#include <optional>

// Idioten 1: four rows of thirteen, the aces taken out, and the gaps filled one card at a
// time until each row runs from two to king in one suit. Three deals; the button gathers
// what is not yet in place and deals it again.
class Idioten : public RegelSpel<IdiotenRegler::Stallning> {
public:
    Idioten(SpelYta* view, BRect frame, bool animera);
    ~Idioten() override = default;

    void RitaSpel(QPainter& offView) override;
    void DelaUtKort() override;
    void OmRaknaLuckaKort(BRect bounds) override;
    bool FlyttaKort(SpelYta* view, BPoint where) override;
    void SpelKnapp(BPoint where) override;
    void NyttForsok() override;
    int SpelNummer() const override { return 0; }
    const SpelRegler& Regler() const override { return IdiotenRegler::Regler(); }
    std::optional<Gest> GestFor(const Drag& drag) const override;

    int Forsok() const { return bord.forsok; }
    int KlaraKort() const { return bord.klaraKort; }
    BRect KnappPos() const { return bord.knapp; }
    std::vector<KnappPlats> Knappar() const override;

protected:
    int DropMalFor(int lucka, BPoint q) const override;

private:
    void FlygKort(int fran, int till, int steg) override;
    // Draws the table, the stock face down, before the cards fly off it.
    void RitaForeGiv();

    // A new attempt's deal has yet to show its stock.
    bool foreGiv = false;
};
