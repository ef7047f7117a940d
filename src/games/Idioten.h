#pragma once

#include "cards/Drag.h"
#include "cards/KortSpel.h"
#include "games/IdiotenRegler.h"

#include <optional>

// Idioten 1: four rows of thirteen, the aces taken out, and the gaps filled one card at a
// time until each row runs from two to king in one suit. Three deals; the button gathers
// what is not yet in place and deals it again.
class Idioten : public PatiensPa<IdiotenRegler::Stallning>, private Flygledare {
public:
    Idioten(SpelYta* view, BRect frame, bool animera);
    ~Idioten() override = default;

    void NyttSpel(BRect bounds) override;
    bool KlarSpel() override;
    void RitaSpel(QPainter& offView) override;
    void DelaUtKort() override;
    void BlandaKort() override;
    void OmRaknaLuckaKort(BRect bounds) override;
    bool FlyttaKort(SpelYta* view, BPoint where) override;
    void Drop(SpelYta* view, int target) override;
    void SpelKnapp(BPoint where) override;
    void NyttForsok() override;
    int Undo() override;
    bool Has_Undos() override;
    int AddHiscore() override;
    int SpelNummer() const override { return 0; }
    const SpelRegler& Regler() const override { return IdiotenRegler::Regler(); }
    std::optional<Gest> GestFor(const Drag& drag) const override;

    int Forsok() const { return bord.forsok; }
    int KlaraKort() const { return bord.klaraKort; }
    BRect KnappPos() const { return bord.knapp; }

private:
    void FlygKort(int fran, int till, int steg) override;
    void FlygRad(int forsta, int antal, int till, int steg) override;
    // Draws the table, the stock face down, before the cards fly off it.
    void RitaForeGiv();

    // A new attempt's deal has yet to show its stock.
    bool foreGiv = false;
};
