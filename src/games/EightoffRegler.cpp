#include "games/EightoffRegler.h"

#include "cards/SokKunskap.h"

#include <algorithm>
#include <array>
#include <string>

namespace EightoffRegler {

using namespace KolumnRegler;

const Plan& Planen() {
    static const Plan plan{8,          kForstaGrund,
                           kForstaLek, kAntalLuckor,
                           true,       184,
                           235,        FriRakning::NioParVarannan,
                           true,       {176, 178, 180, 182, 184, 186, 188, 198, 192, 205, 218, 231},
                           GivOrdning};
    return plan;
}

namespace {

constexpr int kForstaFricell = KolumnRegler::kForstaFricell;
constexpr int kOrdningar = 24;

bool FricellsPlats(int i) {
    return i >= kForstaFricell && i < kForstaGrund && (i - kForstaFricell) % 2 == 0;
}

// A card on the card one higher of its suit, as the columns are built.
bool IFoljd(const Kort& under, const Kort& kort) {
    return under.KortFarg() == kort.KortFarg() && under.KortValor() == kort.KortValor() + 1;
}

// A card taken off the card one higher of its suit in a column into a free cell: a run
// already built is broken.
bool BryterRad(const std::vector<Lucka>& l, const Drag& d) {
    return d.fran < kForstaFricell && !KolumnRegler::KolumnBas(d.fran) && FricellsPlats(d.till) &&
           IFoljd(l[d.fran - 1].GeKort(), l[d.fran].GeKort());
}

// The first move of a card home, one onto an empty base but the first where there is one
// (a non-ace onto the first base from cell 8's spare is not one); -1.
int HemDrag(const std::vector<Lucka>& l, const std::vector<Drag>& dragen) {
    int forstaBasen = -1;
    for (std::size_t i = 0; i < dragen.size(); ++i) {
        const Drag& d = dragen[i];
        if (d.slag != DragSlag::Kort || d.fran >= kForstaGrund || d.till < kForstaGrund ||
            d.till >= kForstaLek)
            continue;
        if (d.till != kForstaGrund)
            return static_cast<int>(i);
        if (forstaBasen < 0 && l[d.fran].GeKort().KortValor() == 1)
            forstaBasen = static_cast<int>(i);
    }
    return forstaBasen;
}

// The first move of a card from a free cell or its spare onto a card in a column; -1.
int UrCellPaKort(const std::vector<Drag>& dragen) {
    for (std::size_t i = 0; i < dragen.size(); ++i) {
        const Drag& d = dragen[i];
        if (d.slag == DragSlag::Kort && d.fran >= kForstaFricell && d.fran < kForstaGrund &&
            d.till < kForstaFricell && !KolumnRegler::KolumnBas(d.till))
            return static_cast<int>(i);
    }
    return -1;
}

// Free cells `forsta`, `forsta` + 2, ... (`antal` of them), each with its spare slot, in an
// order that does not depend on which cell holds what.
void CellerSomMangd(const std::vector<Lucka>& l, int forsta, int antal, std::string& nyckel) {
    std::array<int, 3> celler{};
    for (int i = 0; i < antal; ++i) {
        const int cell = forsta + 2 * i;
        celler[static_cast<std::size_t>(i)] = static_cast<unsigned char>(KortKod(l[cell])) * 256 +
                                              static_cast<unsigned char>(KortKod(l[cell + 1]));
    }
    std::sort(celler.begin(), celler.begin() + antal);
    for (int i = 0; i < antal; ++i) {
        nyckel.push_back(static_cast<char>(celler[static_cast<std::size_t>(i)] / 256));
        nyckel.push_back(static_cast<char>(celler[static_cast<std::size_t>(i)] % 256));
    }
}

// Keeps, of the moves of one card or run into empty columns, the first, and of those of one
// card into empty free cells 2..8, the first: the places the quick pass tries.
void ForstaTommaPlatsen(const std::vector<Lucka>& l, std::vector<Drag>& dragen) {
    auto plats = [&](const Drag& d) {
        if (!l[d.till].Tom())
            return 0;
        if (d.till < kForstaFricell && KolumnRegler::KolumnBas(d.till))
            return 1;
        return d.slag == DragSlag::Kort && FricellsPlats(d.till) && d.till != kForstaFricell ? 2
                                                                                             : 0;
    };
    std::size_t ut = 0;
    for (std::size_t i = 0; i < dragen.size(); ++i) {
        const Drag& d = dragen[i];
        const int p = plats(d);
        bool igen = false;
        for (std::size_t j = 0; j < ut && p != 0 && !igen; ++j)
            igen = plats(dragen[j]) == p && dragen[j].slag == d.slag && dragen[j].fran == d.fran &&
                   dragen[j].antal == d.antal;
        if (!igen)
            dragen[ut++] = d;
    }
    dragen.resize(ut);
}

// Eight off's search knowledge: the column family's listing, order and likely moves, with
// this game's own key, measure of a table and quick-pass pruning.
class Kunskap final : public SokKunskap {
public:
    // Tables that differ only in which of free cells 2..4 holds what, which of free cells
    // 5..7 holds what (each with its spare slot), or which of foundations 2..4 a suit is
    // built on share a key, and they play alike:
    // - Free cells 2..4 are told apart by nothing but a click's choice of the first empty
    //   place, and a drop reaches every empty cell; the free places count each once, and no
    //   card can reach their spares (a drop onto a card in a free cell starts at cell 5).
    // - Free cells 5..7 each take the card one higher of its suit into their spare, alike;
    //   a drop onto a spare's card lands in the next cell (6, 7 or 8), where the drop's
    //   empty-place step puts the same card anyway. Cell 8 is its own: a card on its spare
    //   leads a drop onto foundation 1's base. Cell 1 is its own: it counts twice as a free
    //   place.
    // - Foundations 2..4 start only with an ace (the slot before each base is a king's
    //   level), each can be dropped on or clicked to and taken from, and none counts as a
    //   free place; so each holds ace to some card of one suit, and which is read from the
    //   cards not elsewhere. Foundation 1 counts as a free place while empty and may start
    //   on any card (from cell 8's spare): its first and top cards are kept.
    // The columns stay in place: a run that a click can move but a drop cannot (a diamond
    // first, then cards not hearts) goes to the first of an empty column and the card it
    // fits on, so where the columns stand may matter. The deck pile never changes after the
    // deal.
    void Nyckel(const SpelBord& b, std::string& nyckel) const override {
        const std::vector<Lucka>& l = b.luckor;
        for (int c = 0; c < KolumnRegler::kKolumner; ++c) {
            const int bas = c * KolumnRegler::kPlatserPerKolumn;
            for (int p = 0; p < KolumnRegler::kPlatserPerKolumn && !l[bas + p].Tom(); ++p)
                nyckel.push_back(KortKod(l[bas + p]));
            nyckel.push_back('|');
        }
        CellerSomMangd(l, kForstaFricell, 1, nyckel);
        CellerSomMangd(l, kForstaFricell + 2, 3, nyckel);
        CellerSomMangd(l, kForstaFricell + 8, 3, nyckel);
        CellerSomMangd(l, kForstaFricell + 14, 1, nyckel);
        const int topp = Toppen(l, kForstaGrund);
        nyckel.push_back(KortKod(l[kForstaGrund]));
        nyckel.push_back(topp < 0 ? '\0' : KortKod(l[topp]));
        KortOchPlatser(l, kForstaLek, kSistaLek, nyckel);
    }
    // Every move the rules list: the key keeps the columns in place and the free cells in
    // groups, so a move into an empty column or cell need not reach the key of one into
    // another. Ordna then keeps one move of a card or run into each group of places the key
    // does not tell apart (KolumnRegler::Klass).
    bool ListaDrag(const SpelBord& b, std::vector<Drag>& dragen) const override {
        KolumnRegler::ListaDrag(static_cast<const KolumnRegler::Stallning&>(b), dragen, false);
        return true;
    }
    void Ordna(const SpelBord& b, std::vector<Drag>& dragen) const override {
        Kolumn().Ordna(b, dragen);
    }
    // Any card home, and an ace onto a base but the first while one is empty: the first
    // counts as a free place while empty. Else a card out of a free cell onto the card one
    // higher of its suit in a column.
    int TroligtDrag(const SpelBord& b, const std::vector<Drag>& dragen) const override {
        const int hem = HemDrag(b.luckor, dragen);
        return hem >= 0 ? hem : UrCellPaKort(dragen);
    }
    bool HarTroligaDrag() const override { return true; }
    // The quick pass runs in several orders in turns: a deal whose win lies late in one
    // order lies early in another.
    int Ordningar(const SpelBord&) const override { return kOrdningar; }
    // The complete search takes its turns among the quick orders, an order's share: it
    // proves nothing here within a second, but wins some deals at once that the quick
    // orders find late.
    int HelaITur() const override { return 1; }

    // The column family's; of a card's or run's moves into empty columns only the first,
    // and of a card's into empty free cells 2..8 only the first; no card taken off the card
    // one higher of its suit into a free cell (that breaks a run already built); and while
    // two places or fewer are free (free cells and columns), no card from a column into a
    // free cell: the last places are kept for cards on their way home.
    void GallraHastigt(const SpelBord& b, std::vector<Drag>& dragen) const override {
        const std::vector<Lucka>& l = b.luckor;
        ForstaTommaPlatsen(l, dragen);
        Kolumn().GallraHastigt(b, dragen);
        int fria = 0;
        for (int i = kForstaFricell; i < kForstaGrund; i += 2)
            if (l[i].Tom())
                ++fria;
        for (int c = 0; c < KolumnRegler::kKolumner; ++c)
            if (l[c * KolumnRegler::kPlatserPerKolumn].Tom())
                ++fria;
        std::erase_if(dragen, [&](const Drag& d) {
            return BryterRad(l, d) ||
                   (fria <= 2 && d.fran < kForstaFricell && FricellsPlats(d.till));
        });
    }

    // Cards not yet home weigh most; then each card in a column that neither lies on the
    // card one higher of its suit nor is free of lower cards of its suit beneath it (it
    // must move again before those go home); then the free cells taken.
    int Avstand(const SpelBord& b) const override {
        const std::vector<Lucka>& l = b.luckor;
        int hemma = 0;
        for (int j = kForstaGrund; j < kForstaLek; ++j)
            if (!l[j].Tom())
                ++hemma;
        int iVagen = 0;
        for (int c = 0; c < KolumnRegler::kKolumner; ++c) {
            const int bas = c * KolumnRegler::kPlatserPerKolumn;
            std::array<int, 4> lagst{14, 14, 14, 14};
            for (int p = 0; p < KolumnRegler::kPlatserPerKolumn && !l[bas + p].Tom(); ++p) {
                const Kort& k = l[bas + p].GeKort();
                int& lagstISvit = lagst[static_cast<std::size_t>(k.KortFarg())];
                if (lagstISvit < k.KortValor() && !(p > 0 && IFoljd(l[bas + p - 1].GeKort(), k)))
                    ++iVagen;
                lagstISvit = std::min(lagstISvit, k.KortValor());
            }
        }
        int celler = 0;
        for (int i = kForstaFricell; i < kForstaGrund; i += 2)
            if (!l[i].Tom())
                ++celler;
        return 3 * (52 - hemma) + iVagen + celler;
    }

private:
    static const SokKunskap& Kolumn() { return KolumnRegler::Kunskapen(); }
};

} // namespace

const SpelRegler& Regler() {
    return ReglerMed<Planen, KunskapAv<Kunskap>>();
}

Rutnat RaknaUtLuckor(std::vector<Lucka>& luckor, BRect ram) {
    Rutnat r = KolumnRutnat(ram);
    LaggKolumner(luckor, r, 2 * r.h + 3 * r.m);
    for (int i = 0; i < 8; ++i)
        LaggFricell(luckor, i, r.Ruta(i, r.h + 2 * r.m));
    for (int g = 0; g < 4; ++g)
        LaggGrund(luckor, Planen(), g, r.Ruta(g + 2, r.m));
    LaggLek(luckor, Planen(), r);
    return r;
}

std::vector<std::pair<int, int>> GivOrdning() {
    std::vector<std::pair<int, int>> ordning;
    int d = 51;
    for (int r = 0; r < 6; ++r)
        for (int c = 0; c < kKolumner; ++c)
            ordning.emplace_back(kForstaLek + d--, c * kPlatserPerKolumn + r);
    for (int i = 0; i < 4; ++i)
        ordning.emplace_back(kForstaLek + d--, kForstaFricell + 2 * i);
    return ordning;
}

} // namespace EightoffRegler
