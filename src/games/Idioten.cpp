#include "games/Idioten.h"

#include "app/FjolkView.h"
#include "cards/Hiscore.h"
#include "games/IdiotenRegler.h"

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

} // namespace

Idioten::Idioten(FjolkView* view, BRect /*frame*/, bool animeraKort) {
    vy = view;
    animera = animeraKort;
    luckor.reserve(kAntalLuckor);
    for (int i = 0; i < kAntalLuckor; ++i)
        luckor.emplace_back(BRect(0, 0, 0, 0), false);
    // An empty ace place is no place to play to, so it shows nothing.
    for (int i = kForstaEssPlats; i <= kSistaEssPlats; ++i)
        luckor[i].NyKantLinje(false);
    NyttSpel(vy->Bounds());
}

void Idioten::NyttSpel(BRect bounds) {
    for (Lucka& lucka : luckor)
        lucka.TaBortKort();
    forsok = 1;
    klaraKort = 0;
    antalUndo = 0;
    undoLista.clear();
    kortlek.NyKortlek();
    BlandaKort();
    // The first card off the deck lies at the bottom of the stock.
    for (int i = kForstaLekPlats; i <= kSistaLekPlats; ++i)
        luckor[i].TaEmotKort(kortlek.GeKort());
    OmRaknaLuckaKort(bounds);
    DelaUtKort();
    KlarSpel();
    VisaNyttSpel();
}

bool Idioten::KlarSpel() {
    klaraKort = RaknaKlaraKort(luckor);
    return Vunnet(klaraKort);
}

void Idioten::RitaSpel(QPainter& offView) {
    // The stock is only ever seen face down, while a deal runs.
    for (int i = kForstaRutan; i <= kSistaEssPlats; ++i)
        RitaLucka(offView, luckor[i]);
    if (forsok < kSistaGiv)
        RitaKnapp(offView, knappPos, forsok == 1 ? "   Next try" : "    Last try", kKnappFarg,
                  kKnappText);
    RitaRaknare(offView, RaknarRuta(luckor), "Cards done:", klaraKort);
}

void Idioten::DelaUtKort() {
    RitaBordet();
    if (animera)
        RitaBaksidor(kForstaLekPlats, kSistaLekPlats);

    int topp = LekensTopp(luckor);
    for (int t = kForstaRutan; t <= kSistaRutan && topp >= kForstaLekPlats; ++t) {
        if (!luckor[t].Tom())
            continue;
        if (animera) {
            BRect under = topp > kForstaLekPlats ? luckor[topp - 1].GePos() : BRect(0, 0, 0, 0);
            SattAnimering(luckor[topp].GePos(), luckor[t].GePos(), luckor[topp].GeKort().GePos(),
                          under, baksidaPos[0]);
            TTAnimeraKort(vy, kGivTid, false);
        }
        Flytta(topp, t);
        --topp;
    }

    int essPlats = kForstaEssPlats;
    for (int t = kForstaRutan; t <= kSistaRutan && essPlats <= kSistaEssPlats; ++t) {
        if (luckor[t].Tom() || luckor[t].GeKort().KortValor() != 1)
            continue;
        Flytta(t, essPlats);
        KlarSpel();
        if (animera) {
            SattAnimering(luckor[t].GePos(), luckor[essPlats].GePos(),
                          luckor[essPlats].GeKort().GePos());
            TTAnimeraKort(vy, kGivTid, luckor[t].GeKantLinje());
        }
        ++essPlats;
    }
}

void Idioten::BlandaKort() {
    kortlek.Blanda();
}

void Idioten::OmRaknaLuckaKort(BRect bounds) {
    Utlagg utlagg = RaknaUtLuckor(luckor, bounds);
    knappPos = utlagg.knapp;
    KortUtSeende_A(utlagg.w, utlagg.h);
    GeKortenFramsidor(luckor);
}

bool Idioten::FlyttaKort(FjolkView* view, BPoint where) {
    int kalla = KortUnder(luckor, where);
    if (kalla < 0)
        return false;

    if (VantaPaAvsikt(view, where) == Avsikt::Klick) {
        int till = KlickMal(luckor, luckor[kalla].GeKort());
        if (till >= 0) {
            bool kant = luckor[kalla].GeKantLinje();
            Flytta(kalla, till);
            undoLista.emplace_back(kalla, till);
            if (animera) {
                SattAnimering(luckor[kalla].GePos(), luckor[till].GePos(),
                              luckor[till].GeKort().GePos());
                TTAnimeraKort(view, kKlickTid, kant);
            }
        }
        KlarSpel();
        return false;
    }

    BRect pos = luckor[kalla].GePos();
    valdaLuckor = {kalla};
    ByggDragBild(luckor, valdaLuckor, where);
    KortSpel::point = where - pos.LeftTop();
    // The place looks empty while its card is carried.
    view->RitaBakgrund(pos);
    view->VisaNu(pos);
    return true;
}

void Idioten::Drop(FjolkView* view, int /*target*/) {
    if (valdaLuckor.size() != 1)
        return;
    int kalla = valdaLuckor.front();
    if (!IRutnatet(kalla))
        return;
    BPoint where;
    uint32_t knappar = 0;
    view->GetMouse(&where, &knappar);
    int till = DropMal(luckor, luckor[kalla].GeKort(), where);
    if (till < 0)
        return;
    Flytta(kalla, till);
    undoLista.emplace_back(kalla, till);
}

void Idioten::SpelKnapp(BPoint where) {
    if (!knappPos.Contains(where) || forsok >= kSistaGiv)
        return;
    NyttForsok();
    KlarSpel();
    vy->InvalidateOffscreen();
}

void Idioten::NyttForsok() {
    undoLista.clear();
    KlarSpel();

    // Everything not yet in place goes back, the aces with it.
    for (int i = kForstaRutan; i <= kSistaEssPlats; ++i) {
        Lucka& lucka = luckor[i];
        if (lucka.Tom() || lucka.GeOkPos())
            continue;
        if (animera) {
            SattAnimering(lucka.GePos(), luckor[kForstaLekPlats].GePos(), lucka.GeKort().GePos());
            TTAnimeraKort(vy, kSamlaTid, lucka.GeKantLinje());
        }
        kortlek.TaInKort(lucka.GeKort());
        lucka.TaBortKort();
    }

    BlandaKort();
    for (int i = kForstaLekPlats; kortlek.AntalKortKvar() > 0; ++i)
        luckor[i].TaEmotKort(kortlek.GeKort());
    OmRaknaLuckaKort(vy->Bounds());
    DelaUtKort();
    ++forsok;
}

int Idioten::Undo() {
    if (undoLista.empty())
        return 0;
    auto [kalla, till] = undoLista.back();
    if (animera) {
        SattAnimering(luckor[till].GePos(), luckor[kalla].GePos(), luckor[till].GeKort().GePos());
        TTAnimeraKort(vy, kAngraTid, true);
    }
    ++antalUndo;
    Flytta(till, kalla);
    undoLista.pop_back();
    KlarSpel();
    vy->InvalidateOffscreen();
    return static_cast<int>(undoLista.size());
}

bool Idioten::Has_Undos() {
    return !undoLista.empty();
}

int Idioten::AddHiscore() {
    return ::AddHiscore(SpelNummer(), HiscoreResultat{klaraKort, forsok}, antalUndo, vy->spelarNamn,
                        startTid);
}
