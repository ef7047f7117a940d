#include "games/KolumnRegler.h"

#include "cards/Luckor.h"
#include "games/LekRegler.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
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
        int valor;    // the top card's value, suit and colour
        int farg;
        bool svart;
    };
    std::array<int, 64> grundToppar;
    std::array<int, 8> tommaGrunder;
    std::array<Kolumn, 64> kolumner;
    std::array<int, 32> tommaPlatser;
    // The class of each empty place and base (Klass below), -1 for one of its own or when
    // every place is listed.
    std::array<int, 8> grundKlass;
    std::array<int, 32> platsKlass;
    bool enPerKlass = false; // list one move of a card or run into each class of empty place
    int antalGrundToppar = 0;
    int antalTommaGrunder = 0;
    int antalKolumner = 0;
    int antalTommaPlatser = 0;
};

Malen MalenPa(const Plan& plan, const std::vector<Lucka>& luckor, bool enPerKlass) {
    Malen m;
    m.enPerKlass = enPerKlass;
    const bool nioPar = plan.rakning == FriRakning::NioParVarannan;
    const int storlek = static_cast<int>(luckor.size());
    const int sistaPlats = SistaPlats(plan);
    const int sistaGrund = SistaGrund(plan);
    auto kolumn = [&](int j, bool topp, bool tomOvan) {
        const Kort& k = luckor[j].GeKort();
        m.kolumner[m.antalKolumner++] = {
            j, topp, tomOvan, k.KortValor(), k.KortFarg(), k.SvartFarg()};
    };
    // A column's cards lie from its base up without a gap: its top, or its empty base.
    for (int c = 0; c < plan.kolumner; ++c) {
        const int bas = c * kPlatserPerKolumn;
        const bool tomOvan = TomLucka(luckor, bas + 1);
        if (luckor[bas].Tom()) {
            kolumn(bas, false, tomOvan);
            if (bas <= sistaPlats && tomOvan) {
                m.platsKlass[m.antalTommaPlatser] = enPerKlass ? 0 : -1;
                m.tommaPlatser[m.antalTommaPlatser++] = bas;
            }
            continue;
        }
        int topp = bas;
        while (topp < bas + kPlatserPerKolumn - 1 && !luckor[topp + 1].Tom())
            ++topp;
        if (TomLucka(luckor, topp + 1))
            kolumn(topp, true, true);
    }
    // After the reserve piles, which never take a card: the free cells and foundations (and
    // whatever else a plan puts there), where a filled run's top and an empty cell or
    // foundation base may take one.
    int nastaGrund = plan.forstaGrund;
    const int efterReserver = (plan.kolumner + plan.reserver) * kPlatserPerKolumn;
    for (int j = efterReserver; j < plan.forstaLek; ++j) {
        while (nastaGrund < j)
            nastaGrund += plan.grundSteg;
        const bool iGrund = j >= plan.forstaGrund && j <= sistaGrund;
        const bool grund = iGrund && j == nastaGrund;
        if (!luckor[j].Tom()) {
            int topp = j;
            while (topp + 1 < storlek && !luckor[topp + 1].Tom())
                ++topp;
            if (topp + 1 < storlek && topp >= plan.dropGrundFran && topp <= plan.dropGrundTill)
                m.grundToppar[m.antalGrundToppar++] = topp;
            j = topp;
            continue;
        }
        if (iGrund && !grund) { // nothing above a foundation's top takes a card
            j = std::min(nastaGrund, sistaGrund + 1) - 1;
            continue;
        }
        const bool tomOvan = TomLucka(luckor, j + 1);
        if (grund && j >= plan.dropGrundFran && j <= plan.dropGrundTill) {
            m.grundKlass[m.antalTommaGrunder] =
                enPerKlass && !(nioPar && j == plan.forstaGrund) ? 2 : -1;
            m.tommaGrunder[m.antalTommaGrunder++] = j;
        }
        if (j <= sistaPlats && tomOvan && Fricell(plan, j)) {
            int klass = nioPar && j == kForstaFricell ? -1 : 1;
            m.platsKlass[m.antalTommaPlatser] = enPerKlass ? klass : -1;
            m.tommaPlatser[m.antalTommaPlatser++] = j;
        }
    }
    return m;
}

// PassarPaKolumn on a column's top as the places hold it.
bool PassarPaTopp(const Plan& plan, const Malen::Kolumn& under, const Kort& kort) {
    if (under.valor != kort.KortValor() + 1)
        return false;
    if (plan.sammaSvit)
        return under.farg == kort.KortFarg();
    return under.svart != kort.SvartFarg();
}

// The two cards follow each other in a run told by colour (as GiltigRad tells it).
bool FallerIFarg(const Kort& under, const Kort& kort) {
    return kort.KortValor() == under.KortValor() - 1 && kort.SvartFarg() != under.SvartFarg();
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
    unsigned klasser = 0; // the classes of empty places listed for this card
    auto ny = [&](int klass) {
        if (klass < 0)
            return true;
        const unsigned bit = 1u << klass;
        const bool forst = (klasser & bit) == 0;
        klasser |= bit;
        return forst;
    };
    if (k.KortValor() == 1)
        for (int i = 0; i < m.antalTommaGrunder; ++i)
            if (ny(m.grundKlass[i]))
                LaggTillNy(ut, borjan, KortDrag(forsta, m.tommaGrunder[i]));
    for (int i = 0; i < m.antalKolumner; ++i)
        if (m.kolumner[i].topp && PassarPaTopp(plan, m.kolumner[i], k))
            LaggTillNy(ut, borjan, KortDrag(forsta, m.kolumner[i].j + 1));
    for (int i = 0; i < m.antalTommaPlatser; ++i)
        if (ny(m.platsKlass[i]))
            LaggTillNy(ut, borjan, KortDrag(forsta, m.tommaPlatser[i]));
}

// A run's places: every one a drop reaches, and the one a click sends it to.
void RadensDrag(const Plan& plan, const std::vector<Lucka>& luckor, const Malen& m, int fria,
                int forsta, int topp, std::vector<Drag>& ut) {
    const int n = topp - forsta + 1;
    const std::size_t borjan = ut.size();
    const Kort& f = luckor[forsta].GeKort();
    bool tomKolumn = false; // a move of the run into an empty column is listed
    if (GiltigRad(plan, luckor, forsta, topp, true))
        for (int i = 0; i < m.antalKolumner; ++i) {
            const Malen::Kolumn& k = m.kolumner[i];
            if (k.topp && PassarPaTopp(plan, k, f)) {
                ut.push_back(RadDragMot(forsta, n, {k.j, k.j + 1}));
            } else if (!k.topp && n - 1 <= fria - 1 && !(m.enPerKlass && tomKolumn)) {
                ut.push_back(RadDragMot(forsta, n, {k.j, k.j}));
                tomKolumn = true;
            }
        }
    if (!GiltigRad(plan, luckor, forsta, topp, false))
        return;
    int kvar = fria;
    for (int i = 0; i < m.antalKolumner; ++i) {
        const Malen::Kolumn& k = m.kolumner[i];
        if (k.topp && PassarPaTopp(plan, k, f)) {
            LaggTillNy(ut, borjan, RadDragMot(forsta, n, {k.j, k.j + 1}));
            return;
        }
        if (!k.topp && k.tomOvan && n - 1 <= --kvar) {
            if (!(m.enPerKlass && tomKolumn))
                LaggTillNy(ut, borjan, RadDragMot(forsta, n, {k.j, k.j}));
            return;
        }
    }
}

// A card's code as KortKod writes it (suit · 13 + value, 1..52) told apart again.
struct KodTabell {
    std::array<std::int8_t, 53> valor{};
    std::array<std::int8_t, 53> farg{};
    std::array<bool, 53> svart{};
    constexpr KodTabell() {
        for (int k = 1; k <= 52; ++k) {
            valor[k] = static_cast<std::int8_t>((k - 1) % kNivaer + 1);
            farg[k] = static_cast<std::int8_t>((k - 1) / kNivaer);
            svart[k] = farg[k] == KLOVER || farg[k] == SPADER;
        }
    }
};
constexpr KodTabell kKod;

std::uint8_t Kod(const Lucka& lucka) {
    const Kort& k = lucka.GeKort();
    return static_cast<std::uint8_t>(kNivaer * k.KortFarg() + k.KortValor());
}

// How many cards each of Freecell's eight columns holds: its cards lie from its base up.
void KolumnLangder(const std::vector<Lucka>& l, std::array<int, kKolumner>& langd) {
    for (int c = 0; c < kKolumner; ++c) {
        const Lucka* p = l.data() + c * kPlatserPerKolumn;
        int n = 0;
        while (n < kPlatserPerKolumn && !p[n].Tom())
            ++n;
        langd[c] = n;
    }
}

// The two codes follow each other in a run told by colour (as FallerIFarg).
bool KoderFaller(std::uint8_t under, std::uint8_t kort) {
    return kKod.valor[kort] == kKod.valor[under] - 1 && kKod.svart[kort] != kKod.svart[under];
}

// Freecell's shape: eight columns and up to four free cells with nothing between them and
// four foundations of thirteen, the deck dealt out, runs told by alternating colour, the
// empty columns and free cells counted as free places. A search lists its moves there
// without walking the places: every place a card can go to is known from a few arrays.
bool FricellsForm(const Plan& plan, const std::vector<Lucka>& luckor) {
    return plan.kolumner == kKolumner && plan.reserver == 0 && plan.friceller <= 4 &&
           !plan.svitFlagga && !plan.sammaSvit && !plan.kolumnOchTomIEtt &&
           plan.rakning == FriRakning::KolumnerOchFriceller && plan.grundSteg == kNivaer &&
           plan.sistaTraff < 0 && plan.forstaGrund == kForstaFricell + 2 * plan.friceller &&
           plan.dropGrundFran == plan.forstaGrund && plan.dropGrundTill == SistaGrund(plan) &&
           plan.forstaLek == SistaGrund(plan) + 1 && luckor[plan.forstaLek].Tom();
}

// More moves than a table of Freecell's shape can have: sixteen cards with at most five
// places each, and at most twelve runs in each column with three places each.
constexpr std::size_t kMestFricellsDrag = 16 * 5 + kKolumner * 12 * 3;

// ListaDrag's moves one per class of empty place, in its order, on a table of Freecell's
// shape: the piles in slot order (each column's runs longest first, then its top card; the
// free cells; the foundations' tops), and each card's or run's places in the order the
// drop tries them (home, an empty foundation base, the columns left to right, an empty
// column, a free cell). Only one empty place of each kind is listed: the key does not tell
// them apart. A run can move only onto a column (never a free cell), and the click finds no
// place a drop does not.
void FricellsDrag(const Plan& plan, const std::vector<Lucka>& l, std::vector<Drag>& ut) {
    std::array<int, kKolumner> langd;
    KolumnLangder(l, langd);
    std::array<int, 53> kolumnMed; // the column whose top card this is
    kolumnMed.fill(-1);
    int forstaTomma = -1;
    int fria = 0;
    for (int c = 0; c < kKolumner; ++c) {
        const int n = langd[c];
        if (n == 0) {
            ++fria;
            if (forstaTomma < 0)
                forstaTomma = c;
        } else {
            kolumnMed[Kod(l[c * kPlatserPerKolumn + n - 1])] = c;
        }
    }
    int forstaTomCell = -1;
    for (int i = 0; i < plan.friceller; ++i)
        if (l[kForstaFricell + 2 * i].Tom()) {
            ++fria;
            if (forstaTomCell < 0)
                forstaTomCell = kForstaFricell + 2 * i;
        }
    // Where each suit's next card goes home (-1: nowhere), and the first empty base.
    std::array<int, 4> hem{-1, -1, -1, -1};
    std::array<int, 4> hemValor{};
    std::array<int, 4> grundLangd{};
    int tomGrund = -1;
    for (int g = 0; g < 4; ++g) {
        const int bas = plan.forstaGrund + g * kNivaer;
        int n = 0;
        while (n < kNivaer && !l[bas + n].Tom())
            ++n;
        grundLangd[g] = n;
        if (n == 0) {
            if (tomGrund < 0)
                tomGrund = bas;
        } else if (n < kNivaer) {
            const int farg = l[bas].GeKort().KortFarg();
            hem[farg] = bas + n;
            hemValor[farg] = n + 1;
        }
    }
    thread_local std::vector<Drag> buf(kMestFricellsDrag);
    Drag* p = buf.data();
    auto tillKolumn = [&](int c) { return c * kPlatserPerKolumn + langd[c]; };
    // The columns whose tops a card of value v and this colour fits on, left to right.
    auto passar = [&](int v, bool svart, int(&c)[2]) {
        c[0] = c[1] = -1;
        if (v >= kNivaer)
            return;
        const int f = svart ? HJARTER : KLOVER;
        int a = kolumnMed[f * kNivaer + v + 1];
        int b = kolumnMed[(f + 1) * kNivaer + v + 1];
        if (a > b)
            std::swap(a, b);
        c[0] = a;
        c[1] = b;
    };
    // Built in where it is called: a call cost about a tenth of the listing's instructions.
    auto kortet = [&](int fran, std::uint8_t kod) __attribute__((always_inline)) {
        const int v = kKod.valor[kod];
        const int farg = kKod.farg[kod];
        if (hem[farg] >= 0 && hemValor[farg] == v)
            *p++ = {DragSlag::Kort, fran, 1, -1, hem[farg]};
        if (v == 1 && tomGrund >= 0)
            *p++ = {DragSlag::Kort, fran, 1, -1, tomGrund};
        int c[2];
        passar(v, kKod.svart[kod], c);
        for (int q : c)
            if (q >= 0)
                *p++ = {DragSlag::Kort, fran, 1, -1, tillKolumn(q)};
        if (forstaTomma >= 0)
            *p++ = {DragSlag::Kort, fran, 1, -1, forstaTomma * kPlatserPerKolumn};
        if (forstaTomCell >= 0)
            *p++ = {DragSlag::Kort, fran, 1, -1, forstaTomCell};
    };
    auto raden = [&](int fran, int n, std::uint8_t kod) {
        int c[2];
        passar(kKod.valor[kod], kKod.svart[kod], c);
        const int tom = n - 1 <= fria - 1 ? forstaTomma : -1;
        auto pa = [&](int q) {
            const int till = tillKolumn(q);
            *p++ = {DragSlag::Rad, fran, n, q == tom ? till : till - 1, till};
        };
        bool tomGjord = tom < 0;
        for (int q : c) {
            if (q < 0)
                continue;
            if (!tomGjord && tom < q) {
                pa(tom);
                tomGjord = true;
            }
            pa(q);
        }
        if (!tomGjord)
            pa(tom);
    };
    for (int c = 0; c < kKolumner; ++c) {
        if (langd[c] == 0)
            continue;
        const int bas = c * kPlatserPerKolumn;
        const int topp = bas + langd[c] - 1;
        const int lagst = std::max(bas, topp - fria);
        std::uint8_t kod = Kod(l[topp]);
        const std::uint8_t toppKod = kod;
        int r = topp;
        while (r > lagst) {
            const std::uint8_t under = Kod(l[r - 1]);
            if (!KoderFaller(under, kod))
                break;
            kod = under;
            --r;
        }
        for (int i = r; i < topp; ++i)
            raden(i, topp - i + 1, Kod(l[i]));
        kortet(topp, toppKod);
    }
    for (int i = 0; i < plan.friceller; ++i)
        if (!l[kForstaFricell + 2 * i].Tom())
            kortet(kForstaFricell + 2 * i, Kod(l[kForstaFricell + 2 * i]));
    // A full foundation followed by one that holds cards is one pile with it: its king
    // is not a top and does not move.
    for (int g = 0; g < 4; ++g)
        if (grundLangd[g] > 0 && (grundLangd[g] < kNivaer || g == 3 || grundLangd[g + 1] == 0)) {
            const int topp = plan.forstaGrund + g * kNivaer + grundLangd[g] - 1;
            kortet(topp, Kod(l[topp]));
        }
    ut.assign(buf.data(), p);
}

} // namespace

void ListaDrag(const Stallning& bord, std::vector<Drag>& ut, bool enPerKlass) {
    const Plan& plan = *bord.plan;
    const std::vector<Lucka>& luckor = bord.luckor;
    if (enPerKlass && FricellsForm(plan, luckor)) {
        FricellsDrag(plan, luckor, ut);
        return;
    }
    ut.clear();
    // A click finds one of the places a drop finds when its foundations are among the drop's.
    if (plan.forstaGrund < plan.dropGrundFran || SistaGrund(plan) > plan.dropGrundTill) {
        ut = LagligaDrag(bord);
        return;
    }
    const Malen m = MalenPa(plan, luckor, enPerKlass);
    const int fria = FriaPlatser(plan, luckor);
    const int sista = plan.sistaTraff < 0 ? plan.forstaLek - 1 : plan.sistaTraff;
    const int antalLuckor = static_cast<int>(luckor.size());
    // The moves of the pile whose first card lies at `forsta`; its top, where it ends.
    auto hogen = [&](int forsta) {
        int topp = forsta;
        while (topp + 1 < antalLuckor && !luckor[topp + 1].Tom())
            ++topp;
        // No run longer than the free places allow moves, and where runs are told by colour
        // alone a run holds whenever every two cards in it do, so none starts below the
        // first pair that breaks: the cards below are passed over.
        int radStart = std::max(forsta, topp - fria);
        if (!plan.svitFlagga) {
            int r = topp;
            while (r > radStart && FallerIFarg(luckor[r - 1].GeKort(), luckor[r].GeKort()))
                --r;
            radStart = r;
        }
        for (int i = radStart; i <= std::min(topp, sista); ++i) {
            if (i == topp)
                KortetsDrag(plan, luckor, m, i, ut);
            else if (!FricellsReserv(plan, i))
                RadensDrag(plan, luckor, m, fria, i, topp, ut);
        }
        return topp;
    };
    const int efterReserver = (plan.kolumner + plan.reserver) * kPlatserPerKolumn;
    const int sistaGrund = SistaGrund(plan);
    for (int j = 0; j <= sista;) {
        if (!luckor[j].Tom()) {
            j = hogen(j) + 1;
        } else if (j < efterReserver) {
            // A column's or reserve pile's cards lie from its base up without a gap.
            j += kPlatserPerKolumn - j % kPlatserPerKolumn;
        } else if (j > plan.forstaGrund && j <= sistaGrund) {
            // Nothing lies above a foundation's top: on to the next foundation's base.
            j = std::min(sistaGrund + 1,
                         plan.forstaGrund +
                             ((j - plan.forstaGrund) / plan.grundSteg + 1) * plan.grundSteg);
        } else {
            ++j;
        }
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

// The piles of `antal` × 22 slots from `forstaLucka`, each its cards up to the first empty slot
// and a '|', in an order that does not depend on where each pile stands, into `ut`; how many
// bytes.
std::size_t SorteradeHogar(const std::vector<Lucka>& luckor, int forstaLucka, int antal, char* ut) {
    // No card lies in two piles, so the piles' first cards alone order them as their whole
    // bytes would: the empty piles first, then by the first card, found through a mask of
    // the first cards' codes.
    std::array<std::int8_t, 53> hogMed; // the pile whose first card this is
    std::uint64_t forsta = 0;
    std::size_t n = 0;
    for (int h = 0; h < antal; ++h) {
        const Lucka& bas = luckor[static_cast<std::size_t>(forstaLucka + h * kPlatserPerKolumn)];
        if (bas.Tom()) {
            ut[n++] = '|';
            continue;
        }
        const int kod = kNivaer * bas.GeKort().KortFarg() + bas.GeKort().KortValor();
        hogMed[static_cast<std::size_t>(kod)] = static_cast<std::int8_t>(h);
        forsta |= std::uint64_t{1} << kod;
    }
    for (; forsta != 0; forsta &= forsta - 1) {
        const int h = hogMed[static_cast<std::size_t>(std::countr_zero(forsta))];
        const Lucka* l = luckor.data() + forstaLucka + h * kPlatserPerKolumn;
        for (const Lucka* slut = l + kPlatserPerKolumn; l != slut && !l->Tom(); ++l)
            ut[n++] = static_cast<char>(kNivaer * l->GeKort().KortFarg() + l->GeKort().KortValor());
        ut[n++] = '|';
    }
    return n;
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
    const int sista = SistaKolumnLucka(plan);
    return d.till <= sista && d.fran <= sista && d.till % kPlatserPerKolumn != 0 &&
           d.fran % kPlatserPerKolumn != 0 &&
           PassarPaKolumn(plan, luckor[d.fran - 1].GeKort(), luckor[d.fran].GeKort());
}

// The lowest card left beneath a move's cards in its column (0 when the column empties):
// digging towards the low cards first brings them home sooner. Only the cards below a
// move's first card are read, and once for the moves of one card or run (listed together).
class LagstUnder {
public:
    LagstUnder(const Plan& p, const std::vector<Lucka>& l) : plan(p), luckor(l) {}
    int For(const Drag& d) {
        if (d.fran > SistaKolumnLucka(plan))
            return HogBas(plan, d.fran) ? 0 : 14;
        if (d.fran == senastFran)
            return senast;
        const int bas = d.fran - d.fran % kPlatserPerKolumn;
        int lagsta = bas == d.fran ? 0 : 14;
        for (int i = bas; i < d.fran; ++i)
            lagsta = std::min(lagsta, luckor[i].GeKort().KortValor());
        senastFran = d.fran;
        senast = lagsta;
        return lagsta;
    }

private:
    const Plan& plan;
    const std::vector<Lucka>& luckor;
    int senastFran = -1;
    int senast = 0;
};

int Rang(const Plan& plan, const std::vector<Lucka>& luckor, const Drag& d, LagstUnder& lagst) {
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
    return rang * 16 + lagst.For(d);
}

// The parts of the column games' measure of a table (Kunskap::Avstand), with what the
// first k cards of each pile count, so that a move's measure follows from the cards it
// moves.
struct Matt {
    int over = 0;   // cards lying above a lower card in their pile
    int tomma = 0;  // empty piles
    int celler = 0; // free cells taken
    int hemma = 0;  // cards on the foundations
    std::array<int, 16> langd{};
    // Of each pile's first k cards, k up to its length (written by MattPa, not before): how
    // many lie above a lower one; and the lowest card of each pile (14: none).
    std::array<std::array<std::int8_t, kPlatserPerKolumn + 1>, 16> overUnder;
    std::array<std::int8_t, 16> lagst;
    int Varde() const { return 3 * (52 - hemma) + 2 * over + celler - 3 * tomma; }
};

Matt MattPa(const Plan& plan, const std::vector<Lucka>& l) {
    Matt m;
    for (int c = 0; c < plan.kolumner + plan.reserver; ++c) {
        int lagst = 14;
        int over = 0;
        const int bas = c * kPlatserPerKolumn;
        if (l[bas].Tom())
            ++m.tomma;
        int p = 0;
        m.overUnder[c][0] = 0;
        for (; p < kPlatserPerKolumn && !l[bas + p].Tom(); ++p) {
            int v = l[bas + p].GeKort().KortValor();
            if (v > lagst)
                ++over;
            else
                lagst = v;
            m.overUnder[c][p + 1] = static_cast<std::int8_t>(over);
        }
        m.lagst[c] = static_cast<std::int8_t>(lagst);
        m.langd[c] = p;
        m.over += over;
    }
    for (int i = 0; i < plan.friceller; ++i)
        if (!l[kForstaFricell + 2 * i].Tom())
            ++m.celler;
    for (int f = 0; f < 4; ++f) {
        const int bas = plan.forstaGrund + f * plan.grundSteg;
        int n = 0;
        while (n < kNivaer && !l[bas + n].Tom())
            ++n;
        m.hemma += n;
    }
    return m;
}

// The measure after a card or run moves off the top of a pile, a free cell or a
// foundation onto a pile's top, into a free cell or home; false for any other move.
bool MattEfter(const Plan& plan, const std::vector<Lucka>& l, const Matt& m, const Drag& d,
               int& varde) {
    if (d.slag != DragSlag::Kort && d.slag != DragSlag::Rad)
        return false;
    const int n = d.slag == DragSlag::Rad ? d.antal : 1;
    const int hogar = (plan.kolumner + plan.reserver) * kPlatserPerKolumn;
    const bool franGrund = d.fran >= plan.forstaGrund && d.fran <= SistaGrund(plan);
    const bool tillGrund = d.till >= plan.forstaGrund && d.till <= SistaGrund(plan);
    Matt e; // only the totals
    e.over = m.over;
    e.tomma = m.tomma;
    e.celler = m.celler;
    e.hemma = m.hemma;
    if (d.fran < hogar) {
        const int h = d.fran / kPlatserPerKolumn;
        const int k = d.fran % kPlatserPerKolumn;
        if (k + n != m.langd[h])
            return false;
        e.over += m.overUnder[h][k] - m.overUnder[h][m.langd[h]];
        if (k == 0)
            ++e.tomma;
    } else if (Fricell(plan, d.fran)) {
        --e.celler;
    } else if (franGrund && n == 1) {
        --e.hemma;
    } else {
        return false;
    }
    if (d.till < hogar) {
        const int h = d.till / kPlatserPerKolumn;
        const int k = d.till % kPlatserPerKolumn;
        if (k != m.langd[h] || k + n > kPlatserPerKolumn)
            return false;
        if (k == 0)
            --e.tomma;
        int lagst = m.lagst[h]; // k is the pile's length
        for (int i = 0; i < n; ++i) {
            const int v = l[d.fran + i].GeKort().KortValor();
            if (v > lagst)
                ++e.over;
            else
                lagst = v;
        }
    } else if (Fricell(plan, d.till) && n == 1) {
        ++e.celler;
    } else if (tillGrund && n == 1) {
        ++e.hemma;
    } else {
        return false;
    }
    varde = e.Varde();
    return true;
}

// How many cards of each suit are home, from each foundation's own cards: an empty one
// names no suit, and a full one is not read on into the next.
std::array<int, 4> Hemma(const Plan& plan, const std::vector<Lucka>& l) {
    std::array<int, 4> hemma{};
    for (int f = 0; f < 4; ++f) {
        const int bas = plan.forstaGrund + f * plan.grundSteg;
        int n = 0;
        while (n < kNivaer && !l[bas + n].Tom())
            ++n;
        if (n > 0)
            hemma[static_cast<std::size_t>(l[bas].GeKort().KortFarg())] = n;
    }
    return hemma;
}

class Kunskap final : public SokKunskap {
public:
    bool ListaDrag(const SpelBord& b, std::vector<Drag>& dragen) const override {
        // Of the moves of one card or run into interchangeable empty places only the first:
        // the others reach the same key (Klass, Nyckel).
        KolumnRegler::ListaDrag(static_cast<const Stallning&>(b), dragen, true);
        return true;
    }

    // A card home when no card that could lie on it is still out of its foundation (the
    // two one lower of the other colour, or in Eight off the one lower of its suit), and an
    // ace or a two always. Usually right, not always: a card taken back off a foundation
    // may still be wanted on it.
    int TroligtDrag(const SpelBord& b, const std::vector<Drag>& dragen) const override {
        const Plan& plan = *static_cast<const Stallning&>(b).plan;
        const std::vector<Lucka>& l = b.luckor;
        std::array<int, 4> hemma{};
        bool hemmaLast = false; // read at the first move home that needs it
        for (std::size_t i = 0; i < dragen.size(); ++i) {
            const Drag& d = dragen[i];
            if (d.slag != DragSlag::Kort || d.fran >= plan.forstaGrund ||
                d.till < plan.forstaGrund || d.till > SistaGrund(plan))
                continue;
            const Kort& k = l[d.fran].GeKort();
            int v = k.KortValor();
            bool troligt = v <= 2;
            if (!troligt && !hemmaLast) {
                hemma = Hemma(plan, l);
                hemmaLast = true;
            }
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
    // A card or run moved straight back to where it came from: every move of these games
    // takes its cards from slot to slot and does nothing else.
    bool GarTillbaka(const Drag& fore, const Drag& drag) const override {
        return (drag.slag == DragSlag::Kort || drag.slag == DragSlag::Rad) &&
               drag.slag == fore.slag && drag.antal == fore.antal && drag.fran == fore.till &&
               drag.till == fore.fran;
    }
    bool HarTroligaDrag() const override { return true; }
    int Ordningar(const SpelBord& b) const override {
        return static_cast<const Stallning&>(b).plan->sokOrdningar;
    }

    // Cards not yet home weigh most, then the cards that lie above a lower card in their
    // pile (each must move before that one can go home), then the free cells taken; an
    // empty column brings the table nearer.
    int Avstand(const SpelBord& b) const override {
        return MattPa(*static_cast<const Stallning&>(b).plan, b.luckor).Varde();
    }

    // The same measure after each move, from the table's parts and the cards the move
    // takes from one place to another, without making it.
    bool AvstandEfter(const SpelBord& b, const std::vector<Drag>& dragen,
                      std::vector<int>& avstand) const override {
        const Plan& plan = *static_cast<const Stallning&>(b).plan;
        const Matt m = MattPa(plan, b.luckor);
        avstand.clear();
        for (const Drag& d : dragen) {
            int varde = 0;
            if (!MattEfter(plan, b.luckor, m, d, varde))
                return false;
            avstand.push_back(varde);
        }
        return true;
    }

    // Nothing off the foundations, no card from one free cell to another, none from a card it
    // could be built on to another such card (unless the card it leaves can go home; a run
    // where the plan says so), no whole pile into an empty column, and of the runs of one
    // column into an empty column only the longest.
    void GallraHastigt(const SpelBord& b, std::vector<Drag>& dragen) const override {
        const Plan& plan = *static_cast<const Stallning&>(b).plan;
        const std::vector<Lucka>& l = b.luckor;
        auto tomKolumn = [&](const Drag& d) { return KolumnBas(plan, d.till) && l[d.till].Tom(); };
        // Read only when a move needs it.
        std::array<int, 4> hemma{};
        bool hemmaLast = false;
        auto GarHem = [&](const Kort& k) {
            if (!hemmaLast) {
                hemma = Hemma(plan, l);
                hemmaLast = true;
            }
            return k.KortValor() == hemma[k.KortFarg()] + 1;
        };
        // The longest run of each column that may go to an empty column.
        std::array<int, 16> langst{};
        for (const Drag& d : dragen)
            if (tomKolumn(d) && d.fran <= SistaKolumnLucka(plan)) {
                int& n = langst[static_cast<std::size_t>(d.fran / kPlatserPerKolumn)];
                n = std::max(n, d.antal);
            }
        auto bort = [&](const Drag& d) {
            if (d.fran >= plan.forstaGrund && d.fran <= SistaGrund(plan))
                return true;
            if (Fricell(plan, d.fran) && Fricell(plan, d.till))
                return true;
            if ((d.slag == DragSlag::Kort || !plan.sidledsRader) && Sidleds(plan, l, d) &&
                !GarHem(l[d.fran - 1].GeKort()))
                return true;
            if (!tomKolumn(d))
                return false;
            if (HogBas(plan, d.fran))
                return true;
            return d.fran <= SistaKolumnLucka(plan) &&
                   langst[static_cast<std::size_t>(d.fran / kPlatserPerKolumn)] > d.antal;
        };
        // Kept in their order, as std::erase_if would, with the test built in.
        std::size_t kvar = 0;
        for (std::size_t i = 0; i < dragen.size(); ++i)
            if (!bort(dragen[i]))
                dragen[kvar++] = dragen[i];
        dragen.resize(kvar);
    }

    // Where the columns stand does not matter to any move, nor which free cell holds a card,
    // nor which foundation a suit was built on: the cards not in a column, reserve pile or
    // free cell are on the foundations. (Eight off keys its own tables.)
    void Nyckel(const SpelBord& b, std::string& nyckel) const override {
        const Plan& plan = *static_cast<const Stallning&>(b).plan;
        const std::vector<Lucka>& l = b.luckor;
        // Every pile's cards and a mark, and each free cell's two places.
        std::array<char, 16 * (kPlatserPerKolumn + 1) + 2 * 8> bytes;
        std::size_t n = SorteradeHogar(l, 0, plan.kolumner, bytes.data());
        n += SorteradeHogar(l, plan.kolumner * kPlatserPerKolumn, plan.reserver, bytes.data() + n);
        std::array<int, 8> celler;
        const int antal = plan.friceller;
        for (int i = 0; i < antal; ++i) {
            const int cell = kForstaFricell + 2 * i;
            celler[i] = static_cast<unsigned char>(KortKod(l[cell])) * 256 +
                        static_cast<unsigned char>(KortKod(l[cell + 1]));
            for (int j = i; j > 0 && celler[j - 1] > celler[j]; --j)
                std::swap(celler[j - 1], celler[j]);
        }
        for (int i = 0; i < antal; ++i) {
            bytes[n++] = static_cast<char>(celler[i] / 256);
            bytes[n++] = static_cast<char>(celler[i] % 256);
        }
        nyckel.append(bytes.data(), n);
        // The deck holds every card before the deal and none after it (no move takes a card
        // there): with its first place empty it adds nothing to the key.
        if (!l[plan.forstaLek].Tom())
            KortOchPlatser(l, plan.forstaLek, plan.antalLuckor - 1, nyckel);
    }

    // Foundations first, then cards off the free cells, then onto cards, then into empty
    // places, and last off the foundations. Of the moves of one card or run into
    // interchangeable empty places only the first is kept: the others reach the same key.
    void Ordna(const SpelBord& b, std::vector<Drag>& dragen) const override {
        const Plan& plan = *static_cast<const Stallning&>(b).plan;
        const std::vector<Lucka>& l = b.luckor;
        // Kept from call to call: a search orders the moves of every table it opens.
        thread_local std::vector<Drag> kopia;
        thread_local std::vector<std::uint32_t> ordning;
        thread_local std::vector<Drag> klassade; // the kept moves into a class of places
        kopia.assign(dragen.begin(), dragen.end());
        ordning.clear();
        if (klassade.size() < kopia.size())
            klassade.resize(kopia.size());
        const auto klassadeBorjan = klassade.begin();
        auto klassadeSlut = klassadeBorjan;
        LagstUnder lagst(plan, l);
        for (std::size_t i = 0; i < kopia.size(); ++i) {
            const Drag& d = kopia[i];
            const int klass = Klass(plan, l, d.till);
            if (klass >= 0) {
                Drag k = d;
                k.till = klass; // only the class is compared
                if (std::find_if(klassadeBorjan, klassadeSlut, [&](const Drag& o) {
                        return o.fran == k.fran && o.antal == k.antal && o.till == k.till;
                    }) != klassadeSlut)
                    continue;
                *klassadeSlut++ = k;
            }
            // The place in the list breaks ties, as a stable sort would, without its buffer.
            ordning.push_back(static_cast<std::uint32_t>(Rang(plan, l, d, lagst)) * 4096 +
                              static_cast<std::uint32_t>(i));
        }
        std::sort(ordning.begin(), ordning.end());
        dragen.resize(ordning.size());
        for (std::size_t i = 0; i < ordning.size(); ++i)
            dragen[i] = kopia[ordning[i] % 4096];
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
    // has this one. (Eight off, whose first foundation base counts as a free place, has its
    // own knowledge without this.)
    int SakertDrag(const SpelBord& b, const std::vector<Drag>& dragen) const override {
        const Plan& plan = *static_cast<const Stallning&>(b).plan;
        return ForstaDragSom(dragen, [&](const Drag& d) {
            return d.slag == DragSlag::Kort && d.fran < plan.forstaGrund &&
                   d.till >= plan.forstaGrund && d.till <= SistaGrund(plan) &&
                   b.luckor[d.fran].GeKort().KortValor() <= 2;
        });
    }
};

} // namespace

const SokKunskap& Kunskapen() {
    return KunskapAv<Kunskap>();
}

} // namespace KolumnRegler
