#include "app/FjolkView.h"
#include "cards/Hiscore.h"
#include "cards/Kortlek.h"
#include "cards/SpelRegler.h"
#include "games/Tower.h"
#include "games/TowerRegler.h"
#include "platform/QtGeometry.h"
#include "support/Gester.h"
#include "support/Spelfall.h"
#include "support/Testbord.h"

#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <deque>
#include <map>
#include <string>
#include <utility>
#include <vector>

using namespace TowerRegler;

namespace {

constexpr unsigned kFro = 3;

struct Bord : Testbord<Tower> {
    explicit Bord(unsigned fro = kFro, bool tomt = false, int bredd = 640, int hojd = 480,
                  bool animera = false)
        : Testbord(3, fro, tomt, bredd, hojd, animera) {}
    // The given values from the base of tower t up, in hearts.
    void Torn(int t, std::vector<int> valorer) {
        for (size_t j = 0; j < valorer.size(); ++j)
            Lagg(kPerTorn * t + static_cast<int>(j), HJARTER, valorer[j]);
    }
};

// The fewest moves to a won table, by a breadth-first walk over the rules' moves.
std::vector<Drag> KortasteVinst(const SpelBord& start) {
    const SpelRegler& regler = Regler();
    std::map<std::string, std::pair<std::string, Drag>> fran;
    std::map<std::string, std::unique_ptr<SpelBord>> borden;
    std::deque<std::string> ko;
    auto nyckelFor = [&](const SpelBord& b) {
        std::string n;
        regler.Kunskap().Nyckel(b, n);
        return n;
    };
    std::string forsta = nyckelFor(start);
    fran[forsta] = {"", Drag()};
    borden[forsta] = start.Kopia();
    ko.push_back(forsta);
    while (!ko.empty()) {
        std::string nyckel = ko.front();
        ko.pop_front();
        auto bord = borden[nyckel]->Kopia();
        if (regler.KlarSpel(*bord)) {
            std::vector<Drag> vag;
            for (std::string n = nyckel; n != forsta; n = fran[n].first)
                vag.insert(vag.begin(), fran[n].second);
            return vag;
        }
        for (const Drag& d : regler.LagligaDrag(*bord)) {
            auto nasta = bord->Kopia();
            regler.GorDrag(*nasta, d, nullptr);
            std::string n = nyckelFor(*nasta);
            if (fran.count(n))
                continue;
            fran[n] = {nyckel, d};
            borden[n] = std::move(nasta);
            ko.push_back(n);
        }
    }
    return {};
}

} // namespace

class TestTower : public QObject {
    Q_OBJECT

    QTemporaryDir dataMapp;

private slots:
    void initTestCase() {
        BorjaSpeltest<Tower>(dataMapp, 3, 36);
        Bord b;
        QVERIFY(b.L().capacity() >= 37);
        for (int i = 0; i < 36; ++i)
            QCOMPARE(b.L()[i].BakSida(), i >= 27);
    }

    void utlaggVid640x480() {
        std::vector<Lucka> l(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
        // ch = (479 - 40) / 3 = 146; cw = (639 - 20) / 4.0 = 154; u = 159.
        Utlagg u = RaknaUtLuckor(l, BRect(0, 0, 639, 479));
        QCOMPARE(u.w, 154);
        QCOMPARE(u.h, 146);
        LiggerVid(l, {
                         {0, BRect(0, 5, 154, 151)},
                         {1, BRect(0, 40, 154, 186)},
                         {9, BRect(159, 5, 313, 151)},
                         {26, BRect(318, 285, 472, 431)},
                         {27, BRect(487, 156, 641, 302)},
                         {35, BRect(487, 172, 641, 318)},
                     });
    }

    void utlaggVid1280x1024() {
        std::vector<Lucka> l(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
        // ch = 983 / 3 = 327; cw = 1259 / 4.0 = 314; u = 319.
        Utlagg u = RaknaUtLuckor(l, BRect(0, 0, 1279, 1023));
        QCOMPARE(u.w, 314);
        QCOMPARE(u.h, 327);
        LiggerVid(l, {
                         {8, BRect(0, 285, 314, 612)},
                         {18, BRect(638, 5, 952, 332)},
                         {27, BRect(967, 337, 1281, 664)},
                     });
    }

    // A deal draws its shuffle and the stripes of one face rendering, nothing more: the next
    // deal goes on from there.
    void givetDrarBlandningenOchEnRitning() {
        Bord bord(kFro, false, 900, 600);
        int nasta = std::rand();
        QCOMPARE(bord.Pos(0), BRect(0, 5, 219, 191));
        QCOMPARE(nasta, TalEfterGivet(kFro, 219));
    }

    void nioKortEssTillNioAvEnFarg() {
        for (unsigned fro : {1u, 2u, 3u, 77u}) {
            Bord b(fro);
            std::vector<int> valorer;
            for (int i = 0; i <= kSistaTornLucka; ++i)
                if (!b.L()[i].Tom()) {
                    QCOMPARE(b.L()[i].GeKort().KortFarg(), HJARTER);
                    valorer.push_back(b.Valor(i));
                }
            std::sort(valorer.begin(), valorer.end());
            QCOMPARE(valorer, (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9}));
            QCOMPARE(b.spel->Kortleken().AntalKortKvar(), 0);
            for (int i = kForstaLek; i <= kSistaLek; ++i)
                QVERIFY(b.L()[i].Tom());
        }
    }

    void givetRadForRadOverTornen() {
        Bord b;
        std::vector<Kort> lekPlatser = BlandadLek(kFro, [](Kortlek& lek) {
            for (int i = 0; i < 43; ++i)
                lek.GeKort();
        });
        std::vector<std::pair<int, int>> giv{{35, 0},  {34, 9}, {33, 18}, {32, 1}, {31, 10},
                                             {30, 19}, {29, 2}, {28, 11}, {27, 20}};
        for (auto [lekLucka, till] : giv)
            QCOMPARE(b.Valor(till), lekPlatser[lekLucka - 27].KortValor());
    }

    void klickSokerRuntTornenFranNasta() {
        Bord b(kFro, true);
        b.Torn(0, {9});
        b.Torn(1, {8});
        b.Torn(2, {6, 5});
        // From tower 2 the search wraps round to tower 0 before tower 1.
        KlickaPa(*b.vy, b.Botten(19));
        QVERIFY(b.Har(1, HJARTER, 5));
        QCOMPARE(b.spel->UndoLista().back(), std::make_pair(19, 1));
        // From tower 0 it looks at tower 1 first.
        KlickaPa(*b.vy, b.Botten(1));
        QVERIFY(b.Har(10, HJARTER, 5));
        // Nowhere larger and no empty tower: nothing.
        b.Lagg(19, HJARTER, 7);
        KlickaPa(*b.vy, b.Botten(0));
        QVERIFY(b.Har(0, HJARTER, 9));
        QCOMPARE(static_cast<int>(b.spel->UndoLista().size()), 2);
    }

    void nianStarBaraPaEnBas() {
        Bord b(kFro, true);
        b.Torn(0, {2, 9});
        b.Torn(1, {8});
        b.Torn(2, {7});
        KlickaPa(*b.vy, b.Botten(1));
        QVERIFY(b.Har(1, HJARTER, 9));
        DraFranTill(*b.vy, b.Botten(1), b.Botten(9));
        QVERIFY(b.Har(1, HJARTER, 9));
        b.L()[18].TaBortKort();
        KlickaPa(*b.vy, b.Botten(1));
        QVERIFY(b.Har(18, HJARTER, 9));
        DraFranTill(*b.vy, b.Botten(9), b.Botten(18));
        QVERIFY(b.Har(19, HJARTER, 8));
        // An empty tower takes a card dropped on its base.
        DraFranTill(*b.vy, b.Botten(0), b.Mitten(9));
        QVERIFY(b.Har(9, HJARTER, 2));
    }

    void slappPaStorreKortEllerTomBas() {
        Bord b(kFro, true);
        b.Torn(0, {9, 3});
        b.Torn(1, {4});
        b.Torn(2, {2});
        DraFranTill(*b.vy, b.Botten(18), b.Botten(9));
        QVERIFY(b.Har(10, HJARTER, 2));
        // Onto a smaller card: nothing.
        DraFranTill(*b.vy, b.Botten(1), b.Botten(10));
        QVERIFY(b.Har(1, HJARTER, 3));
        DraFranTill(*b.vy, b.Botten(1), b.Mitten(18));
        QVERIFY(b.Har(18, HJARTER, 3));
        std::vector<std::pair<int, int>> vantat{{18, 10}, {1, 18}};
        QCOMPARE(b.spel->UndoLista(), vantat);
    }

    void tacktKortLyfterDeOvanOchAllaGarTillbaka() {
        Bord b(kFro, true);
        b.Torn(0, {9, 4, 2});
        b.Torn(1, {8});
        TryckOchDra(*b.vy, b.Band(1), b.Mitten(18));
        QCOMPARE(b.spel->valdaLuckor, (std::vector<int>{1, 2}));
        QTest::mouseRelease(b.vy.get(), Qt::LeftButton, Qt::NoModifier, ToQPoint(b.Mitten(18)));
        DraFranTill(*b.vy, b.Band(1), b.Botten(9));
        DraOchSlappUtanfor(*b.vy, b.Band(0));
        KlickaPa(*b.vy, b.Band(1));
        QVERIFY(b.Har(1, HJARTER, 4));
        QVERIFY(b.Har(2, HJARTER, 2));
        QVERIFY(b.L()[18].Tom());
        QVERIFY(b.spel->UndoLista().empty());
    }

    void slappProvarInteLucka26() {
        Bord b(kFro, true);
        b.Torn(2, {9, 9, 9, 9, 9, 9, 9, 9, 5});
        b.Lagg(0, SPADER, 2);
        b.Lagg(9, KLOVER, 1);
        BPoint underSista = b.Botten(26);
        QCOMPARE(Traff(b.L(), underSista), 26);
        DraFranTill(*b.vy, b.Botten(0), underSista);
        QVERIFY(b.Har(0, SPADER, 2));
        QVERIFY(b.L()[27].Tom());
        // A click's search does go round to slot 26, and puts the card after it.
        KlickaPa(*b.vy, b.Botten(0));
        QVERIFY(b.Har(27, SPADER, 2));
    }

    void ritarTrettiosjuPlatserDenSistaTom() {
        Bord b;
        QCOMPARE(kRitadePlatser, 37);
        QCOMPARE(static_cast<int>(b.L().size()), kRitadePlatser - 1);
        QVERIFY(RitadPlats(b.L(), 36) == nullptr);
        QVERIFY(RitadPlats(b.L(), 35) == &b.L()[35]);
        QVERIFY(RitadPlats(b.L(), 0) == &b.L()[0]);
        b.Lagg(35, SPADER, 13);
        b.vy->InvalidateOffscreen();
        // The stock slot draws the card's back; beyond it the table shows.
        QVERIFY(b.Pixel(b.Mitten(35)) != QColor(0, 160, 0));
    }

    void klartNarEttTornGarNioTillEss() {
        Bord b(kFro, true);
        b.Torn(1, {9, 8, 7, 6, 5, 4, 3, 2});
        QVERIFY(!b.spel->KlarSpel());
        b.Lagg(17, HJARTER, 1);
        QVERIFY(b.spel->KlarSpel());
        b.L()[17].TaBortKort();
        b.Lagg(17, HJARTER, 2);
        QVERIFY(!b.spel->KlarSpel());
    }

    void sammaBordMedOchUtanAnimering() {
        Bord utan;
        Bord med(kFro, false, 640, 480, true);
        auto treKlickOchAngra = [](Bord& b) {
            for (int i : {2, 11, 20})
                KlickaPa(*b.vy, b.Botten(i));
            return b.spel->Undo();
        };
        SammaMedOchUtanAnimering<Bord>(utan, med, {treKlickOchAngra, NyGiv<Bord>(5)});
        QCOMPARE(med.spel->AntalUndo(), 0);
    }

    void angraTillbakaTillGivet() {
        Bord b;
        auto givet = Bordet(*b.spel);
        std::vector<Drag> vag = KortasteVinst(b.spel->Tabell());
        QVERIFY(vag.size() > 3);
        vag.resize(3);
        QCOMPARE(b.SpelaGenomVyn(vag), QString());
        QCOMPARE(b.AngraAllt(), 3);
        QCOMPARE(Bordet(*b.spel), givet);
        QCOMPARE(b.spel->AntalUndo(), 3);
    }

    void vinnerGenomRiktigtSpel() {
        Bord b(kFro, false, 1280, 1024);
        std::vector<Drag> vag = KortasteVinst(b.spel->Tabell());
        QVERIFY(!vag.empty());
        b.VinnGenomVyn(vag, 0, 1);
    }

    // What is stored keeps the table ranked by undos: a stored entry carries no cards, so
    // its key is its undos alone and a later result with more undos goes below it.
    void hiscoreLagrarIngaKortOchRankarPaAnger() {
        Bord b;
        b.GlomHiscore();
        b.spel->BordForTest().antalUndo = 3;
        QCOMPARE(b.spel->AddHiscore(), 1);
        b.spel->BordForTest().antalUndo = 5;
        QCOMPARE(b.spel->AddHiscore(), 2);
        b.spel->BordForTest().antalUndo = 1;
        QCOMPARE(b.spel->AddHiscore(), 1);
        QCOMPARE(b.Post(1).angra, 1);
        QCOMPARE(b.Post(2).angra, 3);
        QCOMPARE(b.Post(3).angra, 5);
        for (int plats = 1; plats <= 3; ++plats) {
            QCOMPARE(static_cast<int>(b.Post(plats).kort), 0);
            QCOMPARE(static_cast<int>(b.Post(plats).giv), 1);
        }
        b.TommaPosterFran(4, 1);
    }
};

QTEST_MAIN(TestTower)
#include "test_tower.moc"
