#include "app/FjolkView.h"
#include "cards/KortSpel.h"
#include "games/Idioten.h"
#include "games/IdiotenRegler.h"
#include "platform/QtGeometry.h"
#include "platform/SystemTime.h"
#include "support/Gester.h"

#include <QPainter>
#include <QTest>

#include <vector>

// The three card flights on a view of our own and a clock of our own: where the card is at
// each step, when the flight ends, what its start place shows, and that what the card
// covered on its way comes back exactly.

namespace {

constexpr int kBredd = 400;
constexpr int kHojd = 300;

// A view that keeps its off-screen frame, `kvot` pixels to a unit each way, and notes every
// rectangle put on the screen, with the frame as it was then.
class ProvYta : public SpelYta {
public:
    explicit ProvYta(qreal kvot = 1.0)
        : frame(TillPixlar(QRect(0, 0, kBredd, kHojd), kvot).size(),
                QImage::Format_ARGB32_Premultiplied) {
        frame.setDevicePixelRatio(kvot);
        Monster();
    }

    // A background no two neighbouring pixels share, so any pixel not put back shows.
    void Monster() {
        for (int y = 0; y < frame.height(); ++y)
            for (int x = 0; x < frame.width(); ++x)
                frame.setPixel(x, y, Bakgrund(x, y));
    }
    static QRgb Bakgrund(int x, int y) { return qRgb((x * 7) % 256, (y * 5) % 256, (x + y) % 256); }

    BRect Bounds() const override { return BRect(0, 0, kBredd - 1, kHojd - 1); }
    void GetMouse(BPoint* where, uint32_t* buttons) const override {
        *where = BPoint(0, 0);
        *buttons = 0;
    }
    QImage& OffBitmap() override { return frame; }
    void RitaBakgrund(BRect rect) override {
        QRect r = TillPixlar(ToQRect(rect), frame.devicePixelRatio()).intersected(frame.rect());
        for (int y = r.top(); y <= r.bottom(); ++y)
            for (int x = r.left(); x <= r.right(); ++x)
                frame.setPixel(x, y, Bakgrund(x, y));
    }
    void VisaNu(BRect rect) override {
        visade.push_back(rect);
        if (sparaBilder)
            bilder.push_back(frame.copy());
    }
    void RitaOm(Patiens&) override {}
    void InvalidateOffscreen() override {}
    const char* SpelarNamn() const override { return "Prov"; }

    QImage frame;
    std::vector<BRect> visade;
    std::vector<QImage> bilder;
    bool sparaBilder = true;
};

// Each reading of the clock is `steg` microseconds after the one before.
struct ProvKlocka {
    explicit ProvKlocka(bigtime_t steg) {
        static bigtime_t nu;
        static bigtime_t d;
        nu = 5;
        d = steg;
        SattKlocka([] { return nu += d; });
    }
    ~ProvKlocka() { SattKlocka({}); }
};

// Whether the picture `bild` lies in `frame` with its top-left corner at `var` (the
// transparent corners of a card let the frame show through, so only opaque pixels count).
bool LiggerPa(const QImage& frame, const QImage& bild, QPoint var) {
    int opaka = 0;
    for (int y = 0; y < bild.height(); ++y)
        for (int x = 0; x < bild.width(); ++x) {
            QRgb p = bild.pixel(x, y);
            if (qAlpha(p) != 255)
                continue;
            ++opaka;
            if (frame.pixel(var.x() + x, var.y() + y) != p)
                return false;
        }
    return opaka > 0;
}

// Every pixel outside `utom` is the background pattern.
bool BaraBakgrundUtom(const QImage& frame, QRect utom) {
    for (int y = 0; y < frame.height(); ++y)
        for (int x = 0; x < frame.width(); ++x)
            if (!utom.contains(x, y) && frame.pixel(x, y) != ProvYta::Bakgrund(x, y))
                return false;
    return true;
}

struct Flygning {
    KortSpel spel;
    ProvYta yta;
    BRect fran{20, 30, 63, 113};
    BRect till{300, 180, 343, 263};

    explicit Flygning(qreal kvot = 1.0) : yta(kvot) {
        KortSpel::pixelKvot = kvot;
        spel.KortUtSeende_B(44, 84);
    }
    ~Flygning() { KortSpel::pixelKvot = 1.0; }
    Flygning(const Flygning&) = delete;
    Flygning& operator=(const Flygning&) = delete;
    QImage Ansikte(int index) const {
        return KortSpel::mp_kortbitmap.copy(
            TillPixlar(ToQRect(spel.kortPos[index]), KortSpel::pixelKvot));
    }
    QPoint Steg(int s) const {
        BPoint f = fran.LeftTop();
        BPoint v = till.LeftTop() - f;
        return QPoint(static_cast<int>(f.x + v.x * static_cast<float>(s) / 400.0f),
                      static_cast<int>(f.y + v.y * static_cast<float>(s) / 400.0f));
    }
};

} // namespace

class AnimeringTest : public QObject {
    Q_OBJECT

private slots:
    // With the clock a four-hundredth of the flight apart at each reading, every one of
    // the 400 steps is drawn, on the straight line, and then the card lands.
    void fyrahundraStegPaEnRakLinje() {
        Flygning f;
        ProvKlocka klocka(100);
        f.spel.SattAnimering(f.fran, f.till, f.spel.kortPos[0]);
        f.spel.TTAnimeraKort(&f.yta, 40000, false);
        // The start place, the first picture, 400 steps, the landing.
        QCOMPARE(int(f.yta.visade.size()), 403);
        QImage ess = f.Ansikte(0);
        QVERIFY(LiggerPa(f.yta.bilder[1], ess, f.Steg(0)));
        for (int s : {1, 2, 57, 200, 333, 399, 400})
            QVERIFY2(LiggerPa(f.yta.bilder[1 + s], ess, f.Steg(s)), qPrintable(QString::number(s)));
        QCOMPARE(f.Steg(200), QPoint(160, 105));
        QVERIFY(LiggerPa(f.yta.frame, ess, QPoint(300, 180)));
    }

    // The step is 400·e / tid in whole numbers: with the clock 3/400 of the flight apart,
    // steps 3, 6, ... 399 are drawn, and the flight ends once e passes tid.
    void stegetArHeltalOchFlygningenSlutarEfterTiden() {
        Flygning f;
        ProvKlocka klocka(300);
        f.spel.SattAnimering(f.fran, f.till, f.spel.kortPos[5]);
        f.spel.TTAnimeraKort(&f.yta, 40000, false);
        QCOMPARE(int(f.yta.visade.size()), 1 + 1 + 133 + 1);
        QImage sexa = f.Ansikte(5);
        QVERIFY(LiggerPa(f.yta.bilder[2], sexa, f.Steg(3)));
        QVERIFY(LiggerPa(f.yta.bilder[2 + 132], sexa, f.Steg(399)));
        QVERIFY(LiggerPa(f.yta.frame, sexa, QPoint(300, 180)));
    }

    // Readings that fall in a step already drawn draw nothing new.
    void sammaStegRitasEnGang() {
        Flygning f;
        ProvKlocka klocka(10);
        f.yta.sparaBilder = false;
        f.spel.SattAnimering(f.fran, f.till, f.spel.kortPos[5]);
        f.spel.TTAnimeraKort(&f.yta, 40000, false);
        QCOMPARE(int(f.yta.visade.size()), 403);
    }

    // A clock reading far past the flight's time lands the card at once.
    void enSenKlockaLanderarKortetDirekt() {
        Flygning f;
        ProvKlocka klocka(1000000);
        f.spel.SattAnimering(f.fran, f.till, f.spel.kortPos[5]);
        f.spel.TTAnimeraKort(&f.yta, 40000, false);
        QCOMPARE(int(f.yta.visade.size()), 3);
        QVERIFY(LiggerPa(f.yta.frame, f.Ansikte(5), QPoint(300, 180)));
    }

    // What the card covered comes back exactly: after the flight the frame is the
    // background everywhere but under the landed card.
    void detKortetTackteKommerTillbaka() {
        Flygning f;
        ProvKlocka klocka(100);
        f.spel.SattAnimering(f.fran, f.till, f.spel.kortPos[12]);
        f.spel.UUAnimeraKort(&f.yta, 40000, false);
        QVERIFY(BaraBakgrundUtom(f.yta.frame, ToQRect(f.till)));
        // Mid-flight only the card at its step differs from the background.
        QRect mitt(f.Steg(200), QSize(44, 84));
        QVERIFY(BaraBakgrundUtom(f.yta.bilder[1 + 200], mitt));
    }

    // TTAnimeraKort shows the card beneath at its place when one is given; the start place
    // is the background otherwise.
    void ttVisarKortetUnder() {
        Flygning f;
        ProvKlocka klocka(100);
        // A card of the pile fanned 30 pixels above the one that flies.
        BRect under(20, 0, 63, 83);
        f.spel.SattAnimering(f.fran, f.till, f.spel.kortPos[0], under, f.spel.kortPos[20]);
        f.spel.TTAnimeraKort(&f.yta, 40000, false);
        QVERIFY(LiggerPa(f.yta.bilder[0], f.Ansikte(20), QPoint(20, 0)));
        QVERIFY(LiggerPa(f.yta.frame, f.Ansikte(20), QPoint(20, 0)));
        QVERIFY(BaraBakgrundUtom(f.yta.frame, ToQRect(f.till).united(ToQRect(under))));

        Flygning utan;
        ProvKlocka klocka2(100);
        utan.spel.SattAnimering(utan.fran, utan.till, utan.spel.kortPos[0]);
        utan.spel.TTAnimeraKort(&utan.yta, 40000, false);
        QVERIFY(BaraBakgrundUtom(utan.yta.bilder[0], QRect()));
    }

    // UUAnimeraKort never shows a card beneath: its start place is the background only.
    void uuVisarBaraBakgrunden() {
        Flygning f;
        ProvKlocka klocka(100);
        BRect under(20, 0, 63, 83);
        f.spel.SattAnimering(f.fran, f.till, f.spel.kortPos[0], under, f.spel.kortPos[20]);
        f.spel.UUAnimeraKort(&f.yta, 40000, false);
        QVERIFY(BaraBakgrundUtom(f.yta.bilder[0], QRect()));
        QVERIFY(BaraBakgrundUtom(f.yta.frame, ToQRect(f.till)));
    }

    // XXAnimeraKort flies the whole drag image, a run of cards, not one face.
    void xxFlygerHelaDragbilden() {
        Flygning f;
        ProvKlocka klocka(100);
        std::vector<Lucka> luckor(2, Lucka(BRect(0, 0, 0, 0), false));
        luckor[0].NyPos(BRect(20, 30, 63, 113));
        luckor[1].NyPos(BRect(20, 60, 63, 143));
        for (int i = 0; i < 2; ++i) {
            Kort k(SPADER, 9 - i, BRect());
            k.NyPos(f.spel.FramsidaFor(k));
            luckor[i].TaEmotKort(k);
        }
        f.spel.ByggDragBild(luckor, {0, 1}, BPoint(30, 40));
        QImage rad = KortSpel::bmp;
        QCOMPARE(rad.size(), QSize(44, 114));
        f.spel.SattAnimering(f.fran, f.till, BRect(0, 0, 0, 0));
        f.spel.XXAnimeraKort(&f.yta, 40000, false);
        QVERIFY(LiggerPa(f.yta.bilder[1 + 100], rad, f.Steg(100)));
        QVERIFY(LiggerPa(f.yta.frame, rad, QPoint(300, 180)));
        QVERIFY(BaraBakgrundUtom(f.yta.frame, QRect(QPoint(300, 180), rad.size())));
    }

    // With `kant` the start place shows an empty slot's outline: black on its edges, the
    // background inside.
    void kantRitarEnTomPlatsKontur() {
        Flygning f;
        ProvKlocka klocka(100);
        f.spel.SattAnimering(f.fran, f.till, f.spel.kortPos[0]);
        f.spel.TTAnimeraKort(&f.yta, 40000, true);
        QImage start = f.yta.bilder[0];
        // Middle of the left and bottom edges, away from the rounded corners.
        auto morkt = [](QRgb p) { return qRed(p) < 80 && qGreen(p) < 80 && qBlue(p) < 80; };
        QVERIFY(morkt(start.pixel(20, 70)) || morkt(start.pixel(21, 70)));
        QVERIFY(morkt(start.pixel(40, 113)) || morkt(start.pixel(40, 112)));
        QCOMPARE(start.pixel(40, 70), ProvYta::Bakgrund(40, 70));
        // The outline stays after the card has gone.
        QVERIFY(morkt(f.yta.frame.pixel(20, 70)) || morkt(f.yta.frame.pixel(21, 70)));

        Flygning utan;
        ProvKlocka klocka2(100);
        utan.spel.SattAnimering(utan.fran, utan.till, utan.spel.kortPos[0]);
        utan.spel.TTAnimeraKort(&utan.yta, 40000, false);
        QCOMPARE(utan.yta.frame.pixel(20, 70), ProvYta::Bakgrund(20, 70));
    }

    // On a screen of two pixels to a unit the card flies on the same steps in view units,
    // its own pixels laid on the frame's pixels, each step shown by its view rectangle, and
    // every pixel it covered comes back.
    void vidKvotTvaFlygerKortetsEgnaPixlar() {
        Flygning f(2.0);
        ProvKlocka klocka(100);
        f.spel.SattAnimering(f.fran, f.till, f.spel.kortPos[12], BRect(20, 0, 63, 83),
                             f.spel.kortPos[20]);
        f.spel.TTAnimeraKort(&f.yta, 40000, false);
        QCOMPARE(int(f.yta.visade.size()), 403);
        QImage kung = f.Ansikte(12);
        QCOMPARE(kung.size(), QSize(88, 168));
        for (int s : {0, 1, 200, 399, 400})
            QVERIFY2(LiggerPa(f.yta.bilder[1 + s], kung, f.Steg(s) * 2),
                     qPrintable(QString::number(s)));
        // Step 200 shows where the card was at step 199 and where it is now, in view units.
        QCOMPARE(ToQRect(f.yta.visade[1 + 200]),
                 QRect(f.Steg(199), QSize(44, 84)).united(QRect(f.Steg(200), QSize(44, 84))));
        QVERIFY(LiggerPa(f.yta.frame, kung, QPoint(600, 360)));
        QVERIFY(LiggerPa(f.yta.frame, f.Ansikte(20), QPoint(40, 0)));
        QVERIFY(
            BaraBakgrundUtom(f.yta.frame, QRect(600, 360, 88, 168).united(QRect(40, 0, 88, 168))));
        QVERIFY(
            BaraBakgrundUtom(f.yta.bilder[1 + 200],
                             QRect(f.Steg(200) * 2, QSize(88, 168)).united(QRect(40, 0, 88, 168))));
    }

    // On the real play view a click move flies its card in 400 painted steps before it
    // lands (Idioten 1 flies a click move in 200000 microseconds).
    void enKlickflygningPaSpelvyn() {
        ProvKlocka klocka(500);
        std::unique_ptr<FjolkView> vy = VyMedSpel(0, 3, 640, 480, true);
        QVERIFY(QTest::qWaitForWindowExposed(vy.get()));
        auto* spel = dynamic_cast<Idioten*>(vy->Spel());
        QVERIFY(spel != nullptr);
        std::optional<Drag> klick;
        for (const Drag& d : spel->Regler().LagligaDrag(spel->Tabell()))
            if (d.slag == DragSlag::Kort &&
                IdiotenRegler::KlickMal(spel->Luckor(), spel->Luckor()[d.fran].GeKort()) ==
                    d.till) {
                klick = d;
                break;
            }
        QVERIFY(klick.has_value());
        Kort kortet = spel->Luckor()[klick->fran].GeKort();

        struct Malningar : QObject {
            int antal = 0;
            bool eventFilter(QObject*, QEvent* e) override {
                antal += e->type() == QEvent::Paint;
                return false;
            }
        } malningar;
        vy->installEventFilter(&malningar);
        KlickaPa(*vy, Mitt(spel->Luckor()[klick->fran].GePos()));
        QVERIFY2(malningar.antal >= 402, qPrintable(QString::number(malningar.antal)));
        QVERIFY(spel->Luckor()[klick->fran].Tom());
        QVERIFY(spel->Luckor()[klick->till].GeKort() == kortet);
    }
};

QTEST_MAIN(AnimeringTest)
#include "test_animering.moc"
