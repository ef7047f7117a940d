#include "games/BlackholeRegler.h"

#include "cards/Flyttar.h"
#include "cards/Luckor.h"
#include "games/KolumnRegler.h"
#include "games/LekRegler.h"

#include <algorithm>
#include <array>
#include <cstdint>
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
    const std::vector<Lucka>& luckor = bord.luckor;
    std::vector<Drag> drag;
    const int topp = HaletsTopp(luckor);
    const int till = HaletsNasta(luckor);
    if (topp < 0 || till < 0)
        return drag;
    for (int f = 0; f < kSolfjadrar; ++f) {
        int forsta = kForstaSolfjader + kPlatserPerSolfjader * f;
        if (luckor[forsta].Tom())
            continue;
        const int fran = Toppen(luckor, forsta);
        if (Passar(luckor[fran].GeKort(), luckor[topp].GeKort()))
            drag.push_back(KortDrag(fran, till));
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

// How many cards the hole holds. It fills from its first slot without a gap, so the first
// empty slot is found by halving.
int IHalet(const std::vector<Lucka>& luckor) {
    int tom = kSistaHal + 1;    // the first slot known empty (or past the hole)
    int fylld = kForstaHal - 1; // the last slot known filled
    while (tom - fylld > 1) {
        const int mitt = (tom + fylld) / 2;
        (luckor[mitt].Tom() ? tom : fylld) = mitt;
    }
    return tom - kForstaHal;
}

// What the search asks of a table, read once: each fan's cards' values from the bottom
// and the value of the hole's top card (0 for an empty hole).
struct Lage {
    std::array<std::array<std::int8_t, 3>, kSolfjadrar> varden{};
    std::array<std::int8_t, kSolfjadrar> hojd{};
    int topp = 0;
    std::array<int, 14> antal{}; // the fans' cards by value

    explicit Lage(const SpelBord& b) {
        const std::vector<Lucka>& luckor = b.luckor;
        for (int f = 0; f < kSolfjadrar; ++f) {
            const int forsta = kForstaSolfjader + kPlatserPerSolfjader * f;
            int h = 0;
            while (h < 3 && !luckor[forsta + h].Tom()) {
                const int v = luckor[forsta + h].GeKort().KortValor();
                varden[static_cast<size_t>(f)][static_cast<size_t>(h)] =
                    static_cast<std::int8_t>(v);
                ++antal[static_cast<size_t>(v)];
                ++h;
            }
            hojd[static_cast<size_t>(f)] = static_cast<std::int8_t>(h);
        }
        const int iHalet = IHalet(b.luckor);
        topp = iHalet > 0 ? luckor[kForstaHal + iHalet - 1].GeKort().KortValor() : 0;
    }
    int Hojd(int f) const { return hojd[static_cast<size_t>(f)]; }
    int Varde(int f, int j) const { return varden[static_cast<size_t>(f)][static_cast<size_t>(j)]; }
    int ToppVarde(int f) const { return Varde(f, Hojd(f) - 1); }
};

bool Grannar(int a, int b) {
    const int d = std::abs(a - b);
    return d == 1 || d == 12;
}

// The cards still to go in follow the hole's top one by one, each a neighbour in value of
// the one before it. Count the steps of that sequence between each value v and the next,
// x(v) (the king's next is the ace): a value with n cards still to go (the top's counted
// among them) is left and reached 2n times in all, once less for the top, where it begins,
// and once less for the last card's value, where it ends. So x(v − 1) + x(v) = those
// counts, thirteen equations round an odd ring, which fix every x: x(v) is half the sum of
// the counts with alternating signs starting at v and going down. Each x must come out a
// whole number of at least 0, and the values with cards must hang together by steps
// taken. When no last value passes, no order of the cards is left that could empty the
// fans, whatever the fans allow.
bool IngenVag(const std::array<int, 14>& antal, int topp, unsigned sista) {
    std::array<int, 13> n{};
    int narvarande = 0;
    for (int v = 1; v <= 13; ++v) {
        n[static_cast<size_t>(v - 1)] = antal[static_cast<size_t>(v)] + (v == topp ? 1 : 0);
        narvarande += n[static_cast<size_t>(v - 1)] > 0 ? 1 : 0;
    }
    for (int sist = 1; sist <= 13; ++sist) {
        if ((sista >> sist & 1u) == 0)
            continue;
        std::array<int, 13> d{};
        for (int k = 0; k < 13; ++k)
            d[static_cast<size_t>(k)] =
                2 * n[static_cast<size_t>(k)] - (k + 1 == topp ? 1 : 0) - (k + 1 == sist ? 1 : 0);
        // x[k] counts the steps between values k + 1 and k + 2.
        int summa = d[0];
        for (int j = 1; j < 13; ++j)
            summa += (j % 2 == 1 ? -1 : 1) * d[static_cast<size_t>(13 - j)];
        if (summa < 0 || summa % 2 != 0)
            continue;
        std::array<int, 13> x{};
        x[0] = summa / 2;
        bool ok = true;
        int steg = x[0] > 0 ? 1 : 0;
        for (int k = 1; k < 13 && ok; ++k) {
            x[static_cast<size_t>(k)] = d[static_cast<size_t>(k)] - x[static_cast<size_t>(k - 1)];
            ok = x[static_cast<size_t>(k)] >= 0;
            steg += x[static_cast<size_t>(k)] > 0 ? 1 : 0;
        }
        if (ok && steg >= narvarande - 1)
            return false;
    }
    return true;
}

// Whether the cards outside one fan (`ute`: how many of each value) can lead from a card
// of value `fran` to one of value `till` that follows it later. Every card played between
// the two steps one value up or down the ring, king and ace neighbours. After the last time
// the sequence holds value `fran` it walks to `till` without touching `fran` again, so it
// passes every value of one of the two arcs between them; and an arc of no value at all
// (neighbours) needs nothing. Going from a value back to the same value needs a neighbour.
// `ute` holds bit v for each value v with a card outside the fan.
bool KanLeda(unsigned ute, int fran, int till) {
    // bagar[a][b]: the values strictly between a and b going up the ring from a, and going
    // down; from a value to itself, its two neighbours, either of which will do.
    struct Bagar {
        std::array<std::array<std::array<unsigned, 2>, 14>, 14> mellan{};
        Bagar() {
            for (int a = 1; a <= 13; ++a)
                for (int b = 1; b <= 13; ++b)
                    for (int r = 0; r < 2; ++r) {
                        const int steg = r == 0 ? 1 : 12;
                        unsigned m = 0;
                        for (int v = (a + steg - 1) % 13 + 1; a != b && v != b;
                             v = (v + steg - 1) % 13 + 1)
                            m |= 1u << v;
                        mellan[static_cast<std::size_t>(a)][static_cast<std::size_t>(b)]
                              [static_cast<std::size_t>(r)] = m;
                    }
        }
    };
    static const Bagar bagar;
    if (fran == till)
        return (ute & (1u << (fran % 13 + 1) | 1u << ((fran + 11) % 13 + 1))) != 0;
    const auto& m = bagar.mellan[static_cast<std::size_t>(fran)][static_cast<std::size_t>(till)];
    return (m[0] & ~ute) == 0 || (m[1] & ~ute) == 0;
}

class Kunskap final : public SokKunskap {
public:
    // The values each fan still holds, bottom up, as a set of fans, and the value of the
    // hole's top card. Suits never matter: whether a card fits reads only values. The cards
    // beneath the hole's top never move again. And the fans are alike but for what they
    // hold: each gives only its top, to the hole, so two tables whose fans hold the same
    // value runs, in whichever fans, have the same moves, each to such a pair again, and
    // are won alike.
    void Nyckel(const SpelBord& b, std::string& nyckel) const override {
        const Lage lage(b);
        std::array<std::uint16_t, kSolfjadrar> flaktar{};
        int n = 0;
        for (int f = 0; f < kSolfjadrar; ++f) {
            unsigned kod = 0;
            for (int j = 0; j < lage.Hojd(f); ++j)
                kod = kod << 4 | static_cast<unsigned>(lage.Varde(f, j));
            if (kod != 0)
                flaktar[static_cast<std::size_t>(n++)] = static_cast<std::uint16_t>(kod);
        }
        std::sort(flaktar.begin(), flaktar.begin() + n);
        std::array<char, 2 * kSolfjadrar + 1> bytes;
        std::size_t antal = 0;
        for (int i = 0; i < n; ++i) {
            bytes[antal++] = static_cast<char>(flaktar[static_cast<std::size_t>(i)] >> 8);
            bytes[antal++] = static_cast<char>(flaktar[static_cast<std::size_t>(i)] & 0xff);
        }
        bytes[antal++] = static_cast<char>(lage.topp);
        nyckel.append(bytes.data(), antal);
    }

    // Every card still in a fan goes into the hole right after a neighbour in value: the
    // hole's top when the card is a fan top now, else a card that goes in before it. A card
    // lying on it in its fan can be that only when it lies directly on it (the cards
    // between would have to go in between); one under it never. So a card with no such
    // neighbour can never go in. Likewise each card but the last is followed by a neighbour
    // from another fan or lying directly under it: two cards without one cannot both be
    // last. And the values left must still allow a sequence through them (IngenVag).
    bool Hopplos(const SpelBord& b) const override {
        const Lage lage(b);
        // The last card to go in has none under it: it lies at the bottom of its fan.
        unsigned sista = 0;
        for (int f = 0; f < kSolfjadrar; ++f)
            if (lage.Hojd(f) > 0)
                sista |= 1u << lage.Varde(f, 0);
        if (lage.topp > 0 && IngenVag(lage.antal, lage.topp, sista))
            return true;
        int utanFoljare = 0;
        // The values with a card in some fan.
        unsigned iNagon = 0;
        for (int v = 1; v <= 13; ++v)
            if (lage.antal[static_cast<std::size_t>(v)] > 0)
                iNagon |= 1u << v;
        for (int f = 0; f < kSolfjadrar; ++f) {
            const int h = lage.Hojd(f);
            if (h == 0)
                continue;
            // A fan holds three cards at most: its cards of a value are counted on them.
            auto iFlakten = [&](int x) {
                int n = 0;
                for (int j = 0; j < h; ++j)
                    n += lage.Varde(f, j) == x ? 1 : 0;
                return n;
            };
            for (int j = 0; j < h; ++j) {
                const int v = lage.Varde(f, j);
                const int ned = v == 1 ? 13 : v - 1;
                const int upp = v == 13 ? 1 : v + 1;
                const int iAndra = lage.antal[static_cast<std::size_t>(ned)] +
                                   lage.antal[static_cast<std::size_t>(upp)] - iFlakten(ned) -
                                   iFlakten(upp);
                auto granne = [&](int k) {
                    return k >= 0 && k < h && Grannar(lage.Varde(f, k), v);
                };
                const bool foregangare = iAndra > 0 || granne(j + 1) ||
                                         (j == h - 1 && lage.topp > 0 && Grannar(v, lage.topp));
                if (!foregangare)
                    return true;
                if (iAndra == 0 && !granne(j - 1) && (j > 0 || ++utanFoljare > 1))
                    return true;
            }
            // The cards played between a fan card and the one right under it come from the
            // other fans (those above went in before, those below go in after), and so do
            // those between the hole's top and this fan's top.
            unsigned ute = iNagon;
            for (int j = 0; j < h; ++j) {
                const int v = lage.Varde(f, j);
                if (lage.antal[static_cast<std::size_t>(v)] == iFlakten(v))
                    ute &= ~(1u << v);
            }
            for (int j = h - 1; j >= 0; --j) {
                const int fore = j == h - 1 ? lage.topp : lage.Varde(f, j + 1);
                if (fore > 0 && !KanLeda(ute, fore, lage.Varde(f, j)))
                    return true;
            }
        }
        return false;
    }

    // The moves off the fullest fans first, so the cards buried deepest do not wait longest;
    // among those, the moves after which the most fan tops fit the new hole card (counting
    // the card the move uncovers).
    void Ordna(const SpelBord& b, std::vector<Drag>& dragen) const override {
        const Lage lage(b);
        // The fans' tops by value: a move's own top is no neighbour of itself, and the card
        // under it is counted apart.
        std::array<int, 14> toppar{};
        for (int f = 0; f < kSolfjadrar; ++f)
            if (lage.Hojd(f) > 0)
                ++toppar[static_cast<std::size_t>(lage.ToppVarde(f))];
        auto foljare = [&](const Drag& d) {
            const int fran = (d.fran - kForstaSolfjader) / kPlatserPerSolfjader;
            const int v = lage.ToppVarde(fran);
            const int h = lage.Hojd(fran);
            int antal = toppar[static_cast<std::size_t>(v == 1 ? 13 : v - 1)] +
                        toppar[static_cast<std::size_t>(v == 13 ? 1 : v + 1)];
            if (h > 1 && Grannar(lage.Varde(fran, h - 2), v))
                ++antal;
            return h * 8 + antal;
        };
        std::array<std::pair<int, int>, kSolfjadrar> ordning{};
        const std::size_t n = dragen.size();
        for (std::size_t i = 0; i < n; ++i)
            ordning[i] = {-foljare(dragen[i]), static_cast<int>(i)};
        std::sort(ordning.begin(), ordning.begin() + static_cast<std::ptrdiff_t>(n));
        std::array<Drag, kSolfjadrar> ordnade{};
        for (std::size_t i = 0; i < n; ++i)
            ordnade[i] = dragen[static_cast<size_t>(ordning[i].second)];
        std::copy(ordnade.begin(), ordnade.begin() + static_cast<std::ptrdiff_t>(n),
                  dragen.begin());
    }
    // For the quick first pass: only the two most promising moves of each table.
    bool HarTroligaDrag() const override { return true; }
    void GallraHastigt(const SpelBord& b, std::vector<Drag>& dragen) const override {
        Ordna(b, dragen);
        if (dragen.size() > 2)
            dragen.resize(2);
    }
};

} // namespace

const SpelRegler& Regler() {
    return SpeletsRegler<Stallning, Kunskap>();
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
