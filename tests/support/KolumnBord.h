#pragma once

#include "games/KolumnRegler.h"
#include "games/KolumnSpel.h"
#include "support/Gester.h"
#include "support/SpelBordet.h"
#include "support/Testbord.h"

#include <initializer_list>
#include <memory>
#include <vector>

// A column game (Freecell, Eight off) in a real play view, with a table a test may lay
// out card by card.
struct KolumnBord : Testbord<KolumnSpel> {
    KolumnBord(int spelNr, bool tomt, int bredd, int hojd, bool animera, unsigned fro)
        : Testbord<KolumnSpel>(spelNr, fro, tomt, bredd, hojd, animera) {}
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
