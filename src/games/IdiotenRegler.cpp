#include "games/IdiotenRegler.h"

#include <algorithm>

namespace IdiotenRegler {

namespace {

BRect Rektangel(int left, int top, int right, int bottom) {
    return BRect(static_cast<float>(left), static_cast<float>(top), static_cast<float>(right),
                 static_cast<float>(bottom));
}

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
                Rektangel((w + g) * c, (h + g) * r + g, (w + g) * c + w, (h + g) * r + h + g));

    // The aces overlap: each lies half a card less five pixels right of the one before.
    const int essTopp = (h + g) * 4 + g;
    for (int i = 0; i < 4; ++i)
        luckor[kForstaEssPlats + i].NyPos(
            Rektangel((w / 2 + g) * i, essTopp, (w / 2 + g) * i + w, essTopp + h));

    for (int j = 0; j < kSistaLekPlats - kForstaLekPlats + 1; ++j)
        luckor[kForstaLekPlats + j].NyPos(
            Rektangel(3 * w + g, essTopp + j, 4 * w + g, essTopp + h + j));

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
    int topp = -1;
    for (int i = kForstaLekPlats; i <= kSistaLekPlats && !luckor[i].Tom(); ++i)
        topp = i;
    return topp;
}

} // namespace IdiotenRegler
