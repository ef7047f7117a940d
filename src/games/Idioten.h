#pragma once

#include "cards/KortSpel.h"

#include <vector>

class FjolkView;

// Idioten 1: four rows of thirteen, the aces taken out, and the gaps filled one card at a
// time until each row runs from two to king in one suit. Three deals; the button gathers
// what is not yet in place and deals it again.
class Idioten : public Patiens {
public:
    Idioten(FjolkView* view, BRect frame, bool animera);
    ~Idioten() override = default;

    void NyttSpel(BRect bounds) override;
    bool KlarSpel() override;
    void RitaSpel(QPainter& offView) override;
    void DelaUtKort() override;
    void BlandaKort() override;
    void OmRaknaLuckaKort(BRect bounds) override;
    bool FlyttaKort(FjolkView* view, BPoint where) override;
    void Drop(FjolkView* view, int target) override;
    void SpelKnapp(BPoint where) override;
    void NyttForsok() override;
    int Undo() override;
    bool Has_Undos() override;
    int AddHiscore() override;
    int SpelNummer() const override { return 0; }

    int Forsok() const { return forsok; }
    int KlaraKort() const { return klaraKort; }
    int AntalUndo() const { return antalUndo; }
    BRect KnappPos() const { return knappPos; }

    // Lets a test lay out a particular table; the game recounts it with KlarSpel.
    std::vector<Lucka>& LuckorForTest() { return luckor; }

private:
    int forsok = 1;
    int klaraKort = 0;
    int antalUndo = 0;
    BRect knappPos;
};
