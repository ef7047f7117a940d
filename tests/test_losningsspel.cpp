#include "app/LosKommando.h"
#include "games/Blackhole.h"
#include "games/Eightoff.h"
#include "games/Farfarsklocka.h"
#include "games/Freecell.h"
#include "games/Gladjespridaren.h"
#include "games/Godnattvalsen.h"
#include "games/Idioten.h"
#include "games/Idioten2.h"
#include "games/Kvarnen.h"
#include "games/Pyramiden.h"
#include "games/Spelfabrik.h"
#include "games/Strategy.h"
#include "games/Tower.h"
#include "solver/Losare.h"
#include "support/Spelfall.h"
#include "support/Testbord.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>

// The solver's wins played in the real play view, move by move with the gesture each game
// names for the move, to a won game with one notice and its hiscore; and the deal it
// searches for a seed is the one the window deals (for Idioten 2, whose first deal is never
// shuffled, the one it deals as the deal of that number).

namespace {

// The first five seeds (of `froer`, or from 1 up) the solver wins within `lagen` tables in at
// most `maxDrag` moves (to keep the suite quick), each played through the view. A line with
// a move the game names no gesture for is passed over, and said.
template <typename Spel>
void VinnFemGivar(int spelNr, std::uint64_t lagen, std::vector<unsigned> froer = {},
                  std::size_t maxDrag = 1000) {
    const SpelRegler& regler = *ReglerFor(spelNr);
    if (froer.empty())
        for (unsigned fro = 1; fro <= 300; ++fro)
            froer.push_back(fro);
    int vunna = 0;
    for (unsigned fro : froer) {
        if (vunna == 5)
            break;
        auto giv = GivFor(spelNr, fro);
        SokSvar svar = Los(regler, *giv, SokGranser{lagen});
        if (svar.utfall != Utfall::Vinnbar || svar.drag.size() > maxDrag)
            continue;
        Testbord<Spel> b(spelNr, fro, false, 1280, 1024);
        b.vy->GivAvFro(fro);
        QCOMPARE(Bordet(b.spel->Tabell()).size(), Bordet(*giv).size());
        for (std::size_t i = 0; i < giv->luckor.size(); ++i)
            QVERIFY2(KortKod(b.spel->Tabell().luckor[i]) == KortKod(giv->luckor[i]),
                     qPrintable(QStringLiteral("seed %1 slot %2").arg(fro).arg(i)));
        for (const Drag& d : svar.drag)
            regler.GorDrag(*giv, d, nullptr);
        QVERIFY(regler.KlarSpel(*giv));
        HiscoreResultat r = regler.Resultat(*giv);
        QString fel = b.SpelaGenomVyn(svar.drag);
        if (fel.startsWith(QStringLiteral("no gesture for "))) {
            qWarning("seed %u: %s", fro, qPrintable(fel));
            continue;
        }
        QVERIFY2(fel.isEmpty(), qPrintable(QStringLiteral("seed %1: %2").arg(fro).arg(fel)));
        b.VunnetMedEttBesked(r.kort, r.giv);
        if (QTest::currentTestFailed()) {
            qWarning("seed %u", fro);
            return;
        }
        ++vunna;
    }
    QCOMPARE(vunna, 5);
}

} // namespace

class TestLosningsspel : public QObject {
    Q_OBJECT

    QTemporaryDir dataMapp;

private slots:
    void initTestCase() {
        QVERIFY(dataMapp.isValid());
        AttributeStore::SetDataDirectory(dataMapp.path().toStdString());
        QVERIFY(AttributeStore::Program().InitCheck() == B_OK);
    }
    void cleanup() { SattKlocka({}); }

    void idioten() { VinnFemGivar<Idioten>(0, 20000); }
    void idioten2() { VinnFemGivar<Idioten2>(1, 50000); }
    // Few of this game's deals can be won: these are five of the first 1500 that can.
    void godnattvalsen() { VinnFemGivar<Godnattvalsen>(2, 50000, {189, 679, 717, 939, 1437}); }
    void tower() { VinnFemGivar<Tower>(3, 20000); }
    void kvarnen() { VinnFemGivar<Kvarnen>(4, 20000); }
    void gladjespridaren() { VinnFemGivar<Gladjespridaren>(5, 20000); }
    void farfarsklocka() { VinnFemGivar<Farfarsklocka>(6, 20000); }
    void pyramiden() { VinnFemGivar<Pyramiden>(7, 20000); }
    void freecell() { VinnFemGivar<Freecell>(8, 20000); }
    void eightoff() { VinnFemGivar<Eightoff>(9, 20000); }
    void blackhole() { VinnFemGivar<Blackhole>(10, 20000); }
    void strategy() { VinnFemGivar<Strategy>(11, 20000); }

    // The command line's answer: the verdict line, a line a move, the exit code.
    void kommandoradensSvar() {
        std::FILE* ut = std::tmpfile();
        QVERIFY(ut != nullptr);
        QCOMPARE(LosEnGiv(10, 1, SokGranser{1000}, ut), 2);
        QCOMPARE(LosEnGiv(6, 1, SokGranser{}, ut), 0);
        QCOMPARE(LosGivar(3, 1, 3, SokGranser{}, ut), 0);
        std::rewind(ut);
        QStringList rader;
        char rad[512];
        while (std::fgets(rad, sizeof rad, ut) != nullptr)
            rader << QString::fromUtf8(rad).trimmed();
        std::fclose(ut);
        QVERIFY(rader.at(0).startsWith(QStringLiteral("Black hole, seed 1: not known (")));
        QVERIFY(rader.at(1).startsWith(QStringLiteral("Farfars klocka, seed 1: won-able (")));
        QVERIFY(rader.at(2).startsWith(QStringLiteral("1. ")));
        QVERIFY(rader.filter(QStringLiteral(" to clock pile ")).size() > 10);
        QVERIFY(rader.indexOf(QRegularExpression(
                    QStringLiteral("seed 2: won-able, \\d+ moves, \\d+ positions, .* ms"))) > 0);
        QVERIFY(rader.last().startsWith(QStringLiteral("Tower of Hanoi, 3 deals: ")));
    }
};

QTEST_MAIN(TestLosningsspel)
#include "test_losningsspel.moc"
