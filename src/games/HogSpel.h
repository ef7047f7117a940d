#pragma once

#include "cards/Drag.h"
#include "cards/Hiscore.h"
#include "cards/KortSpel.h"
#include "cards/Luckor.h"
#include "games/HogRegler.h"
#include "games/RegelSpel.h"

#include <QPainter>

#include <optional>
#include <vector>

// The gestures, flights and drawing of a game whose piles give up only their top card, one
// card at a time (Kvarnen, Farfars klocka). The game gives its rules and its plan: the hit
// test and the click and drop places, where its stock lies and how long its cards fly.
template <typename B> class HogSpel : public RegelSpel<B> {
public:
    // What the game's rules answer for its gestures and flights, and where its stock begins.
    struct Plan {
        // The pile top under the pointer, or -1.
        int (*traff)(const std::vector<Lucka>&, BPoint);
        // Where a click or a drop at a point sends the top card of a slot, or -1.
        int (*klickMal)(const std::vector<Lucka>&, int);
        int (*dropMal)(const std::vector<Lucka>&, int, BPoint);
        // A card lying in this slot covers nothing.
        bool (*arBas)(int);
        int forstaLek;
        // Flight times in microseconds, by the rules' steps.
        int givTid;
        int flyttTid;
        int angraTid;
        int samlaTid;
        int omgivTid;
    };

    // Every slot in index order: a card face up or down; an empty slot its outline where the
    // game has switched it on.
    void RitaSpel(QPainter& offView) override {
        for (const Lucka& lucka : this->bord.luckor)
            this->RitaLucka(offView, lucka);
    }

    // The card stays in its place while its picture is carried.
    bool FlyttaKort(SpelYta* view, BPoint where) override {
        int kalla = Traff(where);
        if (kalla < 0)
            return false;
        int till = KlickMal(kalla);
        std::optional<Drag> klick;
        if (till >= 0)
            klick = KortDrag(kalla, till);
        return this->KlickaEllerLyft(view, where, kalla, klick, this->Flyg());
    }

    std::optional<Gest> GestFor(const Drag& drag) const override {
        const std::vector<Lucka>& luckor = this->bord.luckor;
        const BRect synligt = this->vy->Bounds();
        if (drag.slag == DragSlag::Knapp) {
            std::optional<BPoint> knapp = KnappPunkt();
            if (!knapp || !synligt.Contains(*knapp))
                return std::nullopt;
            return KlickGest(*knapp);
        }
        if (drag.slag != DragSlag::Kort || !Fylld(luckor, drag.fran))
            return std::nullopt;
        std::optional<BPoint> grepp;
        for (BPoint p : Punkter(luckor[drag.fran].GePos()))
            if (synligt.Contains(p) && Traff(p) == drag.fran) {
                grepp = p;
                break;
            }
        if (!grepp)
            return std::nullopt;
        if (KlickMal(drag.fran) == drag.till)
            return KlickGest(*grepp);
        // Released over the card it lands on, or over the empty place it fills.
        for (int mal : {drag.till - 1, drag.till}) {
            if (mal < 0 || mal >= static_cast<int>(luckor.size()))
                continue;
            for (BPoint q : Punkter(luckor[mal].GePos()))
                if (synligt.Contains(q) && DropMal(drag.fran, q) == drag.till)
                    return DragGest(*grepp, q);
        }
        return std::nullopt;
    }

protected:
    HogSpel(SpelYta* view, bool animeraKort, const Plan& spelPlan)
        : RegelSpel<B>(view, animeraKort), plan(spelPlan) {}

    // Where a player presses the game's button, if it has one.
    virtual std::optional<BPoint> KnappPunkt() const { return std::nullopt; }

    int DropMalFor(int fran, BPoint q) const override { return DropMal(fran, q); }

private:
    int Traff(BPoint p) const { return plan.traff(this->bord.luckor, p); }
    int KlickMal(int fran) const { return plan.klickMal(this->bord.luckor, fran); }
    int DropMal(int fran, BPoint q) const { return plan.dropMal(this->bord.luckor, fran, q); }

    // Where a player aims on a card: its middle, then near its top and bottom edges.
    static std::vector<BPoint> Punkter(BRect r) {
        float x = (r.left + r.right) / 2;
        return {BPoint(x, (r.top + r.bottom) / 2), BPoint(x, r.top + 2), BPoint(x, r.bottom - 2)};
    }
    void FlygKort(int fran, int till, int steg) override {
        if (steg == HogRegler::kOmgivSteg && samlat) {
            // The gathered cards landed face up: the stock is turned over before it deals.
            this->RitaBaksidor(plan.forstaLek, fran);
            samlat = false;
        }
        if (steg == HogRegler::kSamlaSteg)
            samlat = true;
        switch (steg) {
        case HogRegler::kGivSteg:
        case HogRegler::kOmgivSteg:
            // The next card of the stock shows, face down, where this one lay.
            this->FlygLucka(fran, till, fran > plan.forstaLek ? fran - 1 : -1,
                            steg == HogRegler::kGivSteg ? plan.givTid : plan.omgivTid, false);
            break;
        case HogRegler::kFlyttSteg:
        case HogRegler::kAngraSteg:
        case HogRegler::kSamlaSteg:
            this->FlygLucka(fran, till, plan.arBas(fran) ? -1 : fran - 1,
                            steg == HogRegler::kFlyttSteg   ? plan.flyttTid
                            : steg == HogRegler::kAngraSteg ? plan.angraTid
                                                            : plan.samlaTid,
                            false);
            break;
        default:
            break;
        }
    }

    const Plan& plan;
    // Cards have flown into the stock since it last dealt.
    bool samlat = false;
};
