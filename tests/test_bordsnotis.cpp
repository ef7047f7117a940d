#include "app/Spelhjalp.h"
#include "platform/QtGeometry.h"
#include "support/Hjalpkorning.h"

#include <QTest>

// The notice over the table hides no card and no button of a dealt table, in every game, in
// the window as it first opens a game, at 640 × 480, and large.

namespace {

// As long as a notice gets: a lost deal named by its longest kind of move.
const QString kLangText = QStringLiteral(
    "The move queen of diamonds from column 8 to free cell 4 lost this deal: it can no longer "
    "be won. Undo may help.");

QString Text(const QRect& r) {
    return QStringLiteral("(%1, %2, %3 x %4)").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
}

} // namespace

class TestBordsnotis : public QObject {
    Q_OBJECT

private slots:
    void notisenDoljerIngetKort_data() {
        QTest::addColumn<int>("spel");
        QTest::addColumn<QSize>("storlek");
        for (int spel = 0; spel < kAntalSpel; ++spel) {
            QTest::addRow("%s, as opened", SpelNamn(spel)) << spel << QSize();
            QTest::addRow("%s, 640 x 480", SpelNamn(spel)) << spel << QSize(640, 480);
            QTest::addRow("%s, 1280 x 1024", SpelNamn(spel)) << spel << QSize(1280, 1024);
        }
    }
    void notisenDoljerIngetKort() {
        QFETCH(int, spel);
        QFETCH(QSize, storlek);
        Korning k;
        k.win->show();
        QVERIFY(QTest::qWaitForWindowExposed(k.win.get()));
        k.Starta(spel, 5);
        if (storlek.isValid())
            k.win->resize(storlek);
        Behandla();
        Bordsnotis& notis = *k.Hjalp().notis;
        notis.Visa(kLangText);
        Behandla();
        QRect ruta = notis.Ruta();
        QVERIFY(!ruta.isEmpty());
        QVERIFY2(k.Vy().rect().contains(ruta), qPrintable(Text(ruta)));
        int kort = 0;
        for (const Lucka& l : k.Spel().Luckor()) {
            if (l.Tom())
                continue;
            ++kort;
            QRect r = ToQRect(l.GePos());
            QVERIFY2(!r.intersects(ruta),
                     qPrintable(Text(ruta) + QStringLiteral(" over ") + Text(r)));
        }
        QVERIFY(kort > 0);
        for (const Patiens::KnappPlats& knapp : k.Spel().Knappar())
            QVERIFY2(!ToQRect(knapp.ruta).intersects(ruta), knapp.namn.c_str());
        // At 640 x 480 and larger the table leaves room clear of all that is drawn on it,
        // counters and the outlines of empty places too: the box covers only the green.
        if (storlek.isValid()) {
            const QImage& ram = k.Vy().OffBitmap();
            const QRgb gron = qRgb(0, 160, 0);
            const qreal kvot = ram.devicePixelRatio();
            for (int y = ruta.top(); y <= ruta.bottom(); ++y)
                for (int x = ruta.left(); x <= ruta.right(); ++x)
                    QVERIFY2((ram.pixel(static_cast<int>(x * kvot), static_cast<int>(y * kvot)) |
                              0xff000000u) == gron,
                             qPrintable(Text(ruta)));
        }
        notis.Rensa();
        QVERIFY(notis.Ruta().isEmpty());
    }

    // A window too small to leave the notice room beside the cards still shows it whole when
    // the smallest type fits in the view, and else shows its beginning: the box never rises
    // above the view's top edge.
    void notisenISmattFonsterBorjarISynhall_data() {
        QTest::addColumn<int>("spel");
        QTest::addColumn<QSize>("storlek");
        for (int spel : {0, 5, 8}) {
            QTest::addRow("%s, 100 x 100", SpelNamn(spel)) << spel << QSize(100, 100);
            QTest::addRow("%s, 200 x 150", SpelNamn(spel)) << spel << QSize(200, 150);
        }
    }
    void notisenISmattFonsterBorjarISynhall() {
        QFETCH(int, spel);
        QFETCH(QSize, storlek);
        Korning k;
        k.win->show();
        QVERIFY(QTest::qWaitForWindowExposed(k.win.get()));
        k.Starta(spel, 5);
        k.win->resize(storlek);
        Behandla();
        Bordsnotis& notis = *k.Hjalp().notis;
        notis.Visa(kLangText);
        Behandla();
        const QRect vy = k.Vy().rect();
        const QRect ruta = notis.Ruta();
        QVERIFY(!ruta.isEmpty());
        QVERIFY2(ruta.top() >= 0 && ruta.left() >= 0 && ruta.right() <= vy.right(),
                 qPrintable(Text(ruta) + QStringLiteral(" in ") + Text(vy)));
        QFontMetrics minsta(Bordsnotis::Font(11));
        int hojd =
            minsta
                .boundingRect(QRect(0, 0, vy.width() - 12 - 20, 10000), Qt::TextWordWrap, kLangText)
                .height() +
            12;
        if (hojd <= vy.height() - 12)
            QVERIFY2(vy.contains(ruta), qPrintable(Text(ruta) + QStringLiteral(" in ") + Text(vy)));
    }
};

QTEST_MAIN(TestBordsnotis)
#include "test_bordsnotis.moc"
