#pragma once

#include "games/KolumnRegler.h"
#include "games/KolumnSpel.h"
#include "support/Gester.h"
#include "support/SpelBordet.h"

#include <initializer_list>
#include <memory>
#include <vector>

// A column game (Freecell, Eight off, Glädjespridaren) in a real play view, with a table a
// test may lay out card by card.
struct KolumnBord : SpelBordet<KolumnSpel> {
    KolumnBord(int spelNr, bool tomt, int bredd, int hojd, bool animera, unsigned fro)
        : SpelBordet<KolumnSpel>(spelNr, tomt, bredd, hojd, animera, fro) {}
    // Kings of spades at the bases of the given columns: full columns that take nothing.
    void Kungar(std::initializer_list<int> kolumner) {
        for (int c : kolumner)
            Lagg(c * KolumnRegler::kPlatserPerKolumn, SPADER, 13);
    }
    // Half the lengthening below a slot's card.
    BPoint Under(int lucka) {
        BRect r = L()[lucka].GePos();
        return BPoint((r.left + r.right) / 2, r.bottom + 50);
    }
};
