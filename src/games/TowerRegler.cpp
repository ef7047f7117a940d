#include "games/TowerRegler.h"

#include "cards/Flyttar.h"
#include "cards/Luckor.h"
#include "games/LekRegler.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

namespace TowerRegler {

namespace {

constexpr int kMellanrum = 5;
constexpr int kMinsta = 70;
constexpr int kTornSteg = 35;

} // namespace

Utlagg RaknaUtLuckor(std::vector<Lucka>& luckor, BRect bounds) {
    const int m = kMellanrum;
    Utlagg u;
    u.h = std::max(static_cast<int>(bounds.Height() - 40.0f) / 3, kMinsta);
    u.w = std::max(static_cast<int>((static_cast<double>(bounds.Width()) - 4 * m) / 4.0), kMinsta);
    const int su = u.w + m;
    for (int t = 0; t < kTorn; ++t)
        for (int j = 0; j < kPerTorn; ++j) {
            const int top = m + kTornSteg * j;
            luckor[kPerTorn * t + j].NyPos(HeltalsRuta(t * su, top, t * su + u.w, top + u.h));
        }
    for (int i = 0; i <= kSistaLek - kForstaLek; ++i) {
        const int left = 3 * su + 2 * m;
        const int top = u.h + 2 * m + 2 * i;
        luckor[kForstaLek + i].NyPos(HeltalsRuta(left, top, left + u.w, top + u.h));
    }
    return u;
}

int Traff(const std::vector<Lucka>& luckor, BPoint p) {
    return TraffMedBand(luckor, 0, kSistaTornLucka, p, kRemsa);
}

int ToppFor(const std::vector<Lucka>& luckor, int i) {
    const int sista = i - i % kPerTorn + kPerTorn - 1;
    while (i < sista && Fylld(luckor, i + 1))
        ++i;
    return i;
}

int PlatsVid(const std::vector<Lucka>& luckor, int j, const Kort& kort) {
    if (TornBas(j) && luckor[j].Tom())
        return j;
    if (Topp(luckor, j) && luckor[j].GeKort().KortValor() > kort.KortValor())
        return j + 1;
    return -1;
}

int KlickMal(const std::vector<Lucka>& luckor, int fran) {
    const Kort& kort = luckor[fran].GeKort();
    for (int k = 1; k <= kSistaTornLucka; ++k) {
        int j = (fran + k) % (kSistaTornLucka + 1);
        int mal = PlatsVid(luckor, j, kort);
        if (mal >= 0)
            return mal;
    }
    return -1;
}

int DropMal(const std::vector<Lucka>& luckor, const Kort& kort, BPoint q) {
    for (int j = 0; j <= kSistaDropLucka; ++j) {
        if (!luckor[j].GePos().Contains(q))
            continue;
        int mal = PlatsVid(luckor, j, kort);
        if (mal >= 0)
            return mal;
    }
    return -1;
}

const Lucka* RitadPlats(const std::vector<Lucka>& luckor, int i) {
    return i >= 0 && i < static_cast<int>(luckor.size()) ? &luckor[i] : nullptr;
}

std::optional<Drag> KlickDrag(const Stallning& bord, BPoint p) {
    int traff = Traff(bord.luckor, p);
    if (traff < 0 || ToppFor(bord.luckor, traff) != traff)
        return std::nullopt;
    int till = KlickMal(bord.luckor, traff);
    if (till < 0)
        return std::nullopt;
    return KortDrag(traff, till);
}

std::optional<Drag> DropDrag(const Stallning& bord, BPoint p, BPoint q) {
    int traff = Traff(bord.luckor, p);
    // A run of two or more is lifted but never put down.
    if (traff < 0 || ToppFor(bord.luckor, traff) != traff)
        return std::nullopt;
    int till = DropMal(bord.luckor, bord.luckor[traff].GeKort(), q);
    if (till < 0)
        return std::nullopt;
    return KortDrag(traff, till);
}

void Skapa(Stallning& bord) {
    bord.luckor.clear();
    bord.luckor.reserve(kRitadePlatser);
    for (int i = 0; i < kAntalLuckor; ++i)
        bord.luckor.emplace_back(BRect(0, 0, 0, 0), i >= kForstaLek);
}

void LaggUtLeken(Stallning& bord) {
    LekRegler::NyGiv(bord);
    bord.antalUndo = 0;
    for (int i = 0; i < kBortlagda; ++i)
        bord.kortlek.GeKort();
    bord.kortlek.Blanda();
    LekRegler::LaggILeken(bord, kForstaLek);
}

void DelaUt(Stallning& bord, Flygledare* flyg) {
    // Row by row across the towers.
    std::vector<int> mal;
    for (int r = 0; r < 3; ++r)
        for (int t = 0; t < kTorn; ++t)
            mal.push_back(kPerTorn * t + r);
    LekRegler::DelaFranLeken(bord, kLeken, mal, flyg, kGivSteg);
}

std::vector<Drag> LagligaDrag(const Stallning& bord) {
    const std::vector<Lucka>& luckor = bord.luckor;
    std::vector<Drag> drag;
    for (int fran = 0; fran <= kSistaTornLucka; ++fran) {
        if (!Fylld(luckor, fran) || ToppFor(luckor, fran) != fran)
            continue;
        std::vector<int> mal;
        if (int klick = KlickMal(luckor, fran); klick >= 0)
            mal.push_back(klick);
        for (int j = 0; j <= kSistaDropLucka; ++j) {
            int till = PlatsVid(luckor, j, luckor[fran].GeKort());
            if (till >= 0 && std::find(mal.begin(), mal.end(), till) == mal.end())
                mal.push_back(till);
        }
        for (int till : mal)
            drag.push_back(KortDrag(fran, till));
    }
    return drag;
}

void GorDrag(Stallning& bord, const Drag& drag, Flygledare* flyg) {
    if (drag.slag != DragSlag::Kort)
        return;
    FlyttaOchSpara(bord, drag.fran, drag.till, flyg, kFlyttSteg);
}

int Angra(Stallning& bord, Flygledare* flyg) {
    return AngraSenaste(bord, flyg, kAngraSteg);
}

bool KlarSpel(Stallning& bord) {
    const std::vector<Lucka>& luckor = bord.luckor;
    for (int i = 0; i <= kSistaTornLucka; ++i) {
        bool rad = true;
        for (int k = 0; k < 9 && rad; ++k)
            rad = Fylld(luckor, i + k) && luckor[i + k].GeKort().KortValor() == 9 - k;
        if (rad)
            return true;
    }
    return false;
}

// The table ranks by undos and then time, and a stored entry's cards weigh ten million
// each against a new result, which counts none: an entry stores none, so that the results
// after it still rank against it by their undos.
HiscoreResultat Resultat(const Stallning&) {
    return HiscoreResultat{0, 1};
}

namespace {

// Where each value lies when every tower falls from its base up: the tower of each card
// (index 1..9), or nothing while some card lies on a smaller one.
std::optional<std::array<int, 10>> Ordnade(const std::vector<Lucka>& luckor) {
    std::array<int, 10> torn{};
    for (int t = 0; t < kTorn; ++t) {
        int forra = 10;
        for (int i = kPerTorn * t; i < kPerTorn * (t + 1) && Fylld(luckor, i); ++i) {
            const int v = luckor[i].GeKort().KortValor();
            if (v >= forra || v < 1 || v > 9)
                return std::nullopt;
            torn[static_cast<size_t>(v)] = t;
            forra = v;
        }
    }
    return torn;
}

// The next move of the shortest way to put cards 1..k onto tower `mal`, as (card, tower),
// or card 0 when they are there: the cards below k go out of the way, then k moves.
std::pair<int, int> NastaFlytt(const std::array<int, 10>& torn, int k, int mal) {
    if (k == 0)
        return {0, 0};
    if (torn[static_cast<size_t>(k)] == mal)
        return NastaFlytt(torn, k - 1, mal);
    const int tredje = 3 - torn[static_cast<size_t>(k)] - mal;
    std::pair<int, int> forst = NastaFlytt(torn, k - 1, tredje);
    if (forst.first != 0)
        return forst;
    return {k, mal};
}

class Kunskap final : public SokKunskap {
public:
    // The towers in order of their cards: any card may go onto a larger one or into an empty
    // tower, and any tower may end the game, so the towers play alike.
    void Nyckel(const SpelBord& b, std::string& nyckel) const override {
        std::array<std::string, kTorn> torn;
        for (int t = 0; t < kTorn; ++t)
            for (int i = kPerTorn * t; i < kPerTorn * (t + 1) && Fylld(b.luckor, i); ++i)
                torn[static_cast<size_t>(t)].push_back(KortKod(b.luckor[i]));
        std::sort(torn.begin(), torn.end());
        for (const std::string& t : torn) {
            nyckel += t;
            nyckel.push_back(0);
        }
    }

    // A card onto the card one higher first, then onto other cards, then into an empty
    // tower; the larger cards first.
    void Ordna(const SpelBord& b, std::vector<Drag>& dragen) const override {
        auto rang = [&](const Drag& d) {
            const int valor = b.luckor[d.fran].GeKort().KortValor();
            if (TornBas(d.till))
                return 200 - valor;
            const int under = b.luckor[d.till - 1].GeKort().KortValor();
            return (under == valor + 1 ? 0 : 100) - valor;
        };
        std::stable_sort(dragen.begin(), dragen.end(),
                         [&](const Drag& x, const Drag& y) { return rang(x) < rang(y); });
    }

    // For the quick first pass: once every tower falls from its base up, the moves of the
    // shortest way to gather them all on the nine's tower.
    bool HarTroligaDrag() const override { return true; }
    int TroligtDrag(const SpelBord& b, const std::vector<Drag>& dragen) const override {
        std::optional<std::array<int, 10>> torn = Ordnade(b.luckor);
        if (!torn)
            return -1;
        auto [kort, mal] = NastaFlytt(*torn, 8, (*torn)[9]);
        return ForstaDragSom(dragen, [&b, kort = kort, mal = mal](const Drag& d) {
            return b.luckor[d.fran].GeKort().KortValor() == kort && d.till / kPerTorn == mal;
        });
    }
};

} // namespace

const SpelRegler& Regler() {
    return SpeletsRegler<Stallning, Kunskap>();
}

} // namespace TowerRegler

namespace TowerRegler {

std::vector<Hog> HogTabell(const Stallning& /*bord*/) {
    std::vector<Hog> hogar;
    for (int t = 0; t < kTorn; ++t)
        hogar.push_back({HogSlag::Torn, t + 1, kPerTorn * t, kPerTorn * t + kPerTorn - 1});
    return hogar;
}

} // namespace TowerRegler
