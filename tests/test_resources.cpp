#include "cards/KortUtSeende.h"
#include "platform/QtGeometry.h"

#include <QGuiApplication>
#include <QTest>

#include <cstdlib>

namespace {

// The opaque pixels of one symbol's place, and their bounding box.
struct Tackning {
    int opaka = 0;
    int yta = 0;
    QRect ram;
};

Tackning Tacker(const QImage& bild, QRect plats) {
    Tackning t;
    for (int y = plats.top(); y <= plats.bottom(); ++y)
        for (int x = plats.left(); x <= plats.right(); ++x) {
            ++t.yta;
            if (qAlpha(bild.pixel(x, y)) >= 128) {
                ++t.opaka;
                t.ram |= QRect(x, y, 1, 1);
            }
        }
    return t;
}

} // namespace

class KortBildTest : public QObject {
    Q_OBJECT

private slots:
    void bildenHarSinStorlekOchAlfa() {
        QImage bild(QStringLiteral(":/Kort.png"));
        QVERIFY(!bild.isNull());
        QCOMPARE(bild.size(), QSize(161, 46));
        QVERIFY(bild.hasAlphaChannel());
    }

    void bakgrundenArHeltGenomskinlig() {
        QImage bild = LaddaKortSymboler();
        for (int y = 0; y < 46; ++y)
            for (int x : {40, 80, 120, 160})
                QCOMPARE(qAlpha(bild.pixel(x, y)), 0);
        for (int x = 0; x < 161; ++x) {
            QCOMPARE(qAlpha(bild.pixel(x, 0)), 0);
            QCOMPARE(qAlpha(bild.pixel(x, 45)), 0);
        }
    }

    void varjeSymbolFyllerSinPlatsISinFarg() {
        QImage bild = LaddaKortSymboler().convertToFormat(QImage::Format_ARGB32);
        const auto& platser = SymbolRektanglar();
        for (int s = 0; s < 4; ++s) {
            QRect plats = ToQRect(platser[s]);
            QRgb mitt = bild.pixel(plats.center());
            QCOMPARE(qAlpha(mitt), 255);
            if (s < 2) {
                QVERIFY(qRed(mitt) > 180);
                QVERIFY(qGreen(mitt) < 40 && qBlue(mitt) < 40);
            } else {
                QVERIFY(qRed(mitt) < 40 && qGreen(mitt) < 40 && qBlue(mitt) < 40);
            }
            Tackning t = Tacker(bild, plats);
            QVERIFY2(plats.contains(t.ram), qPrintable(QString::number(s)));

            QVERIFY2(t.ram.width() >= 37 && t.ram.height() >= 41,
                     qPrintable(QStringLiteral("%1x%2").arg(t.ram.width()).arg(t.ram.height())));
            double andel = double(t.opaka) / t.yta;
            QVERIFY2(andel > 0.35 && andel < 0.90, qPrintable(QString::number(andel)));
        }
    }

    // The drawing with twice the pixels, for screens with more than one pixel to a unit:
    // the same symbols in the same places, each edge twice as finely drawn.
    void symbolernaMedDubbeltSaMangaPixlar() {
        QImage ett = LaddaKortSymboler(1.0).convertToFormat(QImage::Format_ARGB32);
        QImage tva = LaddaKortSymboler(2.0).convertToFormat(QImage::Format_ARGB32);
        QCOMPARE(ett.devicePixelRatio(), 1.0);
        QCOMPARE(tva.devicePixelRatio(), 2.0);
        QCOMPARE(tva.size(), QSize(322, 92));
        QCOMPARE(LaddaKortSymboler(1.5).devicePixelRatio(), 2.0);
        const auto& platser = SymbolRektanglar();
        for (int s = 0; s < 4; ++s) {
            QRect plats = ToQRect(platser[s]);
            QRect dubbel = TillPixlar(plats, 2.0);
            Tackning t1 = Tacker(ett, plats);
            Tackning t2 = Tacker(tva, dubbel);
            QVERIFY(dubbel.contains(t2.ram));
            double andel1 = double(t1.opaka) / t1.yta;
            double andel2 = double(t2.opaka) / t2.yta;
            QVERIFY2(std::abs(andel1 - andel2) < 0.03,
                     qPrintable(QStringLiteral("%1 %2").arg(andel1).arg(andel2)));
            QVERIFY(std::abs(t2.ram.left() - 2 * t1.ram.left()) <= 2);
            QVERIFY(std::abs(t2.ram.right() - (2 * t1.ram.right() + 1)) <= 2);
            QVERIFY(std::abs(t2.ram.top() - 2 * t1.ram.top()) <= 2);
            QVERIFY(std::abs(t2.ram.bottom() - (2 * t1.ram.bottom() + 1)) <= 2);
            QCOMPARE(tva.pixel(dubbel.center()), ett.pixel(plats.center()));
        }
    }
};

QTEST_MAIN(KortBildTest)
#include "test_resources.moc"
