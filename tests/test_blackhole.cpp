#include "app/FjolkView.h"
#include "cards/Hiscore.h"
#include "cards/Kortlek.h"
#include "games/Blackhole.h"
#include "games/BlackholeRegler.h"
#include "platform/SystemTime.h"
#include "solver/Losare.h"
#include "support/Gester.h"
#include "support/Spelfall.h"
#include "support/Testbord.h"

#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <utility>
#include <vector>

using namespace BlackholeRegler;

namespace {

constexpr unsigned kFro = 3;
// A deal the search below wins, trying the fullest fans first.
constexpr unsigned kVinstFro = 12;

using Undo = std::vector<std::pair<int, int>>;

// An emptied table keeps the ace of spades in the hole.
struct Bord : Testbord<Blackhole> {
    explicit Bord(unsigned fro = kFro, bool tomt = true, int bredd = 640, int hojd = 480,
                  bool animera = false)
        : Testbord(10, fro, tomt, bredd, hojd, animera) {
        if (tomt)
            Lagg(0, SPADER, 1);
    }
};

} // namespace

class TestBlackhole : public QObject {
    Q_OBJECT

    QTemporaryDir dataMapp;

private slots:
    void initTestCase() { BorjaSpeltest<Blackhole>(dataMapp, 10, 172); }

    void cleanup() { SattKlocka({}); }

    // ---- Layout -------------------------------------------------------------------------

    void utlaggVid640x480() {
        std::vector<Lucka> l(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
        Utlagg u = RaknaUtLuckor(l, BRect(0, 0, 639, 479));
        // ch = (479 − 40) / 11 = 39 and cw = (639 − 20) / 10 = 61, both raised to 70.
        QCOMPARE(u.cw, 70);
        QCOMPARE(u.ch, 70);
        LiggerVid(l, {
                         {52, BRect(5, 5, 75, 75)},
                         {54, BRect(5, 65, 75, 135)},
                         {55, BRect(5, 95, 75, 165)},
                         {84, BRect(605, 5, 675, 75)},
                         // The lower row at 3·75 + 5.
                         {88, BRect(5, 230, 75, 300)},
                         {116, BRect(530, 230, 600, 300)},
                         {118, BRect(530, 290, 600, 360)},
                         {0, BRect(305, 150, 375, 220)},
                         {51, l[0].GePos()},
                         {120, BRect(605, 230, 675, 300)},
                         {171, BRect(605, 281, 675, 351)},
                     });
    }

    void utlaggVid1280x1024() {
        std::vector<Lucka> l(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
        Utlagg u = RaknaUtLuckor(l, BRect(0, 0, 1279, 1023));
        // ch = 983 / 11 = 89, cw = 1259 / 10 = 125; u = 130, v = 94.
        QCOMPARE(u.cw, 125);
        QCOMPARE(u.ch, 89);
        LiggerVid(l, {
                         {53, BRect(5, 35, 130, 124)},
                         {84, BRect(1045, 5, 1170, 94)},
                         {90, BRect(5, 347, 130, 436)},
                         {116, BRect(915, 287, 1040, 376)},
                         {0, BRect(525, 188, 650, 277)},
                         {171, BRect(1045, 338, 1170, 427)},
                     });
        Bord b(kFro, false, 1280, 1024);
        QCOMPARE(b.spel->kortPos[0], BRect(1, 1, 125, 89));
    }

    // ---- Deal ---------------------------------------------------------------------------

    void givetMedSparEssetForst() {
        Bord b(kFro, false);
        // The ace of spades out of the new deck, then the shuffle of the other 51.
        int ess = 0;
        std::vector<Kort> kort =
            BlandadLek(kFro, [&](Kortlek& lek) { ess = lek.GeValtKort(SPADER, 1).KortValor(); });
        QCOMPARE(ess, 1);
        QCOMPARE(static_cast<int>(kort.size()), 51);
        // From the stock's top: fan 0 gets 171, 170, 169 bottom to top, fan 1 the next...
        std::vector<int> platser = GivPlatser();
        QCOMPARE(static_cast<int>(platser.size()), 51);
        QCOMPARE(platser[0], 52);
        QCOMPARE(platser[3], 56);
        QCOMPARE(platser[50], 118);
        for (int n = 0; n < 51; ++n)
            QVERIFY(b.Har(platser[n], kort[50 - n].KortFarg(), kort[50 - n].KortValor()));
        QVERIFY(b.Har(0, SPADER, 1));
        QCOMPARE(b.Antal(1, 51), 0);
        QCOMPARE(b.Antal(120, 171), 0);
        for (int f = 0; f < 17; ++f)
            QVERIFY(b.L()[55 + 4 * f].Tom());
        QCOMPARE(b.spel->KortIHalet(), 1);
        QVERIFY(!b.spel->Has_Undos());
        QCOMPARE(b.spel->Undo(), 0);
        QCOMPARE(b.spel->AntalUndo(), 0);
    }

    void sammaBordMedOchUtanAnimering() {
        SnabbKlocka();
        Bord utan(kFro, false);
        Bord med(kFro, false, 640, 480, true);
        auto treKlickOchAngra = [](Bord& b) {
            for (int k = 0; k < 3; ++k) {
                auto dragen = LagligaDrag(b.spel->Bordet());
                if (!dragen.empty())
                    b.Klicka(dragen.front().fran);
            }
            return b.spel->Undo();
        };
        SammaMedOchUtanAnimering<Bord>(utan, med, {treKlickOchAngra, NyGiv<Bord>(kFro)});
    }

    // ---- Moves --------------------------------------------------------------------------

    void kungOchTvaPaSparEsset() {
        Bord b;
        b.Lagg(52, HJARTER, 5);
        b.Lagg(53, HJARTER, 13);
        b.Lagg(56, RUTER, 2);
        b.Klicka(53);
        QVERIFY(b.Har(1, HJARTER, 13));
        QCOMPARE(b.spel->UndoLista(), (Undo{{53, 1}}));
        b.spel->Undo();
        QVERIFY(b.Har(53, HJARTER, 13));
        b.Klicka(56);
        QVERIFY(b.Har(1, RUTER, 2));
        // An ace goes on a king as well.
        Bord k;
        k.L()[0].TaBortKort();
        k.Lagg(0, KLOVER, 13);
        k.Lagg(60, HJARTER, 1);
        k.Klicka(60);
        QVERIFY(k.Har(1, HJARTER, 1));
    }

    void kortSomIntePassarStannar() {
        Bord b;
        b.Lagg(52, HJARTER, 3);
        b.Lagg(56, RUTER, 12);
        b.Klicka(52);
        b.Klicka(56);
        QVERIFY(b.Har(52, HJARTER, 3));
        QVERIFY(b.Har(56, RUTER, 12));
        QVERIFY(!b.spel->Has_Undos());
        QVERIFY(LagligaDrag(b.spel->Bordet()).empty());
    }

    void tacktKortTasInte() {
        Bord b;
        b.Lagg(52, RUTER, 2);
        b.Lagg(53, KLOVER, 7);
        BRect r = b.Pos(52);
        KlickaPa(*b.vy, BPoint(r.left + 20, r.top + 10));
        DraFranTill(*b.vy, BPoint(r.left + 20, r.top + 10), b.Mitten(0));
        QVERIFY(b.Har(52, RUTER, 2));
        QVERIFY(!b.spel->Has_Undos());
    }

    void tomSolfjaderForblirTom() {
        Bord b;
        b.Lagg(52, RUTER, 2);
        b.Lagg(56, KLOVER, 3);
        b.Klicka(52);
        QVERIFY(b.L()[52].Tom());
        // Nothing goes onto the emptied fan, by drop or click.
        DraFranTill(*b.vy, b.Mitten(56), b.Mitten(52));
        KlickaPa(*b.vy, b.Mitten(52));
        QVERIFY(b.L()[52].Tom());
        QVERIFY(b.Har(56, KLOVER, 3));
        for (const Drag& d : LagligaDrag(b.spel->Bordet()))
            QVERIFY(d.till >= 0 && d.till <= 51);
        DraFranTill(*b.vy, b.Mitten(56), b.Mitten(0));
        QVERIFY(b.Har(2, KLOVER, 3));
        QCOMPARE(b.spel->UndoLista(), (Undo{{52, 1}, {56, 2}}));
    }

    void slappUtanforHaletStannar() {
        Bord b;
        b.Lagg(52, RUTER, 2);
        b.Lagg(56, KLOVER, 9);
        BRect hal = b.Pos(0);
        DraFranTill(*b.vy, b.Mitten(52), BPoint(620, 460));
        DraFranTill(*b.vy, b.Mitten(52), b.Mitten(56));
        DraFranTill(*b.vy, b.Mitten(52), BPoint(hal.left + 10, hal.bottom + 5));
        DraOchSlappUtanfor(*b.vy, b.Mitten(52));
        // On the hole, but not fitting.
        DraFranTill(*b.vy, b.Mitten(56), b.Mitten(0));
        QVERIFY(b.Har(52, RUTER, 2));
        QVERIFY(b.Har(56, KLOVER, 9));
        QVERIFY(!b.spel->Has_Undos());
        DraFranTill(*b.vy, b.Mitten(52), BPoint(hal.right, hal.bottom));
        QVERIFY(b.Har(1, RUTER, 2));
    }

    void klartNarDetFemtioandraKortetLandar() {
        Bord b;
        // 51 cards in the hole, the four of clubs on top; the five of hearts on a fan.
        int i = 1;
        for (int farg = 0; farg < 4; ++farg)
            for (int valor = 1; valor <= 13; ++valor) {
                bool sist = farg == KLOVER && valor == 4;
                if ((farg == SPADER && valor == 1) || (farg == HJARTER && valor == 5) || sist)
                    continue;
                b.Lagg(i++, static_cast<kortfarg>(farg), valor);
            }
        b.Lagg(i, KLOVER, 4);
        QCOMPARE(i, 50);
        b.Lagg(64, HJARTER, 5);
        QVERIFY(!b.spel->KlarSpel());
        QCOMPARE(b.spel->KortIHalet(), 51);
        b.Klicka(64);
        QVERIFY(b.Har(51, HJARTER, 5));
        QVERIFY(b.spel->KlarSpel());
        QCOMPARE(b.spel->KortIHalet(), 52);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(b.brevlada->klart, 1);
    }

    void angraTillbakaTillGivet() {
        Bord b(kFro, false, 1280, 1024);
        auto givet = Bordet(*b.spel);
        for (int k = 0; k < 4; ++k) {
            auto dragen = LagligaDrag(b.spel->Bordet());
            if (dragen.empty())
                break;
            b.Klicka(dragen.back().fran);
        }
        QVERIFY(b.spel->Has_Undos());
        const int antal = b.AngraAllt();
        QCOMPARE(Bordet(*b.spel), givet);
        QCOMPARE(b.spel->AntalUndo(), antal);
    }

    // ---- Won game and hiscore -----------------------------------------------------------

    void vinnerGenomRiktigtSpel() {
        Bord b(kVinstFro, false, 1280, 1024);
        SokSvar vag = Los(Regler(), b.spel->Tabell(), SokGranser{300000});
        QCOMPARE(vag.utfall, Utfall::Vinnbar);
        QCOMPARE(static_cast<int>(vag.drag.size()), 51);
        b.VinnGenomVyn(vag.drag, 52, 1);
    }

    void hiscoreRaknarKortIHaletOchAngra() {
        Bord g(kFro, false);
        g.GlomHiscore();
        QCOMPARE(g.spel->AddHiscore(), 1);
        Bord b;
        b.Lagg(52, RUTER, 2);
        b.Lagg(56, KLOVER, 3);
        b.Klicka(52);
        b.Klicka(56);
        b.spel->Undo();
        // Two cards in the hole and one undo rank above the ace alone.
        QCOMPARE(b.spel->AddHiscore(), 1);
        HiscoreLista tabell = LasHiscore(10);
        QCOMPARE(static_cast<int>(tabell[0].kort), 2);
        QCOMPARE(static_cast<int>(tabell[0].giv), 1);
        QCOMPARE(tabell[0].angra, 1);
        QCOMPARE(static_cast<int>(tabell[1].kort), 1);
        QCOMPARE(static_cast<int>(tabell[1].giv), 1);
        QCOMPARE(tabell[1].angra, 0);
    }
};

QTEST_MAIN(TestBlackhole)
#include "test_blackhole.moc"
