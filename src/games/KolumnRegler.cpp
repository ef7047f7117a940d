#include "games/KolumnRegler.h"

#include <algorithm>

namespace KolumnRegler {

namespace {

bool Fylld(const std::vector<Lucka>& luckor, int i) {
    return i >= 0 && i < static_cast<int>(luckor.size()) && !luckor[i].Tom();
}
bool TomLucka(const std::vector<Lucka>& luckor, int i) {
    return i >= 0 && i < static_cast<int>(luckor.size()) && luckor[i].Tom();
}
int Valor(const std::vector<Lucka>& luckor, int i) {
    return luckor[i].GeKort().KortValor();
}
BRect Forlangd(BRect r) {
    r.bottom += kDropForlangning;
    return r;
}
bool Topp(const std::vector<Lucka>& luckor, int j) {
    return Fylld(luckor, j) && TomLucka(luckor, j + 1);
}
// The yes/no flag Eight off compares along a run.
bool SvitFlagga(const Kort& k) {
    return k.KortFarg() != HJARTER;
}

} // namespace

bool Fricell(const Plan& plan, int i) {
    return i >= kForstaFricell && i < kForstaFricell + 2 * plan.friceller &&
           (i - kForstaFricell) % 2 == 0;
}
bool GrundBas(const Plan& plan, int i) {
    return i >= plan.forstaGrund && i <= SistaGrund(plan) && (i - plan.forstaGrund) % kNivaer == 0;
}
int SistaGrund(const Plan& plan) {
    return plan.forstaGrund + 4 * kNivaer - 1;
}
int SistaPlats(const Plan& plan) {
    return plan.forstaGrund - 1;
}

int Traff(const std::vector<Lucka>& luckor, BPoint p) {
    int antal = static_cast<int>(luckor.size());
    for (int i = 0; i < antal; ++i) {
        BRect r = luckor[i].GePos();
        BRect band = r & BRect(r.left, r.top, r.right, r.top + kBand);
        bool fylld = !luckor[i].Tom();
        bool toppKort = fylld && (i + 1 >= antal || luckor[i + 1].Tom());
        if ((r.Contains(p) && toppKort) || (band.Contains(p) && fylld))
            return i;
    }
    return -1;
}

int Toppen(const std::vector<Lucka>& luckor, int forsta) {
    int i = forsta;
    while (Fylld(luckor, i + 1))
        ++i;
    return i;
}

bool PassarPaKolumn(const Plan& plan, const Kort& under, const Kort& kort) {
    if (under.KortValor() != kort.KortValor() + 1)
        return false;
    if (plan.sammaSvit)
        return under.KortFarg() == kort.KortFarg();
    return under.SvartFarg() != kort.SvartFarg();
}

int KlickMal(const Plan& plan, const std::vector<Lucka>& luckor, const Kort& kort) {
    for (int j = plan.forstaGrund; j <= SistaGrund(plan); ++j)
        if (Topp(luckor, j) && Valor(luckor, j) + 1 == kort.KortValor() &&
            luckor[j].GeKort().KortFarg() == kort.KortFarg())
            return j + 1;
    if (kort.KortValor() == 1)
        for (int j = plan.forstaGrund; j <= SistaGrund(plan); ++j)
            if (luckor[j].Tom() && GrundBas(plan, j))
                return j;
    for (int j = 0; j <= kSistaKolumnLucka; ++j)
        if (Topp(luckor, j) && PassarPaKolumn(plan, luckor[j].GeKort(), kort))
            return j + 1;
    for (int j = 0; j <= SistaPlats(plan); ++j)
        if (luckor[j].Tom() && TomLucka(luckor, j + 1) && (KolumnBas(j) || Fricell(plan, j)))
            return j;
    return -1;
}

int DropMal(const Plan& plan, const std::vector<Lucka>& luckor, const Kort& kort, BPoint q) {
    auto traffad = [&](int j) { return Forlangd(luckor[j].GePos()).Contains(q); };
    for (int j = plan.dropGrundFran; j <= plan.dropGrundTill; ++j)
        if (traffad(j) && Topp(luckor, j) && Valor(luckor, j) + 1 == kort.KortValor() &&
            luckor[j].GeKort().KortFarg() == kort.KortFarg())
            return j + 1;
    if (kort.KortValor() == 1)
        for (int j = plan.dropGrundFran; j <= plan.dropGrundTill; ++j)
            if (traffad(j) && luckor[j].Tom() && GrundBas(plan, j))
                return j;
    for (int j = 0; j <= kSistaKolumnLucka; ++j)
        if (traffad(j) && Topp(luckor, j) && PassarPaKolumn(plan, luckor[j].GeKort(), kort))
            return j + 1;
    for (int j = 0; j <= SistaPlats(plan); ++j)
        if (traffad(j) && luckor[j].Tom() && TomLucka(luckor, j + 1) &&
            (KolumnBas(j) || Fricell(plan, j)))
            return j;
    return -1;
}

int FriaPlatser(const Plan& plan, const std::vector<Lucka>& luckor) {
    int fria = 0;
    if (plan.rakning == FriRakning::NioParVarannan) {
        for (int k = 0; k <= 8; ++k) {
            if (TomLucka(luckor, k * kPlatserPerKolumn))
                ++fria;
            if (TomLucka(luckor, kForstaFricell + 2 * k))
                ++fria;
        }
        return fria;
    }
    for (int c = 0; c < kKolumner; ++c)
        if (TomLucka(luckor, c * kPlatserPerKolumn))
            ++fria;
    for (int i = 0; i < plan.friceller; ++i)
        if (TomLucka(luckor, kForstaFricell + 2 * i))
            ++fria;
    return fria;
}

bool GiltigRad(const Plan& plan, const std::vector<Lucka>& luckor, int forsta, int topp,
               bool vidDrop) {
    const Kort& f = luckor[forsta].GeKort();
    bool flagga = plan.svitFlagga ? (vidDrop ? f.SvartFarg() : SvitFlagga(f)) : f.SvartFarg();
    int valor = f.KortValor();
    for (int i = forsta + 1; i <= topp; ++i) {
        const Kort& k = luckor[i].GeKort();
        if (k.KortValor() != valor - 1)
            return false;
        if (plan.svitFlagga) {
            if (SvitFlagga(k) != flagga)
                return false;
        } else {
            if (k.SvartFarg() == flagga)
                return false;
            flagga = k.SvartFarg();
        }
        valor = k.KortValor();
    }
    return true;
}

RadMal KlickRadMal(const Plan& plan, const std::vector<Lucka>& luckor, int forsta, int topp) {
    int n = topp - forsta + 1;
    int fria = FriaPlatser(plan, luckor);
    if (n - 1 > fria || !GiltigRad(plan, luckor, forsta, topp, false))
        return {};
    const Kort& f = luckor[forsta].GeKort();
    for (int j = 0; j <= kSistaKolumnLucka; ++j) {
        if (Topp(luckor, j) && PassarPaKolumn(plan, luckor[j].GeKort(), f))
            return {j, j + 1};
        if (luckor[j].Tom() && TomLucka(luckor, j + 1) && KolumnBas(j)) {
            // The column taken is no longer a free place for the run.
            --fria;
            if (n - 1 <= fria)
                return {j, j};
        }
    }
    return {};
}

RadMal DropRadMal(const Plan& plan, const std::vector<Lucka>& luckor, int forsta, int topp,
                  BPoint q) {
    int n = topp - forsta + 1;
    if (!GiltigRad(plan, luckor, forsta, topp, true))
        return {};
    int fria = FriaPlatser(plan, luckor);
    if (n - 1 > fria)
        return {};
    const Kort& f = luckor[forsta].GeKort();
    for (int j = 0; j <= kSistaKolumnLucka; ++j) {
        if (!Forlangd(luckor[j].GePos()).Contains(q))
            continue;
        if (Topp(luckor, j) && PassarPaKolumn(plan, luckor[j].GeKort(), f))
            return {j, j + 1};
        if (luckor[j].Tom() && KolumnBas(j) && n - 1 <= fria - 1)
            return {j, j};
    }
    return {};
}

bool Vunnet(const Plan& plan, const std::vector<Lucka>& luckor) {
    for (int f = 0; f < 4; ++f) {
        int kung = plan.forstaGrund + kNivaer * f + kNivaer - 1;
        if (luckor[kung].Tom() || luckor[kung].GeKort().KortValor() != 13)
            return false;
    }
    return true;
}

int KortPaGrunden(const Plan& plan, const std::vector<Lucka>& luckor) {
    int antal = 0;
    for (int j = plan.forstaGrund; j <= SistaGrund(plan); ++j)
        if (!luckor[j].Tom())
            ++antal;
    return antal;
}

BRect Rutnat::Ruta(int kolumn, int topp) const {
    auto f = [](int v) { return static_cast<float>(v); };
    return BRect(f(kolumn * (w + m) + m), f(topp), f(kolumn * (w + m) + w + m), f(topp + h));
}

Rutnat KolumnRutnat(BRect ram) {
    Rutnat rutnat;
    rutnat.h = std::max(static_cast<int>(ram.Height() - 40.0f) / 11, 70);
    rutnat.w =
        std::max(static_cast<int>(ram.Width() - 4.0f * static_cast<float>(rutnat.m)) / 10, 70);
    return rutnat;
}

void LaggKolumner(std::vector<Lucka>& luckor, const Rutnat& rutnat, int topp) {
    for (int c = 0; c < kKolumner; ++c)
        for (int p = 0; p < kPlatserPerKolumn; ++p)
            luckor[c * kPlatserPerKolumn + p].NyPos(rutnat.Ruta(c, 30 * p + topp));
}

void LaggFricell(std::vector<Lucka>& luckor, int i, BRect ruta) {
    luckor[kForstaFricell + 2 * i].NyPos(ruta);
    luckor[kForstaFricell + 2 * i + 1].NyPos(ruta);
}

void LaggGrund(std::vector<Lucka>& luckor, const Plan& plan, int g, BRect ruta) {
    for (int k = 0; k < kNivaer; ++k)
        luckor[plan.forstaGrund + kNivaer * g + k].NyPos(ruta);
}

void LaggLek(std::vector<Lucka>& luckor, const Plan& plan, const Rutnat& rutnat) {
    for (int k = 0; k < 52; ++k)
        luckor[plan.forstaLek + k].NyPos(rutnat.Ruta(8, 2 * rutnat.h + rutnat.m + k));
}

} // namespace KolumnRegler
