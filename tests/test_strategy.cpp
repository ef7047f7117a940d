#include "app/FjolkView.h"
#include "cards/Hiscore.h"
#include "games/Strategy.h"
#include "games/StrategyRegler.h"
#include "solver/Losare.h"
#include "support/Gester.h"
#include "support/Spelfall.h"
#include "support/Testbord.h"

#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <vector>

using namespace StrategyRegler;

namespace {

constexpr unsigned kFro = 3;
// A deal the search below wins.
constexpr unsigned kVinstFro = 1;

struct Bord : Testbord<Strategy> {
    explicit Bord(unsigned fro = kFro, bool tomt = false, int bredd = 640, int hojd = 480,
                  bool animera = false)
        : Testbord(11, fro, tomt, bredd, hojd, animera) {}
    int LekTopp() { return LekensTopp(L()); }
};

} // namespace

class TestStrategy : public QObject {
    Q_OBJECT

    QTemporaryDir dataMapp;

private slots:
    void initTestCase() {
        BorjaSpeltest<Strategy>(dataMapp, 11, 689);
        Bord b;
        for (const Lucka& l : b.L())
            QVERIFY(!l.BakSida());
    }

    void utlaggVid640x480() {
        std::vector<Lucka> l(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
        // h = (479 - 40) / 11 = 39 and w = (639 - 20) / 10 = 61, both raised to 70.
        KolumnRegler::Rutnat r = RaknaUtLuckor(l, BRect(0, 0, 639, 479));
        QCOMPARE(r.w, 70);
        QCOMPARE(r.h, 70);
        LiggerVid(l, {
                         {0, BRect(5, 80, 75, 150)},
                         {1, BRect(5, 110, 75, 180)},
                         {53, BRect(80, 80, 150, 150)},
                         {423, BRect(530, 1640, 600, 1710)},
                         {424, BRect(80, 5, 150, 75)},
                         {476, BRect(80, 5, 150, 75)},
                         {583, BRect(305, 5, 375, 75)},
                         {635, BRect(305, 5, 375, 75)},
                         {636, BRect(380, 5, 450, 75)},
                         {687, BRect(533, 5, 603, 75)},
                         {688, BRect(536, 5, 606, 75)},
                     });
    }

    void utlaggVid1280x1024() {
        std::vector<Lucka> l(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
        // h = 983 / 11 = 89, w = 1259 / 10 = 125.
        KolumnRegler::Rutnat r = RaknaUtLuckor(l, BRect(0, 0, 1279, 1023));
        QCOMPARE(r.w, 125);
        QCOMPARE(r.h, 89);
        LiggerVid(l, {
                         {0, BRect(5, 99, 130, 188)},
                         {372, BRect(915, 129, 1040, 218)},
                         {477, BRect(265, 5, 390, 94)},
                         {636, BRect(655, 5, 780, 94)},
                         {687, BRect(808, 5, 933, 94)},
                     });
    }

    void ingetGesUtLekenLiggerIOrdning() {
        Bord b;
        std::vector<Kort> kort = BlandadLek(kFro);
        for (int i = kForstaLek; i < kSistaLek; ++i) {
            const Kort& k = kort[i - kForstaLek];
            QVERIFY(b.Har(i, k.KortFarg(), k.KortValor()));
        }
        QVERIFY(b.L()[kSistaLek].Tom());
        for (int i = 0; i < kForstaLek; ++i)
            QVERIFY(b.L()[i].Tom());
        QCOMPARE(b.LekTopp(), 687);
        QCOMPARE(b.spel->Forsok(), 1);
        QCOMPARE(b.spel->KortHemma(), 0);
    }

    void klickVarSomHelstIHogensKolumnLaggerLekkortet() {
        Bord b;
        Kort forsta = b.L()[687].GeKort();
        // Far below the pile's base, where no card lies.
        b.Klicka(3 * kPerHog + 8);
        QVERIFY(b.Har(159, forsta.KortFarg(), forsta.KortValor()));
        QVERIFY(b.L()[687].Tom());
        Kort andra = b.L()[686].GeKort();
        b.Klicka(159);
        QVERIFY(b.Har(160, andra.KortFarg(), andra.KortValor()));
        std::vector<std::pair<int, int>> vantat{{687, 159}, {686, 160}};
        QCOMPARE(b.spel->UndoLista(), vantat);
        // A click on the stock itself does nothing.
        b.Klicka(685);
        QCOMPARE(b.LekTopp(), 685);
    }

    void grundenTarBaraEttEssMedanLekenRacker() {
        Bord b(kFro, true);
        b.Lagg(636, HJARTER, 1);
        b.Lagg(637, KLOVER, 5);
        b.Klicka(530);
        QVERIFY(b.Har(637, KLOVER, 5));
        QVERIFY(b.L()[530].Tom());
        b.L()[637].TaBortKort();
        b.Klicka(530);
        QVERIFY(b.Har(530, HJARTER, 1));
        // Not onto a foundation that holds a card, not even an ace.
        b.Lagg(636, SPADER, 1);
        b.Klicka(530);
        QVERIFY(b.Har(636, SPADER, 1));
        DraFranTill(*b.vy, b.Mitten(636), b.Mitten(583));
        QVERIFY(b.Har(583, SPADER, 1));
        QCOMPARE(b.spel->UndoLista().back(), std::make_pair(636, 583));
    }

    void draggetIckeEssStannarILeken() {
        Bord b(kFro, true);
        b.Lagg(636, RUTER, 4);
        b.Lagg(637, HJARTER, 2);
        b.Lagg(424, HJARTER, 1);
        for (BPoint dit : {b.Mitten(424), b.Mitten(477), b.Mitten(0),
                           BPoint(b.Pos(424).left + 10, b.Pos(424).bottom + 90)}) {
            DraFranTill(*b.vy, b.Mitten(637), dit);
            QVERIFY(b.Har(637, HJARTER, 2));
        }
        DraOchSlappUtanfor(*b.vy, b.Mitten(637));
        QVERIFY(b.Har(637, HJARTER, 2));
        // Only the stock's top card is lifted: a press on the card below it lifts nothing.
        DraFranTill(*b.vy, BPoint(b.Pos(636).left + 1, b.Pos(636).top + 10), b.Mitten(477));
        QVERIFY(b.Har(636, RUTER, 4));
        QVERIFY(b.spel->UndoLista().empty());
    }

    void klickRutanArOsymmetrisk() {
        Bord b;
        KlickRutanArOsymmetrisk(*b.spel);
    }

    void fyraPixlarVansterArRedanEttDrag() {
        Bord b;
        const int topp = b.LekTopp();
        // The wiggle reaches four pixels to the left: a drag from a pile, which lifts
        // nothing while the stock lasts; a click there would have placed the stock's card.
        TryckSkakaSlapp(*b.vy, b.Mitten(2 * kPerHog));
        QCOMPARE(b.LekTopp(), topp);
        QVERIFY(b.L()[2 * kPerHog].Tom());
        QVERIFY(b.spel->UndoLista().empty());
        // Three pixels each way is still a click.
        BPoint p = b.Mitten(2 * kPerHog);
        QTest::mousePress(b.vy.get(), Qt::LeftButton, Qt::NoModifier, QPoint(p.x, p.y));
        QTest::mouseRelease(b.vy.get(), Qt::LeftButton, Qt::NoModifier, QPoint(p.x - 3, p.y - 3));
        QCOMPARE(b.LekTopp(), topp - 1);
        QVERIFY(!b.L()[2 * kPerHog].Tom());
    }

    void enHogRymmerFemtiotreKort() {
        Bord b(kFro, true);
        for (int p = 0; p < 52; ++p)
            b.Lagg(p, static_cast<kortfarg>(p % 4), p % 13 + 1);
        b.Lagg(636, SPADER, 7);
        b.Lagg(637, SPADER, 8);
        b.Klicka(0);
        QVERIFY(b.Har(52, SPADER, 8));
        b.Klicka(0);
        QVERIFY(b.Har(636, SPADER, 7));
        QCOMPARE(static_cast<int>(b.spel->UndoLista().size()), 1);
        // The next pile still takes it.
        b.Klicka(53);
        QVERIFY(b.Har(53, SPADER, 7));
    }

    void tomLekKlickPaTacktKortGorIngenting() {
        Bord b(kFro, true);
        b.Lagg(0, HJARTER, 2);
        b.Lagg(1, HJARTER, 1);
        KlickaPa(*b.vy, b.Band(0));
        QVERIFY(b.Har(0, HJARTER, 2));
        QVERIFY(b.spel->UndoLista().empty());
        KlickaPa(*b.vy, b.Botten(1));
        QVERIFY(b.Har(424, HJARTER, 1));
        KlickaPa(*b.vy, b.Band(0));
        QVERIFY(b.Har(425, HJARTER, 2));
        QCOMPARE(b.spel->KortHemma(), 2);
    }

    void tomLekSlappPaGrundenMenAldrigPaEnHog() {
        Bord b(kFro, true);
        b.Lagg(0, SPADER, 1);
        b.Lagg(53, SPADER, 2);
        b.Lagg(106, KLOVER, 1);
        b.Lagg(424, HJARTER, 1);
        // An ace goes to any empty foundation it is dropped on, a drop below it included.
        BRect f = b.Pos(530);
        DraFranTill(*b.vy, b.Botten(0), BPoint(f.left + 10, f.bottom + 100));
        QVERIFY(b.Har(530, SPADER, 1));
        DraFranTill(*b.vy, b.Botten(53), b.Mitten(424));
        QVERIFY(b.Har(53, SPADER, 2));
        DraFranTill(*b.vy, b.Botten(106), b.Mitten(0));
        QVERIFY(b.Har(106, KLOVER, 1));
        DraFranTill(*b.vy, b.Botten(53), b.Mitten(530));
        QVERIFY(b.Har(531, SPADER, 2));
        // A click sends an ace to the first empty foundation.
        KlickaPa(*b.vy, b.Botten(106));
        QVERIFY(b.Har(477, KLOVER, 1));
    }

    void spelKnappenGorIngenting() {
        Bord b;
        auto fore = b.spel->Tabell().Kopia();
        for (int i : {0, 424, 636, 687, 688})
            b.spel->SpelKnapp(b.Mitten(i));
        b.spel->SpelKnapp(BPoint(0, 0));
        QVERIFY(b.spel->Tabell().Lika(*fore));
    }

    void klartNarAllaFemtiotvaArHemma() {
        Bord b(kFro, true);
        for (int f = 0; f < 4; ++f)
            for (int v = 1; v <= 13; ++v)
                b.Lagg(kForstaGrund + kPerHog * f + v - 1, static_cast<kortfarg>(f), v);
        QVERIFY(b.spel->KlarSpel());
        QCOMPARE(b.spel->KortHemma(), 52);
        b.L()[kForstaGrund].TaBortKort();
        QVERIFY(!b.spel->KlarSpel());
        QCOMPARE(b.spel->KortHemma(), 51);
    }

    void sammaBordMedOchUtanAnimering() {
        Bord utan;
        Bord med(kFro, false, 640, 480, true);
        auto tvaKlickOchAngra = [](Bord& b) {
            b.Klicka(0);
            b.Klicka(53 * 7);
            return b.spel->Undo();
        };
        SammaMedOchUtanAnimering<Bord>(utan, med, {tvaKlickOchAngra, NyGiv<Bord>(9)});
        QCOMPARE(med.spel->AntalUndo(), 0);
    }

    void angraTillbakaTillGivet() {
        Bord b(kFro, false, 1280, 1024);
        auto givet = Bordet(*b.spel);
        for (int c : {0, 5, 5, 2})
            b.Klicka(kPerHog * c);
        QCOMPARE(b.AngraAllt(), 4);
        QCOMPARE(Bordet(*b.spel), givet);
        QCOMPARE(b.spel->AntalUndo(), 4);
    }

    void vinnerGenomRiktigtSpel() {
        Bord b(kVinstFro, false, 1280, 1024);
        SokSvar vag = Los(Regler(), b.spel->Tabell(), SokGranser{20000});
        QCOMPARE(vag.utfall, Utfall::Vinnbar);
        QCOMPARE(static_cast<int>(vag.drag.size()), 100);
        b.VinnGenomVyn(vag.drag, 52, 1);
    }

    void hiscoreKortHemmaForsokOchAnger() {
        Bord b;
        b.GlomHiscore();
        b.Tomt();
        b.Lagg(424, HJARTER, 1);
        b.Lagg(425, HJARTER, 2);
        b.spel->KlarSpel();
        b.spel->BordForTest().antalUndo = 7;
        QCOMPARE(b.spel->AddHiscore(), 1);
        QCOMPARE(static_cast<int>(b.Post(1).kort), 2);
        QCOMPARE(static_cast<int>(b.Post(1).giv), 1);
        QCOMPARE(b.Post(1).angra, 7);
        // The empty rows show deal 3.
        b.TommaPosterFran(2, 3);
        // Fewer undos with the same cards rank higher, fewer cards lower.
        b.spel->BordForTest().antalUndo = 2;
        QCOMPARE(b.spel->AddHiscore(), 1);
        b.L()[425].TaBortKort();
        b.spel->KlarSpel();
        QCOMPARE(b.spel->AddHiscore(), 3);
    }
};

QTEST_MAIN(TestStrategy)
#include "test_strategy.moc"
