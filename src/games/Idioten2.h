#pragma once

#include "cards/Drag.h"
#include "games/Idioten2Regler.h"
#include "games/KolumnGester.h"

#include <optional>

// Idioten 2: four columns fed from the stock four cards at a time; a top card beaten by a
// higher card of its suit on another column is thrown out, until only the aces are left.
class Idioten2 : public KolumnGester<Idioten2Regler::Stallning> {
public:
    Idioten2(SpelYta* view, BRect frame, bool animera);
    ~Idioten2() override = default;

    void RitaSpel(QPainter& offView) override;
    void OmRaknaLuckaKort(BRect bounds) override;
    void SpelKnapp(BPoint where) override;
    int SpelNummer() const override { return 1; }
    bool ForstaGivetBlandat() const override { return false; }
    const SpelRegler& Regler() const override { return Idioten2Regler::Regler(); }
    std::optional<Gest> GestFor(const Drag& drag) const override;

    BRect LekKnapp() const { return bord.lekKnapp; }

private:
    void FlygKort(int fran, int till, int steg) override;
    void FlygRad(int forsta, int antal, int till, int steg) override;
    int Traffen(BPoint p) const override;
    std::optional<Drag> KlickDragPa(int traff) const override;
    std::optional<Drag> DropDragVid(int forsta, int topp, BPoint q) const override;
    int UnderLyft(int traff) const override;
    // The card that shows at slot `lucka` once its card has left: the one beneath it in
    // its column or the stock, another card of the discard pile; -1 for none.
    int UnderFor(int lucka) const;
};
