#include "cards/KortFlytt.h"

#include "cards/Luckor.h"

void FlyttaOchSpara(SpelBord& bord, int fran, int till, Flygledare* flyg, int steg) {
    if (flyg)
        flyg->FlygKort(fran, till, steg);
    Flytta(bord.luckor, fran, till);
    bord.undoLista.emplace_back(fran, till);
}

void AngraSista(SpelBord& bord, Flygledare* flyg, int steg) {
    auto [fran, till] = bord.undoLista.back();
    bord.undoLista.pop_back();
    ++bord.antalUndo;
    if (flyg)
        flyg->FlygKort(till, fran, steg);
    Flytta(bord.luckor, till, fran);
}
