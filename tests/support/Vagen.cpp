#include "support/Vagen.h"

#include "platform/AttributeStore.h"
#include "support/Brevlada.h"
#include "support/Gester.h"

#include <QTest>

#include <cstring>
#include <optional>

void SpelaVagen(FjolkView& vy, const std::vector<Drag>& vag) {
    Patiens& spel = *vy.Spel();
    for (const Drag& d : vag) {
        std::optional<Gest> gest = spel.GestFor(d);
        QVERIFY2(gest.has_value(), ("no gesture for " + Beskriv(d)).c_str());
        auto efter = spel.Tabell().Kopia();
        spel.Regler().GorDrag(*efter, d, nullptr);
        GorGest(vy, *gest);
        QVERIFY2(efter->Lika(spel.Tabell()), ("the gesture did not make " + Beskriv(d)).c_str());
    }
}

void VinnGenomVyn(FjolkView& vy, const std::vector<Drag>& vag, int kort, int giv) {
    Brevlada brevlada;
    vy.window()->installEventFilter(&brevlada);
    SpelaVagen(vy, vag);
    if (QTest::currentTestFailed())
        return;
    Patiens& spel = *vy.Spel();
    QVERIFY(spel.KlarSpel());
    QCoreApplication::sendPostedEvents();
    QCOMPARE(brevlada.klart, 1);
    AttributeStore::Program().RemoveAttr(HiscoreAttributNamn(spel.SpelNummer()).c_str());
    std::strcpy(vy.spelarNamn, "Vinnare");
    QCOMPARE(spel.AddHiscore(), 1);
    HiscoreLista tabell = LasHiscore(spel.SpelNummer());
    QCOMPARE(QByteArray(tabell[0].namn), QByteArray("Vinnare"));
    QCOMPARE(static_cast<int>(tabell[0].kort), kort);
    QCOMPARE(static_cast<int>(tabell[0].giv), giv);
    QCOMPARE(tabell[0].angra, 0);
}

HiscoreLista LasHiscore(int spelNr) {
    HiscoreLista tabell = TomTabell(HiscoreFamiljFor(spelNr));
    AttributeStore::Program().ReadAttr(HiscoreAttributNamn(spelNr).c_str(), B_RAW_TYPE, 0,
                                       tabell.data(), sizeof tabell);
    return tabell;
}
