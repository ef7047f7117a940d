#include "app/LosKommando.h"
#include "cards/SokKunskap.h"
#include "games/FarfarsklockaRegler.h"
#include "games/Idioten2Regler.h"
#include "games/KvarnenRegler.h"
#include "games/PyramidenRegler.h"
#include "games/Spelfabrik.h"
#include "solver/Losare.h"
#include "support/PlainSokning.h"

#include <QTest>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <random>
#include <utility>

// What each game knows about searching its deals, on small tables built here: every table
// the game calls hopeless is proven so by a plain search that knows nothing of the game, a
// table just short of it is won by both, and the moves a game calls safe are the ones meant.

namespace {

Kort K(kortfarg farg, int valor) {
    return Kort(farg, valor, BRect());
}

struct Bygge {
    const SpelRegler& regler;
    std::unique_ptr<SpelBord> bord;
    explicit Bygge(int spel) : regler(*ReglerFor(spel)), bord(regler.NyttBord()) {}
    Bygge& Lagg(std::initializer_list<std::pair<int, Kort>> kort) {
        for (const auto& [lucka, k] : kort)
            bord->luckor[lucka].TaEmotKort(k);
        regler.KlarSpel(*bord);
        return *this;
    }
    // The solver's verdict, checked against the plain search's.
    Utfall Avgor(std::size_t plainMax = 200000, bool givRaknas = true) const {
        SokSvar svar = Los(regler, *bord, SokGranser{500000});
        int plain = PlainSok(regler, *bord, plainMax, givRaknas);
        if (plain >= 0 && svar.utfall != (plain == 1 ? Utfall::Vinnbar : Utfall::Ovinnbar))
            return Utfall::Okant;
        return svar.utfall;
    }
    // The solver's verdict, and whether the plain search agrees within `plainMax` tables:
    // 1 agrees, 0 differs, -1 gave up.
    std::pair<Utfall, int> Jamfor(std::size_t plainMax) const {
        SokSvar svar = Los(regler, *bord, SokGranser{500000});
        int plain = PlainSok(regler, *bord, plainMax);
        if (plain < 0)
            return {svar.utfall, -1};
        return {svar.utfall,
                svar.utfall == (plain == 1 ? Utfall::Vinnbar : Utfall::Ovinnbar) ? 1 : 0};
    }
    std::string Nyckel() const {
        std::string n;
        regler.Kunskap().Nyckel(*bord, n);
        return n;
    }
    bool Hopplos() const { return regler.Kunskap().Hopplos(*bord); }
    int Sakert() const {
        std::vector<Drag> dragen = Sokbara(regler, *bord);
        int i = regler.Kunskap().SakertDrag(*bord, dragen);
        return i;
    }
    Drag SakertDragen() const {
        std::vector<Drag> dragen = Sokbara(regler, *bord);
        int i = regler.Kunskap().SakertDrag(*bord, dragen);
        return i < 0 ? Drag{} : dragen[static_cast<std::size_t>(i)];
    }
};

constexpr int kIdioten1 = 0;
constexpr int kIdioten2 = 1;
constexpr int kGodnattvalsen = 2;
constexpr int kTower = 3;
constexpr int kKvarnen = 4;
constexpr int kFarfarsklocka = 6;
constexpr int kPyramiden = 7;
constexpr int kBlackhole = 10;
constexpr int kStrategy = 11;
constexpr int kStrategyLek = 636;
constexpr int kStrategyGrund = 424;

// Godnattvalsen's foundations: spades, hearts, diamonds and clubs each built from the ace
// to the value given, and the stock holding the four kings and the four queens.
void GodnattvalsenGrund(Bygge& b, const std::array<int, 4>& hojder) {
    const kortfarg farger[4] = {SPADER, HJARTER, RUTER, KLOVER};
    for (int c = 0; c < 4; ++c)
        for (int v = 1; v <= hojder[static_cast<std::size_t>(c)]; ++v)
            b.Lagg({{28 * c + v - 1, K(farger[c], v)}});
    int lek = 112;
    for (int v = 13; v >= 12; --v)
        for (kortfarg f : farger)
            b.Lagg({{lek++, K(f, v)}});
}

// Fan f's j-th card from the bottom, in Black hole.
constexpr int Flakt(int f, int j) {
    return 52 + 4 * f + j;
}

// The hole holds every card not in a fan, `topp` on top: a table that can be won.
void FyllHalet(Bygge& b, const Kort& topp) {
    std::vector<bool> ute(52, false);
    auto kod = [](const Kort& k) { return 13 * k.KortFarg() + k.KortValor() - 1; };
    for (int i = Flakt(0, 0); i <= Flakt(16, 3); ++i)
        if (!b.bord->luckor[i].Tom())
            ute[static_cast<std::size_t>(kod(b.bord->luckor[i].GeKort()))] = true;
    ute[static_cast<std::size_t>(kod(topp))] = true;
    int hal = 0;
    for (int k = 0; k < 52; ++k)
        if (!ute[static_cast<std::size_t>(k)])
            b.Lagg({{hal++, K(static_cast<kortfarg>(k / 13), k % 13 + 1)}});
    b.Lagg({{hal, topp}});
}
constexpr int kPyramidLek = 120;

// Idioten 1's row `rad` laid out from its left end: a value in the row's own suit, a value
// below zero in the other colour's suit of that value (hearts and diamonds swapped), 0 for a
// gap.
void IdiotenRad(Bygge& b, int rad, kortfarg farg, std::initializer_list<int> valorer) {
    int lucka = 13 * rad;
    for (int v : valorer) {
        if (v > 0)
            b.Lagg({{lucka, K(farg, v)}});
        else if (v < 0)
            b.Lagg({{lucka, K(farg == HJARTER ? RUTER : HJARTER, -v)}});
        ++lucka;
    }
}

void IdiotenByggdRad(Bygge& b, int rad, kortfarg farg) {
    for (int v = 2; v <= 13; ++v)
        b.Lagg({{13 * rad + v - 2, K(farg, v)}});
}

// A won Idioten 1 table whose last `kolumner` columns (of all four rows) are laid out again
// at random: the cards there and the four gaps of column 13.
void IdiotenBlandadSlut(Bygge& b, int kolumner, std::mt19937& slump) {
    std::vector<int> kort; // 13·suit + value, 0 for a gap
    std::vector<int> platser;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 13; ++c) {
            const int valor = c + 2;
            if (c < 13 - kolumner) {
                b.Lagg({{13 * r + c, K(static_cast<kortfarg>(r), valor)}});
                continue;
            }
            platser.push_back(13 * r + c);
            kort.push_back(valor <= 13 ? 13 * r + valor : 0);
        }
    for (std::size_t i = kort.size() - 1; i > 0; --i)
        std::swap(kort[i], kort[slump() % (i + 1)]);
    for (std::size_t i = 0; i < platser.size(); ++i)
        if (kort[i] != 0)
            b.Lagg({{platser[i],
                     K(static_cast<kortfarg>((kort[i] - 1) / 13), (kort[i] - 1) % 13 + 1)}});
}

// A won Idioten 1 table whose slots `platser` have their contents (cards and gaps) laid out
// again at random.
void IdiotenBlandaPlatser(Bygge& b, const std::vector<int>& platser, std::mt19937& slump) {
    std::vector<int> innehall; // 13·suit + value, 0 for a gap
    for (int ruta : platser)
        innehall.push_back(ruta % 13 == 12 ? 0 : 13 * (ruta / 13) + ruta % 13 + 2);
    for (std::size_t i = innehall.size() - 1; i > 0; --i)
        std::swap(innehall[i], innehall[slump() % (i + 1)]);
    for (int ruta = 0; ruta < 52; ++ruta) {
        auto var = std::find(platser.begin(), platser.end(), ruta);
        const int k = var == platser.end()
                          ? (ruta % 13 == 12 ? 0 : 13 * (ruta / 13) + ruta % 13 + 2)
                          : innehall[static_cast<std::size_t>(var - platser.begin())];
        if (k != 0)
            b.Lagg({{ruta, K(static_cast<kortfarg>((k - 1) / 13), (k - 1) % 13 + 1)}});
    }
}

// A won Idioten 1 table whose four gaps (the last column), two rows' left ends and `kort`
// other slots, chosen at random anywhere in the grid, are laid out again at random.
void IdiotenBlandadeRutor(Bygge& b, int kort, std::mt19937& slump) {
    const int rad = static_cast<int>(slump() % 4);
    std::vector<int> platser = {12, 25, 38, 51, 13 * rad, 13 * ((rad + 1 + kort % 2) % 4)};
    while (static_cast<int>(platser.size()) < 6 + kort) {
        int ruta = static_cast<int>(slump() % 52);
        if (std::find(platser.begin(), platser.end(), ruta) == platser.end())
            platser.push_back(ruta);
    }
    IdiotenBlandaPlatser(b, platser, slump);
}

// A won Idioten 1 table whose four gaps (the last column) and `kolumner` slots in each of
// `rader` rows, chosen at random in the rows' middles, are laid out again at random (with
// the first of those rows' left end when `kant`): gaps and cards that do not follow on
// where cards around them can still move.
void IdiotenBlandadMitt(Bygge& b, int rader, int kolumner, bool kant, std::mt19937& slump) {
    std::vector<int> platser = {12, 25, 38, 51};
    std::vector<int> valda = {0, 1, 2, 3};
    std::shuffle(valda.begin(), valda.end(), slump);
    if (kant)
        platser.push_back(13 * valda[0]);
    for (int i = 0; i < rader; ++i)
        for (int k = 0; k < kolumner;) {
            const int ruta =
                13 * valda[static_cast<std::size_t>(i)] + 1 + static_cast<int>(slump() % 11);
            if (std::find(platser.begin(), platser.end(), ruta) != platser.end())
                continue;
            platser.push_back(ruta);
            ++k;
        }
    IdiotenBlandaPlatser(b, platser, slump);
}

// 200 won Idioten 1 tables laid out again at random by `blanda` (given the table's number):
// where the search tries the moves of fewer gaps than it might, makes one at once, or calls
// a table hopeless, it agrees with the plain search (given `plainMax` tables), and each of
// these happens often enough among them to be tested.
template <typename Blanda>
void IdiotenJamforSlumpade(unsigned fro, std::size_t plainMax, Blanda blanda) {
    std::mt19937 slump(fro);
    int hopplosa = 0;
    int vunna = 0;
    int fargre = 0;
    int sakra = 0;
    int jamforda = 0;
    for (int i = 0; i < 200; ++i) {
        Bygge b(kIdioten1);
        blanda(b, i, slump);
        std::vector<Drag> dragen = Sokbara(b.regler, *b.bord);
        const std::size_t alla = dragen.size();
        if (alla > 1 && b.Sakert() >= 0)
            ++sakra;
        b.regler.Kunskap().Ordna(*b.bord, dragen);
        if (dragen.size() < alla && dragen.size() > 1)
            ++fargre;
        if (b.Hopplos())
            ++hopplosa;
        auto [utfall, lika] = b.Jamfor(plainMax);
        if (lika < 0)
            continue;
        ++jamforda;
        QCOMPARE(lika, 1);
        if (utfall == Utfall::Vinnbar)
            ++vunna;
    }
    QVERIFY(jamforda > 180);
    QVERIFY(hopplosa > 5);
    QVERIFY(sakra > 5);
    QVERIFY(fargre > 5);
    QVERIFY(vunna > 5);
    QVERIFY(vunna < jamforda - 5);
}

constexpr int kFreecell = 8;
constexpr int kFreecellGrund = 184; // foundation f level k is slot 184 + 13f + k
constexpr int kEightoff = 9;
constexpr int kEightoffCell = 176;  // free cell i is slot 176 + 2i, its spare the next
constexpr int kEightoffGrund = 192; // foundation f level k is slot 192 + 13f + k

} // namespace

class TestSokKunskap : public QObject {
    Q_OBJECT

private slots:
    // Idioten 1's rows play alike: the same rows in another order are the same table to the
    // search, a card in another place is not.
    void idiotenRadernaArLika() {
        Bygge ena(kIdioten1);
        Bygge andra(kIdioten1);
        ena.Lagg({{0, K(SPADER, 2)}, {1, K(SPADER, 3)}, {13, K(HJARTER, 9)}, {40, K(KLOVER, 5)}});
        andra.Lagg(
            {{26, K(SPADER, 2)}, {27, K(SPADER, 3)}, {39, K(HJARTER, 9)}, {1, K(KLOVER, 5)}});
        QCOMPARE(ena.Nyckel(), andra.Nyckel());
        Bygge tredje(kIdioten1);
        tredje.Lagg(
            {{0, K(SPADER, 2)}, {1, K(SPADER, 3)}, {13, K(HJARTER, 9)}, {41, K(KLOVER, 5)}});
        QVERIFY(tredje.Nyckel() != ena.Nyckel());
    }

    // Idioten 1, three rows built and the fourth begun with the four of clubs: the two and
    // the three of clubs lie each right of a card they cannot follow, and the four and five
    // on what would follow them, so none of the four can ever move while every row's left
    // end is held. The gap walks the rest of the row along and the table stops. With the
    // clubs in order the same walk wins; with a row's left end empty the clubs are not held.
    void idiotenLastKortSomInteArRatt() {
        for (int fall = 0; fall < 3; ++fall) {
            Bygge b(kIdioten1);
            IdiotenByggdRad(b, 0, SPADER);
            IdiotenByggdRad(b, 1, HJARTER);
            if (fall == 2)
                IdiotenRad(b, 2, RUTER, {0, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13});
            else
                IdiotenByggdRad(b, 2, RUTER);
            if (fall == 1)
                IdiotenRad(b, 3, KLOVER, {2, 3, 4, 5, 6, 0, 7, 8, 9, 10, 11, 12, 13});
            else
                IdiotenRad(b, 3, KLOVER, {4, 2, 5, 3, 6, 0, 7, 8, 9, 10, 11, 12, 13});
            QCOMPARE(b.Hopplos(), fall == 0);
            QCOMPARE(b.Avgor(), fall == 1 ? Utfall::Vinnbar : Utfall::Ovinnbar);
        }
    }

    // With every row begun with its two, a card goes at once to the end of its built row
    // when it is a king (the king of hearts), ends its row (the queen of diamonds, then the
    // king), or has its successor right of it (the clubs from the jack up).
    void idiotenSakertTillRaden() {
        Bygge b(kIdioten1);
        IdiotenByggdRad(b, 0, SPADER);
        IdiotenRad(b, 1, HJARTER, {2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 0, -13});
        IdiotenRad(b, 2, RUTER, {2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 0, -13, 12});
        IdiotenRad(b, 3, KLOVER, {2, 3, 4, 5, 6, 7, 8, 9, 10, 0, 11, 12, 13});
        const Drag vag[] = {KortDrag(37, 24), KortDrag(38, 36), KortDrag(25, 37),
                            KortDrag(49, 48), KortDrag(50, 49), KortDrag(51, 50)};
        QCOMPARE(b.Avgor(), Utfall::Vinnbar);
        for (const Drag& d : vag) {
            QCOMPARE(b.SakertDragen(), d);
            b.regler.GorDrag(*b.bord, d, nullptr);
        }
        QVERIFY(b.regler.KlarSpel(*b.bord));
    }

    // The queen of diamonds could lengthen its row, but the king of hearts right of it
    // leaves room for the king of diamonds to come there first: not taken as safe, while
    // the king of hearts is. Once it has gone, the queen and the king of diamonds each want
    // a place the other's move changes, and no move is safe. With a row begun with the four
    // of clubs the clubs can never move, and the table is hopeless.
    void idiotenInteSakert() {
        for (bool tvaor : {true, false}) {
            Bygge b(kIdioten1);
            IdiotenByggdRad(b, 0, SPADER);
            IdiotenRad(b, 1, HJARTER, {2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 0, -13});
            IdiotenRad(b, 2, RUTER, {2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 0, 12, -13});
            if (tvaor)
                IdiotenRad(b, 3, KLOVER, {2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 0});
            else
                IdiotenRad(b, 3, KLOVER, {4, 2, 5, 3, 6, 7, 8, 9, 10, 11, 12, 13, 0});
            QCOMPARE(b.Hopplos(), !tvaor);
            QCOMPARE(b.Avgor(), tvaor ? Utfall::Vinnbar : Utfall::Ovinnbar);
            if (!tvaor)
                continue;
            QCOMPARE(b.SakertDragen(), KortDrag(38, 24));
            b.regler.GorDrag(*b.bord, KortDrag(38, 24), nullptr);
            QCOMPARE(b.Sakert(), -1);
            QCOMPARE(Sokbara(b.regler, *b.bord).size(), std::size_t{2});
        }
    }

    // Won Idioten 1 tables with their last columns laid out again at random: the solver,
    // with its hopeless tables and safe moves, agrees with the plain search on every one.
    void idiotenSlumpadeSlut() {
        std::mt19937 slump(2611);
        int hopplosa = 0;
        int vunna = 0;
        int sakra = 0;
        for (int i = 0; i < 120; ++i) {
            Bygge b(kIdioten1);
            IdiotenBlandadSlut(b, i < 60 ? 4 : 5, slump);
            if (b.Hopplos())
                ++hopplosa;
            if (b.Sakert() >= 0)
                ++sakra;
            const Utfall utfall = b.Avgor(400000);
            QVERIFY(utfall != Utfall::Okant);
            if (utfall == Utfall::Vinnbar)
                ++vunna;
            if (b.Hopplos())
                QCOMPARE(utfall, Utfall::Ovinnbar);
        }
        QVERIFY(hopplosa > 5);
        QVERIFY(sakra > 5);
        QVERIFY(vunna > 5);
        QVERIFY(vunna < 115);
    }

    // Won Idioten 1 tables with the four gaps and a few cards anywhere, left ends too, laid
    // out again at random: where the search tries the moves of fewer gaps than it might,
    // makes one at once, or calls a table hopeless, it agrees with the plain search.
    void idiotenSlumpadeRutor() {
        IdiotenJamforSlumpade(2711, 100000, [](Bygge& b, int i, std::mt19937& slump) {
            IdiotenBlandadeRutor(b, 5 + i % 4, slump);
        });
    }

    // Won Idioten 1 tables with gaps and scrambled cards in the middle of two or three rows:
    // the gaps' left neighbours and the cards right of the cards they take can often still
    // move, so most trials of a few gaps' moves fail part way through the count of what can
    // move. Where the search still tries fewer moves, makes one at once or calls a table
    // hopeless, it agrees with the plain search.
    void idiotenSlumpadeMitten() {
        IdiotenJamforSlumpade(2811, 30000, [](Bygge& b, int i, std::mt19937& slump) {
            IdiotenBlandadMitt(b, 2 + i % 3, 2 + i / 2 % 2, i % 2 == 1, slump);
        });
    }

    // Idioten 2 with an ace at every column's base: the five of hearts lies on the ace of
    // spades and the five of spades on the ace of hearts, so neither can ever be beaten, and
    // with no column ever to be empty neither can move (the diamonds go, all the same).
    // With the four of hearts for the five of spades the deal is won. The king of spades in
    // the stock frees the five, and the deal is won, when it is dealt onto another column;
    // not when it comes onto the five itself.
    void idioten2IngenTomKolumn() {
        for (int fall = 0; fall < 4; ++fall) {
            Bygge b(kIdioten2);
            b.Lagg({{0, K(SPADER, 1)}, {1, K(HJARTER, 5)}, {14, K(HJARTER, 1)}});
            b.Lagg({{15, fall == 1 ? K(HJARTER, 4) : K(SPADER, 5)}});
            b.Lagg({{28, K(KLOVER, 1)}, {29, K(RUTER, 8)}, {42, K(RUTER, 1)}, {43, K(RUTER, 6)}});
            // The stock's top card goes to the first column, the next to the second...
            if (fall == 2)
                b.Lagg({{115, K(SPADER, 2)}, {114, K(HJARTER, 2)}, {113, K(SPADER, 13)}});
            if (fall == 3)
                b.Lagg({{115, K(SPADER, 2)}, {114, K(SPADER, 13)}, {113, K(HJARTER, 2)}});
            if (fall >= 2)
                b.Lagg({{112, K(KLOVER, 2)}});
            QCOMPARE(b.Hopplos(), fall == 0 || fall == 3);
            QCOMPARE(b.Avgor(), fall == 0 || fall == 3 ? Utfall::Ovinnbar : Utfall::Vinnbar);
        }
    }

    // Idioten 2: the nine of hearts, beaten by the king, lies on the five of clubs over the
    // three. With the stock out it goes at once, though the three is left; with the ace of
    // diamonds still in the stock and the last column empty it is kept, as it may move into
    // that column and be needed to beat the three when a card has been laid on the king.
    void idioten2KastarSakertUtanLek() {
        for (bool leken : {false, true}) {
            Bygge b(kIdioten2);
            b.Lagg({{0, K(SPADER, 1)}, {1, K(HJARTER, 3)}, {2, K(KLOVER, 5)}});
            b.Lagg({{3, K(HJARTER, 9)}});
            b.Lagg({{14, K(HJARTER, 1)}, {28, K(KLOVER, 1)}, {29, K(HJARTER, 13)}});
            b.Lagg({{leken ? 112 : 42, K(RUTER, 1)}});
            if (leken) {
                QCOMPARE(b.Sakert(), -1);
            } else {
                QCOMPARE(b.SakertDragen(), KortDrag(3, 55 + 13 * HJARTER + 9));
            }
            QCOMPARE(b.Avgor(), Utfall::Vinnbar);
        }
    }

    // Idioten 2 dealt from an empty table: the aces first, then the last four cards. Of four
    // suits, no card beats another after the last press and nothing can be played; with two
    // spades, the two goes, the aces come up one after another, and the deal is won.
    void idioten2SistaGivenAvFyraFarger() {
        for (bool tvaSpader : {false, true}) {
            Bygge b(kIdioten2);
            b.Lagg({{119, K(SPADER, 1)}, {118, K(HJARTER, 1)}, {117, K(KLOVER, 1)}});
            b.Lagg({{116, K(RUTER, 1)}, {115, K(SPADER, 2)}, {113, K(HJARTER, 5)}});
            b.Lagg({{114, tvaSpader ? K(SPADER, 3) : K(RUTER, 3)}, {112, K(KLOVER, 7)}});
            QCOMPARE(b.Hopplos(), !tvaSpader);
            QCOMPARE(b.Avgor(), tvaSpader ? Utfall::Vinnbar : Utfall::Ovinnbar);
        }
    }

    // Small Idioten 2 tables laid out at random, the four aces (in every other table at the
    // columns' bases) and a few other cards in the columns and the stock: the solver agrees
    // with the plain search on every one.
    void idioten2Slumpade() {
        std::mt19937 slump(1802);
        int hopplosa = 0;
        int vunna = 0;
        for (int i = 0; i < 300; ++i) {
            Bygge b(kIdioten2);
            const bool essenIBotten = i % 2 == 0;
            std::vector<int> kort;
            while (static_cast<int>(kort.size()) < 6 + static_cast<int>(i % 7)) {
                const int k = static_cast<int>(slump() % 52);
                if (k % 13 != 0 && std::find(kort.begin(), kort.end(), k) == kort.end())
                    kort.push_back(k);
            }
            if (!essenIBotten) {
                kort.insert(kort.end(), {0, 13, 26, 39});
                for (std::size_t j = kort.size() - 1; j > 0; --j)
                    std::swap(kort[j], kort[slump() % (j + 1)]);
            }
            auto lagg = [&](int lucka, int k) {
                b.Lagg({{lucka, K(static_cast<kortfarg>(k / 13), k % 13 + 1)}});
            };
            std::array<int, 4> hojd{};
            if (essenIBotten)
                for (int c = 0; c < 4; ++c)
                    lagg(14 * c + hojd[static_cast<std::size_t>(c)]++, 13 * c);
            const int iLeken = static_cast<int>(slump() % 6);
            for (std::size_t j = 0; j < kort.size(); ++j) {
                const int n = static_cast<int>(j);
                if (n < iLeken) {
                    lagg(112 + n, kort[j]);
                    continue;
                }
                const int c = n < iLeken + 4 ? n - iLeken : static_cast<int>(slump() % 4);
                lagg(14 * c + hojd[static_cast<std::size_t>(c)]++, kort[j]);
            }
            if (b.Hopplos())
                ++hopplosa;
            const Utfall utfall = b.Avgor(400000);
            QVERIFY(utfall != Utfall::Okant);
            if (utfall == Utfall::Vinnbar)
                ++vunna;
            if (b.Hopplos())
                QCOMPARE(utfall, Utfall::Ovinnbar);
        }
        QVERIFY(hopplosa > 10);
        QVERIFY(vunna > 10);
        QVERIFY(vunna < 290);
    }

    // Idioten 2: the five of hearts, beaten by the nine, goes at once when no lower heart is
    // left; with the three of hearts still in the stock, to be dealt onto the nine, it is
    // kept, as it may be needed to beat it. With the game won by that discard and the nine's,
    // the solver and the plain search agree.
    void idioten2KastarSakert() {
        for (bool treaKvar : {false, true}) {
            Bygge b(kIdioten2);
            b.Lagg(
                {{0, K(SPADER, 1)}, {1, K(HJARTER, 5)}, {14, K(KLOVER, 1)}, {15, K(HJARTER, 9)}});
            b.Lagg({{28, K(HJARTER, 1)}, {42, K(RUTER, 1)}});
            if (treaKvar) {
                b.Lagg({{113, K(KLOVER, 2)}, {112, K(HJARTER, 3)}});
                QCOMPARE(b.Sakert(), -1);
                continue;
            }
            QCOMPARE(b.SakertDragen(), KortDrag(1, 55 + 13 * HJARTER + 5));
            QCOMPARE(b.Avgor(), Utfall::Vinnbar);
        }
    }

    // A column that may come to fill its fourteen places plays by other rules at its top: the
    // same discard is then not taken as safe.
    void idioten2SakertBaraInomKanten() {
        Bygge b(kIdioten2);
        b.Lagg({{0, K(SPADER, 1)}, {1, K(HJARTER, 5)}, {14, K(KLOVER, 1)}, {15, K(HJARTER, 9)}});
        b.Lagg({{28, K(HJARTER, 1)}, {42, K(RUTER, 1)}});
        for (int i = 0; i < 12 * 4; ++i)
            b.Lagg({{112 + i, K(static_cast<kortfarg>(i % 4 == 0 ? SPADER : KLOVER), 2 + i / 4)}});
        QCOMPARE(b.Sakert(), -1);
    }

    // Idioten 2 with an ace in every column, though not always at its base: no column is ever
    // empty again, and an ace blocks what lies under it for good. The five of hearts lies on
    // the ace of hearts and the nine under the ace of clubs, so the five never goes. With the
    // ace of clubs on the ace of spades instead, the nine beats the five and the deal is won;
    // with the seven of clubs under the ace of spades, the ace moves into the nine's column
    // once the nine is gone, and the deal is won when the ace of clubs lies elsewhere.
    void idioten2EssIVarjeKolumn() {
        for (int fall = 0; fall < 4; ++fall) {
            Bygge b(kIdioten2);
            b.Lagg({{14, K(HJARTER, 1)}, {15, K(HJARTER, 5)}, {28, K(HJARTER, 9)}});
            if (fall < 2)
                b.Lagg({{0, K(SPADER, 1)}, {42, K(RUTER, 1)}});
            else
                b.Lagg({{0, K(KLOVER, 7)}, {1, K(SPADER, 1)}, {42, K(RUTER, 1)}});
            if (fall == 0 || fall == 2)
                b.Lagg({{29, K(KLOVER, 1)}});
            else if (fall == 1)
                b.Lagg({{1, K(KLOVER, 1)}});
            else
                b.Lagg({{43, K(KLOVER, 1)}});
            const bool hopplos = fall % 2 == 0;
            QCOMPARE(b.Hopplos(), hopplos);
            QCOMPARE(b.Avgor(), hopplos ? Utfall::Ovinnbar : Utfall::Vinnbar);
        }
    }

    // Idioten 2: three columns hold an ace each; the ace of diamonds will be dealt onto the
    // five of diamonds in the last column at the next press, and the nine of diamonds, the
    // one card that could beat the five, comes a press later onto the first column: the ace
    // lies on the five for good. With the nine dealt first and the ace a press later, the
    // five goes, the last column is empty when the ace comes, and the deal is won.
    void idioten2EssPaKortForGott() {
        for (bool niaForst : {false, true}) {
            Bygge b(kIdioten2);
            b.Lagg({{0, K(SPADER, 1)}, {14, K(HJARTER, 1)}, {28, K(KLOVER, 1)}});
            b.Lagg({{42, K(RUTER, 5)}});
            // The stock's top card goes to the first column, the next to the second...
            if (niaForst) {
                b.Lagg({{119, K(RUTER, 9)}, {118, K(SPADER, 3)}, {117, K(KLOVER, 2)}});
                b.Lagg({{116, K(SPADER, 2)}, {115, K(HJARTER, 2)}, {114, K(HJARTER, 3)}});
                b.Lagg({{113, K(HJARTER, 4)}, {112, K(RUTER, 1)}});
            } else {
                b.Lagg({{119, K(SPADER, 2)}, {118, K(SPADER, 3)}, {117, K(KLOVER, 2)}});
                b.Lagg({{116, K(RUTER, 1)}, {115, K(RUTER, 9)}, {114, K(HJARTER, 2)}});
                b.Lagg({{113, K(HJARTER, 3)}, {112, K(HJARTER, 4)}});
            }
            QCOMPARE(b.Hopplos(), !niaForst);
            QCOMPARE(b.Avgor(), niaForst ? Utfall::Vinnbar : Utfall::Ovinnbar);
        }
    }

    // Idioten 2: the same, but the last column holds the nine of hearts with the queen of
    // diamonds on it. The nine could be beaten by the ace of hearts; the queen, by nothing
    // before the king of diamonds is dealt a press after the ace: the column is never empty
    // when the ace comes. With the king a press before the ace, the queen goes and then the
    // nine, the column is empty for the ace, and the deal is won.
    void idioten2EssPaKortHogreUpp() {
        for (bool kungenForst : {false, true}) {
            Bygge b(kIdioten2);
            b.Lagg({{0, K(SPADER, 1)}, {14, K(HJARTER, 1)}, {28, K(KLOVER, 1)}});
            b.Lagg({{42, K(HJARTER, 9)}, {43, K(RUTER, 12)}});
            // The stock's top card goes to the first column, the next to the second...
            b.Lagg({{118, K(SPADER, 3)}, {117, K(SPADER, 4)}, {116, K(SPADER, 2)}});
            b.Lagg({{114, K(KLOVER, 3)}, {113, K(KLOVER, 4)}, {112, K(RUTER, 1)}});
            b.Lagg({{kungenForst ? 119 : 115, K(RUTER, 13)}});
            b.Lagg({{kungenForst ? 115 : 119, K(KLOVER, 2)}});
            QCOMPARE(b.Hopplos(), !kungenForst);
            QCOMPARE(b.Avgor(), kungenForst ? Utfall::Vinnbar : Utfall::Ovinnbar);
        }
    }

    // Idioten 2 with an ace in every column: the nine of hearts, beaten by the king, lies on
    // the six of clubs over the three, and the three can never be on top while the nine
    // is, so the nine goes at
    // once. Not so when the five of hearts is to be dealt onto another column, nor when the
    // last column holds the two of clubs and no ace: the two may go, and the nine move into
    // its column. The five of hearts on the ace of spades goes at once when the three of
    // hearts is to be dealt onto it.
    void idioten2KastarSakertMedEssOveralt() {
        const int nian = 55 + 13 * HJARTER + 9;
        for (int fall = 0; fall < 4; ++fall) {
            Bygge b(kIdioten2);
            if (fall == 3) {
                b.Lagg({{0, K(SPADER, 1)}, {1, K(HJARTER, 5)}, {14, K(KLOVER, 1)}});
                b.Lagg({{15, K(HJARTER, 9)}, {28, K(HJARTER, 1)}, {42, K(RUTER, 1)}});
                b.Lagg({{112, K(HJARTER, 3)}});
                QCOMPARE(b.SakertDragen(), KortDrag(1, 55 + 13 * HJARTER + 5));
                QCOMPARE(b.Avgor(), Utfall::Vinnbar);
                continue;
            }
            b.Lagg({{0, K(SPADER, 1)}, {1, K(HJARTER, 3)}, {2, K(KLOVER, 6)}});
            b.Lagg({{3, K(HJARTER, 9)}});
            b.Lagg({{14, K(HJARTER, 1)}, {28, K(KLOVER, 1)}, {29, K(HJARTER, 13)}});
            b.Lagg({{42, fall == 2 ? K(KLOVER, 2) : K(RUTER, 1)}});
            // The stock's top card goes to the first column, the next to the second...
            b.Lagg({{115, K(RUTER, 2)}, {114, K(RUTER, 3)}, {113, K(RUTER, 4)}});
            if (fall == 0)
                b.Lagg({{112, K(SPADER, 5)}});
            else if (fall == 1)
                b.Lagg({{112, K(HJARTER, 5)}});
            else
                b.Lagg({{112, K(RUTER, 1)}});
            if (fall == 0)
                QCOMPARE(b.SakertDragen(), KortDrag(3, nian));
            else
                QCOMPARE(b.Sakert(), -1);
            QCOMPARE(b.Avgor(), Utfall::Vinnbar);
        }
    }

    // Idioten 2: a search takes a press back by undo; along random games of a few deals the
    // table is then exactly what it was.
    void idioten2GivTasTillbaka() {
        const SpelRegler& regler = *ReglerFor(kIdioten2);
        std::mt19937 slump(5);
        int givar = 0;
        for (unsigned fro = 1; fro <= 5; ++fro) {
            std::unique_ptr<SpelBord> bord = GivFor(kIdioten2, fro);
            for (int steg = 0; steg < 200; ++steg) {
                const std::vector<Drag> dragen = regler.LagligaDrag(*bord);
                if (dragen.empty())
                    break;
                if (dragen.back().slag == DragSlag::Knapp) {
                    QVERIFY(regler.Kunskap().TasTillbaka(*bord, dragen.back()));
                    std::unique_ptr<SpelBord> fore = bord->Kopia();
                    {
                        DragPaBord gang(regler, *bord);
                        gang.Gor(dragen.back());
                        gang.TaTillbaka();
                        QCOMPARE(gang.Kopior(), std::uint64_t{0});
                    }
                    QVERIFY(static_cast<const Idioten2Regler::Stallning&>(*bord) ==
                            static_cast<const Idioten2Regler::Stallning&>(*fore));
                    ++givar;
                }
                regler.GorDrag(*bord, dragen[slump() % dragen.size()], nullptr);
            }
        }
        QVERIFY(givar > 20);
    }

    // Idioten 2: the nine of hearts, beaten by the king, with an ace at every column's base.
    // The lower hearts still in play decide whether the nine
    // goes at once: the five on top of a column and the lower ones dealt with the jack; the
    // five, four and three dealt by the next press with the jack beside them; the five dealt there
    // beside spades alone, when the nine is needed (the four of spades sends the two and, once the
    // nine has beaten the five, the ace of spades the four, and the ace of hearts the king: won
    // only so).
    void idioten2KastarNarLagreKlaras() {
        const int nian = 55 + 13 * HJARTER + 9;
        for (int fall = 0; fall < 3; ++fall) {
            Bygge b(kIdioten2);
            b.Lagg({{0, K(SPADER, 1)}, {1, K(HJARTER, 9)}, {14, K(KLOVER, 1)}});
            b.Lagg({{15, K(HJARTER, 13)}, {28, K(RUTER, 1)}});
            if (fall == 0) {
                b.Lagg({{42, K(HJARTER, 1)}, {43, K(HJARTER, 5)}, {115, K(HJARTER, 11)}});
                b.Lagg({{114, K(HJARTER, 4)}, {113, K(HJARTER, 3)}, {112, K(HJARTER, 2)}});
                QCOMPARE(b.SakertDragen(), KortDrag(1, nian));
                QCOMPARE(b.Avgor(), Utfall::Vinnbar);
                continue;
            }
            b.Lagg({{42, K(HJARTER, 1)}});
            // The stock's top card goes to the first column, the next to the second...
            if (fall == 1)
                b.Lagg({{115, K(HJARTER, 11)},
                        {114, K(HJARTER, 5)},
                        {113, K(HJARTER, 4)},
                        {112, K(HJARTER, 3)}});
            else
                b.Lagg({{115, K(SPADER, 2)},
                        {114, K(HJARTER, 5)},
                        {113, K(SPADER, 3)},
                        {112, K(SPADER, 4)}});
            if (fall == 1)
                QCOMPARE(b.SakertDragen(), KortDrag(1, nian));
            else
                QCOMPARE(b.Sakert(), -1);
            QCOMPARE(b.Avgor(), Utfall::Vinnbar);
        }
    }

    // Small Idioten 2 tables laid out at random, mostly hearts, a press or two still in the
    // stock and the ace of hearts at the last column's base, above another card or in the
    // stock: the solver agrees with the plain search on every one, and some of them are won
    // only by keeping a heart that could be thrown out.
    void idioten2SlumpadeHjartan() {
        std::mt19937 slump(2111);
        const Kort essen[3] = {K(SPADER, 1), K(KLOVER, 1), K(RUTER, 1)};
        int jamforda = 0;
        int vunna = 0;
        for (int i = 0; i < 240; ++i) {
            Bygge b(kIdioten2);
            std::vector<Kort> kort;
            while (static_cast<int>(kort.size()) < 6 + i % 5) {
                const bool hjarter = slump() % 10 < 7;
                const Kort k = K(hjarter ? HJARTER : static_cast<kortfarg>(slump() % 4),
                                 2 + static_cast<int>(slump() % 12));
                if (std::none_of(kort.begin(), kort.end(), [&](const Kort& x) {
                        return x.KortFarg() == k.KortFarg() && x.KortValor() == k.KortValor();
                    }))
                    kort.push_back(k);
            }
            std::array<int, 4> hojd{};
            for (int c = 0; c < 3; ++c)
                b.Lagg({{14 * c + hojd[static_cast<std::size_t>(c)]++, essen[c]}});
            const int essPlats = i % 3; // at the base, above a card, in the stock
            if (essPlats == 0)
                b.Lagg({{42 + hojd[3]++, K(HJARTER, 1)}});
            const int iLeken = 4 * (1 + i % 2);
            if (essPlats == 2)
                kort.insert(kort.begin() + static_cast<long>(slump() % 4), K(HJARTER, 1));
            for (std::size_t j = 0; j < kort.size(); ++j) {
                const int n = static_cast<int>(j);
                if (n < iLeken) {
                    b.Lagg({{112 + iLeken - 1 - n, kort[j]}});
                    continue;
                }
                const int c = static_cast<int>(slump() % 4);
                b.Lagg({{14 * c + hojd[static_cast<std::size_t>(c)]++, kort[j]}});
                if (essPlats == 1 && c == 3 && hojd[3] == 1)
                    b.Lagg({{42 + hojd[3]++, K(HJARTER, 1)}});
            }
            if (essPlats == 1 && hojd[3] == 0)
                b.Lagg({{42 + hojd[3]++, K(HJARTER, 1)}});
            auto [utfall, lika] = b.Jamfor(200000);
            if (lika < 0)
                continue;
            ++jamforda;
            QCOMPARE(lika, 1);
            if (utfall == Utfall::Vinnbar)
                ++vunna;
        }
        QVERIFY(jamforda > 200);
        QVERIFY(vunna > 20);
        QVERIFY(vunna < jamforda - 20);
    }

    // Idioten 2 with an ace at every column's base: the five of hearts lies on the ace of
    // hearts, and the one heart that could beat it, the nine, comes at the second press onto
    // the first column. The king of clubs comes onto the five at that same press, and can
    // never go: the ace of clubs lies under the king of spades by then, and that one's ace
    // under the nine. So the five is covered for good before the nine comes, though no card
    // that never leaves lies on it yet. With the nine at the first press instead, the five
    // goes and the deal is won.
    void idioten2BeskuggadForeHogre() {
        for (bool niaForst : {false, true}) {
            Bygge b(kIdioten2);
            b.Lagg({{0, K(SPADER, 1)}, {14, K(RUTER, 1)}, {28, K(KLOVER, 1)}});
            b.Lagg({{42, K(HJARTER, 1)}, {43, K(HJARTER, 5)}});
            // The stock's top card goes to the first column, the next to the second...
            b.Lagg({{119, niaForst ? K(HJARTER, 9) : K(SPADER, 2)}, {118, K(SPADER, 3)}});
            b.Lagg({{117, K(SPADER, 4)}, {116, K(RUTER, 2)}});
            b.Lagg({{115, niaForst ? K(SPADER, 2) : K(HJARTER, 9)}, {114, K(KLOVER, 12)}});
            b.Lagg({{113, K(SPADER, 13)}, {112, K(KLOVER, 13)}});
            QCOMPARE(b.Hopplos(), !niaForst);
            QCOMPARE(b.Avgor(), niaForst ? Utfall::Vinnbar : Utfall::Ovinnbar);
        }
    }

    // Small Idioten 2 tables laid out at random with an ace at every column's base (so no
    // column is ever empty), a few cards on them and two or three presses still in the
    // stock: the solver agrees with the plain search on every one, and many are proven
    // hopeless by when each card can lie on top.
    void idioten2SlumpadeMedTider() {
        std::mt19937 slump(2126);
        int hopplosa = 0;
        int vunna = 0;
        int jamforda = 0;
        for (int i = 0; i < 200; ++i) {
            Bygge b(kIdioten2);
            for (int c = 0; c < 4; ++c)
                b.Lagg({{14 * c, K(static_cast<kortfarg>(c), 1)}});
            const int iLeken = 4 * (2 + i % 2);
            std::vector<int> kort;
            while (static_cast<int>(kort.size()) < iLeken + 1 + i % 4) {
                const int k = static_cast<int>(slump() % 52);
                if (k % 13 != 0 && std::find(kort.begin(), kort.end(), k) == kort.end())
                    kort.push_back(k);
            }
            std::array<int, 4> hojd{1, 1, 1, 1};
            for (std::size_t j = 0; j < kort.size(); ++j) {
                const Kort k = K(static_cast<kortfarg>(kort[j] / 13), kort[j] % 13 + 1);
                const int n = static_cast<int>(j);
                if (n < iLeken) {
                    b.Lagg({{112 + n, k}});
                    continue;
                }
                const int c = static_cast<int>(slump() % 4);
                b.Lagg({{14 * c + hojd[static_cast<std::size_t>(c)]++, k}});
            }
            const bool hopplos = b.Hopplos();
            auto [utfall, lika] = b.Jamfor(300000);
            if (lika < 0)
                continue;
            ++jamforda;
            QCOMPARE(lika, 1);
            if (hopplos) {
                QCOMPARE(utfall, Utfall::Ovinnbar);
                ++hopplosa;
            }
            if (utfall == Utfall::Vinnbar)
                ++vunna;
        }
        QVERIFY(jamforda > 180);
        QVERIFY(hopplosa > 20);
        QVERIFY(vunna > 20);
    }

    // Idioten 2: the nine of hearts, beaten by the king, lies on the three of hearts, with a
    // press still to come. The nine goes at once, as the king beats the three as soon as the
    // nine has gone. Not so when the five of clubs lies between them, nor when the three lies
    // under the king instead: the nine may be needed for it then. Each is won (the press
    // deals the three spades, the two beside the three and the four, and the ace of hearts),
    // and the solver and the plain search agree on it.
    void idioten2KastarMedLagreUnder() {
        const int nian = 55 + 13 * HJARTER + 9;
        for (int fall = 0; fall < 3; ++fall) {
            Bygge b(kIdioten2);
            b.Lagg({{0, K(SPADER, 1)}, {14, K(KLOVER, 1)}, {28, K(RUTER, 1)}});
            if (fall == 2) {
                b.Lagg({{1, K(HJARTER, 9)}, {15, K(HJARTER, 3)}, {16, K(HJARTER, 13)}});
            } else {
                b.Lagg({{1, K(HJARTER, 3)}, {15, K(HJARTER, 13)}});
                if (fall == 1)
                    b.Lagg({{2, K(KLOVER, 5)}});
                b.Lagg({{fall == 1 ? 3 : 2, K(HJARTER, 9)}});
            }
            // The stock's top card goes to the first column, the next to the second...
            b.Lagg({{115, K(SPADER, 3)}, {114, K(SPADER, 2)}, {113, K(SPADER, 4)}});
            b.Lagg({{112, K(HJARTER, 1)}});
            if (fall == 0)
                QCOMPARE(b.SakertDragen(), KortDrag(2, nian));
            else
                QCOMPARE(b.Sakert(), -1);
            QCOMPARE(b.Avgor(), Utfall::Vinnbar);
        }
    }

    // Small Idioten 2 tables laid out at random, the aces at the columns' bases or not, the
    // columns mostly of one suit so that lower cards of it often lie right under a card that
    // can be thrown out, a press or two still in the stock: the solver agrees with the plain
    // search on every one, and on many it throws such a card out at once.
    void idioten2SlumpadeLagreUnder() {
        std::mt19937 slump(2612);
        int jamforda = 0;
        int vunna = 0;
        int overLagre = 0;
        for (int i = 0; i < 500; ++i) {
            Bygge b(kIdioten2);
            const int farg = static_cast<int>(slump() % 4);
            std::vector<int> kort;
            while (static_cast<int>(kort.size()) < 7 + i % 6) {
                const int f = slump() % 10 < 6 ? farg : static_cast<int>(slump() % 4);
                const int k = 13 * f + 1 + static_cast<int>(slump() % 12);
                if (std::find(kort.begin(), kort.end(), k) == kort.end())
                    kort.push_back(k);
            }
            const bool essenIBotten = i % 2 == 0;
            if (!essenIBotten)
                kort.insert(kort.begin() + static_cast<long>(slump() % kort.size()),
                            13 * static_cast<int>(slump() % 4));
            auto lagg = [&](int lucka, int k) {
                b.Lagg({{lucka, K(static_cast<kortfarg>(k / 13), k % 13 + 1)}});
            };
            std::array<int, 4> hojd{};
            std::vector<int> essen;
            for (int f = 0; f < 4; ++f)
                if (std::find(kort.begin(), kort.end(), 13 * f) == kort.end())
                    essen.push_back(13 * f);
            std::shuffle(essen.begin(), essen.end(), slump);
            const int iLeken = 4 * (1 + i % 2);
            std::vector<int> leken;
            for (std::size_t j = 0; j < essen.size(); ++j) {
                if (essenIBotten || j + 1 < essen.size())
                    lagg(14 * static_cast<int>(j) + hojd[j]++, essen[j]);
                else
                    leken.push_back(essen[j]);
            }
            for (std::size_t j = 0; j < kort.size(); ++j) {
                if (static_cast<int>(leken.size()) < iLeken && j % 2 == 1) {
                    leken.push_back(kort[j]);
                    continue;
                }
                const auto c = static_cast<std::size_t>(slump() % 4);
                lagg(14 * static_cast<int>(c) + hojd[c]++, kort[j]);
            }
            std::shuffle(leken.begin(), leken.end(), slump);
            for (std::size_t j = 0; j < leken.size(); ++j)
                lagg(112 + static_cast<int>(j), leken[j]);
            const Drag sakert = b.SakertDragen();
            if (sakert.slag == DragSlag::Kort && sakert.till >= 56 && sakert.fran % 14 > 0 &&
                !b.bord->luckor[112].Tom()) {
                const Kort& x = b.bord->luckor[static_cast<std::size_t>(sakert.fran)].GeKort();
                const Kort& under =
                    b.bord->luckor[static_cast<std::size_t>(sakert.fran - 1)].GeKort();
                if (under.KortFarg() == x.KortFarg() && under.KortValor() != 1 &&
                    (x.KortValor() == 1 || under.KortValor() < x.KortValor()))
                    ++overLagre;
            }
            auto [utfall, lika] = b.Jamfor(300000);
            if (lika < 0)
                continue;
            ++jamforda;
            QCOMPARE(lika, 1);
            if (utfall == Utfall::Vinnbar)
                ++vunna;
        }
        QVERIFY(jamforda > 450);
        QVERIFY(overLagre > 20);
        QVERIFY(vunna > 20);
        QVERIFY(vunna < jamforda - 20);
    }

    // Godnattvalsen: three foundations built to the jack, the fourth to the nine. The jack of
    // spades lies on the ten of hearts in a pile: it needs a ten home that no jack has used
    // yet, and the only ten left is under it. The other way round the deal is won: the
    // stock then deals the queens and the kings.
    void godnattvalsenTianUnderKnekten() {
        for (bool knektenOverst : {true, false}) {
            Bygge b(kGodnattvalsen);
            GodnattvalsenGrund(b, {11, 11, 11, 9});
            if (knektenOverst)
                b.Lagg({{14, K(KLOVER, 10)}, {15, K(KLOVER, 11)}});
            else
                b.Lagg({{14, K(KLOVER, 11)}, {15, K(KLOVER, 10)}});
            QCOMPARE(b.Hopplos(), knektenOverst);
            QCOMPARE(b.Avgor(), knektenOverst ? Utfall::Ovinnbar : Utfall::Vinnbar);
        }
    }

    // Godnattvalsen: one foundation built to the jack, three to the nine, so no ten lies
    // free on top. The three tens out lie each under a jack of its own in a pile: every
    // jack has a ten not under it, but the first jack to go needs one home before it, and
    // none can get there. With the last ten lying on its jack instead, the deal is won.
    void godnattvalsenTioriUnderKnektar() {
        for (bool allaUnder : {true, false}) {
            Bygge b(kGodnattvalsen);
            GodnattvalsenGrund(b, {11, 9, 9, 9});
            b.Lagg({{14, K(KLOVER, 10)}, {15, K(HJARTER, 11)}});
            b.Lagg({{42, K(RUTER, 10)}, {43, K(RUTER, 11)}});
            if (allaUnder)
                b.Lagg({{70, K(HJARTER, 10)}, {71, K(KLOVER, 11)}});
            else
                b.Lagg({{70, K(KLOVER, 11)}, {71, K(HJARTER, 10)}});
            QCOMPARE(b.Hopplos(), allaUnder);
            QCOMPARE(b.Avgor(), allaUnder ? Utfall::Ovinnbar : Utfall::Vinnbar);
        }
    }

    // Small tables at random: the foundations built to a few values short of the king, the
    // cards left spread over the piles, perhaps four in the stock. The solver's verdict is
    // the plain search's every time.
    void godnattvalsenSlumpadeBord() {
        std::mt19937 slump(5);
        int vunna = 0;
        int hopplosa = 0;
        for (int n = 0; n < 120; ++n) {
            Bygge b(kGodnattvalsen);
            std::vector<Kort> ute;
            std::array<int, 4> topp{};
            for (int c = 0; c < 4; ++c)
                topp[static_cast<std::size_t>(c)] = 9 + static_cast<int>(slump() % 4);
            for (int v = 1; v <= 13; ++v) {
                std::array<int, 4> farg{0, 1, 2, 3};
                std::shuffle(farg.begin(), farg.end(), slump);
                for (int c = 0; c < 4; ++c) {
                    const Kort k = K(static_cast<kortfarg>(farg[static_cast<std::size_t>(c)]), v);
                    if (v <= topp[static_cast<std::size_t>(c)])
                        b.Lagg({{28 * c + v - 1, k}});
                    else
                        ute.push_back(k);
                }
            }
            std::shuffle(ute.begin(), ute.end(), slump);
            const std::size_t iLeken = ute.size() >= 8 && slump() % 2 == 0 ? 4 : 0;
            for (std::size_t i = 0; i < iLeken; ++i)
                b.Lagg({{112 + static_cast<int>(i), ute[i]}});
            std::array<int, 4> hojd{};
            for (std::size_t i = iLeken; i < ute.size(); ++i) {
                const int c = static_cast<int>(slump() % 3);
                b.Lagg({{28 * c + 14 + hojd[static_cast<std::size_t>(c)]++, ute[i]}});
            }
            // The plain search also tries every way of moving the foundations' tops about,
            // and gives up on a few tables.
            const auto [utfall, lika] = b.Jamfor(20000);
            QVERIFY2(lika != 0, qPrintable(QString("table %1").arg(n)));
            if (lika < 0)
                continue;
            (utfall == Utfall::Vinnbar ? vunna : hopplosa) += 1;
            if (b.Hopplos())
                QCOMPARE(utfall, Utfall::Ovinnbar);
        }
        QVERIFY(vunna > 20);
        QVERIFY(hopplosa > 20);
    }

    // With all four twos home a three goes home at once; with one two out it waits, and
    // that two goes instead (the aces are all home).
    void godnattvalsenSakertHem() {
        for (bool allaTvaor : {true, false}) {
            Bygge b(kGodnattvalsen);
            const kortfarg farger[4] = {SPADER, HJARTER, RUTER, KLOVER};
            for (int c = 0; c < 4; ++c) {
                b.Lagg({{28 * c, K(farger[c], 1)}});
                if (c < 3 || allaTvaor)
                    b.Lagg({{28 * c + 1, K(farger[c], 2)}});
            }
            b.Lagg({{42, K(HJARTER, 9)}, {43, K(SPADER, 3)}});
            if (!allaTvaor)
                b.Lagg({{70, K(KLOVER, 2)}});
            QCOMPARE(b.SakertDragen().fran, allaTvaor ? 43 : 70);
        }
    }

    // Farfars klocka: the three of diamonds goes to the clock at once when no two is left in
    // the piles to go on it; with the two of clubs in a pile it may be wanted there. The
    // piles play alike: the same piles in another order are the same table.
    void farfarsklockaSakertOchNyckel() {
        for (bool tvaKvar : {false, true}) {
            Bygge b(kFarfarsklocka);
            for (int k = 0; k < 12; ++k) {
                const auto& start = FarfarsklockaRegler::kStartkort[static_cast<std::size_t>(k)];
                b.Lagg({{19 * k, K(start.farg, start.valor)}});
            }
            b.Lagg({{228, K(SPADER, 9)}, {229, K(RUTER, 3)}, {247, K(HJARTER, 8)}});
            if (tvaKvar) {
                b.Lagg({{266, K(KLOVER, 2)}});
                QCOMPARE(b.Sakert(), -1);
                continue;
            }
            QCOMPARE(b.SakertDragen(), KortDrag(229, 1));
            Bygge bytt(kFarfarsklocka);
            for (int k = 0; k < 12; ++k) {
                const auto& start = FarfarsklockaRegler::kStartkort[static_cast<std::size_t>(k)];
                bytt.Lagg({{19 * k, K(start.farg, start.valor)}});
            }
            bytt.Lagg({{361, K(SPADER, 9)}, {362, K(RUTER, 3)}, {228, K(HJARTER, 8)}});
            QCOMPARE(bytt.Nyckel(), b.Nyckel());
        }
    }

    // Freecell's quick pass passes by a card moved off a card it could be built on onto
    // another such card, unless the card it leaves can then go home; a run it tries.
    void freecellSidledsBaraMotHem() {
        auto bygg = [](bool hjartanHemma) {
            Bygge b(kFreecell);
            b.Lagg({{0, K(SPADER, 13)}, {1, K(HJARTER, 9)}, {2, K(SPADER, 8)}});
            b.Lagg({{22, K(RUTER, 9)}, {44, K(HJARTER, 13)}});
            if (hjartanHemma)
                for (int v = 1; v <= 8; ++v)
                    b.Lagg({{kFreecellGrund + v - 1, K(HJARTER, v)}});
            std::vector<Drag> dragen = Sokbara(b.regler, *b.bord);
            b.regler.Kunskap().GallraHastigt(*b.bord, dragen);
            return dragen;
        };
        const Drag sidleds = KortDrag(2, 23);
        const Drag tillCell = KortDrag(2, 176);
        std::vector<Drag> utan = bygg(false);
        QVERIFY(std::find(utan.begin(), utan.end(), sidleds) == utan.end());
        QVERIFY(std::find(utan.begin(), utan.end(), tillCell) != utan.end());
        std::vector<Drag> med = bygg(true);
        QVERIFY(std::find(med.begin(), med.end(), sidleds) != med.end());

        // A run moved so may make room: Freecell keeps it.
        Bygge rad(kFreecell);
        rad.Lagg({{0, K(SPADER, 13)}, {1, K(HJARTER, 9)}, {2, K(SPADER, 8)}, {3, K(HJARTER, 7)}});
        rad.Lagg({{22, K(RUTER, 9)}, {44, K(HJARTER, 13)}});
        std::vector<Drag> dragen = Sokbara(rad.regler, *rad.bord);
        rad.regler.Kunskap().GallraHastigt(*rad.bord, dragen);
        QVERIFY(std::any_of(dragen.begin(), dragen.end(), [](const Drag& d) {
            return d.slag == DragSlag::Rad && d.fran == 2 && d.antal == 2 && d.till == 23;
        }));
    }

    // Freecell's likely move home counts each foundation's own cards: a full foundation of
    // hearts before an empty one still has the hearts home, so a black three goes home once
    // both red twos are.
    void freecellTroligtMedFullGrund() {
        Bygge b(kFreecell);
        for (int v = 1; v <= 13; ++v)
            b.Lagg({{kFreecellGrund + v - 1, K(HJARTER, v)}});
        b.Lagg({{kFreecellGrund + 26, K(RUTER, 1)}, {kFreecellGrund + 27, K(RUTER, 2)}});
        b.Lagg({{kFreecellGrund + 39, K(SPADER, 1)}, {kFreecellGrund + 40, K(SPADER, 2)}});
        b.Lagg({{0, K(SPADER, 3)}, {22, K(KLOVER, 9)}});
        std::vector<Drag> dragen = Sokbara(b.regler, *b.bord);
        const int troligt = b.regler.Kunskap().TroligtDrag(*b.bord, dragen);
        QVERIFY(troligt >= 0);
        QCOMPARE(dragen[static_cast<std::size_t>(troligt)], KortDrag(0, kFreecellGrund + 41));
    }

    // Tower of Hanoi: the towers play alike, so the same towers in another order are the same
    // table. With every tower falling from its base up, the quick pass takes the shortest
    // way: the four goes onto the seven, out of the way of the six.
    void towerKortasteVagen() {
        Bygge b(kTower);
        b.Lagg({{0, K(HJARTER, 9)}, {1, K(HJARTER, 8)}, {2, K(HJARTER, 7)}});
        b.Lagg({{9, K(HJARTER, 6)}, {10, K(HJARTER, 5)}, {11, K(HJARTER, 4)}});
        b.Lagg({{18, K(HJARTER, 3)}, {19, K(HJARTER, 2)}, {20, K(HJARTER, 1)}});
        std::vector<Drag> dragen = Sokbara(b.regler, *b.bord);
        const int troligt = b.regler.Kunskap().TroligtDrag(*b.bord, dragen);
        QVERIFY(troligt >= 0);
        QCOMPARE(dragen[static_cast<std::size_t>(troligt)], KortDrag(11, 3));

        Bygge bytt(kTower);
        bytt.Lagg({{18, K(HJARTER, 9)}, {19, K(HJARTER, 8)}, {20, K(HJARTER, 7)}});
        bytt.Lagg({{0, K(HJARTER, 6)}, {1, K(HJARTER, 5)}, {2, K(HJARTER, 4)}});
        bytt.Lagg({{9, K(HJARTER, 3)}, {10, K(HJARTER, 2)}, {11, K(HJARTER, 1)}});
        QCOMPARE(bytt.Nyckel(), b.Nyckel());

        // A four on the three: no shortest way is known, the search chooses.
        Bygge oordnad(kTower);
        oordnad.Lagg({{0, K(HJARTER, 9)}, {9, K(HJARTER, 3)}, {10, K(HJARTER, 4)}});
        std::vector<Drag> fler = Sokbara(oordnad.regler, *oordnad.bord);
        QCOMPARE(oordnad.regler.Kunskap().TroligtDrag(*oordnad.bord, fler), -1);
    }

    // Kvarnen has no last deal: the deal's number is kept out of the key, the cards' places
    // are not. The two of spades goes to its foundation before the button, and onto the
    // three of clubs last.
    void kvarnensNyckelOchOrdning() {
        Bygge b(kKvarnen);
        b.Lagg({{0, K(SPADER, 1)}, {72, K(HJARTER, 9)}, {73, K(SPADER, 2)}, {90, K(KLOVER, 3)}});
        const std::string forst = b.Nyckel();
        static_cast<KvarnenRegler::Stallning&>(*b.bord).giv = 7;
        QCOMPARE(b.Nyckel(), forst);
        std::vector<Drag> dragen = Sokbara(b.regler, *b.bord);
        b.regler.Kunskap().Ordna(*b.bord, dragen);
        QCOMPARE(dragen.front(), KortDrag(73, 1));
        QCOMPARE(dragen.size(), std::size_t(3));
        QCOMPARE(dragen[1], KnappDrag());
        QCOMPARE(dragen[2], KortDrag(73, 91));
        b.regler.GorDrag(*b.bord, dragen.front(), nullptr);
        QVERIFY(b.Nyckel() != forst);
    }

    // Kvarnen, spades home to the nine and hearts to the queen, the rest of both in the
    // first pile. With the king of spades among its first four cards, on the ten, nothing
    // ever comes between them: the ten never goes home. One place higher, above the king of
    // hearts, the next deal puts the king of spades alone in a pile, and the deal is won.
    // Kvarnen's rules never read the deal's number, so the plain search may leave it out.
    void kvarnensKungIForstaHogen() {
        for (bool kungOverst : {false, true}) {
            Bygge b(kKvarnen);
            for (int v = 1; v <= 13; ++v)
                b.Lagg({{2 * 18 + v - 1, K(KLOVER, v)}, {3 * 18 + v - 1, K(RUTER, v)}});
            for (int v = 1; v <= 12; ++v)
                b.Lagg({{18 + v - 1, K(HJARTER, v)}});
            for (int v = 1; v <= 9; ++v)
                b.Lagg({{v - 1, K(SPADER, v)}});
            b.Lagg({{72, K(SPADER, 10)}, {73, K(SPADER, 11)}, {74, K(SPADER, 12)}});
            b.Lagg({{75, K(kungOverst ? HJARTER : SPADER, 13)},
                    {76, K(kungOverst ? SPADER : HJARTER, 13)}});
            QCOMPARE(b.Hopplos(), !kungOverst);
            QCOMPARE(PlainSok(b.regler, *b.bord, 200000, false), kungOverst ? 1 : 0);
            QCOMPARE(b.Avgor(200000, false), kungOverst ? Utfall::Vinnbar : Utfall::Ovinnbar);
        }
    }

    // The same cards in the third pile, the first two empty: it is the first pile that holds
    // cards that counts. The queen on the king goes nowhere, and the next deal lays the four
    // as they lie.
    void kvarnensForstaHogenMedKort() {
        Bygge b(kKvarnen);
        for (int v = 1; v <= 13; ++v)
            b.Lagg({{2 * 18 + v - 1, K(KLOVER, v)}, {3 * 18 + v - 1, K(RUTER, v)}});
        for (int v = 1; v <= 12; ++v)
            b.Lagg({{18 + v - 1, K(HJARTER, v)}});
        for (int v = 1; v <= 9; ++v)
            b.Lagg({{v - 1, K(SPADER, v)}});
        const int hog = 72 + 2 * 18;
        b.Lagg({{hog, K(SPADER, 10)}, {hog + 1, K(SPADER, 11)}, {hog + 2, K(SPADER, 13)}});
        b.Lagg({{hog + 3, K(SPADER, 12)}, {hog + 4, K(HJARTER, 13)}});
        QVERIFY(b.Hopplos());
        QCOMPARE(PlainSok(b.regler, *b.bord, 200000, false), 0);
        QCOMPARE(b.Avgor(200000, false), Utfall::Ovinnbar);
    }

    // Small Kvarnen tables dealt at random, the last cards of two suits in a few piles: the
    // solver and the plain search agree on every one, and both verdicts come up.
    void kvarnensSmaBord() {
        std::mt19937 slump(5);
        int hopplosa = 0;
        int vunna = 0;
        for (int n = 0; n < 40; ++n) {
            Bygge b(kKvarnen);
            for (int v = 1; v <= 13; ++v)
                b.Lagg({{2 * 18 + v - 1, K(KLOVER, v)}, {3 * 18 + v - 1, K(RUTER, v)}});
            for (int v = 1; v <= 10; ++v)
                b.Lagg({{18 + v - 1, K(HJARTER, v)}});
            for (int v = 1; v <= 9; ++v)
                b.Lagg({{v - 1, K(SPADER, v)}});
            std::vector<Kort> kvar{K(SPADER, 10),  K(SPADER, 11),  K(SPADER, 12), K(SPADER, 13),
                                   K(HJARTER, 11), K(HJARTER, 12), K(HJARTER, 13)};
            std::shuffle(kvar.begin(), kvar.end(), slump);
            int hog = static_cast<int>(slump() % 2);
            int i = 0;
            for (const Kort& kort : kvar) {
                b.Lagg({{72 + 18 * hog + i, kort}});
                if (++i == 1 + static_cast<int>(slump() % 4)) {
                    ++hog;
                    i = 0;
                }
            }
            const Utfall utfall = b.Avgor(200000, false);
            QVERIFY(utfall != Utfall::Okant);
            hopplosa += utfall == Utfall::Ovinnbar ? 1 : 0;
            vunna += utfall == Utfall::Vinnbar ? 1 : 0;
        }
        QVERIFY(hopplosa > 0);
        QVERIFY(vunna > 0);
    }

    // Kvarnen's quick pass goes first for the tables where the cards the foundations want
    // next lie higher in their piles: the two of spades under one card is nearer than under
    // two, and a card home is nearer still.
    void kvarnensAvstand() {
        auto avstand = [](std::initializer_list<std::pair<int, Kort>> kort) {
            Bygge b(kKvarnen);
            b.Lagg({{0, K(SPADER, 1)}});
            b.Lagg(kort);
            return b.regler.Kunskap().Avstand(*b.bord);
        };
        const int under2 = avstand({{72, K(SPADER, 2)}, {73, K(HJARTER, 9)}, {74, K(RUTER, 5)}});
        const int under1 = avstand({{72, K(HJARTER, 9)}, {73, K(SPADER, 2)}, {74, K(RUTER, 5)}});
        const int hemma = avstand({{1, K(SPADER, 2)}, {72, K(HJARTER, 9)}, {73, K(RUTER, 5)}});
        QVERIFY(under1 < under2);
        QVERIFY(hemma < under1);
        // The card after it counts too, less.
        const int treaDjupt =
            avstand({{72, K(SPADER, 3)}, {73, K(SPADER, 2)}, {74, K(HJARTER, 9)}});
        const int treaOverst =
            avstand({{72, K(HJARTER, 9)}, {73, K(SPADER, 3)}, {74, K(SPADER, 2)}});
        QVERIFY(treaOverst < treaDjupt);
    }

    // Black hole, the ace of spades on top of the hole. The seven of hearts waits under the
    // two of clubs, and nothing but a six or an eight can go in before it: with the six of
    // spades in a fan the deal is won, without it never.
    void blackholeUtanForegangare() {
        for (bool sexa : {false, true}) {
            Bygge b(kBlackhole);
            b.Lagg({{Flakt(0, 0), K(HJARTER, 7)}, {Flakt(0, 1), K(KLOVER, 2)}});
            b.Lagg({{Flakt(2, 0), K(RUTER, 3)}});
            if (sexa)
                b.Lagg({{Flakt(1, 0), K(SPADER, 6)},
                        {Flakt(1, 1), K(RUTER, 5)},
                        {Flakt(1, 2), K(SPADER, 4)}});
            else
                b.Lagg({{Flakt(1, 0), K(RUTER, 5)}, {Flakt(1, 1), K(SPADER, 4)}});
            FyllHalet(b, K(SPADER, 1));
            QCOMPARE(b.Hopplos(), !sexa);
            QCOMPARE(b.Avgor(), sexa ? Utfall::Vinnbar : Utfall::Ovinnbar);
        }
    }

    // The ten of spades on top: the nine of hearts and the jack of clubs both fit, but
    // nothing can follow either, and only one can be last. With the ten of diamonds under
    // the nine, the jack goes first and the deal is won.
    void blackholeTvaUtanFoljare() {
        for (bool tia : {false, true}) {
            Bygge b(kBlackhole);
            b.Lagg({{Flakt(1, 0), K(KLOVER, 11)}});
            if (tia)
                b.Lagg({{Flakt(0, 0), K(HJARTER, 9)}, {Flakt(0, 1), K(RUTER, 10)}});
            else
                b.Lagg({{Flakt(0, 0), K(HJARTER, 9)}});
            FyllHalet(b, K(SPADER, 10));
            QCOMPARE(b.Hopplos(), !tia);
            QCOMPARE(b.Avgor(), tia ? Utfall::Vinnbar : Utfall::Ovinnbar);
        }
    }

    // The two of spades on top, the three of hearts, the eight of diamonds and the nine of
    // clubs left: no four, five, six or seven, nor an ace, to get from the one to the
    // others.
    void blackholeVardenMedLucka() {
        Bygge b(kBlackhole);
        b.Lagg({{0, K(SPADER, 2)},
                {Flakt(0, 0), K(HJARTER, 3)},
                {Flakt(1, 0), K(RUTER, 8)},
                {Flakt(2, 0), K(KLOVER, 9)}});
        QVERIFY(b.Hopplos());
        QCOMPARE(b.Avgor(), Utfall::Ovinnbar);
    }

    // The four of clubs on top, a five, three sixes and a seven left, each six with a
    // neighbour in another fan: the sixes need a five or a seven between each two of them,
    // and there are only two. A second seven wins.
    void blackholeForManga() {
        for (bool tvaSjuor : {false, true}) {
            Bygge b(kBlackhole);
            b.Lagg({{Flakt(0, 0), K(SPADER, 5)},
                    {Flakt(1, 0), K(HJARTER, 6)},
                    {Flakt(2, 0), K(RUTER, 6)},
                    {Flakt(3, 0), K(KLOVER, 6)},
                    {Flakt(4, 0), K(SPADER, 7)}});
            if (tvaSjuor)
                b.Lagg({{Flakt(5, 0), K(HJARTER, 7)}});
            FyllHalet(b, K(KLOVER, 4));
            QCOMPARE(b.Hopplos(), !tvaSjuor);
            QCOMPARE(b.Avgor(), tvaSjuor ? Utfall::Vinnbar : Utfall::Ovinnbar);
        }
    }

    // The five of clubs on top: only the six of spades fits, and then nothing can follow it
    // but the seven of diamonds, which lies under it. A card that must be last with a card
    // under it cannot be. With the seven on the eight in another fan, the run goes up to
    // the ten.
    void blackholeSistMenInteUnderst() {
        for (bool sjuanUnder : {true, false}) {
            Bygge b(kBlackhole);
            if (sjuanUnder)
                b.Lagg({{Flakt(0, 0), K(RUTER, 7)},
                        {Flakt(0, 1), K(HJARTER, 9)},
                        {Flakt(0, 2), K(SPADER, 6)},
                        {Flakt(1, 0), K(RUTER, 8)}});
            else
                b.Lagg({{Flakt(0, 0), K(HJARTER, 9)},
                        {Flakt(0, 1), K(SPADER, 6)},
                        {Flakt(1, 0), K(RUTER, 8)},
                        {Flakt(1, 1), K(RUTER, 7)}});
            b.Lagg({{Flakt(2, 0), K(KLOVER, 10)}});
            FyllHalet(b, K(KLOVER, 5));
            QCOMPARE(b.Hopplos(), sjuanUnder);
            QCOMPARE(b.Avgor(), sjuanUnder ? Utfall::Ovinnbar : Utfall::Vinnbar);
        }
    }

    // The six of hearts on top. The five of clubs lies on the nine of hearts, which lies on
    // the seven of hearts: between the five and the nine go a six, seven and eight, or the
    // values down from four round to ten, from the other fans. With no other seven and no
    // ace, king or queen, the nine can never follow the five. With the seven of clubs and
    // the eight of diamonds in other fans the deal is won.
    void blackholeIngenVagMellan() {
        for (bool vag : {false, true}) {
            Bygge b(kBlackhole);
            b.Lagg({{Flakt(0, 0), K(HJARTER, 7)},
                    {Flakt(0, 1), K(HJARTER, 9)},
                    {Flakt(0, 2), K(KLOVER, 5)},
                    {Flakt(1, 0), K(RUTER, 2)},
                    {Flakt(2, 0), K(RUTER, 3)},
                    {Flakt(3, 0), K(RUTER, 4)},
                    {Flakt(4, 0), K(SPADER, 6)},
                    {Flakt(5, 0), K(SPADER, 8)}});
            if (vag)
                b.Lagg({{Flakt(6, 0), K(KLOVER, 7)}, {Flakt(7, 0), K(RUTER, 8)}});
            else
                b.Lagg({{Flakt(6, 0), K(SPADER, 10)}});
            FyllHalet(b, K(SPADER, 1));
            QCOMPARE(b.Hopplos(), !vag);
            QCOMPARE(b.Avgor(), vag ? Utfall::Vinnbar : Utfall::Ovinnbar);
        }
        // A fan's top must follow the hole's top the same way: the nine of hearts on top,
        // the five of clubs a fan's top, and the seven of clubs under it or in a fan of its
        // own.
        for (bool sjua : {false, true}) {
            Bygge b(kBlackhole);
            b.Lagg({{Flakt(1, 0), K(SPADER, 8)},
                    {Flakt(2, 0), K(HJARTER, 6)},
                    {Flakt(4, 0), K(RUTER, 4)}});
            if (sjua)
                b.Lagg({{Flakt(0, 0), K(KLOVER, 5)}, {Flakt(3, 0), K(KLOVER, 7)}});
            else
                b.Lagg({{Flakt(0, 0), K(KLOVER, 7)}, {Flakt(0, 1), K(KLOVER, 5)}});
            FyllHalet(b, K(HJARTER, 9));
            QCOMPARE(b.Hopplos(), !sjua);
            QCOMPARE(b.Avgor(), sjua ? Utfall::Vinnbar : Utfall::Ovinnbar);
        }
    }

    // Fans holding the same values, in whichever fans and of whichever suits, are the same
    // table to the search; another value, or the same values in another order, is not.
    void blackholeFlaktarSomMangd() {
        auto nyckel = [](std::initializer_list<std::pair<int, Kort>> kort) {
            Bygge b(kBlackhole);
            b.Lagg(kort);
            FyllHalet(b, K(SPADER, 4));
            return b.Nyckel();
        };
        const std::string ena = nyckel({{Flakt(0, 0), K(HJARTER, 7)},
                                        {Flakt(0, 1), K(KLOVER, 9)},
                                        {Flakt(5, 0), K(RUTER, 3)}});
        QCOMPARE(nyckel({{Flakt(16, 0), K(SPADER, 7)},
                         {Flakt(16, 1), K(HJARTER, 9)},
                         {Flakt(2, 0), K(KLOVER, 3)}}),
                 ena);
        QVERIFY(nyckel({{Flakt(0, 0), K(KLOVER, 9)},
                        {Flakt(0, 1), K(HJARTER, 7)},
                        {Flakt(5, 0), K(RUTER, 3)}}) != ena);
        QVERIFY(nyckel({{Flakt(0, 0), K(HJARTER, 7)},
                        {Flakt(0, 1), K(KLOVER, 9)},
                        {Flakt(5, 0), K(RUTER, 2)}}) != ena);
        QVERIFY(nyckel({{Flakt(0, 0), K(HJARTER, 7)},
                        {Flakt(5, 0), K(KLOVER, 9)},
                        {Flakt(5, 1), K(RUTER, 3)}}) != ena);
    }

    // Small tables dealt at random, a few cards in a few fans: the solver's verdict is the
    // plain search's every time, and both verdicts occur many times.
    void blackholeSlumpadeBord() {
        std::mt19937 slump(21);
        int vunna = 0;
        int hopplosa = 0;
        for (int n = 0; n < 400; ++n) {
            Bygge b(kBlackhole);
            // The cards of three values running from a random one, king to ace included.
            const int forstaVarde = static_cast<int>(slump() % 13);
            std::vector<int> lek;
            for (int v = 0; v < 3; ++v)
                for (int farg = 0; farg < 4; ++farg)
                    lek.push_back(13 * farg + (forstaVarde + v) % 13);
            std::shuffle(lek.begin(), lek.end(), slump);
            auto kort = [&](int k) { return K(static_cast<kortfarg>(k / 13), k % 13 + 1); };
            const int antal = 4 + static_cast<int>(slump() % 8);
            const int flaktar = 4 + static_cast<int>(slump() % 6);
            std::vector<int> hojd(static_cast<std::size_t>(flaktar), 0);
            for (int i = 0; i < antal; ++i) {
                int f = static_cast<int>(slump() % static_cast<unsigned>(flaktar));
                for (int prov = 0; hojd[static_cast<std::size_t>(f)] == 3 && prov < flaktar; ++prov)
                    f = (f + 1) % flaktar;
                int& h = hojd[static_cast<std::size_t>(f)];
                if (h == 3)
                    break;
                b.Lagg({{Flakt(f, h++), kort(lek[static_cast<std::size_t>(i)])}});
            }
            FyllHalet(b, kort(lek.back()));
            const Utfall utfall = b.Avgor();
            QVERIFY2(utfall != Utfall::Okant, qPrintable(QString("table %1").arg(n)));
            (utfall == Utfall::Vinnbar ? vunna : hopplosa) += 1;
            if (b.Hopplos())
                QCOMPARE(utfall, Utfall::Ovinnbar);
        }
        QVERIFY(vunna > 40);
        QVERIFY(hopplosa > 40);
    }

    // Strategy's piles are alike, and so are its foundations: the same piles in another
    // order, and the ace of hearts home on another foundation, are the same table to the
    // search. An ace off the stock goes home at once, and of the moves onto the empty piles
    // one is kept.
    void strategyPlatsernaArLika() {
        Bygge ena(kStrategy);
        Bygge andra(kStrategy);
        ena.Lagg({{0, K(SPADER, 9)}, {1, K(RUTER, 4)}, {53, K(KLOVER, 7)}});
        ena.Lagg({{kStrategyGrund, K(HJARTER, 1)}, {kStrategyLek, K(SPADER, 1)}});
        andra.Lagg({{7 * 53, K(SPADER, 9)}, {7 * 53 + 1, K(RUTER, 4)}, {2 * 53, K(KLOVER, 7)}});
        andra.Lagg({{kStrategyGrund + 2 * 53, K(HJARTER, 1)}, {kStrategyLek, K(SPADER, 1)}});
        QCOMPARE(ena.Nyckel(), andra.Nyckel());
        QCOMPARE(ena.SakertDragen(), KortDrag(kStrategyLek, kStrategyGrund + 53));

        Bygge sexa(kStrategy);
        sexa.Lagg({{0, K(SPADER, 9)}, {kStrategyLek, K(HJARTER, 6)}});
        QCOMPARE(sexa.Sakert(), -1);
        std::vector<Drag> dragen = Sokbara(sexa.regler, *sexa.bord);
        QCOMPARE(dragen.size(), std::size_t(8));
        sexa.regler.Kunskap().Ordna(*sexa.bord, dragen);
        QCOMPARE(dragen.size(), std::size_t(2));
        QCOMPARE(dragen[0], KortDrag(kStrategyLek, 1));
        QCOMPARE(dragen[1], KortDrag(kStrategyLek, 53));
    }

    // Strategy's measure of a table: what each pile card cost where it was put, seen
    // coarsely (a gap of up to three values costs nothing). The measure told for each move is
    // the one of the table the move makes; a nine costs nothing on a ten, a little on a king,
    // more on an empty pile and far more on a lower card.
    void strategyMattet() {
        Bygge b(kStrategy);
        b.Lagg({{0, K(SPADER, 13)}, {1, K(SPADER, 10)}, {53, K(HJARTER, 10)}});
        b.Lagg({{2 * 53, K(RUTER, 13)}, {3 * 53, K(KLOVER, 3)}, {kStrategyLek, K(SPADER, 9)}});
        const SokKunskap& k = b.regler.Kunskap();
        QCOMPARE(k.Avstand(*b.bord), 12 + 0 + 12 + 12 + 12);
        std::vector<Drag> dragen = Sokbara(b.regler, *b.bord);
        std::vector<int> efter;
        QVERIFY(k.AvstandEfter(*b.bord, dragen, efter));
        QCOMPARE(efter.size(), dragen.size());
        int pa[8] = {-1, -1, -1, -1, -1, -1, -1, -1};
        for (std::size_t i = 0; i < dragen.size(); ++i) {
            std::unique_ptr<SpelBord> kopia = b.bord->Kopia();
            b.regler.GorDrag(*kopia, dragen[i], nullptr);
            QCOMPARE(efter[i], k.Avstand(*kopia));
            pa[dragen[i].till / 53] = efter[i] - k.Avstand(*b.bord);
        }
        QCOMPARE(pa[0], 0);
        QCOMPARE(pa[1], 0);
        QCOMPARE(pa[2], 1);
        QCOMPARE(pa[3], 51);
        QCOMPARE(pa[4], 12);
        QVERIFY(k.Ordningar(*b.bord) > 1);
    }

    // Strategy: every suit home but the hearts, of which the ace is home. The piles' tops are
    // the two to the seven of hearts, two piles are empty, and the stock deals the eight,
    // nine and ten of hearts in that order: each must lie on a pile of its own, as each goes
    // home after the one before, and the piles under the low hearts are closed to them. Dealt
    // eight, ten, nine, the nine goes on the ten.
    void strategyForFaHogar() {
        for (bool stigande : {true, false}) {
            Bygge b(kStrategy);
            for (int f = 0; f < 4; ++f) {
                const auto farg = static_cast<kortfarg>(f);
                for (int v = 1; v <= (farg == HJARTER ? 1 : 13); ++v)
                    b.Lagg({{kStrategyGrund + 53 * f + v - 1, K(farg, v)}});
            }
            for (int c = 0; c < 5; ++c)
                b.Lagg({{53 * c, K(HJARTER, 2 + c)}});
            b.Lagg({{5 * 53, K(HJARTER, 13)},
                    {5 * 53 + 1, K(HJARTER, 12)},
                    {5 * 53 + 2, K(HJARTER, 11)},
                    {5 * 53 + 3, K(HJARTER, 7)}});
            const int fallande[3] = {9, 10, 8};
            for (int i = 0; i < 3; ++i)
                b.Lagg({{kStrategyLek + i, K(HJARTER, stigande ? 10 - i : fallande[i])}});
            QCOMPARE(b.Hopplos(), stigande);
            QCOMPARE(b.Avgor(), stigande ? Utfall::Ovinnbar : Utfall::Vinnbar);
        }
    }

    // Small tables at random: two suits home, the last few cards of the other two spread
    // over the piles and the stock. The solver's verdict is the plain search's every time.
    // Strategy's key keeps of the piles only their tops and which of the tops and the stock's
    // cards must go home after which. The nine of hearts on the king of clubs or on the king
    // of diamonds is the same table; on the three of spades it is not, as the nine must
    // then go home before the four of spades on another pile.
    void strategyNyckelnsFoljder() {
        auto nyckel = [](const Kort& under) {
            Bygge b(kStrategy);
            b.Lagg({{0, under}, {1, K(HJARTER, 9)}, {53, K(SPADER, 4)}});
            b.Lagg({{kStrategyLek, K(HJARTER, 8)}});
            return b.Nyckel();
        };
        QCOMPARE(nyckel(K(RUTER, 13)), nyckel(K(KLOVER, 13)));
        QVERIFY(nyckel(K(SPADER, 3)) != nyckel(K(KLOVER, 13)));
    }

    // Random small tables: the solver's verdict is the plain search's every time, and both
    // verdicts occur. Then tables with every pile holding cards and three or four cards in
    // the stock, so that the same tops are reached by different placements.
    void strategySlumpadeBord() {
        for (bool fulla : {false, true}) {
            std::mt19937 slump(fulla ? 1121 : 7);
            int vunna = 0;
            int hopplosa = 0;
            for (int n = 0; n < (fulla ? 40 : 100); ++n) {
                Bygge b(kStrategy);
                std::vector<Kort> ute;
                for (int f = 0; f < 4; ++f) {
                    const auto farg = static_cast<kortfarg>(f);
                    const int hemma = fulla   ? 6 + static_cast<int>(slump() % 4)
                                      : f < 2 ? 13
                                              : 6 + static_cast<int>(slump() % 5);
                    for (int v = 1; v <= 13; ++v) {
                        if (v <= hemma)
                            b.Lagg({{kStrategyGrund + 53 * f + v - 1, K(farg, v)}});
                        else
                            ute.push_back(K(farg, v));
                    }
                }
                std::shuffle(ute.begin(), ute.end(), slump);
                const std::size_t iLeken =
                    fulla ? 3 + static_cast<std::size_t>(slump() % 2)
                          : std::min<std::size_t>(ute.size(),
                                                  2 + static_cast<std::size_t>(slump() % 3));
                for (std::size_t i = 0; i < iLeken; ++i)
                    b.Lagg({{kStrategyLek + static_cast<int>(i), ute[i]}});
                std::vector<int> hojd(8, 0);
                for (std::size_t i = iLeken; i < ute.size(); ++i) {
                    const int c = fulla && i < iLeken + 8 ? static_cast<int>(i - iLeken)
                                                          : static_cast<int>(slump() % 8);
                    b.Lagg({{53 * c + hojd[static_cast<std::size_t>(c)]++, ute[i]}});
                }
                const Utfall utfall = b.Avgor();
                QVERIFY2(utfall != Utfall::Okant, qPrintable(QString("table %1").arg(n)));
                (utfall == Utfall::Vinnbar ? vunna : hopplosa) += 1;
                if (b.Hopplos())
                    QCOMPARE(utfall, Utfall::Ovinnbar);
            }
            QVERIFY(vunna >= (fulla ? 3 : 21));
            QVERIFY(hopplosa >= 21);
        }
    }

    // Strategy: the orders a table's cards must go home in are worked out once for its key
    // and its proofs, and a table asked about after another with the same piles gets its
    // own. The two of spades under the four with the three in the stock close a circle;
    // with the three on its foundation instead (or the four under the two) they do not.
    void strategyOrdningarnaPerBord() {
        auto bygg = [](bool treILeken, bool fyranOverst) {
            Bygge b(kStrategy);
            b.Lagg({{0, K(SPADER, fyranOverst ? 2 : 4)}, {1, K(SPADER, fyranOverst ? 4 : 2)}});
            b.Lagg({{kStrategyLek, K(HJARTER, 5)}});
            if (treILeken)
                b.Lagg({{kStrategyLek + 1, K(SPADER, 3)}});
            else
                b.Lagg({{kStrategyGrund + 2, K(SPADER, 3)}});
            return b;
        };
        const Bygge cirkel = bygg(true, true);
        const Bygge utanTrean = bygg(false, true);
        const Bygge omvand = bygg(true, false);
        for (int varv = 0; varv < 2; ++varv) {
            QVERIFY(cirkel.Hopplos());
            QVERIFY(!utanTrean.Hopplos());
            QVERIFY(cirkel.Hopplos());
            QVERIFY(!omvand.Hopplos());
            QVERIFY(cirkel.Nyckel() != omvand.Nyckel());
        }
    }

    // Eight off: the cards in free cells 2..4 may change cells, and so may those in 5..7
    // and a suit between foundations 2..4; a card in cell 2 is not one in cell 5, nor are
    // two columns in each other's places.
    void eightoffNyckelnsGrupper() {
        auto nyckel = [](std::initializer_list<std::pair<int, Kort>> kort) {
            Bygge b(kEightoff);
            b.Lagg({{0, K(KLOVER, 13)}, {1, K(KLOVER, 12)}, {22, K(HJARTER, 9)}});
            b.Lagg(kort);
            return b.Nyckel();
        };
        const std::string grund = nyckel({{kEightoffCell + 2, K(RUTER, 4)},
                                          {kEightoffCell + 8, K(SPADER, 7)},
                                          {kEightoffCell + 9, K(SPADER, 8)},
                                          {kEightoffGrund + 13, K(HJARTER, 1)}});
        QCOMPARE(nyckel({{kEightoffCell + 6, K(RUTER, 4)},
                         {kEightoffCell + 12, K(SPADER, 7)},
                         {kEightoffCell + 13, K(SPADER, 8)},
                         {kEightoffGrund + 39, K(HJARTER, 1)}}),
                 grund);
        QVERIFY(nyckel({{kEightoffCell + 10, K(RUTER, 4)},
                        {kEightoffCell + 8, K(SPADER, 7)},
                        {kEightoffCell + 9, K(SPADER, 8)},
                        {kEightoffGrund + 13, K(HJARTER, 1)}}) != grund);
        QVERIFY(nyckel({{kEightoffCell + 2, K(RUTER, 4)},
                        {kEightoffCell + 14, K(SPADER, 7)},
                        {kEightoffCell + 15, K(SPADER, 8)},
                        {kEightoffGrund + 13, K(HJARTER, 1)}}) != grund);
        QVERIFY(nyckel({{kEightoffCell + 2, K(RUTER, 4)},
                        {kEightoffCell + 8, K(SPADER, 7)},
                        {kEightoffCell + 9, K(SPADER, 8)},
                        {kEightoffGrund, K(HJARTER, 1)}}) != grund);
        Bygge ena(kEightoff);
        ena.Lagg({{0, K(KLOVER, 13)}, {22, K(HJARTER, 9)}});
        Bygge andra(kEightoff);
        andra.Lagg({{22, K(KLOVER, 13)}, {0, K(HJARTER, 9)}});
        QVERIFY(ena.Nyckel() != andra.Nyckel());
    }

    // Eight off: of a lone king's moves into empty places the search keeps one into each
    // group of free cells alike (1, 2..4, 5..7, 8) and one into every empty column.
    void eightoffOrdnaBehallerOlikaPlatser() {
        Bygge b(kEightoff);
        b.Lagg({{0, K(KLOVER, 13)}});
        std::vector<Drag> dragen = Sokbara(b.regler, *b.bord);
        QCOMPARE(dragen.size(), std::size_t{15});
        b.regler.Kunskap().Ordna(*b.bord, dragen);
        std::vector<int> till;
        for (const Drag& d : dragen)
            till.push_back(d.till);
        std::sort(till.begin(), till.end());
        QCOMPARE(till,
                 (std::vector<int>{22, 44, 66, 88, 110, 132, 154, kEightoffCell, kEightoffCell + 2,
                                   kEightoffCell + 8, kEightoffCell + 14}));
    }

    // 13-Pyramiden: the five at the apex pairs only with an eight, and the only eight of the
    // pyramid lies on it; without an eight in the stock it can never go.
    void pyramidensPartnerLiggerPaKortet() {
        for (bool attaILeken : {false, true}) {
            Bygge b(kPyramiden);
            b.Lagg({{0, K(SPADER, 5)}, {1, K(HJARTER, 8)}, {2, K(KLOVER, 3)}});
            b.Lagg({{kPyramidLek, K(RUTER, 10)}, {kPyramidLek + 1, K(HJARTER, 5)}});
            if (attaILeken)
                b.Lagg({{kPyramidLek + 2, K(KLOVER, 8)}});
            QCOMPARE(b.Hopplos(), !attaILeken);
            QCOMPARE(b.Avgor(), attaILeken ? Utfall::Vinnbar : Utfall::Ovinnbar);
        }
    }

    // Two fours lying on the nine of spades, one nine for them in the stock: each four has a
    // partner, but not both at once. A second nine in the stock wins.
    void pyramidensParRackerInte() {
        for (bool tvaNior : {false, true}) {
            Bygge b(kPyramiden);
            b.Lagg({{0, K(SPADER, 9)}, {1, K(HJARTER, 4)}, {2, K(RUTER, 4)}});
            b.Lagg({{kPyramidLek, K(HJARTER, 9)}, {kPyramidLek + 1, K(KLOVER, 4)}});
            if (tvaNior)
                b.Lagg({{kPyramidLek + 2, K(RUTER, 9)}});
            QCOMPARE(b.Hopplos(), !tvaNior);
            QCOMPARE(b.Avgor(), tvaNior ? Utfall::Vinnbar : Utfall::Ovinnbar);
        }
    }

    // After the redeal the waste is never turned over again: the three of clubs on it pairs
    // with no card left in the pyramid, so the eight under it never comes up for the five.
    // Before the redeal the waste turns over into the stock and the eight comes first.
    void pyramidensHogUnderEttDottKort() {
        for (int giv : {1, 2}) {
            Bygge b(kPyramiden);
            b.Lagg({{0, K(SPADER, 5)}, {36, K(HJARTER, 8)}, {37, K(KLOVER, 3)}});
            static_cast<PyramidenRegler::Stallning&>(*b.bord).giv = giv;
            QCOMPARE(b.Hopplos(), giv == 2);
            QCOMPARE(b.Avgor(), giv == 2 ? Utfall::Ovinnbar : Utfall::Vinnbar);
        }
    }

    // Only values count: an eight of hearts in the stock is the same as the eight of clubs
    // there. A three and a four that no pyramid card pairs with any more are alike too, but
    // not a seven, which the six of the pyramid takes.
    void pyramidensNyckelAvVarden() {
        auto nyckel = [](const Kort& lek, const Kort& hog) {
            Bygge b(kPyramiden);
            b.Lagg({{0, K(SPADER, 5)}, {1, K(RUTER, 6)}, {2, K(RUTER, 12)}});
            b.Lagg({{kPyramidLek, lek}, {36, hog}});
            return b.Nyckel();
        };
        QCOMPARE(nyckel(K(HJARTER, 8), K(KLOVER, 3)), nyckel(K(KLOVER, 8), K(KLOVER, 4)));
        QVERIFY(nyckel(K(HJARTER, 8), K(KLOVER, 3)) != nyckel(K(HJARTER, 8), K(KLOVER, 7)));
        QVERIFY(nyckel(K(HJARTER, 8), K(KLOVER, 3)) != nyckel(K(HJARTER, 7), K(KLOVER, 3)));
        // The king goes alone: it is never out of play.
        QVERIFY(nyckel(K(HJARTER, 8), K(KLOVER, 13)) != nyckel(K(HJARTER, 8), K(KLOVER, 3)));
    }

    // The pyramid's five, a four in the way on the waste and the eight under it, in each
    // order of the three, with the nine of the stock: the solver and the plain search agree
    // on every one.
    void pyramidensSmaBordMedDodaKort() {
        const std::vector<Kort> kort{K(HJARTER, 8), K(KLOVER, 4), K(RUTER, 9), K(SPADER, 2)};
        for (int giv : {1, 2})
            for (int forsta = 0; forsta < 4; ++forsta)
                for (int andra = 0; andra < 4; ++andra) {
                    if (andra == forsta)
                        continue;
                    Bygge b(kPyramiden);
                    b.Lagg({{0, K(SPADER, 5)}, {1, K(HJARTER, 11)}, {2, K(RUTER, 4)}});
                    b.Lagg({{36, kort[static_cast<std::size_t>(forsta)]},
                            {37, kort[static_cast<std::size_t>(andra)]}});
                    int lek = kPyramidLek;
                    for (int k = 0; k < 4; ++k)
                        if (k != forsta && k != andra)
                            b.Lagg({{lek++, kort[static_cast<std::size_t>(k)]}});
                    static_cast<PyramidenRegler::Stallning&>(*b.bord).giv = giv;
                    QVERIFY(b.Avgor() != Utfall::Okant);
                }
    }

    // A free king goes at once; so do two cards that are the last of their values; a pair
    // whose values have other cards left is not safe.
    void pyramidensSakraDrag() {
        Bygge kung(kPyramiden);
        kung.Lagg({{0, K(SPADER, 2)}, {1, K(HJARTER, 11)}, {2, K(KLOVER, 13)}});
        kung.Lagg({{kPyramidLek, K(RUTER, 11)}});
        QCOMPARE(kung.SakertDragen(), KortDrag(2, 60 + 13 * KLOVER + 13));

        Bygge sista(kPyramiden);
        sista.Lagg({{0, K(SPADER, 2)}, {1, K(HJARTER, 6)}, {2, K(KLOVER, 7)}});
        sista.Lagg({{kPyramidLek, K(RUTER, 11)}});
        QCOMPARE(sista.SakertDragen(), ParDrag(1, 2));

        Bygge fler(kPyramiden);
        fler.Lagg({{0, K(SPADER, 2)}, {1, K(HJARTER, 6)}, {2, K(KLOVER, 7)}});
        fler.Lagg({{kPyramidLek, K(RUTER, 6)}});
        QCOMPARE(fler.Sakert(), -1);
    }
};

QTEST_MAIN(TestSokKunskap)
#include "test_sokkunskap.moc"
