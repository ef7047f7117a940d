#include "cards/KortSpel.h"
#include "cards/KortUtSeende.h"
#include "platform/QtGeometry.h"

#include <QFontInfo>
#include <QGuiApplication>
#include <QPainter>
#include <QTest>

#include <cstdlib>

namespace {

bool SammaPixlar(const QImage& a, const QImage& b, BRect r) {
    QRect q = ToQRect(r);
    return a.copy(q) == b.copy(q);
}

bool HarFarg(const QImage& bild, BRect r, bool rod) {
    QRect q = ToQRect(r);
    for (int y = q.top(); y <= q.bottom(); ++y)
        for (int x = q.left(); x <= q.right(); ++x) {
            QRgb p = bild.pixel(x, y);
            if (qAlpha(p) < 255)
                continue;
            if (rod && qRed(p) > 200 && qGreen(p) < 60 && qBlue(p) < 60)
                return true;
            if (!rod && qRed(p) < 40 && qGreen(p) < 40 && qBlue(p) < 40)
                return true;
        }
    return false;
}

// Dark pixels of a black label inside `q`.
int SvartaPixlar(const QImage& bild, QRect q) {
    int n = 0;
    for (int y = q.top(); y <= q.bottom(); ++y)
        for (int x = q.left(); x <= q.right(); ++x)
            if (qAlpha(bild.pixel(x, y)) == 255 && qRed(bild.pixel(x, y)) < 128)
                ++n;
    return n;
}

// The label `text` drawn alone on a plain grey card of w × h with its base point at
// `bas`, in `font`.
QImage EnEtikett(const QString& text, QFont font, int w, int h, QPoint bas) {
    QImage bild(w, h, QImage::Format_ARGB32_Premultiplied);
    bild.fill(QColor(220, 220, 220));
    QPainter p(&bild);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);
    p.setFont(font);
    p.setPen(Qt::black);
    p.drawText(QPointF(bas), text);
    return bild;
}

} // namespace

class KortUtSeendeTest : public QObject {
    Q_OBJECT

private slots:
    void bildensRamOchKungenAvFarg3() {
        KortBilder b = RitaKortUtSeende(Utseende::A, 44, 83, LaddaKortSymboler());
        QCOMPARE(b.ram, BRect(0, 0, 621, 337));
        QCOMPARE(b.bild.size(), QSize(622, 338));
        QCOMPARE(b.kortPos[51], BRect(529, 250, 572, 332));
    }

    void femtiotvaRektanglarIOrdning() {
        for (auto [w, h] : {std::pair{44, 83}, std::pair{120, 170}}) {
            for (Utseende u : {Utseende::A, Utseende::B}) {
                KortBilder b = RitaKortUtSeende(u, w, h, LaddaKortSymboler());
                QCOMPARE(int(b.kortPos.size()), 52);
                for (int s = 0; s < 4; ++s)
                    for (int v = 0; v < 13; ++v)
                        QCOMPARE(b.kortPos[13 * s + v],
                                 BRect(v * w + 1, s * h + 1, v * w + w, (s + 1) * h));
                for (int i = 0; i < 4; ++i)
                    QCOMPARE(b.baksidor[i], BRect(13 * w + 1, i * h + 1, 13 * w + w, (i + 1) * h));
            }
        }
    }

    void sammaFramsidorMenNyaBaksidorAndraGangen() {
        QImage symboler = LaddaKortSymboler();
        std::srand(5);
        KortBilder forsta = RitaKortUtSeende(Utseende::B, 44, 83, symboler);
        KortBilder andra = RitaKortUtSeende(Utseende::B, 44, 83, symboler);
        for (const BRect& r : forsta.kortPos)
            QVERIFY(SammaPixlar(forsta.bild, andra.bild, r));
        QVERIFY(!SammaPixlar(forsta.bild, andra.bild, forsta.baksidor[0]));
    }

    void bildenBorjarGenomskinligOchKortenArGra() {
        KortBilder b = RitaKortUtSeende(Utseende::A, 60, 100, LaddaKortSymboler());
        QCOMPARE(qAlpha(b.bild.pixel(0, 0)), 0);
        QCOMPARE(qAlpha(b.bild.pixel(b.bild.width() - 1, b.bild.height() - 1)), 0);
        // The middle of the ace of hearts, clear of symbol and label.
        QCOMPARE(QColor(b.bild.pixel(30, 60)), QColor(220, 220, 220));
    }

    void symbolOchEtikettISinaHorn() {
        QImage symboler = LaddaKortSymboler();
        KortBilder a = RitaKortUtSeende(Utseende::A, 60, 100, symboler);
        KortBilder b = RitaKortUtSeende(Utseende::B, 60, 100, symboler);
        // Look A: the heart top left; look B: top right and bottom left, not top left.
        QVERIFY(HarFarg(a.bild, BRect(5, 5, 30, 35), true));
        QVERIFY(!HarFarg(b.bild, BRect(44, 44, 52, 52), true));
        QVERIFY(HarFarg(b.bild, BRect(30, 5, 58, 35), true));
        QVERIFY(HarFarg(b.bild, BRect(5, 65, 30, 95), true));
        // Clubs (row 2) are black in both corners of look B.
        QVERIFY(HarFarg(b.bild, BRect(30, 205, 58, 235), false));
        // The labels: red on the hearts' bottom right, black on the spades'.
        QVERIFY(HarFarg(a.bild, BRect(30, 70, 59, 95), true));
        QVERIFY(HarFarg(a.bild, BRect(30, 370, 59, 395), false));
    }

    void randDrasTreGangerPerRandOchBaksida() {
        QImage symboler = LaddaKortSymboler();
        std::srand(1);
        RitaKortUtSeende(Utseende::A, 44, 83, symboler);
        int efter = std::rand();
        std::srand(1);
        for (int i = 0; i < 4 * (44 / 5) * 3; ++i)
            std::rand();
        QCOMPARE(std::rand(), efter);
    }

    void etiketternaArDenRakaStilen() {
        for (Utseende u : {Utseende::A, Utseende::B}) {
            QFont font = KortEtikettFont(u);
            QCOMPARE(font.pixelSize(), u == Utseende::A ? 32 : 26);
            QCOMPARE(font.weight(), QFont::Normal);
            QFontInfo info(font);
            QCOMPARE(info.family(), QStringLiteral("DejaVu Sans"));
            QVERIFY(!info.bold());
        }
    }

    void kungensEtikettHarDenRakaStilensPixlar() {
        const int w = 60;
        const int h = 100;
        // The king of spades, row 3, column 12: its label's base point is (w − 30, h − 5).
        // Without the symbols, which in look B would lie under the label.
        const QPoint bas(w - 30, h - 5);
        const QRect etikett(bas.x() - 2, bas.y() - 30, 26, 32);
        for (Utseende u : {Utseende::A, Utseende::B}) {
            KortBilder b = RitaKortUtSeende(u, w, h, QImage());
            int kort = SvartaPixlar(b.bild, etikett.translated(12 * w, 3 * h));
            QFont rak(QStringLiteral("DejaVu Sans"));
            rak.setPixelSize(u == Utseende::A ? 32 : 26);
            QFont fet = rak;
            fet.setBold(true);
            int iRak = SvartaPixlar(EnEtikett(QStringLiteral("K"), rak, w, h, bas), etikett);
            int iFet = SvartaPixlar(EnEtikett(QStringLiteral("K"), fet, w, h, bas), etikett);
            QVERIFY2(iFet > iRak + iRak / 5,
                     qPrintable(QStringLiteral("%1 %2").arg(iRak).arg(iFet)));
            QVERIFY2(
                std::abs(kort - iRak) <= iRak / 20,
                qPrintable(
                    QStringLiteral("card %1, plain %2, bold %3").arg(kort).arg(iRak).arg(iFet)));
        }
    }

    void utanSymbolbildRitasKortenAnda() {
        KortBilder b = RitaKortUtSeende(Utseende::B, 44, 83, QImage());
        QCOMPARE(int(b.kortPos.size()), 52);
        QCOMPARE(QColor(b.bild.pixel(22, 41)), QColor(220, 220, 220));
    }

    // The table's texts are drawn at 24 pixels, in a face narrow enough that each fits where
    // it is drawn: "Next Deal" and the next-try texts on their buttons (120 and 140 pixels,
    // the text 5 in), " Last" and "Round" on the narrowest card (70 pixels).
    void bordetsTexterRymsDarDeRitas() {
        QFont font = KortSpel::BordsFont();
        QCOMPARE(font.pixelSize(), 24);
        QVERIFY(!font.bold());
        QFontMetrics m(font);
        QVERIFY(5 + m.horizontalAdvance(QStringLiteral("Next Deal")) <= 120);
        QVERIFY(5 + m.horizontalAdvance(QStringLiteral("   Next try")) <= 140);
        QVERIFY(5 + m.horizontalAdvance(QStringLiteral("    Last try")) <= 140);
        QVERIFY(m.horizontalAdvance(QStringLiteral(" Last")) <= 70);
        QVERIFY(m.horizontalAdvance(QStringLiteral("Round")) <= 70);
        QVERIFY(15 + m.horizontalAdvance(QStringLiteral("Free")) <= 70);
    }
};

QTEST_MAIN(KortUtSeendeTest)
#include "test_kortutseende.moc"
