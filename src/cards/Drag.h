#pragma once

#include "platform/Geometry.h"

#include <string>

// One move a player can make, as data: what the gestures do, what a hint shows and what a
// solver tries.
enum class DragSlag {
    Kort,       // one card from `fran` to `till`
    Rad,        // the `antal` cards from `fran` up, as one, to `till` and up; `andra` is
                // the slot the move aims at (the card it lands on, or the place it fills)
    Par,        // two cards together: `fran` and `andra`, each to its own place
    Knapp,      // the game's stock or button: what it does is the game's
    NyttForsok, // the button that gathers, shuffles and deals again
};

struct Drag {
    DragSlag slag = DragSlag::Kort;
    int fran = -1;
    int antal = 1;
    int andra = -1;
    int till = -1;

    bool operator==(const Drag&) const = default;
};

Drag KortDrag(int fran, int till);
Drag RadDrag(int fran, int antal, int till);
Drag ParDrag(int fran, int andra);
Drag KnappDrag();
Drag NyttForsokDrag();

// "card 12->30", "run 3x40->66", "pair 4+27", "button", "new attempt": for messages.
std::string Beskriv(const Drag& drag);

// How a player makes a move with the mouse: a click at `fran`, or a press at `fran`
// pulled to `till` and released there.
struct Gest {
    bool klick = true;
    BPoint fran;
    BPoint till;
};

Gest KlickGest(BPoint var);
Gest DragGest(BPoint fran, BPoint till);

// Told by a game's rules just before they move a card, so that the game can let it fly
// first. `steg` is the game's own name for the kind of step (a deal, a gather, an undo),
// for games whose steps fly differently.
class Flygledare {
public:
    virtual void FlygKort(int fran, int till, int steg) = 0;
    // The `antal` cards from `forsta` up move together to `till` and up.
    virtual void FlygRad(int forsta, int antal, int till, int steg) = 0;

protected:
    ~Flygledare() = default;
};
