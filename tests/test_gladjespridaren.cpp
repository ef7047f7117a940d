#include "app/FjolkView.h"
#include "cards/Hiscore.h"
#include "cards/Luckor.h"
#include "games/Gladjespridaren.h"
#include "games/GladjespridarenRegler.h"
#include "games/KolumnRegler.h"
#include "games/KolumnSpel.h"
#include "solver/Losare.h"
#include "support/Gester.h"
#include "support/KolumnBord.h"
#include "support/Spelfall.h"

#include <QColor>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

using namespace KolumnRegler;
using namespace GladjespridarenRegler;

namespace {

constexpr unsigned kFro = 3;
// A deal the search over the rules wins.
constexpr unsigned kVinstFro = 13;

struct Bord : KolumnBord {
    explicit Bord(unsigned fro = kFro, bool tomt = true, int bredd = 640, int hojd = 480,
                  bool animera = false)
        : KolumnBord(5, fro, tomt, bredd, hojd, animera) {}
    int Reserv(int k) { return kForstaReserv + 22 * k; }
    int Grund(int f) { return kForstaGrund + 22 * f; }
};

// A falling run of alternating colours from `valor` down, `antal` cards, from slot `fran`.
void LaggRad(Bord& b, int fran, int valor, int antal, bool svartForst) {
    for (int k = 0; k < antal; ++k) {
        bool svart = (k % 2 == 0) == svartForst;
        b.Lagg(fran + k, svart ? (k % 4 < 2 ? SPADER : KLOVER) : (k % 4 < 2 ? HJARTER : RUTER),
               valor - k);
    }
}

} // namespace

class TestGladjespridaren : public QObject {
    Q_OBJECT

    QTemporaryDir dataMapp;

private slots:
    void initTestCase() {
        BorjaSpeltest<Gladjespridaren>(dataMapp, 5, 492);
        Bord b(kFro, false);
        for (const Lucka& l : b.L())
            QVERIFY(!l.BakSida());
    }

    // ---- Layout ---------------------------------------------------------------------------

    void utlaggVid640x480() {
        std::vector<Lucka> l(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
        // h = (479 − 40) / 11 = 39 and w = (639 − 20) / 10 = 61, both raised to 70; m = 5.
        Rutnat u = RaknaUtLuckor(l, BRect(0, 0, 639, 479));
        QCOMPARE(u.w, 70);
        QCOMPARE(u.h, 70);
        // Columns from 2h + 3m = 155, 30 pixels a card.
        LiggerVid(l, {
                         {0, BRect(5, 155, 75, 225)},
                         {1, BRect(5, 185, 75, 255)},
                         {177, BRect(605, 185, 675, 255)},
                         {197, BRect(605, 785, 675, 855)},
                         // Reserve pile k at (k + 1)(w + m), from h + 2m = 80.
                         {198, BRect(75, 80, 145, 150)},
                         {199, BRect(75, 110, 145, 180)},
                         {331, BRect(525, 110, 595, 180)},
                         // Foundation f at f(w + m) + 2w + m + w/2 = 75f + 180.
                         {352, BRect(180, 5, 250, 75)},
                         {364, l[352].GePos()},
                         {373, l[352].GePos()},
                         {374, BRect(255, 5, 325, 75)},
                         {418, BRect(405, 5, 475, 75)},
                         {439, l[418].GePos()},
                         // The deck in the top-left corner, a pixel a card.
                         {440, BRect(5, 5, 75, 75)},
                         {491, BRect(5, 56, 75, 126)},
                     });
    }

    void utlaggVid1280x1024() {
        std::vector<Lucka> l(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
        // h = (1023 − 40) / 11 = 89, w = (1279 − 20) / 10 = 125, w/2 = 62.
        Rutnat u = RaknaUtLuckor(l, BRect(0, 0, 1279, 1023));
        QCOMPARE(u.w, 125);
        QCOMPARE(u.h, 89);
        LiggerVid(l, {
                         {23, BRect(135, 223, 260, 312)},
                         {176, BRect(1045, 193, 1170, 282)},
                         {220, BRect(260, 99, 385, 188)},
                         {330, BRect(910, 99, 1035, 188)},
                         {386, BRect(447, 5, 572, 94)},
                         {430, BRect(707, 5, 832, 94)},
                         {491, BRect(5, 56, 130, 145)},
                     });
    }

    // ---- The deal -------------------------------------------------------------------------

    // A deal draws its shuffle and the stripes of one face rendering, nothing more: the next
    // deal goes on from there.
    void givetDrarBlandningenOchEnRitning() {
        Bord bord(kFro, false, 900, 600);
        int nasta = std::rand();
        QCOMPARE(bord.Pos(0), BRect(5, 155, 92, 225));
        QCOMPARE(nasta, TalEfterGivet(kFro, 87));
    }

    void givetLaggerNioTillEttOchReserverna() {
        Bord b(kFro, false);
        for (int c = 0; c < GladjespridarenRegler::kKolumner; ++c) {
            int antal = 0;
            while (antal < kPlatserPerKolumn && !b.L()[c * kPlatserPerKolumn + antal].Tom())
                ++antal;
            QCOMPARE(antal, 9 - c);
        }
        for (int k = 0; k < kReserver; ++k) {
            QVERIFY(!b.L()[b.Reserv(k)].Tom());
            QVERIFY(b.L()[b.Reserv(k) + 1].Tom());
        }
        QCOMPARE(AntalFyllda(b.L(), kForstaGrund, kSistaLek), 0);
        auto ordning = GivOrdning();
        QCOMPARE(static_cast<int>(ordning.size()), 52);
        QCOMPARE(ordning.front(), std::make_pair(491, 0));
        QCOMPARE(ordning[8], std::make_pair(483, 8));
        QCOMPARE(ordning[9], std::make_pair(482, 22));
        QCOMPARE(ordning[44], std::make_pair(447, 176));
        QCOMPARE(ordning[45], std::make_pair(446, 198));
        QCOMPARE(ordning.back(), std::make_pair(440, 330));
    }

    void givetTarLekensKortIOrdning() {
        Bord b(kFro, false);
        std::vector<Kort> kort = BlandadLek(kFro);
        for (auto [fran, till] : GivOrdning()) {
            const Kort& k = kort[fran - kForstaLek];
            QVERIFY(b.Har(till, k.KortFarg(), k.KortValor()));
        }
    }

    // ---- Clicks ---------------------------------------------------------------------------

    void klickGarTillGrundenForst() {
        Bord b;
        b.Kungar({1, 2, 3, 4, 5, 6, 7, 8});
        b.Lagg(b.Grund(0), HJARTER, 1);
        b.Lagg(0, KLOVER, 3);
        b.Lagg(1, HJARTER, 2);
        KlickaPa(*b.vy, b.Band(1));
        QVERIFY(b.Har(353, HJARTER, 2));
        QCOMPARE(b.spel->UndoLista().back(), std::make_pair(1, 353));
        // An ace goes to the first empty foundation base.
        b.Lagg(1, SPADER, 1);
        KlickaPa(*b.vy, b.Band(1));
        QVERIFY(b.Har(374, SPADER, 1));
    }

    void klickTarForstaKolumnenKortEllerTom() {
        Bord b;
        b.Kungar({1, 2, 4, 6, 7, 8});
        b.Lagg(66, SPADER, 9);
        b.Lagg(110, RUTER, 8);
        // The empty column 0 comes before the black nine in column 3: one pass, left to right.
        KlickaPa(*b.vy, b.Band(110));
        QVERIFY(b.Har(0, RUTER, 8));
        // From there, with no empty column before it, onto the nine.
        b.Kungar({5});
        KlickaPa(*b.vy, b.Band(0));
        QVERIFY(b.Har(67, RUTER, 8));
        QVERIFY(b.L()[0].Tom());
    }

    void klickUtanMalGorIngenting() {
        Bord b;
        b.Kungar({0, 1, 2, 3, 4, 5, 6, 7, 8});
        b.Lagg(23, HJARTER, 9);
        KlickaPa(*b.vy, b.Band(23));
        QVERIFY(b.Har(23, HJARTER, 9));
        QVERIFY(b.spel->UndoLista().empty());
    }

    void radAvVilkenLangdSomHelstFlyttarPaKort() {
        Bord b;
        b.Kungar({1, 2, 3, 4, 5, 6, 7, 8});
        b.Lagg(0, RUTER, 13);
        LaggRad(b, 1, 12, 11, false); // Q♥ down to 2, alternating
        QVERIFY(GiltigRad(Planen(), b.L(), 1, 11, false));
        // No free cell, no empty column: in Freecell not even two cards could go.
        KlickaPa(*b.vy, b.Band(1));
        QVERIFY(b.Har(23, HJARTER, 12));
        QVERIFY(b.Har(33, b.L()[33].GeKort().KortFarg(), 2));
        QVERIFY(b.L()[1].Tom());
        QCOMPARE(static_cast<int>(b.spel->UndoLista().size()), 13);
        QCOMPARE(b.spel->UndoLista()[0], std::make_pair(1, 23));
        QCOMPARE(b.spel->UndoLista()[11], std::make_pair(22, 33));
        QCOMPARE(b.spel->UndoLista()[12], std::make_pair(1234, 11));
        QCOMPARE(b.spel->Undo(), 0);
        QVERIFY(b.Har(1, HJARTER, 12));
        QVERIFY(b.L()[23].Tom());
        QCOMPARE(b.spel->AntalUndo(), 1);
    }

    void radAvVilkenLangdSomHelstFlyttarTillTomKolumn() {
        Bord b;
        b.Kungar({2, 4, 5, 6, 7, 8});
        LaggRad(b, 0, 13, 13, true); // a whole column, king to ace
        LaggRad(b, 22, 12, 4, true);
        // Dropped below the empty column 3's place, the four cards fill it.
        DraFranTill(*b.vy, b.Band(22), b.Under(66));
        QVERIFY(b.Har(66, SPADER, 12));
        QCOMPARE(Toppen(b.L(), 66), 69);
        QVERIFY(b.L()[22].Tom());
        QCOMPARE(b.spel->UndoLista().back(), std::make_pair(1234, 4));
        QCOMPARE(b.spel->UndoLista()[4], std::make_pair(66, 70));
        // A click on the run of twelve below the king takes it to the empty column 1.
        KlickaPa(*b.vy, b.Band(1));
        QVERIFY(b.Har(22, HJARTER, 12));
        QCOMPARE(Toppen(b.L(), 22), 33);
        QCOMPARE(Toppen(b.L(), 0), 0);
    }

    void klickPaOgiltigRadGorIngenting() {
        Bord b;
        b.Kungar({2, 3, 4, 5, 6, 7, 8});
        b.Lagg(0, SPADER, 7);
        b.Lagg(1, KLOVER, 6);
        b.Lagg(22, HJARTER, 8);
        KlickaPa(*b.vy, b.Band(0));
        QVERIFY(b.Har(0, SPADER, 7));
        DraFranTill(*b.vy, b.Band(0), b.Under(22));
        QVERIFY(b.Har(0, SPADER, 7));
        QVERIFY(b.spel->UndoLista().empty());
    }

    // ---- Reserve piles and foundations ----------------------------------------------------

    void reservhogarTarAldrigEmotKort() {
        Bord b;
        b.Kungar({1, 2, 3, 4, 5, 6, 7, 8});
        b.Lagg(0, KLOVER, 9);
        b.Lagg(b.Reserv(0), RUTER, 8);
        b.Lagg(b.Reserv(1), SPADER, 7);
        // Released on its own pile: the pile takes nothing, not even its own card.
        DraFranTill(*b.vy, b.Mitten(b.Reserv(0)), b.Mitten(b.Reserv(0)));
        QVERIFY(b.Har(b.Reserv(0), RUTER, 8));
        QVERIFY(b.spel->UndoLista().empty());
        b.Klicka(b.Reserv(0));
        QVERIFY(b.Har(1, RUTER, 8));
        QVERIFY(b.L()[b.Reserv(0)].Tom());
        // The seven fits on the eight, not on the empty pile it is dropped over.
        DraFranTill(*b.vy, b.Mitten(b.Reserv(1)), b.Mitten(b.Reserv(0)));
        QVERIFY(b.Har(b.Reserv(1), SPADER, 7));
        DraFranTill(*b.vy, b.Band(1), b.Mitten(b.Reserv(0)));
        QVERIFY(b.Har(1, RUTER, 8));
        QVERIFY(b.L()[b.Reserv(0)].Tom());
        // A card with nowhere else to go does not go there either.
        b.Lagg(23, HJARTER, 4);
        KlickaPa(*b.vy, b.Band(23));
        QVERIFY(b.Har(23, HJARTER, 4));
        QCOMPARE(static_cast<int>(b.spel->UndoLista().size()), 1);
    }

    void grundensKortKanInteTasTillbaka() {
        Bord b;
        b.Kungar({1, 2, 3, 4, 5, 6, 7, 8});
        b.Lagg(352, HJARTER, 1);
        b.Lagg(353, HJARTER, 2);
        b.Lagg(354, HJARTER, 3);
        b.Lagg(0, SPADER, 4);
        BPoint grund = b.Mitten(354);
        QCOMPARE(Traff(Planen(), b.L(), grund), -1);
        KlickaPa(*b.vy, grund);
        DraFranTill(*b.vy, grund, b.Under(0));
        QVERIFY(b.Har(354, HJARTER, 3));
        QVERIFY(b.Har(0, SPADER, 4));
        QVERIFY(b.spel->UndoLista().empty());
        QVERIFY(b.spel->GestFor(KortDrag(354, 1)) == std::nullopt);
    }

    void slappUpptillHundraPixlarUnder() {
        Bord b;
        b.Kungar({2, 3, 4, 5, 6, 7, 8});
        b.Lagg(0, KLOVER, 10);
        b.Lagg(22, RUTER, 9);
        BRect r = b.Pos(0);
        DraFranTill(*b.vy, b.Band(22), BPoint(r.left + 10, r.bottom + 100));
        QVERIFY(b.Har(1, RUTER, 9));
        b.spel->Undo();
        DraFranTill(*b.vy, b.Band(22), BPoint(r.left + 10, r.bottom + 101 + 30));
        QVERIFY(b.Har(22, RUTER, 9));
    }

    // ---- Won ------------------------------------------------------------------------------

    void klartForstNarAllaKungarLigger() {
        Bord b;
        QVERIFY(!b.spel->KlarSpel());
        for (int f = 0; f < 3; ++f)
            b.Lagg(364 + 22 * f, static_cast<kortfarg>(f), 13);
        QVERIFY(!b.spel->KlarSpel());
        b.Lagg(431, SPADER, 13);
        QVERIFY(!b.spel->KlarSpel());
        b.Lagg(430, SPADER, 12);
        QVERIFY(!b.spel->KlarSpel());
        b.Lagg(430, SPADER, 13);
        QVERIFY(b.spel->KlarSpel());
    }

    void vinnerGenomRiktigtSpel() {
        Bord b(kVinstFro, false, 1280, 1024);
        SokSvar vag = Los(Regler(), b.spel->Tabell(), SokGranser{100000});
        QCOMPARE(vag.utfall, Utfall::Vinnbar);
        b.VinnGenomVyn(vag.drag, 52, 1);
    }

    // ---- Hiscore --------------------------------------------------------------------------

    void hiscoreRaknarKortenPaGrunderna() {
        Bord b;
        b.GlomHiscore();
        b.Lagg(352, HJARTER, 1);
        b.Lagg(353, HJARTER, 2);
        b.Lagg(418, SPADER, 1);
        b.Lagg(b.Reserv(0), KLOVER, 1);
        b.Lagg(0, KLOVER, 2);
        b.spel->BordForTest().antalUndo = 4;
        QCOMPARE(b.spel->AddHiscore(), 1);
        HiscoreLista tabell = LasHiscore(5);
        QCOMPARE(static_cast<int>(tabell[0].kort), 3);
        QCOMPARE(static_cast<int>(tabell[0].giv), 1);
        QCOMPARE(tabell[0].angra, 4);
        b.TommaPosterFran(2, 1);
        // The same cards and undos again: the new result goes above the stored one.
        b.spel->BordForTest().antalUndo = 4;
        QCOMPARE(b.spel->AddHiscore(), 1);
        // Fewer undos rank higher; more cards higher still.
        b.spel->BordForTest().antalUndo = 2;
        QCOMPARE(b.spel->AddHiscore(), 1);
        b.spel->BordForTest().antalUndo = 9;
        QCOMPARE(b.spel->AddHiscore(), 4);
        b.Lagg(354, HJARTER, 3);
        QCOMPARE(b.spel->AddHiscore(), 1);
        tabell = LasHiscore(5);
        QCOMPARE(static_cast<int>(tabell[0].kort), 4);
        QCOMPARE(tabell[1].angra, 2);
        QCOMPARE(tabell[2].angra, 4);
        QCOMPARE(tabell[3].angra, 4);
        QCOMPARE(tabell[4].angra, 9);
    }

    // ---- Drawing --------------------------------------------------------------------------

    void tommaReserverHarIngenKantlinje() {
        Bord b;
        b.vy->InvalidateOffscreen();
        auto vansterKant = [&](int lucka) { return b.Pixel(b.VansterKant(lucka)); };
        const QColor gront(0, 160, 0);
        QVERIFY(vansterKant(0) != gront);
        QVERIFY(vansterKant(88) != gront);
        QVERIFY(vansterKant(352) != gront);
        QVERIFY(vansterKant(418) != gront);
        QCOMPARE(vansterKant(b.Reserv(0)), gront);
        QCOMPARE(vansterKant(b.Reserv(6)), gront);
    }

    // ---- Animation and undo ---------------------------------------------------------------

    void sammaBordMedOchUtanAnimering() {
        Bord utan(kFro, false);
        Bord med(kFro, false, 640, 480, true);
        auto tvaKlick = [](Bord& b) {
            for (int i = 0; i <= kSistaTraff && b.spel->UndoLista().size() < 2; ++i)
                if (Topp(b.L(), i))
                    b.Klicka(i);
            return 0;
        };
        auto angraAllt = [](Bord& b) { return b.AngraAllt(); };
        std::vector<std::vector<LuckaBild>> bilder;
        SammaMedOchUtanAnimering<Bord>(utan, med, {tvaKlick, angraAllt}, &bilder);
        QCOMPARE(static_cast<int>(bilder.size()), 3);
        QVERIFY(bilder[1] != bilder[0]);
        QCOMPARE(bilder[2], bilder[0]);
    }

    void angraTillbakaTillGivet() {
        Bord b(kFro, false, 1280, 1024);
        auto givet = Bordet(*b.spel);
        for (int i = 0; i <= kSistaTraff && b.spel->UndoLista().size() < 3; ++i)
            if (Topp(b.L(), i))
                b.Klicka(i);
        QVERIFY(b.AngraAllt() >= 1);
        QCOMPARE(Bordet(*b.spel), givet);
    }
};

QTEST_MAIN(TestGladjespridaren)
#include "test_gladjespridaren.moc"
