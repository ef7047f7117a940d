#pragma once

#include "cards/Kort.h"

// A place on the table that holds at most one card; a pile is a run of slots.
class Lucka {
public:
    Lucka(BRect nyPos, bool visasBaksida)
        : pos(nyPos), kort(HJARTER, -1, BRect(0, 0, 0, 0)), baksida(visasBaksida) {}

    // Overwrites whatever lay here: the games decide when a slot may take a card.
    void TaEmotKort(Kort nytt) {
        kort = nytt;
        tom = false;
    }
    // The card keeps its suit and face; only its value says it is gone.
    void TaBortKort() {
        tom = true;
        kort.NyValor(-1);
    }

    BRect GePos() const { return pos; }
    void NyPos(BRect nyPos) { pos = nyPos; }
    Kort& GeKort() { return kort; }
    const Kort& GeKort() const { return kort; }
    bool Tom() const { return tom; }
    bool GeOkPos() const { return okPos; }
    void NyOkPos(bool ok) { okPos = ok; }
    bool GeKantLinje() const { return kantLinje; }
    void NyKantLinje(bool kant) { kantLinje = kant; }
    bool BakSida() const { return baksida; }

    // What an empty slot last held is no part of the table.
    bool operator==(const Lucka& annan) const {
        return tom == annan.tom && pos == annan.pos && (tom || kort == annan.kort) &&
               okPos == annan.okPos && baksida == annan.baksida && kantLinje == annan.kantLinje;
    }

private:
    bool tom = true;
    BRect pos;
    Kort kort;
    bool okPos = false;
    bool baksida;
    bool kantLinje = true;
};
