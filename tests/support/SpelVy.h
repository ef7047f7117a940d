#pragma once

#include "app/FjolkView.h"
#include "cards/Hiscore.h"
#include "platform/AttributeStore.h"
#include "support/Gester.h"

#include <QCoreApplication>

#include <memory>
#include <optional>
#include <vector>

// A game of type Spel in a real play view, with a table a test may lay out card by card.
template <typename Spel> struct SpelVy {
    std::unique_ptr<FjolkView> vy;
    Spel* spel = nullptr;

    SpelVy(int spelNr, unsigned fro, int bredd = 640, int hojd = 480, bool animera = false) {
        vy = VyMedSpel(spelNr, fro, bredd, hojd, animera);
        spel = dynamic_cast<Spel*>(vy->Spel());
    }
    std::vector<Lucka>& L() { return spel->LuckorForTest(); }
    // Every slot emptied, and the undo records with them.
    void Tomt() {
        for (Lucka& l : L())
            l.TaBortKort();
        spel->BordForTest().undoLista.clear();
    }
    void Lagg(int lucka, kortfarg farg, int valor) {
        Kort k(farg, valor, BRect(0, 0, 0, 0));
        k.NyPos(spel->FramsidaFor(k));
        L()[lucka].TaEmotKort(k);
    }
    bool Har(int lucka, kortfarg farg, int valor) {
        return !L()[lucka].Tom() && L()[lucka].GeKort().KortFarg() == farg &&
               L()[lucka].GeKort().KortValor() == valor;
    }
    int Valor(int lucka) { return L()[lucka].Tom() ? -1 : L()[lucka].GeKort().KortValor(); }
    BRect Pos(int lucka) { return L()[lucka].GePos(); }
    // A point in the top band of a slot's card, where a covered card still shows.
    BPoint Band(int lucka) {
        BRect r = Pos(lucka);
        return BPoint((r.left + r.right) / 2, r.top + 10);
    }
    // A point near the bottom of a slot's card, where only a top card is hit.
    BPoint Botten(int lucka) {
        BRect r = Pos(lucka);
        return BPoint((r.left + r.right) / 2, r.bottom - 5);
    }
    // The entry the game's last result made at place `plats` (1-based) of its table.
    HighScoreTable Post(int plats) {
        HiscoreLista tabell;
        AttributeStore::Program().ReadAttr(HiscoreAttributNamn(spel->SpelNummer()).c_str(),
                                           B_RAW_TYPE, 0, tabell.data(), sizeof tabell);
        return tabell[plats - 1];
    }
    // Makes each move by the gesture the game names for it on the view; false at the first
    // move that has none, or whose gesture made anything else of the table.
    bool GorMedGester(const std::vector<Drag>& dragen) {
        const SpelRegler& regler = spel->Regler();
        for (const Drag& d : dragen) {
            auto vantat = spel->Tabell().Kopia();
            regler.GorDrag(*vantat, d, nullptr);
            regler.KlarSpel(*vantat);
            std::optional<Gest> gest = spel->GestFor(d);
            if (!gest)
                return false;
            GorGest(*vy, *gest);
            QCoreApplication::sendPostedEvents();
            if (!spel->Tabell().Lika(*vantat))
                return false;
        }
        return true;
    }
    void GlomHiscore() {
        AttributeStore::Program().RemoveAttr(HiscoreAttributNamn(spel->SpelNummer()).c_str());
    }
};
