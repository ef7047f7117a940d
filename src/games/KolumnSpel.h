#pragma once

#include "cards/Drag.h"
#include "cards/KortSpel.h"
#include "games/KolumnRegler.h"

#include <optional>

// A game of eight overlapping columns, free cells and foundations built up by suit: the
// gestures, the flights and the drawing. Its rules, KolumnRegler with the game's plan,
// decide every move. A game gives its plan, its layout and its rules.
class KolumnSpel : public PatiensPa<KolumnRegler::Stallning>, private Flygledare {
public:
    KolumnSpel(SpelYta* view, bool animera, const SpelRegler& regler);
    ~KolumnSpel() override = default;

    void NyttSpel(BRect bounds) override;
    bool KlarSpel() override;
    void RitaSpel(QPainter& offView) override;
    void DelaUtKort() override;
    void BlandaKort() override;
    bool FlyttaKort(SpelYta* view, BPoint where) override;
    void Drop(SpelYta* view, int target) override;
    void SpelKnapp(BPoint where) override;
    void NyttForsok() override;
    int Undo() override;
    bool Has_Undos() override;
    int AddHiscore() override;
    // Four pixels left or up is already a drag, four right or down still a click.
    bool LamnatKlickRutan(BPoint press, BPoint now) const override;
    const SpelRegler& Regler() const override { return regler; }
    std::optional<Gest> GestFor(const Drag& drag) const override;

    const KolumnRegler::Plan& Planen() const { return *bord.plan; }

protected:
    // Lays the deck out and deals; the constructor of each game calls it once.
    void ForstaGiv(BRect bounds);

private:
    void FlygKort(int fran, int till, int steg) override;
    void FlygRad(int forsta, int antal, int till, int steg) override;
    // The card beneath slot `lucka` in its pile, or -1 where nothing lies beneath.
    int UnderFor(int lucka, bool angra) const;
    // Where a player presses to lift the card or run that starts at `lucka`; none when the
    // place lies outside the view.
    std::optional<BPoint> GreppFor(int lucka) const;

    const SpelRegler& regler;
};
