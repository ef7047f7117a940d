#include "app/FjolkView.h"
#include "cards/GorOm.h"
#include "games/Spelfabrik.h"
#include "platform/AttributeStore.h"
#include "support/Gester.h"
#include "support/Testbord.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <memory>
#include <random>
#include <vector>

// Redo and the restarted deal in every game, through the game object the window drives:
// what redo gives back, what makes it forget, and the deal dealt again.

namespace {

// A move the rules list now, chosen by `slump`; none when they list none. New attempts
// are left out unless `medNyttForsok`.
std::optional<Drag> NagotDrag(Patiens& spel, std::mt19937& slump, bool medNyttForsok = false) {
    std::vector<Drag> dragen = spel.Regler().LagligaDrag(spel.Tabell());
    std::erase_if(dragen,
                  [&](const Drag& d) { return !medNyttForsok && d.slag == DragSlag::NyttForsok; });
    if (dragen.empty())
        return std::nullopt;
    return dragen[std::uniform_int_distribution<size_t>(0, dragen.size() - 1)(slump)];
}

// Makes `antal` moves the rules list, as a gesture would make them.
void GorDrag(Patiens& spel, std::mt19937& slump, int antal, bool medNyttForsok = false) {
    for (int i = 0; i < antal; ++i)
        if (std::optional<Drag> d = NagotDrag(spel, slump, medNyttForsok)) {
            spel.Regler().GorDrag(spel.Tabell(), *d, nullptr);
            spel.KlarSpel();
        }
}

// `vantat` with the undo count of `bord`: redo counts no undo out.
bool SammaUtomUndo(const SpelBord& vantat, const SpelBord& bord) {
    auto kopia = vantat.Kopia();
    kopia->antalUndo = bord.antalUndo;
    return SammaStallning(*kopia, bord);
}

struct Fall {
    std::unique_ptr<FjolkView> vy;
    std::mt19937 slump;
    Fall(int spelNr, unsigned fro) : vy(VyMedSpel(spelNr, fro, 800, 600)), slump(fro) {}
    Patiens& Spel() { return *vy->Spel(); }
};

} // namespace

class GorOmTest : public QObject {
    Q_OBJECT

    QTemporaryDir dataMapp;

private slots:
    void initTestCase() { AttributeStore::SetDataDirectory(dataMapp.path().toStdString()); }

    void varjeSpel_data() {
        QTest::addColumn<int>("spelNr");
        QTest::addColumn<unsigned>("fro");
        for (int nr = 0; nr < kAntalSpel; ++nr)
            for (unsigned fro : {5u, 6u, 7u})
                QTest::addRow("%s seed %u", SpelNamn(nr), fro) << nr << fro;
    }

    // After any number of undos, redo gives back exactly each table undo took back, in
    // order, the window laid out anew in between; the undos stay counted.
    void redoGerTillbakaBordetEfterVarjeAntalUndo_data() { varjeSpel_data(); }
    void redoGerTillbakaBordetEfterVarjeAntalUndo() {
        QFETCH(int, spelNr);
        QFETCH(unsigned, fro);
        Fall f(spelNr, fro);
        QVERIFY(!f.Spel().Has_Redos());
        for (int antal = 1; antal <= 6; ++antal) {
            GorDrag(f.Spel(), f.slump, 8);
            std::vector<std::unique_ptr<SpelBord>> tagna;
            for (int i = 0; i < antal && f.Spel().Has_Undos(); ++i) {
                tagna.push_back(f.Spel().Tabell().Kopia());
                f.Spel().Undo();
                QVERIFY(f.Spel().Has_Redos());
            }
            if (tagna.empty())
                continue;
            const int antalUndo = f.Spel().AntalUndo();
            f.vy->resize(antal % 2 ? 1000 : 800, antal % 2 ? 750 : 600);
            QCoreApplication::sendPostedEvents();
            QVERIFY(f.Spel().Has_Redos());
            while (!tagna.empty()) {
                int kvar = f.Spel().Redo();
                QCOMPARE(kvar, int(tagna.size()) - 1);
                QVERIFY(SammaUtomUndo(*tagna.back(), f.Spel().Tabell()));
                QCOMPARE(f.Spel().AntalUndo(), antalUndo);
                tagna.pop_back();
            }
            QVERIFY(!f.Spel().Has_Redos());
            auto efter = f.Spel().Tabell().Kopia();
            QCOMPARE(f.Spel().Redo(), 0);
            QVERIFY(f.Spel().Tabell().Lika(*efter));
        }
    }

    // A move made after an undo forgets what the undo took back.
    void nyttDragGlommerDetAngrade_data() { varjeSpel_data(); }
    void nyttDragGlommerDetAngrade() {
        QFETCH(int, spelNr);
        QFETCH(unsigned, fro);
        Fall f(spelNr, fro);
        GorDrag(f.Spel(), f.slump, 6);
        for (int i = 0; i < 50 && !f.Spel().Has_Undos(); ++i)
            GorDrag(f.Spel(), f.slump, 1);
        QVERIFY(f.Spel().Has_Undos());
        f.Spel().Undo();
        QVERIFY(f.Spel().Has_Redos());
        auto angrat = f.Spel().Tabell().Kopia();
        GorDrag(f.Spel(), f.slump, 1);
        if (f.Spel().Tabell().Lika(*angrat))
            QSKIP("no move to make after the undo");
        QVERIFY(!f.Spel().Has_Redos());
        auto efter = f.Spel().Tabell().Kopia();
        QCOMPARE(f.Spel().Redo(), 0);
        QVERIFY(f.Spel().Tabell().Lika(*efter));
        // Taking that move back offers it alone, not the one forgotten. (A move that began
        // a new round took the records with it.)
        if (!f.Spel().Has_Undos())
            return;
        f.Spel().Undo();
        QVERIFY(f.Spel().Has_Redos());
        QCOMPARE(f.Spel().Redo(), 0);
        QVERIFY(SammaUtomUndo(*efter, f.Spel().Tabell()));
        QVERIFY(!f.Spel().Has_Redos());
    }

    // A new deal and a restarted one forget it too.
    void nyGivOchOmgivGlommerDetAngrade_data() { varjeSpel_data(); }
    void nyGivOchOmgivGlommerDetAngrade() {
        QFETCH(int, spelNr);
        QFETCH(unsigned, fro);
        Fall f(spelNr, fro);
        for (bool omgiv : {false, true}) {
            GorDrag(f.Spel(), f.slump, 6);
            if (!f.Spel().Has_Undos())
                continue;
            f.Spel().Undo();
            QVERIFY(f.Spel().Has_Redos());
            if (omgiv)
                f.Spel().OmGiv(f.vy->Bounds());
            else
                f.Spel().NyttSpel(f.vy->Bounds());
            QVERIFY(!f.Spel().Has_Redos());
            QCOMPARE(f.Spel().Redo(), 0);
        }
    }

    // A new attempt (Idioten 1's "Next try", Kvarnen's "Next Deal") forgets what undo took
    // back, even when every move of the attempt was undone first.
    void nyttForsokGlommerDetAngrade_data() {
        QTest::addColumn<int>("spelNr");
        QTest::addColumn<bool>("alltAngrat");
        for (int nr : {0, 4})
            for (bool allt : {false, true})
                QTest::addRow("%s%s", SpelNamn(nr), allt ? ", all undone" : "") << nr << allt;
    }
    void nyttForsokGlommerDetAngrade() {
        QFETCH(int, spelNr);
        QFETCH(bool, alltAngrat);
        for (unsigned fro = 1; fro < 40; ++fro) {
            Fall f(spelNr, fro);
            std::vector<Drag> dragen = f.Spel().Regler().LagligaDrag(f.Spel().Tabell());
            auto forsok = std::find_if(dragen.begin(), dragen.end(), [](const Drag& d) {
                return d.slag == DragSlag::NyttForsok || d.slag == DragSlag::Knapp;
            });
            auto kort = std::find_if(dragen.begin(), dragen.end(),
                                     [](const Drag& d) { return d.slag == DragSlag::Kort; });
            if (forsok == dragen.end() || kort == dragen.end())
                continue;
            f.Spel().Regler().GorDrag(f.Spel().Tabell(), *kort, nullptr);
            f.Spel().KlarSpel();
            if (!alltAngrat)
                f.Spel().Regler().GorDrag(f.Spel().Tabell(),
                                          f.Spel().Regler().LagligaDrag(f.Spel().Tabell()).front(),
                                          nullptr);
            f.Spel().Undo();
            QVERIFY(f.Spel().Has_Redos());
            QCOMPARE(f.Spel().Has_Undos(), !alltAngrat);
            f.Spel().Regler().GorDrag(f.Spel().Tabell(), *forsok, nullptr);
            f.Spel().KlarSpel();
            QVERIFY(!f.Spel().Has_Undos());
            QVERIFY(!f.Spel().Has_Redos());
            auto efter = f.Spel().Tabell().Kopia();
            QCOMPARE(f.Spel().Redo(), 0);
            QVERIFY(f.Spel().Tabell().Lika(*efter));
            return;
        }
        QFAIL("no deal with a move and a new attempt to make");
    }

    // The restarted deal is the table as it was dealt, new attempts and all undone, whatever
    // the random numbers are by then.
    void omgivGerSammaBord_data() { varjeSpel_data(); }
    void omgivGerSammaBord() {
        QFETCH(int, spelNr);
        QFETCH(unsigned, fro);
        Fall f(spelNr, fro);
        auto givet = f.Spel().Tabell().Kopia();
        GorDrag(f.Spel(), f.slump, 30, true);
        f.Spel().Undo();
        QVERIFY(givet->antalUndo == 0);
        std::srand(99);
        f.Spel().OmGiv(f.vy->Bounds());
        QVERIFY(f.Spel().Tabell().Lika(*givet));
        QVERIFY(!f.Spel().Has_Undos());
        QCOMPARE(f.Spel().AntalUndo(), 0);
        // A new deal after the restart is a deal of its own.
        f.Spel().NyttSpel(f.vy->Bounds());
        auto ny = f.Spel().Tabell().Kopia();
        GorDrag(f.Spel(), f.slump, 5);
        f.Spel().OmGiv(f.vy->Bounds());
        QVERIFY(f.Spel().Tabell().Lika(*ny));
    }

    // The tables a redo checks its move on are the same however the window lays them out.
    void sammaStallningSerForbiLaggningen_data() { varjeSpel_data(); }
    void sammaStallningSerForbiLaggningen() {
        QFETCH(int, spelNr);
        QFETCH(unsigned, fro);
        Fall f(spelNr, fro);
        auto fore = f.Spel().Tabell().Kopia();
        f.vy->resize(1100, 900);
        QCoreApplication::sendPostedEvents();
        QVERIFY(!f.Spel().Tabell().Lika(*fore));
        QVERIFY(SammaStallning(*fore, f.Spel().Tabell()));
        GorDrag(f.Spel(), f.slump, 1);
        if (f.Spel().Tabell().undoLista.empty())
            return;
        QVERIFY(!SammaStallning(*fore, f.Spel().Tabell()));
    }
};

QTEST_MAIN(GorOmTest)
#include "test_gorom.moc"
