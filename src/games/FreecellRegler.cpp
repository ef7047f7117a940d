#include "games/FreecellRegler.h"

#include <algorithm>
#include <array>
#include <string>
#include <unordered_set>

namespace FreecellRegler {

using namespace KolumnRegler;

const Plan& Planen() {
    static const Plan plan{4,
                           kForstaGrund,
                           kForstaLek,
                           kAntalLuckor,
                           false,
                           kForstaGrund,
                           kForstaGrund + 4 * kNivaer - 1,
                           FriRakning::KolumnerOchFriceller,
                           false,
                           {176, 178, 180, 182, 184, 197, 210, 223},
                           GivOrdning};
    return plan;
}

const SpelRegler& Regler() {
    return ReglerMed<Planen>();
}

Rutnat RaknaUtLuckor(std::vector<Lucka>& luckor, BRect ram) {
    Rutnat r = KolumnRutnat(ram);
    LaggKolumner(luckor, r, r.h + 2 * r.m);
    for (int i = 0; i < 4; ++i)
        LaggFricell(luckor, i, r.Ruta(i, r.m));
    for (int g = 0; g < 4; ++g)
        LaggGrund(luckor, Planen(), g, r.Ruta(g + 4, r.m));
    LaggLek(luckor, Planen(), r);
    return r;
}

std::vector<std::pair<int, int>> GivOrdning() {
    std::vector<std::pair<int, int>> ordning;
    int d = 51;
    for (int r = 0; d >= 0; ++r)
        for (int c = 0; c < kKolumner && d >= 0; ++c)
            ordning.emplace_back(kForstaLek + d--, c * kPlatserPerKolumn + r);
    return ordning;
}

namespace {

// The table as the search sees it: a card is suit·13 + value − 1, -1 is nothing.
struct Lage {
    std::array<std::vector<int>, kKolumner> kolumn;
    std::array<int, 4> cell{-1, -1, -1, -1};
    std::array<int, 4> grundSvit{-1, -1, -1, -1};
    std::array<int, 4> grundAntal{0, 0, 0, 0};
};

int Svit(int k) {
    return k / 13;
}
int Valor(int k) {
    return k % 13 + 1;
}
bool Svart(int k) {
    return Svit(k) >= 2;
}

std::string Nyckel(const Lage& l) {
    std::array<std::string, kKolumner> kol;
    for (int c = 0; c < kKolumner; ++c)
        kol[c].assign(l.kolumn[c].begin(), l.kolumn[c].end());
    std::sort(kol.begin(), kol.end());
    std::array<int, 4> celler = l.cell;
    std::sort(celler.begin(), celler.end());
    std::string s;
    for (auto& k : kol) {
        for (char ch : k)
            s.push_back(static_cast<char>(ch + 1));
        s.push_back('|');
    }
    for (int c : celler)
        s.push_back(static_cast<char>(c + 1));
    return s;
}

struct Drag {
    int fran;
    int till;
};

struct Sokare {
    std::unordered_set<std::string> sett;
    std::vector<std::pair<int, int>> vag;
    int kvar;

    // Where a card goes to its foundation, as the foundation slot it lands in, or -1.
    int GrundFor(const Lage& l, int k, int* f) const {
        for (int g = 0; g < 4; ++g)
            if (l.grundSvit[g] == Svit(k) && l.grundAntal[g] + 1 == Valor(k)) {
                *f = g;
                return kForstaGrund + kNivaer * g + l.grundAntal[g];
            }
        if (Valor(k) == 1)
            for (int g = 0; g < 4; ++g)
                if (l.grundAntal[g] == 0) {
                    *f = g;
                    return kForstaGrund + kNivaer * g;
                }
        return -1;
    }

    bool Sakert(const Lage& l, int k) const {
        if (Valor(k) <= 2)
            return true;
        // Both cards of the other colour one lower are already up.
        int behov = 0;
        for (int g = 0; g < 4; ++g)
            if (l.grundSvit[g] >= 0 && (l.grundSvit[g] >= 2) != Svart(k) &&
                l.grundAntal[g] >= Valor(k) - 1)
                ++behov;
        return behov == 2;
    }

    bool Sok(Lage& l, int djup) {
        int klara = l.grundAntal[0] + l.grundAntal[1] + l.grundAntal[2] + l.grundAntal[3];
        if (klara == 52)
            return true;
        if (--kvar < 0 || djup > 400)
            return false;
        if (!sett.insert(Nyckel(l)).second)
            return false;

        // Sources: column tops, then free cells.
        struct Kalla {
            int kort;
            int lucka;
            int kolumn; // -1 for a free cell
            int cell;
        };
        std::vector<Kalla> kallor;
        for (int c = 0; c < kKolumner; ++c)
            if (!l.kolumn[c].empty())
                kallor.push_back({l.kolumn[c].back(),
                                  c * kPlatserPerKolumn + static_cast<int>(l.kolumn[c].size()) - 1,
                                  c, -1});
        for (int i = 0; i < 4; ++i)
            if (l.cell[i] >= 0)
                kallor.push_back({l.cell[i], kForstaFricell + 2 * i, -1, i});

        auto taBort = [&](const Kalla& s) {
            if (s.kolumn >= 0)
                l.kolumn[s.kolumn].pop_back();
            else
                l.cell[s.cell] = -1;
        };
        auto laggTillbaka = [&](const Kalla& s) {
            if (s.kolumn >= 0)
                l.kolumn[s.kolumn].push_back(s.kort);
            else
                l.cell[s.cell] = s.kort;
        };
        auto prova = [&](const Kalla& s, int till, auto lagg, auto ta) {
            taBort(s);
            lagg();
            vag.emplace_back(s.lucka, till);
            if (Sok(l, djup + 1))
                return true;
            vag.pop_back();
            ta();
            laggTillbaka(s);
            return false;
        };

        // Foundation moves; a safe one is the only move tried.
        for (int pass = 0; pass < 2; ++pass)
            for (const Kalla& s : kallor) {
                int g = -1;
                int till = GrundFor(l, s.kort, &g);
                if (till < 0 || (pass == 0) != Sakert(l, s.kort))
                    continue;
                int forraSvit = l.grundSvit[g];
                bool ok = prova(
                    s, till,
                    [&] {
                        l.grundSvit[g] = Svit(s.kort);
                        ++l.grundAntal[g];
                    },
                    [&] {
                        --l.grundAntal[g];
                        l.grundSvit[g] = forraSvit;
                    });
                if (ok)
                    return true;
                if (pass == 0)
                    return false;
            }

        // Onto a card in another column.
        for (const Kalla& s : kallor)
            for (int c = 0; c < kKolumner; ++c) {
                if (c == s.kolumn || l.kolumn[c].empty())
                    continue;
                int under = l.kolumn[c].back();
                if (Valor(under) != Valor(s.kort) + 1 || Svart(under) == Svart(s.kort))
                    continue;
                int till = c * kPlatserPerKolumn + static_cast<int>(l.kolumn[c].size());
                if (prova(
                        s, till, [&] { l.kolumn[c].push_back(s.kort); },
                        [&] { l.kolumn[c].pop_back(); }))
                    return true;
            }

        // Into the first empty column, unless the card is alone in its own.
        int tomKolumn = -1;
        for (int c = 0; c < kKolumner && tomKolumn < 0; ++c)
            if (l.kolumn[c].empty())
                tomKolumn = c;
        if (tomKolumn >= 0)
            for (const Kalla& s : kallor) {
                if (s.kolumn >= 0 && l.kolumn[s.kolumn].size() == 1)
                    continue;
                int c = tomKolumn;
                if (prova(
                        s, c * kPlatserPerKolumn, [&] { l.kolumn[c].push_back(s.kort); },
                        [&] { l.kolumn[c].pop_back(); }))
                    return true;
            }

        // Into the first empty free cell.
        int tomCell = -1;
        for (int i = 0; i < 4 && tomCell < 0; ++i)
            if (l.cell[i] < 0)
                tomCell = i;
        if (tomCell >= 0)
            for (const Kalla& s : kallor) {
                if (s.kolumn < 0)
                    continue;
                int i = tomCell;
                if (prova(
                        s, kForstaFricell + 2 * i, [&] { l.cell[i] = s.kort; },
                        [&] { l.cell[i] = -1; }))
                    return true;
            }
        return false;
    }
};

} // namespace

std::vector<std::pair<int, int>> Losning(const std::vector<Lucka>& luckor, int maxLagen) {
    Lage l;
    auto kod = [&](int i) {
        const Kort& k = luckor[i].GeKort();
        return 13 * static_cast<int>(k.KortFarg()) + k.KortValor() - 1;
    };
    for (int c = 0; c < kKolumner; ++c)
        for (int p = 0; p < kPlatserPerKolumn && !luckor[c * kPlatserPerKolumn + p].Tom(); ++p)
            l.kolumn[c].push_back(kod(c * kPlatserPerKolumn + p));
    for (int i = 0; i < 4; ++i)
        if (!luckor[kForstaFricell + 2 * i].Tom())
            l.cell[i] = kod(kForstaFricell + 2 * i);
    for (int g = 0; g < 4; ++g)
        for (int k = 0; k < kNivaer; ++k) {
            int i = kForstaGrund + kNivaer * g + k;
            if (luckor[i].Tom())
                break;
            l.grundSvit[g] = static_cast<int>(luckor[i].GeKort().KortFarg());
            l.grundAntal[g] = k + 1;
        }
    Sokare sok;
    sok.kvar = maxLagen;
    if (!sok.Sok(l, 0))
        return {};
    return sok.vag;
}

} // namespace FreecellRegler
