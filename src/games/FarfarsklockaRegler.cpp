#include "games/FarfarsklockaRegler.h"

#include "cards/Flyttar.h"
#include "cards/Luckor.h"
#include "games/LekRegler.h"

#include <algorithm>
#include <array>
#include <string>

namespace FarfarsklockaRegler {

namespace {

using HogRegler::Plats;

const LekRegler::Lek kLeken{kForstaLek, kSistaLek};

// Where each clock pile stands, by its hour: the column, and the row as the card height's
// share below a given line (m, v or 2v).
struct Timme {
    int kolumn;
    int rad;      // 0: m, 1: v, 2: 2v
    double andel; // of the card height
};
constexpr std::array<Timme, kAntalKlockhogar> kTimmar{{
    {4, 2, 0.3}, // 5 o'clock
    {3, 2, 0.6}, // 6
    {2, 2, 0.3}, // 7
    {1, 2, 0.0}, // 8
    {0, 1, 0.3}, // 9
    {1, 0, 0.6}, // 10
    {2, 0, 0.3}, // 11
    {3, 0, 0.0}, // 12
    {4, 0, 0.3}, // 1
    {5, 0, 0.6}, // 2
    {6, 1, 0.3}, // 3
    {5, 2, 0.0}, // 4
}};

// The places that take `kort`, in the order a drop searches them: the clock tops, then the
// pile slots in order, where an empty base takes any card and a top takes the next lower.
std::vector<Plats> Platser(const std::vector<Lucka>& luckor, const std::vector<int>& klockan,
                           const std::vector<int>& hogarna, const Kort& kort) {
    std::vector<Plats> platser;
    for (int t : klockan)
        if (KlockanTar(luckor[t].GeKort(), kort))
            platser.push_back({t, t + 1});
    for (int i : hogarna)
        if (luckor[i].Tom() || HogenTar(luckor[i].GeKort(), kort))
            platser.push_back({i, luckor[i].Tom() ? i : i + 1});
    return platser;
}

// The clock's tops: each clock pile keeps its starting card.
std::vector<int> KlockansToppar(const std::vector<Lucka>& luckor) {
    return HogRegler::Toppar(luckor, kForstaKlocka, kSistaKlocka);
}

// The pile slots a card may land on or in: the tops and the empty bases, in slot order.
std::vector<int> HogarnasPlatser(const std::vector<Lucka>& luckor) {
    std::vector<int> platser;
    for (int i = kForstaHog; i <= kSistaHog; ++i)
        if (Topp(luckor, i) || (ArHogBas(i) && luckor[i].Tom()))
            platser.push_back(i);
    return platser;
}

// Where a click sends the card among the places that take it: the clock first, then the
// first empty pile, then the first pile top.
int KlickTill(const std::vector<Lucka>& luckor, const std::vector<Plats>& platser) {
    if (!platser.empty() && platser.front().lucka <= kSistaKlocka)
        return platser.front().till;
    for (const Plats& p : platser)
        if (luckor[p.lucka].Tom())
            return p.till;
    return platser.empty() ? -1 : platser.front().till;
}

std::vector<Plats> PlatserFor(const std::vector<Lucka>& luckor, int fran) {
    return Platser(luckor, KlockansToppar(luckor), HogarnasPlatser(luckor), luckor[fran].GeKort());
}

} // namespace

Utlagg RaknaUtLuckor(std::vector<Lucka>& luckor, BRect bounds) {
    const int m = kMellanrum;
    Utlagg u;
    u.w = std::max(static_cast<int>((bounds.Width() - 4 * m) / 10.0f), kMinstaStorlek);
    u.h = std::max(static_cast<int>(bounds.Height() - 40.0f) / 6, kMinstaStorlek);
    const int cw = u.w;
    const int ch = u.h;
    const int bu = cw + m;
    const int bv = ch + m;
    const int halv = cw / 2;
    const int rader[3] = {m, bv, 2 * bv};

    for (int k = 0; k < kAntalKlockhogar; ++k) {
        const Timme& t = kTimmar[k];
        const double rad = rader[t.rad] + t.andel * ch;
        const int left = t.kolumn * bu + halv;
        for (int j = 0; j < kPlatserPerHog; ++j) {
            const int top = static_cast<int>(rad + 3 * j);
            luckor[KlockBas(k) + j].NyPos(HeltalsRuta(left, top, left + cw, top + ch));
        }
    }
    for (int p = 0; p < kAntalHogar; ++p)
        for (int j = 0; j < kPlatserPerHog; ++j) {
            const int left = m + p * bu;
            const int top = 4 * bv + m + 3 * j;
            luckor[HogBas(p) + j].NyPos(HeltalsRuta(left, top, left + cw, top + ch));
        }
    // The stock stands at eight card widths without the gaps between them.
    for (int i = 0; i <= kSistaLek - kForstaLek; ++i)
        luckor[kForstaLek + i].NyPos(HeltalsRuta(8 * cw + m, m + i, 9 * cw + m, ch + m + i));
    return u;
}

bool KlockanTar(const Kort& topp, const Kort& kort) {
    return kort.KortFarg() == topp.KortFarg() &&
           (kort.KortValor() == topp.KortValor() + 1 ||
            (kort.KortValor() == 1 && topp.KortValor() == 13));
}

bool HogenTar(const Kort& topp, const Kort& kort) {
    return kort.KortValor() == topp.KortValor() - 1 ||
           (kort.KortValor() == 13 && topp.KortValor() == 1);
}

int Traff(const std::vector<Lucka>& luckor, BPoint p) {
    return ToppVid(luckor, kForstaHog, kSistaHog, p);
}

int KlickMal(const std::vector<Lucka>& luckor, int fran) {
    return KlickTill(luckor, PlatserFor(luckor, fran));
}

int DropMal(const std::vector<Lucka>& luckor, int fran, BPoint q) {
    return HogRegler::DropTill(luckor, PlatserFor(luckor, fran), q);
}

void Skapa(Stallning& bord) {
    bord.luckor.assign(kForstaLek, Lucka(BRect(0, 0, 0, 0), false));
    bord.luckor.resize(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), true));
    // Only an empty pile, which takes any card, shows its outline.
    for (int i = 0; i < kAntalLuckor; ++i)
        bord.luckor[i].NyKantLinje(ArHogBas(i));
}

void LaggUtLeken(Stallning& bord) {
    LekRegler::NyGiv(bord);
    bord.antalUndo = 0;
    // Clock pile 0's card on top of the stock, pile 11's lowest of the twelve.
    for (int k = 0; k < kAntalKlockhogar; ++k)
        bord.luckor[kSistaLek - k].TaEmotKort(
            bord.kortlek.GeValtKort(kStartkort[k].farg, kStartkort[k].valor));
    bord.kortlek.Blanda();
    LekRegler::LaggILeken(bord, kForstaLek);
}

void DelaUt(Stallning& bord, Flygledare* flyg) {
    std::vector<int> mal;
    for (int k = 0; k < kAntalKlockhogar; ++k)
        mal.push_back(KlockBas(k));
    for (int p = 0; p < kAntalHogar; ++p)
        for (int j = 0; j < kKortPerHog; ++j)
            mal.push_back(HogBas(p) + j);
    LekRegler::DelaFranLeken(bord, kLeken, mal, flyg, HogRegler::kGivSteg);
}

std::vector<Drag> LagligaDrag(const Stallning& bord) {
    const std::vector<Lucka>& luckor = bord.luckor;
    std::vector<int> klockan = KlockansToppar(luckor);
    std::vector<int> hogarna = HogarnasPlatser(luckor);
    std::vector<Drag> drag;
    for (int fran : HogRegler::Toppar(luckor, kForstaHog, kSistaHog)) {
        std::vector<Plats> platser = Platser(luckor, klockan, hogarna, luckor[fran].GeKort());
        HogRegler::LaggTillKortDrag(drag, fran, KlickTill(luckor, platser), platser);
    }
    return drag;
}

void GorDrag(Stallning& bord, const Drag& drag, Flygledare* flyg) {
    FlyttaOchSpara(bord, drag.fran, drag.till, flyg, HogRegler::kFlyttSteg);
}

int Angra(Stallning& bord, Flygledare* flyg) {
    return AngraSenaste(bord, flyg, HogRegler::kAngraSteg);
}

bool KlarSpel(Stallning& bord) {
    for (int p = 0; p < kAntalHogar; ++p)
        if (!bord.luckor[HogBas(p)].Tom())
            return false;
    return true;
}

HiscoreResultat Resultat(const Stallning& bord) {
    return HiscoreResultat{AntalFyllda(bord.luckor, kForstaKlocka, kSistaKlocka), 1};
}

namespace {

std::string HogensKort(const std::vector<Lucka>& luckor, int p) {
    std::string kort;
    for (int i = HogBas(p); i < HogBas(p) + kPlatserPerHog && !luckor[i].Tom(); ++i)
        kort.push_back(KortKod(luckor[i]));
    return kort;
}

bool TillKlockan(const Drag& d) {
    return d.till <= kSistaKlocka;
}

class Kunskap final : public SokKunskap {
public:
    // How many cards each clock pile holds (it takes only its suit's next card, so that
    // tells its cards), then the eight piles in order of their cards: they play alike, each
    // built down regardless of suit and an empty one taking any card.
    void Nyckel(const SpelBord& b, std::string& nyckel) const override {
        const std::vector<Lucka>& luckor = b.luckor;
        for (int k = 0; k < kAntalKlockhogar; ++k) {
            int hojd = 0;
            while (hojd < kPlatserPerHog && !luckor[KlockBas(k) + hojd].Tom())
                ++hojd;
            nyckel.push_back(static_cast<char>(hojd));
        }
        std::array<std::string, kAntalHogar> hogar;
        for (int p = 0; p < kAntalHogar; ++p)
            hogar[static_cast<size_t>(p)] = HogensKort(luckor, p);
        std::sort(hogar.begin(), hogar.end());
        for (const std::string& hog : hogar) {
            nyckel += hog;
            nyckel.push_back(0);
        }
    }

    // The clock first, then the pile tops, and an empty pile last. Of a card's moves onto
    // empty piles one is kept: the piles being alike, the others make the same table.
    void Ordna(const SpelBord&, std::vector<Drag>& dragen) const override {
        int senaste = -1;
        std::erase_if(dragen, [&](const Drag& d) {
            if (!ArHogBas(d.till))
                return false;
            const bool igen = senaste == d.fran;
            senaste = d.fran;
            return igen;
        });
        auto rang = [](const Drag& d) { return TillKlockan(d) ? 0 : ArHogBas(d.till) ? 2 : 1; };
        std::stable_sort(dragen.begin(), dragen.end(),
                         [&](const Drag& a, const Drag& b) { return rang(a) < rang(b); });
    }

    // A card to the clock when no card one lower (the king below the ace) is left in the
    // piles: where it lies it could take nothing, so it only covers the cards under it,
    // and moving it about the piles does nothing the clock does not do better.
    int SakertDrag(const SpelBord& b, const std::vector<Drag>& dragen) const override {
        const std::vector<Lucka>& luckor = b.luckor;
        std::array<int, 14> iHogarna{};
        bool raknat = false;
        return ForstaDragSom(dragen, [&](const Drag& d) {
            if (!TillKlockan(d))
                return false;
            if (!raknat) {
                for (int j = kForstaHog; j <= kSistaHog; ++j)
                    if (!luckor[j].Tom())
                        ++iHogarna[static_cast<size_t>(luckor[j].GeKort().KortValor())];
                raknat = true;
            }
            const int v = luckor[d.fran].GeKort().KortValor();
            return iHogarna[static_cast<size_t>(v == 1 ? 13 : v - 1)] == 0;
        });
    }
};

} // namespace

const SpelRegler& Regler() {
    return SpeletsRegler<Stallning, Kunskap>();
}

} // namespace FarfarsklockaRegler

namespace FarfarsklockaRegler {

std::vector<Hog> HogTabell(const Stallning& /*bord*/) {
    std::vector<Hog> hogar;
    for (int k = 0; k < kAntalKlockhogar; ++k)
        hogar.push_back({HogSlag::Klocka, k + 1, KlockBas(k), KlockBas(k) + kPlatserPerHog - 1});
    for (int p = 0; p < kAntalHogar; ++p)
        hogar.push_back({HogSlag::Hog, p + 1, HogBas(p), HogBas(p) + kPlatserPerHog - 1});
    return hogar;
}

} // namespace FarfarsklockaRegler
