#include "games/GodnattvalsenRegler.h"

#include "cards/Flyttar.h"
#include "cards/Luckor.h"
#include "games/LekRegler.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <string>

namespace GodnattvalsenRegler {

namespace {

constexpr int kMellanrum = 5;
constexpr int kMinsta = 70;
// The stock's area reaches down over the 2-pixel steps of the 44 cards left after the deal.
constexpr float kLekFall = 86.0f;

int SistaI(int i) {
    int kolumn = i / kPerKolumn;
    return IGrunden(i) ? HogBas(kolumn) - 1 : GrundBas(kolumn) + kPerKolumn - 1;
}

} // namespace

Utlagg RaknaUtLuckor(std::vector<Lucka>& luckor, BRect bounds) {
    const int m = kMellanrum;
    Utlagg u;
    u.h = std::max(static_cast<int>(bounds.Height() - 40.0f) / 8, kMinsta);
    u.w = std::max(static_cast<int>((static_cast<double>(bounds.Width()) - 4 * m) / 5.5), kMinsta);
    const int cw = u.w;
    const int ch = u.h;
    const int su = cw + m;
    const int sv = ch + m;
    for (int c = 0; c < kKolumner; ++c) {
        const int left = c * su;
        for (int k = 0; k < kGrundPlatser; ++k) {
            const int top = m + 2 * k;
            luckor[GrundBas(c) + k].NyPos(HeltalsRuta(left, top, left + cw, top + ch));
        }
        for (int k = kGrundPlatser; k < kPerKolumn; ++k) {
            const int top = m + sv + 2 * k + 30 * (k - kGrundPlatser);
            luckor[GrundBas(c) + k].NyPos(HeltalsRuta(left, top, left + cw, top + ch));
        }
    }
    for (int i = 0; i <= kSistaLek - kForstaLek; ++i) {
        const int left = 4 * su + m;
        const int top = ch + 2 * m + 2 * i;
        luckor[kForstaLek + i].NyPos(HeltalsRuta(left, top, left + cw, top + ch));
    }
    const BRect bas = luckor[kForstaLek].GePos();
    u.lekRuta = BRect(bas.left, bas.top, bas.left + static_cast<float>(cw), bas.bottom + kLekFall);
    return u;
}

int Traff(const std::vector<Lucka>& luckor, BPoint p) {
    return TraffMedBand(luckor, 0, kForstaLek - 1, p, kRemsa);
}

int ToppFor(const std::vector<Lucka>& luckor, int i) {
    const int sista = SistaI(i);
    while (i < sista && Fylld(luckor, i + 1))
        ++i;
    return i;
}

bool Tar(const std::vector<Lucka>& luckor, int t, const Kort& kort) {
    return IGrunden(t) && Topp(luckor, t) && kort.KortValor() == luckor[t].GeKort().KortValor() + 1;
}

int KlickMal(const std::vector<Lucka>& luckor, const Kort& kort) {
    for (int t = 0; t < kForstaLek; ++t)
        if (Tar(luckor, t, kort))
            return t + 1;
    return -1;
}

int DropMal(const std::vector<Lucka>& luckor, const Kort& kort, BPoint q) {
    for (int t = 0; t < kForstaLek; ++t)
        if (IGrunden(t) && luckor[t].GePos().Contains(q) && Tar(luckor, t, kort))
            return t + 1;
    return -1;
}

bool LekKlick(const Stallning& bord, BPoint p) {
    return bord.lekKlickRuta.Contains(p) && !kLeken.Tom(bord.luckor);
}

std::optional<Drag> KlickDrag(const Stallning& bord, BPoint p) {
    int traff = Traff(bord.luckor, p);
    if (traff >= 0 && ToppFor(bord.luckor, traff) == traff) {
        int till = KlickMal(bord.luckor, bord.luckor[traff].GeKort());
        if (till >= 0)
            return KortDrag(traff, till);
    }
    if (LekKlick(bord, p))
        return KnappDrag();
    return std::nullopt;
}

std::optional<Drag> DropDrag(const Stallning& bord, BPoint p, BPoint q) {
    int traff = Traff(bord.luckor, p);
    if (traff >= 0) {
        // A run of two or more goes back where it was.
        if (ToppFor(bord.luckor, traff) != traff)
            return std::nullopt;
        int till = DropMal(bord.luckor, bord.luckor[traff].GeKort(), q);
        if (till < 0)
            return std::nullopt;
        return KortDrag(traff, till);
    }
    if (LekKlick(bord, p))
        return KnappDrag();
    return std::nullopt;
}

void Skapa(Stallning& bord) {
    bord.luckor.clear();
    bord.luckor.reserve(kAntalLuckor);
    for (int i = 0; i < kAntalLuckor; ++i)
        bord.luckor.emplace_back(BRect(0, 0, 0, 0), i >= kForstaLek);
    bord.antalUndo = 0;
}

void LaggUtLeken(Stallning& bord) {
    // The undo count goes on from the deal before.
    LekRegler::NyGiv(bord);
    bord.kortlek.Blanda();
    LekRegler::LaggEssenOverst(bord, kSistaLek);
    LekRegler::LaggILeken(bord, kForstaLek);
}

void DelaUt(Stallning& bord, Flygledare* flyg) {
    // The aces to the foundations, then a card to each pile.
    std::vector<int> mal;
    for (int r = 0; r < 2; ++r)
        for (int c = 0; c < kKolumner; ++c)
            mal.push_back(GrundBas(c) + kGrundPlatser * r);
    LekRegler::DelaFranLeken(bord, kLeken, mal, flyg, kGivSteg);
}

std::vector<Drag> LagligaDrag(const Stallning& bord) {
    const std::vector<Lucka>& luckor = bord.luckor;
    std::vector<int> toppar;
    for (int c = 0; c < kKolumner; ++c)
        for (int bas : {GrundBas(c), HogBas(c)})
            if (Fylld(luckor, bas))
                toppar.push_back(ToppFor(luckor, bas));
    std::vector<Drag> drag;
    for (int fran : toppar)
        for (int t : toppar)
            if (Tar(luckor, t, luckor[fran].GeKort()))
                drag.push_back(KortDrag(fran, t + 1));
    if (!kLeken.Tom(luckor))
        drag.push_back(KnappDrag());
    return drag;
}

void GorDrag(Stallning& bord, const Drag& drag, Flygledare* flyg) {
    if (drag.slag == DragSlag::Knapp) {
        int topp = kLeken.Topp(bord.luckor);
        if (topp < 0)
            return;
        // What a click still deals from ends at the card that will then be on top.
        int t = topp - kForstaLek;
        bord.lekKlickRuta.bottom = bord.lekRuta.bottom - static_cast<float>(2 * (47 - t));
        std::vector<int> mal;
        for (int c = 0; c < kKolumner; ++c)
            mal.push_back(ForstaTomma(bord.luckor, HogBas(c), GrundBas(c) + kPerKolumn - 1));
        LekRegler::GeFranLeken(bord, kLeken, mal, flyg, kLekSteg);
        return;
    }
    FlyttaOchSpara(bord, drag.fran, drag.till, flyg, kFlyttSteg);
}

int Angra(Stallning& bord, Flygledare* flyg) {
    if (bord.undoLista.empty())
        return 0;
    if (bord.undoLista.back().first == LekRegler::kFranLeken) {
        // A stock click's four cards go back together, and count as four undos.
        bord.antalUndo += 4;
        LekRegler::AngraFranLeken(bord, kLeken, 4, flyg, kAngraSteg);
    } else {
        AngraSenaste(bord, flyg, kAngraSteg);
    }
    return static_cast<int>(bord.undoLista.size());
}

bool KlarSpel(Stallning& bord) {
    const std::vector<Lucka>& luckor = bord.luckor;
    if (!luckor[kForstaLek].Tom())
        return false;
    for (int c = 0; c < kKolumner; ++c) {
        const Lucka& kung = luckor[GrundBas(c) + 12];
        if (kung.Tom() || kung.GeKort().KortValor() != 13 || !luckor[HogBas(c)].Tom())
            return false;
    }
    return true;
}

HiscoreResultat Resultat(const Stallning& bord) {
    int kort = 0;
    for (int c = 0; c < kKolumner; ++c)
        kort += AntalFyllda(bord.luckor, GrundBas(c), HogBas(c) - 1);
    return HiscoreResultat{kort, 1};
}

namespace {

// How many cards of each value lie on the foundations.
std::array<int, 14> Hemma(const std::vector<Lucka>& luckor) {
    std::array<int, 14> hemma{};
    for (int c = 0; c < kKolumner; ++c)
        for (int i = GrundBas(c); i < HogBas(c) && !luckor[i].Tom(); ++i)
            ++hemma[static_cast<size_t>(luckor[i].GeKort().KortValor())];
    return hemma;
}

// Whether each card of `vantar` can go home after its own card one value lower: a place
// left free on the foundations (`lediga`) or a card of `fore` not barred to it (bit j of
// `sparr[i]`: card j of `fore` lies under card i of `vantar` in a pile), each used once.
bool RackerTill(const std::uint8_t* sparr, int antal, unsigned tagna, int lediga, int antalFore) {
    if (antal == 0)
        return true;
    if (lediga > 0 && RackerTill(sparr + 1, antal - 1, tagna, lediga - 1, antalFore))
        return true;
    for (int j = 0; j < antalFore; ++j)
        if ((((tagna | *sparr) >> j) & 1u) == 0 &&
            RackerTill(sparr + 1, antal - 1, tagna | 1u << j, lediga, antalFore))
            return true;
    return false;
}

// A foundation holds every value from the ace up to its top, so at any time at least as
// many cards of a value u are home as of any higher value w. The k-th card of w to go home
// thus finds at least k cards of u home, and none of them lies under it or under a card of
// w that goes home after it in a pile (those go home after it). Whether the cards of w
// still out can go home in some order keeping that, for every pair of values where a card
// of w lies over a lower card u in a pile.
bool OrdningFinns(const std::vector<Lucka>& luckor, const std::array<int, 14>& hemma) {
    // Each card still out: its index among the cards of its value still out.
    std::array<int, 53> index{};
    std::array<int, 14> ute{};
    auto rakna = [&](int i) {
        const Kort& k = luckor[i].GeKort();
        index[static_cast<size_t>(13 * k.KortFarg() + k.KortValor())] =
            ute[static_cast<size_t>(k.KortValor())]++;
    };
    for (int c = 0; c < kKolumner; ++c)
        for (int i = HogBas(c); i < GrundBas(c) + kPerKolumn && !luckor[i].Tom(); ++i)
            rakna(i);
    for (int i = kForstaLek; i <= kSistaLek && !luckor[i].Tom(); ++i)
        rakna(i);
    auto indexFor = [&](const Kort& k) {
        return index[static_cast<size_t>(13 * k.KortFarg() + k.KortValor())];
    };
    // under[u][w][y]: the cards of u (as bits) lying under card y of w in its pile.
    std::uint8_t under[14][14][4] = {};
    bool nagon = false;
    for (int c = 0; c < kKolumner; ++c)
        for (int j = HogBas(c) + 1; j < GrundBas(c) + kPerKolumn && !luckor[j].Tom(); ++j) {
            const Kort& y = luckor[j].GeKort();
            for (int i = HogBas(c); i < j; ++i) {
                const Kort& x = luckor[i].GeKort();
                if (x.KortValor() >= y.KortValor())
                    continue;
                under[x.KortValor()][y.KortValor()][indexFor(y)] |=
                    static_cast<std::uint8_t>(1u << indexFor(x));
                nagon = true;
            }
        }
    if (!nagon)
        return true;
    for (int u = 1; u < 13; ++u)
        for (int w = u + 1; w <= 13; ++w) {
            const std::uint8_t* b = under[u][w];
            if ((b[0] | b[1] | b[2] | b[3]) == 0)
                continue;
            const int m = ute[static_cast<size_t>(w)];
            const int iU = ute[static_cast<size_t>(u)];
            // mojlig[S]: the cards of S can be the last |S| of w to go home, in some order.
            bool mojlig[16] = {};
            bool hela = false;
            for (unsigned s = 1; s < (1u << m); ++s) {
                unsigned upptagna = 0;
                int storlek = 0;
                for (int y = 0; y < m; ++y)
                    if ((s >> y & 1u) != 0) {
                        upptagna |= b[y];
                        ++storlek;
                    }
                // The first of S to go home is the (m − |S| + 1)-th of w still out.
                const int behov =
                    hemma[static_cast<size_t>(w)] + m - storlek + 1 - hemma[static_cast<size_t>(u)];
                bool ok = iU - std::popcount(upptagna) >= behov;
                if (ok && storlek > 1) {
                    ok = false;
                    for (int y = 0; y < m && !ok; ++y)
                        ok = (s >> y & 1u) != 0 && mojlig[s & ~(1u << y)];
                }
                mojlig[s] = ok;
                hela = ok && s == (1u << m) - 1;
            }
            if (!hela)
                return false;
        }
    return true;
}

class Kunskap final : public SokKunskap {
public:
    // A pile only takes the stock's cards, dealt in the deal's order, and only gives its
    // top, so its cards lie in the order they were dealt: which cards are still in the
    // piles, with how many the stock still holds, tells every pile. The foundations are
    // built by value alone from four aces, so the cards home of each value tell how many
    // foundations have reached it, and with that every foundation's top (moving a card
    // between foundations changes none of this): the moves open are the same, which
    // foundation takes a card aside.
    void Nyckel(const SpelBord& bord, std::string& nyckel) const override {
        std::uint64_t ute = 0;
        for (int c = 0; c < kKolumner; ++c)
            for (int i = HogBas(c); i < GrundBas(c) + kPerKolumn && !bord.luckor[i].Tom(); ++i)
                ute |= std::uint64_t{1} << KortKod(bord.luckor[i]);
        for (int b = 0; b < 7; ++b)
            nyckel.push_back(static_cast<char>(ute >> (8 * b)));
        nyckel.push_back(static_cast<char>(AntalFyllda(bord.luckor, kForstaLek, kSistaLek)));
    }
    // The piles' cards before the stock; the moves between foundations are left out, as
    // they reach a table of the same key.
    void Ordna(const SpelBord&, std::vector<Drag>& dragen) const override {
        std::vector<Drag> ordning;
        for (const Drag& d : dragen)
            if (d.slag == DragSlag::Kort && IHogen(d.fran))
                ordning.push_back(d);
        for (const Drag& d : dragen)
            if (d.slag == DragSlag::Knapp)
                ordning.push_back(d);
        dragen = ordning;
    }
    // The foundations are built by value alone, so what matters is how many cards of each
    // value are home: a card of value v goes home while more cards of value v − 1 are home
    // than of v. When all four cards one lower are home, that is true for every card of
    // value v from then on; playing one at once then takes nothing from the others, and
    // bares the card under it sooner.
    int SakertDrag(const SpelBord& bord, const std::vector<Drag>& dragen) const override {
        const std::array<int, 14> hemma = Hemma(bord.luckor);
        return ForstaDragSom(dragen, [&](const Drag& d) {
            if (d.slag != DragSlag::Kort || !IHogen(d.fran))
                return false;
            const int v = bord.luckor[d.fran].GeKort().KortValor();
            return hemma[static_cast<size_t>(v - 1)] == 4;
        });
    }

    // So each card of value v still out needs its own card of v − 1 to go home before it:
    // one home already and not yet used by a card of v, or one still out. A card lying
    // under it in a pile goes home after it, so cannot be that one. When the cards of
    // some value cannot all be given one, the table cannot be won.
    bool Hopplos(const SpelBord& bord) const override {
        const std::vector<Lucka>& luckor = bord.luckor;
        const std::array<int, 14> hemma = Hemma(luckor);
        // The cards still out by value: their pile (-1 in the stock) and slot.
        constexpr int kHogst = 8;
        std::array<std::array<std::pair<int, int>, kHogst>, 14> ute;
        std::array<int, 14> antal{};
        auto lagg = [&](int i, int hog) {
            const auto v = static_cast<size_t>(luckor[i].GeKort().KortValor());
            if (antal[v] < kHogst)
                ute[v][static_cast<size_t>(antal[v])] = {hog, i};
            ++antal[v];
        };
        for (int c = 0; c < kKolumner; ++c)
            for (int i = HogBas(c); i < GrundBas(c) + kPerKolumn && !luckor[i].Tom(); ++i)
                lagg(i, c);
        for (int i = kForstaLek; i <= kSistaLek; ++i)
            if (!luckor[i].Tom())
                lagg(i, -1);
        for (size_t v = 2; v <= 13; ++v) {
            if (antal[v] > kHogst || antal[v - 1] > kHogst)
                continue;
            std::array<std::uint8_t, kHogst> sparr{};
            bool nagonSparr = false;
            for (int y = 0; y < antal[v]; ++y) {
                const auto [hog, plats] = ute[v][static_cast<size_t>(y)];
                for (int x = 0; x < antal[v - 1] && hog >= 0; ++x) {
                    const auto [xHog, xPlats] = ute[v - 1][static_cast<size_t>(x)];
                    if (xHog == hog && xPlats < plats) {
                        sparr[static_cast<size_t>(y)] |= static_cast<std::uint8_t>(1u << x);
                        nagonSparr = true;
                    }
                }
            }
            const int lediga = hemma[v - 1] - hemma[v];
            if (nagonSparr && !RackerTill(sparr.data(), antal[v], 0, lediga, antal[v - 1]))
                return true;
            if (!nagonSparr && antal[v] > lediga + antal[v - 1])
                return true;
        }
        return !OrdningFinns(luckor, hemma);
    }
};

} // namespace

const SpelRegler& Regler() {
    return SpeletsRegler<Stallning, Kunskap>();
}

} // namespace GodnattvalsenRegler

namespace GodnattvalsenRegler {

std::vector<Hog> HogTabell(const Stallning& /*bord*/) {
    std::vector<Hog> hogar;
    for (int c = 0; c < kKolumner; ++c)
        hogar.push_back({HogSlag::Grund, c + 1, GrundBas(c), GrundBas(c) + kGrundPlatser - 1});
    for (int c = 0; c < kKolumner; ++c)
        hogar.push_back({HogSlag::Hog, c + 1, HogBas(c), GrundBas(c) + kPerKolumn - 1});
    hogar.push_back({HogSlag::Lek, 0, kForstaLek, kSistaLek});
    return hogar;
}

} // namespace GodnattvalsenRegler
