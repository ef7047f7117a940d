#include "games/IdiotenRegler.h"

#include "cards/Luckor.h"
#include "games/LekRegler.h"

#include <algorithm>
#include <array>
#include <string>

namespace IdiotenRegler {

namespace {

bool ArKung(const Lucka& lucka) {
    return !lucka.Tom() && lucka.GeKort().KortValor() == 13;
}

bool FoljerPa(const Lucka& lucka, const Lucka& vanster) {
    return !lucka.Tom() && !vanster.Tom() &&
           lucka.GeKort().KortFarg() == vanster.GeKort().KortFarg() &&
           lucka.GeKort().KortValor() == vanster.GeKort().KortValor() + 1;
}

} // namespace

Utlagg RaknaUtLuckor(std::vector<Lucka>& luckor, BRect bounds) {
    const int g = kMellanrum;
    Utlagg u;
    u.h = std::max((static_cast<int>(bounds.Height()) - 40 - 5 * g) / 5, kMinstaHojd);
    u.w = std::max((static_cast<int>(bounds.Width()) - 13 * g) / 13, kMinstaBredd);
    const int w = u.w;
    const int h = u.h;

    for (int r = 0; r < kRader; ++r)
        for (int c = 0; c < kKolumner; ++c)
            luckor[kKolumner * r + c].NyPos(
                HeltalsRuta((w + g) * c, (h + g) * r + g, (w + g) * c + w, (h + g) * r + h + g));

    // The aces overlap: each lies half a card less five pixels right of the one before.
    const int essTopp = (h + g) * 4 + g;
    for (int i = 0; i < 4; ++i)
        luckor[kForstaEssPlats + i].NyPos(
            HeltalsRuta((w / 2 + g) * i, essTopp, (w / 2 + g) * i + w, essTopp + h));

    for (int j = 0; j < kSistaLekPlats - kForstaLekPlats + 1; ++j)
        luckor[kForstaLekPlats + j].NyPos(
            HeltalsRuta(3 * w + g, essTopp + j, 4 * w + g, essTopp + h + j));

    const float hoger = luckor[50].GePos().right;
    u.knapp =
        BRect(hoger - 140, static_cast<float>(4 * h + 40), hoger, static_cast<float>(4 * h + 80));
    return u;
}

BRect RaknarRuta(const std::vector<Lucka>& luckor) {
    BRect under = luckor[46].GePos();
    return BRect(under.right - 200, under.bottom + 20, under.right, under.bottom + 60);
}

bool FarLaggas(const std::vector<Lucka>& luckor, int till, const Kort& kort) {
    if (!IRutnatet(till) || !luckor[till].Tom())
        return false;
    if (ForstaKolumnen(till))
        return kort.KortValor() == 2;
    const Lucka& vanster = luckor[till - 1];
    return !vanster.Tom() && kort.KortFarg() == vanster.GeKort().KortFarg() &&
           kort.KortValor() == vanster.GeKort().KortValor() + 1;
}

int KortUnder(const std::vector<Lucka>& luckor, BPoint where) {
    for (int i = kForstaRutan; i <= kSistaRutan; ++i)
        if (!luckor[i].Tom() && luckor[i].GePos().Contains(where))
            return i;
    return -1;
}

int KlickMal(const std::vector<Lucka>& luckor, const Kort& kort) {
    for (int t = kForstaRutan; t <= kSistaRutan; ++t)
        if (FarLaggas(luckor, t, kort))
            return t;
    return -1;
}

int DropMal(const std::vector<Lucka>& luckor, const Kort& kort, BPoint where) {
    for (int t = kForstaRutan; t <= kSistaRutan; ++t)
        if (luckor[t].Tom() && luckor[t].GePos().Contains(where) && FarLaggas(luckor, t, kort))
            return t;
    return -1;
}

int RaknaKlaraKort(std::vector<Lucka>& luckor) {
    // A gap right of a king can never be filled, nor can the gaps that follow it, so
    // none of them is outlined.
    for (int i = kForstaRutan; i <= kSistaRutan; ++i) {
        Lucka& lucka = luckor[i];
        lucka.NyOkPos(false);
        if (!lucka.Tom() || ForstaKolumnen(i))
            lucka.NyKantLinje(true);
        else if (ArKung(luckor[i - 1]))
            lucka.NyKantLinje(false);
        else
            lucka.NyKantLinje(luckor[i - 1].GeKantLinje());
    }

    // A row counts from its left end: the two, then each card that follows on in suit.
    // The followers count even when the row does not start with a two, as the count always
    // did; such cards also stay put at a new attempt.
    int klara = 0;
    for (int s = 0; s < kRader * kKolumner; s += kKolumner) {
        if (!luckor[s].Tom() && luckor[s].GeKort().KortValor() == 2) {
            luckor[s].NyOkPos(true);
            ++klara;
        }
        for (int k = 1; k <= 11; ++k) {
            if (!FoljerPa(luckor[s + k], luckor[s + k - 1]))
                break;
            luckor[s + k].NyOkPos(true);
            ++klara;
        }
    }
    return klara;
}

int LekensTopp(const std::vector<Lucka>& luckor) {
    return LekTopp(luckor, kForstaLekPlats, kSistaLekPlats);
}

void Skapa(Stallning& bord) {
    bord.luckor.assign(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
    // An empty ace place is no place to play to, so it shows nothing.
    for (int i = kForstaEssPlats; i <= kSistaEssPlats; ++i)
        bord.luckor[i].NyKantLinje(false);
}

void LaggUtLeken(Stallning& bord) {
    // The first card off the deck lies at the bottom of the stock.
    LekRegler::LaggLeken(bord, kForstaLekPlats);
    bord.forsok = 1;
    bord.klaraKort = 0;
}

void DelaUt(Stallning& bord, Flygledare* flyg) {
    std::vector<Lucka>& luckor = bord.luckor;
    int topp = LekensTopp(luckor);
    for (int t = kForstaRutan; t <= kSistaRutan && topp >= kForstaLekPlats; ++t) {
        if (!luckor[t].Tom())
            continue;
        if (flyg)
            flyg->FlygKort(topp, t, kGivSteg);
        Flytta(luckor, topp, t);
        --topp;
    }

    int essPlats = kForstaEssPlats;
    for (int t = kForstaRutan; t <= kSistaRutan && essPlats <= kSistaEssPlats; ++t) {
        if (luckor[t].Tom() || luckor[t].GeKort().KortValor() != 1)
            continue;
        Flytta(luckor, t, essPlats);
        KlarSpel(bord);
        if (flyg)
            flyg->FlygKort(t, essPlats, kEssSteg);
        ++essPlats;
    }
    KlarSpel(bord);
}

void NyttForsok(Stallning& bord, Flygledare* flyg) {
    bord.undoLista.clear();
    KlarSpel(bord);
    // Everything not yet in place goes back, the aces with it.
    for (int i = kForstaRutan; i <= kSistaEssPlats; ++i) {
        Lucka& lucka = bord.luckor[i];
        if (lucka.Tom() || lucka.GeOkPos())
            continue;
        if (flyg)
            flyg->FlygKort(i, kForstaLekPlats, kSamlaSteg);
        bord.kortlek.TaInKort(lucka.GeKort());
        lucka.TaBortKort();
    }
    bord.kortlek.Blanda();
    for (int i = kForstaLekPlats; bord.kortlek.AntalKortKvar() > 0; ++i)
        bord.luckor[i].TaEmotKort(bord.kortlek.GeKort());
    DelaUt(bord, flyg);
    ++bord.forsok;
}

std::vector<Drag> LagligaDrag(const Stallning& bord) {
    const std::vector<Lucka>& luckor = bord.luckor;
    // Where each card of the grid lies, so that each gap asks only for the cards it takes.
    std::array<int, 52> var;
    var.fill(-1);
    for (int i = kForstaRutan; i <= kSistaRutan; ++i)
        if (!luckor[i].Tom())
            var[13 * luckor[i].GeKort().KortFarg() + luckor[i].GeKort().KortValor() - 1] = i;
    std::vector<Drag> drag;
    for (int till = kForstaRutan; till <= kSistaRutan; ++till) {
        if (!luckor[till].Tom())
            continue;
        for (int farg = 0; farg < 4; ++farg)
            for (int valor = 2; valor <= 13; ++valor) {
                int fran = var[13 * farg + valor - 1];
                if (fran >= 0 && FarLaggas(luckor, till, luckor[fran].GeKort()))
                    drag.push_back(KortDrag(fran, till));
            }
    }
    std::sort(drag.begin(), drag.end(), [](const Drag& a, const Drag& b) {
        return a.fran != b.fran ? a.fran < b.fran : a.till < b.till;
    });
    if (bord.forsok < kSistaGiv)
        drag.push_back(NyttForsokDrag());
    return drag;
}

void GorDrag(Stallning& bord, const Drag& drag, Flygledare* flyg) {
    if (drag.slag == DragSlag::NyttForsok) {
        NyttForsok(bord, flyg);
        return;
    }
    if (flyg)
        flyg->FlygKort(drag.fran, drag.till, kFlyttSteg);
    Flytta(bord.luckor, drag.fran, drag.till);
    bord.undoLista.emplace_back(drag.fran, drag.till);
    KlarSpel(bord);
}

int Angra(Stallning& bord, Flygledare* flyg) {
    if (bord.undoLista.empty())
        return 0;
    auto [kalla, till] = bord.undoLista.back();
    if (flyg)
        flyg->FlygKort(till, kalla, kAngraSteg);
    ++bord.antalUndo;
    Flytta(bord.luckor, till, kalla);
    bord.undoLista.pop_back();
    KlarSpel(bord);
    return static_cast<int>(bord.undoLista.size());
}

bool KlarSpel(Stallning& bord) {
    bord.klaraKort = RaknaKlaraKort(bord.luckor);
    return Vunnet(bord.klaraKort);
}

HiscoreResultat Resultat(const Stallning& bord) {
    return HiscoreResultat{bord.klaraKort, bord.forsok};
}

namespace {

// Where each card of the grid lies, by its code 13·suit + value − 1; -1 when not there.
std::array<int, 52> KortensPlatser(const std::vector<Lucka>& luckor) {
    std::array<int, 52> var;
    var.fill(-1);
    for (int i = kForstaRutan; i <= kSistaRutan; ++i)
        if (!luckor[i].Tom())
            var[static_cast<size_t>(13 * luckor[i].GeKort().KortFarg() +
                                    luckor[i].GeKort().KortValor() - 1)] = i;
    return var;
}

// The cards of the grid that can never move again. A card moves only into a gap: a two into
// a row's left end, any other card into the gap right of the card of its suit one lower.
// So take a set of cards where every two's row ends all hold cards of the set (or the two
// itself), and every other card's one-lower card is in the set with, to its right, the row's
// end, the card itself or a card of the set. None of them can be the first of the set to
// move: the places it could go to are all held by cards of the set, none of which has moved
// yet. The largest such set is found by starting from every card and striking out, until
// none is left to strike, each card whose places are not all so held.
std::array<bool, 52> LastaKort(const std::vector<Lucka>& luckor) {
    std::array<bool, 52> last{};
    // A gap at a row's left end leaves every two free, and so every card.
    for (int s = 0; s < kRader * kKolumner; s += kKolumner)
        if (luckor[s].Tom())
            return last;
    // Each slot's card as 13·suit + value − 1 (-1 for a gap), and each card's slot.
    std::array<int, 52> kort;
    std::array<int, 52> var;
    var.fill(-1);
    for (int i = kForstaRutan; i <= kSistaRutan; ++i) {
        kort[static_cast<size_t>(i)] = KortKod(luckor[i]) - 1;
        if (kort[static_cast<size_t>(i)] >= 0) {
            var[static_cast<size_t>(kort[static_cast<size_t>(i)])] = i;
            last[static_cast<size_t>(i)] = true;
        }
    }
    auto kod = [&](int i) { return kort[static_cast<size_t>(i)]; };
    auto fast = [&](int i) { return last[static_cast<size_t>(i)]; };
    auto blirKvar = [&](int i) {
        const int k = kod(i);
        if (k % 13 == 1) {
            for (int s = 0; s < kRader * kKolumner; s += kKolumner)
                if (s != i && !fast(s))
                    return false;
            return true;
        }
        const int under = var[static_cast<size_t>(k - 1)];
        if (under < 0 || !fast(under))
            return false;
        return under % kKolumner == kKolumner - 1 || under + 1 == i || fast(under + 1);
    };
    // Striking a card out of slot i can free only its successor, the successor of the card
    // left of i, and (from a row's left end) the twos, which end the search.
    std::array<int, 52> att;
    std::array<bool, 52> iKo{};
    int antal = 0;
    // The left ends and the twos are looked at first.
    for (int i = kForstaRutan; i <= kSistaRutan; ++i)
        if (fast(i) && i % kKolumner != 0 && kod(i) % 13 != 1) {
            att[static_cast<size_t>(antal++)] = i;
            iKo[static_cast<size_t>(i)] = true;
        }
    for (int i = kForstaRutan; i <= kSistaRutan; ++i)
        if (fast(i) && (i % kKolumner == 0 || kod(i) % 13 == 1)) {
            att[static_cast<size_t>(antal++)] = i;
            iKo[static_cast<size_t>(i)] = true;
        }
    while (antal > 0) {
        const int i = att[static_cast<size_t>(--antal)];
        iKo[static_cast<size_t>(i)] = false;
        if (!fast(i) || blirKvar(i))
            continue;
        // Every card of the set stands on a chain down to a two, and a two in it needs every
        // row's left end in it: so once a two or a left end is out, all are.
        if (i % kKolumner == 0 || kod(i) % 13 == 1)
            return std::array<bool, 52>{};
        last[static_cast<size_t>(i)] = false;
        auto provaIgen = [&](int kortKod) {
            const int j = var[static_cast<size_t>(kortKod)];
            if (j >= 0 && fast(j) && !iKo[static_cast<size_t>(j)]) {
                att[static_cast<size_t>(antal++)] = j;
                iKo[static_cast<size_t>(j)] = true;
            }
        };
        if (kod(i) % 13 != 12)
            provaIgen(kod(i) + 1);
        if (kod(i - 1) >= 0 && kod(i - 1) % 13 != 12)
            provaIgen(kod(i - 1) + 1);
    }
    return last;
}

// Whether the card in grid slot i lies where it belongs in a won table: a two at a row's
// left end, any other card in the column of its value, right of its suit's card one lower.
bool RattPlats(const std::vector<Lucka>& luckor, int i) {
    const Kort& kort = luckor[i].GeKort();
    if (i % kKolumner != kort.KortValor() - 2)
        return false;
    return kort.KortValor() == 2 || FoljerPa(luckor[i], luckor[i - 1]);
}

// Whether grid slot i holds a card of a row built from a two at its left end (the count's
// mark alone also takes in cards that follow on from another card there).
bool IByggdRad(const std::vector<Lucka>& luckor, int i) {
    return !luckor[i].Tom() && luckor[i].GeOkPos() &&
           luckor[i].GeKort().KortValor() == i % kKolumner + 2;
}

class Kunskap final : public SokKunskap {
public:
    // The rows play alike (a gap asks only for the card to its left, a row's left end for
    // any two, and each row is built alone), so the key holds the four rows in order of
    // their cards. The stock, the aces and the deal stay as they were within an attempt.
    void Nyckel(const SpelBord& b, std::string& nyckel) const override {
        std::array<std::string, kRader> rader;
        for (int r = 0; r < kRader; ++r)
            for (int c = 0; c < kKolumner; ++c)
                rader[static_cast<size_t>(r)].push_back(KortKod(b.luckor[kKolumner * r + c]));
        std::sort(rader.begin(), rader.end());
        for (const std::string& rad : rader)
            nyckel += rad;
        nyckel.push_back(static_cast<char>(static_cast<const Stallning&>(b).forsok));
        nyckel.push_back(static_cast<char>(LekensTopp(b.luckor) + 1));
    }

    // When every row starts with a two, no row's left end is ever empty again, so no two
    // moves, and no card of a built row either (its only place is the one it holds). Then
    // a card X that can lengthen a built row, moving from slot a, goes there at once when
    // X is a king, or a ends its row, or the card right of a is X's successor. Take any
    // winning play: X's only place to go is the one gap right of its lower card, which
    // stays where it is, and only X can fill that gap, so X's first move is this one, and
    // the play must make it (X must end right of its lower card). Each move before it
    // leaves X where it is and the gap empty, and needs neither X's new place nor a to be
    // empty; the one move that needs X at a is X's successor going to the gap right of a,
    // which the three cases rule out (a king has none; the end of a row has nothing right
    // of it; the successor already there never leaves while X stays). So the same moves
    // can follow this one and reach the same table.
    int SakertDrag(const SpelBord& b, const std::vector<Drag>& dragen) const override {
        const std::vector<Lucka>& luckor = b.luckor;
        for (int s = 0; s < kRader * kKolumner; s += kKolumner)
            if (luckor[s].Tom() || luckor[s].GeKort().KortValor() != 2)
                return -1;
        for (std::size_t i = 0; i < dragen.size(); ++i) {
            const Drag& d = dragen[i];
            if (d.slag != DragSlag::Kort || ForstaKolumnen(d.till) ||
                !IByggdRad(luckor, d.till - 1))
                continue;
            const Kort& kort = luckor[d.fran].GeKort();
            const int a = d.fran;
            if (kort.KortValor() == 13 || a % kKolumner == kKolumner - 1 ||
                FoljerPa(luckor[a + 1], luckor[a]))
                return static_cast<int>(i);
        }
        return -1;
    }

    // A card that never moves again must lie where it belongs in a won table, as every card
    // from two to king does then.
    bool Hopplos(const SpelBord& b) const override {
        const std::array<bool, 52> last = LastaKort(b.luckor);
        for (int i = kForstaRutan; i <= kSistaRutan; ++i)
            if (last[static_cast<size_t>(i)] && !RattPlats(b.luckor, i))
                return true;
        return false;
    }

    // For the quick first pass: a card that lengthens a row built from its left end goes
    // there at once, and the tables with the most cards in place, then the fewest gaps
    // behind a king, come first.
    bool HarTroligaDrag() const override { return true; }
    int TroligtDrag(const SpelBord& b, const std::vector<Drag>& dragen) const override {
        for (std::size_t i = 0; i < dragen.size(); ++i) {
            const Drag& d = dragen[i];
            if (d.slag == DragSlag::Kort && !ForstaKolumnen(d.till) &&
                IByggdRad(b.luckor, d.till - 1))
                return static_cast<int>(i);
        }
        return -1;
    }
    int Avstand(const SpelBord& b) const override {
        int doda = 0;
        int byggda = 0;
        for (int i = kForstaRutan; i <= kSistaRutan; ++i) {
            if (b.luckor[i].Tom() && !b.luckor[i].GeKantLinje())
                ++doda;
            else if (IByggdRad(b.luckor, i))
                ++byggda;
        }
        return 8 * (kVunnet - byggda) + doda;
    }

    // Each gap asks for the one card it takes (any two at a row's left end).
    bool ListaDrag(const SpelBord& b, std::vector<Drag>& dragen) const override {
        const std::vector<Lucka>& luckor = b.luckor;
        const std::array<int, 52> var = KortensPlatser(luckor);
        dragen.clear();
        for (int till = kForstaRutan; till <= kSistaRutan; ++till) {
            if (!luckor[till].Tom())
                continue;
            if (ForstaKolumnen(till)) {
                for (int farg = 0; farg < 4; ++farg)
                    if (var[static_cast<size_t>(13 * farg + 1)] >= 0)
                        dragen.push_back(KortDrag(var[static_cast<size_t>(13 * farg + 1)], till));
                continue;
            }
            const Lucka& vanster = luckor[till - 1];
            if (vanster.Tom() || ArKung(vanster))
                continue;
            const int fran = var[static_cast<size_t>(13 * vanster.GeKort().KortFarg() +
                                                     vanster.GeKort().KortValor())];
            if (fran >= 0)
                dragen.push_back(KortDrag(fran, till));
        }
        // In the rules' order, which the search keeps.
        std::sort(dragen.begin(), dragen.end(), [](const Drag& x, const Drag& y) {
            return x.fran != y.fran ? x.fran < y.fran : x.till < y.till;
        });
        if (static_cast<const Stallning&>(b).forsok < kSistaGiv)
            dragen.push_back(NyttForsokDrag());
        return true;
    }

    std::string KnappNamn() const override { return "deal again"; }
};

} // namespace

const SpelRegler& Regler() {
    return SpeletsRegler<Stallning, Kunskap>();
}

} // namespace IdiotenRegler

namespace IdiotenRegler {

std::vector<Hog> HogTabell(const Stallning& /*bord*/) {
    std::vector<Hog> hogar;
    for (int r = 0; r < kRader; ++r)
        for (int c = 0; c < kKolumner; ++c) {
            int i = kKolumner * r + c;
            hogar.push_back({HogSlag::Ruta, c + 1, i, i, r + 1});
        }
    return hogar;
}

} // namespace IdiotenRegler
