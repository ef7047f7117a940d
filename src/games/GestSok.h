#pragma once

#include "cards/Drag.h"
#include "platform/Geometry.h"

#include <optional>
#include <vector>

// Finding the gesture that makes a move: the games try a few points where a player would
// aim, and ask their own click and drop functions what each would do.

// Where a player aims at a card: the middle, near its top edge, near its bottom edge.
inline std::vector<BPoint> Siktpunkter(BRect r) {
    float x = (r.left + r.right) / 2;
    return {BPoint(x, (r.top + r.bottom) / 2), BPoint(x, r.top + 10), BPoint(x, r.bottom - 5)};
}

// The first click at one of `grepp`, or else the first press at one of `grepp` released at
// one of `slapp`, that makes exactly `drag`, all inside `synligt`. `klick(p)` and
// `slappa(p, q)` say what such gestures do.
template <typename Klick, typename Slappa>
std::optional<Gest> SokGest(const Drag& drag, BRect synligt, const std::vector<BPoint>& grepp,
                            const std::vector<BPoint>& slapp, Klick klick, Slappa slappa) {
    for (BPoint p : grepp)
        if (synligt.Contains(p) && klick(p) == drag)
            return KlickGest(p);
    for (BPoint p : grepp)
        for (BPoint q : slapp)
            if (synligt.Contains(p) && synligt.Contains(q) && slappa(p, q) == drag)
                return DragGest(p, q);
    return std::nullopt;
}
