#pragma once

#include "cards/KortSpel.h"
#include "support/Gester.h"

#include <QTest>

#include <memory>
#include <string>
#include <vector>

// A game of type Spel dealt in a real play view, with a table a test may lay out card by
// card.
template <typename Spel> struct SpelPaBord {
    std::unique_ptr<FjolkView> vy;
    Spel* spel = nullptr;

    SpelPaBord(int spelNr, unsigned fro, int bredd = 640, int hojd = 480, bool animera = false) {
        vy = VyMedSpel(spelNr, fro, bredd, hojd, animera);
        spel = dynamic_cast<Spel*>(vy->Spel());
    }
    std::vector<Lucka>& L() { return spel->LuckorForTest(); }
    void Tom() {
        for (Lucka& l : L())
            l.TaBortKort();
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
    BPoint Pa(int lucka) { return Mitt(L()[lucka].GePos()); }
    // The cards of the pile whose `platser` slots start at `bas`.
    int AntalKort(int bas, int platser) {
        int n = 0;
        while (n < platser && !L()[bas + n].Tom())
            ++n;
        return n;
    }
    // Makes each move by the gesture the game names for it, each landing exactly as the
    // rules make it; a failure names the move.
    void Spela(const std::vector<Drag>& vag) {
        for (const Drag& d : vag) {
            std::optional<Gest> gest = spel->GestFor(d);
            QVERIFY2(gest.has_value(), Beskriv(d).c_str());
            auto vantat = spel->Tabell().Kopia();
            spel->Regler().GorDrag(*vantat, d, nullptr);
            GorGest(*vy, *gest);
            QVERIFY2(vantat->Lika(spel->Tabell()), Beskriv(d).c_str());
        }
    }
};
