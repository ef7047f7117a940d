#include "games/Tower.h"

#include "cards/Luckor.h"
#include "games/GestSok.h"

#include <QPainter>

using namespace TowerRegler;

namespace {

// Flight times in microseconds.
constexpr int kKortTid = 50000;
constexpr int kKlickTid = 200000;

} // namespace

Tower::Tower(SpelYta* view, BRect /*frame*/, bool animeraKort) : LyftSpel(view, animeraKort) {
    Skapa(bord);
    NyttSpel(vy->Bounds());
}

void Tower::RitaSpel(QPainter& p) {
    for (int i = 0; i < kRitadePlatser; ++i) {
        const Lucka* lucka = RitadPlats(bord.luckor, i);
        if (lucka != nullptr && !lucka->Tom())
            RitaKort(p, lucka->BakSida() ? baksidaPos[0] : lucka->GeKort().GePos(), lucka->GePos());
    }
}

void Tower::OmRaknaLuckaKort(BRect bounds) {
    Utlagg u = RaknaUtLuckor(bord.luckor, bounds);
    KortUtSeende_B(u.w, u.h);
    GeKortenFramsidor(bord.luckor);
}

void Tower::FlygKort(int fran, int till, int steg) {
    // A card leaving a base uncovers nothing; the stock shows its next card face down.
    int under = TornBas(fran) || fran == kForstaLek ? -1 : fran - 1;
    FlygLucka(fran, till, under, steg == kFlyttSteg ? kKlickTid : kKortTid, false);
}

int Tower::Traffad(BPoint p) const {
    return Traff(bord.luckor, p);
}
int Tower::ToppAv(int lucka) const {
    return ToppFor(bord.luckor, lucka);
}
int Tower::KlickMalFor(int lucka) const {
    return KlickMal(bord.luckor, lucka);
}
int Tower::DropMalFor(int lucka, BPoint q) const {
    return DropMal(bord.luckor, bord.luckor[lucka].GeKort(), q);
}

std::optional<Gest> Tower::GestFor(const Drag& drag) const {
    const std::vector<Lucka>& luckor = bord.luckor;
    if (drag.slag != DragSlag::Kort || !Fylld(luckor, drag.fran) || drag.till < 0 ||
        drag.till >= kAntalLuckor)
        return std::nullopt;
    // Released over the card it goes onto, or over the empty base it fills.
    std::vector<BPoint> slapp = Siktpunkter(luckor[drag.till].GePos());
    if (drag.till > 0)
        for (BPoint q : Siktpunkter(luckor[drag.till - 1].GePos()))
            slapp.push_back(q);
    return SokGest(
        drag, vy->Bounds(), Siktpunkter(luckor[drag.fran].GePos()), slapp,
        [this](BPoint p) { return KlickDrag(bord, p); },
        [this](BPoint p, BPoint q) { return DropDrag(bord, p, q); });
}
