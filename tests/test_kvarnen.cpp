#include "app/FjolkView.h"
#include "cards/Hiscore.h"
#include "cards/Kortlek.h"
#include "games/Kvarnen.h"
#include "games/KvarnenRegler.h"
#include "games/Spelfabrik.h"
#include "platform/SystemTime.h"
#include "solver/Losare.h"
#include "support/Gester.h"
#include "support/Spelfall.h"
#include "support/Testbord.h"

#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <vector>

using namespace KvarnenRegler;

namespace {

constexpr unsigned kFro = 3;
// A deal the search over the rules wins.
constexpr unsigned kVinstFro = 5;

struct Bord : Testbord<Kvarnen> {
    explicit Bord(unsigned fro = kFro, bool tomt = false, int bredd = 640, int hojd = 480,
                  bool animera = false)
        : Testbord(4, fro, tomt, bredd, hojd, animera) {}
    // The four aces on their foundations and nothing else.
    void BaraEss() {
        Tomt();
        for (int k = 0; k < 4; ++k)
            Lagg(GrundBas(k), static_cast<kortfarg>(k), 1);
    }
    // Foundation k built from its ace up to `valor`.
    void Grund(int k, int valor) {
        for (int v = 1; v <= valor; ++v)
            Lagg(GrundBas(k) + v - 1, static_cast<kortfarg>(k), v);
    }
    // The cards of a pile: up to its first empty slot.
    int Kort(int pile) {
        int tom = ForstaTomma(L(), HogBas(pile), HogBas(pile) + kPlatserPerHog - 1);
        return tom < 0 ? kPlatserPerHog : tom - HogBas(pile);
    }
    BPoint Knapp() { return Mitt(spel->KnappPos()); }
};

} // namespace

class TestKvarnen : public QObject {
    Q_OBJECT

    QTemporaryDir dataMapp;

private slots:
    void initTestCase() {
        BorjaSpeltest<Kvarnen>(dataMapp, 4, 340);
        QCOMPARE(QString::fromUtf8(SpelNamn(4)), QStringLiteral("Kvarnen"));
        QCOMPARE(QString::fromUtf8(TitelNamn(4)), QStringLiteral("Kvarnen"));
    }

    void cleanup() { SattKlocka({}); }

    // cw = trunc((639 − 20) / 8) = 77, ch = trunc(479 − 40) / 4 = 109, u = 82, v = 114.
    void utlaggVid640x480() {
        std::vector<Lucka> l(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
        Utlagg u = RaknaUtLuckor(l, BRect(0, 0, 639, 479));
        QCOMPARE(u.w, 77);
        QCOMPARE(u.h, 109);
        LiggerVid(l, {
                         {0, BRect(82, 5, 159, 114)},
                         {1, BRect(82, 8, 159, 117)},
                         {56, BRect(328, 11, 405, 120)},
                         {72, BRect(0, 161, 77, 270)},
                         {165, BRect(410, 170, 487, 279)},
                         {180, BRect(0, 317, 77, 426)},
                         {287, BRect(410, 368, 487, 477)},
                         {288, BRect(415, 10, 492, 119)},
                         {339, BRect(415, 61, 492, 170)},
                     });
        // Beside the base of upper pile 5 (slot 162).
        QCOMPARE(u.knapp, BRect(507, 230, 627, 270));
    }

    // cw = trunc(1259 / 8) = 157, ch = 983 / 4 = 245, u = 162, v = 250.
    void utlaggVid1280x1024() {
        std::vector<Lucka> l(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
        Utlagg u = RaknaUtLuckor(l, BRect(0, 0, 1279, 1023));
        QCOMPARE(u.w, 157);
        QCOMPARE(u.h, 245);
        LiggerVid(l, {
                         {18, BRect(324, 5, 481, 250)},
                         {66, BRect(648, 41, 805, 286)},
                         {90, BRect(162, 297, 319, 542)},
                         {270, BRect(810, 589, 967, 834)},
                         {287, BRect(810, 640, 967, 885)},
                         {300, BRect(815, 22, 972, 267)},
                     });
        QCOMPARE(u.knapp, BRect(987, 502, 1107, 542));
    }

    void utlaggAldrigUnderSjuttio() {
        std::vector<Lucka> l(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
        Utlagg u = RaknaUtLuckor(l, BRect(0, 0, 299, 199));
        QCOMPARE(u.w, 70);
        QCOMPARE(u.h, 70);
        LiggerVid(l, {
                         {72, BRect(0, 122, 70, 192)},
                         {180, BRect(0, 239, 70, 309)},
                     });
    }

    void kortenRitasIKortetsStorlek() {
        Bord b;
        // Look B at slot 0's size: the faces are cw × ch.
        QCOMPARE(b.spel->FramsidaFor(Kort(SPADER, 13, BRect())).Width() + 1, 77.0f);
        QCOMPARE(b.spel->FramsidaFor(Kort(SPADER, 13, BRect())).Height() + 1, 109.0f);
    }

    // The shuffle, then the aces taken out into 336..339, then the rest into 288..335; the
    // deal takes the stock's top each time: the aces from 339 down to the foundations, then
    // four cards to each pile.
    // A deal draws its shuffle and the stripes of one face rendering, nothing more: the next
    // deal goes on from there.
    void givetDrarBlandningenOchEnRitning() {
        Bord bord(kFro, false, 900, 600);
        int nasta = std::rand();
        QCOMPARE(bord.Pos(0), BRect(114, 5, 223, 144));
        QCOMPARE(nasta, TalEfterGivet(kFro, 109));
    }

    void givetFoljerLeken() {
        Bord b;
        std::vector<Kort> ess;
        std::vector<Kort> resten = BlandadLek(kFro, {}, [&](Kortlek& lek) {
            for (int i = 0; i < 4; ++i)
                ess.push_back(lek.GeEss());
        });
        QCOMPARE(static_cast<int>(resten.size()), 48);
        for (int k = 0; k < 4; ++k) {
            QVERIFY(b.Har(GrundBas(k), ess[3 - k].KortFarg(), 1));
            QVERIFY(b.L()[GrundBas(k) + 1].Tom());
        }
        for (int p = 0; p < 12; ++p) {
            QCOMPARE(b.Kort(p), 4);
            for (int j = 0; j < 4; ++j) {
                const Kort& k = resten[47 - 4 * p - j];
                QVERIFY(b.Har(HogBas(p) + j, k.KortFarg(), k.KortValor()));
            }
        }
        for (int i = kForstaLek; i <= kSistaLek; ++i)
            QVERIFY(b.L()[i].Tom());
        QCOMPARE(b.spel->Giv(), 1);
        QVERIFY(!b.spel->Has_Undos());
        QCOMPARE(b.spel->Undo(), 0);
        QCOMPARE(b.spel->AntalUndo(), 0);
    }

    void klickGarTillGrundenForeHogarna() {
        Bord b;
        b.BaraEss();
        b.Lagg(HogBas(0), KLOVER, 2);
        b.Lagg(HogBas(1), HJARTER, 3);
        KlickaPa(*b.vy, b.Mitten(HogBas(0)));
        QVERIFY(b.Har(GrundBas(2) + 1, KLOVER, 2));
        QVERIFY(b.L()[HogBas(0)].Tom());
        QCOMPARE(b.spel->UndoLista().back(), std::make_pair(HogBas(0), GrundBas(2) + 1));
    }

    void klickGarTillForstaHogenSomTarKortet() {
        Bord b;
        b.BaraEss();
        b.Lagg(HogBas(0), KLOVER, 9);
        b.Lagg(HogBas(3), SPADER, 9);
        b.Lagg(HogBas(7), HJARTER, 9);
        b.Lagg(HogBas(9), RUTER, 8);
        KlickaPa(*b.vy, b.Mitten(HogBas(9)));
        QVERIFY(b.Har(HogBas(0) + 1, RUTER, 8));
        // The same card on a pile further on, by a drop.
        DraFranTill(*b.vy, b.Mitten(HogBas(0) + 1), b.Mitten(HogBas(7)));
        QVERIFY(b.Har(HogBas(7) + 1, RUTER, 8));
        std::vector<std::pair<int, int>> vantat{{HogBas(9), HogBas(0) + 1},
                                                {HogBas(0) + 1, HogBas(7) + 1}};
        QCOMPARE(b.spel->UndoLista(), vantat);
    }

    void klickSomInteFarPlatsGorIngenting() {
        Bord b;
        b.BaraEss();
        b.Lagg(HogBas(0), KLOVER, 9);
        b.Lagg(HogBas(1), SPADER, 7);
        b.Lagg(HogBas(2), RUTER, 5);
        auto fore = Bordet(*b.spel);
        KlickaPa(*b.vy, b.Mitten(HogBas(1)));
        QCOMPARE(Bordet(*b.spel), fore);
        QVERIFY(b.spel->UndoLista().empty());
    }

    void tomHogTarIngenting() {
        Bord b;
        b.BaraEss();
        b.Lagg(HogBas(0), KLOVER, 9);
        b.Lagg(HogBas(1), SPADER, 7);
        DraFranTill(*b.vy, b.Mitten(HogBas(1)), b.Mitten(HogBas(4)));
        QVERIFY(b.Har(HogBas(1), SPADER, 7));
        QVERIFY(b.L()[HogBas(4)].Tom());
        KlickaPa(*b.vy, b.Mitten(HogBas(1)));
        QVERIFY(b.Har(HogBas(1), SPADER, 7));
        QVERIFY(b.spel->UndoLista().empty());
    }

    void grundenByggsISvitUtanOmstart() {
        Bord b;
        b.BaraEss();
        b.Grund(0, 12);
        b.Lagg(HogBas(0), RUTER, 13);
        b.Lagg(HogBas(1), HJARTER, 13);
        // The king of the wrong suit stays; the right one completes the foundation.
        DraFranTill(*b.vy, b.Mitten(HogBas(0)), b.Mitten(GrundBas(0) + 11));
        QVERIFY(b.Har(HogBas(0), RUTER, 13));
        DraFranTill(*b.vy, b.Mitten(HogBas(1)), b.Mitten(GrundBas(0) + 11));
        QVERIFY(b.Har(KungPlats(0), HJARTER, 13));
        QVERIFY(!TarEmot(b.L(), KungPlats(0), Kort(HJARTER, 1, BRect())));
    }

    // Only the top card's own rectangle takes a drop: the strip of a covered card that
    // shows above it does not, even where that card would take the dragged one.
    void slappPaTacktKortGorIngenting() {
        Bord b;
        b.BaraEss();
        b.Lagg(HogBas(0), KLOVER, 9);
        b.Lagg(HogBas(0) + 1, SPADER, 4);
        b.Lagg(HogBas(0) + 2, HJARTER, 5);
        b.Lagg(HogBas(3), RUTER, 8);
        BRect tackt = b.L()[HogBas(0)].GePos();
        BPoint remsa((tackt.left + tackt.right) / 2, tackt.top + 1);
        QCOMPARE(Traff(b.L(), remsa), -1);
        DraFranTill(*b.vy, b.Mitten(HogBas(3)), remsa);
        QVERIFY(b.Har(HogBas(3), RUTER, 8));
        QVERIFY(b.L()[HogBas(0) + 3].Tom());
        QVERIFY(b.spel->UndoLista().empty());
        // The top card (a five) takes a four.
        b.Lagg(HogBas(4), KLOVER, 4);
        DraFranTill(*b.vy, b.Mitten(HogBas(4)), b.Mitten(HogBas(0) + 2));
        QVERIFY(b.Har(HogBas(0) + 3, KLOVER, 4));
    }

    void tacktKortKanInteLyftas() {
        Bord b;
        b.BaraEss();
        b.Lagg(HogBas(0), KLOVER, 2);
        b.Lagg(HogBas(0) + 1, SPADER, 9);
        BRect r = b.L()[HogBas(0)].GePos();
        KlickaPa(*b.vy, BPoint(r.left + 10, r.top + 1));
        QVERIFY(b.Har(HogBas(0), KLOVER, 2));
        QVERIFY(b.spel->UndoLista().empty());
        // Foundation cards never move either.
        b.Lagg(HogBas(5), HJARTER, 3);
        KlickaPa(*b.vy, b.Mitten(GrundBas(0)));
        DraFranTill(*b.vy, b.Mitten(GrundBas(0)), b.Mitten(HogBas(5)));
        QVERIFY(b.Har(GrundBas(0), HJARTER, 1));
        QVERIFY(b.L()[HogBas(5) + 1].Tom());
    }

    // Gathered from slot 287 down, dealt again four to a pile from pile 0: the cards keep
    // their order, pile by pile from the bottom; emptied piles get cards again and the last
    // piles stay empty when fewer than 48 are left.
    void nastaGivFyllerPaIgenOchLamnarSistaTomma() {
        Bord b;
        b.BaraEss();
        b.Lagg(HogBas(1), KLOVER, 9);
        b.Lagg(HogBas(1) + 1, SPADER, 4);
        b.Lagg(HogBas(1) + 2, RUTER, 12);
        b.Lagg(HogBas(4), HJARTER, 10);
        b.Lagg(HogBas(10), SPADER, 2);
        b.Lagg(HogBas(10) + 1, RUTER, 3);
        b.Lagg(HogBas(10) + 2, KLOVER, 5);
        b.Lagg(HogBas(11), HJARTER, 13);
        b.Lagg(HogBas(11) + 1, SPADER, 11);
        // The ten onto the jack empties pile 4.
        KlickaPa(*b.vy, b.Mitten(HogBas(4)));
        QVERIFY(b.Har(HogBas(11) + 2, HJARTER, 10));
        QVERIFY(b.spel->Has_Undos());
        KlickaPa(*b.vy, b.Knapp());
        QCOMPARE(b.spel->Giv(), 2);
        QVERIFY(!b.spel->Has_Undos());
        QCOMPARE(b.spel->Undo(), 0);
        QCOMPARE(b.spel->AntalUndo(), 0);
        const std::vector<int> antal{4, 4, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0};
        for (int p = 0; p < 12; ++p)
            QCOMPARE(b.Kort(p), antal[p]);
        std::vector<std::pair<kortfarg, int>> ordning;
        for (int p = 0; p < 3; ++p)
            for (int j = 0; j < antal[p]; ++j)
                ordning.emplace_back(b.L()[HogBas(p) + j].GeKort().KortFarg(),
                                     b.L()[HogBas(p) + j].GeKort().KortValor());
        const std::vector<std::pair<kortfarg, int>> vantat{
            {KLOVER, 9}, {SPADER, 4},   {RUTER, 12},  {SPADER, 2},  {RUTER, 3},
            {KLOVER, 5}, {HJARTER, 13}, {SPADER, 11}, {HJARTER, 10}};
        QCOMPARE(ordning, vantat);
        for (int i = kForstaLek; i <= kSistaLek; ++i)
            QVERIFY(b.L()[i].Tom());
    }

    void nastaGivUtanKortOkarBaraGivet() {
        Bord b;
        b.Tomt();
        for (int k = 0; k < 4; ++k)
            b.Grund(k, 13);
        auto fore = Bordet(*b.spel);
        KlickaPa(*b.vy, b.Knapp());
        QCOMPARE(b.spel->Giv(), 2);
        QCOMPARE(Bordet(*b.spel), fore);
        KlickaPa(*b.vy, b.Knapp());
        QCOMPARE(b.spel->Giv(), 3);
        QCOMPARE(Bordet(*b.spel), fore);
    }

    void knappenRitasAlltid() {
        Bord b;
        BRect k = b.spel->KnappPos();
        b.vy->InvalidateOffscreen();
        QCOMPARE(b.Pixel(BPoint(k.left + 60, k.top + 4)), QColor(180, 80, 180));
        b.BaraEss();
        b.vy->InvalidateOffscreen();
        QCOMPARE(b.Pixel(BPoint(k.left + 60, k.top + 4)), QColor(180, 80, 180));
    }

    void sammaBordMedOchUtanAnimering() {
        SnabbKlocka();
        Bord utan;
        Bord med(kFro, false, 640, 480, true);
        auto forstaKortdraget = [](Bord& b) {
            for (const Drag& d : b.spel->Regler().LagligaDrag(b.spel->Tabell()))
                if (d.slag == DragSlag::Kort) {
                    GorGest(*b.vy, *b.spel->GestFor(d));
                    break;
                }
            return 0;
        };
        auto knappen = [](Bord& b) {
            KlickaPa(*b.vy, b.Knapp());
            return 0;
        };
        SammaMedOchUtanAnimering<Bord>(utan, med, {forstaKortdraget, knappen, forstaKortdraget});
        QCOMPARE(med.spel->Giv(), 2);
        auto angra = [](Bord& b) { return b.spel->Undo(); };
        SammaMedOchUtanAnimering<Bord>(utan, med, {angra, NyGiv<Bord>(kFro + 1)});
    }

    void angraTillbakaTillGivet() {
        Bord b(kFro, false, 1280, 1024);
        auto givet = Bordet(*b.spel);
        int gjorda = 0;
        for (int n = 0; n < 4; ++n) {
            std::vector<Drag> dragen = b.spel->Regler().LagligaDrag(b.spel->Tabell());
            if (dragen.front().slag != DragSlag::Kort)
                break;
            GorGest(*b.vy, *b.spel->GestFor(dragen.front()));
            ++gjorda;
        }
        QVERIFY(gjorda >= 2);
        QCOMPARE(b.AngraAllt(), gjorda);
        QCOMPARE(Bordet(*b.spel), givet);
        QCOMPARE(b.spel->AntalUndo(), gjorda);
    }

    void vinnerGenomRiktigtSpel() {
        Bord b(kVinstFro, false, 1280, 1024);
        SokSvar vag = Los(b.spel->Regler(), b.spel->Tabell(), SokGranser{100000});
        QCOMPARE(vag.utfall, Utfall::Vinnbar);
        int givar = 1 + static_cast<int>(std::count(vag.drag.begin(), vag.drag.end(), KnappDrag()));
        b.VinnGenomVyn(vag.drag, 52, givar);
        QCOMPARE(b.spel->Giv(), givar);
    }

    void hiscoreRaknarGrundensKortOchGivet() {
        Bord b;
        QCOMPARE(Resultat(b.spel->Bordet()).kort, 4);
        QCOMPARE(Resultat(b.spel->Bordet()).giv, 1);
        b.BaraEss();
        b.Grund(1, 7);
        b.Grund(3, 13);
        b.spel->BordForTest().giv = 3;
        b.spel->BordForTest().antalUndo = 1200;
        b.GlomHiscore();
        QCOMPARE(b.spel->AddHiscore(), 1);
        HiscoreLista tabell = LasHiscore(4);
        QCOMPARE(static_cast<int>(tabell[0].kort), 1 + 7 + 1 + 13);
        QCOMPARE(static_cast<int>(tabell[0].giv), 3);
        QCOMPARE(tabell[0].angra, 999);
        b.TommaPosterFran(2, 3);
    }

    // cards·10000 + (4 − deal)·1000 + (999 − undos): past the fifth deal the deal term is
    // negative, and ten deals weigh as much as a card.
    void givtermenBlirNegativEfterFemteGivet() {
        Bord b;
        b.GlomHiscore();
        auto resultat = [&](int kort, int giv) {
            b.Tomt();
            for (int i = 0; i < kort; ++i)
                b.Lagg(GrundBas(i / 13) + i % 13, static_cast<kortfarg>(i / 13), i % 13 + 1);
            b.spel->BordForTest().giv = giv;
            b.spel->BordForTest().antalUndo = 0;
            return b.spel->AddHiscore();
        };
        QCOMPARE(resultat(20, 5), 1);
        QCOMPARE(resultat(20, 6), 2);
        QCOMPARE(resultat(29, 2), 1);
        // 300000 − 8000 ties 290000 + 2000: the newer goes above.
        QCOMPARE(resultat(30, 12), 1);
        HiscoreLista tabell = LasHiscore(4);
        QCOMPARE(static_cast<int>(tabell[0].giv), 12);
        QCOMPARE(static_cast<int>(tabell[1].giv), 2);
    }

    // The deal is one signed byte in the table: the 128th deal is stored as −128, and the
    // stored entry then ranks as if its deal term were +132000.
    void givEfter127LagrasSomNegativByte() {
        Bord b;
        b.GlomHiscore();
        b.Tomt();
        auto lagg = [&](int kort) {
            for (int i = 0; i < kort; ++i)
                b.Lagg(GrundBas(i / 13) + i % 13, static_cast<kortfarg>(i / 13), i % 13 + 1);
        };
        lagg(30);
        for (int i = 0; i < 127; ++i)
            KlickaPa(*b.vy, b.Knapp());
        QCOMPARE(b.spel->Giv(), 128);
        QCOMPARE(Resultat(b.spel->Bordet()).giv, 128);
        // 300000 − 124000 + 999 against empty entries.
        QCOMPARE(b.spel->AddHiscore(), 1);
        HiscoreLista tabell = LasHiscore(4);
        QCOMPARE(static_cast<int>(tabell[0].kort), 30);
        QCOMPARE(static_cast<int>(tabell[0].giv), -128);
        // The same result again ranks by its true deal, below the stored one (432999)...
        QCOMPARE(b.spel->AddHiscore(), 2);
        // ...where it too is stored as −128; and a better result on the first deal,
        // 400000 + 3000 + 999, goes below both.
        lagg(40);
        b.spel->BordForTest().giv = 1;
        QCOMPARE(b.spel->AddHiscore(), 3);
        tabell = LasHiscore(4);
        QCOMPARE(static_cast<int>(tabell[0].giv), -128);
        QCOMPARE(static_cast<int>(tabell[1].giv), -128);
        QCOMPARE(static_cast<int>(tabell[2].kort), 40);
        QCOMPARE(static_cast<int>(tabell[2].giv), 1);
        // Too few cards past the 127th deal: below even the empty entries (−8001).
        b.Tomt();
        lagg(4);
        b.spel->BordForTest().giv = 128;
        QCOMPARE(b.spel->AddHiscore(), 41);
    }
};

QTEST_MAIN(TestKvarnen)
#include "test_kvarnen.moc"
