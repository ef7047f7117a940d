#include "games/Pyramiden.h"

#include "cards/Luckor.h"

#include <QPainter>

using namespace PyramidenRegler;

namespace {

// Flight times in microseconds.
constexpr int kLekTid = 50000;
constexpr int kKastTid = 100000;

constexpr rgb_color kMarkFarg{180, 80, 180, 255};
constexpr rgb_color kMarkText{0, 255, 255, 255};

// Where a player aims on a card: its middle, or its bottom or top edge where the middle is
// taken by something else.
std::vector<BPoint> Sikten(BRect r) {
    float x = (r.left + r.right) / 2;
    return {BPoint(x, (r.top + r.bottom) / 2), BPoint(x, r.bottom - 5), BPoint(x, r.top + 5),
            BPoint(r.left + 5, r.top + 5), BPoint(r.right - 5, r.top + 5)};
}

} // namespace

Pyramiden::Pyramiden(SpelYta* view, BRect /*frame*/, bool animeraKort)
    : RegelSpel(view, animeraKort) {
    Skapa(bord);
    NyttSpel(vy->Bounds());
}

void Pyramiden::LaggUtOchDela(BRect bounds) {
    lyft = -1;
    RegelSpel::LaggUtOchDela(bounds);
}

void Pyramiden::RitaSpel(QPainter& p) {
    const std::vector<Lucka>& luckor = bord.luckor;
    if (luckor[kForstaLek].Tom() && bord.giv == 1) {
        // Where the stock was, while it may still be turned over.
        BRect lek = luckor[kForstaLek].GePos();
        RitaRundRuta(p, lek, 15.0f, kMarkFarg);
        RitaText(p, BPoint(lek.left, lek.top + 25), " Last", kMarkText);
        RitaText(p, BPoint(lek.left, lek.top + 50), "Round", kMarkText);
    }
    // In slot order: each row over the one above, the stock's top over the cards beneath.
    for (int i = 0; i < kAntalLuckor; ++i)
        if (!luckor[i].Tom() && i != lyft)
            RitaKort(p, luckor[i].BakSida() ? baksidaPos[0] : luckor[i].GeKort().GePos(),
                     luckor[i].GePos());
}

void Pyramiden::OmRaknaLuckaKort(BRect bounds) {
    Utlagg utlagg = RaknaUtLuckor(bord.luckor, bounds);
    bord.lekRuta = utlagg.lekRuta;
    bord.lekKlickRuta = utlagg.lekRuta;
    BRect topp = bord.luckor[0].GePos();
    KortUtSeende_B(topp.IntegerWidth(), topp.IntegerHeight());
    GeKortenFramsidor(bord.luckor);
}

void Pyramiden::FlygKort(int fran, int till, int steg) {
    const std::vector<Lucka>& luckor = bord.luckor;
    switch (steg) {
    case kGivSteg:
    case kVandSteg:
        // The stock's next card shows, face down, where this one lay.
        FlygLucka(fran, till, fran > kForstaLek ? fran - 1 : -1, kLekTid, false);
        break;
    case kOmgivSteg:
        FlygLucka(fran, till, fran > kForstaHog ? fran - 1 : -1, kLekTid, false);
        break;
    case kKastSteg:
        vy->InvalidateOffscreen();
        SattAnimering(luckor[fran].GePos(), luckor[till].GePos(), luckor[fran].GeKort().GePos());
        UUAnimeraKort(vy, kKastTid, false);
        break;
    case kAngraSteg: {
        int under = -1;
        if (fran > kForstaHog && fran <= kSistaHog) {
            under = fran - 1;
        } else if (fran >= kForstaKast && fran <= kSistaKast) {
            // The discard pile shows its highest card, face down.
            for (int k = kSistaKast; k >= kForstaKast && under < 0; --k)
                if (k != fran && !luckor[k].Tom())
                    under = k;
        }
        FlygLucka(fran, till, under, kLekTid, false);
        break;
    }
    default:
        break;
    }
}

bool Pyramiden::FlyttaKort(SpelYta* view, BPoint where) {
    int kalla = KortUnder(bord.luckor, where);
    if (kalla < 0 || !KlickaEllerLyft(view, where, kalla, KlickDrag(bord, kalla), Flyg()))
        return false;
    // The card is gone from the table while it is carried.
    lyft = kalla;
    view->InvalidateOffscreen();
    return true;
}

void Pyramiden::Drop(SpelYta* view, int target) {
    lyft = -1;
    RegelSpel::Drop(view, target);
}

std::optional<Drag> Pyramiden::SlappDrag(int lucka, BPoint q) const {
    if (lucka > kSistaHog)
        return std::nullopt;
    return DropDrag(bord, lucka, q);
}

void Pyramiden::SpelKnapp(BPoint where) {
    if (!bord.lekKlickRuta.Contains(where) || !LekenSvarar(bord))
        return;
    GorDrag(bord, KnappDrag(), Flyg());
    vy->InvalidateOffscreen();
}

std::optional<BPoint> Pyramiden::GreppFor(int i) const {
    BRect synligt = vy->Bounds();
    for (BPoint p : Sikten(bord.luckor[i].GePos()))
        if (synligt.Contains(p) && KortUnder(bord.luckor, p) == i && !bord.lekKlickRuta.Contains(p))
            return p;
    return std::nullopt;
}

std::optional<BPoint> Pyramiden::SlappFor(const Stallning& tabell, int i, const Drag& drag,
                                          int mal) const {
    BRect synligt = vy->Bounds();
    // A king goes wherever it is released: over its own place will do.
    BRect ruta = tabell.luckor[mal < 0 ? i : mal].GePos();
    for (BPoint q : Sikten(ruta))
        if (synligt.Contains(q) && DropDrag(tabell, i, q) == drag)
            return q;
    return std::nullopt;
}

std::optional<Gest> Pyramiden::GestFor(const Drag& drag) const {
    const std::vector<Lucka>& luckor = bord.luckor;
    BRect synligt = vy->Bounds();
    if (drag.slag == DragSlag::Knapp && drag.fran < 0) {
        if (!LekenSvarar(bord))
            return std::nullopt;
        BRect lek = bord.lekKlickRuta;
        for (BPoint p : Sikten(lek & luckor[kForstaLek].GePos()))
            if (synligt.Contains(p) && lek.Contains(p) && KortUnder(luckor, p) < 0)
                return KlickGest(p);
        return std::nullopt;
    }
    if (drag.fran < 0 || !Fylld(luckor, drag.fran))
        return std::nullopt;

    if (drag.slag == DragSlag::Knapp) {
        // A press on a card that lies over the stock's clickable area.
        std::optional<BPoint> p = PunktPaKortOchLek(bord, drag.fran);
        if (!p || !synligt.Contains(*p) || !LekenSvarar(bord))
            return std::nullopt;
        if (drag.antal == 1) {
            std::optional<Drag> klick = KlickDrag(bord, drag.fran);
            if (klick && LekOchKort(drag.fran, klick->slag == DragSlag::Par ? klick->andra : -1,
                                    false) == drag)
                return KlickGest(*p);
            return std::nullopt;
        }
        Stallning efter = bord;
        PyramidenRegler::GorDrag(efter, KnappDrag(), nullptr);
        Drag slapp = drag.andra < 0 ? KortDrag(drag.fran, KastPlats(luckor[drag.fran].GeKort()))
                                    : ParDrag(drag.fran, drag.andra);
        if (std::optional<BPoint> q = SlappFor(efter, drag.fran, slapp, drag.andra))
            return DragGest(*p, *q);
        return std::nullopt;
    }

    std::optional<BPoint> p = GreppFor(drag.fran);
    if (!p)
        return std::nullopt;
    if (KlickDrag(bord, drag.fran) == drag)
        return KlickGest(*p);
    if (std::optional<BPoint> q =
            SlappFor(bord, drag.fran, drag, drag.slag == DragSlag::Par ? drag.andra : -1))
        return DragGest(*p, *q);
    return std::nullopt;
}
