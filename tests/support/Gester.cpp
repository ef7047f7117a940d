#include "support/Gester.h"

#include "games/Spelfabrik.h"
#include "platform/QtGeometry.h"

#include <QTest>

#include <cstdlib>

namespace {

QPoint Punkt(BPoint p) {
    return ToQPoint(p);
}

// A pointer move with the left button held: what QTest::mouseMove does not send itself.
void FlyttaMedKnapp(FjolkView& view, QPoint p) {
    QMouseEvent move(QEvent::MouseMove, QPointF(p), view.mapToGlobal(QPointF(p)), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&view, &move);
}

} // namespace

BPoint Mitt(BRect r) {
    return BPoint((r.left + r.right) / 2, (r.top + r.bottom) / 2);
}

void KlickaPa(FjolkView& view, BPoint p) {
    QTest::mousePress(&view, Qt::LeftButton, Qt::NoModifier, Punkt(p));
    QTest::mouseRelease(&view, Qt::LeftButton, Qt::NoModifier, Punkt(p));
}

void DraFranTill(FjolkView& view, BPoint fran, BPoint till) {
    QPoint start = Punkt(fran);
    QTest::mousePress(&view, Qt::LeftButton, Qt::NoModifier, start);
    // Past the click square first, so the gesture is a drag wherever it ends.
    FlyttaMedKnapp(view, start + QPoint(12, 12));
    FlyttaMedKnapp(view, Punkt(till));
    QTest::mouseRelease(&view, Qt::LeftButton, Qt::NoModifier, Punkt(till));
}

void TryckOchDra(FjolkView& view, BPoint fran, BPoint till) {
    QTest::mousePress(&view, Qt::LeftButton, Qt::NoModifier, Punkt(fran));
    FlyttaMedKnapp(view, Punkt(till));
}

void TryckSkakaSlapp(FjolkView& view, BPoint p) {
    QPoint start = Punkt(p);
    QTest::mousePress(&view, Qt::LeftButton, Qt::NoModifier, start);
    for (QPoint d : {QPoint(3, 0), QPoint(-4, 2), QPoint(4, -4), QPoint(0, 4)})
        FlyttaMedKnapp(view, start + d);
    QTest::mouseRelease(&view, Qt::LeftButton, Qt::NoModifier, start + QPoint(2, 1));
}

void DraOchSlappUtanfor(FjolkView& view, BPoint fran) {
    QPoint start = Punkt(fran);
    QPoint ute(view.width() + 50, view.height() + 50);
    QTest::mousePress(&view, Qt::LeftButton, Qt::NoModifier, start);
    FlyttaMedKnapp(view, start + QPoint(12, 12));
    FlyttaMedKnapp(view, ute);
    QTest::mouseRelease(&view, Qt::LeftButton, Qt::NoModifier, ute);
}

void GorGest(FjolkView& view, const Gest& gest) {
    if (gest.klick)
        KlickaPa(view, gest.fran);
    else
        DraFranTill(view, gest.fran, gest.till);
}

std::unique_ptr<FjolkView> VyMedSpel(int spelNr, unsigned seed, int bredd, int hojd, bool animera) {
    auto view = std::make_unique<FjolkView>();
    view->resize(bredd, hojd);
    view->show();
    std::srand(seed);
    view->SattSpel(SkapaSpel(spelNr, view.get(), view->Bounds(), animera));
    return view;
}

std::vector<LuckaBild> Bordet(const Patiens& spel) {
    return Bordet(spel.Tabell());
}

std::vector<LuckaBild> Bordet(const SpelBord& bord) {
    std::vector<LuckaBild> bild;
    for (const Lucka& lucka : bord.luckor)
        bild.push_back({lucka.Tom(), lucka.Tom() ? -1 : int(lucka.GeKort().KortFarg()),
                        lucka.Tom() ? -1 : lucka.GeKort().KortValor(), lucka.GeOkPos(),
                        lucka.GeKantLinje(), lucka.GePos()});
    return bild;
}

void TommaBordet(Patiens& spel) {
    for (Lucka& l : spel.LuckorForTest())
        l.TaBortKort();
    spel.Tabell().undoLista.clear();
}

void LaggKort(Patiens& spel, int lucka, kortfarg farg, int valor) {
    Kort k(farg, valor, BRect(0, 0, 0, 0));
    k.NyPos(spel.FramsidaFor(k));
    spel.LuckorForTest()[lucka].TaEmotKort(k);
}

void Behandla() {
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}
