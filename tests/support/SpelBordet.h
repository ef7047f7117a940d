#pragma once

#include "app/FjolkView.h"
#include "cards/Kort.h"
#include "cards/Kortlek.h"
#include "support/Gester.h"

#include <cstdlib>
#include <memory>
#include <vector>

// The deck as a deal seeded with `fro` shuffles it, in the order its cards come off it.
inline std::vector<Kort> BlandadLek(unsigned fro) {
    std::srand(fro);
    Kortlek lek;
    lek.Blanda();
    std::vector<Kort> kort;
    while (lek.AntalKortKvar() > 0)
        kort.push_back(lek.GeKort());
    return kort;
}

// A game of type Spel in a real play view, with a table a test may lay out card by card.
template <typename Spel> struct SpelBordet {
    std::unique_ptr<FjolkView> vy;
    Spel* spel = nullptr;

    // With `tomt` every slot is emptied after the deal.
    SpelBordet(int spelNr, bool tomt, int bredd, int hojd, bool animera, unsigned fro) {
        vy = VyMedSpel(spelNr, fro, bredd, hojd, animera);
        spel = dynamic_cast<Spel*>(vy->Spel());
        if (tomt)
            for (Lucka& l : L())
                l.TaBortKort();
    }
    std::vector<Lucka>& L() { return spel->LuckorForTest(); }
    void Lagg(int lucka, kortfarg farg, int valor) {
        Kort k(farg, valor, BRect(0, 0, 0, 0));
        k.NyPos(spel->FramsidaFor(k));
        L()[lucka].TaEmotKort(k);
    }
    bool Har(int lucka, kortfarg farg, int valor) {
        return !L()[lucka].Tom() && L()[lucka].GeKort().KortFarg() == farg &&
               L()[lucka].GeKort().KortValor() == valor;
    }
    // Where a player presses on a card: inside its top band, so a covered card is meant.
    BPoint Band(int lucka) {
        BRect r = L()[lucka].GePos();
        return BPoint((r.left + r.right) / 2, r.top + 10);
    }
};
