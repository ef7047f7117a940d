#include "cards/KolumnSpel.h"

#include "app/FjolkView.h"
#include "cards/Hiscore.h"
#include "platform/QtGeometry.h"

#include <QPainter>

#include <algorithm>

using namespace KolumnRegler;

namespace {

constexpr int kGivTid = 50000;
constexpr int kFlygTid = 200000;
const BRect kIngen(0, 0, 0, 0);

} // namespace

KolumnSpel::KolumnSpel(FjolkView* view, bool animeraKort, const Plan& spelPlan) : plan(spelPlan) {
    vy = view;
    animera = animeraKort;
    luckor.reserve(plan.antalLuckor);
    for (int i = 0; i < plan.antalLuckor; ++i)
        luckor.emplace_back(BRect(0, 0, 0, 0), false);
}

void KolumnSpel::ForstaGiv(BRect bounds) {
    antalUndo = 0;
    BlandaKort();
    for (int i = plan.forstaLek; i < plan.forstaLek + 52; ++i)
        luckor[i].TaEmotKort(kortlek.GeKort());
    OmRaknaLuckaKort(bounds);
    DelaUtKort();
    startTid = system_time();
}

void KolumnSpel::NyttSpel(BRect bounds) {
    antalUndo = 0;
    for (Lucka& lucka : luckor)
        lucka.TaBortKort();
    undoLista.clear();
    kortlek.NyKortlek();
    BlandaKort();
    for (int i = plan.forstaLek; i < plan.forstaLek + 52; ++i)
        luckor[i].TaEmotKort(kortlek.GeKort());
    OmRaknaLuckaKort(bounds);
    DelaUtKort();
    VisaNyttSpel();
}

bool KolumnSpel::KlarSpel() {
    return Vunnet(plan, luckor);
}

void KolumnSpel::RitaSpel(QPainter& p) {
    for (int i = 0; i < plan.antalLuckor; ++i) {
        const Lucka& lucka = luckor[i];
        if (!lucka.Tom()) {
            RitaKort(p, lucka.BakSida() ? baksidaPos[0] : lucka.GeKort().GePos(), lucka.GePos());
            continue;
        }
        bool fricell = Fricell(plan, i);
        if (fricell || GrundBas(plan, i) || KolumnBas(i))
            RitaKantLinje(p, lucka.GePos());
        if (fricell) {
            p.save();
            p.setPen(Qt::black);
            p.drawText(QPointF(lucka.GePos().left + 15, lucka.GePos().top + 35),
                       QStringLiteral("Free"));
            p.restore();
        }
    }
}

void KolumnSpel::DelaUtKort() {
    RitaBordet();
    for (auto [lek, till] : GivOrdning()) {
        if (animera) {
            BRect under = lek > plan.forstaLek ? luckor[lek - 1].GePos() : kIngen;
            SattAnimering(luckor[lek].GePos(), luckor[till].GePos(), luckor[lek].GeKort().GePos(),
                          under, baksidaPos[0]);
            TTAnimeraKort(vy, kGivTid, false);
        }
        Flytta(lek, till);
    }
    RitaBordet();
}

void KolumnSpel::BlandaKort() {
    kortlek.Blanda();
}

bool KolumnSpel::LamnatKlickRutan(BPoint press, BPoint now) const {
    return now.x <= press.x - 4 || now.x > press.x + 4 || now.y <= press.y - 4 ||
           now.y > press.y + 4;
}

BRect KolumnSpel::UnderKortFor(int lucka) const {
    if (lucka <= 0 || luckor[lucka - 1].Tom())
        return kIngen;
    return luckor[lucka - 1].GeKort().GePos();
}

void KolumnSpel::FlyttaEtt(FjolkView* view, int fran, int till, bool animerad) {
    if (animerad && animera) {
        bool inget = KolumnBas(fran) || Fricell(plan, fran);
        SattAnimering(luckor[fran].GePos(), luckor[till].GePos(), luckor[fran].GeKort().GePos(),
                      inget ? kIngen : luckor[fran - 1].GePos(),
                      inget ? kIngen : UnderKortFor(fran));
        TTAnimeraKort(view, kFlygTid, false);
    }
    Flytta(fran, till);
    undoLista.emplace_back(fran, till);
}

void KolumnSpel::FlyttaRad(FjolkView* view, int forsta, int topp, RadMal mal, bool animerad) {
    int n = topp - forsta + 1;
    if (animerad && animera) {
        std::vector<int> rad;
        for (int i = forsta; i <= topp; ++i)
            rad.push_back(i);
        ByggDragBild(luckor, rad, luckor[forsta].GePos().LeftTop());
        bool inget = KolumnBas(forsta) || Fricell(plan, forsta);
        SattAnimering(luckor[forsta].GePos(), luckor[mal.start].GePos(), kIngen,
                      inget ? kIngen : luckor[forsta - 1].GePos(),
                      inget ? kIngen : UnderKortFor(forsta));
        XXAnimeraKort(view, kFlygTid, false);
        KortSpel::bmp = QImage();
    }
    for (int k = 0; k < n; ++k) {
        Flytta(forsta + k, mal.start + k);
        undoLista.emplace_back(forsta + k, mal.start + k);
    }
    undoLista.emplace_back(mal.mal, mal.mal + n);
    undoLista.emplace_back(UNDO_FLERA, n);
}

bool KolumnSpel::FlyttaKort(FjolkView* view, BPoint where) {
    int traff = Traff(luckor, where);
    if (traff < 0)
        return false;
    int topp = Toppen(luckor, traff);
    valdaLuckor.clear();
    for (int i = traff; i <= topp; ++i)
        valdaLuckor.push_back(i);

    if (VantaPaAvsikt(view, where) == Avsikt::Klick) {
        if (traff == topp) {
            int till = KlickMal(plan, luckor, luckor[traff].GeKort());
            if (till >= 0)
                FlyttaEtt(view, traff, till, true);
        } else {
            RadMal mal = KlickRadMal(plan, luckor, traff, topp);
            if (mal.mal >= 0)
                FlyttaRad(view, traff, topp, mal, true);
        }
        return false;
    }

    // Lifted: the run leaves the frame, the card beneath shows again.
    BRect ram = luckor[traff].GePos() | luckor[topp].GePos();
    view->RitaBakgrund(ram);
    if (!KolumnBas(traff) && !Fricell(plan, traff) && traff > 0 && !luckor[traff - 1].Tom()) {
        QPainter p(&view->OffBitmap());
        RitaKort(p, luckor[traff - 1].GeKort().GePos(), luckor[traff - 1].GePos());
    }
    view->VisaNu(ram);
    ByggDragBild(luckor, valdaLuckor, where);
    KortSpel::point = where - luckor[traff].GePos().LeftTop();
    return true;
}

void KolumnSpel::Drop(FjolkView* view, int /*target*/) {
    if (valdaLuckor.empty())
        return;
    BPoint q;
    uint32_t knappar = 0;
    view->GetMouse(&q, &knappar);
    int forsta = valdaLuckor.front();
    int topp = valdaLuckor.back();
    valdaLuckor.clear();
    if (forsta == topp) {
        int till = DropMal(plan, luckor, luckor[forsta].GeKort(), q);
        if (till >= 0)
            FlyttaEtt(view, forsta, till, false);
        return;
    }
    RadMal mal = DropRadMal(plan, luckor, forsta, topp, q);
    if (mal.mal >= 0)
        FlyttaRad(view, forsta, topp, mal, false);
}

void KolumnSpel::SpelKnapp(BPoint) {}

void KolumnSpel::NyttForsok() {}

int KolumnSpel::Undo() {
    if (undoLista.empty())
        return 0;
    ++antalUndo;
    auto [a, b] = undoLista.back();
    undoLista.pop_back();
    if (a == UNDO_FLERA) {
        int n = b;
        undoLista.pop_back(); // the range, (j, j + n)
        std::vector<std::pair<int, int>> par(undoLista.end() - n, undoLista.end());
        undoLista.resize(undoLista.size() - n);
        if (animera) {
            std::vector<int> rad;
            for (auto [fran, till] : par)
                rad.push_back(till);
            ByggDragBild(luckor, rad, luckor[rad.front()].GePos().LeftTop());
            SattAnimering(luckor[rad.front()].GePos(), luckor[par.front().first].GePos(), kIngen);
            XXAnimeraKort(vy, kFlygTid, false);
            KortSpel::bmp = QImage();
        }
        for (auto it = par.rbegin(); it != par.rend(); ++it)
            Flytta(it->second, it->first);
    } else {
        if (animera) {
            bool inget = KolumnBas(b) ||
                         std::find(plan.angraUtanUnder.begin(), plan.angraUtanUnder.end(), b) !=
                             plan.angraUtanUnder.end();
            SattAnimering(luckor[b].GePos(), luckor[a].GePos(), luckor[b].GeKort().GePos(),
                          inget ? kIngen : luckor[b - 1].GePos(), inget ? kIngen : UnderKortFor(b));
            TTAnimeraKort(vy, kFlygTid, false);
        }
        Flytta(b, a);
    }
    vy->InvalidateOffscreen();
    return static_cast<int>(undoLista.size());
}

bool KolumnSpel::Has_Undos() {
    return !undoLista.empty();
}

int KolumnSpel::AddHiscore() {
    return ::AddHiscore(SpelNummer(), HiscoreResultat{KortPaGrunden(plan, luckor), 1}, antalUndo,
                        vy->spelarNamn, startTid);
}
