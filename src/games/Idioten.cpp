#include "games/Idioten.h"

#include "cards/Hiscore.h"
#include "cards/Luckor.h"

#include <QPainter>

using namespace IdiotenRegler;

namespace {

// Flight times in microseconds.
constexpr int kGivTid = 40000;
constexpr int kSamlaTid = 50000;
constexpr int kAngraTid = 100000;
constexpr int kKlickTid = 200000;

constexpr rgb_color kKnappFarg{180, 80, 180, 255};
constexpr rgb_color kKnappText{0, 255, 255, 255};

BPoint Mitten(BRect r) {
    return BPoint((r.left + r.right) / 2, (r.top + r.bottom) / 2);
}

} // namespace

Idioten::Idioten(SpelYta* view, BRect /*frame*/, bool animeraKort) : RegelSpel(view, animeraKort) {
    Skapa(bord);
    NyttSpel(vy->Bounds());
}

void Idioten::RitaSpel(QPainter& offView) {
    // The stock is only ever seen face down, while a deal runs.
    for (int i = kForstaRutan; i <= kSistaEssPlats; ++i)
        RitaLucka(offView, bord.luckor[i]);
    if (bord.forsok < kSistaGiv)
        RitaKnapp(offView, bord.knapp, bord.forsok == 1 ? "   Next try" : "    Last try",
                  kKnappFarg, kKnappText);
    RitaRaknare(offView, RaknarRuta(bord.luckor), "Cards done:", bord.klaraKort);
}

void Idioten::RitaForeGiv() {
    RitaBordet();
    if (animera)
        RitaBaksidor(kForstaLekPlats, kSistaLekPlats);
}

void Idioten::DelaUtKort() {
    RitaForeGiv();
    DelaUt(bord, Flyg());
}

void Idioten::OmRaknaLuckaKort(BRect bounds) {
    Utlagg utlagg = RaknaUtLuckor(bord.luckor, bounds);
    bord.knapp = utlagg.knapp;
    KortUtSeende_A(utlagg.w, utlagg.h);
    GeKortenFramsidor(bord.luckor);
}

void Idioten::FlygKort(int fran, int till, int steg) {
    const std::vector<Lucka>& luckor = bord.luckor;
    switch (steg) {
    case kGivSteg:
        if (foreGiv) {
            // The gathered cards lie shuffled in the stock: the table is laid out afresh,
            // as before every deal, and shown with the stock face down.
            OmRaknaLuckaKort(vy->Bounds());
            RitaForeGiv();
            foreGiv = false;
        }
        // The next card of the stock shows, face down, where this one lay.
        SattAnimering(luckor[fran].GePos(), luckor[till].GePos(), luckor[fran].GeKort().GePos(),
                      fran > kForstaLekPlats ? luckor[fran - 1].GePos() : BRect(0, 0, 0, 0),
                      baksidaPos[0]);
        TTAnimeraKort(vy, kGivTid, false);
        break;
    case kEssSteg:
        SattAnimering(luckor[fran].GePos(), luckor[till].GePos(), luckor[till].GeKort().GePos());
        TTAnimeraKort(vy, kGivTid, luckor[fran].GeKantLinje());
        break;
    case kFlyttSteg:
        SattAnimering(luckor[fran].GePos(), luckor[till].GePos(), luckor[fran].GeKort().GePos());
        TTAnimeraKort(vy, kKlickTid, luckor[fran].GeKantLinje());
        break;
    case kSamlaSteg:
        SattAnimering(luckor[fran].GePos(), luckor[kForstaLekPlats].GePos(),
                      luckor[fran].GeKort().GePos());
        TTAnimeraKort(vy, kSamlaTid, luckor[fran].GeKantLinje());
        break;
    case kAngraSteg:
        SattAnimering(luckor[fran].GePos(), luckor[till].GePos(), luckor[fran].GeKort().GePos());
        TTAnimeraKort(vy, kAngraTid, true);
        break;
    default:
        break;
    }
}

bool Idioten::FlyttaKort(SpelYta* view, BPoint where) {
    int kalla = KortUnder(bord.luckor, where);
    if (kalla < 0)
        return false;

    if (VantaPaAvsikt(view, where) == Avsikt::Klick) {
        int till = KlickMal(bord.luckor, bord.luckor[kalla].GeKort());
        if (till >= 0)
            Gor(KortDrag(kalla, till), true);
        KlarSpel();
        return false;
    }

    BRect pos = bord.luckor[kalla].GePos();
    valdaLuckor = {kalla};
    ByggDragBild(bord.luckor, valdaLuckor, where);
    KortSpel::point = where - pos.LeftTop();
    // The place looks empty while its card is carried.
    view->RitaBakgrund(pos);
    view->VisaNu(pos);
    return true;
}

int Idioten::DropMalFor(int lucka, BPoint q) const {
    return IRutnatet(lucka) ? DropMal(bord.luckor, bord.luckor[lucka].GeKort(), q) : -1;
}

void Idioten::SpelKnapp(BPoint where) {
    if (!bord.knapp.Contains(where) || bord.forsok >= kSistaGiv)
        return;
    NyttForsok();
    KlarSpel();
    vy->InvalidateOffscreen();
}

void Idioten::NyttForsok() {
    // The deal inside shows the stock face down before its first card flies.
    foreGiv = true;
    IdiotenRegler::NyttForsok(bord, Flyg());
    if (foreGiv)
        OmRaknaLuckaKort(vy->Bounds());
    foreGiv = false;
}

std::optional<Gest> Idioten::GestFor(const Drag& drag) const {
    const std::vector<Lucka>& luckor = bord.luckor;
    BRect synligt = vy->Bounds();
    if (drag.slag == DragSlag::NyttForsok) {
        if (bord.forsok >= kSistaGiv || !synligt.Contains(Mitten(bord.knapp)))
            return std::nullopt;
        return KlickGest(Mitten(bord.knapp));
    }
    if (drag.slag != DragSlag::Kort || !Fylld(luckor, drag.fran))
        return std::nullopt;
    BPoint fran = Mitten(luckor[drag.fran].GePos());
    BPoint till = Mitten(luckor[drag.till].GePos());
    if (!synligt.Contains(fran) || KortUnder(luckor, fran) != drag.fran)
        return std::nullopt;
    if (KlickMal(luckor, luckor[drag.fran].GeKort()) == drag.till)
        return KlickGest(fran);
    if (!synligt.Contains(till) || DropMal(luckor, luckor[drag.fran].GeKort(), till) != drag.till)
        return std::nullopt;
    return DragGest(fran, till);
}

std::vector<Patiens::KnappPlats> Idioten::Knappar() const {
    if (bord.forsok >= kSistaGiv)
        return {};
    return {{bord.knapp, bord.forsok == 1 ? "Next try" : "Last try"}};
}
