#include "app/DragFonster.h"
#include "app/FjolkView.h"
#include "app/Snapshot.h"
#include "games/Spelfabrik.h"
#include "platform/AttributeStore.h"
#include "platform/QtGeometry.h"
#include "support/Gester.h"

#include <QApplication>
#include <QFile>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

#include <cstdlib>
#include <memory>

// The table on screens with more than one device pixel to a unit. The test runs on two
// screens of its own, side by side: "hog" of device pixel ratio 2 (the first, so the one a
// window starts on and a picture is drawn for) and "lag" of ratio 1.

namespace {

constexpr int kFreecell = 8;
const QRect kHog(0, 0, 1600, 1200);
const QRect kLag(1600, 0, 1600, 1200);
const QRgb kGron = qRgb(0, 160, 0);
const QRgb kSvart = qRgb(0, 0, 0);
const QRgb kGra = qRgb(220, 220, 220);

// Two colours alike but for the rounding of the drag image's alpha.
bool Nastan(QRgb a, QRgb b) {
    return std::abs(qRed(a) - qRed(b)) <= 1 && std::abs(qGreen(a) - qGreen(b)) <= 1 &&
           std::abs(qBlue(a) - qBlue(b)) <= 1;
}

QScreen* Skarm(const char* namn) {
    for (QScreen* s : QGuiApplication::screens())
        if (s->name() == QLatin1String(namn))
            return s;
    return nullptr;
}

// Freecell dealt with seed 3 on a shown view of 640 × 480 whose window stands at `var`.
std::unique_ptr<FjolkView> VisadVy(QPoint var) {
    auto vy = std::make_unique<FjolkView>();
    vy->move(var);
    vy->resize(640, 480);
    vy->show();
    if (!QTest::qWaitForWindowExposed(vy.get()))
        return nullptr;
    std::srand(3);
    vy->SattSpel(SkapaSpel(kFreecell, vy.get(), vy->Bounds(), false));
    QCoreApplication::processEvents();
    return vy;
}

QImage Rgb(const QImage& bild) {
    QImage rgb = bild.convertToFormat(QImage::Format_RGB32);
    rgb.setDevicePixelRatio(1.0);
    return rgb;
}

// What the view has put on its screen, pixel for pixel.
QImage PaSkarmen(FjolkView& vy) {
    return Rgb(vy.grab().toImage());
}

// The frame's pixels under the view.
QImage Ramen(FjolkView& vy) {
    return Rgb(vy.OffBitmap().copy(TillPixlar(vy.rect(), vy.PixelKvot())));
}

// Whether `tva`, drawn at two pixels to a unit, shows the table `ett` shows at one:
// wherever a unit and its eight neighbours have one colour in `ett`, its four pixels have
// it in `tva`. `jamna` counts such units.
int OlikaEnheter(const QImage& ett, const QImage& tva, int* jamna) {
    int olika = 0;
    *jamna = 0;
    for (int y = 1; y < ett.height() - 1; ++y)
        for (int x = 1; x < ett.width() - 1; ++x) {
            QRgb c = ett.pixel(x, y);
            bool jamn = true;
            for (int dy = -1; dy <= 1 && jamn; ++dy)
                for (int dx = -1; dx <= 1 && jamn; ++dx)
                    jamn = ett.pixel(x + dx, y + dy) == c;
            if (!jamn)
                continue;
            ++*jamna;
            for (int dy = 0; dy < 2; ++dy)
                for (int dx = 0; dx < 2; ++dx)
                    if (tva.pixel(2 * x + dx, 2 * y + dy) != c) {
                        ++olika;
                        dy = dx = 2;
                    }
        }
    return olika;
}

} // namespace

class PixelKvotTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        QVERIFY(Skarm("hog") != nullptr && Skarm("lag") != nullptr);
        QCOMPARE(Skarm("hog")->devicePixelRatio(), 2.0);
        QCOMPARE(Skarm("lag")->devicePixelRatio(), 1.0);
        QCOMPARE(QGuiApplication::primaryScreen(), Skarm("hog"));
    }

    // A picture of a deal at ratio 2 has twice the pixels each way and shows the same
    // table; without a ratio it is drawn for the screen, here the one of ratio 2.
    void bildVidKvotTvaArDubbeltSaStorOchSammaBord() {
        QTemporaryDir dir;
        const std::string ett = dir.filePath(QStringLiteral("ett.png")).toStdString();
        const std::string tva = dir.filePath(QStringLiteral("tva.png")).toStdString();
        const std::string skarmens = dir.filePath(QStringLiteral("skarm.png")).toStdString();
        std::srand(3);
        QCOMPARE(SparaBild(kFreecell, 640, 480, ett, 1.0), 0);
        std::srand(3);
        QCOMPARE(SparaBild(kFreecell, 640, 480, tva, 2.0), 0);
        std::srand(3);
        QCOMPARE(SparaBild(kFreecell, 640, 480, skarmens), 0);
        QImage a = Rgb(QImage(QString::fromStdString(ett)));
        QImage b = Rgb(QImage(QString::fromStdString(tva)));
        QCOMPARE(a.size(), QSize(640, 480));
        QCOMPARE(b.size(), QSize(1280, 960));
        QCOMPARE(Rgb(QImage(QString::fromStdString(skarmens))), b);
        int jamna = 0;
        int olika = OlikaEnheter(a, b, &jamna);
        QVERIFY(jamna > 640 * 480 * 3 / 4);
        QVERIFY2(olika == 0, qPrintable(QStringLiteral("%1 of %2").arg(olika).arg(jamna)));
    }

    // Wherever a card's left or right edge meets the table at ratio 1 (a black pixel between
    // the green and the card's grey), the picture at ratio 2 has two black pixels beside the
    // green there, and no pixel of in-between grey.
    void kortensKanterArLikaSkarpaVidKvotTva() {
        QTemporaryDir dir;
        const std::string ett = dir.filePath(QStringLiteral("ett.png")).toStdString();
        const std::string tva = dir.filePath(QStringLiteral("tva.png")).toStdString();
        std::srand(3);
        QCOMPARE(SparaBild(kFreecell, 640, 480, ett, 1.0), 0);
        std::srand(3);
        QCOMPARE(SparaBild(kFreecell, 640, 480, tva, 2.0), 0);
        QImage a = Rgb(QImage(QString::fromStdString(ett)));
        QImage b = Rgb(QImage(QString::fromStdString(tva)));
        int kanter = 0;
        for (int y = 0; y < a.height(); ++y)
            for (int x = 1; x < a.width() - 1; ++x) {
                if (a.pixel(x, y) != kSvart)
                    continue;
                bool vanster = a.pixel(x - 1, y) == kGron && a.pixel(x + 1, y) == kGra;
                bool hoger = a.pixel(x + 1, y) == kGron && a.pixel(x - 1, y) == kGra;
                if (!vanster && !hoger)
                    continue;
                ++kanter;
                for (int dy = 0; dy < 2; ++dy) {
                    int by = 2 * y + dy;
                    QCOMPARE(b.pixel(2 * x, by), kSvart);
                    QCOMPARE(b.pixel(2 * x + 1, by), kSvart);
                    QCOMPARE(b.pixel(vanster ? 2 * x - 1 : 2 * x + 2, by), kGron);
                    QCOMPARE(b.pixel(vanster ? 2 * x + 2 : 2 * x - 1, by), kGra);
                }
            }
        // The sides of the eight columns' last cards, at least.
        QVERIFY2(kanter > 500, qPrintable(QString::number(kanter)));
    }

    // On a screen of ratio 2 the frame, the faces and the copy to the screen have its
    // pixels: what the view shows is its frame, one to one.
    void paSkarmenMedKvotTvaVisasRamenEttTillEtt() {
        auto vy = VisadVy(kHog.topLeft() + QPoint(50, 50));
        QVERIFY(vy != nullptr);
        QCOMPARE(vy->screen(), Skarm("hog"));
        QCOMPARE(vy->PixelKvot(), 2.0);
        QCOMPARE(vy->OffBitmap().size(), QSize(2560, 2048));
        QCOMPARE(vy->OffBitmap().devicePixelRatio(), 2.0);
        QCOMPARE(KortSpel::mp_kortbitmap.devicePixelRatio(), 2.0);
        QCOMPARE(KortSpel::mp_kortsrcbitmap.devicePixelRatio(), 2.0);
        // The plain table needs no background buffer.
        QVERIFY(vy->BackBitmap().isNull());
        QImage skarm = PaSkarmen(*vy);
        QCOMPARE(skarm.size(), QSize(1280, 960));
        QCOMPARE(skarm, Ramen(*vy));
        // A part of it repainted is copied as well, not stretched.
        vy->repaint(QRect(101, 37, 211, 150));
        QCOMPARE(PaSkarmen(*vy), Ramen(*vy));
    }

    // The game's places are in view units on any screen: the same deal lies the same on a
    // screen of ratio 2 as on one of ratio 1.
    void bordetArDetSammaIVynsEnheter() {
        auto hog = VisadVy(kHog.topLeft() + QPoint(50, 50));
        QVERIFY(hog != nullptr);
        std::vector<LuckaBild> vidTva = Bordet(*hog->Spel());
        BRect kort = hog->Spel()->kortPos[13];
        hog.reset();
        auto lag = VisadVy(kLag.topLeft() + QPoint(50, 50));
        QVERIFY(lag != nullptr);
        QCOMPARE(lag->PixelKvot(), 1.0);
        QCOMPARE(KortSpel::mp_kortbitmap.devicePixelRatio(), 1.0);
        QCOMPARE(Bordet(*lag->Spel()), vidTva);
        QCOMPARE(lag->Spel()->kortPos[13], kort);
    }

    // A view moved to a screen of another ratio makes its buffers and cards anew for it, and
    // the table stays as it lay; a move while the game works waits for the work to end.
    void flyttTillSkarmMedAnnanKvotRitarOm() {
        auto vy = VisadVy(kLag.topLeft() + QPoint(50, 50));
        QVERIFY(vy != nullptr);
        QCOMPARE(vy->PixelKvot(), 1.0);
        QCOMPARE(vy->OffBitmap().size(), QSize(1280, 1024));
        std::vector<LuckaBild> bordet = Bordet(*vy->Spel());

        vy->move(kHog.topLeft() + QPoint(60, 60));
        QTRY_COMPARE(vy->screen(), Skarm("hog"));
        QCoreApplication::processEvents();
        QCOMPARE(vy->PixelKvot(), 2.0);
        QCOMPARE(vy->OffBitmap().size(), QSize(2560, 2048));
        QCOMPARE(KortSpel::mp_kortbitmap.devicePixelRatio(), 2.0);
        QCOMPARE(Bordet(*vy->Spel()), bordet);
        QCOMPARE(PaSkarmen(*vy), Ramen(*vy));

        {
            FjolkView::Arbete arbete(*vy);
            vy->move(kLag.topLeft() + QPoint(60, 60));
            QTRY_COMPARE(vy->screen(), Skarm("lag"));
            QCoreApplication::processEvents();
            QCOMPARE(vy->PixelKvot(), 2.0);
        }
        QCOMPARE(vy->PixelKvot(), 1.0);
        QCOMPARE(vy->OffBitmap().size(), QSize(1280, 1024));
        QCOMPARE(KortSpel::mp_kortbitmap.devicePixelRatio(), 1.0);
        QCOMPARE(Bordet(*vy->Spel()), bordet);
        QCoreApplication::processEvents();
        QCOMPARE(PaSkarmen(*vy), Ramen(*vy));
    }

    // The dragged cards' picture has the screen's pixels, its window the cards' size in view
    // units, and its shape cut in view units.
    void dragbildenHarSkarmensPixlar() {
        auto vy = VisadVy(kHog.topLeft() + QPoint(50, 50));
        QVERIFY(vy != nullptr);
        const std::vector<Lucka>& luckor = vy->Spel()->Luckor();
        int lyft = -1;
        for (size_t i = 0; i < luckor.size() && lyft < 0; ++i) {
            if (luckor[i].Tom())
                continue;
            BRect r = luckor[i].GePos();
            BPoint botten((r.left + r.right) / 2, r.bottom - 5);
            TryckOchDra(*vy, botten, botten + BPoint(30, 30));
            if (vy->drar && vy->Spel()->valdaLuckor == std::vector<int>{static_cast<int>(i)})
                lyft = static_cast<int>(i);
            QTest::mouseRelease(vy.get(), Qt::LeftButton, Qt::NoModifier,
                                ToQPoint(botten + BPoint(30, 30)));
            if (lyft < 0)
                continue;
            TryckOchDra(*vy, botten, botten + BPoint(30, 30));
        }
        QVERIFY(lyft >= 0);
        QVERIFY(vy->drar);
        const Lucka& lucka = luckor[lyft];
        QSize storlek = ToQRect(lucka.GePos()).size();
        QCOMPARE(KortSpel::bmp.devicePixelRatio(), 2.0);
        QCOMPARE(KortSpel::bmp.size(), storlek * 2);
        const DragFonster* drag = vy->DragBild();
        QVERIFY(drag != nullptr && drag->isVisible());
        QCOMPARE(drag->size(), storlek);
        QCOMPARE(drag->Bild().size(), storlek * 2);
        QVERIFY(!drag->mask().contains(QPoint(0, 0)));
        QVERIFY(drag->mask().contains(QPoint(storlek.width() / 2, storlek.height() / 2)));
        // Its pixels are the face's own, at full strength.
        QRect ansikte = TillPixlar(ToQRect(lucka.GeKort().GePos()), 2.0);
        int lika = 0;
        for (int y = 0; y < ansikte.height(); ++y)
            for (int x = 0; x < ansikte.width(); ++x) {
                QRgb kort = KortSpel::mp_kortbitmap.pixel(ansikte.topLeft() + QPoint(x, y));
                lika += qAlpha(kort) == 255 && Nastan(drag->Bild().pixel(x, y), kort);
                QVERIFY(qAlpha(kort) != 255 || Nastan(drag->Bild().pixel(x, y), kort));
            }
        QVERIFY(lika > ansikte.width() * ansikte.height() * 9 / 10);
        QCOMPARE(const_cast<DragFonster*>(drag)->grab().toImage().size(), storlek * 2);
        QTest::mouseRelease(vy.get(), Qt::LeftButton, Qt::NoModifier, QPoint(600, 400));
        QVERIFY(!vy->drar);
    }

    // A background picture is stretched once, into the buffer's own pixels, made when the
    // picture is chosen.
    void bakgrundsbildenFarSkarmensPixlar() {
        auto vy = VisadVy(kHog.topLeft() + QPoint(50, 50));
        QVERIFY(vy != nullptr);
        QVERIFY(vy->BackBitmap().isNull());
        QImage bild(2, 1, QImage::Format_RGB32);
        bild.setPixel(0, 0, qRgb(200, 0, 0));
        bild.setPixel(1, 0, qRgb(0, 0, 200));
        vy->SattBakgrundsBild(bild);
        QCOMPARE(vy->BackBitmap().size(), QSize(2560, 2048));
        QCOMPARE(vy->BackBitmap().devicePixelRatio(), 2.0);
        // Stretched over the 640 units of the table: the left half red, the right blue.
        QCOMPARE(QColor(vy->OffBitmap().pixel(2, 950)).red(), 200);
        QCOMPARE(QColor(vy->OffBitmap().pixel(1277, 950)).blue(), 200);
        QCoreApplication::processEvents();
        QCOMPARE(PaSkarmen(*vy), Ramen(*vy));
    }
};

int main(int argc, char* argv[]) {
    QTemporaryDir dir;
    QFile skarmar(dir.filePath(QStringLiteral("skarmar.json")));
    if (!skarmar.open(QIODevice::WriteOnly))
        return 1;
    skarmar.write(QStringLiteral(R"({"screens": [
        {"name": "hog", "x": %1, "y": %2, "width": %3, "height": %4, "dpr": 2},
        {"name": "lag", "x": %5, "y": %6, "width": %7, "height": %8, "dpr": 1}]})")
                      .arg(kHog.x())
                      .arg(kHog.y())
                      .arg(kHog.width())
                      .arg(kHog.height())
                      .arg(kLag.x())
                      .arg(kLag.y())
                      .arg(kLag.width())
                      .arg(kLag.height())
                      .toUtf8());
    skarmar.close();
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + skarmar.fileName().toLocal8Bit());
    qunsetenv("QT_SCALE_FACTOR");
    QApplication app(argc, argv);
    AttributeStore::SetDataDirectory(dir.path().toStdString());
    PixelKvotTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_pixelkvot.moc"
