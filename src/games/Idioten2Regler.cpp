#include "games/Idioten2Regler.h"

#include "cards/Luckor.h"
#include "games/KolumnRegler.h"

#include <algorithm>
#include <array>
#include <string>

namespace Idioten2Regler {

namespace {

BRect Ruta(int left, int top, int right, int bottom) {
    return BRect(static_cast<float>(left), static_cast<float>(top), static_cast<float>(right),
                 static_cast<float>(bottom));
}

// The last place of each column is left out of the search for top cards.
bool SistaPlatsen(int j) {
    return j % kPlatserPerKolumn == kPlatserPerKolumn - 1;
}

} // namespace

int KasseradFor(const Kort& kort) {
    return kSistaKolumnLucka + 13 * static_cast<int>(kort.KortFarg()) + kort.KortValor();
}

int Rang(const Kort& kort) {
    return kort.KortValor() == 1 ? 14 : kort.KortValor();
}

Utlagg RaknaUtLuckor(std::vector<Lucka>& luckor, BRect ram) {
    KolumnRegler::Rutnat r = KolumnRegler::KolumnRutnat(ram);
    const int w = r.w;
    const int h = r.h;
    const int m = r.m;
    for (int c = 0; c < kKolumner; ++c)
        for (int p = 0; p < kPlatserPerKolumn; ++p)
            luckor[KolumnBas(c) + p].NyPos(
                Ruta(c * (w + m), 38 * p + m, c * (w + m) + w, 38 * p + h + m));
    for (int i = kForstaKasserad; i <= kSistaKasserad; ++i)
        luckor[i].NyPos(Ruta(4 * w + 5 * m, m, 5 * (w + m), h + m));
    for (int k = 0; k <= kSistaLek - kForstaLek; ++k)
        luckor[kForstaLek + k].NyPos(
            Ruta(4 * w + 5 * m, h + 2 * m + 2 * k, 5 * (w + m), 2 * h + 2 * m + 2 * k));
    Utlagg u;
    u.w = w;
    u.h = h;
    BRect forsta = luckor[kForstaLek].GePos();
    u.lekKnapp = BRect(forsta.left, forsta.top, forsta.left + static_cast<float>(w),
                       forsta.bottom + static_cast<float>(kLekKnappUnder));
    return u;
}

int Traff(const std::vector<Lucka>& luckor, BPoint p) {
    return TraffMedBand(luckor, 0, kSistaTraff, p, kBand);
}

bool KanKasseras(const std::vector<Lucka>& luckor, int lucka) {
    const Kort& kort = luckor[lucka].GeKort();
    for (int j = 0; j <= kSistaKolumnLucka; ++j) {
        if (j == lucka || SistaPlatsen(j) || !Topp(luckor, j))
            continue;
        const Kort& annan = luckor[j].GeKort();
        if (annan.KortFarg() == kort.KortFarg() && Rang(annan) > Rang(kort))
            return true;
    }
    return false;
}

int ForstaTommaBas(const std::vector<Lucka>& luckor) {
    for (int c = 0; c < kKolumner; ++c)
        if (luckor[KolumnBas(c)].Tom())
            return KolumnBas(c);
    return -1;
}

int KlickMal(const std::vector<Lucka>& luckor, int lucka) {
    if (KanKasseras(luckor, lucka))
        return KasseradFor(luckor[lucka].GeKort());
    return ForstaTommaBas(luckor);
}

int DropMal(const std::vector<Lucka>& luckor, int lucka, BPoint q) {
    for (int c = 0; c < kKolumner; ++c)
        if (luckor[KolumnBas(c)].Tom() && luckor[KolumnBas(c)].GePos().Contains(q))
            return KolumnBas(c);
    if (KanKasseras(luckor, lucka))
        return KasseradFor(luckor[lucka].GeKort());
    return -1;
}

bool Vunnet(const std::vector<Lucka>& luckor) {
    if (!luckor[kForstaLek].Tom())
        return false;
    for (int c = 0; c < kKolumner; ++c) {
        const Lucka& bas = luckor[KolumnBas(c)];
        if (bas.Tom() || bas.GeKort().KortValor() != 1 || !luckor[KolumnBas(c) + 1].Tom())
            return false;
    }
    return true;
}

void Skapa(Stallning& bord) {
    bord.luckor.clear();
    bord.luckor.reserve(kAntalLuckor);
    for (int i = 0; i < kAntalLuckor; ++i)
        bord.luckor.emplace_back(BRect(0, 0, 0, 0), i >= kAntalFramsida);
}

void LaggUtLeken(Stallning& bord) {
    LekRegler::LaggLeken(bord, kForstaLek);
}

void LaggUtOblandad(Stallning& bord) {
    LekRegler::LaggOblandadLek(bord, kForstaLek);
}

void DelaUt(Stallning& bord, Flygledare* flyg) {
    for (int c = 0; c < kKolumner; ++c) {
        int topp = kLeken.Topp(bord.luckor);
        if (topp < 0)
            return;
        if (flyg)
            flyg->FlygKort(topp, KolumnBas(c), kGivSteg);
        Flytta(bord.luckor, topp, KolumnBas(c));
    }
}

std::vector<Drag> LagligaDrag(const Stallning& bord) {
    const std::vector<Lucka>& luckor = bord.luckor;
    std::vector<Drag> drag;
    for (int t = 0; t <= kSistaTraff; ++t) {
        if (!Topp(luckor, t))
            continue;
        std::vector<int> mal;
        auto lagg = [&](int till) {
            if (till >= 0 && std::find(mal.begin(), mal.end(), till) == mal.end())
                mal.push_back(till);
        };
        lagg(KlickMal(luckor, t));
        for (int c = 0; c < kKolumner; ++c)
            if (luckor[KolumnBas(c)].Tom())
                lagg(KolumnBas(c));
        if (KanKasseras(luckor, t))
            lagg(KasseradFor(luckor[t].GeKort()));
        for (int till : mal)
            drag.push_back(KortDrag(t, till));
    }
    if (!kLeken.Tom(luckor))
        drag.push_back(KnappDrag());
    return drag;
}

void GorDrag(Stallning& bord, const Drag& drag, Flygledare* flyg) {
    std::vector<Lucka>& luckor = bord.luckor;
    if (drag.slag == DragSlag::Knapp) {
        std::vector<int> mal;
        for (int c = 0; c < kKolumner; ++c) {
            int till = ForstaTomma(luckor, KolumnBas(c), KolumnBas(c) + kPlatserPerKolumn - 1);
            if (till >= 0)
                mal.push_back(till);
        }
        LekRegler::GeFranLeken(bord, kLeken, mal, flyg, kGivSteg);
        return;
    }
    if (drag.slag != DragSlag::Kort)
        return;
    if (flyg)
        flyg->FlygKort(drag.fran, drag.till, kFlyttSteg);
    Flytta(luckor, drag.fran, drag.till);
    bord.undoLista.emplace_back(drag.fran, drag.till);
}

int Angra(Stallning& bord, Flygledare* flyg) {
    std::vector<std::pair<int, int>>& lista = bord.undoLista;
    if (lista.empty())
        return 0;
    auto [fran, till] = lista.back();
    if (fran == LekRegler::kFranLeken) {
        // A deal off the stock goes back whole: four cards, four undos.
        bord.antalUndo += kKolumner;
        LekRegler::AngraFranLeken(bord, kLeken, kKolumner, flyg, kAngraSteg);
    } else {
        ++bord.antalUndo;
        lista.pop_back();
        if (flyg)
            flyg->FlygKort(till, fran, kAngraSteg);
        Flytta(bord.luckor, till, fran);
    }
    return static_cast<int>(lista.size());
}

bool KlarSpel(Stallning& bord) {
    return Vunnet(bord.luckor);
}

HiscoreResultat Resultat(const Stallning& bord) {
    int kort = AntalFyllda(bord.luckor, kForstaKasserad, kSistaReserv);
    if (Vunnet(bord.luckor))
        kort += kKolumner;
    return HiscoreResultat{kort, 1};
}

namespace {

// How many of the slots `forsta`, `forsta` + 1, ... (at most `antal`) hold cards, when they
// are filled from the first without a gap: found by halving, as a search asks for the
// stock's at every table, several times.
int Fyllda(const std::vector<Lucka>& luckor, int forsta, int antal) {
    int fyllda = 0;
    while (fyllda < antal) {
        const int mitt = (fyllda + antal + 1) / 2;
        if (luckor[forsta + mitt - 1].Tom())
            antal = mitt - 1;
        else
            fyllda = mitt;
    }
    return fyllda;
}

// How many cards each column holds; they lie from its base up without a gap.
std::array<int, kKolumner> Hojder(const std::vector<Lucka>& luckor) {
    std::array<int, kKolumner> hojd{};
    for (int c = 0; c < kKolumner; ++c)
        while (hojd[static_cast<size_t>(c)] < kPlatserPerKolumn &&
               !luckor[KolumnBas(c) + hojd[static_cast<size_t>(c)]].Tom())
            ++hojd[static_cast<size_t>(c)];
    return hojd;
}

// How many cards the stock holds: they lie from its first slot up without a gap.
int KortILeken(const std::vector<Lucka>& luckor) {
    return Fyllda(luckor, kForstaLek, kSistaLek - kForstaLek + 1);
}

// The stock's top slot, or kForstaLek − 1 when it is empty.
int LekensTopp(const std::vector<Lucka>& luckor) {
    return kForstaLek + KortILeken(luckor) - 1;
}

// Whether no column can come to hold a card in its last place, where the table's edge
// cases lie (a top there beats nothing, and is not reached by a press).
bool InomKanten(const std::vector<Lucka>& luckor) {
    const std::array<int, kKolumner> hojd = Hojder(luckor);
    const int givar = (KortILeken(luckor) + kKolumner - 1) / kKolumner;
    return *std::max_element(hojd.begin(), hojd.end()) + givar < kPlatserPerKolumn;
}

// Whether each lower card of the suit of the top card in slot `lucka` that lies in a column
// now is on top, or lies under lower cards of that suit alone (and this card), in another
// column than a card on top that beats this one: that card stays on top while they go, and
// beats them one after another.
bool LagreFrilaggs(const std::vector<Lucka>& luckor, int lucka) {
    const Kort& kort = luckor[lucka].GeKort();
    const std::array<int, kKolumner> hojd = Hojder(luckor);
    auto lagre = [&](int i) {
        return luckor[i].GeKort().KortFarg() == kort.KortFarg() &&
               Rang(luckor[i].GeKort()) < Rang(kort);
    };
    for (int d = 0; d < kKolumner; ++d) {
        const int h = hojd[static_cast<size_t>(d)];
        if (d == lucka / kPlatserPerKolumn || h == 0)
            continue;
        const Kort& slar = luckor[KolumnBas(d) + h - 1].GeKort();
        if (slar.KortFarg() != kort.KortFarg() || Rang(slar) <= Rang(kort))
            continue;
        bool alla = true;
        for (int c = 0; c < kKolumner && alla; ++c) {
            bool fri = c != d;
            for (int p = hojd[static_cast<size_t>(c)]; p-- > 0 && alla;) {
                const int i = KolumnBas(c) + p;
                if (lagre(i))
                    alla = fri;
                else if (i != lucka)
                    fri = false;
            }
        }
        if (alla)
            return true;
    }
    return false;
}

// Whether each card of the suit of the card in slot `lucka`, and lower, that is still in
// play can be thrown out without it: it lies in a column where the card that beats this one
// reaches it (LagreFrilaggs), or a press will deal it together with a higher card of its
// suit (the four cards of a press lie on top at once). So too when none is left at all.
bool LagreUtanDetta(const std::vector<Lucka>& luckor, int lucka) {
    const Kort& kort = luckor[lucka].GeKort();
    auto ifarg = [&](int i) { return luckor[i].GeKort().KortFarg() == kort.KortFarg(); };
    if (!LagreFrilaggs(luckor, lucka))
        return false;
    const int topp = LekensTopp(luckor);
    for (int j = topp; j >= kForstaLek; --j) {
        if (!ifarg(j) || Rang(luckor[j].GeKort()) >= Rang(kort))
            continue;
        const int forsta = topp - (topp - j) / kKolumner * kKolumner;
        bool hogre = false;
        for (int k = forsta; k > forsta - kKolumner && k >= kForstaLek; --k)
            hogre = hogre || (ifarg(k) && Rang(luckor[k].GeKort()) > Rang(luckor[j].GeKort()));
        if (!hogre)
            return false;
    }
    return true;
}

// The rank of a card by its code 13·suit + value − 1, aces above kings.
int KodRang(int kod) {
    return kod % 13 == 0 ? 14 : kod % 13 + 1;
}

// One column's cards as codes, without a list of its own: a search asks for them at every
// table. A full column and every card the stock holds fit.
class Rad {
public:
    void push_back(int kod) { kort[static_cast<size_t>(antal++)] = static_cast<signed char>(kod); }
    std::size_t size() const { return static_cast<std::size_t>(antal); }
    int operator[](std::size_t i) const { return kort[i]; }
    int front() const { return kort[0]; }
    const signed char* begin() const { return kort.data(); }
    const signed char* end() const { return kort.data() + antal; }

private:
    std::array<signed char, kPlatserPerKolumn + 52> kort{};
    int antal = 0;
};
using Rader = std::array<Rad, kKolumner>;

// Each column's cards from its base up, then the cards the stock will deal onto it, as
// codes 13·suit + value − 1. The stock's top card goes to the first column, the next to the
// second, and so on round; that holds while no column can reach its last place.
Rader KolumnerMedLeken(const std::vector<Lucka>& luckor) {
    Rader kolumner;
    auto kod = [&](int i) {
        return 13 * static_cast<int>(luckor[i].GeKort().KortFarg()) +
               luckor[i].GeKort().KortValor() - 1;
    };
    for (int c = 0; c < kKolumner; ++c)
        for (int p = 0; p < kPlatserPerKolumn && !luckor[KolumnBas(c) + p].Tom(); ++p)
            kolumner[static_cast<size_t>(c)].push_back(kod(KolumnBas(c) + p));
    const int topp = LekensTopp(luckor);
    for (int j = topp; j >= kForstaLek; --j)
        kolumner[static_cast<size_t>((topp - j) % kKolumner)].push_back(kod(j));
    return kolumner;
}

// Whether the table can no longer be won because no column will ever be empty again and a
// card can then never be thrown out.
//
// Give each card in play the presses between which it can lie on top: from its own press
// (now, for a card in a column) until the press that deals onto its column the first card
// above it that never leaves (never, if none comes; now, if one lies above it already).
// Take a set of cards, none an ace, such that no card of the set can lie on top at the same
// time as a higher card of its suit in another column, with the aces and the set's cards
// counted as the cards that never leave. Suppose further that every column holds now an ace
// or a card of the set. Then no card of the set or ace ever leaves, and no column ever
// empties: look at the first move that does any of these. Until then no column was empty,
// so no card changed column: each lay where it was or where the stock dealt it (no column
// can reach its last place), and the aces and the set's cards covered what they covered.
// A column empties only when all its cards have left, its ace or card of the set among
// them. An ace only moves into an empty column, of which there is none yet. A card of the
// set leaves, with no empty column to move into, only when thrown out, on top beside a
// higher card of its suit on top of another column: both between their presses, which the
// set rules out. A card that never leaves keeps the game from being won. Taking a card out
// of the set only lengthens the others' times, so the largest such set is found by starting
// from every card but the aces and taking out each card that fails, until none does.
bool AldrigTomKolumn(const std::vector<Lucka>& luckor) {
    for (int c = 0; c < kKolumner; ++c)
        if (luckor[KolumnBas(c)].Tom())
            return false;
    if (!InomKanten(luckor))
        return false;
    const std::array<int, kKolumner> nu = Hojder(luckor);
    const Rader kolumner = KolumnerMedLeken(luckor);
    constexpr int kAldrig = 1000;
    std::array<int, 52> kolumn;
    std::array<int, 52> plats{};
    std::array<int, 52> fran{};
    std::array<int, 52> till{};
    std::array<bool, 52> kvar{};
    // The cards to look at (again), the top ones first; and for each column how many of its
    // cards now are aces or still in the set.
    std::array<int, 52> ko;
    int antal = 0;
    std::array<int, kKolumner> staende = nu;
    // The cards in play of each suit, highest first.
    std::array<std::array<int, 13>, 4> ifarg;
    std::array<int, 4> iFargen{};
    kolumn.fill(-1);
    for (int c = 0; c < kKolumner; ++c) {
        const Rad& rad = kolumner[static_cast<size_t>(c)];
        const int hojd = nu[static_cast<size_t>(c)];
        int forst = kAldrig;
        for (int p = static_cast<int>(rad.size()); p-- > 0;) {
            const auto k = static_cast<size_t>(rad[static_cast<size_t>(p)]);
            kolumn[k] = c;
            plats[k] = p;
            fran[k] = p < hojd ? 0 : p - hojd + 1;
            kvar[k] = k % 13 != 0;
            till[k] = forst;
            forst = fran[k];
        }
        for (int p = static_cast<int>(rad.size()); p-- > hojd;)
            if (kvar[static_cast<size_t>(rad[static_cast<size_t>(p)])])
                ko[static_cast<size_t>(antal++)] = rad[static_cast<size_t>(p)];
    }
    for (int c = 0; c < kKolumner; ++c)
        for (int p = 0; p < nu[static_cast<size_t>(c)]; ++p)
            if (kvar[static_cast<size_t>(kolumner[static_cast<size_t>(c)][static_cast<size_t>(p)])])
                ko[static_cast<size_t>(antal++)] =
                    kolumner[static_cast<size_t>(c)][static_cast<size_t>(p)];
    for (int f = 0; f < 4; ++f)
        for (int v = 13; v >= 1; --v) {
            const int k = 13 * f + v % 13;
            if (kolumn[static_cast<size_t>(k)] >= 0)
                ifarg[static_cast<size_t>(f)]
                     [static_cast<size_t>(iFargen[static_cast<size_t>(f)]++)] = k;
        }
    std::array<bool, 52> iKo = kvar;
    while (antal > 0) {
        const int x = ko[static_cast<size_t>(--antal)];
        iKo[static_cast<size_t>(x)] = false;
        const int c = kolumn[static_cast<size_t>(x)];
        const std::array<int, 13>& farg = ifarg[static_cast<size_t>(x / 13)];
        bool slas = false;
        for (int i = 0; farg[static_cast<size_t>(i)] != x && !slas; ++i) {
            const auto w = static_cast<size_t>(farg[static_cast<size_t>(i)]);
            slas = kolumn[w] != c && std::max(fran[static_cast<size_t>(x)], fran[w]) <
                                         std::min(till[static_cast<size_t>(x)], till[w]);
        }
        if (!slas)
            continue;
        kvar[static_cast<size_t>(x)] = false;
        if (plats[static_cast<size_t>(x)] < nu[static_cast<size_t>(c)] &&
            --staende[static_cast<size_t>(c)] == 0)
            return false;
        // The cards under it, down to the next that never leaves, are covered for good only
        // when its own cover comes; they and the lower cards of their suits are looked at
        // again.
        const Rad& rad = kolumner[static_cast<size_t>(c)];
        for (int p = plats[static_cast<size_t>(x)]; p-- > 0;) {
            const int y = rad[static_cast<size_t>(p)];
            till[static_cast<size_t>(y)] = till[static_cast<size_t>(x)];
            const std::array<int, 13>& dess = ifarg[static_cast<size_t>(y / 13)];
            for (int i = iFargen[static_cast<size_t>(y / 13)]; i-- > 0;) {
                const int v = dess[static_cast<size_t>(i)];
                if (kvar[static_cast<size_t>(v)] && !iKo[static_cast<size_t>(v)]) {
                    iKo[static_cast<size_t>(v)] = true;
                    ko[static_cast<size_t>(antal++)] = v;
                }
                if (v == y)
                    break;
            }
            if (y % 13 == 0 || kvar[static_cast<size_t>(y)])
                break;
        }
    }
    return std::find(kvar.begin(), kvar.end(), true) != kvar.end();
}

// Whether the stock's last four cards, dealt one onto each column by its last press, are of
// four suits and not all aces. Then after that press every column holds a card (so none is
// empty to move into), the four top cards are of four suits (so none beats another), and
// one of them is not an ace (so the table is not won): nothing can ever be played again.
// The press must come, as a won table has no stock left.
bool SistaGivenStannar(const std::vector<Lucka>& luckor) {
    const int antal = KortILeken(luckor);
    if (antal == 0 || antal % kKolumner != 0 || !InomKanten(luckor))
        return false;
    unsigned farger = 0;
    bool baraEss = true;
    for (int i = kForstaLek; i < kForstaLek + kKolumner; ++i) {
        farger |= 1u << static_cast<unsigned>(luckor[i].GeKort().KortFarg());
        baraEss = baraEss && luckor[i].GeKort().KortValor() == 1;
    }
    return farger == 0xFu && !baraEss;
}

// Whether every column holds an ace and no column can reach its last place. Then no
// column is ever empty again (a column empties only when its ace has left, and an ace only
// moves into an empty column, which takes one emptied before), so no card ever moves from
// its column again: a card leaves only when thrown out, and the stock deals onto the
// columns in their turn.
bool EssIVarjeKolumn(const std::vector<Lucka>& luckor) {
    if (!InomKanten(luckor))
        return false;
    for (int c = 0; c < kKolumner; ++c) {
        bool ess = false;
        for (int p = 0; p < kPlatserPerKolumn && !luckor[KolumnBas(c) + p].Tom(); ++p)
            ess = ess || luckor[KolumnBas(c) + p].GeKort().KortValor() == 1;
        if (!ess)
            return false;
    }
    return true;
}

// Whether a card of the suit of the top card in slot `lucka`, and lower, lies in another
// column or will be dealt onto one.
bool LagreIAnnanKolumn(const std::vector<Lucka>& luckor, int lucka) {
    const Kort& kort = luckor[lucka].GeKort();
    const int farg = static_cast<int>(kort.KortFarg());
    const int rang = Rang(kort);
    const Rader kolumner = KolumnerMedLeken(luckor);
    for (int c = 0; c < kKolumner; ++c) {
        if (c == lucka / kPlatserPerKolumn)
            continue;
        for (int k : kolumner[static_cast<size_t>(c)])
            if (k / 13 == farg && KodRang(k) < rang)
                return true;
    }
    return false;
}

bool Kasserar(const Drag& d) {
    return d.slag == DragSlag::Kort && d.till >= kForstaKasserad;
}

class Kunskap final : public SokKunskap {
public:
    // Each column's cards from the base up, and how many cards the stock holds (its order
    // is the deal's): the discards are what is left. Once the stock is out the columns are
    // alike, and are keyed in order of their cards.
    void Nyckel(const SpelBord& b, std::string& nyckel) const override {
        const std::vector<Lucka>& luckor = b.luckor;
        std::array<std::string, kKolumner> kolumner;
        for (int c = 0; c < kKolumner; ++c)
            for (int p = 0; p < kPlatserPerKolumn && !luckor[KolumnBas(c) + p].Tom(); ++p)
                kolumner[static_cast<size_t>(c)].push_back(KortKod(luckor[KolumnBas(c) + p]));
        const int leken = KortILeken(luckor);
        if (leken == 0 && InomKanten(luckor))
            std::sort(kolumner.begin(), kolumner.end());
        for (const std::string& k : kolumner) {
            nyckel += k;
            nyckel.push_back(0);
        }
        nyckel.push_back(static_cast<char>(leken));
    }

    // The rules' moves in the rules' order, from each column's top card found once: thrown
    // out when a higher card of its suit lies on top of another column, and into each empty
    // column. Near a column's last place the rules list them.
    bool ListaDrag(const SpelBord& b, std::vector<Drag>& dragen) const override {
        const std::vector<Lucka>& luckor = b.luckor;
        if (!InomKanten(luckor))
            return false;
        dragen.clear();
        const std::array<int, kKolumner> hojd = Hojder(luckor);
        for (int c = 0; c < kKolumner; ++c) {
            if (hojd[static_cast<size_t>(c)] == 0)
                continue;
            const int topp = KolumnBas(c) + hojd[static_cast<size_t>(c)] - 1;
            const Kort& kort = luckor[topp].GeKort();
            bool slas = false;
            for (int d = 0; d < kKolumner && !slas; ++d) {
                if (d == c || hojd[static_cast<size_t>(d)] == 0)
                    continue;
                const Kort& annan =
                    luckor[KolumnBas(d) + hojd[static_cast<size_t>(d)] - 1].GeKort();
                slas = annan.KortFarg() == kort.KortFarg() && Rang(annan) > Rang(kort);
            }
            if (slas)
                dragen.push_back(KortDrag(topp, KasseradFor(kort)));
            for (int e = 0; e < kKolumner; ++e)
                if (hojd[static_cast<size_t>(e)] == 0)
                    dragen.push_back(KortDrag(topp, KolumnBas(e)));
        }
        if (!luckor[kForstaLek].Tom())
            dragen.push_back(KnappDrag());
        return true;
    }

    // Discards first, then moves into an empty column, the card that uncovers an ace or
    // leaves the tallest column first, then the stock.
    void Ordna(const SpelBord& b, std::vector<Drag>& dragen) const override {
        const std::array<int, kKolumner> hojd = Hojder(b.luckor);
        auto rang = [&](const Drag& d) {
            if (d.slag != DragSlag::Kort)
                return 1000;
            if (Kasserar(d))
                return 0;
            const int under = d.fran - 1;
            if (!ArKolumnBas(d.fran) && b.luckor[under].GeKort().KortValor() == 1)
                return 1;
            return 100 - hojd[static_cast<size_t>(d.fran / kPlatserPerKolumn)];
        };
        std::stable_sort(dragen.begin(), dragen.end(),
                         [&](const Drag& x, const Drag& y) { return rang(x) < rang(y); });
    }

    // A card that can be thrown out now goes at once when each lower card of its suit
    // still in play lies on top of a column now or will be dealt by a press together with a
    // higher card of its suit (LagreUtanDetta; so too when none is left). Play the table
    // without it beside the one that keeps it: every move of the latter is made on the
    // former too (one of a card already gone there is left out), and besides, the former
    // throws out those lower cards, at once those on top now and those under lower cards of
    // this suit alone, in another column than the card that beats this one (that card stays
    // on top meanwhile and beats each in turn) and each of the others as soon as its press has
    // dealt it (the higher card of that press lies on top beside it; the lowest first). The
    // former's columns stay the latter's with some cards left out, so a card on top in the latter
    // is on top in the former while it is there, and a column empty in the latter is empty in the
    // former. A card the latter throws out with one of the cards left out as the higher card is of
    // this suit and lower than this card, and so was gone from the former as soon as it
    // could be on top. No ace is ever left out, so when the latter is won the former is.
    // Also when every column holds an ace and the lower
    // cards of its suit all lie in its own column or will be dealt onto it: no card moves
    // from its column again, and of two cards in one column the one below is on top only
    // once the one above has gone. Once the stock is out, any card that can be thrown
    // out goes: nothing is ever laid on a top card again, so the highest top card of its
    // suit, which beats it now, stays on top or gives way to a higher one, and beats
    // whatever the card could have beaten. (Kept in mind: a column reaching its last place
    // plays by other rules, so the rules are used only while no column can.)
    int SakertDrag(const SpelBord& b, const std::vector<Drag>& dragen) const override {
        const std::vector<Lucka>& luckor = b.luckor;
        bool inom = false;
        bool provat = false;
        int essOveralt = -1;
        for (std::size_t i = 0; i < dragen.size(); ++i) {
            const Drag& d = dragen[i];
            if (!Kasserar(d))
                continue;
            if (!provat) {
                inom = InomKanten(luckor);
                provat = true;
            }
            if (!inom)
                return -1;
            if (luckor[kForstaLek].Tom() || LagreUtanDetta(luckor, d.fran))
                return static_cast<int>(i);
            if (essOveralt < 0)
                essOveralt = EssIVarjeKolumn(luckor) ? 1 : 0;
            if (essOveralt == 1 && !LagreIAnnanKolumn(luckor, d.fran))
                return static_cast<int>(i);
        }
        return -1;
    }

    bool Hopplos(const SpelBord& b) const override {
        return SistaGivenStannar(b.luckor) || AldrigTomKolumn(b.luckor);
    }

    // For the quick first pass: any card that can be thrown out is.
    bool HarTroligaDrag() const override { return true; }
    int TroligtDrag(const SpelBord&, const std::vector<Drag>& dragen) const override {
        return ForstaDragSom(dragen, Kasserar);
    }

    // A press deals four cards, one onto each column, and undo puts those four back: exactly
    // so while every column has room and the stock holds four.
    bool TasTillbaka(const SpelBord& b, const Drag& drag) const override {
        if (drag.slag != DragSlag::Knapp)
            return SokKunskap::TasTillbaka(b, drag);
        return KortILeken(b.luckor) >= kKolumner && InomKanten(b.luckor);
    }

    std::string KnappNamn() const override { return "deal four from the stock"; }
};

} // namespace

const SpelRegler& Regler() {
    return SpeletsRegler<Stallning, Kunskap>();
}

std::optional<Drag> KlickDrag(const Stallning& bord, int traff) {
    if (traff < 0 || traff > kSistaTraff || !Topp(bord.luckor, traff))
        return std::nullopt;
    int till = KlickMal(bord.luckor, traff);
    if (till < 0)
        return std::nullopt;
    return KortDrag(traff, till);
}

std::optional<Drag> DropDrag(const Stallning& bord, int forsta, int topp, BPoint q) {
    if (forsta != topp || forsta < 0 || forsta > kSistaKolumnLucka)
        return std::nullopt;
    int till = DropMal(bord.luckor, forsta, q);
    if (till < 0)
        return std::nullopt;
    return KortDrag(forsta, till);
}

} // namespace Idioten2Regler

namespace Idioten2Regler {

std::vector<Hog> HogTabell(const Stallning& /*bord*/) {
    std::vector<Hog> hogar;
    for (int c = 0; c < kKolumner; ++c)
        hogar.push_back(
            {HogSlag::Kolumn, c + 1, KolumnBas(c), KolumnBas(c) + kPlatserPerKolumn - 1});
    hogar.push_back({HogSlag::Lek, 0, kForstaLek, kSistaLek});
    hogar.push_back({HogSlag::Kast, 0, kForstaKasserad, kSistaKasserad});
    return hogar;
}

} // namespace Idioten2Regler
