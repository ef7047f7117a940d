#pragma once

#include "cards/Drag.h"
#include "cards/Lucka.h"
#include "cards/SpelBord.h"
#include "platform/Geometry.h"

#include <vector>

// The games whose cards lie in piles of which only the top card moves, one card at a time
// (Kvarnen, Farfars klocka): a move is recorded as (from, to), an undo puts the card back,
// and the table is dealt off a face-down stock that no undo reaches back to.
namespace HogRegler {

// What the rules tell the game as they move cards, so it can let each fly its own way.
enum Steg : int {
    kGivSteg,   // off the stock, dealing
    kFlyttSteg, // a card the player moves
    kAngraSteg, // a move taken back
    kSamlaSteg, // gathered from the table into the stock
    kOmgivSteg, // dealt again off the gathered stock
};

// The tops among the slots `forsta`..`sista`, in slot order.
std::vector<int> Toppar(const std::vector<Lucka>& luckor, int forsta, int sista);

// A place a card may go: the slot a drop must hit (a top, or an empty base), and the slot
// the card then lands in.
struct Plats {
    int lucka;
    int till;
};
// Where a card dropped at `q` lands: the first of `platser`, in the game's search order, whose
// slot holds the point; -1 for nowhere.
int DropTill(const std::vector<Lucka>& luckor, const std::vector<Plats>& platser, BPoint q);

// The moves of the top card of `fran`: where a click sends it (`klick`, -1 for nowhere), then
// every place a drop can put it, each place once. The piles of these games never cover one
// another wholly, so each place has some point a drop reaches it by.
void LaggTillKortDrag(std::vector<Drag>& drag, int fran, int klick,
                      const std::vector<Plats>& platser);

} // namespace HogRegler
