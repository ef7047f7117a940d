#include "games/Godnattvalsen.h"

#include "cards/Luckor.h"
#include "games/GestSok.h"

#include <QPainter>

using namespace GodnattvalsenRegler;

namespace {

// Flight times in microseconds.
constexpr int kKortTid = 50000;
constexpr int kKlickTid = 200000;

} // namespace

Godnattvalsen::Godnattvalsen(SpelYta* view, BRect /*frame*/, bool animeraKort)
    : LyftSpel(view, animeraKort) {
    Skapa(bord);
    NyttSpel(vy->Bounds());
}

void Godnattvalsen::RitaSpel(QPainter& p) {
    for (const Lucka& lucka : bord.luckor)
        if (!lucka.Tom())
            RitaKort(p, lucka.BakSida() ? baksidaPos[0] : lucka.GeKort().GePos(), lucka.GePos());
}

void Godnattvalsen::OmRaknaLuckaKort(BRect bounds) {
    Utlagg u = RaknaUtLuckor(bord.luckor, bounds);
    bord.lekRuta = u.lekRuta;
    bord.lekKlickRuta = u.lekRuta;
    KortUtSeende_B(u.w, u.h);
    GeKortenFramsidor(bord.luckor);
}

void Godnattvalsen::FlygKort(int fran, int till, int steg) {
    // What shows where the card lay: the card below it, or the stock's next face down.
    bool bas = fran == kForstaLek || (fran < kForstaLek && (fran == GrundBas(fran / kPerKolumn) ||
                                                            fran == HogBas(fran / kPerKolumn)));
    FlygLucka(fran, till, bas ? -1 : fran - 1, steg == kFlyttSteg ? kKlickTid : kKortTid, false);
}

void Godnattvalsen::SpelKnapp(BPoint where) {
    if (!LekKlick(bord, where))
        return;
    Gor(KnappDrag(), true);
    vy->InvalidateOffscreen();
}

int Godnattvalsen::Traffad(BPoint p) const {
    return Traff(bord.luckor, p);
}
int Godnattvalsen::ToppAv(int lucka) const {
    return ToppFor(bord.luckor, lucka);
}
int Godnattvalsen::KlickMalFor(int lucka) const {
    return KlickMal(bord.luckor, bord.luckor[lucka].GeKort());
}
int Godnattvalsen::DropMalFor(int lucka, BPoint q) const {
    return DropMal(bord.luckor, bord.luckor[lucka].GeKort(), q);
}

std::optional<Gest> Godnattvalsen::GestFor(const Drag& drag) const {
    auto klick = [this](BPoint p) { return KlickDrag(bord, p); };
    auto slappa = [this](BPoint p, BPoint q) { return DropDrag(bord, p, q); };
    BRect synligt = vy->Bounds();
    if (drag.slag == DragSlag::Knapp)
        return SokGest(drag, synligt, Siktpunkter(bord.lekKlickRuta), {}, klick, slappa);
    if (drag.slag != DragSlag::Kort || !Fylld(bord.luckor, drag.fran) || drag.till < 1)
        return std::nullopt;
    // Released over the foundation top the card goes onto.
    return SokGest(drag, synligt, Siktpunkter(bord.luckor[drag.fran].GePos()),
                   Siktpunkter(bord.luckor[drag.till - 1].GePos()), klick, slappa);
}
