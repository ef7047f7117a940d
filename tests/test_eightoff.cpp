#include "app/FjolkView.h"
#include "cards/Hiscore.h"
#include "games/Eightoff.h"
#include "games/EightoffRegler.h"
#include "games/KolumnRegler.h"
#include "games/KolumnSpel.h"
#include "support/Gester.h"
#include "support/KolumnBord.h"
#include "support/Spelfall.h"

#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <utility>
#include <vector>

using namespace KolumnRegler;
using namespace EightoffRegler;

namespace {

constexpr unsigned kFro = 3;

struct Bord : KolumnBord {
    explicit Bord(unsigned fro = kFro, bool tomt = true, int bredd = 640, int hojd = 480,
                  bool animera = false)
        : KolumnBord(9, fro, tomt, bredd, hojd, animera) {}
};

} // namespace

class TestEightoff : public QObject {
    Q_OBJECT

    QTemporaryDir dataMapp;

private slots:
    void initTestCase() { BorjaSpeltest<Eightoff>(dataMapp, 9, 296); }

    // "Free" in each empty free cell is drawn in the table's font at 24 pixels.
    void friTextenIBordetsFont() {
        Bord b(kFro, false);
        b.FriIDeTommaCellerna({176, 178, 180, 182, 184, 186, 188, 190}, 4);
    }

    void utlaggMedTvaRaderOverKolumnerna() {
        std::vector<Lucka> l(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
        Rutnat u = RaknaUtLuckor(l, BRect(0, 0, 639, 479));
        QCOMPARE(u.w, 70);
        QCOMPARE(u.h, 70);
        LiggerVid(l, {
                         {0, BRect(5, 155, 75, 225)},
                         {23, BRect(80, 185, 150, 255)},
                         {176, BRect(5, 80, 75, 150)},
                         {191, BRect(530, 80, 600, 150)},
                         {192, BRect(155, 5, 225, 75)},
                         {243, BRect(380, 5, 450, 75)},
                         {244, BRect(605, 145, 675, 215)},
                     });
    }

    void givetFyllerSexRaderOchFyraFriceller() {
        Bord b(kFro, false);
        for (int c = 0; c < kKolumner; ++c) {
            for (int p = 0; p < 6; ++p)
                QVERIFY(!b.L()[c * kPlatserPerKolumn + p].Tom());
            QVERIFY(b.L()[c * kPlatserPerKolumn + 6].Tom());
        }
        for (int i = 176; i <= 182; i += 2)
            QVERIFY(!b.L()[i].Tom());
        for (int i = 184; i <= 190; i += 2)
            QVERIFY(b.L()[i].Tom());
        auto ordning = GivOrdning();
        QCOMPARE(static_cast<int>(ordning.size()), 52);
        QCOMPARE(ordning.front(), std::make_pair(295, 0));
        QCOMPARE(ordning[47], std::make_pair(248, 7 * 22 + 5));
        QCOMPARE(ordning.back(), std::make_pair(244, 182));
    }

    void forstaKlicketUtanMalLandarIFricell184() {
        Bord b;
        b.Kungar({1, 2, 3, 4, 5, 6, 7});
        b.Lagg(0, HJARTER, 13);
        b.Lagg(1, RUTER, 9);
        for (int i = 176; i <= 182; i += 2)
            b.Lagg(i, KLOVER, 2 + (i - 176) / 2);
        KlickaPa(*b.vy, b.Band(1));
        QVERIFY(b.Har(184, RUTER, 9));
    }

    void kolumnByggsISammaSvit() {
        Bord b;
        b.Kungar({3, 4, 5, 6, 7});
        b.Lagg(0, RUTER, 5);
        b.Lagg(22, HJARTER, 6);
        b.Lagg(44, RUTER, 6);
        KlickaPa(*b.vy, b.Band(0));
        QVERIFY(b.Har(45, RUTER, 5));
        DraFranTill(*b.vy, b.Band(45), b.Under(22));
        QVERIFY(b.Har(45, RUTER, 5));
    }

    void friaPlatserRaknar176TvaGangerOchGrund192() {
        Bord b;
        b.Kungar({0, 1, 2, 3, 4, 5, 6, 7});
        // Two empty free cells, 176 and 190; counted 176 twice and the empty base 192.
        for (int i = 178; i <= 188; i += 2)
            b.Lagg(i, HJARTER, 13);
        QCOMPARE(FriaPlatser(Planen(), b.L()), 4);
        for (int k = 0; k < 5; ++k)
            b.Lagg(23 + k, KLOVER, 7 - k);
        b.Lagg(66 + 1, KLOVER, 8);
        KlickaPa(*b.vy, b.Band(23));
        QVERIFY(b.Har(68, KLOVER, 7));
        QVERIFY(b.Har(72, KLOVER, 3));
        QCOMPARE(b.spel->UndoLista().back(), std::make_pair(1234, 5));
        // An ace on foundation 0 takes one of the four away: five cards no longer go.
        b.spel->Undo();
        b.Lagg(192, RUTER, 1);
        QCOMPARE(FriaPlatser(Planen(), b.L()), 3);
        KlickaPa(*b.vy, b.Band(23));
        QVERIFY(b.Har(23, KLOVER, 7));
        QVERIFY(b.L()[68].Tom());
    }

    void klickadRadJamforBaraOmSvitenArNoll() {
        Bord b;
        b.Kungar({2, 3, 4, 5, 6, 7});
        b.Lagg(1, RUTER, 7);
        b.Lagg(2, KLOVER, 6);
        b.Lagg(3, SPADER, 5);
        b.Lagg(22, RUTER, 8);
        b.Lagg(0, RUTER, 13);
        KlickaPa(*b.vy, b.Band(1));
        QVERIFY(b.Har(23, RUTER, 7));
        QVERIFY(b.Har(25, SPADER, 5));
        b.spel->Undo();
        b.Lagg(2, HJARTER, 6);
        KlickaPa(*b.vy, b.Band(1));
        QVERIFY(b.Har(1, RUTER, 7));
        QVERIFY(b.L()[23].Tom());
    }

    void slappadRadMedRodForstaKortFallerPaAndra() {
        Bord b;
        b.Kungar({2, 3, 4, 5, 6, 7});
        b.Lagg(0, RUTER, 13);
        b.Lagg(1, RUTER, 7);
        b.Lagg(2, RUTER, 6);
        b.Lagg(22, RUTER, 8);
        DraFranTill(*b.vy, b.Band(1), b.Under(22));
        QVERIFY(b.Har(1, RUTER, 7));
        QVERIFY(b.L()[23].Tom());
        // A black first card passes the same check.
        b.Lagg(1, SPADER, 7);
        b.Lagg(2, SPADER, 6);
        b.Lagg(22, SPADER, 8);
        DraFranTill(*b.vy, b.Band(1), b.Under(22));
        QVERIFY(b.Har(23, SPADER, 7));
        QVERIFY(b.Har(24, SPADER, 6));
    }

    void sjuanSlappsIntePaGrund3MenKlickasDit() {
        Bord b;
        b.Kungar({1, 2, 3, 4, 5, 6, 7});
        for (int k = 0; k < 6; ++k)
            b.Lagg(231 + k, SPADER, k + 1);
        b.Lagg(0, SPADER, 7);
        DraFranTill(*b.vy, b.Band(0), b.Mitten(231));
        QVERIFY(b.Har(0, SPADER, 7));
        QVERIFY(b.L()[237].Tom());
        KlickaPa(*b.vy, b.Band(0));
        QVERIFY(b.Har(237, SPADER, 7));
    }

    void sexanSlappsPaGrund3MedFemKort() {
        Bord b;
        b.Kungar({1, 2, 3, 4, 5, 6, 7});
        for (int k = 0; k < 5; ++k)
            b.Lagg(231 + k, SPADER, k + 1);
        b.Lagg(0, SPADER, 6);
        DraFranTill(*b.vy, b.Band(0), b.Mitten(231));
        QVERIFY(b.Har(236, SPADER, 6));
    }

    void sexanStaplasIFricellensReservplats() {
        Bord b;
        b.Kungar({1, 2, 3, 4, 5, 6, 7});
        b.Lagg(186, KLOVER, 5);
        b.Lagg(0, KLOVER, 6);
        DraFranTill(*b.vy, b.Band(0), b.Mitten(186));
        QVERIFY(b.Har(187, KLOVER, 6));
        QCOMPARE(b.spel->UndoLista().back(), std::make_pair(0, 187));
        b.spel->Undo();
        QVERIFY(b.Har(0, KLOVER, 6));
        QVERIFY(b.L()[187].Tom());
    }

    // The drop's foundation step looks at a free cell's spare like any pile top: the card
    // one higher of the spare's suit, released over that cell, goes into the slot after the
    // spare, the next free cell, while that cell is empty.
    void slappPaReservplatsensKortGarTillNastaFricell() {
        Bord b;
        b.Kungar({1, 2, 3, 4, 5, 6, 7});
        b.Lagg(186, KLOVER, 5);
        b.Lagg(187, KLOVER, 6);
        b.Lagg(0, KLOVER, 7);
        DraFranTill(*b.vy, b.Band(0), b.Mitten(186));
        QVERIFY(b.Har(188, KLOVER, 7));
        QVERIFY(b.L()[0].Tom());
        QCOMPARE(b.spel->UndoLista().back(), std::make_pair(0, 188));
        b.spel->Undo();
        // With the next free cell taken the spare is no top; the card stays.
        b.Lagg(188, HJARTER, 13);
        DraFranTill(*b.vy, b.Band(0), b.Mitten(186));
        QVERIFY(b.Har(0, KLOVER, 7));
        QVERIFY(b.spel->UndoLista().empty());
    }

    // A run cannot start at a free cell's spare slot: the spare lies under its cell's card,
    // and a press there picks the cell's card and all above it. The rules list no such run,
    // and every move they list here has a gesture.
    void ingenRadFranFricellensReservplats() {
        Bord b;
        b.Kungar({1, 2, 3, 4, 5, 6, 7});
        b.Lagg(186, KLOVER, 5);
        b.Lagg(187, KLOVER, 6);
        b.Lagg(188, SPADER, 5);
        b.Lagg(0, KLOVER, 7);
        std::vector<Drag> dragen = Regler().LagligaDrag(b.spel->Tabell());
        QVERIFY(std::find(dragen.begin(), dragen.end(), KortDrag(188, 176)) != dragen.end());
        for (const Drag& d : dragen) {
            QVERIFY2(d.fran != 187, Beskriv(d).c_str());
            QVERIFY2(b.spel->GestFor(d).has_value(), Beskriv(d).c_str());
        }
    }

    void essSlappsPaTomGrund() {
        Bord b;
        b.Kungar({1, 2, 3, 4, 5, 6, 7});
        b.Lagg(0, HJARTER, 1);
        DraFranTill(*b.vy, b.Band(0), b.Mitten(218));
        QVERIFY(b.Har(218, HJARTER, 1));
    }

    void angraUtanUnderkortNamner198() {
        const auto& lista = Planen().angraUtanUnder;
        QVERIFY(std::find(lista.begin(), lista.end(), 198) != lista.end());
        QVERIFY(std::find(lista.begin(), lista.end(), 190) == lista.end());
        // With the flight on, a card clicked into free cell 190 and undone goes home.
        Bord b(kFro, true, 640, 480, true);
        b.Kungar({1, 2, 3, 4, 5, 6, 7});
        b.Lagg(0, HJARTER, 9);
        for (int i = 176; i <= 188; i += 2)
            b.Lagg(i, KLOVER, 13);
        KlickaPa(*b.vy, b.Band(0));
        QVERIFY(b.Har(190, HJARTER, 9));
        QCOMPARE(b.spel->UndoLista().back(), std::make_pair(0, 190));
        b.spel->Undo();
        QVERIFY(b.Har(0, HJARTER, 9));
        QVERIFY(b.L()[190].Tom());
    }

    void klartForstNarAllaKungarLigger() {
        Bord b;
        for (int f = 0; f < 3; ++f)
            b.Lagg(204 + 13 * f, static_cast<kortfarg>(f), 13);
        QVERIFY(!b.spel->KlarSpel());
        b.Lagg(243, SPADER, 13);
        QVERIFY(b.spel->KlarSpel());
    }

    void hiscoreRaknarKortenPaGrunderna() {
        Bord b;
        b.Lagg(192, HJARTER, 1);
        b.Lagg(193, HJARTER, 2);
        b.Lagg(231, SPADER, 1);
        b.Lagg(184, KLOVER, 1); // a free cell, not a foundation
        b.GlomHiscore();
        QCOMPARE(b.spel->AddHiscore(), 1);
        QCOMPARE(static_cast<int>(b.Post(1).kort), 3);
        QCOMPARE(static_cast<int>(b.Post(1).giv), 1);
    }

    void sammaBordMedOchUtanAnimering() {
        Bord utan(kFro, false);
        Bord med(kFro, false, 640, 480, true);
        SammaMedOchUtanAnimering<Bord>(utan, med, {});
    }

    void angraTillbakaTillGivet() {
        Bord b(kFro, false, 1280, 1024);
        auto givet = Bordet(*b.spel);
        KlickaPa(*b.vy, b.Band(5));
        KlickaPa(*b.vy, b.Band(27));
        DraFranTill(*b.vy, b.Band(49), b.Mitten(188));
        QVERIFY(b.AngraAllt() >= 3);
        QCOMPARE(Bordet(*b.spel), givet);
    }
};

QTEST_MAIN(TestEightoff)
#include "test_eightoff.moc"
