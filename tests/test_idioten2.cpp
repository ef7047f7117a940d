#include "app/FjolkView.h"
#include "cards/Hiscore.h"
#include "cards/Luckor.h"
#include "games/Idioten2.h"
#include "games/Idioten2Regler.h"
#include "games/LekRegler.h"
#include "solver/Losare.h"
#include "support/Gester.h"
#include "support/Spelfall.h"
#include "support/Testbord.h"

#include <QTemporaryDir>
#include <QTest>

#include <utility>
#include <vector>

using namespace Idioten2Regler;

namespace {

constexpr unsigned kFro = 3;
// A deal the search over the rules wins.
constexpr unsigned kVinstFro = 7;

// Idioten 2 in a real play view, with a table a test may lay out card by card.
struct Bord : Testbord<Idioten2> {
    explicit Bord(unsigned fro = kFro, bool tomt = true, int bredd = 640, int hojd = 480,
                  bool animera = false)
        : Testbord(1, fro, tomt, bredd, hojd, animera) {}
    // Cards into the stock, the first at its bottom.
    void LaggLek(std::initializer_list<std::pair<kortfarg, int>> kort) {
        int i = kForstaLek;
        for (auto [farg, valor] : kort)
            Lagg(i++, farg, valor);
    }
    BPoint Lek() { return Mitt(spel->LekKnapp()); }
    int Kasserade() { return AntalFyllda(L(), kForstaKasserad, kSistaKasserad); }
};

} // namespace

class TestIdioten2 : public QObject {
    Q_OBJECT

    QTemporaryDir dataMapp;

private slots:
    void initTestCase() {
        BorjaSpeltest<Idioten2>(dataMapp, 1, 164);
        Bord b(kFro, false);
        for (int i = 0; i < 164; ++i)
            QCOMPARE(b.L()[i].BakSida(), i >= 56);
    }

    // ---- Layout ---------------------------------------------------------------------------

    void utlaggVid640x480() {
        std::vector<Lucka> l(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
        // h = (479 − 40) / 11 = 39 and w = (639 − 20) / 10 = 61, both raised to 70.
        Utlagg u = RaknaUtLuckor(l, BRect(0, 0, 639, 479));
        QCOMPARE(u.w, 70);
        QCOMPARE(u.h, 70);
        LiggerVid(l, {
                         {0, BRect(0, 5, 70, 75)},
                         {1, BRect(0, 43, 70, 113)},
                         {15, BRect(75, 43, 145, 113)},
                         {42, BRect(225, 5, 295, 75)},
                         {55, BRect(225, 499, 295, 569)},
                         {56, BRect(305, 5, 375, 75)},
                         {107, l[56].GePos()},
                         {108, BRect(0, 0, 0, 0)},
                         {111, BRect(0, 0, 0, 0)},
                         {112, BRect(305, 80, 375, 150)},
                         {113, BRect(305, 82, 375, 152)},
                         {163, BRect(305, 182, 375, 252)},
                     });
        QCOMPARE(u.lekKnapp, BRect(305, 80, 375, 244));
    }

    void utlaggVid1280x1024() {
        std::vector<Lucka> l(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
        // h = (1023 − 40) / 11 = 89, w = (1279 − 20) / 10 = 125.
        Utlagg u = RaknaUtLuckor(l, BRect(0, 0, 1279, 1023));
        QCOMPARE(u.w, 125);
        QCOMPARE(u.h, 89);
        LiggerVid(l, {
                         {29, BRect(260, 43, 385, 132)},
                         {54, BRect(390, 461, 515, 550)},
                         {80, BRect(525, 5, 650, 94)},
                         {112, BRect(525, 99, 650, 188)},
                         {163, BRect(525, 201, 650, 290)},
                     });
        QCOMPARE(u.lekKnapp, BRect(525, 99, 650, 282));
    }

    void speletLaggerUtSittBordOchKortenFarSinStorlek() {
        Bord b(kFro, false, 1280, 1024);
        QCOMPARE(b.Pos(14), BRect(130, 5, 255, 94));
        QCOMPARE(b.spel->LekKnapp(), BRect(525, 99, 650, 282));
        Kort k(SPADER, 13, BRect(0, 0, 0, 0));
        // Look B at the size of slot 0: 125 × 89.
        QCOMPARE(b.spel->FramsidaFor(k), BRect(12 * 125 + 1, 3 * 89 + 1, 13 * 125, 4 * 89));
    }

    // ---- The deal -------------------------------------------------------------------------

    // A deal draws its shuffle and the stripes of one face rendering, nothing more: the next
    // deal goes on from there.
    // The game's first deal shuffles nothing: it draws one face rendering's back stripes.
    void forstaGivetDrarBaraEnRitning() {
        Bord bord(kFro, false, 900, 600);
        int nasta = std::rand();
        QCOMPARE(bord.Pos(0), BRect(0, 5, 87, 75));
        QCOMPARE(nasta, TalEfterGivet(kFro, 87, false));
    }

    // New Deal draws its shuffle and one face rendering's back stripes.
    void nyGivDrarBlandningenOchEnRitning() {
        Bord bord(kFro, false, 900, 600);
        std::srand(kFro);
        bord.spel->NyttSpel(bord.vy->Bounds());
        int nasta = std::rand();
        QCOMPARE(nasta, TalEfterGivet(kFro, 87));
    }

    void givetLaggerEttKortIVarjeKolumnOchLamnar48() {
        Bord b(kFro, false);
        for (int c = 0; c < 4; ++c) {
            QVERIFY(!b.L()[14 * c].Tom());
            QVERIFY(b.L()[14 * c + 1].Tom());
        }
        QCOMPARE(AntalFyllda(b.L(), 0, 55), 4);
        QCOMPARE(AntalFyllda(b.L(), kForstaLek, kSistaLek), 48);
        QCOMPARE(LekTopp(b.L(), kForstaLek, kSistaLek), 159);
        QCOMPARE(AntalFyllda(b.L(), kForstaKasserad, kSistaReserv), 0);
        QVERIFY(b.spel->UndoLista().empty());
        QVERIFY(!b.spel->Has_Undos());
    }

    // The game's first deal is the fresh deck laid into the stock as it comes, whatever the
    // random numbers: the columns get the ace, two, three and four of hearts, and the stock
    // deals the rest of the hearts next, from the five up.
    void forstaGivetArLekenOblandad() {
        for (unsigned fro : {kFro, kFro + 1}) {
            Bord b(fro, false);
            for (int c = 0; c < 4; ++c)
                QVERIFY(b.Har(14 * c, HJARTER, c + 1));
            QVERIFY(b.Har(159, HJARTER, 5));
            QVERIFY(b.Har(156, HJARTER, 8));
            QVERIFY(b.Har(kForstaLek, SPADER, 13));
            Kortlek lek;
            for (int k = 0; k < 48; ++k) {
                Kort kort = lek.GeKort();
                QVERIFY(b.Har(kForstaLek + k, kort.KortFarg(), kort.KortValor()));
            }
        }
    }

    // Restart Deal deals the unshuffled first deal again.
    void omGivAvForstaGivetArOblandat() {
        Bord b(kFro, false);
        KlickaPa(*b.vy, b.Lek());
        b.spel->OmGiv(b.vy->Bounds());
        for (int c = 0; c < 4; ++c)
            QVERIFY(b.Har(14 * c, HJARTER, c + 1));
        QCOMPARE(AntalFyllda(b.L(), kForstaLek, kSistaLek), 48);
    }

    // New Deal shuffles: the deal of the seed.
    void nyGivTarLekensOversta() {
        Bord b(kFro, false);
        std::srand(kFro);
        b.spel->NyttSpel(b.vy->Bounds());
        std::vector<Kort> kort = BlandadLek(kFro);
        // The first card off the deck lies at the bottom of the stock, slot 112; the deal
        // takes the top, slot 163, to column 0.
        for (int c = 0; c < 4; ++c)
            QVERIFY(b.Har(14 * c, kort[51 - c].KortFarg(), kort[51 - c].KortValor()));
        for (int k = 0; k < 48; ++k)
            QVERIFY(b.Har(kForstaLek + k, kort[k].KortFarg(), kort[k].KortValor()));
    }

    void nyttSpelBorjarOm() {
        Bord b(kFro, false);
        KlickaPa(*b.vy, b.Lek());
        QVERIFY(b.spel->Has_Undos());
        b.spel->NyttSpel(b.vy->Bounds());
        QVERIFY(!b.spel->Has_Undos());
        QCOMPARE(b.spel->AntalUndo(), 0);
        QCOMPARE(AntalFyllda(b.L(), 0, 55), 4);
        QCOMPARE(AntalFyllda(b.L(), kForstaLek, kSistaLek), 48);
    }

    // ---- The stock ------------------------------------------------------------------------

    void lekenGerFyraKortEttPaVarjeKolumn() {
        Bord b;
        b.Lagg(0, HJARTER, 5);
        b.Lagg(1, HJARTER, 6);
        b.Lagg(28, KLOVER, 9);
        b.LaggLek({{SPADER, 2}, {KLOVER, 3}, {RUTER, 4}, {HJARTER, 7}});
        KlickaPa(*b.vy, b.Lek());
        // The top card (slot 115) goes to column 0, the next to column 1, and so on.
        QVERIFY(b.Har(2, HJARTER, 7));
        QVERIFY(b.Har(14, RUTER, 4));
        QVERIFY(b.Har(29, KLOVER, 3));
        QVERIFY(b.Har(42, SPADER, 2));
        QVERIFY(b.L()[kForstaLek].Tom());
        std::vector<std::pair<int, int>> vantat{{222, 2}, {222, 14}, {222, 29}, {222, 42}};
        QCOMPARE(b.spel->UndoLista(), vantat);
        // An empty stock gives nothing.
        KlickaPa(*b.vy, b.Lek());
        QCOMPARE(b.spel->UndoLista(), vantat);
    }

    void lekenTryckerNittiofyraPixlarUnderForstaKortet() {
        Bord b;
        b.LaggLek({{SPADER, 2}, {KLOVER, 3}, {RUTER, 4}, {HJARTER, 7}, {SPADER, 9}});
        BRect forsta = b.Pos(kForstaLek);
        BPoint x(forsta.left + 10, 0);
        // 640 × 480: slot 112 reaches y = 150, the press area y = 244.
        KlickaPa(*b.vy, BPoint(x.x, forsta.bottom + 95));
        QCOMPARE(AntalFyllda(b.L(), kForstaLek, kSistaLek), 5);
        KlickaPa(*b.vy, BPoint(x.x, forsta.bottom + 94));
        QCOMPARE(AntalFyllda(b.L(), kForstaLek, kSistaLek), 1);
        QVERIFY(b.Har(0, SPADER, 9));
    }

    void dragFranLekenGerOcksa() {
        Bord b;
        b.LaggLek({{SPADER, 2}, {KLOVER, 3}, {RUTER, 4}, {HJARTER, 7}});
        // A press on the stock deals whatever the pointer does next.
        DraFranTill(*b.vy, b.Lek(), b.Mitten(28));
        QCOMPARE(AntalFyllda(b.L(), 0, 55), 4);
        QVERIFY(b.L()[kForstaLek].Tom());
    }

    void angraLekgivAterstallerFyraKortOchRaknarFyra() {
        Bord b(kFro, false);
        auto givet = Bordet(*b.spel);
        KlickaPa(*b.vy, b.Lek());
        QCOMPARE(AntalFyllda(b.L(), 0, 55), 8);
        QCOMPARE(static_cast<int>(b.spel->UndoLista().size()), 4);
        QCOMPARE(b.spel->Undo(), 0);
        QCOMPARE(b.spel->AntalUndo(), 4);
        QCOMPARE(Bordet(*b.spel), givet);
        QCOMPARE(AntalFyllda(b.L(), kForstaLek, kSistaLek), 48);
    }

    void angraLekgivLaggerKortenOvanpaLekensTopp() {
        Bord b;
        b.LaggLek({{SPADER, 2}, {KLOVER, 3}, {RUTER, 4}, {HJARTER, 7}, {SPADER, 9}});
        KlickaPa(*b.vy, b.Lek());
        QCOMPARE(LekTopp(b.L(), kForstaLek, kSistaLek), kForstaLek);
        b.spel->Undo();
        // Column 3's card first onto slot 113, column 0's last onto slot 116.
        QVERIFY(b.Har(113, KLOVER, 3));
        QVERIFY(b.Har(114, RUTER, 4));
        QVERIFY(b.Har(115, HJARTER, 7));
        QVERIFY(b.Har(116, SPADER, 9));
        QVERIFY(b.L()[0].Tom());
    }

    // ---- Clicks ---------------------------------------------------------------------------

    void klickKasserarKortSomSlasAvHogreISammaFarg() {
        Bord b;
        b.Lagg(0, KLOVER, 5);
        b.Lagg(1, HJARTER, 9);
        b.Lagg(14, HJARTER, 10);
        b.Lagg(28, SPADER, 3);
        b.Klicka(1);
        QVERIFY(b.L()[1].Tom());
        QVERIFY(b.Har(55 + 0 * 13 + 9, HJARTER, 9));
        QCOMPARE(b.spel->UndoLista().back(), std::make_pair(1, 64));
        // The ten now has no higher heart above it: with column 3 empty it moves there.
        b.Klicka(14);
        QVERIFY(b.Har(42, HJARTER, 10));
        QCOMPARE(b.spel->UndoLista().back(), std::make_pair(14, 42));
    }

    void esetRaknasSomFjorton() {
        Bord b;
        b.Lagg(0, SPADER, 13);
        b.Lagg(14, SPADER, 1);
        b.Lagg(28, RUTER, 2);
        b.Lagg(42, KLOVER, 4);
        b.Klicka(0);
        QVERIFY(b.Har(55 + 3 * 13 + 13, SPADER, 13));
        // Nothing beats an ace: it goes to the column the king left.
        QVERIFY(b.L()[0].Tom());
        b.Klicka(14);
        QVERIFY(b.Har(0, SPADER, 1));
        b.Lagg(14, SPADER, 5);
        b.Klicka(0);
        QVERIFY(b.Har(0, SPADER, 1));
        b.Klicka(14);
        QVERIFY(b.Har(55 + 3 * 13 + 5, SPADER, 5));
    }

    void kortUtanSinFargOverstKanInteKasserasMenFlyttarTillTomKolumn() {
        Bord b;
        b.Lagg(14, HJARTER, 4);
        b.Lagg(15, KLOVER, 9);
        b.Lagg(28, RUTER, 12);
        b.Lagg(42, SPADER, 13);
        // A higher club lies covered in column 1: only top cards count.
        b.Lagg(29, KLOVER, 10);
        b.Lagg(30, RUTER, 3);
        b.Klicka(15);
        QVERIFY(b.Har(0, KLOVER, 9));
        QCOMPARE(b.Kasserade(), 0);
        // No empty column: nothing happens.
        b.Klicka(42);
        QVERIFY(b.Har(42, SPADER, 13));
        QCOMPARE(static_cast<int>(b.spel->UndoLista().size()), 1);
    }

    void tommaKolumnerFyllsIOrdningen() {
        Bord b;
        b.Lagg(42, HJARTER, 4);
        b.Lagg(43, KLOVER, 9);
        b.Lagg(44, SPADER, 7);
        b.Klicka(44);
        QVERIFY(b.Har(0, SPADER, 7));
        b.Klicka(43);
        QVERIFY(b.Har(14, KLOVER, 9));
        b.Klicka(42);
        QVERIFY(b.Har(28, HJARTER, 4));
        // A card alone in its column still moves to the first empty one.
        b.Klicka(28);
        QVERIFY(b.L()[28].Tom());
        QVERIFY(b.Har(42, HJARTER, 4));
    }

    void klickPaTacktKortGorIngenting() {
        Bord b;
        b.Lagg(0, HJARTER, 4);
        b.Lagg(1, KLOVER, 9);
        b.Lagg(14, HJARTER, 10);
        KlickaPa(*b.vy, b.Band(0));
        QVERIFY(b.Har(0, HJARTER, 4));
        QVERIFY(b.spel->UndoLista().empty());
    }

    void bandetArTrettioattaPixlar() {
        Bord b;
        b.Lagg(0, HJARTER, 4);
        b.Lagg(1, KLOVER, 9);
        BRect r = b.Pos(0);
        QCOMPARE(Traff(b.L(), BPoint(r.left + 5, r.top + 37)), 0);
        // The band's last row is also the covering card's first: the band wins.
        QCOMPARE(Traff(b.L(), BPoint(r.left + 5, r.top + 38)), 0);
        QCOMPARE(Traff(b.L(), BPoint(r.left + 5, r.top + 39)), 1);
        QCOMPARE(Traff(b.L(), BPoint(r.left + 5, r.bottom - 1)), 1);
    }

    // Slot 55, the last place of column 3, is no part of the hit test, nor a top card that
    // beats another.
    void sistaPlatsenISistaKolumnenTrafarsInte() {
        Bord b(kFro, true, 1280, 1024);
        for (int p = 0; p < 14; ++p)
            b.Lagg(42 + p, p % 2 ? KLOVER : RUTER, p < 13 ? p + 1 : 13);
        b.Lagg(0, KLOVER, 2);
        b.Lagg(14, HJARTER, 3);
        b.Lagg(28, HJARTER, 4);
        QVERIFY(b.Har(55, KLOVER, 13));
        BPoint mitt = b.Mitten(55);
        QCOMPARE(Traff(b.L(), mitt), -1);
        KlickaPa(*b.vy, mitt);
        QVERIFY(b.Har(55, KLOVER, 13));
        // The club king on slot 55 beats no club.
        QVERIFY(!KanKasseras(b.L(), 0));
        b.Klicka(0);
        QVERIFY(b.Har(0, KLOVER, 2));
        QVERIFY(b.spel->UndoLista().empty());
    }

    // ---- Drag and drop --------------------------------------------------------------------

    void slappPaTomKolumnForst() {
        Bord b;
        b.Lagg(0, HJARTER, 4);
        b.Lagg(1, HJARTER, 9);
        b.Lagg(14, HJARTER, 10);
        // Beatable, but released in the empty column 3: it goes there.
        DraFranTill(*b.vy, b.Mitten(1), b.Mitten(42));
        QVERIFY(b.Har(42, HJARTER, 9));
        QCOMPARE(b.spel->UndoLista().back(), std::make_pair(1, 42));
    }

    void slappAvSlagbartKortVarSomHelstKasserarDet() {
        Bord b;
        b.Lagg(0, HJARTER, 4);
        b.Lagg(1, RUTER, 9);
        b.Lagg(14, RUTER, 10);
        b.Lagg(28, SPADER, 3);
        b.Lagg(42, SPADER, 6);
        // Released over column 2's card, over the stock, and outside the view.
        DraFranTill(*b.vy, b.Mitten(1), b.Mitten(28));
        QVERIFY(b.Har(55 + 13 + 9, RUTER, 9));
        DraFranTill(*b.vy, b.Mitten(28), BPoint(600, 400));
        QVERIFY(b.Har(55 + 39 + 3, SPADER, 3));
        b.spel->Undo();
        DraOchSlappUtanfor(*b.vy, b.Mitten(28));
        QVERIFY(b.Har(55 + 39 + 3, SPADER, 3));
        // Released on its own place.
        b.Lagg(28, HJARTER, 2);
        DraFranTill(*b.vy, b.Mitten(28), b.Mitten(28));
        QVERIFY(b.Har(55 + 2, HJARTER, 2));
    }

    void slappAvOslagbartKortUtanforTomKolumnGorIngenting() {
        Bord b;
        b.Lagg(0, HJARTER, 4);
        b.Lagg(14, SPADER, 9);
        b.Lagg(28, KLOVER, 3);
        DraFranTill(*b.vy, b.Mitten(14), b.Mitten(28));
        QVERIFY(b.Har(14, SPADER, 9));
        // Just beside the empty column's card place.
        BRect tom = b.Pos(42);
        DraFranTill(*b.vy, b.Mitten(14), BPoint(tom.right + 1, tom.top + 10));
        QVERIFY(b.Har(14, SPADER, 9));
        QVERIFY(b.spel->UndoLista().empty());
    }

    void tvaLyftaKortPlacerasAldrig() {
        Bord b;
        b.Lagg(0, HJARTER, 4);
        b.Lagg(1, HJARTER, 9);
        b.Lagg(14, HJARTER, 10);
        DraFranTill(*b.vy, b.Band(0), b.Mitten(42));
        QVERIFY(b.Har(0, HJARTER, 4));
        QVERIFY(b.Har(1, HJARTER, 9));
        QVERIFY(b.L()[42].Tom());
        QVERIFY(b.spel->UndoLista().empty());
    }

    void klickRutanArOsymmetrisk() {
        Bord b;
        KlickRutanArOsymmetrisk(*b.spel);
    }

    // ---- Undo -----------------------------------------------------------------------------

    void angraEttDragRaknarEtt() {
        Bord b;
        b.Lagg(0, HJARTER, 9);
        b.Lagg(14, HJARTER, 10);
        QCOMPARE(b.spel->Undo(), 0);
        QCOMPARE(b.spel->AntalUndo(), 0);
        b.Klicka(0);
        QVERIFY(b.Har(64, HJARTER, 9));
        QCOMPARE(b.spel->Undo(), 0);
        QCOMPARE(b.spel->AntalUndo(), 1);
        QVERIFY(b.Har(0, HJARTER, 9));
        QVERIFY(b.L()[64].Tom());
        QVERIFY(!b.spel->Has_Undos());
    }

    void angraTillbakaTillGivet() {
        Bord b(kFro, false, 1280, 1024);
        auto givet = Bordet(*b.spel);
        KlickaPa(*b.vy, b.Lek());
        KlickaPa(*b.vy, b.Lek());
        for (int t = 0; t < 55; ++t)
            if (Topp(b.L(), t) && KanKasseras(b.L(), t)) {
                b.Klicka(t);
                break;
            }
        KlickaPa(*b.vy, b.Lek());
        QVERIFY(b.AngraAllt() >= 12);
        QCOMPARE(Bordet(*b.spel), givet);
    }

    // ---- Won ------------------------------------------------------------------------------

    // The won test as it is written: slot 112 empty, the four bases aces, the places above
    // them empty.
    void klartSomDetStar() {
        Bord b;
        for (int c = 0; c < 4; ++c)
            b.Lagg(14 * c, static_cast<kortfarg>(c), 1);
        QVERIFY(b.spel->KlarSpel());
        b.Lagg(kForstaLek, HJARTER, 5);
        QVERIFY(!b.spel->KlarSpel());
        b.L()[kForstaLek].TaBortKort();
        b.Lagg(29, KLOVER, 13);
        QVERIFY(!b.spel->KlarSpel());
        b.L()[29].TaBortKort();
        b.Lagg(42, SPADER, 13);
        QVERIFY(!b.spel->KlarSpel());
        b.L()[42].TaBortKort();
        QVERIFY(!b.spel->KlarSpel());
        // The test reads slots 112 and 1, 15, 29, 43 only.
        b.Lagg(42, SPADER, 1);
        b.Lagg(44, KLOVER, 7);
        b.Lagg(kForstaLek + 1, KLOVER, 6);
        QVERIFY(b.spel->KlarSpel());
    }

    void vinnerGenomRiktigtSpel() {
        Bord b(kVinstFro, false, 1280, 1024);
        SokSvar vag = Los(Idioten2Regler::Regler(), b.spel->Tabell(), SokGranser{200000});
        QCOMPARE(vag.utfall, Utfall::Vinnbar);
        b.VinnGenomVyn(vag.drag, 52, 1);
    }

    // ---- Hiscore --------------------------------------------------------------------------

    void hiscoreRaknarKasseradeKort() {
        Bord b;
        b.Lagg(56, HJARTER, 1);
        b.Lagg(70, RUTER, 2);
        b.Lagg(107, SPADER, 13);
        b.Lagg(0, SPADER, 4);
        b.Lagg(kForstaLek, SPADER, 5);
        b.GlomHiscore();
        QCOMPARE(b.spel->AddHiscore(), 1);
        HiscoreLista tabell = LasHiscore(1);
        QCOMPARE(static_cast<int>(tabell[0].kort), 3);
        QCOMPARE(static_cast<int>(tabell[0].giv), 1);
        QCOMPARE(tabell[0].angra, 0);
        b.TommaPosterFran(2, 1);
    }

    void vunnetSpelGerFyraTill() {
        Bord b;
        for (int c = 0; c < 4; ++c)
            b.Lagg(14 * c, static_cast<kortfarg>(c), 1);
        for (int s = 0; s < 4; ++s)
            for (int v = 2; v <= 13; ++v)
                b.Lagg(55 + 13 * s + v, static_cast<kortfarg>(s), v);
        QCOMPARE(Resultat(b.spel->Bordet()).kort, 52);
        b.Lagg(43, HJARTER, 1);
        QCOMPARE(Resultat(b.spel->Bordet()).kort, 48);
    }

    // More undos rank higher in this table, as it always has.
    void flerAngringarRankasHogre() {
        Bord b;
        b.GlomHiscore();
        b.Lagg(60, HJARTER, 5);
        b.Lagg(61, HJARTER, 6);
        b.spel->BordForTest().antalUndo = 3;
        QCOMPARE(b.spel->AddHiscore(), 1);
        b.spel->BordForTest().antalUndo = 7;
        QCOMPARE(b.spel->AddHiscore(), 1);
        b.spel->BordForTest().antalUndo = 5;
        QCOMPARE(b.spel->AddHiscore(), 2);
        // The same cards and undos again: the new result goes above the stored one.
        b.spel->BordForTest().antalUndo = 5;
        QCOMPARE(b.spel->AddHiscore(), 2);
        b.spel->BordForTest().antalUndo = 0;
        b.Lagg(62, HJARTER, 7);
        QCOMPARE(b.spel->AddHiscore(), 1);
        HiscoreLista tabell = LasHiscore(1);
        QCOMPARE(tabell[0].angra, 0);
        QCOMPARE(static_cast<int>(tabell[0].kort), 3);
        QCOMPARE(tabell[1].angra, 7);
        QCOMPARE(tabell[2].angra, 5);
        QCOMPARE(tabell[3].angra, 5);
        QCOMPARE(tabell[4].angra, 3);
        b.spel->BordForTest().antalUndo = 1500;
        b.spel->AddHiscore();
        QCOMPARE(b.spel->AntalUndo(), 999);
    }

    // ---- Animation ------------------------------------------------------------------------

    void sammaBordMedOchUtanAnimering() {
        Bord utan(kFro + 4, false);
        Bord med(kFro + 4, false, 640, 480, true);
        auto tvaLekgiv = [](Bord& b) {
            KlickaPa(*b.vy, b.Lek());
            KlickaPa(*b.vy, b.Lek());
            return 0;
        };
        // Top cards clicked from the left until one moves other than from the stock.
        auto ettKortdrag = [](Bord& b) {
            for (int t = 0; t < 55; ++t)
                if (Topp(b.L(), t)) {
                    b.Klicka(t);
                    if (b.spel->UndoLista().back().first != LekRegler::kFranLeken)
                        break;
                }
            return 0;
        };
        auto angraAllt = [](Bord& b) { return b.AngraAllt(); };
        std::vector<std::vector<LuckaBild>> bilder;
        SammaMedOchUtanAnimering<Bord>(utan, med, {tvaLekgiv, ettKortdrag, angraAllt}, &bilder);
        QCOMPARE(static_cast<int>(bilder.size()), 4);
        QCOMPARE(bilder[3], bilder[0]);
    }
};

QTEST_MAIN(TestIdioten2)
#include "test_idioten2.moc"
