#include "games/KolumnSpel.h"

#include "cards/Hiscore.h"
#include "cards/Luckor.h"
#include "platform/QtGeometry.h"

#include <QPainter>

#include <algorithm>

using namespace KolumnRegler;

namespace {

constexpr int kGivTid = 50000;
constexpr int kFlygTid = 200000;
const BRect kIngen(0, 0, 0, 0);

BPoint Mitten(BRect r) {
    return BPoint((r.left + r.right) / 2, (r.top + r.bottom) / 2);
}

} // namespace

KolumnSpel::KolumnSpel(SpelYta* view, bool animeraKort, const SpelRegler& spelRegler)
    : regler(spelRegler) {
    vy = view;
    animera = animeraKort;
    auto tomt = regler.NyttBord();
    bord = static_cast<const Stallning&>(*tomt);
}

void KolumnSpel::ForstaGiv(BRect bounds) {
    LaggUtLeken(bord);
    OmRaknaLuckaKort(bounds);
    DelaUtKort();
    startTid = system_time();
}

void KolumnSpel::NyttSpel(BRect bounds) {
    LaggUtLeken(bord);
    OmRaknaLuckaKort(bounds);
    DelaUtKort();
    VisaNyttSpel();
}

bool KolumnSpel::KlarSpel() {
    return KolumnRegler::KlarSpel(bord);
}

void KolumnSpel::RitaSpel(QPainter& p) {
    const Plan& plan = *bord.plan;
    for (int i = 0; i < plan.antalLuckor; ++i) {
        const Lucka& lucka = bord.luckor[i];
        if (!lucka.Tom()) {
            RitaKort(p, lucka.BakSida() ? baksidaPos[0] : lucka.GeKort().GePos(), lucka.GePos());
            continue;
        }
        bool fricell = Fricell(plan, i);
        if (fricell || GrundBas(plan, i) || KolumnBas(i))
            RitaKantLinje(p, lucka.GePos());
        if (fricell)
            RitaText(p, BPoint(lucka.GePos().left + 15, lucka.GePos().top + 35), "Free");
    }
}

void KolumnSpel::DelaUtKort() {
    RitaBordet();
    DelaUt(bord, animera ? this : nullptr);
    RitaBordet();
}

void KolumnSpel::BlandaKort() {
    bord.kortlek.Blanda();
}

bool KolumnSpel::LamnatKlickRutan(BPoint press, BPoint now) const {
    return now.x <= press.x - 4 || now.x > press.x + 4 || now.y <= press.y - 4 ||
           now.y > press.y + 4;
}

int KolumnSpel::UnderFor(int lucka, bool angra) const {
    const Plan& plan = *bord.plan;
    bool inget = KolumnBas(lucka) ||
                 (angra ? std::find(plan.angraUtanUnder.begin(), plan.angraUtanUnder.end(),
                                    lucka) != plan.angraUtanUnder.end()
                        : Fricell(plan, lucka));
    return inget || lucka <= 0 ? -1 : lucka - 1;
}

void KolumnSpel::FlygKort(int fran, int till, int steg) {
    switch (steg) {
    case kGivSteg:
        // The next card of the deck shows, face down, where this one lay.
        FlygLucka(fran, till, fran > bord.plan->forstaLek ? fran - 1 : -1, kGivTid, false, true);
        break;
    case kFlyttSteg:
        FlygLucka(fran, till, UnderFor(fran, false), kFlygTid, false);
        break;
    case kAngraSteg:
        FlygLucka(fran, till, UnderFor(fran, true), kFlygTid, false);
        break;
    default:
        break;
    }
}

void KolumnSpel::FlygRad(int forsta, int antal, int till, int steg) {
    std::vector<int> rad;
    for (int i = forsta; i < forsta + antal; ++i)
        rad.push_back(i);
    ByggDragBild(bord.luckor, rad, bord.luckor[forsta].GePos().LeftTop());
    if (steg == kAngraSteg) {
        SattAnimering(bord.luckor[forsta].GePos(), bord.luckor[till].GePos(), kIngen);
    } else {
        int under = UnderFor(forsta, false);
        SattAnimering(bord.luckor[forsta].GePos(), bord.luckor[till].GePos(), kIngen,
                      under < 0 ? kIngen : bord.luckor[under].GePos(),
                      under < 0 || bord.luckor[under].Tom() ? kIngen
                                                            : bord.luckor[under].GeKort().GePos());
    }
    XXAnimeraKort(vy, kFlygTid, false);
    KortSpel::bmp = QImage();
}

bool KolumnSpel::FlyttaKort(SpelYta* view, BPoint where) {
    std::vector<Lucka>& luckor = bord.luckor;
    int traff = Traff(luckor, where);
    if (traff < 0)
        return false;
    int topp = Toppen(luckor, traff);
    valdaLuckor.clear();
    for (int i = traff; i <= topp; ++i)
        valdaLuckor.push_back(i);

    if (VantaPaAvsikt(view, where) == Avsikt::Klick) {
        if (std::optional<Drag> drag = KlickDrag(bord, traff))
            GorDrag(bord, *drag, animera ? this : nullptr);
        return false;
    }

    // Lifted: the run leaves the frame, the card beneath shows again.
    const Plan& plan = *bord.plan;
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

void KolumnSpel::Drop(SpelYta* view, int /*target*/) {
    if (valdaLuckor.empty())
        return;
    BPoint q;
    uint32_t knappar = 0;
    view->GetMouse(&q, &knappar);
    int forsta = valdaLuckor.front();
    int topp = valdaLuckor.back();
    valdaLuckor.clear();
    if (std::optional<Drag> drag = DropDrag(bord, forsta, topp, q))
        GorDrag(bord, *drag, nullptr);
}

void KolumnSpel::SpelKnapp(BPoint) {}

void KolumnSpel::NyttForsok() {}

int KolumnSpel::Undo() {
    if (bord.undoLista.empty())
        return 0;
    int kvar = Angra(bord, animera ? this : nullptr);
    vy->InvalidateOffscreen();
    return kvar;
}

bool KolumnSpel::Has_Undos() {
    return !bord.undoLista.empty();
}

int KolumnSpel::AddHiscore() {
    return ::AddHiscore(SpelNummer(), Resultat(bord), bord.antalUndo, vy->SpelarNamn(), startTid);
}

std::optional<BPoint> KolumnSpel::GreppFor(int lucka) const {
    BRect r = bord.luckor[lucka].GePos();
    BRect synligt = vy->Bounds();
    for (BPoint p : {BPoint((r.left + r.right) / 2, r.top + 10), Mitten(r),
                     BPoint((r.left + r.right) / 2, r.bottom - 5)})
        if (synligt.Contains(p) && Traff(bord.luckor, p) == lucka)
            return p;
    return std::nullopt;
}

std::optional<Gest> KolumnSpel::GestFor(const Drag& drag) const {
    if ((drag.slag != DragSlag::Kort && drag.slag != DragSlag::Rad) ||
        !Fylld(bord.luckor, drag.fran))
        return std::nullopt;
    int topp = Toppen(bord.luckor, drag.fran);
    if (topp - drag.fran + 1 != drag.antal)
        return std::nullopt;
    std::optional<BPoint> grepp = GreppFor(drag.fran);
    if (!grepp)
        return std::nullopt;
    if (KlickDrag(bord, drag.fran) == drag)
        return KlickGest(*grepp);
    // Released over the place itself, over the card it lands on, or below either.
    BRect synligt = vy->Bounds();
    std::vector<BPoint> slapp;
    for (int mal : {drag.till, drag.till - 1, drag.andra}) {
        if (mal < 0 || mal >= static_cast<int>(bord.luckor.size()))
            continue;
        BRect r = bord.luckor[mal].GePos();
        float x = (r.left + r.right) / 2;
        for (float y : {(r.top + r.bottom) / 2, r.bottom + 50, r.bottom + 95, r.top + 5})
            slapp.emplace_back(x, y);
    }
    for (BPoint q : slapp)
        if (synligt.Contains(q) && DropDrag(bord, drag.fran, topp, q) == drag)
            return DragGest(*grepp, q);
    return std::nullopt;
}
