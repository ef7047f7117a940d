#pragma once

#include "cards/Drag.h"
#include "cards/Hiscore.h"
#include "cards/KortSpel.h"
#include "cards/Luckor.h"
#include "games/RegelSpel.h"

#include <functional>
#include <optional>
#include <vector>

// The hand the column games are played with, and Idioten 2 with them: a press picks the
// card under the pointer and everything on top of it; a click lets the rules move it, a
// drag lifts it out of the table, and the release asks the rules where it lands.

// Lifts the cards of slots forsta..topp: paints them out of the off-screen frame, the card
// of slot `under` showing again (none when it is -1 or empty), and makes the drag image with
// its hot spot at `where`.
void LyftKorten(KortSpel& spel, SpelYta* view, const std::vector<Lucka>& luckor, int forsta,
                int topp, int under, BPoint where);
// Where a player presses to lift the card of rectangle `r`: in its top band, its middle or
// near its bottom, the first such point inside `synligt` that `traffar` accepts.
std::optional<BPoint> GreppPunkt(BRect r, BRect synligt,
                                 const std::function<bool(BPoint)>& traffar);

// A game played by that hand over its table B. The game tells which card the pointer is on,
// what a click on it and a release of it make, and what shows beneath a lifted card.
template <typename B> class KolumnGester : public RegelSpel<B> {
public:
    using RegelSpel<B>::RegelSpel;

    bool FlyttaKort(SpelYta* view, BPoint where) override {
        const std::vector<Lucka>& luckor = this->bord.luckor;
        int traff = Traffen(where);
        if (traff < 0)
            return false;
        int topp = Toppen(luckor, traff);
        this->valdaLuckor.clear();
        for (int i = traff; i <= topp; ++i)
            this->valdaLuckor.push_back(i);
        if (this->VantaPaAvsikt(view, where) == Patiens::Avsikt::Klick) {
            if (std::optional<Drag> drag = KlickDragPa(traff))
                this->Gor(*drag, true);
            return false;
        }
        LyftKorten(*this, view, luckor, traff, topp, UnderLyft(traff), where);
        return true;
    }

    void Drop(SpelYta* view, int /*target*/) override {
        if (this->valdaLuckor.empty())
            return;
        BPoint q;
        uint32_t knappar = 0;
        view->GetMouse(&q, &knappar);
        int forsta = this->valdaLuckor.front();
        int topp = this->valdaLuckor.back();
        this->valdaLuckor.clear();
        if (std::optional<Drag> drag = DropDragVid(forsta, topp, q))
            this->Gor(*drag, false);
    }

    bool LamnatKlickRutan(BPoint press, BPoint now) const override {
        return LamnatOjamnKlickRuta(press, now);
    }

protected:
    // Where a player presses to lift the card in `lucka`; none when the place lies outside
    // the view.
    std::optional<BPoint> GreppFor(int lucka) const {
        return GreppPunkt(this->bord.luckor[lucka].GePos(), this->vy->Bounds(),
                          [&](BPoint p) { return Traffen(p) == lucka; });
    }

    // The gesture of a card or run move: a click where a click makes it, else a press
    // pulled to the first of the points `slapp` where the release makes it.
    std::optional<Gest> GestVia(const Drag& drag, const std::vector<BPoint>& slapp) const {
        const std::vector<Lucka>& luckor = this->bord.luckor;
        if ((drag.slag != DragSlag::Kort && drag.slag != DragSlag::Rad) ||
            !Fylld(luckor, drag.fran))
            return std::nullopt;
        int topp = Toppen(luckor, drag.fran);
        if (topp - drag.fran + 1 != drag.antal)
            return std::nullopt;
        std::optional<BPoint> grepp = GreppFor(drag.fran);
        if (!grepp)
            return std::nullopt;
        if (KlickDragPa(drag.fran) == drag)
            return KlickGest(*grepp);
        for (BPoint q : slapp)
            if (this->vy->Bounds().Contains(q) && DropDragVid(drag.fran, topp, q) == drag)
                return DragGest(*grepp, q);
        return std::nullopt;
    }

    // The slot whose card the pointer is on, or -1.
    virtual int Traffen(BPoint p) const = 0;
    // What a click on the card of slot `traff` makes, and the release at `q` of the lifted
    // cards forsta..topp.
    virtual std::optional<Drag> KlickDragPa(int traff) const = 0;
    virtual std::optional<Drag> DropDragVid(int forsta, int topp, BPoint q) const = 0;
    // The slot whose card shows once the cards from `traff` up are lifted, or -1.
    virtual int UnderLyft(int traff) const = 0;
};
