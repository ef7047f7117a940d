#pragma once

#include "app/FjolkView.h"
#include "cards/SpelRegler.h"
#include "platform/Geometry.h"

#include <cstdlib>
#include <memory>
#include <vector>

// Real mouse gestures on a play view, as a player makes them, deterministic and without
// sleeps.
void KlickaPa(FjolkView& view, BPoint p);
// Press at `fran`, move past the click square, move to `till`, release there.
void DraFranTill(FjolkView& view, BPoint fran, BPoint till);
// Press at `fran` and pull to `till`, past the click square, keeping the button down:
// the cards are being dragged until the test releases them.
void TryckOchDra(FjolkView& view, BPoint fran, BPoint till);
// Press, wiggle inside the 4-pixel square, release: still a click.
void TryckSkakaSlapp(FjolkView& view, BPoint p);
// Press at `fran`, drag out of the view and release outside it.
void DraOchSlappUtanfor(FjolkView& view, BPoint fran);
// Makes a gesture as a game describes it: a click, or a drag from one point to another.
void GorGest(FjolkView& view, const Gest& gest);
// The centre of a slot rectangle, where a player aims.
BPoint Mitt(BRect r);

// Lets the events posted so far, and the ones they post in turn, be handled.
void Behandla();

// A play view of the given size, shown (under the offscreen platform) so that it takes
// events, holding the game `spelNr` dealt with the given seed and animation switch.
std::unique_ptr<FjolkView> VyMedSpel(int spelNr, unsigned seed, int bredd, int hojd,
                                     bool animera = false);

// Every slot of the game's table emptied, and the undo records with them.
void TommaBordet(Patiens& spel);
// A card laid face up in slot `lucka`, drawn at the game's card size.
void LaggKort(Patiens& spel, int lucka, kortfarg farg, int valor);

// Everything that describes a table: each slot's emptiness, card and marks.
struct LuckaBild {
    bool tom;
    int farg;
    int valor;
    bool okPos;
    bool kantLinje;
    BRect pos;
    bool operator==(const LuckaBild&) const = default;
};
std::vector<LuckaBild> Bordet(const Patiens& spel);
std::vector<LuckaBild> Bordet(const SpelBord& bord);

// What a listed move makes of a table; the random numbers a shuffle draws start from
// `fro`, as they did for the gesture.
inline std::unique_ptr<SpelBord> EfterDrag(const SpelRegler& regler, const SpelBord& fore,
                                           const Drag& drag, unsigned fro) {
    auto kopia = fore.Kopia();
    std::srand(fro);
    regler.GorDrag(*kopia, drag, nullptr);
    regler.KlarSpel(*kopia);
    return kopia;
}
