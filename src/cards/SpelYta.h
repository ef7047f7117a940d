#pragma once

#include "platform/Geometry.h"

#include <cstdint>

class Patiens;
class QImage;

// What a game needs of the view it is played in, and all it knows of it: the play view
// implements it, and games and the framework speak only to it.
class SpelYta {
public:
    virtual ~SpelYta() = default;

    // The table's area, from (0, 0).
    virtual BRect Bounds() const = 0;
    // The pointer as the gesture under way resolved it, and the buttons: 1 while cards
    // are being dragged, 0 for a click or at the release.
    virtual void GetMouse(BPoint* where, uint32_t* buttons) const = 0;
    // The off-screen frame the table is composed in.
    virtual QImage& OffBitmap() = 0;
    // Puts the table's background under `rect` of the off-screen frame.
    virtual void RitaBakgrund(BRect rect) = 0;
    // Shows `rect` of the off-screen frame on the screen at once.
    virtual void VisaNu(BRect rect) = 0;
    // Composes the frame anew from the background and `spel`'s drawing and shows it all
    // at once; the game being dealt need not be the view's game yet.
    virtual void RitaOm(Patiens& spel) = 0;
    // Composes the frame anew from the view's game and shows it when the window next
    // paints.
    virtual void InvalidateOffscreen() = 0;
    // The player's name as it was when the game was started, at most 19 characters.
    virtual const char* SpelarNamn() const = 0;
};
