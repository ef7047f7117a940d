#pragma once

#include "cards/Drag.h"
#include "cards/KortSpel.h"
#include "games/BlackholeRegler.h"

#include <optional>

// Black hole: the ace of spades alone in the hole, the other cards in seventeen fans of
// three; a fan's top card goes into the hole when it is one higher or lower than the
// hole's top, king and ace being neighbours.
class Blackhole : public PatiensPa<BlackholeRegler::Stallning>, private Flygledare {
public:
    Blackhole(SpelYta* view, BRect frame, bool animera);
    ~Blackhole() override = default;

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
    int SpelNummer() const override { return 10; }
    const SpelRegler& Regler() const override { return BlackholeRegler::Regler(); }
    std::optional<Gest> GestFor(const Drag& drag) const override;

    int KortIHalet() const { return bord.kortKvar; }

private:
    void FlygKort(int fran, int till, int steg) override;
    void FlygRad(int forsta, int antal, int till, int steg) override;
    Flygledare* Flyg() { return animera ? this : nullptr; }
};
