#include "games/KolumnSpel.h"

#include "cards/Luckor.h"
#include "platform/QtGeometry.h"

#include <QPainter>

#include <algorithm>

using namespace KolumnRegler;

namespace {

constexpr int kGivTid = 50000;
constexpr int kFlygTid = 200000;
const BRect kIngen(0, 0, 0, 0);

} // namespace

KolumnSpel::KolumnSpel(SpelYta* view, bool animeraKort, const SpelRegler& spelRegler)
    : KolumnGester(view, animeraKort), regler(spelRegler) {
    auto tomt = regler.NyttBord();
    bord = static_cast<const Stallning&>(*tomt);
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
        if (fricell || GrundBas(plan, i) || KolumnBas(plan, i))
            RitaKantLinje(p, lucka.GePos());
        if (fricell)
            RitaText(p, BPoint(lucka.GePos().left + 15, lucka.GePos().top + 35), "Free");
    }
}

int KolumnSpel::UnderFor(int lucka, bool angra) const {
    const Plan& plan = *bord.plan;
    bool inget = HogBas(plan, lucka) ||
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

int KolumnSpel::Traffen(BPoint p) const {
    return Traff(*bord.plan, bord.luckor, p);
}

std::optional<Drag> KolumnSpel::KlickDragPa(int traff) const {
    return KlickDrag(bord, traff);
}

std::optional<Drag> KolumnSpel::DropDragVid(int forsta, int topp, BPoint q) const {
    return DropDrag(bord, forsta, topp, q);
}

int KolumnSpel::UnderLyft(int traff) const {
    const Plan& plan = *bord.plan;
    return HogBas(plan, traff) || Fricell(plan, traff) || traff <= 0 ? -1 : traff - 1;
}

std::optional<Gest> KolumnSpel::GestFor(const Drag& drag) const {
    // Released over the place itself, over the card it lands on, or below either.
    std::vector<BPoint> slapp;
    for (int mal : {drag.till, drag.till - 1, drag.andra}) {
        if (mal < 0 || mal >= static_cast<int>(bord.luckor.size()))
            continue;
        BRect r = bord.luckor[mal].GePos();
        float x = (r.left + r.right) / 2;
        for (float y : {(r.top + r.bottom) / 2, r.bottom + 50, r.bottom + 95, r.top + 5})
            slapp.emplace_back(x, y);
    }
    return GestVia(drag, slapp);
}
