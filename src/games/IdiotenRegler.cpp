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

    std::string KnappNamn() const override { return "deal again"; }
};

const SokKunskap& Kunskapen() {
    static const Kunskap kunskap;
    return kunskap;
}

} // namespace

const SpelRegler& Regler() {
    return SpeletsRegler<Stallning>(Kunskapen());
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
