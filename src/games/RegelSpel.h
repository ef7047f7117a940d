#pragma once

#include "cards/Drag.h"
#include "cards/GorOm.h"
#include "cards/Hiscore.h"
#include "cards/KortSpel.h"
#include "cards/Lucka.h"

#include <memory>
#include <optional>
#include <utility>
#include <vector>

// What every game whose rules decide everything does the same way: deal, recount, undo
// with flights, enter its result, and put down a single lifted card where its rules say. A
// game gives its layout, its drawing, its gestures and its flights.
template <typename B> class RegelSpel : public PatiensPa<B>, protected Flygledare {
public:
    RegelSpel(SpelYta* view, bool animeraKort) {
        this->vy = view;
        this->animera = animeraKort;
    }

    void NyttSpel(BRect bounds) override {
        this->Regler().LaggUtLeken(this->bord);
        DelaUtDetLagda(bounds);
    }
    void OmGiv(BRect bounds) override {
        if (givet == nullptr) {
            NyttSpel(bounds);
            return;
        }
        this->bord.TaFran(*givet);
        LaggUtOchDela(bounds);
    }
    bool KlarSpel() override { return this->Regler().KlarSpel(this->bord); }
    // The table is shown before the first card leaves the stock, and again when all lie.
    void DelaUtKort() override {
        this->RitaBordet();
        this->Regler().DelaUt(this->bord, Flyg());
        this->RitaBordet();
    }
    void BlandaKort() override { this->bord.kortlek.Blanda(); }
    void SpelKnapp(BPoint) override {}
    void NyttForsok() override {}
    int Undo() override {
        if (this->bord.undoLista.empty())
            return 0;
        auto fore = this->bord.Kopia();
        int kvar = this->Regler().Angra(this->bord, Flyg());
        gorOm.Angrat(this->Regler(), *fore, this->bord);
        this->vy->InvalidateOffscreen();
        return kvar;
    }
    bool Has_Undos() override { return !this->bord.undoLista.empty(); }
    int Redo() override {
        std::optional<Drag> drag = gorOm.Nasta(this->Regler(), this->bord);
        if (!drag)
            return 0;
        Gor(*drag, true);
        KlarSpel();
        gorOm.Gjort(this->bord);
        this->vy->InvalidateOffscreen();
        return gorOm.Antal(this->bord);
    }
    bool Has_Redos() override { return gorOm.Nasta(this->Regler(), this->bord).has_value(); }
    int AddHiscore() override {
        HiscoreResultat resultat = this->Regler().Resultat(this->bord);
        resultat.vunnen = this->Regler().KlarSpel(this->bord);
        resultat.iStatistiken = !std::exchange(resultatRaknat, true);
        return ::AddHiscore(this->SpelNummer(), resultat, this->bord.antalUndo,
                            this->vy->SpelarNamn(), this->startTid);
    }
    // Only a single lifted card is put down; it goes where the rules say, without a flight.
    void Drop(SpelYta* view, int /*target*/) override {
        BPoint q;
        int kalla = this->SlapptKort(view, &q);
        if (kalla < 0)
            return;
        if (std::optional<Drag> drag = SlappDrag(kalla, q))
            Gor(*drag, false);
    }

protected:
    // Deals the cards laid out in the stock as the deal that Restart Deal deals again.
    void DelaUtDetLagda(BRect bounds) {
        givet = this->bord.Kopia();
        LaggUtOchDela(bounds);
    }
    // Deals the cards laid out for the deal, with its flights, and starts the clock.
    virtual void LaggUtOchDela(BRect bounds) {
        resultatRaknat = false;
        gorOm.Glom();
        this->OmRaknaLuckaKort(bounds);
        this->DelaUtKort();
        KlarSpel();
        this->VisaNyttSpel();
    }
    // The flights' guide while animations are on.
    Flygledare* Flyg() { return this->animera ? this : nullptr; }
    void FlygRad(int, int, int, int) override {}
    // Makes a move the rules made of a gesture, the cards flying when `flyga` says so.
    void Gor(const Drag& drag, bool flyga) {
        this->Regler().GorDrag(this->bord, drag, flyga ? Flyg() : nullptr);
    }
    // What releasing the lifted card of slot `lucka` at `q` makes; none: it goes back. Most
    // games only say where the card goes.
    virtual std::optional<Drag> SlappDrag(int lucka, BPoint q) const {
        int till = DropMalFor(lucka, q);
        if (till < 0)
            return std::nullopt;
        return KortDrag(lucka, till);
    }
    virtual int DropMalFor(int /*lucka*/, BPoint /*q*/) const { return -1; }

private:
    // The table as the deal found it, before a card was dealt: what OmGiv deals again.
    std::unique_ptr<SpelBord> givet;
    GorOmLista gorOm;
    // A deal is counted in the statistics once, whatever records its result again.
    bool resultatRaknat = false;
};

// A game in which a press lifts the card under the pointer with every card above it on its
// pile, and the cards stay where they lie while their picture is carried; a click sends a
// top card alone where the rules say, and a drop puts down a single card only.
template <typename B> class LyftSpel : public RegelSpel<B> {
public:
    using RegelSpel<B>::RegelSpel;

    bool FlyttaKort(SpelYta* view, BPoint where) override {
        int traff = Traffad(where);
        if (traff < 0)
            return false;
        int topp = ToppAv(traff);
        this->valdaLuckor.clear();
        for (int i = traff; i <= topp; ++i)
            this->valdaLuckor.push_back(i);
        if (this->VantaPaAvsikt(view, where) == Patiens::Avsikt::Klick) {
            int till = traff == topp ? KlickMalFor(traff) : -1;
            if (till >= 0)
                this->Gor(KortDrag(traff, till), true);
            return false;
        }
        this->ByggDragBild(this->bord.luckor, this->valdaLuckor, where);
        return true;
    }

protected:
    // Where the card of slot `lucka` dropped at `q` goes; -1: nowhere.
    int DropMalFor(int lucka, BPoint q) const override = 0;
    // The slot a press at `p` picks up (-1: none), and the top of its pile.
    virtual int Traffad(BPoint p) const = 0;
    virtual int ToppAv(int lucka) const = 0;
    // Where a click sends the top card of slot `lucka`; -1: nowhere.
    virtual int KlickMalFor(int lucka) const = 0;
};
