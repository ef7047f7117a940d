#pragma once

#include "games/KolumnRegler.h"
#include "games/KolumnSpel.h"
#include "support/Gester.h"

#include <initializer_list>
#include <memory>
#include <vector>

// A column game (Freecell, Eight off) in a real play view, with a table a test may lay
// out card by card.
struct KolumnBord {
    std::unique_ptr<FjolkView> vy;
    KolumnSpel* spel = nullptr;

    KolumnBord(int spelNr, bool tomt, int bredd, int hojd, bool animera, unsigned fro) {
        vy = VyMedSpel(spelNr, fro, bredd, hojd, animera);
        spel = dynamic_cast<KolumnSpel*>(vy->Spel());
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
    // Kings of spades at the bases of the given columns: full columns that take nothing.
    void Kungar(std::initializer_list<int> kolumner) {
        for (int c : kolumner)
            Lagg(c * KolumnRegler::kPlatserPerKolumn, SPADER, 13);
    }
    // Where a player presses on a card: inside its band, so a covered card is meant.
    BPoint Band(int lucka) {
        BRect r = L()[lucka].GePos();
        return BPoint((r.left + r.right) / 2, r.top + 10);
    }
    // Half the lengthening below a slot's card.
    BPoint Under(int lucka) {
        BRect r = L()[lucka].GePos();
        return BPoint((r.left + r.right) / 2, r.bottom + 50);
    }
};
