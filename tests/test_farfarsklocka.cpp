#include "app/FjolkView.h"
#include "cards/Hiscore.h"
#include "cards/Kortlek.h"
#include "games/Farfarsklocka.h"
#include "games/FarfarsklockaRegler.h"
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

using namespace FarfarsklockaRegler;

namespace {

constexpr unsigned kFro = 3;
// A deal the search over the rules wins.
constexpr unsigned kVinstFro = 5;

struct Bord : Testbord<Farfarsklocka> {
    explicit Bord(unsigned fro = kFro, bool tomt = false, int bredd = 640, int hojd = 480,
                  bool animera = false)
        : Testbord(6, fro, tomt, bredd, hojd, animera) {}
    // Only the twelve starting cards, on the clock.
    void BaraKlockan() {
        Tomt();
        for (int k = 0; k < kAntalKlockhogar; ++k)
            Lagg(KlockBas(k), kStartkort[k].farg, kStartkort[k].valor);
    }
    // Every pile holds one card that fits nowhere else (a seven of hearts: no clock pile of
    // hearts waits for it, and no pile top is an eight).
    void FullaHogar() {
        for (int p = 0; p < kAntalHogar; ++p)
            Lagg(HogBas(p), HJARTER, 7);
    }
    // The cards of a pile: up to its first empty slot.
    int Kort(int pile) {
        int tom = ForstaTomma(L(), HogBas(pile), HogBas(pile) + kPlatserPerHog - 1);
        return tom < 0 ? kPlatserPerHog : tom - HogBas(pile);
    }
};

} // namespace

class TestFarfarsklocka : public QObject {
    Q_OBJECT

    QTemporaryDir dataMapp;

private slots:
    void initTestCase() { BorjaSpeltest<Farfarsklocka>(dataMapp, 6, 432); }

    void cleanup() { SattKlocka({}); }

    // The list says "klocka", the window's title "Klocka".
    void namnetIListanOchITiteln() {
        QCOMPARE(QString::fromUtf8(SpelNamn(6)), QStringLiteral("Farfars klocka"));
        QCOMPARE(QString::fromUtf8(TitelNamn(6)), QStringLiteral("Farfars Klocka"));
    }

    // cw = trunc((639 − 20) / 10) = 61, raised to 70; ch = (479 − 40) / 6 = 73;
    // u = 75, v = 78, h = 35.
    void utlaggVid640x480() {
        std::vector<Lucka> l(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
        Utlagg u = RaknaUtLuckor(l, BRect(0, 0, 639, 479));
        QCOMPARE(u.w, 70);
        QCOMPARE(u.h, 73);
        LiggerVid(l, {
                         {KlockBas(7), BRect(260, 5, 330, 78)},
                         {KlockBas(8), BRect(335, 26, 405, 99)},
                         {KlockBas(8) + 1, BRect(335, 29, 405, 102)},
                         {KlockBas(9), BRect(410, 48, 480, 121)},
                         {KlockBas(10), BRect(485, 99, 555, 172)},
                         {KlockBas(11), BRect(410, 156, 480, 229)},
                         {KlockBas(0), BRect(335, 177, 405, 250)},
                         {KlockBas(1), BRect(260, 199, 330, 272)},
                         {KlockBas(1) + 18, BRect(260, 253, 330, 326)},
                         {KlockBas(2), BRect(185, 177, 255, 250)},
                         {KlockBas(3), BRect(110, 156, 180, 229)},
                         {KlockBas(4), BRect(35, 99, 105, 172)},
                         {KlockBas(5), BRect(110, 48, 180, 121)},
                         {KlockBas(6), BRect(185, 26, 255, 99)},
                         {HogBas(0), BRect(5, 317, 75, 390)},
                         {HogBas(7) + 2, BRect(530, 323, 600, 396)},
                         {kForstaLek, BRect(565, 5, 635, 78)},
                         {kSistaLek, BRect(565, 56, 635, 129)},
                     });
    }

    // cw = trunc(1259 / 10) = 125, ch = 983 / 6 = 163, u = 130, v = 168, h = 62.
    void utlaggVid1280x1024() {
        std::vector<Lucka> l(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
        Utlagg u = RaknaUtLuckor(l, BRect(0, 0, 1279, 1023));
        QCOMPARE(u.w, 125);
        QCOMPARE(u.h, 163);
        LiggerVid(l, {
                         {KlockBas(7), BRect(452, 5, 577, 168)},
                         {KlockBas(10), BRect(842, 216, 967, 379)},
                         {KlockBas(4), BRect(62, 216, 187, 379)},
                         {KlockBas(1), BRect(452, 433, 577, 596)},
                         {KlockBas(1) + 2, BRect(452, 439, 577, 602)},
                         {KlockBas(9) + 1, BRect(712, 105, 837, 268)},
                         {HogBas(0), BRect(5, 677, 130, 840)},
                         {HogBas(7) + 18, BRect(915, 731, 1040, 894)},
                         {kForstaLek + 10, BRect(1005, 15, 1130, 178)},
                     });
    }

    // The stock's left edge is eight card widths without the gaps (8·cw + m), not 8·u.
    void lekensVansterkantArAttaKortbredderUtanMellanrum() {
        std::vector<Lucka> l(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
        Utlagg u = RaknaUtLuckor(l, BRect(0, 0, 999, 799));
        QCOMPARE(u.w, 97);
        QCOMPARE(l[kForstaLek].GePos().left, 8.0f * 97 + 5);
        QCOMPARE(l[kForstaLek].GePos().right, 9.0f * 97 + 5);
        QVERIFY(l[kForstaLek].GePos().left != 8.0f * (97 + 5));
    }

    void kortenRitasIKortetsStorlek() {
        Bord b;
        QCOMPARE(b.spel->FramsidaFor(Kort(SPADER, 13, BRect())).Width() + 1, 70.0f);
        QCOMPARE(b.spel->FramsidaFor(Kort(SPADER, 13, BRect())).Height() + 1, 73.0f);
    }

    // The twelve starting cards are taken out of the fresh deck before it is shuffled; the
    // shuffled forty fill the stock from 380, and the deal takes the stock's top each time.
    void givetFoljerLeken() {
        Bord b;
        std::vector<int> tagna;
        std::vector<Kort> resten = BlandadLek(kFro, [&](Kortlek& lek) {
            for (const Startkort& s : kStartkort)
                tagna.push_back(lek.GeValtKort(s.farg, s.valor).KortValor());
        });
        for (int k = 0; k < kAntalKlockhogar; ++k)
            QCOMPARE(tagna[k], kStartkort[k].valor);
        QCOMPARE(static_cast<int>(resten.size()), 40);
        for (int k = 0; k < kAntalKlockhogar; ++k) {
            QVERIFY(b.Har(KlockBas(k), kStartkort[k].farg, kStartkort[k].valor));
            QVERIFY(b.L()[KlockBas(k) + 1].Tom());
        }
        for (int p = 0; p < kAntalHogar; ++p) {
            QCOMPARE(b.Kort(p), 5);
            for (int j = 0; j < 5; ++j) {
                const Kort& k = resten[39 - 5 * p - j];
                QVERIFY(b.Har(HogBas(p) + j, k.KortFarg(), k.KortValor()));
            }
        }
        for (int i = kForstaLek; i <= kSistaLek; ++i)
            QVERIFY(b.L()[i].Tom());
        QVERIFY(!b.spel->Has_Undos());
        QCOMPARE(b.spel->Undo(), 0);
        QCOMPARE(b.spel->AntalUndo(), 0);
    }

    void kungPaKlockanTarEssOchEssPaHogTarKung() {
        Bord b;
        b.BaraKlockan();
        b.FullaHogar();
        // Hearts queen (pile 10) and its king.
        b.Lagg(KlockBas(10) + 1, HJARTER, 13);
        b.Lagg(HogBas(0) + 1, HJARTER, 1);
        KlickaPa(*b.vy, b.Mitten(HogBas(0) + 1));
        QVERIFY(b.Har(KlockBas(10) + 2, HJARTER, 1));
        // Any king onto a pile's ace.
        b.Lagg(HogBas(1) + 1, RUTER, 1);
        b.Lagg(HogBas(2) + 1, SPADER, 13);
        KlickaPa(*b.vy, b.Mitten(HogBas(2) + 1));
        QVERIFY(b.Har(HogBas(1) + 2, SPADER, 13));
        QVERIFY(b.L()[HogBas(2) + 1].Tom());
        std::vector<std::pair<int, int>> vantat{{HogBas(0) + 1, KlockBas(10) + 2},
                                                {HogBas(2) + 1, HogBas(1) + 2}};
        QCOMPARE(b.spel->UndoLista(), vantat);
    }

    void klickUtanPlatsOchUtanTomHogGorIngenting() {
        Bord b;
        b.BaraKlockan();
        b.FullaHogar();
        b.Lagg(HogBas(3) + 1, KLOVER, 2);
        auto fore = Bordet(*b.spel);
        KlickaPa(*b.vy, b.Mitten(HogBas(3) + 1));
        QCOMPARE(Bordet(*b.spel), fore);
        QVERIFY(b.spel->UndoLista().empty());
    }

    void klickGarTillKlockanForeTomHog() {
        Bord b;
        b.BaraKlockan();
        b.FullaHogar();
        b.L()[HogBas(5)].TaBortKort();
        b.Lagg(HogBas(2), SPADER, 9);
        b.Lagg(HogBas(0) + 1, RUTER, 3);
        KlickaPa(*b.vy, b.Mitten(HogBas(0) + 1));
        QVERIFY(b.Har(KlockBas(0) + 1, RUTER, 3));
    }

    void klickGarTillForstaTommaHogenForeHogtopparna() {
        Bord b;
        b.BaraKlockan();
        b.FullaHogar();
        b.L()[HogBas(6)].TaBortKort();
        b.L()[HogBas(4)].TaBortKort();
        b.Lagg(HogBas(1), KLOVER, 10);
        b.Lagg(HogBas(7) + 1, SPADER, 9);
        KlickaPa(*b.vy, b.Mitten(HogBas(7) + 1));
        QVERIFY(b.Har(HogBas(4), SPADER, 9));
        QVERIFY(b.L()[HogBas(1) + 1].Tom());
        // By a drop it goes onto the ten instead.
        DraFranTill(*b.vy, b.Mitten(HogBas(4)), b.Mitten(HogBas(1)));
        QVERIFY(b.Har(HogBas(1) + 1, SPADER, 9));
    }

    void ensamtKortFlyttasTillEnAnnanTomHog() {
        Bord b;
        b.BaraKlockan();
        b.FullaHogar();
        b.L()[HogBas(1)].TaBortKort();
        b.L()[HogBas(3)].TaBortKort();
        b.Lagg(HogBas(3), KLOVER, 2);
        KlickaPa(*b.vy, b.Mitten(HogBas(3)));
        QVERIFY(b.Har(HogBas(1), KLOVER, 2));
        QVERIFY(b.L()[HogBas(3)].Tom());
        // And back again: pile 1's own base is not empty, pile 3's now is.
        KlickaPa(*b.vy, b.Mitten(HogBas(1)));
        QVERIFY(b.Har(HogBas(3), KLOVER, 2));
        QCOMPARE(static_cast<int>(b.spel->UndoLista().size()), 2);
    }

    void tomHogTarVilketKortSomHelstVidSlapp() {
        Bord b;
        b.BaraKlockan();
        b.FullaHogar();
        b.L()[HogBas(6)].TaBortKort();
        b.Lagg(HogBas(2) + 1, SPADER, 4);
        DraFranTill(*b.vy, b.Mitten(HogBas(2) + 1), b.Mitten(HogBas(6)));
        QVERIFY(b.Har(HogBas(6), SPADER, 4));
        QCOMPARE(b.spel->UndoLista().back(), std::make_pair(HogBas(2) + 1, HogBas(6)));
        // A pile top takes only the next lower card.
        DraFranTill(*b.vy, b.Mitten(HogBas(6)), b.Mitten(HogBas(5)));
        QVERIFY(b.Har(HogBas(6), SPADER, 4));
    }

    // A pile is nineteen slots and the slot after its last is the next pile's base: a card
    // played onto a full pile's top lies there, and the two piles are one run until it
    // leaves, so the full pile's nineteenth card is no top while it lies under it.
    void fullHogFortsatterINastaHogensBas() {
        Bord b;
        b.BaraKlockan();
        b.FullaHogar();
        b.L()[HogBas(1)].TaBortKort();
        for (int j = 0; j < kPlatserPerHog; ++j)
            b.Lagg(HogBas(0) + j, SPADER, 13 - j % 13);
        // Pile 0: king of spades down to the ace, then king down to the eight.
        const int sista = HogBas(0) + kPlatserPerHog - 1;
        QCOMPARE(sista + 1, HogBas(1));
        QCOMPARE(b.Valor(sista), 8);
        b.Lagg(HogBas(2) + 1, HJARTER, 7);
        DraFranTill(*b.vy, b.Mitten(HogBas(2) + 1), b.Mitten(sista));
        QVERIFY(b.Har(HogBas(1), HJARTER, 7));
        QCOMPARE(b.spel->UndoLista().back(), std::make_pair(HogBas(2) + 1, HogBas(1)));
        QCOMPARE(Traff(b.L(), b.Mitten(sista)), -1);
        QCOMPARE(Traff(b.L(), b.Mitten(HogBas(1))), HogBas(1));
    }

    // Only the clock top's own rectangle takes a drop, not the strip of a covered card.
    void slappPaKlockansTacktaKortGorIngenting() {
        Bord b;
        b.BaraKlockan();
        b.FullaHogar();
        b.Lagg(KlockBas(8) + 1, RUTER, 11);
        b.Lagg(KlockBas(8) + 2, RUTER, 12);
        b.Lagg(HogBas(3) + 1, RUTER, 13);
        BRect tackt = b.L()[KlockBas(8)].GePos();
        BPoint remsa((tackt.left + tackt.right) / 2, tackt.top + 1);
        DraFranTill(*b.vy, b.Mitten(HogBas(3) + 1), remsa);
        QVERIFY(b.Har(HogBas(3) + 1, RUTER, 13));
        QVERIFY(b.L()[KlockBas(8) + 3].Tom());
        QVERIFY(b.spel->UndoLista().empty());
        DraFranTill(*b.vy, b.Mitten(HogBas(3) + 1), b.Mitten(KlockBas(8) + 2));
        QVERIFY(b.Har(KlockBas(8) + 3, RUTER, 13));
    }

    void klockanOchLekenRorSigAldrig() {
        Bord b;
        auto fore = Bordet(*b.spel);
        for (int k = 0; k < kAntalKlockhogar; ++k) {
            KlickaPa(*b.vy, b.Mitten(KlockBas(k)));
            DraFranTill(*b.vy, b.Mitten(KlockBas(k)), b.Mitten(HogBas(k % kAntalHogar)));
        }
        QCOMPARE(Bordet(*b.spel), fore);
        // A covered pile card neither.
        BRect r = b.L()[HogBas(0)].GePos();
        KlickaPa(*b.vy, BPoint(r.left + 10, r.top + 1));
        QCOMPARE(Bordet(*b.spel), fore);
    }

    // Won exactly when the eight piles are empty, which is when all 52 cards lie on the
    // clock.
    void vunnetNarAllaAttaHogarArTomma() {
        Bord b(kFro, true);
        int paKlockan = 0;
        for (int k = 0; k < kAntalKlockhogar; ++k) {
            // Each suit's 13 cards over its three clock piles, from each starting card up;
            // the pile that starts highest takes the ace and what follows it.
            int antal = k >= 8 ? 5 : 4;
            for (int j = 0; j < antal; ++j) {
                int v = (kStartkort[k].valor - 1 + j) % 13 + 1;
                b.Lagg(KlockBas(k) + j, kStartkort[k].farg, v);
                ++paKlockan;
            }
        }
        QCOMPARE(paKlockan, 52);
        // The last card of the king of clubs' pile back on a pile.
        Kort sista = b.L()[KlockBas(11) + 4].GeKort();
        b.L()[KlockBas(11) + 4].TaBortKort();
        b.Lagg(HogBas(5), sista.KortFarg(), sista.KortValor());
        QVERIFY(!b.spel->KlarSpel());
        KlickaPa(*b.vy, b.Mitten(HogBas(5)));
        QVERIFY(b.Har(KlockBas(11) + 4, sista.KortFarg(), sista.KortValor()));
        QVERIFY(b.spel->KlarSpel());
        QCOMPARE(AntalFyllda(b.L(), kForstaKlocka, kSistaKlocka), 52);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(b.brevlada->klart, 1);
        QCOMPARE(Resultat(b.spel->Bordet()).kort, 52);
    }

    void sammaBordMedOchUtanAnimering() {
        SnabbKlocka();
        Bord utan;
        Bord med(kFro, false, 640, 480, true);
        // The first, second and third of the moves the rules list, in turn.
        auto drag = [](int n) {
            return [n](Bord& b) {
                std::vector<Drag> dragen = b.spel->Regler().LagligaDrag(b.spel->Tabell());
                if (dragen.empty()) {
                    QTest::qFail("the rules list no move", __FILE__, __LINE__);
                    return -1;
                }
                GorGest(*b.vy, *b.spel->GestFor(dragen[n % dragen.size()]));
                return static_cast<int>(dragen.size());
            };
        };
        auto angra = [](Bord& b) { return b.spel->Undo(); };
        SammaMedOchUtanAnimering<Bord>(utan, med,
                                       {drag(0), drag(1), drag(2), angra, NyGiv<Bord>(kFro + 1)});
    }

    void angraTillbakaTillGivet() {
        Bord b(kFro, false, 1280, 1024);
        auto givet = Bordet(*b.spel);
        for (int n = 0; n < 4; ++n) {
            std::vector<Drag> dragen = b.spel->Regler().LagligaDrag(b.spel->Tabell());
            QVERIFY(!dragen.empty());
            GorGest(*b.vy, *b.spel->GestFor(dragen.back()));
        }
        QCOMPARE(b.AngraAllt(), 4);
        QCOMPARE(Bordet(*b.spel), givet);
        QCOMPARE(b.spel->AntalUndo(), 4);
    }

    void vinnerGenomRiktigtSpel() {
        Bord b(kVinstFro, false, 1280, 1024);
        SokSvar vag = Los(b.spel->Regler(), b.spel->Tabell(), SokGranser{20000});
        QCOMPARE(vag.utfall, Utfall::Vinnbar);
        b.VinnGenomVyn(vag.drag, 52, 1);
    }

    // Cards on the clock, deal 1, undos; more cards first, then fewer undos, and at equal
    // cards and undos the newer result above.
    void hiscoreRaknarKlockansKort() {
        Bord b;
        QCOMPARE(Resultat(b.spel->Bordet()).kort, 12);
        QCOMPARE(Resultat(b.spel->Bordet()).giv, 1);
        b.GlomHiscore();
        b.BaraKlockan();
        b.Lagg(KlockBas(0) + 1, RUTER, 3);
        b.spel->BordForTest().antalUndo = 5;
        QCOMPARE(b.spel->AddHiscore(), 1);
        b.spel->BordForTest().antalUndo = 6;
        QCOMPARE(b.spel->AddHiscore(), 2);
        b.spel->BordForTest().antalUndo = 5;
        QCOMPARE(b.spel->AddHiscore(), 1);
        b.L()[KlockBas(0) + 1].TaBortKort();
        b.spel->BordForTest().antalUndo = 0;
        QCOMPARE(b.spel->AddHiscore(), 4);
        HiscoreLista tabell = LasHiscore(6);
        QCOMPARE(static_cast<int>(tabell[0].kort), 13);
        QCOMPARE(tabell[0].angra, 5);
        QCOMPARE(static_cast<int>(tabell[0].giv), 1);
        QCOMPARE(tabell[2].angra, 6);
        QCOMPARE(static_cast<int>(tabell[3].kort), 12);
        b.TommaPosterFran(5, 1);
    }
};

QTEST_MAIN(TestFarfarsklocka)
#include "test_farfarsklocka.moc"
