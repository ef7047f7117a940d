#include "games/Strategy.h"

#include "cards/Luckor.h"
#include "games/GestSok.h"

#include <QPainter>

using namespace StrategyRegler;

namespace {

// Flight time in microseconds.
constexpr int kFlygTid = 200000;

} // namespace

Strategy::Strategy(SpelYta* view, BRect /*frame*/, bool animeraKort)
    : RegelSpel(view, animeraKort) {
    Skapa(bord);
    NyttSpel(vy->Bounds());
}

void Strategy::RitaSpel(QPainter& p) {
    for (int i = 0; i < kAntalLuckor; ++i) {
        const Lucka& lucka = bord.luckor[i];
        if (!lucka.Tom())
            RitaKort(p, lucka.GeKort().GePos(), lucka.GePos());
        else if (Bas(i))
            RitaKantLinje(p, lucka.GePos());
    }
}

void Strategy::OmRaknaLuckaKort(BRect bounds) {
    KolumnRegler::Rutnat r = RaknaUtLuckor(bord.luckor, bounds);
    KortUtSeende_B(r.w, r.h);
    GeKortenFramsidor(bord.luckor);
}

int Strategy::UnderFor(int lucka) {
    return lucka == kForstaLek || Bas(lucka) ? -1 : lucka - 1;
}

void Strategy::FlygKort(int fran, int till, int /*steg*/) {
    FlygLucka(fran, till, UnderFor(fran), kFlygTid, false);
}

bool Strategy::FlyttaKort(SpelYta* view, BPoint where) {
    std::vector<Lucka>& luckor = bord.luckor;
    valdaLuckor.clear();
    if (Traff(luckor, where) < 0)
        return false;
    if (VantaPaAvsikt(view, where) == Avsikt::Klick) {
        if (std::optional<Drag> drag = KlickDrag(bord, where))
            Gor(*drag, true);
        return false;
    }
    int fran = LyftVid(luckor, where);
    if (fran < 0)
        return false;
    // Lifted: the card leaves the frame, the one beneath it shows again.
    BRect ram = luckor[fran].GePos();
    view->RitaBakgrund(ram);
    if (int under = UnderFor(fran); under >= 0 && !luckor[under].Tom()) {
        QPainter p(&view->OffBitmap());
        RitaKort(p, luckor[under].GeKort().GePos(), luckor[under].GePos());
    }
    view->VisaNu(ram);
    valdaLuckor = {fran};
    ByggDragBild(luckor, valdaLuckor, where);
    return true;
}

int Strategy::DropMalFor(int lucka, BPoint q) const {
    return DropMal(bord.luckor, bord.luckor[lucka].GeKort(), q);
}

std::optional<Gest> Strategy::GestFor(const Drag& drag) const {
    const std::vector<Lucka>& luckor = bord.luckor;
    if (drag.slag != DragSlag::Kort || !Fylld(luckor, drag.fran) || drag.till < 0 ||
        drag.till >= kForstaLek)
        return std::nullopt;
    // Pressed on the card, or (for the stock's card) anywhere on the pile it goes to.
    std::vector<BPoint> grepp = Siktpunkter(luckor[drag.fran].GePos());
    for (BPoint p : Siktpunkter(luckor[drag.till - drag.till % kPerHog].GePos()))
        grepp.push_back(p);
    std::vector<BPoint> slapp = Siktpunkter(luckor[drag.till].GePos());
    BRect under = luckor[drag.till].GePos();
    slapp.emplace_back((under.left + under.right) / 2, under.bottom + 50);
    return SokGest(
        drag, vy->Bounds(), grepp, slapp, [this](BPoint p) { return KlickDrag(bord, p); },
        [this](BPoint p, BPoint q) { return DropDrag(bord, p, q); });
}
