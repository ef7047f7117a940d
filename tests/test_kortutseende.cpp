#include "cards/KortSpel.h"
#include "cards/KortUtSeende.h"
#include "platform/QtGeometry.h"

#include <QFontInfo>
#include <QGuiApplication>
#include <QPainter>
#include <QSet>
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

// In-between pixels of a black label or edge on the grey card, against its black ones: the
// fewer to each black pixel, the sharper the drawing.
double Mellantoner(const QImage& bild, QRect q) {
    int svarta = 0;
    int mellan = 0;
    for (int y = q.top(); y <= q.bottom(); ++y)
        for (int x = q.left(); x <= q.right(); ++x) {
            QRgb p = bild.pixel(x, y);
            if (qAlpha(p) != 255)
                continue;
            int r = qRed(p);
            svarta += r < 16;
            mellan += r >= 16 && r < 204;
        }
    return svarta == 0 ? 1e9 : double(mellan) / svarta;
}

// The smallest rectangle around the red ink inside `q`.
QRect RodRuta(const QImage& bild, QRect q) {
    QRect ruta;
    for (int y = q.top(); y <= q.bottom(); ++y)
        for (int x = q.left(); x <= q.right(); ++x) {
            QRgb p = bild.pixel(x, y);
            if (qAlpha(p) > 0 && qRed(p) > 200 && qGreen(p) < 120)
                ruta |= QRect(x, y, 1, 1);
        }
    return ruta;
}

// Where the red label `text` lies when drawn alone with its base point at `bas`.
QRect EtikettensRuta(const QString& text, Utseende utseende, QSize storlek, QPoint bas) {
    QImage bild(storlek, QImage::Format_ARGB32_Premultiplied);
    bild.fill(QColor(220, 220, 220));
    QPainter p(&bild);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);
    p.setFont(KortEtikettFont(utseende));
    p.setPen(QColor(255, 0, 0));
    p.drawText(QPointF(bas), text);
    p.end();
    return RodRuta(bild, bild.rect());
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

    // Stripe k of a back is 5 k in from its edge and takes the next three draws as its red,
    // green and blue, back after back.
    void baksidornasRanderFarFargernaITur() {
        const int w = 44;
        const int h = 83;
        std::srand(7);
        KortBilder b = RitaKortUtSeende(Utseende::B, w, h, QImage());
        std::srand(7);
        for (int i = 0; i < 4; ++i)
            for (int k = 0; k < w / 5; ++k) {
                int r = std::rand() % 255;
                int g = std::rand() % 255;
                int bla = std::rand() % 255;
                if (k > 3)
                    continue;
                QRgb p = b.bild.pixel(13 * w + 5 * k + 3, i * h + h / 2);
                QCOMPARE(QColor(p), QColor(r, g, bla));
                QCOMPARE(QColor(b.bild.pixel(13 * w + w - 5 * k - 2, i * h + h / 2)),
                         QColor(r, g, bla));
            }
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

    // Two pixels to a unit: the same rectangles in view units, a picture with twice the
    // pixels each way, and every face where its rectangle says.
    void vidKvotTvaSammaRektanglarIDubbeltSaMangaPixlar() {
        for (Utseende u : {Utseende::A, Utseende::B}) {
            KortBilder ett = RitaKortUtSeende(u, 44, 83, LaddaKortSymboler(1.0), 1.0);
            KortBilder tva = RitaKortUtSeende(u, 44, 83, LaddaKortSymboler(2.0), 2.0);
            QCOMPARE(tva.ram, ett.ram);
            QCOMPARE(tva.kortPos, ett.kortPos);
            QCOMPARE(tva.baksidor, ett.baksidor);
            QCOMPARE(tva.bild.devicePixelRatio(), 2.0);
            QCOMPARE(tva.bild.size(), ett.bild.size() * 2);
            QCOMPARE(tva.bild.deviceIndependentSize(), QSizeF(ett.bild.size()));
            // The ace of spades: grey inside, clear of symbols and labels, black edges exactly
            // on its pixels, nothing beside it.
            QRect ess = TillPixlar(ToQRect(tva.kortPos[39]), 2.0);
            QCOMPARE(ess, QRect(2, 3 * 166 + 2, 88, 166));
            int mittY = ess.center().y();
            QCOMPARE(QColor(tva.bild.pixel(ess.left() + 6, ess.top() + 72)), QColor(220, 220, 220));
            QCOMPARE(qAlpha(tva.bild.pixel(ess.left() - 1, mittY)), 0);
            QCOMPARE(tva.bild.pixel(ess.left(), mittY), qRgb(0, 0, 0));
            QCOMPARE(tva.bild.pixel(ess.left() + 1, mittY), qRgb(0, 0, 0));
            QCOMPARE(tva.bild.pixel(ess.right() - 1, mittY), qRgb(0, 0, 0));
            QCOMPARE(tva.bild.pixel(ess.right(), mittY), qRgb(0, 0, 0));
        }
    }

    // A card's outline is a unit wide in both: one black pixel at one pixel to a unit, two
    // at two, with no pixel of in-between grey beside it along the straight edge.
    void kanternaArLikaSkarpaVidKvotTva() {
        for (qreal kvot : {1.0, 2.0}) {
            KortBilder b = RitaKortUtSeende(Utseende::A, 60, 100, QImage(), kvot);
            for (int kort : {0, 17, 51}) {
                QRect px = TillPixlar(ToQRect(b.kortPos[kort]), kvot);
                const int bredd = static_cast<int>(kvot);
                for (int y = px.top() + px.height() / 3; y < px.top() + px.height() * 2 / 3; ++y) {
                    for (int i = 0; i < bredd; ++i) {
                        QCOMPARE(b.bild.pixel(px.left() + i, y), qRgb(0, 0, 0));
                        QCOMPARE(b.bild.pixel(px.right() - i, y), qRgb(0, 0, 0));
                    }
                    QCOMPARE(b.bild.pixel(px.left() + bredd, y), qRgb(220, 220, 220));
                    QCOMPARE(b.bild.pixel(px.right() - bredd, y), qRgb(220, 220, 220));
                }
            }
        }
    }

    // The labels are drawn in the pixels, not enlarged: at two pixels to a unit a stroke's
    // soft edge stays about a pixel wide while the stroke grows twice as wide, so there are
    // far fewer in-between pixels to each black one than at one pixel to a unit. An
    // enlarged label would have as many or more.
    void etiketternaArSkarpaVidKvotTva() {
        const int w = 60;
        const int h = 100;
        for (Utseende u : {Utseende::A, Utseende::B}) {
            KortBilder ett = RitaKortUtSeende(u, w, h, QImage(), 1.0);
            KortBilder tva = RitaKortUtSeende(u, w, h, QImage(), 2.0);
            // The king of spades' label, bottom right (row 3, column 12), inside the card's
            // outline and its rounded corner.
            QRect etikett(12 * w + w - 32, 3 * h + h - 31, 25, 27);
            double vidEtt = Mellantoner(ett.bild, etikett);
            double vidTva = Mellantoner(tva.bild, TillPixlar(etikett, 2.0));
            double forstorad =
                Mellantoner(ett.bild.scaled(ett.bild.size() * 2, Qt::IgnoreAspectRatio,
                                            Qt::SmoothTransformation),
                            TillPixlar(etikett, 2.0));
            QVERIFY2(vidTva < 0.7 * vidEtt && forstorad > 0.9 * vidEtt,
                     qPrintable(QStringLiteral("%1 %2 %3").arg(vidEtt).arg(vidTva).arg(forstorad)));
        }
    }

    // The faces at two pixels to a unit are the same table: wherever a unit and all its
    // neighbours are one colour at one pixel to a unit, its four pixels have that colour.
    void vidKvotTvaSammaBildIVynsEnheter() {
        for (Utseende u : {Utseende::A, Utseende::B}) {
            std::srand(3);
            KortBilder ett = RitaKortUtSeende(u, 44, 83, LaddaKortSymboler(1.0), 1.0);
            std::srand(3);
            KortBilder tva = RitaKortUtSeende(u, 44, 83, LaddaKortSymboler(2.0), 2.0);
            int lika = 0;
            int jamna = 0;
            for (int y = 1; y < ett.bild.height() - 1; ++y)
                for (int x = 1; x < ett.bild.width() - 1; ++x) {
                    QRgb c = ett.bild.pixel(x, y);
                    bool jamn = true;
                    for (int dy = -1; dy <= 1 && jamn; ++dy)
                        for (int dx = -1; dx <= 1 && jamn; ++dx)
                            jamn = ett.bild.pixel(x + dx, y + dy) == c;
                    if (!jamn)
                        continue;
                    ++jamna;
                    lika += tva.bild.pixel(2 * x, 2 * y) == c &&
                            tva.bild.pixel(2 * x + 1, 2 * y) == c &&
                            tva.bild.pixel(2 * x, 2 * y + 1) == c &&
                            tva.bild.pixel(2 * x + 1, 2 * y + 1) == c;
                }
            QVERIFY(jamna > ett.bild.width() * ett.bild.height() / 2);
            QVERIFY2(lika > jamna - jamna / 1000,
                     qPrintable(QStringLiteral("%1 of %2").arg(lika).arg(jamna)));
        }
    }

    // At a ratio that is not whole the faces still lie side by side, each filled to its
    // edges by its own blank card, some a pixel wider or taller than others.
    void vidKvotEnOchEnHalvFyllerVarjeKortSinaPixlar() {
        KortBilder b = RitaKortUtSeende(Utseende::A, 45, 83, QImage(), 1.5);
        QCOMPARE(b.bild.devicePixelRatio(), 1.5);
        QCOMPARE(b.bild.size(), TillPixlar(ToQRect(b.ram), 1.5).size());
        QSet<int> bredder;
        for (int kort = 0; kort < 52; ++kort) {
            QRect px = TillPixlar(ToQRect(b.kortPos[kort]), 1.5);
            bredder.insert(px.width());
            int y = px.center().y();
            auto mork = [](QRgb p) { return qAlpha(p) >= 250 && qRed(p) < 110; };
            QVERIFY(mork(b.bild.pixel(px.left(), y)));
            QVERIFY(mork(b.bild.pixel(px.right(), y)));
            // Past the rounded corner; a J's tail comes down over the bottom edge.
            QVERIFY(mork(b.bild.pixel(px.left() + 26, px.top())));
            QVERIFY(kort % 13 == 10 || mork(b.bild.pixel(px.left() + 26, px.bottom())));
            // Clear of the symbol (top left) and the label (bottom right).
            QCOMPARE(QColor(b.bild.pixel(px.left() + 33, px.top() + 70)), QColor(220, 220, 220));
        }
        QCOMPARE(bredder.size(), 2);
    }

    // The picture given to draw into is drawn over whole when it has the size: the same
    // faces as in a new one, in the same memory; one of another size is not used.
    void enBildAvSammaStorlekRitasOver() {
        QImage symboler = LaddaKortSymboler(2.0);
        std::srand(4);
        KortBilder ny = RitaKortUtSeende(Utseende::B, 44, 83, symboler, 2.0);
        QImage gammal = RitaKortUtSeende(Utseende::A, 44, 83, symboler, 2.0).bild;
        const uchar* minne = gammal.constBits();
        std::srand(4);
        KortBilder igen = RitaKortUtSeende(Utseende::B, 44, 83, symboler, 2.0, std::move(gammal));
        QCOMPARE(igen.bild.constBits(), minne);
        QCOMPARE(igen.bild, ny.bild);
        QCOMPARE(igen.bild.devicePixelRatio(), 2.0);

        QImage annan = RitaKortUtSeende(Utseende::B, 60, 100, symboler, 2.0).bild;
        std::srand(4);
        KortBilder storre = RitaKortUtSeende(Utseende::B, 44, 83, symboler, 2.0, annan);
        QCOMPARE(storre.bild, ny.bild);
        QCOMPARE(annan.size(), QSize(2 * (14 * 60 + 6), 2 * (4 * 100 + 6)));
    }

    // The label's base point: w - 25 in, less 15 for "10" and 5 for "A", "D" and "K"; h - 5
    // down, or one below the symbol's height (44) on a card too low for that; in look B a
    // second label at (5, 30), "10" 3 further left.
    void etiketternasBaspunkter() {
        struct Fall {
            int v;
            QString text;
            int x;
        };
        for (Utseende u : {Utseende::A, Utseende::B})
            for (int h : {46, 100}) {
                const int w = 90;
                KortBilder b = RitaKortUtSeende(u, w, h, QImage());
                const int y = h == 46 ? 44 : 95;
                for (const Fall& f : {Fall{0, "A", 60}, Fall{1, "2", 65}, Fall{9, "10", 50},
                                      Fall{11, "D", 60}, Fall{12, "K", 60}}) {
                    const QRect hoger(f.v * w + 46, 2, w - 47, h - 3);
                    const QSize storlek(w, h);
                    QCOMPARE(RodRuta(b.bild, hoger).translated(-f.v * w, 0),
                             EtikettensRuta(f.text, u, storlek, QPoint(f.x, y)));
                    const QRect vanster(f.v * w + 1, 2, 44, h - 3);
                    QRect ovre = RodRuta(b.bild, vanster).translated(-f.v * w, 0);
                    if (u == Utseende::A)
                        QVERIFY(ovre.isNull());
                    else
                        QCOMPARE(ovre,
                                 EtikettensRuta(f.text, u, storlek, QPoint(f.v == 9 ? 2 : 5, 30)));
                }
            }
    }

    // Each suit's symbol, out of its own rectangle of the picture, lands at its own size: top
    // left in look A; top right and bottom left in look B.
    void symbolernasPlatser() {
        QImage symboler(161, 46, QImage::Format_ARGB32_Premultiplied);
        symboler.fill(Qt::transparent);
        {
            QPainter p(&symboler);
            for (int s = 0; s < 4; ++s)
                p.fillRect(ToQRect(SymbolRektanglar()[s]), QColor(0, 40 * s, 255));
        }
        auto blaRuta = [](const QImage& bild, QRect q) {
            QRect ruta;
            for (int y = q.top(); y <= q.bottom(); ++y)
                for (int x = q.left(); x <= q.right(); ++x) {
                    QRgb p = bild.pixel(x, y);
                    if (qAlpha(p) == 255 && qBlue(p) > 200 && qRed(p) < 50)
                        ruta |= QRect(x, y, 1, 1);
                }
            return ruta;
        };
        const int w = 90;
        const int h = 100;
        KortBilder a = RitaKortUtSeende(Utseende::A, w, h, symboler);
        KortBilder b = RitaKortUtSeende(Utseende::B, w, h, symboler);
        for (int s = 0; s < 4; ++s)
            for (int v : {0, 9, 12}) {
                const int l = v * w;
                const int t = s * h;
                // The face: columns l + 1 to l + w, rows t + 1 to t + h.
                const QRect ovre(l + 1, t + 1, w, h / 2);
                const QRect nedre(l + 1, t + 1 + h / 2, w, h / 2);
                QCOMPARE(blaRuta(a.bild, ovre), QRect(l + 1, t + 1, 39, 43));
                QVERIFY(blaRuta(a.bild, nedre).isNull());
                QCOMPARE(blaRuta(b.bild, ovre), QRect(l + w - 39, t + 1, 40, 43));
                QCOMPARE(blaRuta(b.bild, nedre), QRect(l + 1, t + h + 1 - 43, 39, 43));
                QCOMPARE(qGreen(a.bild.pixel(l + 20, t + 20)), 40 * s);
                QCOMPARE(qGreen(b.bild.pixel(l + w - 20, t + 20)), 40 * s);
                QCOMPARE(qGreen(b.bild.pixel(l + 20, t + h - 20)), 40 * s);
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
