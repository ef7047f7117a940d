#include "app/FjolkView.h"
#include "cards/Hiscore.h"
#include "cards/Kortlek.h"
#include "games/Idioten.h"
#include "games/IdiotenRegler.h"
#include "support/Gester.h"
#include "support/Spelfall.h"
#include "support/Testbord.h"

#include <QMouseEvent>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <utility>
#include <vector>

using namespace IdiotenRegler;

namespace {

constexpr unsigned kFro = 20240611;

std::vector<Lucka> TomtBord(BRect bounds = BRect(0, 0, 640, 480)) {
    std::vector<Lucka> luckor(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
    RaknaUtLuckor(luckor, bounds);
    return luckor;
}

Kort K(kortfarg farg, int valor) {
    return Kort(farg, valor, BRect(0, 0, 0, 0));
}

void Lagg(std::vector<Lucka>& luckor, int lucka, kortfarg farg, int valor) {
    luckor[lucka].TaEmotKort(K(farg, valor));
}

// Row `rad` from its left end: two and up, `antal` cards of one suit.
void ByggRad(std::vector<Lucka>& luckor, int rad, kortfarg farg, int antal) {
    for (int k = 0; k < antal; ++k)
        Lagg(luckor, 13 * rad + k, farg, k + 2);
}

bool Har(const std::vector<Lucka>& luckor, int lucka, kortfarg farg, int valor) {
    return !luckor[lucka].Tom() && luckor[lucka].GeKort().KortFarg() == farg &&
           luckor[lucka].GeKort().KortValor() == valor;
}

// Exchanges what two slots hold (a card or nothing); the slots keep their places.
void Byt(std::vector<Lucka>& luckor, int a, int b) {
    Lucka la = luckor[a];
    Lucka lb = luckor[b];
    auto satt = [](Lucka& dit, const Lucka& fran) {
        if (fran.Tom())
            dit.TaBortKort();
        else
            dit.TaEmotKort(fran.GeKort());
    };
    satt(luckor[a], lb);
    satt(luckor[b], la);
}

int Hitta(const std::vector<Lucka>& luckor, kortfarg farg, int valor) {
    for (int i = 0; i < kAntalLuckor; ++i)
        if (Har(luckor, i, farg, valor))
            return i;
    return -1;
}

// Brings a card of the dealt table to `lucka`; whatever lay there takes its old place.
void Placera(std::vector<Lucka>& luckor, int lucka, kortfarg farg, int valor) {
    Byt(luckor, Hitta(luckor, farg, valor), lucka);
}

// Makes the given slots (at most four) the grid's gaps; their cards go where the other
// gaps were.
void Tomma(std::vector<Lucka>& luckor, std::initializer_list<int> tomma) {
    auto skaVaraTom = [&](int i) {
        return std::find(tomma.begin(), tomma.end(), i) != tomma.end();
    };
    for (int lucka : tomma) {
        if (luckor[lucka].Tom())
            continue;
        for (int i = kForstaRutan; i <= kSistaRutan; ++i)
            if (luckor[i].Tom() && !skaVaraTom(i)) {
                Byt(luckor, i, lucka);
                break;
            }
    }
}

const QColor kGron(0, 160, 0);

struct Bord : Testbord<Idioten> {
    explicit Bord(unsigned fro = kFro, bool tomt = false, int bredd = 640, int hojd = 480,
                  bool animera = false)
        : Testbord(0, fro, tomt, bredd, hojd, animera) {}
    // After the test has laid out a table: recount and show it as the game would.
    void Visa() {
        spel->KlarSpel();
        vy->InvalidateOffscreen();
    }
};

} // namespace

class IdiotenTest : public QObject {
    Q_OBJECT

    // The first card of the table that a click would move, or -1.
    static int ForstaFlyttbara(const std::vector<Lucka>& luckor) {
        for (int i = kForstaRutan; i <= kSistaRutan; ++i)
            if (!luckor[i].Tom() && KlickMal(luckor, luckor[i].GeKort()) >= 0)
                return i;
        return -1;
    }

    QTemporaryDir dataMapp;

private slots:
    // The hiscore tables of this run go to a folder of their own, set before anything
    // opens the store.
    void initTestCase() { BorjaSpeltest<Idioten>(dataMapp, 0, kAntalLuckor); }

    // ---- Layout -------------------------------------------------------------------------

    void utlaggFor640x480() {
        std::vector<Lucka> luckor(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
        Utlagg u = RaknaUtLuckor(luckor, BRect(0, 0, 640, 480));
        QCOMPARE(u.h, 83);
        QCOMPARE(u.w, 44);
        LiggerVid(luckor,
                  {
                      {0, BRect(0, 5, 44, 88)},
                      {14, BRect(49, 93, 93, 176)},
                      {51, BRect(588, 269, 632, 352)},
                      // The aces' fan: each half a card less five pixels right of the one before.
                      {52, BRect(0, 357, 44, 440)},
                      {55, BRect(81, 357, 125, 440)},
                      // The stock, a pixel a card, beside the aces.
                      {56, BRect(137, 357, 181, 440)},
                      {107, BRect(137, 408, 181, 491)},
                  });
        QCOMPARE(u.knapp, BRect(443, 372, 583, 412));
        QCOMPARE(RaknarRuta(luckor), BRect(187, 372, 387, 412));
    }

    void litenVyGerKortPaMinst40x70() {
        std::vector<Lucka> luckor(kAntalLuckor, Lucka(BRect(0, 0, 0, 0), false));
        Utlagg u = RaknaUtLuckor(luckor, BRect(0, 0, 100, 60));
        QCOMPARE(u.w, 40);
        QCOMPARE(u.h, 70);
        LiggerVid(luckor, {
                              {0, BRect(0, 5, 40, 75)},
                              {51, BRect(540, 230, 580, 300)},
                          });
        // One pixel below either minimum still gives the minimum.
        u = RaknaUtLuckor(luckor, BRect(0, 0, 584, 414));
        QCOMPARE(u.w, 40);
        QCOMPARE(u.h, 70);
        u = RaknaUtLuckor(luckor, BRect(0, 0, 585, 415));
        QCOMPARE(u.w, 40);
        QCOMPARE(u.h, 70);
        u = RaknaUtLuckor(luckor, BRect(0, 0, 598, 420));
        QCOMPARE(u.w, 41);
        QCOMPARE(u.h, 71);
    }

    void spelLaggerUtSinaLuckorOchKnappen() {
        Bord bord;
        QVERIFY(bord.spel);
        bord.spel->OmRaknaLuckaKort(BRect(0, 0, 640, 480));
        QCOMPARE(bord.spel->Luckor()[0].GePos(), BRect(0, 5, 44, 88));
        QCOMPARE(bord.spel->Luckor()[14].GePos(), BRect(49, 93, 93, 176));
        QCOMPARE(bord.spel->KnappPos(), BRect(443, 372, 583, 412));
        // Every card then shows its own face.
        for (const Lucka& lucka : bord.spel->Luckor())
            if (!lucka.Tom())
                QCOMPARE(lucka.GeKort().GePos(), bord.spel->FramsidaFor(lucka.GeKort()));
    }

    void litenVyGerSpeletKortPaMinst40x70() {
        Bord bord(kFro, false, 200, 150);
        QVERIFY(bord.spel);
        QCOMPARE(bord.spel->Luckor()[0].GePos(), BRect(0, 5, 40, 75));
        QCOMPARE(bord.spel->Luckor()[1].GePos(), BRect(45, 5, 85, 75));
    }

    // ---- The placement rule -------------------------------------------------------------

    void tvaPaTomForstaKolumnenTasEmot() {
        std::vector<Lucka> luckor = TomtBord();
        for (int s : {0, 13, 26, 39})
            for (kortfarg f : {HJARTER, RUTER, KLOVER, SPADER})
                QVERIFY(FarLaggas(luckor, s, K(f, 2)));
    }

    void annatKortPaForstaKolumnenVagras() {
        std::vector<Lucka> luckor = TomtBord();
        for (int s : {0, 13, 26, 39})
            for (int v : {1, 3, 7, 12, 13})
                QVERIFY(!FarLaggas(luckor, s, K(SPADER, v)));
        // Only an empty place takes a card.
        Lagg(luckor, 13, HJARTER, 5);
        QVERIFY(!FarLaggas(luckor, 13, K(RUTER, 2)));
    }

    void luckaTarEttHogreISammaFarg() {
        std::vector<Lucka> luckor = TomtBord();
        Lagg(luckor, 20, RUTER, 6);
        QVERIFY(FarLaggas(luckor, 21, K(RUTER, 7)));
        QVERIFY(!FarLaggas(luckor, 21, K(HJARTER, 7)));
        QVERIFY(!FarLaggas(luckor, 21, K(RUTER, 8)));
        QVERIFY(!FarLaggas(luckor, 21, K(RUTER, 5)));
        QVERIFY(!FarLaggas(luckor, 21, K(RUTER, 6)));
        // A gap right of a gap takes nothing, and a two only at a row's left end.
        QVERIFY(!FarLaggas(luckor, 23, K(RUTER, 7)));
        QVERIFY(!FarLaggas(luckor, 23, K(RUTER, 2)));
        // Column 12 follows column 11; column 0 does not follow the row above.
        Lagg(luckor, 11, SPADER, 12);
        QVERIFY(FarLaggas(luckor, 12, K(SPADER, 13)));
        Lagg(luckor, 12, SPADER, 13);
        QVERIFY(!FarLaggas(luckor, 13, K(SPADER, 1)));
        // Neither the ace places nor the stock are places to play to.
        QVERIFY(!FarLaggas(luckor, 52, K(HJARTER, 2)));
        QVERIFY(!FarLaggas(luckor, 56, K(HJARTER, 2)));
    }

    void luckaEfterKungTarIngentingOchSaknarKantlinje() {
        std::vector<Lucka> luckor = TomtBord();
        Lagg(luckor, 13, RUTER, 12);
        Lagg(luckor, 14, RUTER, 13);
        // 15 and 16 are gaps right of the king, 17 a card, 18 a gap after it.
        Lagg(luckor, 17, KLOVER, 5);
        for (int i = 19; i <= 25; ++i)
            Lagg(luckor, i, SPADER, i - 16);
        for (int v = 1; v <= 13; ++v)
            for (kortfarg f : {HJARTER, RUTER, KLOVER, SPADER}) {
                QVERIFY(!FarLaggas(luckor, 15, K(f, v)));
                QVERIFY(!FarLaggas(luckor, 16, K(f, v)));
            }
        RaknaKlaraKort(luckor);
        QVERIFY(!luckor[15].GeKantLinje());
        QVERIFY(!luckor[16].GeKantLinje());
        QVERIFY(luckor[17].GeKantLinje());
        QVERIFY(luckor[18].GeKantLinje());
        QVERIFY(luckor[14].GeKantLinje());
    }

    void kantlinjerPaTommaLuckor() {
        std::vector<Lucka> luckor = TomtBord();
        // An empty row: all of it outlined, from its left end on.
        RaknaKlaraKort(luckor);
        for (int i = kForstaRutan; i <= kSistaRutan; ++i)
            QVERIFY(luckor[i].GeKantLinje());
        // A king at the left end hides every gap after it up to the row's end, and no
        // further: the next row starts outlined again.
        Lagg(luckor, 0, HJARTER, 13);
        RaknaKlaraKort(luckor);
        for (int i = 1; i <= 12; ++i)
            QVERIFY(!luckor[i].GeKantLinje());
        QVERIFY(luckor[13].GeKantLinje());
        QVERIFY(luckor[14].GeKantLinje());
        // A card in the hidden stretch starts an outlined stretch after it.
        Lagg(luckor, 6, KLOVER, 13);
        Lagg(luckor, 8, KLOVER, 4);
        RaknaKlaraKort(luckor);
        QVERIFY(!luckor[5].GeKantLinje());
        QVERIFY(luckor[6].GeKantLinje());
        QVERIFY(!luckor[7].GeKantLinje());
        QVERIFY(luckor[9].GeKantLinje());
        QVERIFY(luckor[12].GeKantLinje());
        // A king in column 12 hides nothing in the next row.
        Lagg(luckor, 25, RUTER, 13);
        RaknaKlaraKort(luckor);
        QVERIFY(luckor[26].GeKantLinje());
        QVERIFY(luckor[27].GeKantLinje());
    }

    // ---- Where a click and a drop send a card --------------------------------------------

    void klickMalArForstaLagligaLuckanIIndexordning() {
        std::vector<Lucka> luckor = TomtBord();
        for (int i = kForstaRutan; i <= kSistaRutan; ++i)
            Lagg(luckor, i, HJARTER, 9);
        luckor[13].TaBortKort();
        luckor[39].TaBortKort();
        luckor[5].TaBortKort();
        // A two: the first free row end, past the gap before it that cannot take it.
        QCOMPARE(KlickMal(luckor, K(SPADER, 2)), 13);
        luckor[0].TaBortKort();
        QCOMPARE(KlickMal(luckor, K(SPADER, 2)), 0);
        // A ten of hearts fits after each nine of hearts: the first gap wins.
        QCOMPARE(KlickMal(luckor, K(HJARTER, 10)), 5);
        // Nothing fits anywhere: no target.
        QCOMPARE(KlickMal(luckor, K(KLOVER, 10)), -1);
        QCOMPARE(KlickMal(luckor, K(HJARTER, 11)), -1);
    }

    void dropMalArLuckanUnderPekarenOmKortetFarLiggaDar() {
        std::vector<Lucka> luckor = TomtBord();
        Lagg(luckor, 20, RUTER, 6);
        Lagg(luckor, 40, KLOVER, 9);
        // 21 and 41 are gaps; 0 too.
        QCOMPARE(DropMal(luckor, K(RUTER, 7), Mitt(luckor[21].GePos())), 21);
        QCOMPARE(DropMal(luckor, K(RUTER, 7), luckor[21].GePos().LeftTop()), 21);
        QCOMPARE(DropMal(luckor, K(RUTER, 7), luckor[21].GePos().RightBottom()), 21);
        QCOMPARE(DropMal(luckor, K(RUTER, 7), Mitt(luckor[41].GePos())), -1);
        QCOMPARE(DropMal(luckor, K(RUTER, 7), Mitt(luckor[0].GePos())), -1);
        QCOMPARE(DropMal(luckor, K(RUTER, 2), Mitt(luckor[0].GePos())), 0);
        // On a card, in the space between slots, below the grid: nowhere.
        QCOMPARE(DropMal(luckor, K(RUTER, 7), Mitt(luckor[20].GePos())), -1);
        BRect r = luckor[21].GePos();
        QCOMPARE(DropMal(luckor, K(RUTER, 7), BPoint(r.right + 2, r.top + 10)), -1);
        QCOMPARE(DropMal(luckor, K(RUTER, 2), Mitt(luckor[52].GePos())), -1);
        QCOMPARE(DropMal(luckor, K(RUTER, 7), BPoint(-10, -10)), -1);
    }

    void kortUnderPekarenFinnsBaraIRutnatet() {
        std::vector<Lucka> luckor = TomtBord();
        Lagg(luckor, 30, SPADER, 4);
        Lagg(luckor, 52, SPADER, 1);
        Lagg(luckor, 56, HJARTER, 4);
        QCOMPARE(KortUnder(luckor, Mitt(luckor[30].GePos())), 30);
        QCOMPARE(KortUnder(luckor, Mitt(luckor[31].GePos())), -1);
        QCOMPARE(KortUnder(luckor, Mitt(luckor[52].GePos())), -1);
        QCOMPARE(KortUnder(luckor, Mitt(luckor[56].GePos())), -1);
    }

    // ---- Counting -----------------------------------------------------------------------

    void klarSpelNarVarjeRadArTvaTillKungIEnFarg() {
        std::vector<Lucka> luckor = TomtBord();
        ByggRad(luckor, 0, HJARTER, 12);
        ByggRad(luckor, 1, RUTER, 12);
        ByggRad(luckor, 2, KLOVER, 12);
        ByggRad(luckor, 3, SPADER, 12);
        QCOMPARE(RaknaKlaraKort(luckor), 48);
        QVERIFY(Vunnet(RaknaKlaraKort(luckor)));
        for (int r = 0; r < 4; ++r) {
            for (int c = 0; c < 12; ++c)
                QVERIFY(luckor[13 * r + c].GeOkPos());
            QVERIFY(!luckor[13 * r + 12].GeOkPos());
        }
    }

    void vilkenFargISomRadSpelarIngenRoll() {
        std::vector<Lucka> luckor = TomtBord();
        ByggRad(luckor, 0, SPADER, 12);
        ByggRad(luckor, 1, HJARTER, 12);
        ByggRad(luckor, 2, RUTER, 12);
        ByggRad(luckor, 3, KLOVER, 12);
        QCOMPARE(RaknaKlaraKort(luckor), 48);
        QVERIFY(Vunnet(48));
    }

    void fyrtiosjuArInteKlart() {
        std::vector<Lucka> luckor = TomtBord();
        ByggRad(luckor, 0, HJARTER, 12);
        ByggRad(luckor, 1, RUTER, 12);
        ByggRad(luckor, 2, KLOVER, 12);
        ByggRad(luckor, 3, SPADER, 11);
        QCOMPARE(RaknaKlaraKort(luckor), 47);
        QVERIFY(!Vunnet(47));
        // The king in the last column is past the row's run and never counts.
        Lagg(luckor, 51, SPADER, 13);
        QCOMPARE(RaknaKlaraKort(luckor), 47);
        QVERIFY(!luckor[51].GeOkPos());
    }

    void raknarFoljdenFranRadensBorjanAvenUtanTva() {
        std::vector<Lucka> luckor = TomtBord();
        // Row 0: 2, 3, 4 of hearts, then a break, then 6, 7 of hearts after a gap.
        ByggRad(luckor, 0, HJARTER, 3);
        Lagg(luckor, 4, HJARTER, 6);
        Lagg(luckor, 5, HJARTER, 7);
        // Row 1: a run of clubs that does not start with a two: its followers count.
        Lagg(luckor, 13, KLOVER, 3);
        Lagg(luckor, 14, KLOVER, 4);
        Lagg(luckor, 15, KLOVER, 5);
        // Row 2: a two, then a card of another suit.
        Lagg(luckor, 26, RUTER, 2);
        Lagg(luckor, 27, SPADER, 3);
        QCOMPARE(RaknaKlaraKort(luckor), 6);
        for (int i : {0, 1, 2, 14, 15, 26})
            QVERIFY(luckor[i].GeOkPos());
        for (int i : {4, 5, 13, 27})
            QVERIFY(!luckor[i].GeOkPos());
        // Marks from an earlier count do not survive a recount.
        luckor[1].TaBortKort();
        QCOMPARE(RaknaKlaraKort(luckor), 4);
        QVERIFY(!luckor[2].GeOkPos());
    }

    void lekensToppArHogstaFylldaLekplatsen() {
        std::vector<Lucka> luckor = TomtBord();
        QCOMPARE(LekensTopp(luckor), -1);
        Lagg(luckor, 56, HJARTER, 3);
        QCOMPARE(LekensTopp(luckor), 56);
        for (int i = 56; i <= 107; ++i)
            Lagg(luckor, i, HJARTER, 3);
        QCOMPARE(LekensTopp(luckor), 107);
        luckor[80].TaBortKort();
        QCOMPARE(LekensTopp(luckor), 79);
    }

    // ---- The deal -----------------------------------------------------------------------

    // The grid is filled from the stock's top, and the stock was filled from the deck's
    // top: so grid slot t gets the card at index t of the shuffled deck.
    void givetLaggerLekenIRutnatetOchTarUtEssen() {
        std::srand(kFro);
        Kortlek lek;
        lek.Blanda();
        Bord bord;
        QVERIFY(bord.spel);
        const std::vector<Lucka>& luckor = bord.spel->Luckor();
        QCOMPARE(int(luckor.size()), kAntalLuckor);
        std::vector<Kort> essen;
        for (int t = 0; t <= 51; ++t) {
            const Kort& kort = lek.Korten()[t];
            if (kort.KortValor() == 1) {
                QVERIFY(luckor[t].Tom());
                essen.push_back(kort);
            } else {
                QVERIFY(Har(luckor, t, kort.KortFarg(), kort.KortValor()));
            }
        }
        QCOMPARE(int(essen.size()), 4);
        for (int i = 0; i < 4; ++i)
            QVERIFY(Har(luckor, 52 + i, essen[i].KortFarg(), 1));
        QCOMPARE(AntalFyllda(luckor, 0, 51), 48);
        QCOMPARE(AntalFyllda(luckor, 56, 107), 0);
        for (const Lucka& lucka : luckor)
            if (!lucka.Tom())
                QCOMPARE(lucka.GeKort().GePos(), bord.spel->FramsidaFor(lucka.GeKort()));
        QCOMPARE(bord.spel->Forsok(), 1);
        QCOMPARE(bord.spel->AntalUndo(), 0);
        std::vector<Lucka> kopia = luckor;
        QCOMPARE(bord.spel->KlaraKort(), RaknaKlaraKort(kopia));
        QVERIFY(!bord.spel->Has_Undos());
        // The empty ace places are never outlined.
        for (int i = 52; i <= 55; ++i)
            QVERIFY(!luckor[i].GeKantLinje());
    }

    void nyttSpelBorjarOm() {
        Bord bord;
        int kalla = ForstaFlyttbara(bord.spel->Luckor());
        QVERIFY(kalla >= 0);
        bord.Klicka(kalla);
        KlickaPa(*bord.vy, Mitt(bord.spel->KnappPos()));
        QCOMPARE(bord.spel->Forsok(), 2);
        bord.spel->NyttSpel(bord.vy->Bounds());
        QCOMPARE(bord.spel->Forsok(), 1);
        QCOMPARE(bord.spel->AntalUndo(), 0);
        QVERIFY(!bord.spel->Has_Undos());
        QCOMPARE(bord.Antal(0, 51), 48);
        QCOMPARE(bord.Antal(52, 55), 4);
        QCOMPARE(bord.Antal(56, 107), 0);
    }

    // A deal draws its shuffle and the stripes of one face rendering, nothing more: the new
    // attempts and the next deal go on from there.
    void givetDrarBlandningenOchEnRitning() {
        Bord bord(kFro, false, 900, 600);
        int nasta = std::rand();
        QCOMPARE(bord.spel->Luckor()[0].GePos(), BRect(0, 5, 64, 111));
        QCOMPARE(nasta, TalEfterGivet(kFro, 64));
    }

    // So does a new attempt: the gathered cards' shuffle, then the layout's rendering.
    void nyttForsokDrarBlandningenOchEnRitning() {
        for (bool animera : {false, true}) {
            Bord bord(kFro, false, 640, 480, animera);
            std::srand(1234);
            KlickaPa(*bord.vy, Mitt(bord.spel->KnappPos()));
            int nasta = std::rand();
            QCOMPARE(bord.spel->Forsok(), 2);
            QCOMPARE(nasta, TalEfterGivet(1234, 44));
        }
    }

    // ---- Gestures -----------------------------------------------------------------------

    void tvaDragenTillTomForstaKolumnenTasEmot() {
        Bord bord;
        auto& luckor = bord.L();
        Placera(luckor, 5, SPADER, 2);
        Tomma(luckor, {0});
        bord.Visa();
        QVERIFY(Har(luckor, 5, SPADER, 2) && luckor[0].Tom());
        DraFranTill(*bord.vy, bord.Mitten(5), bord.Mitten(0));
        QVERIFY(Har(luckor, 0, SPADER, 2));
        QVERIFY(luckor[5].Tom());
        QCOMPARE(bord.spel->UndoLista(), (std::vector<std::pair<int, int>>{{5, 0}}));
        QVERIFY(bord.spel->Has_Undos());
    }

    void annatKortDragetTillTomForstaKolumnenVagras() {
        for (int valor : {3, 13}) {
            Bord bord;
            auto& luckor = bord.L();
            Placera(luckor, 5, SPADER, valor);
            Tomma(luckor, {0});
            bord.Visa();
            auto fore = Bordet(*bord.spel);
            DraFranTill(*bord.vy, bord.Mitten(5), bord.Mitten(0));
            QCOMPARE(Bordet(*bord.spel), fore);
            QVERIFY(!bord.spel->Has_Undos());
        }
    }

    void dragetKortPaLuckaEfterKungVagrasOchLuckornaSaknarKantlinje() {
        Bord bord;
        auto& luckor = bord.L();
        Placera(luckor, 14, RUTER, 13);
        Placera(luckor, 17, KLOVER, 5);
        Placera(luckor, 30, HJARTER, 2);
        Tomma(luckor, {15, 16, 18, 0});
        bord.Visa();
        QVERIFY(Har(luckor, 14, RUTER, 13) && Har(luckor, 17, KLOVER, 5));
        QVERIFY(luckor[15].Tom() && luckor[16].Tom() && luckor[18].Tom() && luckor[0].Tom());
        auto fore = Bordet(*bord.spel);
        DraFranTill(*bord.vy, bord.Mitten(30), bord.Mitten(15));
        QCOMPARE(Bordet(*bord.spel), fore);
        QVERIFY(!bord.spel->Has_Undos());
        QVERIFY(!luckor[15].GeKantLinje());
        QVERIFY(!luckor[16].GeKantLinje());
        QVERIFY(luckor[18].GeKantLinje());
        QVERIFY(luckor[0].GeKantLinje());
        // What the player sees: bare table where there is no outline.
        QCOMPARE(bord.Pixel(bord.VansterKant(15)), kGron);
        QCOMPARE(bord.Pixel(bord.VansterKant(16)), kGron);
        QVERIFY(bord.Pixel(bord.VansterKant(18)) != kGron);
        QVERIFY(bord.Pixel(bord.VansterKant(0)) != kGron);
    }

    void klickFlyttarTillForstaLagligaLuckan() {
        Bord bord;
        auto& luckor = bord.L();
        Placera(luckor, 30, KLOVER, 2);
        Placera(luckor, 0, HJARTER, 9);
        Placera(luckor, 26, SPADER, 9);
        Tomma(luckor, {13, 39, 5, 40});
        bord.Visa();
        QVERIFY(Har(luckor, 30, KLOVER, 2) && luckor[13].Tom() && luckor[39].Tom());
        bord.Klicka(30);
        QVERIFY(Har(luckor, 13, KLOVER, 2));
        QVERIFY(luckor[30].Tom());
        QVERIFY(luckor[39].Tom());
        QCOMPARE(bord.spel->UndoLista(), (std::vector<std::pair<int, int>>{{30, 13}}));
    }

    void klickUtanLagligLuckaGorIngenting() {
        Bord bord;
        auto& luckor = bord.L();
        // The gaps: after kings, and at a row's end after a card of another suit.
        Placera(luckor, 0, HJARTER, 2);
        Placera(luckor, 13, RUTER, 2);
        Placera(luckor, 26, KLOVER, 2);
        Placera(luckor, 39, SPADER, 2);
        Placera(luckor, 4, HJARTER, 13);
        Placera(luckor, 20, RUTER, 13);
        Placera(luckor, 33, KLOVER, 13);
        Placera(luckor, 46, SPADER, 13);
        Tomma(luckor, {5, 21, 34, 47});
        bord.Visa();
        QVERIFY(luckor[5].Tom() && luckor[21].Tom() && luckor[34].Tom() && luckor[47].Tom());
        QCOMPARE(ForstaFlyttbara(luckor), -1);
        auto fore = Bordet(*bord.spel);
        for (int i : {1, 17, 30, 50})
            bord.Klicka(i);
        QCOMPARE(Bordet(*bord.spel), fore);
        QVERIFY(!bord.spel->Has_Undos());
    }

    void klickFyllerRadernasBorjanUppifranOchNer() {
        Bord bord;
        auto& luckor = bord.L();
        Placera(luckor, 0, HJARTER, 9);
        Placera(luckor, 40, HJARTER, 2);
        Placera(luckor, 41, RUTER, 2);
        Placera(luckor, 42, KLOVER, 2);
        Tomma(luckor, {13, 26, 39});
        bord.Visa();
        QVERIFY(luckor[13].Tom() && luckor[26].Tom() && luckor[39].Tom());
        bord.Klicka(42);
        QVERIFY(Har(luckor, 13, KLOVER, 2));
        bord.Klicka(41);
        QVERIFY(Har(luckor, 26, RUTER, 2));
        bord.Klicka(40);
        QVERIFY(Har(luckor, 39, HJARTER, 2));
        QCOMPARE(bord.spel->UndoLista(),
                 (std::vector<std::pair<int, int>>{{42, 13}, {41, 26}, {40, 39}}));
    }

    void tryckSomSkakarInomRutanArEttKlick() {
        Bord bord;
        auto& luckor = bord.L();
        Placera(luckor, 44, RUTER, 2);
        Tomma(luckor, {26, 0, 13, 39});
        bord.Visa();
        TryckSkakaSlapp(*bord.vy, bord.Mitten(44));
        QVERIFY(Har(luckor, 0, RUTER, 2));
        QVERIFY(luckor[44].Tom());
        QCOMPARE(bord.spel->UndoLista(), (std::vector<std::pair<int, int>>{{44, 0}}));
    }

    void dragSomSlutarUtanforEllerFelLamnarBordet() {
        Bord bord;
        auto& luckor = bord.L();
        Placera(luckor, 20, HJARTER, 7);
        Placera(luckor, 30, HJARTER, 8);
        Placera(luckor, 32, SPADER, 8);
        Tomma(luckor, {21, 33, 0, 13});
        bord.Visa();
        auto fore = Bordet(*bord.spel);
        BPoint fran = bord.Mitten(30);
        // Released outside the view.
        DraOchSlappUtanfor(*bord.vy, fran);
        QCOMPARE(Bordet(*bord.spel), fore);
        // On a card, on a gap it may not fill, between two slots, on an ace place.
        DraFranTill(*bord.vy, fran, bord.Mitten(25));
        QCOMPARE(Bordet(*bord.spel), fore);
        DraFranTill(*bord.vy, fran, bord.Mitten(33));
        QCOMPARE(Bordet(*bord.spel), fore);
        BRect r = luckor[21].GePos();
        DraFranTill(*bord.vy, fran, BPoint(r.left - 3, r.top + 20));
        QCOMPARE(Bordet(*bord.spel), fore);
        DraFranTill(*bord.vy, fran, bord.Mitten(53));
        QCOMPARE(Bordet(*bord.spel), fore);
        QVERIFY(!bord.spel->Has_Undos());
        // The card is shown at its place again.
        QVERIFY(bord.Pixel(bord.Mitten(30)) != kGron);
        // And where it may go, it goes.
        DraFranTill(*bord.vy, fran, bord.Mitten(21));
        QVERIFY(Har(luckor, 21, HJARTER, 8));
        QCOMPARE(bord.spel->UndoLista(), (std::vector<std::pair<int, int>>{{30, 21}}));
    }

    void dragLyfterKortetOchPlatsenSerTomUt() {
        Bord bord;
        auto& luckor = bord.L();
        Placera(luckor, 14, HJARTER, 9);
        bord.Visa();
        const int kalla = 14;
        BRect r = luckor[kalla].GePos();
        QPoint tryck(static_cast<int>(r.left) + 10, static_cast<int>(r.top) + 20);
        auto fore = Bordet(*bord.spel);
        QTest::mousePress(bord.vy.get(), Qt::LeftButton, Qt::NoModifier, tryck);
        QMouseEvent drag(QEvent::MouseMove, QPointF(tryck + QPoint(8, 0)),
                         bord.vy->mapToGlobal(QPointF(tryck + QPoint(8, 0))), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(bord.vy.get(), &drag);
        QVERIFY(bord.vy->drar);
        QCOMPARE(bord.spel->valdaLuckor, std::vector<int>{kalla});
        // The image is the card at its size, held where it was pressed.
        QCOMPARE(KortSpel::point, BPoint(10, 20));
        QCOMPARE(KortSpel::bmp.size(), QSize(r.IntegerWidth() + 1, r.IntegerHeight() + 1));
        QCOMPARE(bord.Pixel(Mitt(r)), kGron);
        // Let go over its own place: it stays there.
        QTest::mouseRelease(bord.vy.get(), Qt::LeftButton, Qt::NoModifier, tryck + QPoint(8, 0));
        QVERIFY(!bord.vy->drar);
        QCOMPARE(Bordet(*bord.spel), fore);
        QVERIFY(bord.Pixel(Mitt(r)) != kGron);
    }

    void essOchLekKanInteTasUpp() {
        Bord bord;
        auto fore = Bordet(*bord.spel);
        bord.Klicka(52);
        DraFranTill(*bord.vy, bord.Mitten(55), bord.Mitten(0));
        QCOMPARE(Bordet(*bord.spel), fore);
        QVERIFY(!bord.spel->Has_Undos());
    }

    // ---- The button and new attempts ------------------------------------------------------

    void knappenGerTvaNyaForsokOchSedanIngenting() {
        Bord bord;
        QCOMPARE(bord.spel->Forsok(), 1);
        KlickaPa(*bord.vy, Mitt(bord.spel->KnappPos()));
        QCOMPARE(bord.spel->Forsok(), 2);
        KlickaPa(*bord.vy, Mitt(bord.spel->KnappPos()));
        QCOMPARE(bord.spel->Forsok(), 3);
        auto fore = Bordet(*bord.spel);
        KlickaPa(*bord.vy, Mitt(bord.spel->KnappPos()));
        QCOMPARE(bord.spel->Forsok(), 3);
        QCOMPARE(Bordet(*bord.spel), fore);
        // On the last deal the button is not drawn either.
        QCOMPARE(bord.Pixel(Mitt(bord.spel->KnappPos())), kGron);
    }

    void knappenSynsPaForstaOchAndraGivet() {
        Bord bord;
        BRect knapp = bord.spel->KnappPos();
        QCOMPARE(bord.Pixel(BPoint(knapp.left + 2, knapp.bottom - 8)), QColor(180, 80, 180));
        KlickaPa(*bord.vy, Mitt(knapp));
        QCOMPARE(bord.Pixel(BPoint(knapp.left + 2, knapp.bottom - 8)), QColor(180, 80, 180));
        // A press just outside it does nothing.
        KlickaPa(*bord.vy, BPoint(knapp.left - 1, knapp.top + 10));
        QCOMPARE(bord.spel->Forsok(), 2);
    }

    void nyttForsokBeharKortPaPlatsOchGerUtResten() {
        Bord bord;
        auto& luckor = bord.L();
        Placera(luckor, 0, HJARTER, 2);
        Placera(luckor, 1, HJARTER, 3);
        Placera(luckor, 2, HJARTER, 4);
        Placera(luckor, 26, KLOVER, 2);
        Placera(luckor, 27, SPADER, 3);
        // Nothing else in place: no run goes on, no other row starts with a two.
        Placera(luckor, 3, SPADER, 9);
        Placera(luckor, 13, RUTER, 9);
        Placera(luckor, 39, KLOVER, 9);
        bord.Visa();
        QCOMPARE(bord.spel->KlaraKort(), 4);
        int kalla = ForstaFlyttbara(luckor);
        QVERIFY(kalla > 2);
        bord.Klicka(kalla);
        QVERIFY(bord.spel->Has_Undos());
        int undos = bord.spel->AntalUndo();

        KlickaPa(*bord.vy, Mitt(bord.spel->KnappPos()));
        QCOMPARE(bord.spel->Forsok(), 2);
        QVERIFY(Har(luckor, 0, HJARTER, 2));
        QVERIFY(Har(luckor, 1, HJARTER, 3));
        QVERIFY(Har(luckor, 2, HJARTER, 4));
        QVERIFY(Har(luckor, 26, KLOVER, 2));
        std::vector<Lucka> kopia = luckor;
        QCOMPARE(bord.spel->KlaraKort(), RaknaKlaraKort(kopia));
        QCOMPARE(AntalFyllda(luckor, 0, 51), 48);
        QCOMPARE(AntalFyllda(luckor, 56, 107), 0);
        for (int i = 52; i <= 55; ++i)
            QCOMPARE(luckor[i].GeKort().KortValor(), 1);
        // Every card once, faces in place.
        bool sett[4][14] = {};
        for (int i = 0; i <= 55; ++i) {
            const Kort& k = luckor[i].GeKort();
            if (luckor[i].Tom())
                continue;
            QVERIFY(!sett[k.KortFarg()][k.KortValor()]);
            sett[k.KortFarg()][k.KortValor()] = true;
            QCOMPARE(k.GePos(), bord.spel->FramsidaFor(k));
        }
        // A new attempt cannot be undone, and undoing nothing counts nothing.
        QVERIFY(!bord.spel->Has_Undos());
        QCOMPARE(bord.spel->Undo(), 0);
        QCOMPARE(bord.spel->AntalUndo(), undos);
    }

    // The gathered cards go back on the deck in slot order and are shuffled; the
    // stock is filled from the deck's top and dealt into the gaps in index order.
    void nyttForsokGerUtSomLekenBlandas() {
        Bord bord;
        std::vector<Lucka> luckor = bord.spel->Luckor();
        Kortlek lek;
        while (lek.AntalKortKvar() > 0)
            lek.GeKort();
        for (int i = 0; i <= 55; ++i)
            if (!luckor[i].Tom() && !luckor[i].GeOkPos())
                lek.TaInKort(luckor[i].GeKort());
        int seed = std::rand();
        std::srand(static_cast<unsigned>(seed));
        lek.Blanda();
        std::srand(static_cast<unsigned>(seed));
        KlickaPa(*bord.vy, Mitt(bord.spel->KnappPos()));
        const auto& efter = bord.spel->Luckor();
        std::vector<Kort> kort = lek.Korten();
        int n = static_cast<int>(kort.size());
        // Stock slot 56 + j holds the j-th card off the deck; the grid takes the top first.
        std::vector<Kort> stock;
        for (int j = 0; j < n; ++j)
            stock.push_back(kort[n - 1 - j]);
        int nasta = n - 1;
        for (int t = 0; t <= 51; ++t) {
            if (!luckor[t].Tom() && luckor[t].GeOkPos()) {
                QVERIFY(
                    Har(efter, t, luckor[t].GeKort().KortFarg(), luckor[t].GeKort().KortValor()));
                continue;
            }
            const Kort& k = stock[nasta--];
            if (k.KortValor() == 1)
                QVERIFY(efter[t].Tom());
            else
                QVERIFY(Har(efter, t, k.KortFarg(), k.KortValor()));
        }
        QCOMPARE(nasta, -1);
    }

    // ---- Undo ---------------------------------------------------------------------------

    void angraAterstallerBordet() {
        Bord bord;
        auto& luckor = bord.L();
        auto fore = Bordet(*bord.spel);
        int forsta = ForstaFlyttbara(luckor);
        QVERIFY(forsta >= 0);
        bord.Klicka(forsta);
        auto mellan = Bordet(*bord.spel);
        QVERIFY(mellan != fore);
        int andra = ForstaFlyttbara(luckor);
        QVERIFY(andra >= 0);
        bord.Klicka(andra);
        QCOMPARE(int(bord.spel->UndoLista().size()), 2);

        QCOMPARE(bord.spel->Undo(), 1);
        QCOMPARE(Bordet(*bord.spel), mellan);
        QCOMPARE(bord.spel->AntalUndo(), 1);
        QVERIFY(bord.spel->Has_Undos());
        QCOMPARE(bord.spel->Undo(), 0);
        QCOMPARE(Bordet(*bord.spel), fore);
        QCOMPARE(bord.spel->AntalUndo(), 2);
        QVERIFY(!bord.spel->Has_Undos());
        // Nothing left: nothing done, nothing counted.
        QCOMPARE(bord.spel->Undo(), 0);
        QCOMPARE(bord.spel->AntalUndo(), 2);
        QCOMPARE(Bordet(*bord.spel), fore);
    }

    void angraEttDrag() {
        Bord bord;
        auto& luckor = bord.L();
        Placera(luckor, 5, SPADER, 2);
        Tomma(luckor, {0});
        bord.Visa();
        auto fore = Bordet(*bord.spel);
        DraFranTill(*bord.vy, bord.Mitten(5), bord.Mitten(0));
        QVERIFY(Har(luckor, 0, SPADER, 2));
        QCOMPARE(bord.spel->Undo(), 0);
        QCOMPARE(Bordet(*bord.spel), fore);
    }

    void angraPaNyttGivGerNollOchRaknarInget() {
        Bord bord;
        QVERIFY(!bord.spel->Has_Undos());
        auto fore = Bordet(*bord.spel);
        QCOMPARE(bord.spel->Undo(), 0);
        QCOMPARE(bord.spel->AntalUndo(), 0);
        QCOMPARE(Bordet(*bord.spel), fore);
    }

    void angraDirektEfterNyttForsokGerNoll() {
        Bord bord;
        int kalla = ForstaFlyttbara(bord.spel->Luckor());
        QVERIFY(kalla >= 0);
        bord.Klicka(kalla);
        QVERIFY(bord.spel->Has_Undos());
        KlickaPa(*bord.vy, Mitt(bord.spel->KnappPos()));
        QCOMPARE(bord.spel->Forsok(), 2);
        QVERIFY(!bord.spel->Has_Undos());
        auto fore = Bordet(*bord.spel);
        QCOMPARE(bord.spel->Undo(), 0);
        QCOMPARE(bord.spel->AntalUndo(), 0);
        QCOMPARE(Bordet(*bord.spel), fore);
    }

    // ---- Winning ------------------------------------------------------------------------

    void sistaKungenVinnerSpelet() {
        Bord bord;
        auto& luckor = bord.L();
        const kortfarg radFarg[4] = {KLOVER, HJARTER, SPADER, RUTER};
        for (int r = 0; r < 4; ++r)
            for (int v = 2; v <= 13; ++v)
                Placera(luckor, 13 * r + v - 2, radFarg[r], v);
        // The last king one place too far right: not yet won.
        Byt(luckor, 50, 51);
        bord.Visa();
        QCOMPARE(bord.spel->KlaraKort(), 47);
        QVERIFY(!bord.spel->KlarSpel());
        bord.Klicka(51);
        QVERIFY(Har(luckor, 50, RUTER, 13));
        QVERIFY(bord.spel->KlarSpel());
        QCOMPARE(bord.spel->KlaraKort(), 48);
    }

    // ---- Hiscore ------------------------------------------------------------------------

    void hiscoreFarKlaraKortGivOchAngringar() {
        Bord bord;
        bord.GlomHiscore();
        std::strcpy(bord.vy->spelarNamn, "Fjolk Fjolksson");
        int kalla = ForstaFlyttbara(bord.spel->Luckor());
        QVERIFY(kalla >= 0);
        bord.Klicka(kalla);
        QCOMPARE(bord.spel->Undo(), 0);
        KlickaPa(*bord.vy, Mitt(bord.spel->KnappPos()));
        QCOMPARE(bord.spel->Forsok(), 2);
        QCOMPARE(bord.spel->AntalUndo(), 1);

        QCOMPARE(bord.spel->AddHiscore(), 1);
        HiscoreLista tabell = LasHiscore(0);
        QCOMPARE(QByteArray(tabell[0].namn), QByteArray("Fjolk Fjolksson"));
        QCOMPARE(int(tabell[0].kort), bord.spel->KlaraKort());
        QCOMPARE(int(tabell[0].giv), 2);
        QCOMPARE(tabell[0].angra, 1);
        QVERIFY(QByteArray(tabell[0].tid).startsWith("00:"));
        bord.TommaPosterFran(2, 3);

        // The same result again ranks above the older one. On the last deal, the same
        // cards rank below both, more cards above.
        QCOMPARE(bord.spel->AddHiscore(), 1);
        int klaraPaGiv2 = bord.spel->KlaraKort();
        KlickaPa(*bord.vy, Mitt(bord.spel->KnappPos()));
        QCOMPARE(bord.spel->Forsok(), 3);
        QVERIFY(bord.spel->KlaraKort() >= klaraPaGiv2);
        QCOMPARE(bord.spel->AddHiscore(), bord.spel->KlaraKort() > klaraPaGiv2 ? 1 : 3);
        tabell = LasHiscore(0);
        QCOMPARE(int(tabell[bord.spel->KlaraKort() > klaraPaGiv2 ? 0 : 2].giv), 3);
    }

    void hiscoreTarHogst999Angringar() {
        Bord bord;
        for (int i = 0; i < 1000; ++i) {
            int kalla = ForstaFlyttbara(bord.spel->Luckor());
            QVERIFY(kalla >= 0);
            bord.Klicka(kalla);
            QCOMPARE(bord.spel->Undo(), 0);
        }
        QCOMPARE(bord.spel->AntalUndo(), 1000);
        int plats = bord.spel->AddHiscore();
        QCOMPARE(bord.spel->AntalUndo(), 999);
        QVERIFY(plats >= 1 && plats <= kHiscorePlatser);
        QCOMPARE(LasHiscore(0)[plats - 1].angra, 999);
    }

    // ---- Animation changes nothing but the show -------------------------------------------

    void sammaBordMedOchUtanAnimering() {
        Bord utan(kFro + 7);
        Bord med(kFro + 7, false, 640, 480, true);
        QVERIFY(utan.spel && med.spel);
        auto nyttForsok = [](Bord& bord) {
            KlickaPa(*bord.vy, Mitt(bord.spel->KnappPos()));
            return bord.spel->Forsok();
        };
        // The first card a click moves, moved and taken back.
        auto dragOchAngra = [](Bord& bord) {
            int kalla = ForstaFlyttbara(bord.spel->Luckor());
            if (kalla < 0) {
                QTest::qFail("no card to move", __FILE__, __LINE__);
                return -1;
            }
            bord.Klicka(kalla);
            if (!bord.spel->Has_Undos())
                QTest::qFail("the click made no move", __FILE__, __LINE__);
            return bord.spel->Undo();
        };
        std::vector<std::vector<LuckaBild>> bilder;
        SammaMedOchUtanAnimering<Bord>(utan, med, {nyttForsok, dragOchAngra}, &bilder);
        QCOMPARE(static_cast<int>(bilder.size()), 3);
        QCOMPARE(bilder[2], bilder[1]);
    }
};

QTEST_MAIN(IdiotenTest)
#include "test_idioten.moc"
