#pragma once

#include "cards/Kort.h"
#include "cards/Lucka.h"

#include <string>
#include <vector>

// The table in words: what each pile of a game is called, and the cards as a player names
// them. The keyboard, the screen reader and any move written out in plain words read the
// same names.

enum class HogSlag {
    Kolumn,    // a column of overlapping cards
    Fricell,   // a free cell
    Grund,     // a foundation
    Lek,       // the stock
    Hog,       // a pile
    Ruta,      // one place of a grid
    Hal,       // the hole
    Torn,      // a tower
    Reserv,    // a reserve pile
    Klocka,    // a pile of the clock
    Pyramid,   // one card place of the pyramid
    Avfall,    // the waste
    Kast,      // the discard pile: nothing is ever taken from it
    Solfjader, // a fan
};

// A pile: slots `forsta`..`sista`, its top the last filled one. `nummer` counts from 1 among
// the piles of its kind (0: the only one); `rad` is a grid's or a pyramid's row from 1 (0:
// none).
struct Hog {
    HogSlag slag = HogSlag::Hog;
    int nummer = 0;
    int forsta = 0;
    int sista = 0;
    int rad = 0;
    bool operator==(const Hog&) const = default;
};

// "seven of clubs", "ace of hearts".
std::string KortNamn(const Kort& kort);
// "column 3", "free cell 2", "stock", "row 2, place 5".
std::string HogNamn(const Hog& hog);
// The pile with its cards: "column 3: seven of clubs on eight of hearts, 5 cards",
// "free cell 2: empty", "stock: 14 cards". A face-down card is not named.
std::string BeskrivHog(const Hog& hog, const std::vector<Lucka>& luckor);
// The pile holding slot `lucka`, or null.
const Hog* HogMed(const std::vector<Hog>& hogar, int lucka);

// The piles and their slots at one moment.
struct BordIOrd {
    std::vector<Hog> hogar;
    std::vector<Lucka> luckor;
};
// What happened between two moments of a table, in words: each run of cards that went from
// one pile to another, named by its first card ("seven of clubs from column 3 to foundation
// 2", "jack of hearts and 2 more from column 3 to column 5"), a card that left the table
// ("king of spades removed from row 7, pyramid card 1"), cards that land face down by number
// ("3 cards from waste to stock"), joined by "; ". More than three runs are told by their
// number of cards ("10 cards from stock to 10 piles"). Empty when no card changed piles.
std::string BeskrivAndring(const BordIOrd& fore, const BordIOrd& efter);
