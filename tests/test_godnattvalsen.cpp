#include "app/FjolkView.h"
#include "cards/Hiscore.h"
#include "cards/Kortlek.h"
#include "cards/Luckor.h"
#include "games/Godnattvalsen.h"
#include "games/GodnattvalsenRegler.h"
#include "platform/QtGeometry.h"
#include "solver/Losare.h"
#include "support/Gester.h"
#include "support/Spelfall.h"
#include "support/Testbord.h"

#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

using namespace GodnattvalsenRegler;

namespace {

constexpr unsigned kFro = 3;
// A deal the search below wins.
constexpr unsigned kVinstFro = 189;

struct Bord : Testbord<Godnattvalsen> {
    explicit Bord(unsigned fro = kFro, bool tomt = false, int bredd = 640, int hojd = 480,
                  bool animera = false)
        : Testbord(2, fro, tomt, bredd, hojd, animera) {}
    const Stallning& S() { return spel->Bordet(); }
    // A point on the stock that every click leaves inside the part it deals from.
    BPoint Leken() { return BPoint(S().lekRuta.left + 20, S().lekRuta.top + 10); }
    // An ace on each foundation base, suits 0..3 from the left.
    void Ess() {
        for (int c = 0; c < kKolumner; ++c)
            Lagg(GrundBas(c), static_cast<kortfarg>(c), 1);
    }
};

} // namespace

class TestGodnattvalsen : public QObject {
    Q_OBJECT

    QTemporaryDir dataMapp;

private slots:
    void initTestCase() {
        BorjaSpeltest<Godnattvalsen>(dataMapp, 2, 164);
        Bord b;
        for (int i = 0; i < 164; ++i)
            QCOMPARE(b.L()[i].BakSida(), i >= 112);
    }

    void utlaggVid640x480() {
        std::vector<Lucka> l(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
        // ch = (479 - 40) / 8 = 54, raised to 70; cw = (639 - 20) / 5.5 = 112; u = 117, v = 75.
        Utlagg u = RaknaUtLuckor(l, BRect(0, 0, 639, 479));
        QCOMPARE(u.w, 112);
        QCOMPARE(u.h, 70);
        LiggerVid(l, {
                         {0, BRect(0, 5, 112, 75)},
                         {13, BRect(0, 31, 112, 101)},
                         {28, BRect(117, 5, 229, 75)},
                         {14, BRect(0, 108, 112, 178)},
                         {15, BRect(0, 140, 112, 210)},
                         {111, BRect(351, 524, 463, 594)},
                         {112, BRect(473, 80, 585, 150)},
                         {163, BRect(473, 182, 585, 252)},
                     });
        QCOMPARE(u.lekRuta, BRect(473, 80, 585, 236));
    }

    void utlaggVid1280x1024() {
        std::vector<Lucka> l(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
        // ch = 983 / 8 = 122; cw = 1259 / 5.5 = 228; u = 233, v = 127.
        Utlagg u = RaknaUtLuckor(l, BRect(0, 0, 1279, 1023));
        QCOMPARE(u.w, 228);
        QCOMPARE(u.h, 122);
        LiggerVid(l, {
                         {14, BRect(0, 160, 228, 282)},
                         {84, BRect(699, 5, 927, 127)},
                         {97, BRect(699, 31, 927, 153)},
                         {99, BRect(699, 192, 927, 314)},
                         {112, BRect(937, 132, 1165, 254)},
                     });
        QCOMPARE(u.lekRuta, BRect(937, 132, 1165, 340));
        Bord b(kFro, false, 1280, 1024);
        QCOMPARE(b.S().lekKlickRuta, b.S().lekRuta);
    }

    // A deal draws its shuffle and the stripes of one face rendering, nothing more: the next
    // deal goes on from there.
    void givetDrarBlandningenOchEnRitning() {
        Bord bord(kFro, false, 900, 600);
        int nasta = std::rand();
        QCOMPARE(bord.Pos(0), BRect(0, 5, 159, 75));
        QCOMPARE(nasta, TalEfterGivet(kFro, 159));
    }

    void givetLaggerEssenOchEttKortPerHog() {
        Bord b;
        std::vector<Kort> lekPlatser;
        std::vector<Kort> ovriga = BlandadLek(kFro, {}, [&](Kortlek& lek) {
            for (int i = 0; i < 4; ++i)
                lekPlatser.push_back(lek.GeEss());
        });
        lekPlatser.insert(lekPlatser.begin(), ovriga.begin(), ovriga.end());
        // lekPlatser[i] lay in stock slot 112 + i; the four aces on top.
        std::vector<std::pair<int, int>> giv{{163, 0},  {162, 28}, {161, 56}, {160, 84},
                                             {159, 14}, {158, 42}, {157, 70}, {156, 98}};
        for (auto [lekLucka, till] : giv) {
            const Kort& k = lekPlatser[lekLucka - 112];
            QVERIFY(b.Har(till, k.KortFarg(), k.KortValor()));
        }
        for (int c = 0; c < 4; ++c)
            QCOMPARE(b.Valor(GrundBas(c)), 1);
        for (int i = 112; i < 156; ++i) {
            const Kort& k = lekPlatser[i - 112];
            QVERIFY(b.Har(i, k.KortFarg(), k.KortValor()));
        }
        for (int i = 156; i < 164; ++i)
            QVERIFY(b.L()[i].Tom());
        QVERIFY(b.spel->UndoLista().empty());
        QCOMPARE(b.spel->AntalUndo(), 0);
    }

    void tvaAvVilkenFargSomHelstPaVilketEssSomHelst() {
        Bord b(kFro, true);
        b.Ess();
        b.Lagg(14, SPADER, 2);
        b.Lagg(42, RUTER, 2);
        KlickaPa(*b.vy, b.Botten(14));
        QVERIFY(b.Har(1, SPADER, 2));
        QVERIFY(b.L()[14].Tom());
        KlickaPa(*b.vy, b.Botten(42));
        QVERIFY(b.Har(29, RUTER, 2));
        // A drag goes onto any ace the pointer is over, whatever its suit.
        b.Lagg(70, KLOVER, 2);
        DraFranTill(*b.vy, b.Botten(70), b.Botten(GrundBas(3)));
        QVERIFY(b.Har(85, KLOVER, 2));
        std::vector<std::pair<int, int>> vantat{{14, 1}, {42, 29}, {70, 85}};
        QCOMPARE(b.spel->UndoLista(), vantat);
    }

    void grundenTarBaraEttHogre() {
        Bord b(kFro, true);
        b.Ess();
        b.Lagg(14, HJARTER, 3);
        KlickaPa(*b.vy, b.Botten(14));
        QVERIFY(b.Har(14, HJARTER, 3));
        DraFranTill(*b.vy, b.Botten(14), b.Botten(0));
        QVERIFY(b.Har(14, HJARTER, 3));
        // Released outside every foundation top: it stays.
        b.Lagg(1, KLOVER, 2);
        DraFranTill(*b.vy, b.Botten(14), b.Mitten(43));
        QVERIFY(b.Har(14, HJARTER, 3));
        DraOchSlappUtanfor(*b.vy, b.Botten(14));
        QVERIFY(b.Har(14, HJARTER, 3));
        QVERIFY(b.spel->UndoLista().empty());
        DraFranTill(*b.vy, b.Botten(14), b.Botten(1));
        QVERIFY(b.Har(2, HJARTER, 3));
    }

    void grundensKortKanFlyttas() {
        Bord b(kFro, true);
        b.Ess();
        b.Lagg(1, HJARTER, 2);
        // The foundation's top band belongs to its ace: a run of two, which a click leaves.
        KlickaPa(*b.vy, b.Band(0));
        QVERIFY(b.Har(1, HJARTER, 2));
        KlickaPa(*b.vy, b.Botten(1));
        QVERIFY(b.Har(29, HJARTER, 2));
        QVERIFY(b.L()[1].Tom());
    }

    void hogkortNarGrundenBaraSomTopp() {
        Bord b(kFro, true);
        b.Ess();
        b.Lagg(14, HJARTER, 2);
        b.Lagg(15, SPADER, 9);
        KlickaPa(*b.vy, b.Band(14));
        QVERIFY(b.Har(14, HJARTER, 2));
        // Dragged, the covered card lifts the card above it, and two never go down.
        TryckOchDra(*b.vy, b.Band(14), b.Botten(0));
        QCOMPARE(b.spel->valdaLuckor, (std::vector<int>{14, 15}));
        QTest::mouseRelease(b.vy.get(), Qt::LeftButton, Qt::NoModifier, ToQPoint(b.Mitten(0)));
        QVERIFY(b.Har(14, HJARTER, 2));
        QVERIFY(b.Har(15, SPADER, 9));
        QVERIFY(b.spel->UndoLista().empty());
        b.L()[15].TaBortKort();
        KlickaPa(*b.vy, b.Band(14));
        QVERIFY(b.Har(1, HJARTER, 2));
    }

    void lekenGerElvaGangerSedanInget() {
        Bord b;
        for (int klick = 1; klick <= 11; ++klick) {
            int topp = kLeken.Topp(b.L());
            KlickaPa(*b.vy, b.Leken());
            QCOMPARE(kLeken.Topp(b.L()), topp - 4 < kForstaLek ? -1 : topp - 4);
            QCOMPARE(static_cast<int>(b.spel->UndoLista().size()), 4 * klick);
            QCOMPARE(b.spel->UndoLista().back(), std::make_pair(222, HogBas(3) + klick));
            QCOMPARE(b.S().lekKlickRuta.bottom,
                     b.S().lekRuta.bottom - 2.0f * static_cast<float>(47 - (topp - 112)));
        }
        QVERIFY(kLeken.Tom(b.L()));
        for (int c = 0; c < 4; ++c)
            QCOMPARE(ForstaTomma(b.L(), HogBas(c), GrundBas(c) + 27), HogBas(c) + 12);
        auto fore = Bordet(*b.spel);
        KlickaPa(*b.vy, b.Leken());
        QCOMPARE(Bordet(*b.spel), fore);
        QCOMPARE(static_cast<int>(b.spel->UndoLista().size()), 44);
    }

    void lekkortetsFlygningVisarNastaLekkortUnderSig() {
        Bord b(kFro, true, 640, 480, true);
        for (int i = kForstaLek; i <= 157; ++i)
            b.Lagg(i, static_cast<kortfarg>(i % 4), 1 + i % 13);
        // The click's last card leaves slot 154, which lies where a pile's base would if
        // the piles went on: the stock's next card, face down, shows where it lay.
        KlickaPa(*b.vy, b.Leken());
        QVERIFY(b.L()[154].Tom());
        QCOMPARE(b.spel->animUnderPos, b.Pos(153));
        QCOMPARE(b.spel->animUnderKort, b.spel->baksidaPos[0]);
    }

    void angraAvLekklickTarTillbakaFyraKort() {
        Bord b;
        auto givet = Bordet(*b.spel);
        KlickaPa(*b.vy, b.Leken());
        QVERIFY(b.L()[15].GeKort().KortValor() > 0);
        QCOMPARE(b.spel->Undo(), 0);
        QCOMPARE(Bordet(*b.spel), givet);
        QCOMPARE(b.spel->AntalUndo(), 4);
        QVERIFY(!b.spel->Has_Undos());
        QCOMPARE(b.spel->Undo(), 0);
        QCOMPARE(b.spel->AntalUndo(), 4);
    }

    void angraLamnarLekensKlickrutaDarKlicketSatteDen() {
        Bord b;
        KlickaPa(*b.vy, b.Leken());
        BRect efter = b.S().lekKlickRuta;
        b.spel->Undo();
        QCOMPARE(b.S().lekKlickRuta, efter);
        // The last 8 pixels of the restored stock deal nothing until the next layout.
        BPoint langstNer(b.S().lekRuta.left + 20, b.S().lekRuta.bottom - 3);
        KlickaPa(*b.vy, langstNer);
        QVERIFY(b.spel->UndoLista().empty());
        b.spel->OmRaknaLuckaKort(b.vy->Bounds());
        KlickaPa(*b.vy, langstNer);
        QCOMPARE(static_cast<int>(b.spel->UndoLista().size()), 4);
    }

    void angraraknasVidareOverNyGiv() {
        Bord b;
        KlickaPa(*b.vy, b.Leken());
        b.spel->Undo();
        QCOMPARE(b.spel->AntalUndo(), 4);
        b.spel->NyttSpel(b.vy->Bounds());
        QCOMPARE(b.spel->AntalUndo(), 4);
        QVERIFY(!b.spel->Has_Undos());
        KlickaPa(*b.vy, b.Leken());
        b.spel->Undo();
        QCOMPARE(b.spel->AntalUndo(), 8);
    }

    void klartNarLekenOchHogarnaArTommaOchKungarnaLigger() {
        Bord b(kFro, true);
        for (int c = 0; c < 4; ++c)
            for (int v = 1; v <= 13; ++v)
                b.Lagg(GrundBas(c) + v - 1, static_cast<kortfarg>((c + v) % 4), v);
        QVERIFY(b.spel->KlarSpel());
        b.Lagg(112, HJARTER, 5);
        QVERIFY(!b.spel->KlarSpel());
        b.L()[112].TaBortKort();
        b.Lagg(42, HJARTER, 5);
        QVERIFY(!b.spel->KlarSpel());
        b.L()[42].TaBortKort();
        b.L()[68].TaBortKort();
        QVERIFY(!b.spel->KlarSpel());
    }

    void tommaPlatserRitasInte() {
        Bord b(kFro, true);
        b.vy->InvalidateOffscreen();
        QCOMPARE(b.Pixel(b.Mitten(14)), QColor(0, 160, 0));
        BRect r = b.Pos(0);
        QCOMPARE(b.Pixel(BPoint(r.left + 20, r.top)), QColor(0, 160, 0));
    }

    void sammaBordMedOchUtanAnimering() {
        Bord utan;
        Bord med(kFro, false, 640, 480, true);
        auto tvaLekklickOchAngra = [](Bord& b) {
            KlickaPa(*b.vy, b.Leken());
            KlickaPa(*b.vy, b.Leken());
            return b.spel->Undo();
        };
        SammaMedOchUtanAnimering<Bord>(utan, med, {tvaLekklickOchAngra});
        QCOMPARE(med.spel->AntalUndo(), utan.spel->AntalUndo());
        SammaMedOchUtanAnimering<Bord>(utan, med, {NyGiv<Bord>(11)});
    }

    void angraTillbakaTillGivet() {
        Bord b(kVinstFro, false, 1280, 1024);
        auto givet = Bordet(*b.spel);
        KlickaPa(*b.vy, b.Leken());
        std::vector<Drag> dragen = Regler().LagligaDrag(b.S());
        for (const Drag& d : dragen)
            if (d.slag == DragSlag::Kort) {
                QCOMPARE(b.SpelaGenomVyn({d}), QString());
                break;
            }
        KlickaPa(*b.vy, b.Leken());
        QVERIFY(b.AngraAllt() >= 8);
        QCOMPARE(Bordet(*b.spel), givet);
    }

    void vinnerGenomRiktigtSpel() {
        Bord b(kVinstFro, false, 1280, 1024);
        SokSvar vag = Los(Regler(), b.S(), SokGranser{50000});
        QCOMPARE(vag.utfall, Utfall::Vinnbar);
        b.VinnGenomVyn(vag.drag, 52, 1);
    }

    void hiscoreRaknarGrundensKortOchFlerAngerForst() {
        Bord b;
        b.GlomHiscore();
        // Four aces at the deal, and four undos.
        KlickaPa(*b.vy, b.Leken());
        b.spel->Undo();
        QCOMPARE(b.spel->AddHiscore(), 1);
        QCOMPARE(static_cast<int>(b.Post(1).kort), 4);
        QCOMPARE(static_cast<int>(b.Post(1).giv), 1);
        QCOMPARE(b.Post(1).angra, 4);
        // The same cards with more undos ranks higher; with fewer, lower.
        KlickaPa(*b.vy, b.Leken());
        b.spel->Undo();
        QCOMPARE(b.spel->AddHiscore(), 1);
        QCOMPARE(b.Post(1).angra, 8);
        b.spel->BordForTest().antalUndo = 0;
        QCOMPARE(b.spel->AddHiscore(), 3);
        // More cards on the foundations rank first.
        b.Lagg(1, HJARTER, 2);
        QCOMPARE(b.spel->AddHiscore(), 1);
        QCOMPARE(static_cast<int>(b.Post(1).kort), 5);
    }
};

QTEST_MAIN(TestGodnattvalsen)
#include "test_godnattvalsen.moc"
