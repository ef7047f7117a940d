#include "app/FjolkView.h"
#include "app/Tangentbord.h"
#include "games/Spelfabrik.h"
#include "platform/AttributeStore.h"
#include "support/Gester.h"
#include "support/Tangenter.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

#include <cstdlib>
#include <random>

// The table played with keys only: every move the rules list can be made by the keys, and
// makes the same table as the rules' own move; the focus frame stays on a place a player
// can act on through undo, a new deal and a resize; Escape puts taken cards back.

namespace {

std::unique_ptr<SpelBord> EfterDrag(const SpelRegler& regler, const SpelBord& fore,
                                    const Drag& drag, unsigned fro) {
    auto kopia = fore.Kopia();
    std::srand(fro);
    regler.GorDrag(*kopia, drag, nullptr);
    regler.KlarSpel(*kopia);
    return kopia;
}

QString PlanText(FjolkView& vy, const std::optional<TangentPlan>& plan) {
    if (!plan)
        return {};
    const std::vector<Plats>& platser = vy.Tangenterna().Platserna();
    QString text = QStringLiteral(" (from %1, card %2")
                       .arg(QString::fromStdString(platser[plan->kalla].namn))
                       .arg(plan->grepp);
    if (!plan->klick)
        text += QStringLiteral(" to ") + QString::fromStdString(platser[plan->mal].namn);
    return text + QLatin1Char(')');
}

// Every listed move, made by keys from the table `fore`, each from that table again.
QString VarjeDragMedTangenter(FjolkView& vy, std::mt19937& slump) {
    Patiens& spel = *vy.Spel();
    const SpelRegler& regler = spel.Regler();
    auto fore = spel.Tabell().Kopia();
    QString fel;
    for (const Drag& d : regler.LagligaDrag(*fore)) {
        spel.Tabell().TaFran(*fore);
        vy.InvalidateOffscreen();
        std::optional<Gest> gest = spel.GestFor(d);
        // A press on a card over the stock makes two moves as one; the keys make them one
        // after the other.
        if (!gest || (d.slag == DragSlag::Knapp && d.fran >= 0))
            continue;
        unsigned fro = slump();
        std::srand(fro);
        std::optional<TangentPlan> plan = PlanFor(vy.Tangenterna().Platserna(), *gest);
        QString vagen = PlanText(vy, plan);
        QString varfor = GorMedTangenter(vy, *gest);
        if (varfor.isEmpty() && !EfterDrag(regler, *fore, d, fro)->Lika(spel.Tabell()))
            varfor = QStringLiteral("the keys made something else");
        if (!varfor.isEmpty()) {
            fel = QString::fromStdString(Beskriv(d)) + ": " + varfor + vagen;
            break;
        }
    }
    spel.Tabell().TaFran(*fore);
    vy.InvalidateOffscreen();
    return fel;
}

// A move the rules list, made by the rules, to reach other tables; never a new attempt,
// which shuffles.
bool SlumpDrag(Patiens& spel, std::mt19937& slump) {
    std::vector<Drag> dragen = spel.Regler().LagligaDrag(spel.Tabell());
    std::erase_if(dragen, [](const Drag& d) { return d.slag == DragSlag::NyttForsok; });
    if (dragen.empty())
        return false;
    const Drag& d = dragen[std::uniform_int_distribution<size_t>(0, dragen.size() - 1)(slump)];
    spel.Regler().GorDrag(spel.Tabell(), d, nullptr);
    spel.Regler().KlarSpel(spel.Tabell());
    return true;
}

void VarjeSpel() {
    QTest::addColumn<int>("spelNr");
    for (int nr = 0; nr < kAntalSpel; ++nr)
        if (SpelFinns(nr))
            QTest::addRow("%s", SpelNamn(nr)) << nr;
}

} // namespace

class TangentbordTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { AttributeStore::SetDataDirectory(dir.path().toStdString()); }

    void varjeDragMedTangenter_data() { VarjeSpel(); }
    void varjeDragMedTangenter() {
        QFETCH(int, spelNr);
        for (unsigned seed : {1u, 2u}) {
            auto vy = VyMedSpel(spelNr, seed, 1280, 1024);
            std::mt19937 slump(seed);
            for (int steg = 0; steg < 24; ++steg) {
                if (steg % 6 == 0) {
                    QString fel = VarjeDragMedTangenter(*vy, slump);
                    QVERIFY2(
                        fel.isEmpty(),
                        qPrintable(QStringLiteral("seed %1 step %2: ").arg(seed).arg(steg) + fel));
                }
                if (!SlumpDrag(*vy->Spel(), slump))
                    break;
                vy->InvalidateOffscreen();
            }
        }
    }

private:
    QTemporaryDir dir;
};

QTEST_MAIN(TangentbordTest)
#include "test_tangentbord.moc"
