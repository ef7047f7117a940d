#include "games/Blackhole.h"

#include "cards/Luckor.h"

#include <QPainter>

using namespace BlackholeRegler;

namespace {

// Flight times in microseconds.
constexpr int kGivTid = 50000;
constexpr int kAngraTid = 100000;
constexpr int kKlickTid = 200000;

} // namespace

Blackhole::Blackhole(SpelYta* view, BRect /*frame*/, bool animeraKort)
    : RegelSpel(view, animeraKort) {
    Skapa(bord);
    NyttSpel(vy->Bounds());
}

void Blackhole::RitaSpel(QPainter& p) {
    for (const Lucka& lucka : bord.luckor)
        if (!lucka.Tom())
            RitaKort(p, lucka.GeKort().GePos(), lucka.GePos());
}

void Blackhole::OmRaknaLuckaKort(BRect bounds) {
    RaknaUtLuckor(bord.luckor, bounds);
    BRect hal = bord.luckor[kForstaHal].GePos();
    KortUtSeende_B(hal.IntegerWidth(), hal.IntegerHeight());
    GeKortenFramsidor(bord.luckor);
}

void Blackhole::FlygKort(int fran, int till, int steg) {
    switch (steg) {
    case kGivSteg:
        FlygLucka(fran, till, fran > kForstaLek ? fran - 1 : -1, kGivTid, false);
        break;
    case kFlyttSteg:
        // A card leaving the first slot of a fan uncovers nothing.
        FlygLucka(fran, till, (fran - kForstaSolfjader) % kPlatserPerSolfjader == 0 ? -1 : fran - 1,
                  kKlickTid, false);
        break;
    case kAngraSteg:
        FlygLucka(fran, till, fran > kForstaHal ? fran - 1 : -1, kAngraTid, false);
        break;
    default:
        break;
    }
}

bool Blackhole::FlyttaKort(SpelYta* view, BPoint where) {
    int kalla = KortUnder(bord.luckor, where);
    if (kalla < 0)
        return false;
    // A dragged card stays where it lies until it is dropped.
    return KlickaEllerLyft(view, where, kalla, KlickDrag(bord, kalla), Flyg());
}

std::optional<Drag> Blackhole::SlappDrag(int lucka, BPoint q) const {
    return DropDrag(bord, lucka, q);
}

std::optional<Gest> Blackhole::GestFor(const Drag& drag) const {
    const std::vector<Lucka>& luckor = bord.luckor;
    if (drag.slag != DragSlag::Kort || !Fylld(luckor, drag.fran))
        return std::nullopt;
    BRect synligt = vy->Bounds();
    BRect r = luckor[drag.fran].GePos();
    BPoint p((r.left + r.right) / 2, (r.top + r.bottom) / 2);
    if (!synligt.Contains(p) || KortUnder(luckor, p) != drag.fran ||
        KlickDrag(bord, drag.fran) != drag)
        return std::nullopt;
    return KlickGest(p);
}
