#pragma once

#include "cards/KortSpel.h"
#include "games/KolumnRegler.h"

#include <utility>
#include <vector>

class FjolkView;

// A game of eight overlapping columns, free cells and foundations built up by suit: the
// gestures, the moves of single cards and of runs, their undo records, the deal and the
// drawing. A game gives its plan, its layout and its deal order.
class KolumnSpel : public Patiens {
public:
    KolumnSpel(FjolkView* view, bool animera, const KolumnRegler::Plan& plan);
    ~KolumnSpel() override = default;

    void NyttSpel(BRect bounds) override;
    bool KlarSpel() override;
    void RitaSpel(QPainter& offView) override;
    void DelaUtKort() override;
    void BlandaKort() override;
    bool FlyttaKort(FjolkView* view, BPoint where) override;
    void Drop(FjolkView* view, int target) override;
    void SpelKnapp(BPoint where) override;
    void NyttForsok() override;
    int Undo() override;
    bool Has_Undos() override;
    int AddHiscore() override;
    // Four pixels left or up is already a drag, four right or down still a click.
    bool LamnatKlickRutan(BPoint press, BPoint now) const override;

    int AntalUndo() const { return antalUndo; }
    const KolumnRegler::Plan& Planen() const { return plan; }
    // Lets a test lay out a particular table.
    std::vector<Lucka>& LuckorForTest() { return luckor; }

protected:
    // Fills the deck slots and deals; the constructor of each game calls it once.
    void ForstaGiv(BRect bounds);
    // Deck slot into column or free cell, in the game's order.
    virtual std::vector<std::pair<int, int>> GivOrdning() const = 0;

private:
    void FlyttaEtt(FjolkView* view, int fran, int till, bool animerad);
    void FlyttaRad(FjolkView* view, int forsta, int topp, KolumnRegler::RadMal mal, bool animerad);
    BRect UnderKortFor(int lucka) const;

    const KolumnRegler::Plan& plan;
    int antalUndo = 0;
};
