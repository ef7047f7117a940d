#pragma once

#include "cards/Drag.h"
#include "games/RegelSpel.h"
#include "games/StrategyRegler.h"

#include <optional>

// Strategy: the stock's top card placed by the player on any of eight piles, aces alone to
// the foundations until the stock is gone; then the piles' top cards home, up by suit. The
// table has no button: every press is for the cards, so SpelKnapp looks for none.
class Strategy : public RegelSpel<StrategyRegler::Stallning> {
public:
    Strategy(SpelYta* view, BRect frame, bool animera);
    ~Strategy() override = default;

    void RitaSpel(QPainter& offView) override;
    void OmRaknaLuckaKort(BRect bounds) override;
    bool FlyttaKort(SpelYta* view, BPoint where) override;
    bool LamnatKlickRutan(BPoint press, BPoint now) const override {
        return LamnatOjamnKlickRuta(press, now);
    }
    int SpelNummer() const override { return 11; }
    const SpelRegler& Regler() const override { return StrategyRegler::Regler(); }
    std::optional<Gest> GestFor(const Drag& drag) const override;

    int KortHemma() const { return bord.kortHemma; }
    int Forsok() const { return bord.forsok; }

protected:
    int DropMalFor(int lucka, BPoint q) const override;

private:
    void FlygKort(int fran, int till, int steg) override;
    // The card beneath slot `lucka` on its pile or in the stock, or -1.
    static int UnderFor(int lucka);
};
