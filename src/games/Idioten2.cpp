#include "games/Idioten2.h"

#include "cards/Luckor.h"

#include <QPainter>

using namespace Idioten2Regler;

namespace {

// Flight times in microseconds.
constexpr int kGivTid = 50000;
constexpr int kFlygTid = 200000;

BPoint Mitten(BRect r) {
    return BPoint((r.left + r.right) / 2, (r.top + r.bottom) / 2);
}

} // namespace

Idioten2::Idioten2(SpelYta* view, BRect frame, bool animeraKort) : KolumnGester(view, animeraKort) {
    Skapa(bord);
    // The first deal lays the fresh deck out as it comes, without a shuffle; New Deal
    // shuffles.
    LaggUtOblandad(bord);
    DelaUtDetLagda(frame);
}

void Idioten2::RitaSpel(QPainter& p) {
    for (const Lucka& lucka : bord.luckor)
        if (!lucka.Tom())
            RitaKort(p, lucka.BakSida() ? baksidaPos[0] : lucka.GeKort().GePos(), lucka.GePos());
}

void Idioten2::OmRaknaLuckaKort(BRect bounds) {
    Utlagg u = RaknaUtLuckor(bord.luckor, bounds);
    bord.lekKnapp = u.lekKnapp;
    KortUtSeende_B(u.w, u.h);
    GeKortenFramsidor(bord.luckor);
}

int Idioten2::UnderFor(int lucka) const {
    const std::vector<Lucka>& luckor = bord.luckor;
    if (lucka >= kForstaKasserad && lucka <= kSistaKasserad) {
        for (int i = kSistaKasserad; i >= kForstaKasserad; --i)
            if (i != lucka && !luckor[i].Tom())
                return i;
        return -1;
    }
    if (ArKolumnBas(lucka) || lucka == kForstaLek)
        return -1;
    return lucka - 1;
}

void Idioten2::FlygKort(int fran, int till, int steg) {
    FlygLucka(fran, till, UnderFor(fran), steg == kGivSteg ? kGivTid : kFlygTid, false);
}

void Idioten2::FlygRad(int, int, int, int) {}

int Idioten2::Traffen(BPoint p) const {
    return Traff(bord.luckor, p);
}

std::optional<Drag> Idioten2::KlickDragPa(int traff) const {
    return KlickDrag(bord, traff);
}

std::optional<Drag> Idioten2::DropDragVid(int forsta, int topp, BPoint q) const {
    return DropDrag(bord, forsta, topp, q);
}

int Idioten2::UnderLyft(int traff) const {
    return ArKolumnBas(traff) ? -1 : traff - 1;
}

void Idioten2::SpelKnapp(BPoint where) {
    if (!bord.lekKnapp.Contains(where) || kLeken.Tom(bord.luckor))
        return;
    Regler().GorDrag(bord, KnappDrag(), Flyg());
    vy->InvalidateOffscreen();
}

std::optional<Gest> Idioten2::GestFor(const Drag& drag) const {
    const std::vector<Lucka>& luckor = bord.luckor;
    if (drag.slag == DragSlag::Knapp) {
        BPoint p = Mitten(bord.lekKnapp);
        if (kLeken.Tom(luckor) || !vy->Bounds().Contains(p))
            return std::nullopt;
        return KlickGest(p);
    }
    if (drag.till < 0 || drag.till >= kAntalLuckor)
        return std::nullopt;
    // Released in the empty column, or over the discard pile.
    return GestVia(drag,
                   {Mitten(luckor[drag.till].GePos()), Mitten(luckor[kForstaKasserad].GePos())});
}
