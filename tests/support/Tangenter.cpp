#include "support/Tangenter.h"

#include <QCoreApplication>
#include <QTest>

void Tangent(FjolkView& view, Qt::Key key, int ganger) {
    for (int i = 0; i < ganger; ++i)
        QTest::keyClick(&view, key);
}

void TillPlats(FjolkView& view, int k) {
    // Right steps over the places the frame does not come to.
    Tangent(view, Qt::Key_Home);
    for (int steg = 0; steg < k && view.Tangenterna().Fokus() < k; ++steg)
        Tangent(view, Qt::Key_Right);
}

QString GorMedTangenter(FjolkView& view, const Gest& gest) {
    std::optional<TangentPlan> plan = PlanFor(view.Tangenterna().Platserna(), gest);
    if (!plan)
        return QStringLiteral("no place for the gesture");
    TillPlats(view, plan->kalla);
    if (view.Tangenterna().Fokus() != plan->kalla)
        return QStringLiteral("the frame did not reach place %1").arg(plan->kalla);
    if (plan->klick) {
        // A covered card is clicked by taking the cards from it and putting them down
        // where they were; where nothing can be taken, Enter clicks the pile.
        if (plan->grepp != 0)
            Tangent(view, Qt::Key_Period, plan->grepp + 1);
        Tangent(view, Qt::Key_Return);
    } else {
        Tangent(view, Qt::Key_Period, plan->grepp + 1);
        if (!view.Tangenterna().Haller())
            return QStringLiteral("nothing was taken at place %1").arg(plan->kalla);
        int steg = plan->mal - plan->kalla;
        Tangent(view, steg > 0 ? Qt::Key_Right : Qt::Key_Left, std::abs(steg));
        Tangent(view, Qt::Key_Return);
    }
    QCoreApplication::sendPostedEvents();
    return {};
}

QString SpelaMedTangenter(FjolkView& view, const std::vector<Drag>& dragen) {
    for (const Drag& d : dragen) {
        Patiens& spel = *view.Spel();
        std::optional<Gest> gest = spel.GestFor(d);
        if (!gest)
            return QStringLiteral("no gesture for ") + QString::fromStdString(Beskriv(d));
        auto vantat = spel.Tabell().Kopia();
        spel.Regler().GorDrag(*vantat, d, nullptr);
        spel.Regler().KlarSpel(*vantat);
        QString fel = GorMedTangenter(view, *gest);
        if (!fel.isEmpty())
            return QString::fromStdString(Beskriv(d)) + ": " + fel;
        if (!spel.Tabell().Lika(*vantat))
            return QStringLiteral("the keys did not make ") + QString::fromStdString(Beskriv(d));
    }
    return {};
}
