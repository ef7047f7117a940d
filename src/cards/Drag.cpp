#include "cards/Drag.h"

Drag KortDrag(int fran, int till) {
    return Drag{DragSlag::Kort, fran, 1, -1, till};
}

Drag RadDrag(int fran, int antal, int till) {
    return Drag{DragSlag::Rad, fran, antal, -1, till};
}

Drag ParDrag(int fran, int andra) {
    return Drag{DragSlag::Par, fran, 2, andra, -1};
}

Drag KnappDrag() {
    return Drag{DragSlag::Knapp, -1, 0, -1, -1};
}

Drag NyttForsokDrag() {
    return Drag{DragSlag::NyttForsok, -1, 0, -1, -1};
}

std::string Beskriv(const Drag& d) {
    switch (d.slag) {
    case DragSlag::Kort:
        return "card " + std::to_string(d.fran) + "->" + std::to_string(d.till);
    case DragSlag::Rad:
        return "run " + std::to_string(d.antal) + "x" + std::to_string(d.fran) + "->" +
               std::to_string(d.till);
    case DragSlag::Par:
        return "pair " + std::to_string(d.fran) + "+" + std::to_string(d.andra);
    case DragSlag::Knapp:
        return "button";
    case DragSlag::NyttForsok:
        return "new attempt";
    }
    return "?";
}

Gest KlickGest(BPoint var) {
    return Gest{true, var, var};
}

Gest DragGest(BPoint fran, BPoint till) {
    return Gest{false, fran, till};
}
