#include "app/Tangentbord.h"

#include "app/FjolkView.h"
#include "app/TillgangligtBord.h"
#include "cards/Hogar.h"
#include "cards/Luckor.h"

#include <QKeyEvent>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

BPoint Mitten(BRect r) {
    return BPoint((r.left + r.right) / 2, (r.top + r.bottom) / 2);
}

// Where a press reaches the card of slot `i` itself: a point of its face that no card drawn
// after it covers, in its middle, its top band or near its bottom.
std::optional<BPoint> SynligPunkt(const std::vector<Lucka>& luckor, int i, BRect synligt) {
    BRect r = luckor[i].GePos();
    float x = (r.left + r.right) / 2;
    const BPoint kandidater[] = {Mitten(r),
                                 BPoint(x, r.top + 10),
                                 BPoint(x, r.top + 4),
                                 BPoint(x, r.bottom - 5),
                                 BPoint(r.left + 5, r.top + 10),
                                 BPoint(r.right - 5, r.top + 10)};
    for (BPoint p : kandidater) {
        if (!synligt.Contains(p) || !r.Contains(p))
            continue;
        bool tackt = false;
        for (int j = i + 1; j < static_cast<int>(luckor.size()) && !tackt; ++j)
            tackt = Fylld(luckor, j) && luckor[j].GePos().Contains(p);
        if (!tackt)
            return p;
    }
    return std::nullopt;
}

bool KnappDragFinns(const Patiens& spel) {
    for (const Drag& d : spel.Regler().LagligaDrag(spel.Tabell()))
        if (d.slag == DragSlag::Knapp || d.slag == DragSlag::NyttForsok)
            return true;
    return false;
}

std::optional<BordsPlats> PlatsFor(const Patiens& spel, const std::vector<Hog>& hogar, int index,
                                   BRect synligt, bool knappDrag) {
    const Hog& hog = hogar[index];
    const std::vector<Lucka>& luckor = spel.Luckor();
    if (hog.slag == HogSlag::Kast || hog.forsta < 0 || hog.sista >= static_cast<int>(luckor.size()))
        return std::nullopt;
    BordsPlats plats;
    plats.hog = index;
    plats.namn = BeskrivHog(hog, luckor);
    int topp = -1;
    for (int i = hog.sista; i >= hog.forsta && topp < 0; --i)
        if (Fylld(luckor, i))
            topp = i;
    if (topp < 0) {
        // An empty pile is a place to put cards on, the stock one to press while pressing it
        // still does something.
        if (hog.slag == HogSlag::Pyramid || hog.slag == HogSlag::Avfall ||
            (hog.slag == HogSlag::Lek && !knappDrag))
            return std::nullopt;
        BRect bas = luckor[hog.forsta].GePos();
        if (bas.Width() <= 0 || !synligt.Contains(Mitten(bas)))
            return std::nullopt;
        plats.ram = bas;
        plats.mal = bas;
        plats.klick = Mitten(bas);
        if (hog.slag == HogSlag::Lek)
            if (std::optional<Gest> knapp = spel.GestFor(KnappDrag()); knapp && knapp->klick)
                plats.klick = knapp->fran;
        return plats;
    }
    // A pile running past the view's edge is pressed where its cards show, as the mouse can
    // press it: from the face-up card nearest its top that shows.
    int synlig = topp;
    std::optional<BPoint> klick = SynligPunkt(luckor, synlig, synligt);
    while (!klick && synlig > hog.forsta && Fylld(luckor, synlig - 1) &&
           !luckor[synlig - 1].BakSida())
        klick = SynligPunkt(luckor, --synlig, synligt);
    if (!klick)
        return std::nullopt;
    plats.ram = luckor[synlig].GePos();
    plats.mal = plats.ram;
    plats.klick = *klick;
    // A pyramid card is taken only once no card of the pyramid lies over it.
    if (hog.slag == HogSlag::Pyramid)
        for (int j = topp + 1; j < static_cast<int>(luckor.size()) && plats.iFokus; ++j) {
            const Hog* over = HogMed(hogar, j);
            plats.iFokus = !(over != nullptr && over->slag == HogSlag::Pyramid &&
                             Fylld(luckor, j) && (luckor[j].GePos() & plats.ram).IsValid());
        }
    // The stock is pressed where the game takes a press on it.
    if (hog.slag == HogSlag::Lek)
        if (std::optional<Gest> knapp = spel.GestFor(KnappDrag()); knapp && knapp->klick)
            plats.klick = knapp->fran;
    for (int i = synlig; i >= hog.forsta && Fylld(luckor, i); --i) {
        if (i != synlig && luckor[i].BakSida())
            break;
        std::optional<BPoint> p = SynligPunkt(luckor, i, synligt);
        if (!p)
            break;
        plats.luckor.push_back(i);
        plats.rutor.push_back(luckor[i].GePos());
        plats.grepp.push_back(*p);
    }
    return plats;
}

} // namespace

std::vector<BordsPlats> PlatserPa(const Patiens& spel, BRect synligt) {
    std::vector<Hog> hogar = spel.Regler().Hogar(spel.Tabell());
    bool tomLek = false;
    for (const Hog& h : hogar)
        tomLek = tomLek ||
                 (h.slag == HogSlag::Lek && AntalFyllda(spel.Luckor(), h.forsta, h.sista) == 0);
    bool knappDrag = tomLek && KnappDragFinns(spel);
    // Each place with the rectangle it is read at: its pile's base, which stays where it is
    // as the pile grows.
    std::vector<std::pair<BRect, BordsPlats>> lasta;
    for (int i = 0; i < static_cast<int>(hogar.size()); ++i)
        if (std::optional<BordsPlats> p = PlatsFor(spel, hogar, i, synligt, knappDrag))
            lasta.emplace_back(spel.Luckor()[hogar[i].forsta].GePos(), std::move(*p));
    std::vector<Patiens::KnappPlats> knappar = spel.Knappar();
    for (int k = 0; k < static_cast<int>(knappar.size()); ++k) {
        BordsPlats plats;
        plats.knapp = k;
        plats.ram = knappar[k].ruta;
        plats.mal = plats.ram;
        plats.klick = Mitten(plats.ram);
        plats.namn = knappar[k].namn;
        if (synligt.Contains(plats.klick))
            lasta.emplace_back(plats.ram, std::move(plats));
    }
    // Row by row: a place starts a new row when its top lies below the middle of the row's
    // first place.
    std::stable_sort(lasta.begin(), lasta.end(),
                     [](const auto& a, const auto& b) { return a.first.top < b.first.top; });
    std::vector<std::vector<std::pair<BRect, BordsPlats>>> rader;
    for (auto& p : lasta) {
        if (rader.empty() || p.first.top > Mitten(rader.back().front().first).y)
            rader.emplace_back();
        rader.back().push_back(std::move(p));
    }
    std::vector<BordsPlats> platser;
    int radNr = 0;
    for (auto& rad : rader) {
        std::stable_sort(rad.begin(), rad.end(),
                         [](const auto& a, const auto& b) { return a.first.left < b.first.left; });
        for (auto& p : rad) {
            p.second.rad = radNr;
            platser.push_back(std::move(p.second));
        }
        ++radNr;
    }
    return platser;
}

std::optional<std::pair<int, int>> GreppVid(const std::vector<BordsPlats>& platser, BPoint p) {
    std::optional<std::pair<int, int>> grepp;
    int overst = -1;
    for (int k = 0; k < static_cast<int>(platser.size()); ++k)
        for (int g = 0; g < static_cast<int>(platser[k].luckor.size()); ++g)
            if (platser[k].rutor[g].Contains(p) && platser[k].luckor[g] > overst) {
                // The card drawn last under the point is the one pressed.
                overst = platser[k].luckor[g];
                grepp = {k, g};
            }
    for (int k = 0; k < static_cast<int>(platser.size()) && !grepp; ++k)
        if (platser[k].ram.Contains(p))
            grepp = {k, 0};
    return grepp;
}

int MalVid(const std::vector<BordsPlats>& platser, BPoint q) {
    float narmast = std::numeric_limits<float>::max();
    int narmastTopp = -1;
    int mal = -1;
    for (int k = 0; k < static_cast<int>(platser.size()); ++k) {
        const BRect& m = platser[k].mal;
        float dx = std::max({m.left - q.x, 0.0f, q.x - m.right});
        float dy = std::max({m.top - q.y, 0.0f, q.y - m.bottom});
        float avstand = std::hypot(dx, dy);
        int topp = platser[k].luckor.empty() ? -1 : platser[k].luckor.front();
        if (avstand < narmast || (avstand == narmast && topp > narmastTopp)) {
            narmast = avstand;
            narmastTopp = topp;
            mal = k;
        }
    }
    return mal;
}

std::optional<TangentPlan> PlanFor(const std::vector<BordsPlats>& platser, const Gest& gest) {
    TangentPlan plan;
    plan.klick = gest.klick;
    for (int k = 0; k < static_cast<int>(platser.size()) && gest.klick; ++k)
        if (platser[k].klick == gest.fran) {
            plan.kalla = k;
            return plan;
        }
    std::optional<std::pair<int, int>> grepp = GreppVid(platser, gest.fran);
    if (!grepp)
        return std::nullopt;
    plan.kalla = grepp->first;
    plan.grepp = grepp->second;
    if (gest.klick)
        return plan;
    plan.mal = MalVid(platser, gest.till);
    if (plan.mal < 0)
        return std::nullopt;
    return plan;
}

Tangentbord::Tangentbord(FjolkView& view) : vy(view) {}

const BordsPlats* Tangentbord::FokusPlats() const {
    if (fokus < 0 || fokus >= static_cast<int>(platser.size()))
        return nullptr;
    return &platser[fokus];
}

void Tangentbord::Folj() {
    std::optional<BordsPlats> forra;
    if (const BordsPlats* p = FokusPlats())
        forra = *p;
    const Patiens* spel = vy.Spel();
    platser = spel != nullptr ? PlatserPa(*spel, vy.Bounds()) : std::vector<BordsPlats>{};
    fokus = NastaIFokus(0, 1);
    if (!forra || fokus < 0)
        return;
    float narmast = std::numeric_limits<float>::max();
    for (int k = 0; k < static_cast<int>(platser.size()); ++k) {
        if (!platser[k].iFokus)
            continue;
        if (platser[k].SammaSom(*forra)) {
            fokus = k;
            return;
        }
        BPoint d = Mitten(platser[k].ram) - Mitten(forra->ram);
        float avstand = std::hypot(d.x, d.y);
        if (avstand < narmast) {
            narmast = avstand;
            fokus = k;
        }
    }
}

void Tangentbord::Sag(const std::string& text, bool nyPlats) {
    vy.Meddela(text, nyPlats);
}

std::unique_ptr<SpelBord> Tangentbord::Fore() const {
    return TillgangligtBord::Lyssnar() ? vy.Spel()->Tabell().Kopia() : nullptr;
}

void Tangentbord::EfterDrag(const std::unique_ptr<SpelBord>& fore) {
    Folj();
    if (fore && vy.Spel() != nullptr && vy.Spel()->Tabell().Lika(*fore))
        Sag("nothing moved");
}

bool Tangentbord::Tangent(const QKeyEvent& event) {
    Qt::KeyboardModifiers andra = event.modifiers() & ~Qt::KeypadModifier;
    if (andra != Qt::NoModifier || vy.Spel() == nullptr)
        return false;
    const int n = static_cast<int>(platser.size());
    auto steg = [&](int riktning) {
        if (fokus < 0)
            return NastaIFokus(0, 1);
        int nasta = NastaIFokus(fokus + riktning, riktning);
        return nasta >= 0 ? nasta : fokus;
    };
    switch (event.key()) {
    case Qt::Key_Right:
        Flytta(steg(1));
        return true;
    case Qt::Key_Left:
        Flytta(steg(-1));
        return true;
    case Qt::Key_Up:
        FlyttaRad(-1);
        return true;
    case Qt::Key_Down:
        FlyttaRad(1);
        return true;
    case Qt::Key_Home:
        Flytta(NastaIFokus(0, 1));
        return true;
    case Qt::Key_End:
        Flytta(NastaIFokus(n - 1, -1));
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (haller)
            LaggNer();
        else
            Klicka();
        return true;
    case Qt::Key_Period:
        if (!haller)
            Lyft();
        else if (FokusPlats() != nullptr && FokusPlats()->SammaSom(kalla))
            Lyft();
        else
            LaggNer();
        return true;
    case Qt::Key_Escape:
        if (!haller)
            return false;
        LaggTillbaka();
        return true;
    default:
        return false;
    }
}

int Tangentbord::NastaIFokus(int fran, int steg) const {
    for (int k = fran; k >= 0 && k < static_cast<int>(platser.size()); k += steg)
        if (platser[k].iFokus)
            return k;
    return -1;
}

void Tangentbord::Flytta(int nyttFokus) {
    synlig = true;
    if (nyttFokus < 0 || platser.empty()) {
        fokus = -1;
        return;
    }
    fokus = std::clamp(nyttFokus, 0, static_cast<int>(platser.size()) - 1);
    if (haller)
        vy.BarTill(SlappPunkt(platser[fokus]));
    vy.update();
    // Told as a button here; a screen reader names a button's role itself when it reads the
    // table's places.
    Sag(platser[fokus].namn + (platser[fokus].knapp >= 0 ? " button" : ""), true);
}

// To the place of the next or previous row nearest below or above this one.
void Tangentbord::FlyttaRad(int riktning) {
    const BordsPlats* har = FokusPlats();
    if (har == nullptr) {
        Flytta(NastaIFokus(0, 1));
        return;
    }
    float x = Mitten(har->ram).x;
    int basta = fokus;
    // Past a row with no place the frame comes to.
    const int rader = platser.empty() ? 0 : platser.back().rad + 1;
    for (int rad = har->rad + riktning; rad >= 0 && rad < rader && basta == fokus;
         rad += riktning) {
        float narmast = std::numeric_limits<float>::max();
        for (int k = 0; k < static_cast<int>(platser.size()); ++k)
            if (platser[k].iFokus && platser[k].rad == rad &&
                std::fabs(Mitten(platser[k].ram).x - x) < narmast) {
                narmast = std::fabs(Mitten(platser[k].ram).x - x);
                basta = k;
            }
    }
    Flytta(basta);
}

void Tangentbord::Klicka() {
    synlig = true;
    const BordsPlats* plats = FokusPlats();
    if (plats == nullptr)
        return;
    std::unique_ptr<SpelBord> fore = Fore();
    vy.KlickaVid(plats->klick);
    EfterDrag(fore);
}

void Tangentbord::Lyft() {
    synlig = true;
    const BordsPlats* plats = FokusPlats();
    if (plats == nullptr)
        return;
    int nasta = 0;
    if (haller) {
        // Again on the same pile: one card more, round to the top card after the last.
        nasta = (grepp + 1) % static_cast<int>(kalla.grepp.size());
        vy.LaggTillbaka();
        haller = false;
    }
    if (plats->luckor.empty()) {
        Sag("nothing to take");
        return;
    }
    kalla = *plats;
    grepp = std::min(nasta, static_cast<int>(kalla.grepp.size()) - 1);
    greppPunkt = kalla.grepp[grepp];
    greppRuta = kalla.rutor[grepp];
    if (!vy.LyftVid(greppPunkt)) {
        Folj();
        Sag("nothing to take");
        return;
    }
    haller = true;
    const std::vector<int>& valda = vy.Spel()->valdaLuckor;
    std::string text = "holding " + KortNamn(vy.Spel()->Luckor()[kalla.luckor[grepp]].GeKort());
    if (valda.size() > 1)
        text += " and " + std::to_string(valda.size() - 1) + " more";
    Sag(text);
}

void Tangentbord::LaggNer() {
    const BordsPlats* plats = FokusPlats();
    if (!haller || plats == nullptr)
        return;
    std::unique_ptr<SpelBord> fore = Fore();
    haller = false;
    if (plats->SammaSom(kalla)) {
        // Put down where they were taken: the game moves them itself, as a click on the
        // card they were taken by does.
        vy.LaggTillbaka();
        vy.KlickaVid(greppPunkt);
    } else {
        vy.SlappVid(SlappPunktVid(fokus));
    }
    EfterDrag(fore);
}

void Tangentbord::LaggTillbaka() {
    haller = false;
    vy.LaggTillbaka();
    Folj();
    Sag("put back");
}

// Where the mouse would let the held cards go to make a move to place `mal`: the point the
// game names for such a move, or else the place's card.
BPoint Tangentbord::SlappPunktVid(int mal) const {
    const Patiens& spel = *vy.Spel();
    for (const Drag& d : spel.Regler().LagligaDrag(spel.Tabell())) {
        if (d.slag == DragSlag::Knapp || d.slag == DragSlag::NyttForsok)
            continue;
        std::optional<Gest> gest = spel.GestFor(d);
        if (!gest || gest->klick)
            continue;
        std::optional<std::pair<int, int>> fran = GreppVid(platser, gest->fran);
        if (fran && platser[fran->first].SammaSom(kalla) && fran->second == grepp &&
            MalVid(platser, gest->till) == mal)
            return gest->till;
    }
    return SlappPunkt(platser[mal]);
}

// The held card is aimed at the place as it was taken: the point it was taken at lies as
// far into the place's card as it lay into its own.
BPoint Tangentbord::SlappPunkt(const BordsPlats& mal) const {
    return mal.mal.LeftTop() + (greppPunkt - greppRuta.LeftTop());
}
