#pragma once

#include "support/Gester.h"

#include <QTest>

#include <cstdlib>
#include <functional>
#include <vector>

// Cases that every game's tests take, each game with its own steps.

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
