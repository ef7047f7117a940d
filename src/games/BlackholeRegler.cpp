#include "games/BlackholeRegler.h"

#include "cards/Flyttar.h"
#include "cards/Luckor.h"
#include "games/KolumnRegler.h"
#include "games/LekRegler.h"

#include <cstdlib>
#include <string>

namespace BlackholeRegler {

bool Passar(const Kort& kort, const Kort& halTopp) {
    int c = kort.KortValor();
    int t = halTopp.KortValor();
    return std::abs(c - t) == 1 || (c == 13 && t == 1) || (c == 1 && t == 13);
}

int HaletsNasta(const std::vector<Lucka>& luckor) {
    return ForstaTomma(luckor, kForstaHal, kSistaHal);
}

int HaletsTopp(const std::vector<Lucka>& luckor) {
    return LekTopp(luckor, kForstaHal, kSistaHal);
}

int KortUnder(const std::vector<Lucka>& luckor, BPoint p) {
    for (int i = kForstaSolfjader; i <= kSistaSolfjader; ++i)
        if (luckor[i].GePos().Contains(p) && Topp(luckor, i))
            return i;
    return -1;
}

Utlagg RaknaUtLuckor(std::vector<Lucka>& luckor, BRect bounds) {
    // The grid of the column games: h = (height − 40) / 11, w = (width − 20) / 10.
    const KolumnRegler::Rutnat rutnat = KolumnRegler::KolumnRutnat(bounds);
    const int m = rutnat.m;
    const int v = rutnat.h + m;
    for (int f = 0; f < kSolfjadrar; ++f) {
        const bool ovre = f < kOvreSolfjadrar;
        const int kolumn = ovre ? f : f - kOvreSolfjadrar;
        const int topp = ovre ? m : 3 * v + m;
        for (int j = 0; j < kPlatserPerSolfjader; ++j)
            luckor[kForstaSolfjader + kPlatserPerSolfjader * f + j].NyPos(
                rutnat.Ruta(kolumn, topp + kSolfjaderSteg * j));
    }
    for (int i = kForstaHal; i <= kSistaHal; ++i)
        luckor[i].NyPos(rutnat.Ruta(4, 2 * v));
    for (int i = 0; i <= kSistaLek - kForstaLek; ++i)
        luckor[kForstaLek + i].NyPos(rutnat.Ruta(8, 3 * v + m + i));
    return Utlagg{rutnat.w, rutnat.h};
}

std::vector<int> GivPlatser() {
    std::vector<int> platser;
    for (int f = 0; f < kSolfjadrar; ++f)
        for (int j = 0; j < 3; ++j)
            platser.push_back(kForstaSolfjader + kPlatserPerSolfjader * f + j);
    return platser;
}

std::optional<Drag> KlickDrag(const Stallning& bord, int i) {
    const std::vector<Lucka>& luckor = bord.luckor;
    int topp = HaletsTopp(luckor);
    int till = HaletsNasta(luckor);
    if (!ISolfjader(i) || !Topp(luckor, i) || topp < 0 || till < 0 ||
        !Passar(luckor[i].GeKort(), luckor[topp].GeKort()))
        return std::nullopt;
    return KortDrag(i, till);
}

std::optional<Drag> DropDrag(const Stallning& bord, int i, BPoint q) {
    int till = HaletsNasta(bord.luckor);
    if (till < 0 || !bord.luckor[till].GePos().Contains(q))
        return std::nullopt;
    return KlickDrag(bord, i);
}

void Skapa(Stallning& bord) {
    bord.luckor.assign(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
}

void LaggUtLeken(Stallning& bord) {
    LekRegler::NyGiv(bord);
    bord.giv = 1;
    bord.kortKvar = 0;
    bord.antalUndo = 0;
    // The ace of spades is taken out before the shuffle and lies at the stock's bottom.
    bord.luckor[kForstaLek].TaEmotKort(bord.kortlek.GeValtKort(SPADER, 1));
    bord.kortlek.Blanda();
    LekRegler::LaggILeken(bord, kForstaLek + 1);
}

void DelaUt(Stallning& bord, Flygledare* flyg) {
    const std::vector<int> platser = GivPlatser();
    int k = 0;
    for (int t = kSistaLek; t > kForstaLek; --t) {
        if (flyg)
            flyg->FlygKort(t, platser[k], kGivSteg);
        Flytta(bord.luckor, t, platser[k]);
        ++k;
    }
    if (flyg)
        flyg->FlygKort(kForstaLek, kForstaHal, kGivSteg);
    Flytta(bord.luckor, kForstaLek, kForstaHal);
}

std::vector<Drag> LagligaDrag(const Stallning& bord) {
    std::vector<Drag> drag;
    for (int f = 0; f < kSolfjadrar; ++f) {
        int forsta = kForstaSolfjader + kPlatserPerSolfjader * f;
        if (bord.luckor[forsta].Tom())
            continue;
        if (std::optional<Drag> d = KlickDrag(bord, Toppen(bord.luckor, forsta)))
            drag.push_back(*d);
    }
    return drag;
}

void GorDrag(Stallning& bord, const Drag& drag, Flygledare* flyg) {
    if (drag.slag != DragSlag::Kort)
        return;
    FlyttaOchSpara(bord, drag.fran, drag.till, flyg, kFlyttSteg);
    KlarSpel(bord);
}

int Angra(Stallning& bord, Flygledare* flyg) {
    int kvar = AngraSenaste(bord, flyg, kAngraSteg);
    KlarSpel(bord);
    return kvar;
}

bool KlarSpel(Stallning& bord) {
    bord.kortKvar = 0;
    while (bord.kortKvar <= kSistaHal && !bord.luckor[kForstaHal + bord.kortKvar].Tom())
        ++bord.kortKvar;
    return bord.kortKvar == 52;
}

HiscoreResultat Resultat(const Stallning& bord) {
    return HiscoreResultat{bord.kortKvar, bord.giv};
}

namespace {

int KortIFlakt(const SpelBord& bord, int fran) {
    int forsta = kForstaSolfjader + (fran - kForstaSolfjader) / kPlatserPerSolfjader * 4;
    int antal = 0;
    for (int j = 0; j < kPlatserPerSolfjader; ++j)
        antal += bord.luckor[forsta + j].Tom() ? 0 : 1;
    return antal;
}

class Kunskap final : public SokKunskap {
public:
    // The fans as they lie (each has its own place and neighbours) and the hole's top card:
    // the cards beneath it never move again.
    void Nyckel(const SpelBord& b, std::string& nyckel) const override {
        KortOchPlatser(b.luckor, kForstaSolfjader, kSistaSolfjader, nyckel);
        int topp = HaletsTopp(b.luckor);
        nyckel.push_back(topp < 0 ? '\0' : KortKod(b.luckor[topp]));
    }
    // The moves after which the most fan tops fit the new hole card first (counting the card
    // the move uncovers), then off the fullest fans: the cards buried deepest wait longest.
    void Ordna(const SpelBord& b, std::vector<Drag>& dragen) const override {
        auto foljare = [&](const Drag& d) {
            const Kort& kort = b.luckor[d.fran].GeKort();
            int antal = 0;
            for (int f = 0; f < kSolfjadrar; ++f) {
                int forsta = kForstaSolfjader + kPlatserPerSolfjader * f;
                if (b.luckor[forsta].Tom())
                    continue;
                int topp = Toppen(b.luckor, forsta);
                if (topp == d.fran)
                    topp = topp > forsta ? topp - 1 : -1;
                if (topp >= 0 && Passar(b.luckor[topp].GeKort(), kort))
                    ++antal;
            }
            return antal * 8 + KortIFlakt(b, d.fran);
        };
        std::vector<std::pair<int, Drag>> ordnade;
        for (const Drag& d : dragen)
            ordnade.emplace_back(-foljare(d), d);
        std::stable_sort(ordnade.begin(), ordnade.end(),
                         [](const auto& x, const auto& y) { return x.first < y.first; });
        for (std::size_t i = 0; i < dragen.size(); ++i)
            dragen[i] = ordnade[i].second;
    }
};

const SokKunskap& Kunskapen() {
    static const Kunskap kunskap;
    return kunskap;
}

} // namespace

const SpelRegler& Regler() {
    return SpeletsRegler<Stallning>(Kunskapen());
}

} // namespace BlackholeRegler

namespace BlackholeRegler {

std::vector<Hog> HogTabell(const Stallning& /*bord*/) {
    std::vector<Hog> hogar;
    hogar.push_back({HogSlag::Hal, 0, kForstaHal, kSistaHal});
    for (int f = 0; f < kSolfjadrar; ++f) {
        int bas = kForstaSolfjader + kPlatserPerSolfjader * f;
        hogar.push_back({HogSlag::Solfjader, f + 1, bas, bas + kPlatserPerSolfjader - 1});
    }
    return hogar;
}

} // namespace BlackholeRegler
