#include "games/Spelfabrik.h"
#include "solver/Losare.h"
#include "support/Urval.h"

#include <QTest>

#include <array>
#include <cstdlib>
#include <deque>
#include <random>
#include <string>

// Random play on every game's rules alone, without a window: a million moves a game from
// the lists the rules give, with new deals when nothing can move. After every move no card
// is lost or doubled, and a move undone gives back exactly the table it was made on.
//
// FJOLK_REGEL_DRAG sets the number of moves a game (a million unless set).

namespace {

int AntalDrag() {
    const char* text = std::getenv("FJOLK_REGEL_DRAG");
    return text != nullptr && *text != '\0' ? std::max(1, std::atoi(text)) : 1000000;
}

// The cards on the table and in the deck, counted by card: each exactly once.
bool VarjeKortEnGang(const SpelBord& bord, int antal) {
    std::array<int, 52> sett{};
    int summa = 0;
    auto rakna = [&](const Kort& k) {
        int i = 13 * k.KortFarg() + k.KortValor() - 1;
        if (i < 0 || i >= 52 || sett[i]++ > 0)
            return false;
        ++summa;
        return true;
    };
    for (const Lucka& l : bord.luckor)
        if (!l.Tom() && !rakna(l.GeKort()))
            return false;
    for (const Kort& k : bord.kortlek.Korten())
        if (!rakna(k))
            return false;
    return summa == antal;
}

// The last moves made, for a failure to name.
struct Logg {
    // A move, or an undo (-1) or a new deal (-2) as its `antal`.
    std::deque<Drag> rader;
    void Spara(const Drag& d) {
        rader.push_back(d);
        if (rader.size() > 40)
            rader.pop_front();
    }
    void Angra() { Spara(Drag{DragSlag::Knapp, -1, -1, -1, -1}); }
    void Giv() { Spara(Drag{DragSlag::Knapp, -1, -2, -1, -1}); }
    QByteArray Text() const {
        std::string text;
        for (const Drag& d : rader)
            text += " " + (d.antal == -1 ? "undo" : d.antal == -2 ? "new deal" : Beskriv(d));
        return QByteArray::fromStdString(text);
    }
};

// Equal tables but for the count of undos taken, which an undo raises.
bool LikaUtomAngra(const SpelBord& a, const SpelBord& b) {
    auto kopia = b.Kopia();
    kopia->antalUndo = a.antalUndo;
    return a.Lika(*kopia);
}

} // namespace

class ReglerTest : public QObject {
    Q_OBJECT

private slots:
    void slumpspelUtanFonster_data() {
        QTest::addColumn<int>("spelNr");
        for (int nr = 0; nr < kAntalSpel; ++nr)
            if (ReglerFor(nr) != nullptr && SpeletValt(nr))
                QTest::addRow("%s", SpelNamn(nr)) << nr;
    }

    void slumpspelUtanFonster() {
        QFETCH(int, spelNr);
        const SpelRegler& regler = *ReglerFor(spelNr);
        const int antalDrag = AntalDrag();
        std::mt19937 slump(1000u + unsigned(spelNr));
        std::srand(7u + unsigned(spelNr));
        Logg logg;

        auto bord = regler.NyttBord();
        auto giv = [&] {
            regler.LaggUtLeken(*bord);
            regler.DelaUt(*bord, nullptr);
            regler.KlarSpel(*bord);
        };
        giv();
        int antalKort = 0;
        for (const Lucka& l : bord->luckor)
            antalKort += l.Tom() ? 0 : 1;
        antalKort += bord->kortlek.AntalKortKvar();
        auto bas = bord->Kopia();
        int givar = 1;
        int vunna = 0;

        for (int i = 0; i < antalDrag; ++i) {
            std::vector<Drag> dragen = regler.LagligaDrag(*bord);
            int val = std::uniform_int_distribution<int>(0, 999)(slump);
            if (dragen.empty() || val < 2) {
                giv();
                bas = bord->Kopia();
                ++givar;
                logg.Giv();
                continue;
            }
            if (val < 120 && !bord->undoLista.empty()) {
                regler.Angra(*bord, nullptr);
                logg.Angra();
            } else {
                const Drag& d =
                    dragen[std::uniform_int_distribution<size_t>(0, dragen.size() - 1)(slump)];
                logg.Spara(d);
                if (val < 300) {
                    // Made, taken back, made again.
                    auto fore = bord->Kopia();
                    regler.GorDrag(*bord, d, nullptr);
                    regler.KlarSpel(*bord);
                    if (!bord->undoLista.empty()) {
                        regler.Angra(*bord, nullptr);
                        if (!LikaUtomAngra(*fore, *bord))
                            QFAIL("undo did not give back the table, after" + logg.Text());
                    }
                    // A move no undo reaches back across (a new attempt, a redeal) is put
                    // back by hand, so that it is made once, not twice.
                    bord->TaFran(*fore);
                }
                regler.GorDrag(*bord, d, nullptr);
                if (bord->undoLista.empty())
                    bas = bord->Kopia();
            }
            if (regler.KlarSpel(*bord))
                ++vunna;
            if (!VarjeKortEnGang(*bord, antalKort))
                QFAIL("a card lost or doubled, after" + logg.Text());
            if (i % 997 == 0) {
                while (!bord->undoLista.empty())
                    regler.Angra(*bord, nullptr);
                if (!LikaUtomAngra(*bas, *bord))
                    QFAIL("undoing everything did not give back the deal, after" + logg.Text());
            }
        }
        qInfo("%d moves over %d deals, %d won positions", antalDrag, givar, vunna);
    }

    // The search the game tests win deals with: from a Freecell table with the four kings
    // still in the columns it finds the four moves home, and they win.
    void sokningenHittarVinstenOchDenHaller() {
        const SpelRegler& regler = *ReglerFor(8);
        auto bord = regler.NyttBord();
        for (int f = 0; f < 4; ++f)
            for (int v = 1; v <= 12; ++v)
                bord->luckor[184 + 13 * f + v - 1].TaEmotKort(
                    Kort(static_cast<kortfarg>(f), v, BRect()));
        for (int f = 0; f < 4; ++f)
            bord->luckor[22 * (2 * f)].TaEmotKort(Kort(static_cast<kortfarg>(f), 13, BRect()));
        QVERIFY(!regler.KlarSpel(*bord));
        SokSvar vag = Los(regler, *bord, SokGranser{1000});
        QCOMPARE(vag.utfall, Utfall::Vinnbar);
        QCOMPARE(int(vag.drag.size()), 4);
        for (const Drag& d : vag.drag)
            regler.GorDrag(*bord, d, nullptr);
        QVERIFY(regler.KlarSpel(*bord));
        // With nothing to move there is nothing to find.
        auto tomt = regler.NyttBord();
        QCOMPARE(Los(regler, *tomt, SokGranser{1000}).utfall, Utfall::Ovinnbar);
    }
};

QTEST_GUILESS_MAIN(ReglerTest)
#include "test_regler.moc"
