#pragma once

#include "app/FjolkView.h"
#include "cards/Drag.h"
#include "cards/Hiscore.h"
#include "cards/Kort.h"
#include "cards/Kortlek.h"
#include "cards/Luckor.h"
#include "platform/AttributeStore.h"
#include "support/Brevlada.h"
#include "support/Gester.h"
#include "support/Tangenter.h"

#include <QColor>
#include <QCoreApplication>
#include <QString>
#include <QTest>

#include <cstring>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

// Game `spelNr`'s stored hiscore table. Reading it fails the test unless a whole table is
// stored; all empty entries then.
HiscoreLista LasHiscore(int spelNr);

// A clock that runs 25 ms a reading, so that every flight ends after a few steps; undone
// by SattKlocka({}).
void SnabbKlocka();

// The deck as a deal seeded with `fro` shuffles it, in the order its cards come off it.
// `fore` takes cards out of the fresh deck before the shuffle, `efter` out of the shuffled
// deck before the rest come off.
std::vector<Kort> BlandadLek(unsigned fro, const std::function<void(Kortlek&)>& fore = {},
                             const std::function<void(Kortlek&)>& efter = {});

// The random number a deal seeded with `fro` draws next once it has dealt: after the shuffle
// (999 pairs) and the stripes of the four card backs of one face rendering at card width `w`
// (three for each of the w / 5 stripes of each back).
int TalEfterGivet(unsigned fro, int w, bool blandat = true);

// A game of type Spel dealt with a seed in a real play view, shown so that it takes events,
// with a table a test may lay out card by card.
template <typename Spel> struct Testbord {
    // Counts the game-finished notices that reach the view's window; it outlives the view.
    std::unique_ptr<Brevlada> brevlada = std::make_unique<Brevlada>();
    std::unique_ptr<FjolkView> vy;
    Spel* spel = nullptr;

    // Game `spelNr` dealt from the random numbers `fro` in a view of `bredd` × `hojd`; with
    // `tomt` every slot is emptied after the deal.
    Testbord(int spelNr, unsigned fro, bool tomt = false, int bredd = 640, int hojd = 480,
             bool animera = false) {
        nummer = spelNr;
        storlek = {bredd, hojd};
        vy = VyMedSpel(spelNr, fro, bredd, hojd, animera);
        vy->window()->installEventFilter(brevlada.get());
        spel = dynamic_cast<Spel*>(vy->Spel());
        if (tomt)
            Tomt();
    }

    // ---- Laying out and reading slots ------------------------------------------------------

    std::vector<Lucka>& L() { return spel->LuckorForTest(); }
    // Every slot emptied, and the undo records with them.
    void Tomt() { TommaBordet(*spel); }
    void Lagg(int lucka, kortfarg farg, int valor) { LaggKort(*spel, lucka, farg, valor); }
    bool Har(int lucka, kortfarg farg, int valor) {
        return !L()[lucka].Tom() && L()[lucka].GeKort().KortFarg() == farg &&
               L()[lucka].GeKort().KortValor() == valor;
    }
    // The value of a slot's card, -1 when it is empty.
    int Valor(int lucka) { return L()[lucka].Tom() ? -1 : L()[lucka].GeKort().KortValor(); }
    BRect Pos(int lucka) { return L()[lucka].GePos(); }
    // How many of `forsta`..`sista` hold a card.
    int Antal(int forsta, int sista) { return AntalFyllda(L(), forsta, sista); }

    // ---- Where a player presses ------------------------------------------------------------

    BPoint Mitten(int lucka) { return Mitt(Pos(lucka)); }
    // In the top band of a slot's card, where a covered card still shows.
    BPoint Band(int lucka) {
        BRect r = Pos(lucka);
        return BPoint((r.left + r.right) / 2, r.top + 10);
    }
    // Near the bottom of a slot's card, where only a top card is hit.
    BPoint Botten(int lucka) {
        BRect r = Pos(lucka);
        return BPoint((r.left + r.right) / 2, r.bottom - 5);
    }
    void Klicka(int lucka) { KlickaPa(*vy, Mitten(lucka)); }
    // The middle of a slot's left edge, where its outline runs.
    BPoint VansterKant(int lucka) {
        BRect r = Pos(lucka);
        return BPoint(r.left, (r.top + r.bottom) / 2);
    }

    // What the view's off-screen frame shows at a point, as it was last drawn.
    QColor Pixel(BPoint p) {
        return vy->OffBitmap().pixelColor(static_cast<int>(p.x), static_cast<int>(p.y));
    }

    // ---- Undo ------------------------------------------------------------------------------

    // Undoes every undo record on the table; the number of records there were.
    int AngraAllt() {
        int poster = static_cast<int>(spel->UndoLista().size());
        while (spel->Has_Undos())
            spel->Undo();
        return poster;
    }

    // ---- Hiscore ---------------------------------------------------------------------------

    // The entry at place `plats` (1-based) of the game's stored table.
    HighScoreTable Post(int plats) { return LasHiscore(spel->SpelNummer())[plats - 1]; }
    // The stored table's entries from place `plats` on are empty ones, which show deal `giv`.
    void TommaPosterFran(int plats, int giv) {
        HiscoreLista tabell = LasHiscore(spel->SpelNummer());
        for (int i = plats - 1; i < kHiscorePlatser; ++i) {
            QVERIFY2(tabell[i].kort == -1, qPrintable(QString::number(i + 1)));
            QVERIFY2(tabell[i].giv == giv, qPrintable(QString::number(i + 1)));
        }
    }
    void GlomHiscore() {
        AttributeStore::Program().RemoveAttr(HiscoreAttributNamn(spel->SpelNummer()).c_str());
    }

    // ---- Playing moves through the view ----------------------------------------------------

    // Makes each move by the gesture the game names for it, each to land exactly as the
    // rules make it: nothing when every one did, else what the first that did not was.
    QString SpelaGenomVyn(const std::vector<Drag>& dragen) {
        const SpelRegler& regler = spel->Regler();
        for (const Drag& d : dragen) {
            std::optional<Gest> gest = spel->GestFor(d);
            if (!gest)
                return QStringLiteral("no gesture for ") + QString::fromStdString(Beskriv(d));
            auto vantat = spel->Tabell().Kopia();
            regler.GorDrag(*vantat, d, nullptr);
            regler.KlarSpel(*vantat);
            GorGest(*vy, *gest);
            QCoreApplication::sendPostedEvents();
            if (!spel->Tabell().Lika(*vantat))
                return QStringLiteral("the gesture did not make ") +
                       QString::fromStdString(Beskriv(d));
        }
        return {};
    }

    // The game is won and exactly one game-finished notice reached the window; its result
    // goes first into a fresh table, with `kort`, `giv`, no undos and the player's name.
    void VunnetMedEttBesked(int kort, int giv) {
        QVERIFY(spel->KlarSpel());
        QCoreApplication::sendPostedEvents();
        QCOMPARE(brevlada->klart, 1);
        GlomHiscore();
        std::strcpy(vy->spelarNamn, "Vinnare");
        StatisticsRow fore = Statistik("Vinnare");
        QCOMPARE(spel->AddHiscore(), 1);
        HighScoreTable forsta = Post(1);
        QCOMPARE(QByteArray(forsta.namn), QByteArray("Vinnare"));
        QCOMPARE(static_cast<int>(forsta.kort), kort);
        QCOMPARE(static_cast<int>(forsta.giv), giv);
        QCOMPARE(forsta.angra, 0);
        // The game says it was won; the statistics count it once, however often the deal's
        // result is recorded.
        StatisticsRow efter = Statistik("Vinnare");
        QCOMPARE(efter.played, fore.played + 1);
        QCOMPARE(efter.won, fore.won + 1);
        QCOMPARE(efter.currentStreak, fore.currentStreak + 1);
        QCOMPARE(efter.fewestUndos, int64_t(0));
        spel->AddHiscore();
        QCOMPARE(Statistik("Vinnare"), efter);
    }
    // The player's record in this game, all zero when there is none.
    StatisticsRow Statistik(const char* namn) {
        StatisticsRow rad{spel->SpelNummer(), namn};
        status_t status = AttributeStore::Program().ReadStatistics(spel->SpelNummer(), namn, &rad);
        if (status != B_OK && status != B_ENTRY_NOT_FOUND)
            qFatal("the statistics cannot be read");
        return rad;
    }

    // Wins the game along `dragen` by the gestures the game names for them, as
    // SpelaGenomVyn and VunnetMedEttBesked check.
    // The same moves are then made with keys only, from the same table in a second view: the
    // same won table, and the same hiscore entry.
    void VinnGenomVyn(const std::vector<Drag>& dragen, int kort, int giv) {
        auto tangenter = VyMedSpel(nummer, 1, storlek.first, storlek.second);
        tangenter->Spel()->Tabell().TaFran(spel->Tabell());
        tangenter->InvalidateOffscreen();
        QCOMPARE(SpelaGenomVyn(dragen), QString());
        QCOMPARE(SpelaMedTangenter(*tangenter, dragen), QString());
        QVERIFY(tangenter->Spel()->Tabell().Lika(spel->Tabell()));
        VunnetMedEttBesked(kort, giv);
        // A new result's time of play counts in its rank but a stored one's does not, so the
        // keys' result is entered into a table of its own and compared with the mouse's.
        HighScoreTable medMus = Post(1);
        GlomHiscore();
        std::strcpy(tangenter->spelarNamn, "Vinnare");
        QCOMPARE(tangenter->Spel()->AddHiscore(), 1);
        HighScoreTable medTangenter = Post(1);
        QCOMPARE(QByteArray(medTangenter.namn), QByteArray(medMus.namn));
        QCOMPARE(medTangenter.kort, medMus.kort);
        QCOMPARE(medTangenter.giv, medMus.giv);
        QCOMPARE(medTangenter.angra, medMus.angra);
    }

    int nummer = 0;
    std::pair<int, int> storlek;
};
