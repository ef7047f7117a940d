#include "cards/SokKunskap.h"
#include "games/FarfarsklockaRegler.h"
#include "games/KvarnenRegler.h"
#include "games/Spelfabrik.h"
#include "solver/Losare.h"
#include "support/PlainSokning.h"

#include <QTest>

#include <algorithm>
#include <initializer_list>
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
    Utfall Avgor(std::size_t plainMax = 200000) const {
        SokSvar svar = Los(regler, *bord, SokGranser{500000});
        int plain = PlainSok(regler, *bord, plainMax);
        if (plain >= 0 && svar.utfall != (plain == 1 ? Utfall::Vinnbar : Utfall::Ovinnbar))
            return Utfall::Okant;
        return svar.utfall;
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

    // Idioten 2: the five of hearts, beaten by the nine, goes at once when no lower heart is
    // left; with the three of hearts still in the stock it is kept, as it may be needed to
    // beat it. With the game won by that discard and the nine's, the solver and the plain
    // search agree.
    void idioten2KastarSakert() {
        for (bool treaKvar : {false, true}) {
            Bygge b(kIdioten2);
            b.Lagg(
                {{0, K(SPADER, 1)}, {1, K(HJARTER, 5)}, {14, K(KLOVER, 1)}, {15, K(HJARTER, 9)}});
            b.Lagg({{28, K(HJARTER, 1)}, {42, K(RUTER, 1)}});
            if (treaKvar) {
                b.Lagg({{112, K(HJARTER, 3)}});
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

    // Godnattvalsen: three foundations built to the jack, the fourth to the nine. The jack of
    // spades lies on the ten of hearts in a pile: it needs a ten home that no jack has used
    // yet, and the only ten left is under it. The other way round the deal is won: the
    // stock then deals the queens and the kings.
    void godnattvalsenTianUnderKnekten() {
        for (bool knektenOverst : {true, false}) {
            Bygge b(kGodnattvalsen);
            const kortfarg farger[4] = {SPADER, HJARTER, RUTER, KLOVER};
            for (int c = 0; c < 4; ++c)
                for (int v = 1; v <= (c < 3 ? 11 : 9); ++v)
                    b.Lagg({{28 * c + v - 1, K(farger[c], v)}});
            if (knektenOverst)
                b.Lagg({{14, K(KLOVER, 10)}, {15, K(KLOVER, 11)}});
            else
                b.Lagg({{14, K(KLOVER, 11)}, {15, K(KLOVER, 10)}});
            int lek = 112;
            for (int v = 13; v >= 12; --v)
                for (kortfarg f : farger)
                    b.Lagg({{lek++, K(f, v)}});
            QCOMPARE(b.Hopplos(), knektenOverst);
            QCOMPARE(b.Avgor(), knektenOverst ? Utfall::Ovinnbar : Utfall::Vinnbar);
        }
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
