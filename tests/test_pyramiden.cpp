#include "app/FjolkView.h"
#include "cards/Hiscore.h"
#include "games/Pyramiden.h"
#include "games/PyramidenRegler.h"
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

using namespace PyramidenRegler;

namespace {

constexpr unsigned kFro = 3;
// A deal the search below wins.
constexpr unsigned kVinstFro = 8;

const QColor kGron(0, 160, 0);
const QColor kMarkering(180, 80, 180);

using Undo = std::vector<std::pair<int, int>>;

struct Bord : Testbord<Pyramiden> {
    explicit Bord(unsigned fro = kFro, bool tomt = true, int bredd = 640, int hojd = 480,
                  bool animera = false)
        : Testbord(7, fro, tomt, bredd, hojd, animera) {}
    // A removed card's place: 60 + 13·suit + value.
    static int Kast(kortfarg farg, int valor) { return 60 + 13 * farg + valor; }
    void KlickaLeken() { KlickaPa(*vy, Mitten(kForstaLek)); }
    // Cards for the stock, bottom first, values 1..12 in clubs and diamonds: no kings.
    void FyllLeken(int antal) {
        for (int i = 0; i < antal; ++i)
            Lagg(kForstaLek + i, i % 2 ? RUTER : KLOVER, 1 + i % 12);
    }
    std::vector<int> Kortkoder(int forsta, int sista) {
        std::vector<int> koder;
        for (int i = forsta; i <= sista; ++i)
            koder.push_back(L()[i].Tom() ? -1
                                         : 13 * L()[i].GeKort().KortFarg() +
                                               L()[i].GeKort().KortValor() - 1);
        return koder;
    }
};

} // namespace

class TestPyramiden : public QObject {
    Q_OBJECT

    QTemporaryDir dataMapp;

private slots:
    void initTestCase() { BorjaSpeltest<Pyramiden>(dataMapp, 7, 172); }

    void cleanup() { SattKlocka({}); }

    // ---- Layout -------------------------------------------------------------------------

    void utlaggVid640x480() {
        std::vector<Lucka> l(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
        Utlagg u = RaknaUtLuckor(l, BRect(0, 0, 639, 479));
        // cw = (639 − 65) / 9 = 63, raised to 70; ch = (479 − 40 − 25) / 5 = 82.
        QCOMPARE(u.cw, 70);
        QCOMPARE(u.ch, 82);
        // The apex at 4·(70 + 5); each row 37 (75 / 2) further left and 35 lower.
        LiggerVid(l,
                  {
                      {0, BRect(300, 5, 370, 87)},
                      {1, BRect(263, 40, 333, 122)},
                      {2, BRect(338, 40, 408, 122)},
                      {15, BRect(115, 180, 185, 262)},
                      {21, BRect(78, 215, 148, 297)},
                      {27, BRect(528, 215, 598, 297)},
                      {28, BRect(41, 250, 111, 332)},
                      {31, BRect(266, 250, 336, 332)},
                      {35, BRect(566, 250, 636, 332)},
                      // Waste: 37 left of slot 31, top 250 + 10 + 82 / 1.5 = 314.67, bottom 396.67.
                      {36, BRect(229, 314, 299, 396)},
                      {60, l[36].GePos()},
                      {61, BRect(5, 5, 75, 87)},
                      {119, l[61].GePos()},
                      // The stock right of slot 31, a pixel a card: 314.67 + 51 = 365.67.
                      {120, BRect(341, 314, 411, 396)},
                      {121, BRect(341, 315, 411, 397)},
                      {171, BRect(341, 365, 411, 447)},
                  });
        QCOMPARE(u.lekRuta, BRect(341, 314, 411, 419));
    }

    void utlaggVid1280x1024() {
        std::vector<Lucka> l(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
        Utlagg u = RaknaUtLuckor(l, BRect(0, 0, 1279, 1023));
        // cw = (1279 − 65) / 9 = 134.9, ch = (1023 − 65) / 5 = 191.6; h = 139 / 2 = 69.
        QCOMPARE(u.cw, 134);
        QCOMPARE(u.ch, 191);
        LiggerVid(l, {
                         {0, BRect(556, 5, 690, 196)},
                         {21, BRect(142, 215, 276, 406)},
                         {24, BRect(559, 215, 693, 406)},
                         {31, BRect(490, 250, 624, 441)},
                         // 250 + 10 + 191 / 1.5 = 387.33.
                         {36, BRect(421, 387, 555, 578)},
                         {61, BRect(5, 5, 139, 196)},
                         {120, BRect(629, 387, 763, 578)},
                         {171, BRect(629, 438, 763, 629)},
                     });
        QCOMPARE(u.lekRuta, BRect(629, 387, 763, 601));
    }

    void litenVyGerSjuttioGangerSjuttio() {
        // Narrower than 9·70 + 65 and lower than 5·70 + 65: cards stay 70 × 70 and the
        // pyramid runs past the view's right edge.
        Bord b(kFro, false, 300, 200);
        QCOMPARE(b.Pos(0), BRect(300, 5, 370, 75));
        QCOMPARE(b.Pos(1), BRect(263, 40, 333, 110));
        QCOMPARE(b.spel->kortPos[0], BRect(1, 1, 70, 70));
    }

    void ytornaFoljerVyn() {
        Bord b(kFro, false);
        QCOMPARE(b.spel->kortPos[0], BRect(1, 1, 70, 82));
        QCOMPARE(b.spel->LekKlickRuta(), b.spel->LekRuta());
        b.vy->resize(1280, 1024);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(b.Pos(0), BRect(556, 5, 690, 196));
        QCOMPARE(b.spel->kortPos[0], BRect(1, 1, 134, 191));
    }

    // ---- Deal ---------------------------------------------------------------------------

    void givetFranLekensTopp() {
        Bord b(kFro, false);
        // The same shuffle again: the first card off the deck lay in stock slot 120.
        std::vector<Kort> kort = BlandadLek(kFro);
        // Stock slot 171 − i to pyramid slot i.
        for (int i = 0; i < 28; ++i)
            QVERIFY(b.Har(i, kort[51 - i].KortFarg(), kort[51 - i].KortValor()));
        for (int i = 0; i < 24; ++i)
            QVERIFY(b.Har(120 + i, kort[i].KortFarg(), kort[i].KortValor()));
        QCOMPARE(b.Antal(28, 119), 0);
        QCOMPARE(b.Antal(144, 171), 0);
        QCOMPARE(b.spel->Giv(), 1);
        QVERIFY(!b.spel->Has_Undos());
        QCOMPARE(b.spel->Undo(), 0);
        QCOMPARE(b.spel->AntalUndo(), 0);
        QVERIFY(b.L()[61].BakSida());
        QVERIFY(b.L()[120].BakSida());
        QVERIFY(!b.L()[36].BakSida());
    }

    void understaRadenArAlltidFri() {
        Bord b(kFro, false);
        for (int i = 28; i <= 35; ++i)
            QVERIFY(b.L()[i].Tom());
        for (int i = 21; i <= 27; ++i)
            QVERIFY(Fri(b.L(), i));
        for (int i = 0; i <= 20; ++i)
            QVERIFY(!Fri(b.L(), i));
        // Two cards of the bottom row that add up to 13 pair at once.
        Bord t;
        t.Lagg(21, HJARTER, 6);
        t.Lagg(27, SPADER, 7);
        t.Klicka(21);
        QCOMPARE(t.spel->UndoLista(), (Undo{{21, 66}, {27, 106}}));
    }

    void sammaBordMedOchUtanAnimering() {
        SnabbKlocka();
        Bord utan(kFro, false);
        Bord med(kFro, false, 640, 480, true);
        auto spela = [](Bord& b) {
            b.KlickaLeken();
            b.KlickaLeken();
            // A pair or a king by click where the table has one.
            for (int i = 21; i <= 27; ++i)
                if (KlickDrag(b.spel->Bordet(), i)) {
                    b.Klicka(i);
                    break;
                }
            b.spel->Undo();
            for (int k = 0; k < 30; ++k)
                b.KlickaLeken();
            return 0;
        };
        SammaMedOchUtanAnimering<Bord>(utan, med, {spela});
        QCOMPARE(med.spel->Giv(), 2);
        QCOMPARE(med.spel->AntalUndo(), utan.spel->AntalUndo());
        // A new deal from the same random numbers.
        SammaMedOchUtanAnimering<Bord>(utan, med, {NyGiv<Bord>(kFro)});
    }

    // ---- Kings and pairs ----------------------------------------------------------------

    void kungKlickasBort() {
        Bord b;
        b.Lagg(21, SPADER, 13);
        b.Klicka(21);
        QVERIFY(b.L()[21].Tom());
        QVERIFY(b.Har(Bord::Kast(SPADER, 13), SPADER, 13));
        QCOMPARE(b.spel->UndoLista(), (Undo{{21, 112}}));
    }

    void draKungVartSomHelst() {
        Bord b;
        b.Lagg(22, HJARTER, 13);
        b.Lagg(23, RUTER, 13);
        b.Lagg(36, KLOVER, 13);
        DraOchSlappUtanfor(*b.vy, b.Mitten(22));
        QVERIFY(b.Har(73, HJARTER, 13));
        DraFranTill(*b.vy, b.Mitten(23), BPoint(620, 460));
        QVERIFY(b.Har(86, RUTER, 13));
        DraFranTill(*b.vy, b.Mitten(36), b.Mitten(36));
        QVERIFY(b.Har(99, KLOVER, 13));
        QCOMPARE(b.spel->UndoLista(), (Undo{{22, 73}, {23, 86}, {36, 99}}));
    }

    void klickParMedLagstaLuckanForeHogen() {
        Bord b;
        b.Lagg(27, KLOVER, 5);
        b.Lagg(23, SPADER, 8);
        b.Lagg(21, HJARTER, 8);
        b.Lagg(36, RUTER, 8);
        b.Klicka(27);
        // The clicked card first, its partner second.
        QCOMPARE(b.spel->UndoLista(), (Undo{{27, 91}, {21, 68}}));
        QVERIFY(b.Har(23, SPADER, 8));
        QVERIFY(b.Har(36, RUTER, 8));
    }

    void klickParMedHogensTopp() {
        Bord b;
        b.Lagg(27, KLOVER, 5);
        b.Lagg(36, RUTER, 8);
        b.Lagg(37, SPADER, 8);
        b.Klicka(27);
        QCOMPARE(b.spel->UndoLista(), (Undo{{27, 91}, {37, 107}}));
        QVERIFY(b.Har(36, RUTER, 8));
        // The waste's top clicked pairs with the pyramid.
        b.Lagg(25, HJARTER, 5);
        KlickaPa(*b.vy, b.Mitten(36));
        QCOMPARE(b.spel->UndoLista().back(), std::make_pair(25, 65));
        QCOMPARE(b.spel->UndoLista()[2], std::make_pair(36, 81));
    }

    void klickUtanPartnerGorIngenting() {
        Bord b;
        b.Lagg(27, KLOVER, 5);
        b.Lagg(21, HJARTER, 9);
        b.Klicka(27);
        QVERIFY(b.Har(27, KLOVER, 5));
        QVERIFY(!b.spel->Has_Undos());
    }

    void halvtTacktKortKanInteTasEllerParas() {
        Bord b;
        // Slot 15 lies under 21 and 22: with 21 still there it is not free.
        b.Lagg(15, HJARTER, 5);
        b.Lagg(21, SPADER, 3);
        b.Lagg(27, KLOVER, 8);
        QVERIFY(!Fri(b.L(), 15));
        b.Klicka(27);
        KlickaPa(*b.vy, b.Band(15));
        DraFranTill(*b.vy, b.Band(15), b.Mitten(27));
        DraFranTill(*b.vy, b.Mitten(27), b.Band(15));
        QVERIFY(!b.spel->Has_Undos());
        QVERIFY(b.Har(15, HJARTER, 5));
        QVERIFY(b.Har(27, KLOVER, 8));
        for (const Drag& d : LagligaDrag(b.spel->Bordet()))
            QVERIFY(d.fran != 15 && d.andra != 15);
        // Covered from the right instead, the same.
        b.L()[21].TaBortKort();
        b.Lagg(22, SPADER, 3);
        b.Klicka(27);
        QVERIFY(b.Har(15, HJARTER, 5));
        // Uncovered on both sides it pairs.
        b.L()[22].TaBortKort();
        b.Klicka(27);
        QCOMPARE(b.spel->UndoLista(), (Undo{{27, 94}, {15, 65}}));
    }

    void slappPaPartnern() {
        Bord b;
        b.Lagg(21, HJARTER, 6);
        b.Lagg(23, KLOVER, 7);
        b.Lagg(27, SPADER, 7);
        // A click would pair with 23; the drop pairs with the card it lands on.
        DraFranTill(*b.vy, b.Mitten(21), b.Mitten(27));
        QCOMPARE(b.spel->UndoLista(), (Undo{{21, 66}, {27, 106}}));
        QVERIFY(b.Har(23, KLOVER, 7));
    }

    void slappPaHogensTopp() {
        Bord b;
        b.Lagg(21, HJARTER, 6);
        b.Lagg(36, KLOVER, 7);
        DraFranTill(*b.vy, b.Mitten(21), b.Mitten(36));
        QCOMPARE(b.spel->UndoLista(), (Undo{{21, 66}, {36, 93}}));
    }

    void slappBortomPartnernGorIngenting() {
        Bord b;
        b.Lagg(21, HJARTER, 6);
        b.Lagg(22, KLOVER, 8);
        b.Lagg(27, SPADER, 7);
        DraFranTill(*b.vy, b.Mitten(21), BPoint(620, 460));
        DraFranTill(*b.vy, b.Mitten(21), b.Mitten(22));
        DraOchSlappUtanfor(*b.vy, b.Mitten(21));
        QVERIFY(b.Har(21, HJARTER, 6));
        QVERIFY(!b.spel->Has_Undos());
        // While carried the card is not drawn: its place shows the table.
        TryckOchDra(*b.vy, b.Mitten(21), BPoint(600, 440));
        b.vy->InvalidateOffscreen();
        QCOMPARE(b.Pixel(BPoint(113, 290)), kGron);
        QTest::mouseRelease(b.vy.get(), Qt::LeftButton, Qt::NoModifier, QPoint(600, 440));
        b.vy->InvalidateOffscreen();
        QVERIFY(b.Pixel(BPoint(113, 290)) != kGron);
    }

    // Slot 60 is the waste's top only while slot 61 beside it is empty, and a partner is
    // never looked for there.
    void platsSextioSokesAldrig() {
        Bord b;
        for (int j = 36; j <= 59; ++j)
            b.Lagg(j, SPADER, 1 + j % 12);
        b.Lagg(60, RUTER, 8);
        b.Lagg(27, KLOVER, 5);
        b.Klicka(27);
        DraFranTill(*b.vy, b.Mitten(27), b.Mitten(60));
        QVERIFY(!b.spel->Has_Undos());
        // Clicked itself, the card in slot 60 finds its partner in the pyramid.
        KlickaPa(*b.vy, b.Mitten(60));
        QCOMPARE(b.spel->UndoLista(), (Undo{{60, 81}, {27, 91}}));
        // With the ace of hearts in slot 61 no waste slot is the top.
        b.spel->Undo();
        b.Lagg(61, HJARTER, 1);
        QCOMPARE(HogTopp(b.L()), -1);
        KlickaPa(*b.vy, b.Mitten(60));
        QVERIFY(b.Har(60, RUTER, 8));
    }

    void vunnetNarPyramidenArTom() {
        Bord b;
        b.FyllLeken(5);
        b.Lagg(40, KLOVER, 3);
        b.Lagg(0, HJARTER, 4);
        QVERIFY(!b.spel->KlarSpel());
        b.L()[0].TaBortKort();
        // Stock and waste need not be empty.
        QVERIFY(b.spel->KlarSpel());
    }

    void sistaKortetVinnerForstNarDetLamnarPyramiden() {
        Bord b;
        b.Lagg(27, SPADER, 7);
        b.Lagg(36, HJARTER, 2);
        // Carried, the pyramid's last card is still in it: lifting it wins nothing.
        TryckOchDra(*b.vy, b.Mitten(27), BPoint(600, 440));
        QVERIFY(!b.spel->KlarSpel());
        QTest::mouseRelease(b.vy.get(), Qt::LeftButton, Qt::NoModifier, QPoint(600, 440));
        QVERIFY(b.Har(27, SPADER, 7));
        QVERIFY(!b.spel->KlarSpel());
        // Dropped on its partner it leaves, and the game is won.
        b.Lagg(37, HJARTER, 6);
        DraFranTill(*b.vy, b.Mitten(27), b.Mitten(37));
        QVERIFY(b.L()[27].Tom());
        QVERIFY(b.spel->KlarSpel());
    }

    // ---- Stock --------------------------------------------------------------------------

    void lekenVandsEttKortPerKlickOchVandsOmEnGang() {
        Bord b(kFro, false);
        const std::vector<int> leken = b.Kortkoder(120, 143);
        for (int k = 0; k < 24; ++k) {
            b.KlickaLeken();
            QCOMPARE(b.Antal(36, 60), k + 1);
            QCOMPARE(b.Kortkoder(36 + k, 36 + k)[0], leken[23 - k]);
            QCOMPARE(b.spel->UndoLista().back(), std::make_pair(222, 36 + k));
        }
        QCOMPARE(b.Antal(120, 171), 0);
        const std::vector<int> hogen = b.Kortkoder(36, 59);
        // The marker stands where the stock was.
        b.vy->InvalidateOffscreen();
        QCOMPARE(b.Pixel(BPoint(376, 385)), kMarkering);

        b.KlickaLeken();
        QCOMPARE(b.spel->Giv(), 2);
        QVERIFY(!b.spel->Has_Undos());
        QCOMPARE(b.spel->Undo(), 0);
        QCOMPARE(b.Antal(36, 60), 0);
        // Turned over, not shuffled: the stock lies as it was dealt.
        QCOMPARE(b.Kortkoder(120, 143), leken);
        QCOMPARE(b.Antal(144, 171), 0);

        for (int k = 0; k < 24; ++k)
            b.KlickaLeken();
        QCOMPARE(b.Kortkoder(36, 59), hogen);
        // After the second pass the marker is gone and the empty stock does nothing.
        b.vy->InvalidateOffscreen();
        QCOMPARE(b.Pixel(BPoint(376, 385)), kGron);
        auto fore = Bordet(*b.spel);
        const size_t poster = b.spel->UndoLista().size();
        b.KlickaLeken();
        QCOMPARE(Bordet(*b.spel), fore);
        QCOMPARE(b.spel->UndoLista().size(), poster);
        QCOMPARE(b.spel->Giv(), 2);
    }

    void lekensKlickytaKrymperMedLeken() {
        Bord b(kFro, false);
        const BRect full = b.spel->LekRuta();
        QCOMPARE(full, BRect(341, 314, 411, 419));
        b.KlickaLeken();
        QCOMPARE(b.spel->LekKlickRuta().bottom, 419.0f);
        b.KlickaLeken();
        QCOMPARE(b.spel->LekKlickRuta().bottom, 418.0f);
        // As written: the undo reckons from the stock's top before the card comes back, so
        // the area ends a pixel shorter than after the turn it takes back.
        b.spel->Undo();
        QCOMPARE(b.Antal(120, 171), 23);
        QCOMPARE(b.spel->LekKlickRuta().bottom, 417.0f);
        for (int k = 0; k < 23; ++k)
            b.KlickaLeken();
        QCOMPARE(b.Antal(120, 171), 0);
        QCOMPARE(b.spel->LekKlickRuta().bottom, 396.0f);
        // Inside the full area but below the clickable part: nothing happens.
        KlickaPa(*b.vy, BPoint(376, 405));
        QCOMPARE(b.spel->Giv(), 1);
        QVERIFY(b.spel->Has_Undos());
        // Laid out again, the whole area takes presses, whatever the stock holds.
        b.vy->resize(641, 480);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(b.spel->LekKlickRuta(), b.spel->LekRuta());
        KlickaPa(*b.vy, BPoint(376, 405));
        QCOMPARE(b.spel->Giv(), 2);
    }

    // ---- Undo ---------------------------------------------------------------------------

    void angraParTarTillbakaBadaOchRaknasDubbelt() {
        Bord b;
        b.Lagg(21, HJARTER, 6);
        b.Lagg(22, SPADER, 7);
        b.Lagg(23, KLOVER, 13);
        b.Klicka(23);
        b.Klicka(21);
        QCOMPARE(b.spel->UndoLista().size(), size_t(3));
        QCOMPARE(b.spel->Undo(), 1);
        QVERIFY(b.Har(21, HJARTER, 6));
        QVERIFY(b.Har(22, SPADER, 7));
        QVERIFY(b.L()[66].Tom());
        QVERIFY(b.L()[106].Tom());
        QCOMPARE(b.spel->AntalUndo(), 2);
        // A king counts once.
        QCOMPARE(b.spel->Undo(), 0);
        QVERIFY(b.Har(23, KLOVER, 13));
        QCOMPARE(b.spel->AntalUndo(), 3);
    }

    void angraVandningLaggerKortetOverstILeken() {
        Bord b(kFro, false);
        const std::vector<int> leken = b.Kortkoder(120, 143);
        b.KlickaLeken();
        b.KlickaLeken();
        QCOMPARE(b.spel->Undo(), 1);
        // The second card turned lies on the stock's top again.
        QCOMPARE(b.Kortkoder(120, 142), std::vector<int>(leken.begin(), leken.end() - 1));
        QCOMPARE(b.Kortkoder(142, 142)[0], leken[22]);
        QCOMPARE(b.Antal(120, 171), 23);
        QCOMPARE(b.Antal(36, 60), 1);
        QCOMPARE(b.spel->AntalUndo(), 1);
    }

    void angraTillbakaTillGivet() {
        Bord b(kFro, false);
        auto givet = Bordet(*b.spel);
        for (int k = 0; k < 6; ++k) {
            b.KlickaLeken();
            for (int i = 21; i <= 27; ++i)
                if (KlickDrag(b.spel->Bordet(), i)) {
                    b.Klicka(i);
                    break;
                }
        }
        QVERIFY(b.AngraAllt() >= 6);
        QCOMPARE(Bordet(*b.spel), givet);
    }

    // ---- A press on a card over the stock -----------------------------------------------

    void tryckPaKortOchLekGorBada() {
        // At 1280 × 1024 the bottom row reaches down over the stock's top.
        Bord b(kFro, true, 1280, 1024);
        b.FyllLeken(3);
        b.Lagg(24, HJARTER, 5);
        b.Lagg(21, SPADER, 8);
        std::optional<BPoint> p = PunktPaKortOchLek(b.spel->Bordet(), 24);
        QVERIFY(p.has_value());
        QVERIFY(b.spel->LekKlickRuta().Contains(*p));
        auto dragen = LagligaDrag(b.spel->Bordet());
        QVERIFY(std::find(dragen.begin(), dragen.end(), LekOchKort(24, 21, false)) != dragen.end());
        // A click: the pair first, then the stock turns.
        KlickaPa(*b.vy, *p);
        QCOMPARE(b.spel->UndoLista(), (Undo{{24, 65}, {21, 107}, {222, 36}}));

        // A drag: the stock turns at the press, and the card pairs with what it turned.
        Bord d(kFro, true, 1280, 1024);
        d.FyllLeken(3);
        d.Lagg(122, KLOVER, 8);
        d.Lagg(24, HJARTER, 5);
        p = PunktPaKortOchLek(d.spel->Bordet(), 24);
        QVERIFY(p.has_value());
        DraFranTill(*d.vy, *p, d.Mitten(36));
        QCOMPARE(d.spel->UndoLista(), (Undo{{222, 36}, {24, 65}, {36, 94}}));
        // Over the empty stock of the first pass: the waste is turned over at the press,
        // which clears the undo records, and the drop's pair is recorded after it.
        Bord r(kFro, true, 1280, 1024);
        r.Lagg(36, KLOVER, 2);
        r.Lagg(24, HJARTER, 5);
        r.Lagg(21, SPADER, 8);
        r.spel->BordForTest().undoLista = {{222, 36}};
        p = PunktPaKortOchLek(r.spel->Bordet(), 24);
        QVERIFY(p.has_value());
        DraFranTill(*r.vy, *p, r.Mitten(21));
        QCOMPARE(r.spel->Giv(), 2);
        QVERIFY(r.Har(120, KLOVER, 2));
        QCOMPARE(r.spel->UndoLista(), (Undo{{24, 65}, {21, 107}}));
        // Away from the stock the same card only pairs.
        Bord e(kFro, true, 1280, 1024);
        e.FyllLeken(3);
        e.Lagg(24, HJARTER, 5);
        e.Lagg(21, SPADER, 8);
        e.Klicka(24);
        QCOMPARE(e.spel->UndoLista(), (Undo{{24, 65}, {21, 107}}));
    }

    // ---- Won game and hiscore -----------------------------------------------------------

    void vinnerGenomRiktigtSpel() {
        Bord b(kVinstFro, false);
        SokSvar vag = Los(Regler(), b.spel->Tabell(), SokGranser{300000});
        QCOMPARE(vag.utfall, Utfall::Vinnbar);
        // This deal is won in the second pass through the stock.
        b.VinnGenomVyn(vag.drag, 0, 2);
        QCOMPARE(b.spel->Giv(), 2);
    }

    void hiscoreRaknarKortKvarGivOchAngra() {
        // An abandoned deal: all 28 cards left, first pass, no undos.
        Bord g(kFro, false);
        g.GlomHiscore();
        QCOMPARE(g.spel->AddHiscore(), 1);
        HiscoreLista tabell = LasHiscore(7);
        QCOMPARE(static_cast<int>(tabell[0].kort), 28);
        QCOMPARE(static_cast<int>(tabell[0].giv), 1);
        QCOMPARE(tabell[0].angra, 0);

        Bord b;
        b.Lagg(21, HJARTER, 6);
        b.Lagg(22, SPADER, 7);
        b.Lagg(0, KLOVER, 2);
        b.Klicka(21);
        b.spel->Undo();
        b.Klicka(21);
        // One card left, the first pass, two undos: 2 + 10000 + 1000 ranks first.
        QCOMPARE(b.spel->AddHiscore(), 1);
        // The empty stock turned over: the same result in the second pass ranks below it.
        b.KlickaLeken();
        QCOMPARE(b.spel->Giv(), 2);
        QCOMPARE(b.spel->AddHiscore(), 2);
        tabell = LasHiscore(7);
        QCOMPARE(static_cast<int>(tabell[0].kort), 1);
        QCOMPARE(static_cast<int>(tabell[0].giv), 1);
        QCOMPARE(tabell[0].angra, 2);
        QCOMPARE(static_cast<int>(tabell[1].kort), 1);
        QCOMPARE(static_cast<int>(tabell[1].giv), 2);
        QCOMPARE(tabell[1].angra, 2);
        QCOMPARE(static_cast<int>(tabell[2].kort), 28);
    }
};

QTEST_MAIN(TestPyramiden)
#include "test_pyramiden.moc"
