#include "app/FjolkView.h"
#include "games/Freecell.h"
#include "games/FreecellRegler.h"
#include "games/KolumnRegler.h"
#include "games/KolumnSpel.h"
#include "solver/Losare.h"
#include "support/Gester.h"
#include "support/KolumnBord.h"
#include "support/Spelfall.h"

#include <QTemporaryDir>
#include <QTest>

#include <utility>
#include <vector>

using namespace KolumnRegler;
using namespace FreecellRegler;

namespace {

constexpr unsigned kFro = 3;
// A deal the search below wins with single cards.
constexpr unsigned kVinstFro = 29;

struct Bord : KolumnBord {
    explicit Bord(unsigned fro = kFro, bool tomt = true, int bredd = 640, int hojd = 480,
                  bool animera = false)
        : KolumnBord(8, fro, tomt, bredd, hojd, animera) {}
};

} // namespace

class TestFreecell : public QObject {
    Q_OBJECT

    QTemporaryDir dataMapp;

private slots:
    void initTestCase() { BorjaSpeltest<Freecell>(dataMapp, 8, 288); }

    // "Free" in an empty free cell is drawn in the table's font at 24 pixels, as the other
    // texts on the table are.
    void friTextenIBordetsFont() {
        Bord b(kFro, false);
        b.FriIDeTommaCellerna({176, 178, 180, 182}, 4);
    }

    void utlaggVidMinstaStorlek() {
        std::vector<Lucka> l(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
        Rutnat u = RaknaUtLuckor(l, BRect(0, 0, 639, 479));
        QCOMPARE(u.w, 70);
        QCOMPARE(u.h, 70);
        LiggerVid(l, {
                         {0, BRect(5, 80, 75, 150)},
                         {1, BRect(5, 110, 75, 180)},
                         {176, BRect(5, 5, 75, 75)},
                         {177, l[176].GePos()},
                         {182, BRect(230, 5, 300, 75)},
                         {184, BRect(305, 5, 375, 75)},
                         {196, l[184].GePos()},
                         {235, BRect(530, 5, 600, 75)},
                         {236, BRect(605, 145, 675, 215)},
                         {287, BRect(605, 196, 675, 266)},
                     });
    }

    void utlaggVidStorstaStorlek() {
        std::vector<Lucka> l(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
        Rutnat u = RaknaUtLuckor(l, BRect(0, 0, 1279, 1023));
        QCOMPARE(u.w, 125);
        QCOMPARE(u.h, 89);
        LiggerVid(l, {
                         {23, BRect(135, 129, 260, 218)},
                         {154, BRect(915, 99, 1040, 188)},
                         {197, BRect(655, 5, 780, 94)},
                     });
    }

    void givetLaggerSjuOchSexKort() {
        Bord b(kFro, false);
        for (int c = 0; c < kKolumner; ++c) {
            int antal = 0;
            while (antal < kPlatserPerKolumn && !b.L()[c * kPlatserPerKolumn + antal].Tom())
                ++antal;
            QCOMPARE(antal, c < 4 ? 7 : 6);
        }
        for (int i = 176; i < 288; ++i)
            QVERIFY(b.L()[i].Tom());
        auto ordning = GivOrdning();
        QCOMPARE(static_cast<int>(ordning.size()), 52);
        QCOMPARE(ordning.front(), std::make_pair(287, 0));
        QCOMPARE(ordning[8], std::make_pair(279, 1));
        QCOMPARE(ordning.back(), std::make_pair(236, 3 * 22 + 6));
    }

    void givetTarLekensKortIOrdning() {
        Bord b(kFro, false);
        // The same shuffle again: the deck's first card lay in deck slot 236.
        std::vector<Kort> kort = BlandadLek(kFro);
        for (auto [fran, till] : GivOrdning()) {
            const Kort& k = kort[fran - kForstaLek];
            QVERIFY(b.Har(till, k.KortFarg(), k.KortValor()));
        }
        QVERIFY(b.Har(0, kort[51].KortFarg(), kort[51].KortValor()));
    }

    void traffarBandetPaEttTacktKort() {
        Bord b;
        b.Kungar({1, 2, 3, 4, 5, 6, 7});
        b.Lagg(0, SPADER, 9);
        b.Lagg(1, HJARTER, 8);
        QCOMPARE(Traff(b.L(), b.Band(0)), 0);
        QCOMPARE(Traff(b.L(), b.Band(1)), 1);
        BRect r = b.Pos(1);
        QCOMPARE(Traff(b.L(), BPoint(r.left + 5, r.bottom - 5)), 1);
        QCOMPARE(Traff(b.L(), BPoint(r.left + 5, r.bottom + 5)), -1);
    }

    void klickGarTillGrundenForst() {
        Bord b;
        b.Kungar({2, 3, 4, 5, 6, 7});
        b.Lagg(184, HJARTER, 1);
        b.Lagg(0, HJARTER, 2);
        b.Lagg(22, SPADER, 3);
        KlickaPa(*b.vy, b.Band(0));
        QVERIFY(b.Har(185, HJARTER, 2));
        QVERIFY(b.L()[0].Tom());
        QCOMPARE(b.spel->UndoLista().back(), std::make_pair(0, 185));
    }

    void klickatEssGarTillForstaTommaBas() {
        Bord b;
        b.Kungar({1, 2, 3, 4, 5, 6, 7});
        b.Lagg(184, KLOVER, 1);
        b.Lagg(0, RUTER, 1);
        KlickaPa(*b.vy, b.Band(0));
        QVERIFY(b.Har(197, RUTER, 1));
        // An ace on a foundation base moves on to the next empty base.
        b.Klicka(197);
        QVERIFY(b.Har(210, RUTER, 1));
    }

    void klickPaKolumnForeTomPlats() {
        Bord b;
        b.Kungar({2, 3, 4, 5, 6});
        b.Lagg(0, RUTER, 5);
        b.Lagg(22, KLOVER, 6);
        KlickaPa(*b.vy, b.Band(0));
        QVERIFY(b.Har(23, RUTER, 5));
        // Nothing to build on: the empty column comes before the free cells.
        KlickaPa(*b.vy, b.Band(23));
        QVERIFY(b.Har(0, RUTER, 5));
        b.Kungar({7});
        b.Lagg(1, HJARTER, 9);
        KlickaPa(*b.vy, b.Band(1));
        QVERIFY(b.Har(176, HJARTER, 9));
        // From a free cell to a lower one.
        b.Lagg(178, HJARTER, 10);
        KlickaPa(*b.vy, b.Band(176));
        QVERIFY(b.Har(180, HJARTER, 9));
    }

    void klickPaFricellGarTillLagreFricell() {
        Bord b;
        b.Kungar({0, 1, 2, 3, 4, 5, 6, 7});
        b.Lagg(180, HJARTER, 9);
        b.Klicka(180);
        QVERIFY(b.Har(176, HJARTER, 9));
        QVERIFY(b.L()[180].Tom());
    }

    // A press below a foundation's top band takes its top card, which a click sends where it
    // fits: back onto a column. In the band the foundation's first card is hit, and the
    // foundation, a run rising where a run must fall, does not move.
    void grundensToppkortKlickasTillbakaPaKolumnen() {
        Bord b;
        b.Kungar({1, 2, 3, 4, 5, 6, 7});
        b.Lagg(184, HJARTER, 1);
        b.Lagg(185, HJARTER, 2);
        b.Lagg(186, HJARTER, 3);
        b.Lagg(0, SPADER, 4);
        QCOMPARE(Traff(b.L(), b.Band(186)), 184);
        auto fore = Bordet(*b.spel);
        KlickaPa(*b.vy, b.Band(186));
        QCOMPARE(Bordet(*b.spel), fore);
        QVERIFY(b.spel->UndoLista().empty());
        KlickaPa(*b.vy, b.Botten(186));
        QVERIFY(b.Har(1, HJARTER, 3));
        QVERIFY(b.L()[186].Tom());
        QCOMPARE(b.spel->UndoLista(), (std::vector<std::pair<int, int>>{{186, 1}}));
    }

    // Foundations come first in a drop: a card released over a column's card that also lies
    // within 100 pixels below the foundation above it goes onto the foundation, though it
    // fits on the column's card; released lower down it goes onto that card.
    void slappUnderGrundenGarTillGrundenForst() {
        Bord b;
        b.Kungar({1, 2, 3, 5, 6, 7});
        b.Lagg(184, HJARTER, 1);
        b.Lagg(88, SPADER, 3);
        b.Lagg(0, HJARTER, 2);
        // 640 × 480: cards 70 high, the foundation's bottom at 75, column 4's base 80..150.
        const BRect grund = b.Pos(184);
        const BRect kolumn = b.Pos(88);
        const float x = (kolumn.left + kolumn.right) / 2;
        QCOMPARE(grund.bottom, 75.0f);
        QCOMPARE(kolumn.top, 80.0f);
        DraFranTill(*b.vy, b.Band(0), BPoint(x, grund.bottom + 100));
        QVERIFY(b.Har(185, HJARTER, 2));
        QVERIFY(b.L()[89].Tom());
        b.spel->Undo();
        QVERIFY(b.Har(0, HJARTER, 2));
        DraFranTill(*b.vy, b.Band(0), BPoint(x, grund.bottom + 101));
        QVERIFY(b.Har(89, HJARTER, 2));
        QVERIFY(b.L()[185].Tom());
    }

    void klickUtanMalGorIngenting() {
        Bord b;
        b.Kungar({0, 1, 2, 3, 4, 5, 6, 7});
        for (int i = 0; i < 4; ++i)
            b.Lagg(176 + 2 * i, KLOVER, 13 - i);
        b.Lagg(23, HJARTER, 9);
        KlickaPa(*b.vy, b.Band(23));
        QVERIFY(b.Har(23, HJARTER, 9));
        QVERIFY(b.spel->UndoLista().empty());
    }

    void klickPaRadAvFemFlyttarDen() {
        Bord b;
        b.Kungar({2, 3, 4, 5, 6, 7});
        b.Lagg(0, RUTER, 13);
        b.Lagg(1, SPADER, 7);
        b.Lagg(2, HJARTER, 6);
        b.Lagg(3, KLOVER, 5);
        b.Lagg(4, RUTER, 4);
        b.Lagg(5, SPADER, 3);
        b.Lagg(22, HJARTER, 8);
        QCOMPARE(FriaPlatser(Planen(), b.L()), 4);
        KlickaPa(*b.vy, b.Band(1));
        QVERIFY(b.Har(23, SPADER, 7));
        QVERIFY(b.Har(27, SPADER, 3));
        QVERIFY(b.L()[1].Tom());
        std::vector<std::pair<int, int>> vantat{{1, 23}, {2, 24},  {3, 25},  {4, 26},
                                                {5, 27}, {22, 27}, {1234, 5}};
        QCOMPARE(b.spel->UndoLista(), vantat);
        b.spel->Undo();
        QVERIFY(b.Har(1, SPADER, 7));
        QVERIFY(b.Har(5, SPADER, 3));
        QVERIFY(b.L()[23].Tom());
        QVERIFY(b.spel->UndoLista().empty());
    }

    void radAvSexKraverFlerPlatser() {
        Bord b;
        b.Kungar({2, 3, 4, 5, 6, 7});
        b.Lagg(0, SPADER, 7);
        b.Lagg(1, HJARTER, 6);
        b.Lagg(2, KLOVER, 5);
        b.Lagg(3, RUTER, 4);
        b.Lagg(4, SPADER, 3);
        b.Lagg(5, HJARTER, 2);
        b.Lagg(22, HJARTER, 8);
        KlickaPa(*b.vy, b.Band(0));
        QVERIFY(b.Har(0, SPADER, 7));
        QVERIFY(b.L()[23].Tom());
    }

    void tomKolumnTarEnPlatsMindre() {
        Bord b;
        b.Kungar({2, 3, 4, 5, 6, 7});
        for (int k = 0; k < 6; ++k)
            b.Lagg(k, k % 2 ? HJARTER : SPADER, 7 - k);
        // Six cards, five places (four cells, one column): the column itself leaves four.
        QCOMPARE(FriaPlatser(Planen(), b.L()), 5);
        KlickaPa(*b.vy, b.Band(0));
        QVERIFY(b.L()[22].Tom());
        // Five cards go.
        KlickaPa(*b.vy, b.Band(1));
        QVERIFY(b.Har(22, HJARTER, 6));
        QVERIFY(b.Har(26, HJARTER, 2));
        QCOMPARE(b.spel->UndoLista().back(), std::make_pair(1234, 5));
        QCOMPARE(b.spel->UndoLista()[5], std::make_pair(22, 27));
    }

    void klickPaOgiltigRadGorIngenting() {
        Bord b;
        b.Kungar({2, 3, 4, 5, 6, 7});
        b.Lagg(0, SPADER, 7);
        b.Lagg(1, KLOVER, 6); // same colour
        b.Lagg(22, HJARTER, 8);
        KlickaPa(*b.vy, b.Band(0));
        QVERIFY(b.Har(0, SPADER, 7));
        QVERIFY(b.spel->UndoLista().empty());
    }

    void slappUpptillHundraPixlarUnder() {
        Bord b;
        b.Kungar({2, 3, 4, 5, 6, 7});
        b.Lagg(0, RUTER, 5);
        b.Lagg(22, KLOVER, 6);
        BRect r = b.Pos(22);
        DraFranTill(*b.vy, b.Band(0), BPoint(r.left + 10, r.bottom + 100));
        QVERIFY(b.Har(23, RUTER, 5));
        DraFranTill(*b.vy, b.Band(23), BPoint(r.left + 10, r.bottom + 101 + 30));
        QVERIFY(b.Har(23, RUTER, 5));
    }

    void slappAvFelRadFlyttarIngenting() {
        Bord b;
        b.Kungar({2, 3, 4, 5, 6, 7});
        b.Lagg(0, SPADER, 7);
        b.Lagg(1, SPADER, 6);
        b.Lagg(22, HJARTER, 8);
        DraFranTill(*b.vy, b.Band(0), b.Under(22));
        QVERIFY(b.Har(0, SPADER, 7));
        QVERIFY(b.L()[23].Tom());
        DraOchSlappUtanfor(*b.vy, b.Band(0));
        QVERIFY(b.Har(1, SPADER, 6));
    }

    void slappAvRadPaKort() {
        Bord b;
        b.Kungar({2, 3, 4, 5, 6, 7});
        b.Lagg(0, SPADER, 7);
        b.Lagg(1, HJARTER, 6);
        b.Lagg(22, HJARTER, 8);
        DraFranTill(*b.vy, b.Band(0), b.Under(22));
        QVERIFY(b.Har(23, SPADER, 7));
        QVERIFY(b.Har(24, HJARTER, 6));
        std::vector<std::pair<int, int>> vantat{{0, 23}, {1, 24}, {22, 24}, {1234, 2}};
        QCOMPARE(b.spel->UndoLista(), vantat);
    }

    void klickRutanArOsymmetrisk() {
        Bord b;
        KlickRutanArOsymmetrisk(*b.spel);
        BPoint p(100, 100);
        QVERIFY(b.spel->LamnatKlickRutan(p, BPoint(105, 100)));
        QVERIFY(!b.spel->LamnatKlickRutan(p, BPoint(97, 97)));
    }

    void fyraPixlarVansterArRedanEttDrag() {
        Bord b;
        b.Kungar({1, 2, 3, 4, 5, 6, 7});
        b.Lagg(184, HJARTER, 1);
        b.Lagg(0, HJARTER, 2);
        // The wiggle reaches four pixels to the left: a drag, released where it began,
        // inside free cell 176 lengthened downwards; a click would have gone up to the ace.
        TryckSkakaSlapp(*b.vy, b.Band(0));
        QVERIFY(b.Har(176, HJARTER, 2));
        QVERIFY(b.L()[185].Tom());
        b.Klicka(176);
        QVERIFY(b.Har(185, HJARTER, 2));
    }

    void kolumnRymmerTjugotvaKort() {
        Bord b;
        for (int p = 0; p < 22; ++p)
            b.Lagg(p, HJARTER, 5);
        b.Lagg(22, SPADER, 13);
        QCOMPARE(Toppen(b.L(), 0), 22);
        QVERIFY(KolumnBas(22));
        QVERIFY(!KolumnBas(21));
    }

    void klartForstNarAllaKungarLigger() {
        Bord b;
        QVERIFY(!b.spel->KlarSpel());
        for (int f = 0; f < 3; ++f)
            b.Lagg(196 + 13 * f, static_cast<kortfarg>(f), 13);
        QVERIFY(!b.spel->KlarSpel());
        b.Lagg(235, SPADER, 12);
        QVERIFY(!b.spel->KlarSpel());
        b.Lagg(235, SPADER, 13);
        QVERIFY(b.spel->KlarSpel());
    }

    void sammaBordMedOchUtanAnimering() {
        Bord utan(kFro, false);
        Bord med(kFro, false, 640, 480, true);
        SammaMedOchUtanAnimering<Bord>(utan, med, {});
    }

    void angraTillbakaTillGivet() {
        Bord b(kFro, false, 1280, 1024);
        auto givet = Bordet(*b.spel);
        // Column tops into the free cells, then one back.
        KlickaPa(*b.vy, b.Band(6));
        KlickaPa(*b.vy, b.Band(28));
        DraFranTill(*b.vy, b.Band(5), b.Mitten(180));
        QVERIFY(b.AngraAllt() >= 3);
        QCOMPARE(Bordet(*b.spel), givet);
        QVERIFY(b.spel->AntalUndo() >= 3);
    }

    // A search sends an ace or a two home at once (nothing but an ace can lie on a two),
    // never a three.
    void essOchTvaGarHemDirektISokningen() {
        Bord b;
        b.Lagg(184, SPADER, 1);
        b.Lagg(0, SPADER, 2);
        b.Lagg(22, HJARTER, 3);
        const SokKunskap& k = Regler().Kunskap();
        std::vector<Drag> dragen = Regler().LagligaDrag(b.spel->Tabell());
        int saker = k.SakertDrag(b.spel->Tabell(), dragen);
        QVERIFY(saker >= 0);
        QCOMPARE(dragen[static_cast<std::size_t>(saker)], KortDrag(0, 185));
        b.Lagg(185, SPADER, 2);
        b.Lagg(0, SPADER, 3);
        dragen = Regler().LagligaDrag(b.spel->Tabell());
        QVERIFY(std::find(dragen.begin(), dragen.end(), KortDrag(0, 186)) != dragen.end());
        QCOMPARE(k.SakertDrag(b.spel->Tabell(), dragen), -1);
    }

    void vinnerGenomRiktigtSpel() {
        Bord b(kVinstFro, false, 1280, 1024);
        SokSvar svar = Los(Regler(), b.spel->Tabell(), SokGranser{400000});
        QCOMPARE(svar.utfall, Utfall::Vinnbar);
        QCOMPARE(b.SpelaGenomVyn(svar.drag), QString());
        b.VunnetMedEttBesked(52, 1);
    }
};

QTEST_MAIN(TestFreecell)
#include "test_freecell.moc"
