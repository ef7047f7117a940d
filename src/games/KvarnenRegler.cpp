#include "games/KvarnenRegler.h"

#include "cards/Flyttar.h"
#include "cards/Luckor.h"
#include "games/LekRegler.h"

#include <algorithm>
#include <array>
#include <string>

namespace KvarnenRegler {

namespace {

using HogRegler::Plats;

const LekRegler::Lek kLeken{kForstaLek, kSistaLek};

// The places that take `kort`, in the order a drop searches them: the foundation tops, then
// the pile tops, each in slot order.
std::vector<Plats> Platser(const std::vector<Lucka>& luckor, const std::vector<int>& toppar,
                           const Kort& kort) {
    std::vector<Plats> platser;
    for (int t : toppar)
        if (TarEmot(luckor, t, kort))
            platser.push_back({t, t + 1});
    return platser;
}

std::vector<int> AllaToppar(const std::vector<Lucka>& luckor) {
    return HogRegler::Toppar(luckor, kForstaGrund, kSistaHog);
}

// Four slots a pile, pile by pile: where a deal puts its cards.
std::vector<int> HogarnasPlatser() {
    std::vector<int> mal;
    for (int p = 0; p < kAntalHogar; ++p)
        for (int j = 0; j < kKortPerHog; ++j)
            mal.push_back(HogBas(p) + j);
    return mal;
}

} // namespace

Utlagg RaknaUtLuckor(std::vector<Lucka>& luckor, BRect bounds) {
    const int m = kMellanrum;
    Utlagg u;
    u.h = std::max(static_cast<int>(bounds.Height() - 40.0f) / 4, kMinstaStorlek);
    u.w = std::max(static_cast<int>((bounds.Width() - 4 * m) / 8.0f), kMinstaStorlek);
    const int cw = u.w;
    const int ch = u.h;
    const int bu = cw + m;
    const int bv = ch + m;

    for (int j = 0; j < kPlatserPerHog; ++j) {
        for (int k = 0; k < 4; ++k) {
            int left = cw + m + k * bu;
            int top = m + 3 * j;
            luckor[GrundBas(k) + j].NyPos(HeltalsRuta(left, top, left + cw, top + ch));
        }
        for (int p = 0; p < 6; ++p) {
            int left = p * bu;
            int ovre = bv + m + 42 + 3 * j;
            int nedre = 2 * bv + m + 84 + 3 * j;
            luckor[HogBas(p) + j].NyPos(HeltalsRuta(left, ovre, left + cw, ovre + ch));
            luckor[HogBas(6 + p) + j].NyPos(HeltalsRuta(left, nedre, left + cw, nedre + ch));
        }
    }
    for (int i = 0; i <= kSistaLek - kForstaLek; ++i) {
        int left = 5 * bu + m;
        int top = 2 * m + i;
        luckor[kForstaLek + i].NyPos(HeltalsRuta(left, top, left + cw, top + ch));
    }

    // Beside the base of the last pile of the upper row.
    BRect b = luckor[HogBas(5)].GePos();
    u.knapp = BRect(b.right + 20, b.bottom - 40, b.right + 140, b.bottom);
    return u;
}

bool TarEmot(const std::vector<Lucka>& luckor, int topp, const Kort& kort) {
    if (!Topp(luckor, topp))
        return false;
    const Kort& under = luckor[topp].GeKort();
    if (topp <= kSistaGrund)
        return kort.KortFarg() == under.KortFarg() && kort.KortValor() == under.KortValor() + 1;
    if (topp <= kSistaHog)
        return kort.KortValor() == under.KortValor() - 1;
    return false;
}

int Traff(const std::vector<Lucka>& luckor, BPoint p) {
    return ToppVid(luckor, kForstaHog, kSistaGreppbar, p);
}

int KlickMal(const std::vector<Lucka>& luckor, int fran) {
    const Kort& kort = luckor[fran].GeKort();
    for (int t : AllaToppar(luckor))
        if (TarEmot(luckor, t, kort))
            return t + 1;
    return -1;
}

int DropMal(const std::vector<Lucka>& luckor, int fran, BPoint q) {
    return HogRegler::DropTill(luckor, Platser(luckor, AllaToppar(luckor), luckor[fran].GeKort()),
                               q);
}

void Skapa(Stallning& bord) {
    bord.luckor.assign(kForstaLek, Lucka(BRect(0, 0, 0, 0), false));
    bord.luckor.resize(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), true));
    // An empty place shows nothing: an empty pile takes no card.
    for (Lucka& lucka : bord.luckor)
        lucka.NyKantLinje(false);
}

void LaggUtLeken(Stallning& bord) {
    LekRegler::NyGiv(bord);
    bord.giv = 1;
    bord.antalUndo = 0;
    bord.kortlek.Blanda();
    LekRegler::LaggEssenOverst(bord, kSistaLek);
    LekRegler::LaggILeken(bord, kForstaLek);
}

void DelaUt(Stallning& bord, Flygledare* flyg) {
    std::vector<int> mal{GrundBas(0), GrundBas(1), GrundBas(2), GrundBas(3)};
    std::vector<int> hogar = HogarnasPlatser();
    mal.insert(mal.end(), hogar.begin(), hogar.end());
    LekRegler::DelaFranLeken(bord, kLeken, mal, flyg, HogRegler::kGivSteg);
}

void NastaGiv(Stallning& bord, Flygledare* flyg) {
    bord.undoLista.clear();
    ++bord.giv;
    int n = 0;
    for (int i = kSistaHog; i >= kForstaHog; --i) {
        if (bord.luckor[i].Tom())
            continue;
        if (flyg)
            flyg->FlygKort(i, kForstaLek + n, HogRegler::kSamlaSteg);
        Flytta(bord.luckor, i, kForstaLek + n);
        ++n;
    }
    LekRegler::DelaFranLeken(bord, kLeken, HogarnasPlatser(), flyg, HogRegler::kOmgivSteg);
}

std::vector<Drag> LagligaDrag(const Stallning& bord) {
    const std::vector<Lucka>& luckor = bord.luckor;
    std::vector<int> toppar = AllaToppar(luckor);
    std::vector<Drag> drag;
    for (int fran : HogRegler::Toppar(luckor, kForstaHog, kSistaGreppbar)) {
        std::vector<Plats> platser = Platser(luckor, toppar, luckor[fran].GeKort());
        HogRegler::LaggTillKortDrag(drag, fran, platser.empty() ? -1 : platser.front().till,
                                    platser);
    }
    drag.push_back(KnappDrag());
    return drag;
}

void GorDrag(Stallning& bord, const Drag& drag, Flygledare* flyg) {
    if (drag.slag == DragSlag::Knapp)
        NastaGiv(bord, flyg);
    else
        FlyttaOchSpara(bord, drag.fran, drag.till, flyg, HogRegler::kFlyttSteg);
}

int Angra(Stallning& bord, Flygledare* flyg) {
    return AngraSenaste(bord, flyg, HogRegler::kAngraSteg);
}

bool KlarSpel(Stallning& bord) {
    for (int k = 0; k < 4; ++k) {
        const Lucka& kung = bord.luckor[KungPlats(k)];
        if (kung.Tom() || kung.GeKort().KortValor() != 13)
            return false;
    }
    return true;
}

HiscoreResultat Resultat(const Stallning& bord) {
    return HiscoreResultat{AntalFyllda(bord.luckor, kForstaGrund, kSistaGrund), bord.giv};
}

namespace {

bool TillGrunden(const Drag& d) {
    return d.slag == DragSlag::Kort && d.till <= kSistaGrund;
}

// The foundations first; then the moves between piles that bare a card the foundations
// take or empty a pile; then the button; the other moves between piles last.
int Rang(const std::vector<Lucka>& luckor, const Drag& d) {
    if (d.slag == DragSlag::Knapp)
        return 2;
    if (TillGrunden(d))
        return 0;
    if (ArBas(d.fran))
        return 1;
    const Kort& under = luckor[d.fran - 1].GeKort();
    for (int k = 0; k < 4; ++k) {
        const int t = LekRegler::Lek{GrundBas(k), GrundBas(k) + kPlatserPerHog - 1}.Topp(luckor);
        if (t >= 0 && luckor[t].GeKort().KortFarg() == under.KortFarg() &&
            luckor[t].GeKort().KortValor() + 1 == under.KortValor())
            return 1;
    }
    return 3;
}

// How many cards of each value are home.
std::array<int, 15> Hemma(const std::vector<Lucka>& luckor) {
    std::array<int, 15> hemma{};
    for (int k = 0; k < 4; ++k)
        for (int j = 0; j < kPlatserPerHog && !luckor[GrundBas(k) + j].Tom(); ++j)
            ++hemma[static_cast<std::size_t>(luckor[GrundBas(k) + j].GeKort().KortValor())];
    return hemma;
}

// A card no pile will ever take again: a king, or a card whose four one-higher cards are
// home. It leaves its pile only for its foundation.
bool Fast(const Kort& kort, const std::array<int, 15>& hemma) {
    const int valor = kort.KortValor();
    return valor == 13 || hemma[static_cast<std::size_t>(valor + 1)] == 4;
}

// The top of each foundation and pile in slot order, -1 for an empty pile.
std::array<int, 4 + kAntalHogar> ToppPlatser(const std::vector<Lucka>& luckor) {
    std::array<int, 4 + kAntalHogar> toppar{};
    for (int h = 0; h < 4 + kAntalHogar; ++h) {
        const int bas = kForstaGrund + kPlatserPerHog * h;
        int j = 0;
        while (j < kPlatserPerHog && !luckor[bas + j].Tom())
            ++j;
        toppar[static_cast<std::size_t>(h)] = j == 0 ? -1 : bas + j - 1;
    }
    return toppar;
}

class Kunskap final : public SokKunskap {
public:
    // The rules' moves, each pile top to every top that takes it, read pile by pile.
    bool ListaDrag(const SpelBord& b, std::vector<Drag>& dragen) const override {
        const std::vector<Lucka>& luckor = b.luckor;
        // While the stock holds cards (only while dealing) the rules list them too.
        if (!luckor[kForstaLek].Tom())
            return false;
        dragen.clear();
        const std::array<int, 4 + kAntalHogar> toppar = ToppPlatser(luckor);
        for (std::size_t p = 4; p < toppar.size(); ++p) {
            const int fran = toppar[p];
            if (fran < 0)
                continue;
            const Kort& kort = luckor[fran].GeKort();
            for (int t : toppar)
                if (t >= 0 && TarEmot(luckor, t, kort))
                    dragen.push_back(KortDrag(fran, t + 1));
        }
        dragen.push_back(KnappDrag());
        return true;
    }

    // Nothing is ever put before the first card of the first pile that holds cards: a card
    // goes only onto a top, after it. So the first four cards of that pile stay together
    // at every deal, in pile 0, in the same order. A card among them that no pile takes
    // again leaves only for its foundation, and nothing under it moves before it does: the
    // cards it covers stay where they are, and the deal keeps them under it. If one of them
    // is a lower card of its own suit, which must go home first, neither ever goes home.
    bool Hopplos(const SpelBord& b) const override {
        const std::vector<Lucka>& luckor = b.luckor;
        int p = 0;
        while (p < kAntalHogar && luckor[HogBas(p)].Tom())
            ++p;
        if (p == kAntalHogar)
            return false;
        const std::array<int, 15> hemma = Hemma(luckor);
        const int bas = HogBas(p);
        for (int j = kKortPerHog - 1; j > 0; --j) {
            if (luckor[bas + j].Tom())
                continue;
            const Kort& fast = luckor[bas + j].GeKort();
            if (!Fast(fast, hemma))
                continue;
            for (int i = 0; i < j; ++i) {
                const Kort& under = luckor[bas + i].GeKort();
                if (under.KortFarg() == fast.KortFarg() && under.KortValor() < fast.KortValor())
                    return true;
            }
        }
        return false;
    }

    // How far each foundation has come, then each pile's cards from its base up. There is
    // no last deal, so the deal's number is only the score: two tables of the same cards
    // have the same future.
    void Nyckel(const SpelBord& b, std::string& nyckel) const override {
        const std::vector<Lucka>& luckor = b.luckor;
        for (int k = 0; k < 4; ++k) {
            int hojd = 0;
            while (hojd < kPlatserPerHog && !luckor[GrundBas(k) + hojd].Tom())
                ++hojd;
            nyckel.push_back(static_cast<char>(hojd));
        }
        for (int p = 0; p < kAntalHogar; ++p) {
            for (int j = 0; j < kPlatserPerHog && !luckor[HogBas(p) + j].Tom(); ++j)
                nyckel.push_back(KortKod(luckor[HogBas(p) + j]));
            nyckel.push_back(0);
        }
    }

    void Ordna(const SpelBord& b, std::vector<Drag>& dragen) const override {
        std::stable_sort(dragen.begin(), dragen.end(), [&](const Drag& x, const Drag& y) {
            return Rang(b.luckor, x) < Rang(b.luckor, y);
        });
    }

    // For the quick first pass: the cards not home, and how deep in its pile lies the next
    // card each foundation wants.
    int Avstand(const SpelBord& b) const override {
        const std::vector<Lucka>& luckor = b.luckor;
        std::array<int, 4> nasta{}; // the value each suit's foundation takes next, 14 when full
        int hemma = 0;
        for (int k = 0; k < 4; ++k) {
            int hojd = 0;
            while (hojd < kPlatserPerHog && !luckor[GrundBas(k) + hojd].Tom())
                ++hojd;
            hemma += hojd;
            if (hojd > 0)
                nasta[static_cast<std::size_t>(luckor[GrundBas(k)].GeKort().KortFarg())] = hojd + 1;
        }
        int djup = 0;
        for (int p = 0; p < kAntalHogar; ++p) {
            int hojd = 0;
            while (hojd < kPlatserPerHog && !luckor[HogBas(p) + hojd].Tom())
                ++hojd;
            for (int j = 0; j < hojd; ++j) {
                const Kort& kort = luckor[HogBas(p) + j].GeKort();
                const int efter =
                    kort.KortValor() - nasta[static_cast<std::size_t>(kort.KortFarg())];
                if (efter == 0)
                    djup += 2 * (hojd - 1 - j);
                else if (efter == 1)
                    djup += hojd - 1 - j;
            }
        }
        return 16 * (52 - hemma) + djup;
    }

    // For the quick first pass: a card the foundations take goes there.
    bool HarTroligaDrag() const override { return true; }
    int TroligtDrag(const SpelBord&, const std::vector<Drag>& dragen) const override {
        return ForstaDragSom(dragen, TillGrunden);
    }

    std::string KnappNamn() const override { return "gather and deal again"; }
};

} // namespace

const SpelRegler& Regler() {
    return SpeletsRegler<Stallning, Kunskap>();
}

} // namespace KvarnenRegler

namespace KvarnenRegler {

std::vector<Hog> HogTabell(const Stallning& /*bord*/) {
    std::vector<Hog> hogar;
    for (int k = 0; k < 4; ++k)
        hogar.push_back({HogSlag::Grund, k + 1, GrundBas(k), GrundBas(k) + kPlatserPerHog - 1});
    for (int p = 0; p < kAntalHogar; ++p)
        hogar.push_back({HogSlag::Hog, p + 1, HogBas(p), HogBas(p) + kPlatserPerHog - 1});
    return hogar;
}

} // namespace KvarnenRegler
