#include "app/DragFonster.h"
#include "app/FjolkView.h"
#include "platform/Meddelande.h"
#include "platform/QtGeometry.h"
#include "support/Brevlada.h"
#include "support/Gester.h"

#include <QApplication>
#include <QPainter>
#include <QTest>

#include <string>
#include <vector>

namespace {

struct ProvStallning : BordAv<ProvStallning> {
    bool operator==(const ProvStallning&) const = default;
};

// Rules that allow nothing: the view never asks for them.
const SpelRegler& IngaRegler() {
    static const ReglerAv<ProvStallning> regler(
        {[](ProvStallning&) {}, [](ProvStallning&) {}, [](ProvStallning&, Flygledare*) {},
         [](const ProvStallning&) { return std::vector<Drag>(); },
         [](ProvStallning&, const Drag&, Flygledare*) {},
         [](ProvStallning&, Flygledare*) { return 0; }, [](ProvStallning&) { return false; },
         [](const ProvStallning&) { return HiscoreResultat{}; }});
    return regler;
}

// A game that records what the view asks of it: one card in slot 0, picked up by a drag
// and put back by a click; finished whenever `klar` says so.
class ProvSpel : public PatiensPa<ProvStallning> {
public:
    std::vector<Lucka>& luckor = bord.luckor;

    explicit ProvSpel(FjolkView* view) {
        vy = view;
        luckor.assign(2, Lucka(BRect(0, 0, 0, 0), false));
        luckor[0].NyPos(BRect(100, 100, 143, 182));
        luckor[1].NyPos(BRect(300, 100, 343, 182));
        NyttSpel(vy->Bounds());
    }

    void NyttSpel(BRect bounds) override {
        luckor[0].TaEmotKort(Kort(SPADER, 1, BRect()));
        OmRaknaLuckaKort(bounds);
        VisaNyttSpel();
    }
    bool KlarSpel() override {
        logg.push_back("KlarSpel");
        return klar;
    }
    void RitaSpel(QPainter& p) override {
        for (const Lucka& l : luckor)
            RitaLucka(p, l);
    }
    void DelaUtKort() override {}
    void BlandaKort() override {}
    void OmRaknaLuckaKort(BRect) override {
        logg.push_back("OmRakna");
        KortUtSeende_A(44, 83);
        GeKortenFramsidor(luckor);
    }
    bool FlyttaKort(SpelYta* view, BPoint where) override {
        logg.push_back("FlyttaKort");
        if (!luckor[0].GePos().Contains(where) || luckor[0].Tom())
            return false;
        if (VantaPaAvsikt(view, where) == Avsikt::Klick) {
            logg.push_back("klick");
            return false;
        }
        valdaLuckor = {0};
        ByggDragBild(luckor, valdaLuckor, where);
        return true;
    }
    void Drop(SpelYta* view, int target) override {
        BPoint mus;
        uint32_t knappar = 1;
        view->GetMouse(&mus, &knappar);
        logg.push_back("Drop " + std::to_string(target) + " " + std::to_string(knappar));
        dropPunkt = mus;
    }
    void SpelKnapp(BPoint where) override {
        logg.push_back("SpelKnapp");
        knappPunkt = where;
    }
    void NyttForsok() override {}
    int Undo() override { return 0; }
    bool Has_Undos() override { return false; }
    int Redo() override { return 0; }
    bool Has_Redos() override { return false; }
    void OmGiv(BRect bounds) override { NyttSpel(bounds); }
    int AddHiscore() override { return 41; }
    int SpelNummer() const override { return 0; }
    const SpelRegler& Regler() const override { return IngaRegler(); }
    std::optional<Gest> GestFor(const Drag&) const override { return std::nullopt; }

    std::vector<std::string> logg;
    bool klar = false;
    BPoint knappPunkt;
    BPoint dropPunkt;
};

struct Bord {
    std::unique_ptr<FjolkView> view = std::make_unique<FjolkView>();
    ProvSpel* spel = nullptr;
    Brevlada brevlada;

    Bord() {
        view->resize(640, 480);
        view->show();
        auto nytt = std::make_unique<ProvSpel>(view.get());
        spel = nytt.get();
        view->SattSpel(std::move(nytt));
        view->installEventFilter(&brevlada);
        spel->logg.clear();
    }
    int Notiser() {
        QCoreApplication::sendPostedEvents();
        return brevlada.klart;
    }
};

using Logg = std::vector<std::string>;

} // namespace

class FjolkViewTest : public QObject {
    Q_OBJECT

private slots:
    void tryckPaTomtBordRitarOmOchFragarKnappenSedanKlart() {
        Bord b;
        QTest::mousePress(b.view.get(), Qt::LeftButton, Qt::NoModifier, QPoint(500, 400));
        QTest::mouseRelease(b.view.get(), Qt::LeftButton, Qt::NoModifier, QPoint(500, 400));
        QCOMPARE(b.spel->logg, (Logg{"FlyttaKort", "SpelKnapp", "KlarSpel"}));
        QCOMPARE(b.spel->knappPunkt, BPoint(500, 400));
        QVERIFY(!b.view->drar);
    }

    void slappEfterTryckUtanKortAnroparVarkenDropEllerKlart() {
        Bord b;
        DraFranTill(*b.view, BPoint(500, 400), BPoint(520, 420));
        QCOMPARE(b.spel->logg, (Logg{"FlyttaKort", "SpelKnapp", "KlarSpel"}));
    }

    void klickInomRutanArEttKlick() {
        Bord b;
        TryckSkakaSlapp(*b.view, BPoint(120, 140));
        QCOMPARE(b.spel->logg, (Logg{"FlyttaKort", "klick", "SpelKnapp", "KlarSpel"}));
        QCOMPARE(b.spel->knappPunkt, BPoint(120, 140));
    }

    void dragMedKortGerDropEnGangMedSlappunkten() {
        Bord b;
        DraFranTill(*b.view, BPoint(120, 140), BPoint(320, 150));
        QCOMPARE(b.spel->logg,
                 (Logg{"FlyttaKort", "SpelKnapp", "KlarSpel", "Drop -1 0", "KlarSpel"}));
        QCOMPARE(b.spel->dropPunkt, BPoint(320, 150));
        QCOMPARE(b.spel->knappPunkt, BPoint(120, 140));
        QVERIFY(!b.view->drar);
    }

    void slappUtanforVynGerOckssaEnDrop() {
        Bord b;
        DraOchSlappUtanfor(*b.view, BPoint(120, 140));
        QCOMPARE(std::count(b.spel->logg.begin(), b.spel->logg.end(), std::string("Drop -1 0")), 1);
        QCOMPARE(b.spel->dropPunkt, BPoint(640 + 50, 480 + 50));
    }

    void dragbildenArHalvgenomskinligMedGenomskinligaHorn() {
        Bord b;
        TryckOchDra(*b.view, BPoint(120, 140), BPoint(140, 160));
        QVERIFY(b.view->drar);
        QVERIFY(b.view->GestPagar());
        const QImage& bild = KortSpel::bmp;
        QCOMPARE(bild.size(), QSize(44, 83));
        QCOMPARE(KortSpel::point, BPoint(20, 40));
        QCOMPARE(qAlpha(bild.pixel(0, 0)), 0);
        QCOMPARE(qAlpha(bild.pixel(22, 41)), 200);
        QTest::mouseRelease(b.view.get(), Qt::LeftButton, Qt::NoModifier, QPoint(140, 160));
        QVERIFY(!b.view->GestPagar());
    }

    // The dragged card's picture is a window of its own under the pointer, with the hot
    // spot where the card was taken, above and left of the view as well as over it; the
    // release outside drops once and takes the picture away.
    void dragbildenFoljerPekarenUtanforVyn() {
        Bord b;
        TryckOchDra(*b.view, BPoint(120, 140), BPoint(140, 160));
        const DragFonster* drag = b.view->DragBild();
        QVERIFY(drag != nullptr);
        QVERIFY(drag->isVisible());
        QVERIFY(drag->isWindow());
        QCOMPARE(drag->geometry(), QRect(b.view->mapToGlobal(QPoint(120, 120)), QSize(44, 83)));
        // Its colours are the card's as it lies on the table; the window's opacity makes
        // it half transparent.
        QImage ansikte =
            KortSpel::mp_kortbitmap.copy(ToQRect(b.spel->FramsidaFor(Kort(SPADER, 1, BRect()))));
        QCOMPARE(drag->Bild().pixel(22, 41) & 0xffffffu, ansikte.pixel(22, 41) & 0xffffffu);
        QCOMPARE(drag->windowOpacity(), 200.0 / 255.0);
        QVERIFY(!drag->mask().contains(QPoint(0, 0)));
        QVERIFY(drag->mask().contains(QPoint(22, 41)));

        QPoint ute(-30, -50);
        QMouseEvent flytt(QEvent::MouseMove, QPointF(ute), b.view->mapToGlobal(QPointF(ute)),
                          Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(b.view.get(), &flytt);
        QCOMPARE(drag->geometry().topLeft(), b.view->mapToGlobal(ute - QPoint(20, 40)));
        QVERIFY(!drag->geometry().intersects(b.view->geometry()));
        QVERIFY(drag->isVisible());

        QTest::mouseRelease(b.view.get(), Qt::LeftButton, Qt::NoModifier, ute);
        QCOMPARE(std::count(b.spel->logg.begin(), b.spel->logg.end(), std::string("Drop -1 0")), 1);
        QCOMPARE(b.spel->dropPunkt, BPoint(-30, -50));
        QVERIFY(!drag->isVisible());
    }

    // While the game works, a press starts nothing, a resize waits, and the release of the
    // gesture under way comes once the work is over, dropping once.
    void medanSpeletArbetarVantarMusenOchStorleken() {
        Bord b;
        {
            FjolkView::Arbete arbete(*b.view);
            KlickaPa(*b.view, BPoint(500, 400));
            QVERIFY(!b.view->GestPagar());
            b.view->resize(600, 450);
            QVERIFY(b.spel->logg.empty());
        }
        QCOMPARE(b.spel->logg, (Logg{"OmRakna"}));
        b.spel->logg.clear();

        TryckOchDra(*b.view, BPoint(120, 140), BPoint(140, 160));
        QVERIFY(b.view->drar);
        b.spel->logg.clear();
        {
            FjolkView::Arbete arbete(*b.view);
            QTest::mouseRelease(b.view.get(), Qt::LeftButton, Qt::NoModifier, QPoint(300, 140));
            QVERIFY(b.spel->logg.empty());
            QVERIFY(b.view->drar);
        }
        QCOMPARE(b.spel->logg, (Logg{"Drop -1 0", "KlarSpel"}));
        QCOMPARE(b.spel->dropPunkt, BPoint(300, 140));
        QVERIFY(!b.view->GestPagar());
    }

    void gorHalvTransparantSatterAlfaUtomDarDenArNoll() {
        QImage bild(3, 1, QImage::Format_ARGB32_Premultiplied);
        bild.setPixel(0, 0, qRgba(0, 0, 0, 0));
        bild.setPixel(1, 0, qRgba(255, 0, 0, 255));
        bild.setPixel(2, 0, qRgba(10, 10, 10, 10));
        FjolkView::GorHalvTransparant(bild);
        QCOMPARE(qAlpha(bild.pixel(0, 0)), 0);
        QCOMPARE(qAlpha(bild.pixel(1, 0)), 200);
        QCOMPARE(qAlpha(bild.pixel(2, 0)), 200);
        QCOMPARE(qRed(bild.pixel(1, 0)), 200);
    }

    // Every button presses: the right one clicks and drags as the left one does, and a
    // second button pressed meanwhile neither starts nor ends the gesture.
    void varjeKnappTryckerOchDenForstaSlapper() {
        Bord b;
        QTest::mousePress(b.view.get(), Qt::RightButton, Qt::NoModifier, QPoint(500, 400));
        QTest::mouseRelease(b.view.get(), Qt::RightButton, Qt::NoModifier, QPoint(500, 400));
        QCOMPARE(b.spel->logg, (Logg{"FlyttaKort", "SpelKnapp", "KlarSpel"}));
        QCOMPARE(b.spel->knappPunkt, BPoint(500, 400));
        b.spel->logg.clear();

        QTest::mousePress(b.view.get(), Qt::MiddleButton, Qt::NoModifier, QPoint(120, 140));
        QMouseEvent flytt(QEvent::MouseMove, QPointF(320, 150),
                          b.view->mapToGlobal(QPointF(320, 150)), Qt::NoButton, Qt::MiddleButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(b.view.get(), &flytt);
        QVERIFY(b.view->drar);
        QTest::mousePress(b.view.get(), Qt::LeftButton, Qt::NoModifier, QPoint(320, 150));
        QTest::mouseRelease(b.view.get(), Qt::LeftButton, Qt::NoModifier, QPoint(320, 150));
        QVERIFY(b.view->drar);
        QCOMPARE(b.spel->logg, (Logg{"FlyttaKort", "SpelKnapp", "KlarSpel"}));
        QTest::mouseRelease(b.view.get(), Qt::MiddleButton, Qt::NoModifier, QPoint(320, 150));
        QCOMPARE(b.spel->logg,
                 (Logg{"FlyttaKort", "SpelKnapp", "KlarSpel", "Drop -1 0", "KlarSpel"}));
        QCOMPARE(b.spel->dropPunkt, BPoint(320, 150));
        QVERIFY(!b.view->drar);
        QVERIFY(!b.view->GestPagar());
    }

    void klartSpelEfterKlickGerEnNotis() {
        Bord b;
        b.spel->klar = true;
        KlickaPa(*b.view, BPoint(500, 400));
        QCOMPARE(b.Notiser(), 1);
    }

    void klartSpelEfterDropGerEnNotisForSlappet() {
        Bord b;
        TryckOchDra(*b.view, BPoint(120, 140), BPoint(140, 160));
        QCOMPARE(b.Notiser(), 0);
        b.spel->klar = true;
        QTest::mouseRelease(b.view.get(), Qt::LeftButton, Qt::NoModifier, QPoint(300, 140));
        QCOMPARE(b.Notiser(), 1);
    }

    void utanSpelGorTryckSlappOchRitaIngenting() {
        FjolkView view;
        view.resize(200, 200);
        view.show();
        KlickaPa(view, BPoint(50, 50));
        DraFranTill(view, BPoint(50, 50), BPoint(150, 150));
        view.repaint();
        QVERIFY(!view.drar);
        QVERIFY(!view.GestPagar());
        QVERIFY(view.Spel() == nullptr);
    }

    // The welcome screen never needs the play view's frame: it is made when first drawn on.
    void ramenGorsForstNarDenBehovs() {
        FjolkView view;
        view.resize(640, 400);
        view.show();
        QCoreApplication::processEvents();
        QCOMPARE(QColor(view.grab().toImage().pixel(5, 5)), QColor(0, 160, 0));
        QVERIFY(!view.HarRam());
        QCOMPARE(view.OffBitmap().size(), QSize(1280, 1024));
        QVERIFY(view.HarRam());
    }

    void bordetArGrontOchBuffertarnaHarStorstaStorleken() {
        Bord b;
        QCOMPARE(b.view->OffBitmap().size(), QSize(1280, 1024));
        // The plain table needs no background buffer; a picture gets one of the same size.
        QVERIFY(b.view->BackBitmap().isNull());
        QCOMPARE(QColor(b.view->OffBitmap().pixel(5, 5)), QColor(0, 160, 0));
        b.view->resize(1280, 1024);
        QCoreApplication::processEvents();
        QImage skarm = b.view->grab().toImage();
        QCOMPARE(skarm.size(), QSize(1280, 1024));
        QCOMPARE(QColor(skarm.pixel(1279, 1023)), QColor(0, 160, 0));
        QCOMPARE(b.view->OffBitmap().size(), QSize(1280, 1024));
    }

    void bakgrundsbildOchRensning() {
        Bord b;
        QImage bild(10, 10, QImage::Format_ARGB32);
        bild.fill(QColor(10, 20, 30));
        b.view->SattBakgrundsBild(bild);
        QCOMPARE(b.view->BackBitmap().size(), QSize(1280, 1024));
        QCOMPARE(QColor(b.view->OffBitmap().pixel(600, 10)), QColor(10, 20, 30));
        b.view->RensaBakgrundsBild();
        QCOMPARE(QColor(b.view->OffBitmap().pixel(600, 10)), QColor(0, 160, 0));
    }

    void tryckSparrenFinnsKvarOchNollstallsVidSlapp() {
        Bord b;
        b.view->tryckSparr = true;
        KlickaPa(*b.view, BPoint(500, 400));
        QVERIFY(b.spel->logg.empty());
        QVERIFY(!b.view->tryckSparr);
        KlickaPa(*b.view, BPoint(500, 400));
        QCOMPARE(b.spel->logg, (Logg{"FlyttaKort", "SpelKnapp", "KlarSpel"}));
    }

    void spelFramsidorDelasOchSlappsMedSistaSpelet() {
        {
            Bord a;
            QVERIFY(!KortSpel::mp_kortbitmap.isNull());
            QCOMPARE(KortSpel::antalSpel, 1);
            {
                Bord b;
                QCOMPARE(KortSpel::antalSpel, 2);
            }
            QCOMPARE(KortSpel::antalSpel, 1);
            QVERIFY(!KortSpel::mp_kortbitmap.isNull());
        }
        QCOMPARE(KortSpel::antalSpel, 0);
        QVERIFY(KortSpel::mp_kortbitmap.isNull());
        QVERIFY(KortSpel::mp_kortsrcbitmap.isNull());
    }
};

QTEST_MAIN(FjolkViewTest)
#include "test_view.moc"
