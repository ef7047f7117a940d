#include "games/LekRegler.h"

#include "cards/Luckor.h"

namespace LekRegler {

int Lek::Topp(const std::vector<Lucka>& luckor) const {
    return LekTopp(luckor, forsta, sista);
}

void LaggLeken(SpelBord& bord, int forsta) {
    NyGiv(bord);
    bord.antalUndo = 0;
    bord.kortlek.Blanda();
    LaggILeken(bord, forsta);
}

void LaggOblandadLek(SpelBord& bord, int forsta) {
    NyGiv(bord);
    bord.antalUndo = 0;
    LaggILeken(bord, forsta);
}

void NyGiv(SpelBord& bord) {
    for (Lucka& lucka : bord.luckor)
        lucka.TaBortKort();
    bord.undoLista.clear();
    bord.kortlek.NyKortlek();
}

void LaggILeken(SpelBord& bord, int forsta) {
    for (int i = forsta; bord.kortlek.AntalKortKvar() > 0; ++i)
        bord.luckor[i].TaEmotKort(bord.kortlek.GeKort());
}

void LaggEssenOverst(SpelBord& bord, int sista) {
    for (int i = sista - 3; i <= sista; ++i)
        bord.luckor[i].TaEmotKort(bord.kortlek.GeEss());
}

namespace {

void Ge(SpelBord& bord, const Lek& lek, const std::vector<int>& mal, Flygledare* flyg, int steg,
        bool spara) {
    for (int till : mal) {
        int topp = lek.Topp(bord.luckor);
        if (topp < 0)
            return;
        if (flyg)
            flyg->FlygKort(topp, till, steg);
        Flytta(bord.luckor, topp, till);
        if (spara)
            bord.undoLista.emplace_back(kFranLeken, till);
    }
}

} // namespace

void GeFranLeken(SpelBord& bord, const Lek& lek, const std::vector<int>& mal, Flygledare* flyg,
                 int steg) {
    Ge(bord, lek, mal, flyg, steg, true);
}

void DelaFranLeken(SpelBord& bord, const Lek& lek, const std::vector<int>& mal, Flygledare* flyg,
                   int steg) {
    Ge(bord, lek, mal, flyg, steg, false);
}

void AngraFranLeken(SpelBord& bord, const Lek& lek, int antal, Flygledare* flyg, int steg) {
    for (int k = 0; k < antal && !bord.undoLista.empty(); ++k) {
        int fran = bord.undoLista.back().second;
        bord.undoLista.pop_back();
        int topp = lek.Topp(bord.luckor);
        int till = topp < 0 ? lek.forsta : topp + 1;
        if (flyg)
            flyg->FlygKort(fran, till, steg);
        Flytta(bord.luckor, fran, till);
    }
}

} // namespace LekRegler
