#include "games/BlackholeRegler.h"

#include "cards/Flyttar.h"
#include "cards/Luckor.h"
#include "games/KolumnRegler.h"
#include "games/LekRegler.h"

#include <array>
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

// Each card goes in one value from the last, so the values the hole's top reaches run
// round the ring ace..king without a gap. Whether some card's value (counted in `antal`)
// lies beyond values no card left has, both ways round from the top's.
bool Avskurna(const std::array<int, 14>& antal, int topp) {
    std::array<bool, 14> nas{};
    nas[static_cast<size_t>(topp)] = true;
    for (int steg : {1, 12}) {
        int v = topp;
        for (int k = 0; k < 12; ++k) {
            v = (v - 1 + steg) % 13 + 1;
            if (antal[static_cast<size_t>(v)] == 0)
                break;
            nas[static_cast<size_t>(v)] = true;
        }
    }
    for (int v = 1; v <= 13; ++v)
        if (antal[static_cast<size_t>(v)] > 0 && !nas[static_cast<size_t>(v)])
            return true;
    return false;
}

class Kunskap final : public SokKunskap {
public:
    // How many cards each fan still holds (a fan only ever loses its top, so that tells its
    // cards) and the value of the hole's top card: the cards beneath it never move again,
    // and suits do not matter.
    void Nyckel(const SpelBord& b, std::string& nyckel) const override {
        unsigned packat = 0;
        int i = 0;
        for (int f = 0; f < kSolfjadrar; ++f) {
            const int forsta = kForstaSolfjader + kPlatserPerSolfjader * f;
            const int antal = b.luckor[forsta].Tom() ? 0 : Toppen(b.luckor, forsta) - forsta + 1;
            packat |= static_cast<unsigned>(antal) << (2 * i);
            if (++i == 4 || f == kSolfjadrar - 1) {
                nyckel.push_back(static_cast<char>(packat));
                packat = 0;
                i = 0;
            }
        }
        int topp = HaletsTopp(b.luckor);
        nyckel.push_back(static_cast<char>(topp < 0 ? 0 : b.luckor[topp].GeKort().KortValor()));
    }

    // Every card still in a fan goes into the hole right after a neighbour in value: the
    // hole's top when the card is a fan top now, else a card that goes in before it. A card
    // lying on it in its fan can be that only when it lies directly on it (the cards
    // between would have to go in between); one under it never. So a card with no such
    // neighbour can never go in. Likewise each card but the last is followed by a neighbour
    // from another fan or lying directly under it: two cards without one cannot both be
    // last.
    bool Hopplos(const SpelBord& b) const override {
        const std::vector<Lucka>& luckor = b.luckor;
        const int haletsTopp = HaletsTopp(luckor);
        std::array<int, 14> iAlla{};
        for (int i = kForstaSolfjader; i <= kSistaSolfjader; ++i)
            if (!luckor[i].Tom())
                ++iAlla[static_cast<size_t>(luckor[i].GeKort().KortValor())];
        if (haletsTopp >= 0 && Avskurna(iAlla, luckor[haletsTopp].GeKort().KortValor()))
            return true;
        int utanFoljare = 0;
        for (int f = 0; f < kSolfjadrar; ++f) {
            const int forsta = kForstaSolfjader + kPlatserPerSolfjader * f;
            if (luckor[forsta].Tom())
                continue;
            const int topp = Toppen(luckor, forsta);
            std::array<int, 14> iFlakten{};
            for (int i = forsta; i <= topp; ++i)
                ++iFlakten[static_cast<size_t>(luckor[i].GeKort().KortValor())];
            for (int i = forsta; i <= topp; ++i) {
                const Kort& kort = luckor[i].GeKort();
                const int v = kort.KortValor();
                const auto ned = static_cast<size_t>(v == 1 ? 13 : v - 1);
                const auto upp = static_cast<size_t>(v == 13 ? 1 : v + 1);
                const int iAndra = iAlla[ned] + iAlla[upp] - iFlakten[ned] - iFlakten[upp];
                auto granne = [&](int j) {
                    return j >= forsta && j <= topp && Passar(luckor[j].GeKort(), kort);
                };
                const bool foregangare =
                    iAndra > 0 || granne(i + 1) ||
                    (i == topp && haletsTopp >= 0 && Passar(kort, luckor[haletsTopp].GeKort()));
                if (!foregangare)
                    return true;
                if (iAndra == 0 && !granne(i - 1) && ++utanFoljare > 1)
                    return true;
            }
        }
        return false;
    }

    // The moves off the fullest fans first, so the cards buried deepest do not wait longest;
    // among those, the moves after which the most fan tops fit the new hole card (counting
    // the card the move uncovers).
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
            return KortIFlakt(b, d.fran) * 8 + antal;
        };
        std::vector<std::pair<int, Drag>> ordnade;
        for (const Drag& d : dragen)
            ordnade.emplace_back(-foljare(d), d);
        std::stable_sort(ordnade.begin(), ordnade.end(),
                         [](const auto& x, const auto& y) { return x.first < y.first; });
        for (std::size_t i = 0; i < dragen.size(); ++i)
            dragen[i] = ordnade[i].second;
    }
    // For the quick first pass: only the two most promising moves of each table.
    bool HarTroligaDrag() const override { return true; }
    void GallraHastigt(const SpelBord& b, std::vector<Drag>& dragen) const override {
        Ordna(b, dragen);
        if (dragen.size() > 2)
            dragen.resize(2);
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
