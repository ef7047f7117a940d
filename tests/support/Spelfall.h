#pragma once

#include "platform/AttributeStore.h"
#include "support/Gester.h"
#include "support/Testbord.h"

#include <QTemporaryDir>
#include <QTest>

#include <cstdlib>
#include <functional>
#include <initializer_list>
#include <vector>

// Cases that every game's tests take, each game with its own steps.

// A game test's start: the hiscore tables of the run go to `mapp`, a folder of its own, set
// before anything opens the store; and the factory deals game `spelNr` as a Spel with
// `antalLuckor` slots.
template <typename Spel> void BorjaSpeltest(QTemporaryDir& mapp, int spelNr, int antalLuckor) {
    QVERIFY(mapp.isValid());
    AttributeStore::SetDataDirectory(mapp.path().toStdString());
    QVERIFY(AttributeStore::Program().InitCheck() == B_OK);
    Testbord<Spel> b(spelNr, 1);
    QVERIFY(b.spel != nullptr);
    QCOMPARE(b.spel->SpelNummer(), spelNr);
    QCOMPARE(static_cast<int>(b.L().size()), antalLuckor);
}

// Where a layout is to put one slot.
struct Plats {
    int lucka;
    BRect pos;
};

// Each listed slot lies at its place; a failure names the slot and both rectangles.
inline void LiggerVid(const std::vector<Lucka>& luckor, std::initializer_list<Plats> platser) {
    auto text = [](BRect r) {
        return QStringLiteral("(%1, %2, %3, %4)").arg(r.left).arg(r.top).arg(r.right).arg(r.bottom);
    };
    for (const Plats& p : platser) {
        BRect r = luckor[p.lucka].GePos();
        QVERIFY2(r == p.pos, qPrintable(QStringLiteral("slot %1 lies at %2, not %3")
                                            .arg(p.lucka)
                                            .arg(text(r), text(p.pos))));
    }
}

// The click square most games allow: a pointer 4 pixels left of or above the press has
// left it, 4 pixels right of or below it has not.
inline void KlickRutanArOsymmetrisk(const Patiens& spel) {
    BPoint p(100, 100);
    QVERIFY(spel.LamnatKlickRutan(p, BPoint(96, 100)));
    QVERIFY(!spel.LamnatKlickRutan(p, BPoint(104, 100)));
    QVERIFY(spel.LamnatKlickRutan(p, BPoint(100, 96)));
    QVERIFY(!spel.LamnatKlickRutan(p, BPoint(100, 104)));
}

// One step a test takes on a table: what it does, and what it answers (an undo's records
// left, say; 0 when there is nothing to answer).
template <typename Bord> using Steg = std::function<int(Bord&)>;

// A new deal from the random numbers `fro`, as a step.
template <typename Bord> Steg<Bord> NyGiv(unsigned fro) {
    return [fro](Bord& b) {
        std::srand(fro);
        b.spel->NyttSpel(b.vy->Bounds());
        return 0;
    };
}

// The same game dealt from the same seed with animation off (`utan`) and on (`med`) takes
// the same steps to the same tables: after the deal and after each step the two are alike
// slot for slot (cards, marks and places) and counter for counter, and the step answered the
// same on both. Each step starts from the same random numbers on both. The tables without
// animation go to `bilder`, the dealt one first, when the test asks for them.
template <typename Bord>
void SammaMedOchUtanAnimering(Bord& utan, Bord& med, const std::vector<Steg<Bord>>& steg,
                              std::vector<std::vector<LuckaBild>>* bilder = nullptr) {
    auto lika = [&](int efterSteg) {
        QVERIFY2(Bordet(*med.spel) == Bordet(*utan.spel),
                 qPrintable(QStringLiteral("the slots after step %1").arg(efterSteg)));
        QVERIFY2(med.spel->Tabell().Lika(utan.spel->Tabell()),
                 qPrintable(QStringLiteral("the counters after step %1").arg(efterSteg)));
        if (bilder)
            bilder->push_back(Bordet(*utan.spel));
    };
    lika(0);
    for (size_t i = 0; i < steg.size() && !QTest::currentTestFailed(); ++i) {
        const int fro = std::rand();
        std::srand(static_cast<unsigned>(fro));
        const int svarUtan = steg[i](utan);
        std::srand(static_cast<unsigned>(fro));
        const int svarMed = steg[i](med);
        QCOMPARE(svarMed, svarUtan);
        lika(static_cast<int>(i) + 1);
    }
}
