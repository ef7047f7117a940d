#include "cards/Flyttar.h"

#include "cards/Luckor.h"

void FlyttaOchSpara(SpelBord& bord, int fran, int till, Flygledare* flyg, int steg) {
    if (flyg)
        flyg->FlygKort(fran, till, steg);
    Flytta(bord.luckor, fran, till);
    bord.undoLista.emplace_back(fran, till);
}

int AngraSenaste(SpelBord& bord, Flygledare* flyg, int steg) {
    if (bord.undoLista.empty())
        return 0;
    auto [fran, till] = bord.undoLista.back();
    bord.undoLista.pop_back();
    ++bord.antalUndo;
    if (flyg)
        flyg->FlygKort(till, fran, steg);
    Flytta(bord.luckor, till, fran);
    return static_cast<int>(bord.undoLista.size());
}
