#include "games/KolumnRegler.h"

#include "cards/Luckor.h"
#include "games/LekRegler.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

namespace KolumnRegler {

namespace {

int Valor(const std::vector<Lucka>& luckor, int i) {
    return luckor[i].GeKort().KortValor();
}
// In a column game a pile's top has a slot after it: the spare of a free cell, the next
// level of a foundation, or the next position of a column.
bool KolumnTopp(const std::vector<Lucka>& luckor, int j) {
    return Fylld(luckor, j) && TomLucka(luckor, j + 1);
}

// Every slot a card or a run can be put on or into, in slot order: the tops of the piles,
// and the bases and free cells that may lie empty. The searches below walk these instead
// of every slot, and test each as they always did.
using Kandidater = std::vector<int>;
Kandidater KandidaterPa(const Plan& plan, const std::vector<Lucka>& luckor) {
    Kandidater k;
    k.reserve(48);
    // Reserve piles never take a card.
    const int forstaReserv = plan.kolumner * kPlatserPerKolumn;
    const int efterReserver = forstaReserv + plan.reserver * kPlatserPerKolumn;
    for (int j = 0; j < plan.forstaLek; ++j) {
        if (j == forstaReserv)
            j = efterReserver;
        if (j < plan.forstaLek &&
            (KolumnTopp(luckor, j) || KolumnBas(plan, j) || Fricell(plan, j) || GrundBas(plan, j)))
            k.push_back(j);
    }
    return k;
}
// A free cell's spare slot lies where its cell does, under the cell's card: a press there
// picks the cell's card and all above it, so no run starts at the spare.
bool FricellsReserv(const Plan& plan, int i) {
    return i > kForstaFricell && Fricell(plan, i - 1);
}
// The yes/no flag Eight off compares along a run.
bool SvitFlagga(const Kort& k) {
    return k.KortFarg() != HJARTER;
}

} // namespace

bool Fricell(const Plan& plan, int i) {
    return i >= kForstaFricell && i < kForstaFricell + 2 * plan.friceller &&
           (i - kForstaFricell) % 2 == 0;
}
bool GrundBas(const Plan& plan, int i) {
    return i >= plan.forstaGrund && i <= SistaGrund(plan) &&
           (i - plan.forstaGrund) % plan.grundSteg == 0;
}
int SistaGrund(const Plan& plan) {
    return plan.forstaGrund + 4 * plan.grundSteg - 1;
}
int SistaKolumnLucka(const Plan& plan) {
    return plan.kolumner * kPlatserPerKolumn - 1;
}
bool KolumnBas(const Plan& plan, int i) {
    return i >= 0 && i <= SistaKolumnLucka(plan) && i % kPlatserPerKolumn == 0;
}
bool HogBas(const Plan& plan, int i) {
    return i >= 0 && i < (plan.kolumner + plan.reserver) * kPlatserPerKolumn &&
           i % kPlatserPerKolumn == 0;
}
int SistaPlats(const Plan& plan) {
    return plan.forstaGrund - 1;
}

int Traff(const std::vector<Lucka>& luckor, BPoint p) {
    return TraffMedBand(luckor, 0, static_cast<int>(luckor.size()) - 1, p, kBand);
}

int Traff(const Plan& plan, const std::vector<Lucka>& luckor, BPoint p) {
    if (plan.sistaTraff < 0)
        return Traff(luckor, p);
    return TraffMedBand(luckor, 0, plan.sistaTraff, p, kBand);
}

bool PassarPaKolumn(const Plan& plan, const Kort& under, const Kort& kort) {
    if (under.KortValor() != kort.KortValor() + 1)
        return false;
    if (plan.sammaSvit)
        return under.KortFarg() == kort.KortFarg();
    return under.SvartFarg() != kort.SvartFarg();
}

int KlickMalBland(const Plan& plan, const std::vector<Lucka>& luckor, const Kort& kort,
                  const Kandidater& kand) {
    for (int j : kand)
        if (j >= plan.forstaGrund && j <= SistaGrund(plan))
            if (KolumnTopp(luckor, j) && Valor(luckor, j) + 1 == kort.KortValor() &&
                luckor[j].GeKort().KortFarg() == kort.KortFarg())
                return j + 1;
    if (kort.KortValor() == 1)
        for (int j : kand)
            if (j >= plan.forstaGrund && j <= SistaGrund(plan))
                if (luckor[j].Tom() && GrundBas(plan, j))
                    return j;
    if (plan.kolumnOchTomIEtt) {
        for (int j : kand)
            if (j >= 0 && j <= SistaKolumnLucka(plan)) {
                if (KolumnTopp(luckor, j) && PassarPaKolumn(plan, luckor[j].GeKort(), kort))
                    return j + 1;
                if (luckor[j].Tom() && TomLucka(luckor, j + 1) && KolumnBas(plan, j))
                    return j;
            }
        return -1;
    }
    for (int j : kand)
        if (j >= 0 && j <= SistaKolumnLucka(plan))
            if (KolumnTopp(luckor, j) && PassarPaKolumn(plan, luckor[j].GeKort(), kort))
                return j + 1;
    for (int j : kand)
        if (j >= 0 && j <= SistaPlats(plan))
            if (luckor[j].Tom() && TomLucka(luckor, j + 1) &&
                (KolumnBas(plan, j) || Fricell(plan, j)))
                return j;
    return -1;
}

int KlickMal(const Plan& plan, const std::vector<Lucka>& luckor, const Kort& kort) {
    return KlickMalBland(plan, luckor, kort, KandidaterPa(plan, luckor));
}

// A single card's drop targets in the drop's order, among the slots `traffad` lets by:
// the first, or with `alla` every one of them.
template <typename Traffad>
int DropMalen(const Plan& plan, const std::vector<Lucka>& luckor, const Kort& kort,
              const Kandidater& kand, Traffad traffad, std::vector<int>* alla) {
    auto funnen = [&](int mal) {
        if (alla != nullptr && std::find(alla->begin(), alla->end(), mal) == alla->end())
            alla->push_back(mal);
        return alla == nullptr;
    };
    for (int j : kand)
        if (j >= plan.dropGrundFran && j <= plan.dropGrundTill)
            if (traffad(j) && KolumnTopp(luckor, j) && Valor(luckor, j) + 1 == kort.KortValor() &&
                luckor[j].GeKort().KortFarg() == kort.KortFarg() && funnen(j + 1))
                return j + 1;
    if (kort.KortValor() == 1)
        for (int j : kand)
            if (j >= plan.dropGrundFran && j <= plan.dropGrundTill)
                if (traffad(j) && luckor[j].Tom() && GrundBas(plan, j) && funnen(j))
                    return j;
    for (int j : kand)
        if (j >= 0 && j <= SistaKolumnLucka(plan))
            if (traffad(j) && KolumnTopp(luckor, j) &&
                PassarPaKolumn(plan, luckor[j].GeKort(), kort) && funnen(j + 1))
                return j + 1;
    for (int j : kand)
        if (j >= 0 && j <= SistaPlats(plan))
            if (traffad(j) && luckor[j].Tom() && TomLucka(luckor, j + 1) &&
                (KolumnBas(plan, j) || Fricell(plan, j)) && funnen(j))
                return j;
    return -1;
}

int DropMal(const Plan& plan, const std::vector<Lucka>& luckor, const Kort& kort, BPoint q) {
    auto traffad = [&](int j) { return Forlangd(luckor[j].GePos(), kDropForlangning).Contains(q); };
    return DropMalen(plan, luckor, kort, KandidaterPa(plan, luckor), traffad, nullptr);
}

int FriaPlatser(const Plan& plan, const std::vector<Lucka>& luckor) {
    int fria = 0;
    // More than any column can hold.
    if (plan.rakning == FriRakning::Obegransad)
        return kPlatserPerKolumn * (plan.kolumner + 1);
    if (plan.rakning == FriRakning::NioParVarannan) {
        for (int k = 0; k <= 8; ++k) {
            if (TomLucka(luckor, k * kPlatserPerKolumn))
                ++fria;
            if (TomLucka(luckor, kForstaFricell + 2 * k))
                ++fria;
        }
        return fria;
    }
    for (int c = 0; c < kKolumner; ++c)
        if (TomLucka(luckor, c * kPlatserPerKolumn))
            ++fria;
    for (int i = 0; i < plan.friceller; ++i)
        if (TomLucka(luckor, kForstaFricell + 2 * i))
            ++fria;
    return fria;
}

bool GiltigRad(const Plan& plan, const std::vector<Lucka>& luckor, int forsta, int topp,
               bool vidDrop) {
    const Kort& f = luckor[forsta].GeKort();
    bool flagga = plan.svitFlagga ? (vidDrop ? f.SvartFarg() : SvitFlagga(f)) : f.SvartFarg();
    int valor = f.KortValor();
    for (int i = forsta + 1; i <= topp; ++i) {
        const Kort& k = luckor[i].GeKort();
        if (k.KortValor() != valor - 1)
            return false;
        if (plan.svitFlagga) {
            if (SvitFlagga(k) != flagga)
                return false;
        } else {
            if (k.SvartFarg() == flagga)
                return false;
            flagga = k.SvartFarg();
        }
        valor = k.KortValor();
    }
    return true;
}

RadMal KlickRadMalBland(const Plan& plan, const std::vector<Lucka>& luckor, int forsta, int topp,
                        const Kandidater& kand) {
    int n = topp - forsta + 1;
    int fria = FriaPlatser(plan, luckor);
    if (n - 1 > fria || !GiltigRad(plan, luckor, forsta, topp, false))
        return {};
    const Kort& f = luckor[forsta].GeKort();
    for (int j : kand)
        if (j >= 0 && j <= SistaKolumnLucka(plan)) {
            if (KolumnTopp(luckor, j) && PassarPaKolumn(plan, luckor[j].GeKort(), f))
                return {j, j + 1};
            if (luckor[j].Tom() && TomLucka(luckor, j + 1) && KolumnBas(plan, j)) {
                // The column taken is no longer a free place for the run.
                --fria;
                if (n - 1 <= fria)
                    return {j, j};
            }
        }
    return {};
}

RadMal KlickRadMal(const Plan& plan, const std::vector<Lucka>& luckor, int forsta, int topp) {
    return KlickRadMalBland(plan, luckor, forsta, topp, KandidaterPa(plan, luckor));
}

// A run's drop targets in the drop's order, among the slots `traffad` lets by.
template <typename Traffad>
RadMal DropRadMalen(const Plan& plan, const std::vector<Lucka>& luckor, int forsta, int topp,
                    const Kandidater& kand, Traffad traffad, std::vector<RadMal>* alla) {
    int n = topp - forsta + 1;
    if (!GiltigRad(plan, luckor, forsta, topp, true))
        return {};
    int fria = FriaPlatser(plan, luckor);
    if (n - 1 > fria)
        return {};
    const Kort& f = luckor[forsta].GeKort();
    for (int j : kand)
        if (j >= 0 && j <= SistaKolumnLucka(plan)) {
            if (!traffad(j))
                continue;
            RadMal mal;
            if (KolumnTopp(luckor, j) && PassarPaKolumn(plan, luckor[j].GeKort(), f))
                mal = {j, j + 1};
            else if (luckor[j].Tom() && KolumnBas(plan, j) && n - 1 <= fria - 1)
                mal = {j, j};
            else
                continue;
            if (alla == nullptr)
                return mal;
            alla->push_back(mal);
        }
    return {};
}

RadMal DropRadMal(const Plan& plan, const std::vector<Lucka>& luckor, int forsta, int topp,
                  BPoint q) {
    auto traffad = [&](int j) { return Forlangd(luckor[j].GePos(), kDropForlangning).Contains(q); };
    return DropRadMalen(plan, luckor, forsta, topp, KandidaterPa(plan, luckor), traffad, nullptr);
}

bool Vunnet(const Plan& plan, const std::vector<Lucka>& luckor) {
    for (int f = 0; f < 4; ++f) {
        int kung = plan.forstaGrund + plan.grundSteg * f + kNivaer - 1;
        if (luckor[kung].Tom() || luckor[kung].GeKort().KortValor() != 13)
            return false;
    }
    return true;
}

int KortPaGrunden(const Plan& plan, const std::vector<Lucka>& luckor) {
    int antal = 0;
    for (int j = plan.forstaGrund; j <= SistaGrund(plan); ++j)
        if (!luckor[j].Tom())
            ++antal;
    return antal;
}

BRect Rutnat::Ruta(int kolumn, int topp) const {
    auto f = [](int v) { return static_cast<float>(v); };
    return BRect(f(kolumn * (w + m) + m), f(topp), f(kolumn * (w + m) + w + m), f(topp + h));
}

Rutnat KolumnRutnat(BRect ram) {
    Rutnat rutnat;
    rutnat.h = std::max(static_cast<int>(ram.Height() - 40.0f) / 11, 70);
    rutnat.w =
        std::max(static_cast<int>(ram.Width() - 4.0f * static_cast<float>(rutnat.m)) / 10, 70);
    return rutnat;
}

void LaggKolumner(std::vector<Lucka>& luckor, const Rutnat& rutnat, int topp, int kolumner) {
    for (int c = 0; c < kolumner; ++c)
        for (int p = 0; p < kPlatserPerKolumn; ++p)
            luckor[c * kPlatserPerKolumn + p].NyPos(rutnat.Ruta(c, 30 * p + topp));
}

void LaggFricell(std::vector<Lucka>& luckor, int i, BRect ruta) {
    luckor[kForstaFricell + 2 * i].NyPos(ruta);
    luckor[kForstaFricell + 2 * i + 1].NyPos(ruta);
}

void LaggGrund(std::vector<Lucka>& luckor, const Plan& plan, int g, BRect ruta) {
    for (int k = 0; k < plan.grundSteg; ++k)
        luckor[plan.forstaGrund + plan.grundSteg * g + k].NyPos(ruta);
}

void LaggLek(std::vector<Lucka>& luckor, const Plan& plan, const Rutnat& rutnat) {
    for (int k = 0; k < 52; ++k)
        luckor[plan.forstaLek + k].NyPos(rutnat.Ruta(8, 2 * rutnat.h + rutnat.m + k));
}

Drag RadDragMot(int forsta, int antal, const RadMal& mal) {
    Drag drag = RadDrag(forsta, antal, mal.start);
    drag.andra = mal.mal;
    return drag;
}

void Skapa(Stallning& bord) {
    bord.luckor.assign(bord.plan->antalLuckor, Lucka(BRect(0, 0, 0, 0), false));
}

void LaggUtLeken(Stallning& bord) {
    LekRegler::LaggLeken(bord, bord.plan->forstaLek);
}

void DelaUt(Stallning& bord, Flygledare* flyg) {
    for (auto [lek, till] : bord.plan->givOrdning()) {
        if (flyg)
            flyg->FlygKort(lek, till, kGivSteg);
        Flytta(bord.luckor, lek, till);
    }
}

std::vector<Drag> LagligaDrag(const Stallning& bord) {
    const Plan& plan = *bord.plan;
    const std::vector<Lucka>& luckor = bord.luckor;
    std::vector<Drag> drag;
    auto allaLuckor = [](int) { return true; };
    const Kandidater kand = KandidaterPa(plan, luckor);
    const int sista = plan.sistaTraff < 0 ? plan.forstaLek - 1 : plan.sistaTraff;
    for (int forsta = 0; forsta <= sista; ++forsta) {
        if (luckor[forsta].Tom())
            continue;
        int topp = Toppen(luckor, forsta);
        if (forsta == topp) {
            std::vector<int> mal;
            int klick = KlickMalBland(plan, luckor, luckor[forsta].GeKort(), kand);
            if (klick >= 0)
                mal.push_back(klick);
            DropMalen(plan, luckor, luckor[forsta].GeKort(), kand, allaLuckor, &mal);
            for (int till : mal)
                drag.push_back(KortDrag(forsta, till));
            continue;
        }
        if (FricellsReserv(plan, forsta))
            continue;
        int antal = topp - forsta + 1;
        std::vector<RadMal> mal;
        RadMal klick = KlickRadMalBland(plan, luckor, forsta, topp, kand);
        if (klick.mal >= 0)
            mal.push_back(klick);
        DropRadMalen(plan, luckor, forsta, topp, kand, allaLuckor, &mal);
        for (const RadMal& m : mal) {
            Drag d = RadDragMot(forsta, antal, m);
            if (std::find(drag.begin(), drag.end(), d) == drag.end())
                drag.push_back(d);
        }
    }
    return drag;
}

namespace {

// The places a card or run can go, found once for a table: the entries of KandidaterPa
// sorted by what they take.
struct Malen {
    struct Kolumn {
        int j;
        bool topp;    // a column's top card, else an empty column base
        bool tomOvan; // the slot above an empty base is empty too
    };
    std::array<int, 64> grundToppar;
    std::array<int, 8> tommaGrunder;
    std::array<Kolumn, 64> kolumner;
    std::array<int, 32> tommaPlatser;
    int antalGrundToppar = 0;
    int antalTommaGrunder = 0;
    int antalKolumner = 0;
    int antalTommaPlatser = 0;
};

Malen MalenPa(const Plan& plan, const std::vector<Lucka>& luckor) {
    Malen m;
    const int forstaReserv = plan.kolumner * kPlatserPerKolumn;
    const int efterReserver = forstaReserv + plan.reserver * kPlatserPerKolumn;
    const int sistaKolumn = SistaKolumnLucka(plan);
    const int sistaPlats = SistaPlats(plan);
    for (int j = 0; j < plan.forstaLek; ++j) {
        if (j == forstaReserv)
            j = efterReserver;
        if (j >= plan.forstaLek)
            break;
        const bool tom = luckor[j].Tom();
        const bool tomOvan = TomLucka(luckor, j + 1);
        const bool topp = !tom && tomOvan;
        const bool bas = KolumnBas(plan, j);
        const bool cell = Fricell(plan, j);
        const bool grund = GrundBas(plan, j);
        if (!(topp || bas || cell || grund))
            continue;
        if (j >= plan.dropGrundFran && j <= plan.dropGrundTill) {
            if (topp)
                m.grundToppar[m.antalGrundToppar++] = j;
            if (tom && grund)
                m.tommaGrunder[m.antalTommaGrunder++] = j;
        }
        if (j <= sistaKolumn && (topp || (tom && bas)))
            m.kolumner[m.antalKolumner++] = {j, topp, tomOvan};
        if (j <= sistaPlats && tom && tomOvan && (bas || cell))
            m.tommaPlatser[m.antalTommaPlatser++] = j;
    }
    return m;
}

void LaggTillNy(std::vector<Drag>& ut, std::size_t fran, const Drag& d) {
    if (std::find(ut.begin() + static_cast<std::ptrdiff_t>(fran), ut.end(), d) == ut.end())
        ut.push_back(d);
}

// A single card's places, as a drop finds them; a click finds one of them.
void KortetsDrag(const Plan& plan, const std::vector<Lucka>& luckor, const Malen& m, int forsta,
                 std::vector<Drag>& ut) {
    const std::size_t borjan = ut.size();
    const Kort& k = luckor[forsta].GeKort();
    for (int i = 0; i < m.antalGrundToppar; ++i) {
        const Kort& g = luckor[m.grundToppar[i]].GeKort();
        if (g.KortValor() + 1 == k.KortValor() && g.KortFarg() == k.KortFarg())
            LaggTillNy(ut, borjan, KortDrag(forsta, m.grundToppar[i] + 1));
    }
    if (k.KortValor() == 1)
        for (int i = 0; i < m.antalTommaGrunder; ++i)
            LaggTillNy(ut, borjan, KortDrag(forsta, m.tommaGrunder[i]));
    for (int i = 0; i < m.antalKolumner; ++i)
        if (m.kolumner[i].topp && PassarPaKolumn(plan, luckor[m.kolumner[i].j].GeKort(), k))
            LaggTillNy(ut, borjan, KortDrag(forsta, m.kolumner[i].j + 1));
    for (int i = 0; i < m.antalTommaPlatser; ++i)
        LaggTillNy(ut, borjan, KortDrag(forsta, m.tommaPlatser[i]));
}

// A run's places: every one a drop reaches, and the one a click sends it to.
void RadensDrag(const Plan& plan, const std::vector<Lucka>& luckor, const Malen& m, int fria,
                int forsta, int topp, std::vector<Drag>& ut) {
    const int n = topp - forsta + 1;
    const std::size_t borjan = ut.size();
    const Kort& f = luckor[forsta].GeKort();
    if (GiltigRad(plan, luckor, forsta, topp, true))
        for (int i = 0; i < m.antalKolumner; ++i) {
            const Malen::Kolumn& k = m.kolumner[i];
            if (k.topp && PassarPaKolumn(plan, luckor[k.j].GeKort(), f))
                ut.push_back(RadDragMot(forsta, n, {k.j, k.j + 1}));
            else if (!k.topp && n - 1 <= fria - 1)
                ut.push_back(RadDragMot(forsta, n, {k.j, k.j}));
        }
    if (!GiltigRad(plan, luckor, forsta, topp, false))
        return;
    int kvar = fria;
    for (int i = 0; i < m.antalKolumner; ++i) {
        const Malen::Kolumn& k = m.kolumner[i];
        if (k.topp && PassarPaKolumn(plan, luckor[k.j].GeKort(), f)) {
            LaggTillNy(ut, borjan, RadDragMot(forsta, n, {k.j, k.j + 1}));
            return;
        }
        if (!k.topp && k.tomOvan && n - 1 <= --kvar) {
            LaggTillNy(ut, borjan, RadDragMot(forsta, n, {k.j, k.j}));
            return;
        }
    }
}

} // namespace

void ListaDrag(const Stallning& bord, std::vector<Drag>& ut) {
    const Plan& plan = *bord.plan;
    const std::vector<Lucka>& luckor = bord.luckor;
    ut.clear();
    // A click finds one of the places a drop finds when its foundations are among the drop's.
    if (plan.forstaGrund < plan.dropGrundFran || SistaGrund(plan) > plan.dropGrundTill) {
        ut = LagligaDrag(bord);
        return;
    }
    const Malen m = MalenPa(plan, luckor);
    const int fria = FriaPlatser(plan, luckor);
    const int sista = plan.sistaTraff < 0 ? plan.forstaLek - 1 : plan.sistaTraff;
    int topp = -1;
    for (int forsta = 0; forsta <= sista; ++forsta) {
        if (luckor[forsta].Tom())
            continue;
        if (forsta > topp)
            topp = Toppen(luckor, forsta);
        if (forsta == topp)
            KortetsDrag(plan, luckor, m, forsta, ut);
        else if (topp - forsta <= fria && !FricellsReserv(plan, forsta))
            RadensDrag(plan, luckor, m, fria, forsta, topp, ut);
    }
}

void GorDrag(Stallning& bord, const Drag& drag, Flygledare* flyg) {
    std::vector<Lucka>& luckor = bord.luckor;
    if (drag.slag == DragSlag::Kort) {
        if (flyg)
            flyg->FlygKort(drag.fran, drag.till, kFlyttSteg);
        Flytta(luckor, drag.fran, drag.till);
        bord.undoLista.emplace_back(drag.fran, drag.till);
        return;
    }
    if (drag.slag != DragSlag::Rad)
        return;
    int n = drag.antal;
    if (flyg)
        flyg->FlygRad(drag.fran, n, drag.till, kFlyttSteg);
    for (int k = 0; k < n; ++k) {
        Flytta(luckor, drag.fran + k, drag.till + k);
        bord.undoLista.emplace_back(drag.fran + k, drag.till + k);
    }
    bord.undoLista.emplace_back(drag.andra, drag.andra + n);
    bord.undoLista.emplace_back(UNDO_FLERA, n);
}

int Angra(Stallning& bord, Flygledare* flyg) {
    std::vector<std::pair<int, int>>& lista = bord.undoLista;
    if (lista.empty())
        return 0;
    ++bord.antalUndo;
    auto [a, b] = lista.back();
    lista.pop_back();
    if (a == UNDO_FLERA) {
        int n = b;
        lista.pop_back(); // the range, (j, j + n)
        std::vector<std::pair<int, int>> par(lista.end() - n, lista.end());
        lista.resize(lista.size() - n);
        if (flyg)
            flyg->FlygRad(par.front().second, n, par.front().first, kAngraSteg);
        for (auto it = par.rbegin(); it != par.rend(); ++it)
            Flytta(bord.luckor, it->second, it->first);
    } else {
        if (flyg)
            flyg->FlygKort(b, a, kAngraSteg);
        Flytta(bord.luckor, b, a);
    }
    return static_cast<int>(lista.size());
}

bool KlarSpel(Stallning& bord) {
    return Vunnet(*bord.plan, bord.luckor);
}

HiscoreResultat Resultat(const Stallning& bord) {
    return HiscoreResultat{KortPaGrunden(*bord.plan, bord.luckor), 1};
}

std::optional<Drag> KlickDrag(const Stallning& bord, int traff) {
    const Plan& plan = *bord.plan;
    int topp = Toppen(bord.luckor, traff);
    if (traff == topp) {
        int till = KlickMal(plan, bord.luckor, bord.luckor[traff].GeKort());
        if (till < 0)
            return std::nullopt;
        return KortDrag(traff, till);
    }
    RadMal mal = KlickRadMal(plan, bord.luckor, traff, topp);
    if (mal.mal < 0)
        return std::nullopt;
    return RadDragMot(traff, topp - traff + 1, mal);
}

std::optional<Drag> DropDrag(const Stallning& bord, int forsta, int topp, BPoint q) {
    const Plan& plan = *bord.plan;
    if (forsta == topp) {
        int till = DropMal(plan, bord.luckor, bord.luckor[forsta].GeKort(), q);
        if (till < 0)
            return std::nullopt;
        return KortDrag(forsta, till);
    }
    RadMal mal = DropRadMal(plan, bord.luckor, forsta, topp, q);
    if (mal.mal < 0)
        return std::nullopt;
    return RadDragMot(forsta, topp - forsta + 1, mal);
}

} // namespace KolumnRegler

namespace KolumnRegler {

std::vector<Hog> HogTabell(const Stallning& bord) {
    const Plan& plan = *bord.plan;
    std::vector<Hog> hogar;
    for (int c = 0; c < plan.kolumner; ++c)
        hogar.push_back({HogSlag::Kolumn, c + 1, kPlatserPerKolumn * c,
                         kPlatserPerKolumn * c + kPlatserPerKolumn - 1});
    for (int r = 0; r < plan.reserver; ++r) {
        int bas = kPlatserPerKolumn * (plan.kolumner + r);
        hogar.push_back({HogSlag::Reserv, r + 1, bas, bas + kPlatserPerKolumn - 1});
    }
    for (int f = 0; f < plan.friceller; ++f)
        hogar.push_back(
            {HogSlag::Fricell, f + 1, kForstaFricell + 2 * f, kForstaFricell + 2 * f + 1});
    for (int g = 0; g < 4; ++g)
        hogar.push_back({HogSlag::Grund, g + 1, plan.forstaGrund + plan.grundSteg * g,
                         plan.forstaGrund + plan.grundSteg * g + kNivaer - 1});
    return hogar;
}

namespace {

// The piles of `antal` × 22 slots from `forsta`, each its cards up to the first empty slot
// and a '|', in an order that does not depend on where each pile stands.
void SorteradeHogar(const std::vector<Lucka>& luckor, int forsta, int antal, std::string& nyckel) {
    constexpr int kMest = 16;
    std::array<std::array<char, kPlatserPerKolumn>, kMest> kort;
    std::array<int, kMest> langd{};
    std::array<int, kMest> ordning{};
    for (int h = 0; h < antal; ++h) {
        const int bas = forsta + h * kPlatserPerKolumn;
        int n = 0;
        while (n < kPlatserPerKolumn && !luckor[bas + n].Tom()) {
            kort[h][n] = KortKod(luckor[bas + n]);
            ++n;
        }
        langd[h] = n;
        ordning[h] = h;
    }
    std::sort(ordning.begin(), ordning.begin() + antal, [&](int a, int b) {
        int c = std::memcmp(kort[a].data(), kort[b].data(),
                            static_cast<std::size_t>(std::min(langd[a], langd[b])));
        return c != 0 ? c < 0 : langd[a] < langd[b];
    });
    for (int i = 0; i < antal; ++i) {
        nyckel.append(kort[ordning[i]].data(), static_cast<std::size_t>(langd[ordning[i]]));
        nyckel.push_back('|');
    }
}

// Eight off counts free places over nine pairs that take in its first free cell twice and
// its first foundation's base; its other places are as interchangeable as in Freecell.
bool NioPar(const Plan& plan) {
    return plan.rakning == FriRakning::NioParVarannan;
}

// Places a card or run may go to that lead to the same table under the key: any empty
// column, any empty free cell, any empty foundation base. Eight off's key keeps its columns
// in place and its free cells in groups (EightoffRegler.cpp): there only the empty cells of
// one group are alike, and so are its foundation bases but the first. -1 for a place that
// is its own.
int Klass(const Plan& plan, const std::vector<Lucka>& luckor, int till) {
    if (!luckor[till].Tom())
        return -1;
    if (KolumnBas(plan, till))
        return NioPar(plan) ? -1 : 0;
    if (Fricell(plan, till) && NioPar(plan)) {
        const int cell = (till - kForstaFricell) / 2;
        return cell >= 1 && cell <= 3 ? 1 : cell >= 4 && cell <= 6 ? 3 : -1;
    }
    if (Fricell(plan, till))
        return 1;
    if (GrundBas(plan, till))
        return NioPar(plan) && till == plan.forstaGrund ? -1 : 2;
    return -1;
}

// A card or run that already lies on a card it could be built on, moved onto another.
bool Sidleds(const Plan& plan, const std::vector<Lucka>& luckor, const Drag& d) {
    return d.fran <= SistaKolumnLucka(plan) && !HogBas(plan, d.fran) && !luckor[d.till].Tom() &&
           PassarPaKolumn(plan, luckor[d.fran - 1].GeKort(), luckor[d.fran].GeKort());
}

// The lowest card left beneath a move's cards in its column (0 when the column empties):
// digging towards the low cards first brings them home sooner.
int Lagsta(const Plan& plan, const std::vector<Lucka>& luckor, const Drag& d) {
    if (d.fran > SistaKolumnLucka(plan) && !HogBas(plan, d.fran))
        return 14;
    int lagsta = 0;
    for (int i = d.fran - 1; i >= 0 && !HogBas(plan, i + 1); --i) {
        int v = luckor[i].GeKort().KortValor();
        lagsta = lagsta == 0 ? v : std::min(lagsta, v);
    }
    return lagsta;
}

int Rang(const Plan& plan, const std::vector<Lucka>& luckor, const Drag& d) {
    const bool franGrund = d.fran >= plan.forstaGrund;
    const bool tillGrund = d.till >= plan.forstaGrund && d.till <= SistaGrund(plan);
    int rang = 0;
    if (tillGrund)
        rang = 0;
    else if (franGrund)
        rang = 6;
    else if (!(luckor[d.till].Tom() && (HogBas(plan, d.till) || Fricell(plan, d.till))))
        rang = Fricell(plan, d.fran) ? 1 : Sidleds(plan, luckor, d) ? 3 : 2;
    else if (KolumnBas(plan, d.till))
        rang = HogBas(plan, d.fran) ? 7 : 4; // a whole pile to an empty column changes little
    else
        rang = 5; // into a free cell
    return rang * 16 + Lagsta(plan, luckor, d);
}

class Kunskap final : public SokKunskap {
public:
    bool ListaDrag(const SpelBord& b, std::vector<Drag>& dragen) const override {
        KolumnRegler::ListaDrag(static_cast<const Stallning&>(b), dragen);
        return true;
    }

    // A card home when no card that could lie on it is still out of its foundation (the
    // two one lower of the other colour, or in Eight off the one lower of its suit), and an
    // ace or a two always. Usually right, not always: a card taken back off a foundation
    // may still be wanted on it.
    int TroligtDrag(const SpelBord& b, const std::vector<Drag>& dragen) const override {
        const Plan& plan = *static_cast<const Stallning&>(b).plan;
        const std::vector<Lucka>& l = b.luckor;
        int hemma[4] = {0, 0, 0, 0};
        for (int f = 0; f < 4; ++f) {
            int topp = Toppen(l, plan.forstaGrund + f * plan.grundSteg);
            if (topp >= 0)
                hemma[l[topp].GeKort().KortFarg()] = l[topp].GeKort().KortValor();
        }
        for (std::size_t i = 0; i < dragen.size(); ++i) {
            const Drag& d = dragen[i];
            if (d.slag != DragSlag::Kort || d.fran >= plan.forstaGrund ||
                d.till < plan.forstaGrund || d.till > SistaGrund(plan))
                continue;
            const Kort& k = l[d.fran].GeKort();
            int v = k.KortValor();
            bool troligt = v <= 2;
            if (plan.sammaSvit)
                troligt = true;
            else if (k.SvartFarg())
                troligt = troligt || (hemma[HJARTER] >= v - 1 && hemma[RUTER] >= v - 1);
            else
                troligt = troligt || (hemma[KLOVER] >= v - 1 && hemma[SPADER] >= v - 1);
            if (troligt)
                return static_cast<int>(i);
        }
        return -1;
    }
    bool HarTroligaDrag() const override { return true; }

    // Cards not yet home weigh most, then the cards that lie above a lower card in their
    // pile (each must move before that one can go home), then the free cells taken; an
    // empty column brings the table nearer.
    int Avstand(const SpelBord& b) const override {
        const Plan& plan = *static_cast<const Stallning&>(b).plan;
        const std::vector<Lucka>& l = b.luckor;
        int over = 0;
        int tomma = 0;
        for (int c = 0; c < plan.kolumner + plan.reserver; ++c) {
            int lagst = 14;
            const int bas = c * kPlatserPerKolumn;
            if (l[bas].Tom())
                ++tomma;
            for (int p = 0; p < kPlatserPerKolumn && !l[bas + p].Tom(); ++p) {
                int v = l[bas + p].GeKort().KortValor();
                if (v > lagst)
                    ++over;
                else
                    lagst = v;
            }
        }
        int celler = 0;
        for (int i = 0; i < plan.friceller; ++i)
            if (!l[kForstaFricell + 2 * i].Tom())
                ++celler;
        return 3 * (52 - KortPaGrunden(plan, l)) + 2 * over + celler - 3 * tomma;
    }

    // Nothing off the foundations, no card from one free cell to another, none from a card it
    // could be built on to another such card, no whole pile into an empty column, and of the
    // runs of one column into an empty column only the longest.
    void GallraHastigt(const SpelBord& b, std::vector<Drag>& dragen) const override {
        const Plan& plan = *static_cast<const Stallning&>(b).plan;
        const std::vector<Lucka>& l = b.luckor;
        auto tomKolumn = [&](const Drag& d) { return KolumnBas(plan, d.till) && l[d.till].Tom(); };
        const std::vector<Drag> alla = dragen;
        std::erase_if(dragen, [&](const Drag& d) {
            if (d.fran >= plan.forstaGrund && d.fran <= SistaGrund(plan))
                return true;
            if (Fricell(plan, d.fran) && Fricell(plan, d.till))
                return true;
            if (Sidleds(plan, l, d))
                return true;
            if (!tomKolumn(d))
                return false;
            if (HogBas(plan, d.fran))
                return true;
            int kolumn = d.fran / kPlatserPerKolumn;
            return std::any_of(alla.begin(), alla.end(), [&](const Drag& e) {
                return tomKolumn(e) && e.fran <= SistaKolumnLucka(plan) &&
                       e.fran / kPlatserPerKolumn == kolumn && e.antal > d.antal;
            });
        });
    }

    // Where the columns stand does not matter to any move, nor which free cell holds a card
    // (Eight off's first aside), nor which foundation a suit was built on (Eight off's first
    // aside): the cards not in a column, reserve pile or free cell are on the foundations.
    void Nyckel(const SpelBord& b, std::string& nyckel) const override {
        const Plan& plan = *static_cast<const Stallning&>(b).plan;
        const std::vector<Lucka>& l = b.luckor;
        SorteradeHogar(l, 0, plan.kolumner, nyckel);
        SorteradeHogar(l, plan.kolumner * kPlatserPerKolumn, plan.reserver, nyckel);
        std::array<int, 8> celler{};
        int antal = 0;
        for (int i = 0; i < plan.friceller; ++i) {
            int cell = kForstaFricell + 2 * i;
            int c = static_cast<unsigned char>(KortKod(l[cell])) * 256 +
                    static_cast<unsigned char>(KortKod(l[cell + 1]));
            if (NioPar(plan) && i == 0) {
                nyckel.push_back(KortKod(l[cell]));
                nyckel.push_back(KortKod(l[cell + 1]));
            } else {
                celler[antal++] = c;
            }
        }
        for (int i = 1; i < antal; ++i)
            for (int j = i; j > 0 && celler[j - 1] > celler[j]; --j)
                std::swap(celler[j - 1], celler[j]);
        for (int i = 0; i < antal; ++i) {
            nyckel.push_back(static_cast<char>(celler[i] / 256));
            nyckel.push_back(static_cast<char>(celler[i] % 256));
        }
        if (NioPar(plan)) {
            int topp = Toppen(l, plan.forstaGrund);
            nyckel.push_back(topp < 0 ? '\0' : KortKod(l[topp]));
        }
        KortOchPlatser(l, plan.forstaLek, plan.antalLuckor - 1, nyckel);
    }

    // Foundations first, then cards off the free cells, then onto cards, then into empty
    // places, and last off the foundations. Of the moves of one card or run into
    // interchangeable empty places only the first is kept: the others reach the same key.
    void Ordna(const SpelBord& b, std::vector<Drag>& dragen) const override {
        const Plan& plan = *static_cast<const Stallning&>(b).plan;
        const std::vector<Lucka>& l = b.luckor;
        std::vector<std::pair<int, Drag>> ordnade;
        ordnade.reserve(dragen.size());
        for (const Drag& d : dragen) {
            int klass = Klass(plan, l, d.till);
            bool dubbel = klass >= 0 && std::any_of(ordnade.begin(), ordnade.end(), [&](auto& o) {
                              return o.second.fran == d.fran && o.second.antal == d.antal &&
                                     Klass(plan, l, o.second.till) == klass;
                          });
            if (!dubbel)
                ordnade.emplace_back(Rang(plan, l, d), d);
        }
        std::stable_sort(ordnade.begin(), ordnade.end(),
                         [](const auto& a, const auto& c) { return a.first < c.first; });
        dragen.clear();
        for (const auto& o : ordnade)
            dragen.push_back(o.second);
    }

    // An ace or a two off a column, reserve pile or free cell to its foundation (Freecell,
    // Glädjespridaren). Nothing can lie on an ace in a column, and only an ace on a two.
    // Take any winning line from the table before the move and play it from the table
    // after, keeping home a set S of aces and twos that the line has out (at first the card
    // moved), each with the lower card of its suit home too. S's cards lie only at the tops
    // of piles or in free cells, so every other card lies as in the line, and every pile is
    // the line's or shorter by cards of S, with as many empty places or more. So: a move of
    // cards of S alone is left out (one going home leaves S); a run ending in cards of S
    // moves without them (shorter, needing fewer free places); an ace the line puts on a
    // two of S goes home instead and joins S (its suit's foundation is not begun, and four
    // bases serve four suits); an ace the line takes off under a two of S stays home and
    // joins S; every other move is made as in the line, onto the same card or place, and a
    // card going home finds the card below it on top of its foundation, as the suits'
    // foundations are interchangeable. The line's last table has every card home, and so
    // has this one. Not in Eight off, whose first foundation base counts as a free place.
    int SakertDrag(const SpelBord& b, const std::vector<Drag>& dragen) const override {
        const Plan& plan = *static_cast<const Stallning&>(b).plan;
        if (NioPar(plan))
            return -1;
        for (std::size_t i = 0; i < dragen.size(); ++i) {
            const Drag& d = dragen[i];
            if (d.slag == DragSlag::Kort && d.fran < plan.forstaGrund &&
                d.till >= plan.forstaGrund && d.till <= SistaGrund(plan) &&
                b.luckor[d.fran].GeKort().KortValor() <= 2)
                return static_cast<int>(i);
        }
        return -1;
    }
};

} // namespace

const SokKunskap& Kunskapen() {
    static const Kunskap kunskap;
    return kunskap;
}

} // namespace KolumnRegler
