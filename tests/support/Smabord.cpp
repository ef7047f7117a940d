#include "support/Smabord.h"

#include "games/IdiotenRegler.h"
#include "games/PyramidenRegler.h"
#include "support/Hjalpkorning.h"

namespace {

constexpr kortfarg H = HJARTER;
constexpr kortfarg R = RUTER;
constexpr kortfarg K = KLOVER;
constexpr kortfarg S = SPADER;

// `farg` from `fran` up to `till` in the slots from `lucka` on.
void Foljd(std::vector<Kortet>& kort, int lucka, kortfarg farg, int fran, int till) {
    for (int v = fran; v <= till; ++v)
        kort.push_back({lucka + v - fran, farg, v});
}

// Four foundations from their aces: the one at `bas[i]` holds `farg[i]` up to `hojd[i]`.
void Grunder(std::vector<Kortet>& kort, std::array<int, 4> bas, std::array<kortfarg, 4> farg,
             std::array<int, 4> hojd) {
    for (int i = 0; i < 4; ++i)
        Foljd(kort, bas[i], farg[i], 1, hojd[i]);
}

// The cards of a column (bottom first) in the slots from `bas` on.
void Hog(std::vector<Kortet>& kort, int bas, std::initializer_list<std::pair<kortfarg, int>> hog) {
    for (const auto& [farg, valor] : hog)
        kort.push_back({bas++, farg, valor});
}

// Idioten 1 on its last deal: row 1 (hearts) waits for its two at the left end, which lies at
// the row's right end; the spades' row lacks its left end's two, which lies in row 1.
Uppstallning Idioten1() {
    Uppstallning b{0, {}, {}, KortDrag(12, 13), KortDrag(0, 13)};
    b.kort.push_back({0, S, 2});
    Foljd(b.kort, 1, H, 3, 13);
    b.kort.push_back({12, H, 2});
    Foljd(b.kort, 14, S, 3, 13);
    Foljd(b.kort, 26, K, 2, 13);
    Foljd(b.kort, 39, R, 2, 13);
    for (int f = 0; f < 4; ++f)
        b.kort.push_back({52 + f, static_cast<kortfarg>(f), 1});
    b.mer = [](Patiens& spel) {
        dynamic_cast<PatiensPa<IdiotenRegler::Stallning>&>(spel).BordForTest().forsok = 3;
    };
    return b;
}

// Idioten 2, the stock used up: the ace of spades lies on the ace of clubs; the king of clubs
// in the empty column leaves no way to part them.
Uppstallning Idioten2() {
    Uppstallning b{1,
                   {{0, H, 1}, {14, R, 1}, {15, K, 13}, {28, K, 1}, {29, S, 1}},
                   {},
                   KortDrag(15, 42),
                   KortDrag(29, 42)};
    for (int f = 0; f < 4; ++f)
        for (int v = 2; v <= 13; ++v)
            if (!(f == K && v == 13))
                b.kort.push_back({55 + 13 * f + v, static_cast<kortfarg>(f), v});
    return b;
}

// Godnattvalsen: two kings and one queen left for two foundations; the king of spades on
// the queen's foundation leaves the king of hearts over its queen.
Uppstallning Godnattvalsen() {
    Uppstallning b{2, {}, {}, KortDrag(42, 40), KortDrag(15, 40)};
    Grunder(b.kort, {0, 28, 56, 84}, {H, S, R, K}, {11, 12, 13, 13});
    Hog(b.kort, 14, {{H, 12}, {H, 13}});
    b.kort.push_back({42, S, 13});
    return b;
}

// Kvarnen: with the queen of hearts home the kings follow; gathered and dealt again, the
// five cards left lie in one pile in reading order, each king over what it waits for.
Uppstallning Kvarnen() {
    Uppstallning b{4, {}, {}, KnappDrag(), KortDrag(72, 11)};
    Grunder(b.kort, {0, 18, 36, 54}, {H, S, R, K}, {11, 9, 13, 13});
    Hog(b.kort, 72, {{H, 12}});
    Hog(b.kort, 90, {{S, 10}, {H, 13}});
    Hog(b.kort, 108, {{S, 11}});
    Hog(b.kort, 126, {{S, 13}, {S, 12}});
    return b;
}

// Glädjespridaren: the five of diamonds covers the four its foundation waits for; only the
// six of spades can take it, and sent home the six leaves it nowhere to go.
Uppstallning Gladjespridaren() {
    Uppstallning b{5, {}, {}, KortDrag(23, 423), KortDrag(1, 24)};
    Grunder(b.kort, {352, 374, 396, 418}, {H, R, K, S}, {8, 3, 13, 5});
    b.kort.insert(b.kort.end(), {{198, S, 13}, {220, H, 13}, {242, R, 13}, {264, S, 12}});
    Hog(b.kort, 0, {{R, 4}, {R, 5}});
    Hog(b.kort, 22, {{H, 10}, {S, 6}});
    Hog(b.kort, 44, {{H, 9}, {R, 6}});
    Hog(b.kort, 66, {{S, 7}, {R, 7}});
    Hog(b.kort, 88, {{S, 8}, {R, 8}});
    Hog(b.kort, 110, {{S, 9}, {R, 9}});
    Hog(b.kort, 132, {{S, 10}, {R, 10}});
    Hog(b.kort, 154, {{S, 11}, {R, 12}, {H, 12}, {H, 11}});
    Hog(b.kort, 176, {{R, 11}});
    return b;
}

// Farfars klocka: the three of diamonds the first clock pile waits for lies under the seven
// of clubs, which only the eight of diamonds can take; sent to its clock pile, the eight
// leaves every pile blocked.
Uppstallning Farfarsklocka() {
    Uppstallning b{6, {}, {}, KortDrag(248, 78), KortDrag(229, 249)};
    b.kort = {{0, R, 2},    {57, K, 5},   {76, R, 6},   {77, R, 7},   {95, S, 7},
              {96, S, 8},   {114, H, 8},  {133, K, 9},  {134, K, 10}, {152, R, 10},
              {190, H, 12}, {191, H, 13}, {209, K, 13}, {210, K, 1}};
    Foljd(b.kort, 19, S, 3, 6);
    Foljd(b.kort, 38, H, 4, 7);
    b.kort.insert(b.kort.end(),
                  {{171, S, 11}, {172, S, 12}, {173, S, 13}, {174, S, 1}, {175, S, 2}});
    Hog(b.kort, 228, {{R, 3}, {K, 7}});
    Hog(b.kort, 247, {{R, 1}, {R, 8}});
    Hog(b.kort, 266, {{R, 5}, {R, 4}, {R, 12}});
    Hog(b.kort, 285, {{K, 6}, {S, 10}});
    Hog(b.kort, 304, {{R, 9}, {K, 8}, {K, 3}});
    Hog(b.kort, 323, {{S, 9}, {H, 9}, {H, 10}});
    Hog(b.kort, 342, {{H, 11}, {K, 11}, {K, 12}});
    Hog(b.kort, 361, {{K, 4}, {K, 2}, {R, 11}, {R, 13}, {H, 2}, {H, 1}, {H, 3}});
    return b;
}

// 13-Pyramiden on its last pass: the six of diamonds under the six of spades and the seven
// of hearts, the seven of clubs on the waste. Paired with the waste's seven, the six of
// spades leaves the seven of hearts over the only six it could pair with.
Uppstallning Pyramiden() {
    Uppstallning b{
        7, {{15, R, 6}, {21, S, 6}, {22, H, 7}, {36, K, 7}}, {}, ParDrag(36, 21), ParDrag(21, 22)};
    for (int f = 0; f < 4; ++f)
        for (int v = 1; v <= 13; ++v) {
            bool ute = (f == R && v == 6) || (f == S && v == 6) || (f == H && v == 7) ||
                       (f == K && v == 7);
            if (!ute)
                b.kort.push_back({60 + 13 * f + v, static_cast<kortfarg>(f), v});
        }
    b.mer = [](Patiens& spel) {
        dynamic_cast<PatiensPa<PyramidenRegler::Stallning>&>(spel).BordForTest().giv = 2;
    };
    return b;
}

// Freecell, one free cell empty and no column: the five of diamonds in it frees the four
// under it; the queen of diamonds in it blocks every card for good.
Uppstallning Freecell() {
    Uppstallning b{8, {}, {}, KortDrag(23, 182), KortDrag(1, 182)};
    Grunder(b.kort, {184, 197, 210, 223}, {H, K, R, S}, {9, 9, 3, 5});
    b.kort.insert(b.kort.end(), {{176, K, 13}, {178, H, 13}, {180, S, 13}});
    Hog(b.kort, 0, {{R, 4}, {R, 5}});
    Hog(b.kort, 22, {{R, 13}, {R, 12}});
    Hog(b.kort, 44, {{R, 6}, {R, 7}});
    Hog(b.kort, 66, {{R, 10}, {R, 9}});
    Hog(b.kort, 88, {{S, 6}, {S, 7}, {S, 8}, {R, 8}});
    Hog(b.kort, 110, {{S, 9}, {S, 10}, {H, 11}});
    Hog(b.kort, 132, {{H, 10}, {S, 11}, {S, 12}, {H, 12}});
    Hog(b.kort, 154, {{K, 10}, {K, 11}, {K, 12}, {R, 11}});
    return b;
}

// Eight off, as Freecell: one free cell empty, and only the five of diamonds in it frees a
// card that can go home.
Uppstallning Eightoff() {
    Uppstallning b{9, {}, {}, KortDrag(23, 182), KortDrag(1, 182)};
    Grunder(b.kort, {192, 205, 218, 231}, {H, K, R, S}, {9, 9, 3, 5});
    b.kort.insert(b.kort.end(), {{176, K, 12},
                                 {178, H, 12},
                                 {180, K, 11},
                                 {184, K, 13},
                                 {186, H, 13},
                                 {188, R, 13},
                                 {190, S, 12}});
    Hog(b.kort, 0, {{R, 4}, {R, 5}});
    Hog(b.kort, 22, {{R, 11}, {R, 12}});
    Hog(b.kort, 44, {{R, 6}, {R, 7}});
    Hog(b.kort, 66, {{R, 8}, {R, 9}});
    Hog(b.kort, 88, {{H, 10}, {S, 13}, {R, 10}, {H, 11}});
    Hog(b.kort, 110, {{S, 6}, {S, 7}});
    Hog(b.kort, 132, {{S, 8}, {S, 9}});
    Hog(b.kort, 154, {{K, 10}, {S, 10}, {S, 11}});
    return b;
}

// Black hole, a five on the hole: the four and three of hearts on one fan, the six of hearts
// and the five of spades on two others. The four first strands the six.
Uppstallning Blackhole() {
    Uppstallning b{10,
                   {{52, H, 3}, {53, H, 4}, {56, H, 6}, {60, S, 5}},
                   {},
                   KortDrag(53, 48),
                   KortDrag(56, 48)};
    int hal = 0;
    for (int f = 0; f < 4; ++f)
        for (int v = 1; v <= 13; ++v) {
            bool ute = (f == H && (v == 3 || v == 4 || v == 6)) || (f == S && v == 5) ||
                       (f == R && v == 5);
            if (!ute)
                b.kort.push_back({hal++, static_cast<kortfarg>(f), v});
        }
    b.kort.push_back({hal, R, 5});
    return b;
}

// Strategy, the jack of hearts the last card of the stock: on the ten of hearts it buries
// the card its foundation waits for.
Uppstallning Strategy() {
    Uppstallning b{11, {}, {}, KortDrag(636, 1), KortDrag(636, 53)};
    Grunder(b.kort, {424, 477, 530, 583}, {H, R, K, S}, {9, 13, 13, 13});
    b.kort.insert(b.kort.end(), {{0, H, 10}, {106, H, 13}, {107, H, 12}, {636, H, 11}});
    return b;
}

// Tower of Hanoi: every tower's top card covers a smaller one.
Uppstallning Tower() {
    return {3,
            {{0, H, 1},
             {1, H, 9},
             {9, H, 2},
             {10, H, 8},
             {18, H, 3},
             {19, H, 7},
             {20, H, 6},
             {21, H, 5},
             {22, H, 4}},
            {},
            {},
            {}};
}

} // namespace

void LaggUt(Korning& k, const Uppstallning& b) {
    Patiens& spel = k.Spel();
    TommaBordet(spel);
    for (const Kortet& kort : b.kort)
        LaggKort(spel, kort.lucka, kort.farg, kort.valor);
    if (b.mer)
        b.mer(spel);
    spel.Regler().KlarSpel(spel.Tabell());
    k.Vy().InvalidateOffscreen();
}

Uppstallning SmaBord(int spel) {
    const std::function<Uppstallning()> bord[] = {
        Idioten1,      Idioten2,  Godnattvalsen, Tower,    Kvarnen,   Gladjespridaren,
        Farfarsklocka, Pyramiden, Freecell,      Eightoff, Blackhole, Strategy};
    return bord[spel]();
}
