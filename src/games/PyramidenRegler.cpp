#include "games/PyramidenRegler.h"

#include "cards/Flyttar.h"
#include "cards/Luckor.h"
#include "games/LekRegler.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <string>

namespace PyramidenRegler {

namespace {

const LekRegler::Lek kLeken{kForstaLek, kSistaLek};

// The rows of the pyramid and the hidden row, by slot.
constexpr std::array<int, kSistaDolda + 1> RadTabell() {
    std::array<int, kSistaDolda + 1> rader{};
    for (int r = 0, i = 0; r <= kRader; ++r)
        for (int k = 0; k <= r; ++k)
            rader[i++] = r;
    return rader;
}
constexpr std::array<int, kSistaDolda + 1> kRad = RadTabell();

// The cards a player can take now: the free pyramid cards, then the waste's top.
struct Ledigt {
    std::array<int, kPyramidKort + 1> kort{};
    std::size_t antal = 0;
    const int* begin() const { return kort.data(); }
    const int* end() const { return kort.data() + antal; }
};

Ledigt Lediga(const std::vector<Lucka>& luckor) {
    Ledigt lediga;
    for (int i = kForstaPyramid; i <= kSistaPyramid; ++i)
        if (Fri(luckor, i))
            lediga.kort[lediga.antal++] = i;
    int topp = HogTopp(luckor);
    if (topp >= 0)
        lediga.kort[lediga.antal++] = topp;
    return lediga;
}

void Kasta(Stallning& bord, int fran, Flygledare* flyg) {
    FlyttaOchSpara(bord, fran, KastPlats(bord.luckor[fran].GeKort()), flyg, kKastSteg);
}

// A king goes alone; any other card with its partner, the card itself first.
void KastaMed(Stallning& bord, int kort, int partner, Flygledare* flyg) {
    Kasta(bord, kort, flyg);
    if (partner >= 0)
        Kasta(bord, partner, flyg);
}

// The lowest point a press reaches on the stock is its top card as it lay before a turn.
void SattLekKlickRuta(Stallning& bord, int topp) {
    bord.lekKlickRuta.bottom = bord.lekRuta.bottom - static_cast<float>(kLekSteg - topp);
}

void TryckPaLeken(Stallning& bord, Flygledare* flyg) {
    std::vector<Lucka>& luckor = bord.luckor;
    int t = LekIndex(luckor);
    if (t < 0) {
        if (bord.giv >= kSistaGiv)
            return;
        // The waste turned over, not shuffled: its top becomes the stock's bottom.
        bord.giv = kSistaGiv;
        bord.undoLista.clear();
        int n = 0;
        for (int j = kSistaHogPartner; j >= kForstaHog; --j) {
            if (luckor[j].Tom())
                continue;
            if (flyg)
                flyg->FlygKort(j, kForstaLek + n, kOmgivSteg);
            Flytta(luckor, j, kForstaLek + n);
            ++n;
        }
        return;
    }
    SattLekKlickRuta(bord, t);
    int till = ForstaTomma(luckor, kForstaHog, kSistaHog);
    LekRegler::GeFranLeken(bord, kLeken, {till < 0 ? kForstaHog : till}, flyg, kVandSteg);
}

// The stock card a turn would put on the waste (-1 when the press turns none) and the
// waste slot it would go to: what a drag that also presses the stock may pair with.
int VandsUpp(const Stallning& bord, int& platsen) {
    int t = LekIndex(bord.luckor);
    platsen = -1;
    if (t < 0)
        return -1;
    int till = ForstaTomma(bord.luckor, kForstaHog, kSistaHog);
    platsen = till < 0 ? kForstaHog : till;
    return kForstaLek + t;
}

} // namespace

int Rad(int i) {
    return kRad[static_cast<size_t>(i)];
}

int KastPlats(const Kort& kort) {
    return 60 + 13 * kort.KortFarg() + kort.KortValor();
}

bool Fri(const std::vector<Lucka>& luckor, int i) {
    if (!IPyramiden(i) || luckor[i].Tom())
        return false;
    int under = i + StegNed(i);
    return luckor[under].Tom() && luckor[under + 1].Tom();
}

bool ArHogTopp(const std::vector<Lucka>& luckor, int j) {
    return PaHogen(j) && Topp(luckor, j);
}

int HogTopp(const std::vector<Lucka>& luckor) {
    for (int j = kForstaHog; j <= kSistaHog; ++j)
        if (ArHogTopp(luckor, j))
            return j;
    return -1;
}

bool ArKung(const Lucka& lucka) {
    return !lucka.Tom() && lucka.GeKort().KortValor() == 13;
}

bool Trettan(const Lucka& a, const Lucka& b) {
    return !a.Tom() && !b.Tom() && a.GeKort().KortValor() + b.GeKort().KortValor() == 13;
}

int KortUnder(const std::vector<Lucka>& luckor, BPoint p) {
    for (int i = kForstaPyramid; i <= kSistaPyramid; ++i)
        if (luckor[i].GePos().Contains(p) && Fri(luckor, i))
            return i;
    for (int j = kForstaHog; j <= kSistaHog; ++j)
        if (luckor[j].GePos().Contains(p) && ArHogTopp(luckor, j))
            return j;
    return -1;
}

int KlickPartner(const std::vector<Lucka>& luckor, int i) {
    for (int k = kForstaPyramid; k <= kSistaPyramid; ++k)
        if (Fri(luckor, k) && Trettan(luckor[i], luckor[k]))
            return k;
    for (int j = kForstaHog; j <= kSistaHogPartner; ++j)
        if (ArHogTopp(luckor, j) && Trettan(luckor[i], luckor[j]))
            return j;
    return -1;
}

int DropPartner(const std::vector<Lucka>& luckor, int i, BPoint q) {
    for (int k = kForstaPyramid; k <= kSistaPyramid; ++k)
        if (Fri(luckor, k) && Trettan(luckor[i], luckor[k]) && luckor[k].GePos().Contains(q))
            return k;
    for (int j = kForstaHog; j <= kSistaHogPartner; ++j)
        if (ArHogTopp(luckor, j) && Trettan(luckor[i], luckor[j]) && luckor[j].GePos().Contains(q))
            return j;
    return -1;
}

Utlagg RaknaUtLuckor(std::vector<Lucka>& luckor, BRect bounds) {
    const int m = kMellanrum;
    Utlagg u;
    u.cw = std::max(static_cast<int>((bounds.Width() - 13.0 * m) / 9.0), kMinsta);
    u.ch = std::max(static_cast<int>((bounds.Height() - 40.0 - 5.0 * m) / 5.0), kMinsta);
    const int cw = u.cw;
    const int ch = u.ch;

    int vanster = 4 * (cw + m);
    luckor[0].NyPos(HeltalsRuta(vanster, m, vanster + cw, m + ch));
    // Each row starts half a column further left and 35 pixels lower than the one above.
    const int h = (cw + m) / 2;
    for (int r = 1; r <= kRader; ++r) {
        vanster -= h;
        const int forsta = r * (r + 1) / 2;
        for (int k = 0; k <= r; ++k) {
            int left = vanster + k * (cw + m);
            luckor[forsta + k].NyPos(
                HeltalsRuta(left, m + kRadAvstand * r, left + cw, m + kRadAvstand * r + ch));
        }
    }

    const BRect R = luckor[31].GePos();
    const double underDolda = R.top + 2.0 * m + ch / 1.5;
    for (int j = kForstaHog; j <= kSistaHog; ++j)
        luckor[j].NyPos(BRect(R.left - static_cast<float>(h),
                              static_cast<float>(static_cast<int>(underDolda)),
                              R.left - static_cast<float>(h) + static_cast<float>(cw),
                              static_cast<float>(static_cast<int>(underDolda + ch))));
    for (int j = kForstaKast; j <= kSistaKast; ++j)
        luckor[j].NyPos(HeltalsRuta(m, m, m + cw, m + ch));
    for (int i = 0; i <= kSistaLek - kForstaLek; ++i) {
        int top = static_cast<int>(underDolda + i);
        luckor[kForstaLek + i].NyPos(
            BRect(R.right + static_cast<float>(m), static_cast<float>(top),
                  R.right + static_cast<float>(m + cw),
                  static_cast<float>(static_cast<int>(underDolda + i + ch))));
    }

    const BRect lek = luckor[kForstaLek].GePos();
    u.lekRuta = BRect(lek.left, lek.top, lek.left + static_cast<float>(cw),
                      lek.bottom + static_cast<float>(kLekSteg));
    return u;
}

bool Stallning::operator==(const Stallning& annan) const {
    return static_cast<const BordAv<Stallning>&>(*this) ==
               static_cast<const BordAv<Stallning>&>(annan) &&
           giv == annan.giv && lekRuta == annan.lekRuta;
}

int LekIndex(const std::vector<Lucka>& luckor) {
    int topp = kLeken.Topp(luckor);
    return topp < 0 ? -1 : topp - kForstaLek;
}

bool LekenSvarar(const Stallning& bord) {
    return LekIndex(bord.luckor) >= 0 || bord.giv < kSistaGiv;
}

std::optional<Drag> KlickDrag(const Stallning& bord, int i) {
    const std::vector<Lucka>& luckor = bord.luckor;
    if (i < 0 || luckor[i].Tom())
        return std::nullopt;
    if (ArKung(luckor[i]))
        return KortDrag(i, KastPlats(luckor[i].GeKort()));
    int partner = KlickPartner(luckor, i);
    if (partner < 0)
        return std::nullopt;
    return ParDrag(i, partner);
}

std::optional<Drag> DropDrag(const Stallning& bord, int i, BPoint q) {
    const std::vector<Lucka>& luckor = bord.luckor;
    if (i < 0 || luckor[i].Tom())
        return std::nullopt;
    if (ArKung(luckor[i]))
        return KortDrag(i, KastPlats(luckor[i].GeKort()));
    int partner = DropPartner(luckor, i, q);
    if (partner < 0)
        return std::nullopt;
    return ParDrag(i, partner);
}

std::optional<BPoint> PunktPaKortOchLek(const Stallning& bord, int i) {
    // A table not laid out yet has no places for the pointer to press.
    if (bord.lekKlickRuta.Width() < 1)
        return std::nullopt;
    BRect bada = bord.luckor[i].GePos() & bord.lekKlickRuta;
    if (!bada.IsValid())
        return std::nullopt;
    float mittX = (bada.left + bada.right) / 2;
    float mittY = (bada.top + bada.bottom) / 2;
    for (BPoint p :
         {BPoint(mittX, mittY), BPoint(bada.left, bada.top), BPoint(bada.right, bada.top),
          BPoint(bada.left, bada.bottom), BPoint(bada.right, bada.bottom)})
        if (KortUnder(bord.luckor, p) == i)
            return p;
    return std::nullopt;
}

Drag LekOchKort(int kort, int partner, bool drag) {
    Drag d = KnappDrag();
    d.fran = kort;
    d.andra = partner;
    d.antal = drag ? 2 : 1;
    return d;
}

void Skapa(Stallning& bord) {
    bord.luckor.assign(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
    for (int i = kForstaKast; i <= kSistaLek; ++i)
        bord.luckor[i] = Lucka(BRect(0, 0, 0, 0), true);
}

void LaggUtLeken(Stallning& bord) {
    LekRegler::LaggLeken(bord, kForstaLek);
    bord.giv = 1;
    bord.lekKlickRuta = bord.lekRuta;
}

void DelaUt(Stallning& bord, Flygledare* flyg) {
    // The stock's top to the apex, the next two to the second row, and so on.
    for (int i = 0; i < kPyramidKort; ++i) {
        if (flyg)
            flyg->FlygKort(kSistaLek - i, i, kGivSteg);
        Flytta(bord.luckor, kSistaLek - i, i);
    }
}

namespace {

// Appends the moves of LagligaDrag to `drag`.
void LaggTillDrag(const Stallning& bord, std::vector<Drag>& drag) {
    const std::vector<Lucka>& luckor = bord.luckor;
    const Ledigt lediga = Lediga(luckor);
    for (int i : lediga) {
        if (ArKung(luckor[i])) {
            drag.push_back(KortDrag(i, KastPlats(luckor[i].GeKort())));
            continue;
        }
        for (int j : lediga)
            if (j != i && j <= kSistaHogPartner && Trettan(luckor[i], luckor[j]))
                drag.push_back(ParDrag(i, j));
    }
    if (!LekenSvarar(bord))
        return;
    drag.push_back(KnappDrag());

    int vandPlats = -1;
    const int vand = VandsUpp(bord, vandPlats);
    for (int i : lediga) {
        if (!PunktPaKortOchLek(bord, i))
            continue;
        if (std::optional<Drag> klick = KlickDrag(bord, i))
            drag.push_back(LekOchKort(i, klick->slag == DragSlag::Par ? klick->andra : -1, false));
        if (ArKung(luckor[i])) {
            drag.push_back(LekOchKort(i, -1, true));
            continue;
        }
        for (int j : lediga)
            if (IPyramiden(j) && j != i && Trettan(luckor[i], luckor[j]))
                drag.push_back(LekOchKort(i, j, true));
        if (vand >= 0 && vandPlats <= kSistaHogPartner && Trettan(luckor[i], luckor[vand]))
            drag.push_back(LekOchKort(i, vandPlats, true));
    }
}

} // namespace

std::vector<Drag> LagligaDrag(const Stallning& bord) {
    std::vector<Drag> drag;
    LaggTillDrag(bord, drag);
    return drag;
}

void GorDrag(Stallning& bord, const Drag& drag, Flygledare* flyg) {
    switch (drag.slag) {
    case DragSlag::Kort:
        Kasta(bord, drag.fran, flyg);
        break;
    case DragSlag::Par:
        KastaMed(bord, drag.fran, drag.andra, flyg);
        break;
    case DragSlag::Knapp:
        if (drag.fran >= 0 && drag.antal == 1)
            KastaMed(bord, drag.fran, drag.andra, flyg);
        TryckPaLeken(bord, flyg);
        // A drop makes no flight.
        if (drag.fran >= 0 && drag.antal == 2)
            KastaMed(bord, drag.fran, drag.andra, nullptr);
        break;
    default:
        break;
    }
    KlarSpel(bord);
}

int Angra(Stallning& bord, Flygledare* flyg) {
    if (bord.undoLista.empty())
        return 0;
    std::vector<Lucka>& luckor = bord.luckor;
    auto [fran, till] = bord.undoLista.back();
    if (fran == LekRegler::kFranLeken) {
        ++bord.antalUndo;
        SattLekKlickRuta(bord, LekIndex(luckor));
        LekRegler::AngraFranLeken(bord, kLeken, 1, flyg, kAngraSteg);
    } else {
        // Half a pair brings the other half back with it, and the step counts twice.
        const int antal = ArKung(luckor[till]) ? 1 : 2;
        for (int k = 0; k < antal && !bord.undoLista.empty(); ++k)
            AngraSenaste(bord, flyg, kAngraSteg);
    }
    KlarSpel(bord);
    return static_cast<int>(bord.undoLista.size());
}

bool KlarSpel(Stallning& bord) {
    for (int i = kForstaPyramid; i <= kSistaPyramid; ++i)
        if (!bord.luckor[i].Tom())
            return false;
    return true;
}

HiscoreResultat Resultat(const Stallning& bord) {
    return HiscoreResultat{AntalFyllda(bord.luckor, kForstaPyramid, kSistaPyramid), bord.giv};
}

namespace {

using Maske = std::uint32_t;

// For each pyramid slot, the pyramid slots that stay covered until its card is gone: the
// slots it lies on, directly or through others.
std::array<Maske, kPyramidKort> OverTabell() {
    std::array<Maske, kPyramidKort> under{}; // each slot and every slot below it
    for (int i = kSistaPyramid; i >= kForstaPyramid; --i) {
        Maske m = 1u << i;
        const int ned = i + StegNed(i);
        if (ned <= kSistaPyramid)
            m |= under[static_cast<size_t>(ned)] | under[static_cast<size_t>(ned + 1)];
        under[static_cast<size_t>(i)] = m;
    }
    std::array<Maske, kPyramidKort> over{};
    for (int j = kForstaPyramid; j <= kSistaPyramid; ++j)
        for (int i = kForstaPyramid; i <= kSistaPyramid; ++i)
            if (i != j && ((under[static_cast<size_t>(j)] >> i) & 1u) != 0)
                over[static_cast<size_t>(i)] |= 1u << j;
    return over;
}

const std::array<Maske, kPyramidKort>& Over() {
    static const std::array<Maske, kPyramidKort> over = OverTabell();
    return over;
}

// Where the cards not yet discarded lie, by value: pyramid slots as bits, and how many are
// in the stock or on the waste.
struct Kvar {
    std::array<Maske, 14> pyramid{};
    std::array<int, 14> lekOchHog{};
    int Antal(int valor) const {
        return std::popcount(pyramid[static_cast<size_t>(valor)]) +
               lekOchHog[static_cast<size_t>(valor)];
    }
};

// The values of the cards left in the pyramid, as bits.
unsigned PyramidensVarden(const std::vector<Lucka>& luckor) {
    unsigned varden = 0;
    for (int i = kForstaPyramid; i <= kSistaPyramid; ++i)
        if (!luckor[i].Tom())
            varden |= 1u << luckor[i].GeKort().KortValor();
    return varden;
}

// A card of the stock or the waste pairs only with a pyramid card: with no pyramid card
// of the value that makes 13 with it left, and not a king, it can never be discarded. The
// pyramid only loses cards, so it stays so.
bool Dod(const Kort& kort, unsigned pyramidensVarden) {
    const int valor = kort.KortValor();
    return valor != 13 && ((pyramidensVarden >> (13 - valor)) & 1u) == 0;
}

// The waste and the stock each fill their slots from the first up, without a gap: one
// past the last card of the run from `forsta` to `sista`.
int Slut(const std::vector<Lucka>& luckor, int forsta, int sista) {
    int j = forsta;
    while (j <= sista && !luckor[j].Tom())
        ++j;
    return j;
}

// The waste slot of the highest card on it that can never be discarded, -1 for none.
int DodaHogen(const std::vector<Lucka>& luckor, unsigned pyramidensVarden) {
    for (int j = Slut(luckor, kForstaHog, kSistaHog) - 1; j >= kForstaHog; --j)
        if (Dod(luckor[j].GeKort(), pyramidensVarden))
            return j;
    return -1;
}

// The cards left that a pyramid card may still be paired with. After the redeal the waste
// is never turned over again, so a waste card lying under one that can never be discarded
// stays under it: it is out of play.
Kvar KortKvar(const Stallning& bord) {
    const std::vector<Lucka>& luckor = bord.luckor;
    Kvar kvar;
    for (int i = kForstaPyramid; i <= kSistaPyramid; ++i)
        if (!luckor[i].Tom())
            kvar.pyramid[static_cast<size_t>(luckor[i].GeKort().KortValor())] |= 1u << i;
    auto rakna = [&](int fran, int till) {
        for (int j = fran, slut = Slut(luckor, fran, till); j < slut; ++j)
            ++kvar.lekOchHog[static_cast<size_t>(luckor[j].GeKort().KortValor())];
    };
    const int dod = bord.giv >= kSistaGiv ? DodaHogen(luckor, PyramidensVarden(luckor)) : -1;
    rakna(dod < 0 ? kForstaHog : dod + 1, kSistaHog);
    rakna(kForstaLek, kSistaLek);
    return kvar;
}

// Whether the pyramid cards `ena` (bits) and `andra` of the two values of a pair can
// all be paired: with each other where neither lies on the other, or with the other value's
// cards in the stock and the waste (`lekEna`, `lekAndra` of them), each card once.
bool KanParas(Maske ena, Maske andra, int lekEna, int lekAndra) {
    if (ena == 0)
        return std::popcount(andra) <= lekEna;
    const int i = std::countr_zero(ena);
    const Maske resten = ena & (ena - 1);
    if (lekAndra > 0 && KanParas(resten, andra, lekEna, lekAndra - 1))
        return true;
    const std::array<Maske, kPyramidKort>& over = Over();
    for (Maske m = andra; m != 0; m &= m - 1) {
        const int j = std::countr_zero(m);
        const bool ivagen = ((over[static_cast<size_t>(i)] >> j) & 1u) != 0 ||
                            ((over[static_cast<size_t>(j)] >> i) & 1u) != 0;
        if (!ivagen && KanParas(resten, andra & ~(1u << j), lekEna, lekAndra))
            return true;
    }
    return false;
}

bool KastarKung(const SpelBord& b, const Drag& d) {
    return d.slag == DragSlag::Kort && ArKung(b.luckor[d.fran]);
}

// A press that also takes a card, a quirk of where the stock lies under the pyramid's
// bottom row.
bool TryckMedKort(const Drag& d) {
    return d.slag == DragSlag::Knapp && d.fran >= 0;
}

class Kunskap final : public SokKunskap {
public:
    // The pyramid's cards as bits, then the waste from the bottom and the stock from the
    // bottom, and the pass: the discards are what is left over, and the slots a card lies
    // in within the waste or stock follow from its place in that order. Only a card's value
    // counts in play, so the waste and the stock are keyed by values, and every card there
    // that can never be discarded any more by one mark: such cards only lie in the way, all
    // alike.
    void Nyckel(const SpelBord& b, std::string& nyckel) const override {
        const std::vector<Lucka>& luckor = b.luckor;
        Maske pyramid = 0;
        unsigned varden = 0;
        for (int i = kForstaPyramid; i <= kSistaPyramid; ++i)
            if (!luckor[i].Tom()) {
                pyramid |= 1u << i;
                varden |= 1u << luckor[i].GeKort().KortValor();
            }
        std::array<char, 4 + (kSistaHog - kForstaHog + 1) + 1 + 52 + 1> buf;
        std::size_t n = 0;
        for (int k = 0; k < 4; ++k)
            buf[n++] = static_cast<char>((pyramid >> (8 * k)) & 0xffu);
        auto lagg = [&](int fran, int till) {
            for (int j = fran; j <= till && !luckor[j].Tom(); ++j) {
                const Kort& kort = luckor[j].GeKort();
                buf[n++] = static_cast<char>(Dod(kort, varden) ? 14 : kort.KortValor());
            }
        };
        lagg(kForstaHog, kSistaHog);
        buf[n++] = 0;
        lagg(kForstaLek, kSistaLek);
        buf[n++] = static_cast<char>(static_cast<const Stallning&>(b).giv);
        nyckel.append(buf.data(), n);
    }

    // Kings first, then pairs within the pyramid, then pairs with the waste, then the
    // stock. A press that also takes a card is left out: the table it makes is made as
    // well by the pair or king and the press one after the other, both of which stay.
    void Ordna(const SpelBord&, std::vector<Drag>& dragen) const override {
        std::erase_if(dragen, TryckMedKort);
        auto rang = [&](const Drag& d) {
            if (d.slag == DragSlag::Kort)
                return 0;
            if (d.slag == DragSlag::Par)
                return IPyramiden(d.fran) && IPyramiden(d.andra) ? 1 : 2;
            return 3;
        };
        std::stable_sort(dragen.begin(), dragen.end(),
                         [&](const Drag& x, const Drag& y) { return rang(x) < rang(y); });
    }

    // A king pairs with nothing: where it lies it only covers cards, so taking it away at
    // once loses nothing. Two cards that are the last of their two values can only ever go
    // with each other, so they too may go at once.
    int SakertDrag(const SpelBord& b, const std::vector<Drag>& dragen) const override {
        const int kung = ForstaDragSom(dragen, [&](const Drag& d) { return KastarKung(b, d); });
        if (kung >= 0)
            return kung;
        Kvar kvar = KortKvar(static_cast<const Stallning&>(b));
        return ForstaDragSom(dragen, [&](const Drag& d) {
            if (d.slag != DragSlag::Par)
                return false;
            int v = b.luckor[d.fran].GeKort().KortValor();
            return kvar.Antal(v) == 1 && kvar.Antal(13 - v) == 1;
        });
    }

    // Every pyramid card must go, and all but a king go with a partner free at the same
    // time, each card with one partner only. Of two cards one of which lies on the other,
    // directly or through others, the lower is free only after the upper is gone, so they
    // are never free together. So for each two values that make 13, the pyramid's cards of
    // the one must find partners among the pyramid's cards of the other that neither lie
    // on them nor under them, or among the cards of the stock and the waste, each used
    // once; when no such pairing exists the table cannot be won.
    bool Hopplos(const SpelBord& b) const override {
        Kvar kvar = KortKvar(static_cast<const Stallning&>(b));
        for (int v = 1; v <= 6; ++v) {
            const auto w = static_cast<size_t>(13 - v);
            const auto u = static_cast<size_t>(v);
            if (!KanParas(kvar.pyramid[u], kvar.pyramid[w], kvar.lekOchHog[u], kvar.lekOchHog[w]))
                return true;
        }
        return false;
    }

    bool ListaDrag(const SpelBord& b, std::vector<Drag>& dragen) const override {
        dragen.clear();
        LaggTillDrag(static_cast<const Stallning&>(b), dragen);
        return true;
    }

    // A card turned from the stock is taken back by undo; the redeal is not.
    bool TasTillbaka(const SpelBord& b, const Drag& d) const override {
        if (d.slag == DragSlag::Knapp)
            return d.fran < 0 && LekIndex(b.luckor) >= 0;
        return SokKunskap::TasTillbaka(b, d);
    }

    std::string KnappNamn() const override { return "turn the stock"; }
};

} // namespace

const SpelRegler& Regler() {
    return SpeletsRegler<Stallning, Kunskap>();
}

} // namespace PyramidenRegler

namespace PyramidenRegler {

std::vector<Hog> HogTabell(const Stallning& /*bord*/) {
    std::vector<Hog> hogar;
    for (int r = 0; r < kRader; ++r)
        for (int k = 0; k <= r; ++k) {
            int i = r * (r + 1) / 2 + k;
            hogar.push_back({HogSlag::Pyramid, k + 1, i, i, r + 1});
        }
    hogar.push_back({HogSlag::Lek, 0, kForstaLek, kSistaLek});
    hogar.push_back({HogSlag::Avfall, 0, kForstaHog, kSistaHog});
    hogar.push_back({HogSlag::Kast, 0, kForstaKast, kSistaKast});
    return hogar;
}

} // namespace PyramidenRegler
