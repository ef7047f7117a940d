#include "cards/Fro.h"
#include "cards/Kortlek.h"
#include "cards/Lucka.h"

#include <QTest>

#include <cstdlib>
#include <vector>

namespace {

// A deck of the given cards, bottom first.
Kortlek LekMed(std::initializer_list<std::pair<kortfarg, int>> kort) {
    Kortlek lek;
    while (lek.AntalKortKvar() > 0)
        lek.GeKort();
    for (auto [farg, valor] : kort)
        lek.TaInKort(Kort(farg, valor, BRect(float(valor), 1, 2, 3)));
    return lek;
}

bool Samma(const Kort& a, const Kort& b) {
    return a.KortFarg() == b.KortFarg() && a.KortValor() == b.KortValor() && a.GePos() == b.GePos();
}

} // namespace

class KortmodellTest : public QObject {
    Q_OBJECT

private slots:
    void svartaFargerArKloverOchSpader() {
        QVERIFY(!Kort(HJARTER, 5, {}).SvartFarg());
        QVERIFY(!Kort(RUTER, 5, {}).SvartFarg());
        QVERIFY(Kort(KLOVER, 5, {}).SvartFarg());
        QVERIFY(Kort(SPADER, 5, {}).SvartFarg());
        QCOMPARE(sizeof(kortfarg), size_t(4));
    }

    void nyKortlekHar52KortIFastOrdning() {
        Kortlek lek;
        QCOMPARE(lek.AntalKortKvar(), 52);
        const auto& kort = lek.Korten();
        QCOMPARE(int(kort.front().KortFarg()), 0);
        QCOMPARE(kort.front().KortValor(), 1);
        QCOMPARE(int(kort.back().KortFarg()), 3);
        QCOMPARE(kort.back().KortValor(), 13);
        for (int i = 0; i < 52; ++i) {
            int farg = i / 13;
            int valor = i % 13 + 1;
            QCOMPARE(int(kort[i].KortFarg()), farg);
            QCOMPARE(kort[i].KortValor(), valor);
            QCOMPARE(kort[i].GePos(), BRect(float(farg * valor), 0, 0, 0));
        }
    }

    void nyKortlekFyllerPaEfterUttag() {
        Kortlek lek;
        lek.GeKort();
        lek.GeEss();
        lek.NyKortlek();
        QCOMPARE(lek.AntalKortKvar(), 52);
        QCOMPARE(lek.Korten().back().KortValor(), 13);
    }

    void geKortTarDetOversta() {
        Kortlek lek;
        Kort k = lek.GeKort();
        QCOMPARE(int(k.KortFarg()), 3);
        QCOMPARE(k.KortValor(), 13);
        QCOMPARE(lek.AntalKortKvar(), 51);
        lek.TaInKort(Kort(RUTER, 7, {}));
        QCOMPARE(lek.Korten().back().KortValor(), 7);
        QCOMPARE(lek.AntalKortKvar(), 52);
    }

    void blandaPaTomLekDrarIngaSlumptal() {
        Kortlek tom = LekMed({});
        std::srand(77);
        int forvantat = std::rand();
        std::srand(77);
        tom.Blanda();
        QCOMPARE(tom.AntalKortKvar(), 0);
        QCOMPARE(std::rand(), forvantat);
    }

    void blandaPaEttKortLamnarDetKvar() {
        Kortlek lek = LekMed({{KLOVER, 9}});
        lek.Blanda();
        QCOMPARE(lek.AntalKortKvar(), 1);
        QVERIFY(Samma(lek.Korten()[0], Kort(KLOVER, 9, BRect(9, 1, 2, 3))));
    }

    void blandaBehallerSammaKort() {
        std::srand(4711);
        Kortlek lek;
        lek.Blanda();
        QCOMPARE(lek.AntalKortKvar(), 52);
        bool sett[4][14] = {};
        for (const Kort& k : lek.Korten()) {
            QVERIFY(!sett[k.KortFarg()][k.KortValor()]);
            sett[k.KortFarg()][k.KortValor()] = true;
        }
        Kortlek oblandad;
        bool andrad = false;
        for (int i = 0; i < 52; ++i)
            andrad = andrad || !Samma(lek.Korten()[i], oblandad.Korten()[i]);
        QVERIFY(andrad);
    }

    // 999 transpositions, two rand() draws each, first a then b.
    void blandaGor999ByttenMedTvaDragVarje() {
        std::srand(99);
        Kortlek lek;
        lek.Blanda();
        std::vector<Kort> forvantat = Kortlek().Korten();
        std::srand(99);
        for (int i = 1; i < 1000; ++i) {
            int a = std::rand() % 52;
            int b = std::rand() % 52;
            std::swap(forvantat[a], forvantat[b]);
        }
        int nasta = std::rand();
        for (int i = 0; i < 52; ++i)
            QVERIFY(Samma(lek.Korten()[i], forvantat[i]));
        std::srand(99);
        for (int i = 0; i < 1998; ++i)
            std::rand();
        QCOMPARE(std::rand(), nasta);
    }

    // A numbered deal draws exactly what srand with its number draws, seed 0 included,
    // and the program's own random numbers go on as if it had never been made.
    void medFroDrarSomSrandOchLamnarProgrammetsTal() {
        for (unsigned fro : {0u, 1u, 1234u, 4294967295u}) {
            std::srand(fro);
            std::vector<int> vantat;
            for (int i = 0; i < 2000; ++i)
                vantat.push_back(std::rand());
            std::srand(77);
            std::vector<int> utanAvbrott;
            for (int i = 0; i < 40; ++i)
                utanAvbrott.push_back(std::rand());

            std::srand(77);
            std::vector<int> fore;
            for (int i = 0; i < 20; ++i)
                fore.push_back(std::rand());
            std::vector<int> drog;
            MedFro(fro, [&] {
                for (int i = 0; i < 2000; ++i)
                    drog.push_back(std::rand());
            });
            QCOMPARE(drog, vantat);
            for (int i = 0; i < 20; ++i)
                fore.push_back(std::rand());
            QCOMPARE(fore, utanAvbrott);
        }
    }

    void medFroBlandarSomSrand() {
        std::srand(4321);
        Kortlek vantad;
        vantad.Blanda();
        std::srand(5);
        Kortlek lek;
        MedFro(4321, [&] { lek.Blanda(); });
        QVERIFY(lek == vantad);
        QVERIFY(!(lek == Kortlek()));
    }

    void geEssFlyttarOverstaKortetTillEssetsPlats() {
        Kortlek lek = LekMed({{HJARTER, 2},
                              {HJARTER, 3},
                              {RUTER, 4},
                              {KLOVER, 1},
                              {KLOVER, 5},
                              {KLOVER, 6},
                              {SPADER, 7},
                              {SPADER, 8},
                              {SPADER, 9},
                              {RUTER, 10}});
        Kort ess = lek.GeEss();
        QCOMPARE(ess.KortValor(), 1);
        QCOMPARE(int(ess.KortFarg()), int(KLOVER));
        QCOMPARE(lek.AntalKortKvar(), 9);
        QVERIFY(Samma(lek.Korten()[3], Kort(RUTER, 10, BRect(10, 1, 2, 3))));
        QCOMPARE(lek.Korten()[2].KortValor(), 4);
        QCOMPARE(lek.Korten()[8].KortValor(), 9);
    }

    void geEssOverstLyfterBaraAvDet() {
        Kortlek lek = LekMed({{HJARTER, 2}, {RUTER, 3}, {SPADER, 1}});
        Kort ess = lek.GeEss();
        QCOMPARE(int(ess.KortFarg()), int(SPADER));
        QCOMPARE(lek.AntalKortKvar(), 2);
        QCOMPARE(lek.Korten()[0].KortValor(), 2);
        QCOMPARE(lek.Korten()[1].KortValor(), 3);
    }

    void geEssUtanEssGerKopiaAvOverstaKortet() {
        Kortlek lek = LekMed({{HJARTER, 2}, {RUTER, 3}, {SPADER, 12}});
        Kort k = lek.GeEss();
        QVERIFY(Samma(k, Kort(SPADER, 12, BRect(12, 1, 2, 3))));
        QCOMPARE(lek.AntalKortKvar(), 3);
        QCOMPARE(lek.Korten()[0].KortValor(), 2);
        QCOMPARE(lek.Korten()[1].KortValor(), 3);
        QCOMPARE(lek.Korten()[2].KortValor(), 12);
    }

    void geEssPaTomLekGerTomtKort() {
        Kortlek lek = LekMed({});
        Kort k = lek.GeEss();
        QCOMPARE(k.KortValor(), -1);
        QCOMPARE(int(k.KortFarg()), 0);
        QCOMPARE(k.GePos(), BRect(0, 0, 0, 0));
    }

    void geValtKortOverstTarBaraBortDet() {
        Kortlek lek = LekMed({{HJARTER, 2}, {RUTER, 5}, {SPADER, 3}, {KLOVER, 12}});
        Kort k = lek.GeValtKort(KLOVER, 12);
        QVERIFY(Samma(k, Kort(KLOVER, 12, BRect(12, 1, 2, 3))));
        QCOMPARE(lek.AntalKortKvar(), 3);
        QCOMPARE(lek.Korten()[0].KortValor(), 2);
        QCOMPARE(lek.Korten()[1].KortValor(), 5);
        QCOMPARE(lek.Korten()[2].KortValor(), 3);
    }

    void geValtKortMittILekenFlyttarOverstaKortet() {
        Kortlek lek;
        Kort k = lek.GeValtKort(RUTER, 1);
        QCOMPARE(int(k.KortFarg()), int(RUTER));
        QCOMPARE(k.KortValor(), 1);
        QCOMPARE(lek.AntalKortKvar(), 51);
        QCOMPARE(int(lek.Korten()[13].KortFarg()), int(SPADER));
        QCOMPARE(lek.Korten()[13].KortValor(), 13);
    }

    void geValtKortSomSaknasLamnarLekenOrord() {
        Kortlek lek = LekMed({{HJARTER, 2}, {RUTER, 3}});
        Kort k = lek.GeValtKort(KLOVER, 12);
        QVERIFY(Samma(k, Kort(RUTER, 3, BRect(3, 1, 2, 3))));
        QCOMPARE(lek.AntalKortKvar(), 2);
        Kortlek tom = LekMed({});
        QCOMPARE(tom.GeValtKort(KLOVER, 12).KortValor(), -1);
    }

    void nyLuckaArTomMedKantlinjeUtanMarkering() {
        Lucka lucka(BRect(1, 2, 3, 4), true);
        QVERIFY(lucka.Tom());
        QVERIFY(lucka.GeKantLinje());
        QVERIFY(!lucka.GeOkPos());
        QVERIFY(lucka.BakSida());
        QCOMPARE(lucka.GeKort().KortValor(), -1);
        QCOMPARE(int(lucka.GeKort().KortFarg()), 0);
        QCOMPARE(lucka.GeKort().GePos(), BRect(0, 0, 0, 0));
        QCOMPARE(lucka.GePos(), BRect(1, 2, 3, 4));
        QVERIFY(!Lucka(BRect(), false).BakSida());
    }

    void taBortKortBehallerFargOchBild() {
        Lucka lucka(BRect(0, 0, 0, 0), false);
        lucka.TaEmotKort(Kort(SPADER, 11, BRect(10, 20, 30, 40)));
        QVERIFY(!lucka.Tom());
        lucka.TaBortKort();
        QVERIFY(lucka.Tom());
        QCOMPARE(lucka.GeKort().KortValor(), -1);
        QCOMPARE(int(lucka.GeKort().KortFarg()), int(SPADER));
        QCOMPARE(lucka.GeKort().GePos(), BRect(10, 20, 30, 40));
    }

    void taEmotKortErsatterTystKortetSomLag() {
        Lucka lucka(BRect(0, 0, 0, 0), false);
        lucka.TaEmotKort(Kort(SPADER, 11, BRect(10, 20, 30, 40)));
        lucka.TaEmotKort(Kort(RUTER, 4, BRect(1, 2, 3, 4)));
        QVERIFY(!lucka.Tom());
        QVERIFY(Samma(lucka.GeKort(), Kort(RUTER, 4, BRect(1, 2, 3, 4))));
    }

    void geKortGerReferensSomKanAndras() {
        Lucka lucka(BRect(0, 0, 0, 0), false);
        lucka.TaEmotKort(Kort(KLOVER, 2, BRect()));
        lucka.GeKort().NyPos(BRect(7, 7, 8, 8));
        QCOMPARE(lucka.GeKort().GePos(), BRect(7, 7, 8, 8));
    }

    void markeringOchKantlinjeKanSattas() {
        Lucka lucka(BRect(0, 0, 0, 0), false);
        lucka.NyOkPos(true);
        lucka.NyKantLinje(false);
        lucka.NyPos(BRect(5, 6, 7, 8));
        QVERIFY(lucka.GeOkPos());
        QVERIFY(!lucka.GeKantLinje());
        QCOMPARE(lucka.GePos(), BRect(5, 6, 7, 8));
        Lucka kopia = lucka;
        QVERIFY(kopia.GeOkPos());
        QVERIFY(!kopia.GeKantLinje());
    }
};

QTEST_GUILESS_MAIN(KortmodellTest)
#include "test_cards.moc"
