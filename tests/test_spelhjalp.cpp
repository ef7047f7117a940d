#include "app/FjolkApp.h"
#include "app/FjolkView.h"
#include "app/FjolkWin.h"
#include "app/LosKommando.h"
#include "app/Spelhjalp.h"
#include "cards/Hiscore.h"
#include "games/Spelfabrik.h"
#include "platform/Meddelande.h"
#include "platform/QtGeometry.h"
#include "support/Gester.h"
#include "support/Hjalpkorning.h"
#include "support/Smabord.h"
#include "welcome/WelcomeView.h"

#include <QAction>
#include <QCheckBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <cstdlib>
#include <memory>
#include <thread>

namespace {

constexpr int kVanta = kVantaPaLosaren;

bool Listat(const SpelRegler& regler, const SpelBord& bord, const Drag& drag) {
    for (const Drag& d : regler.LagligaDrag(bord))
        if (d == drag)
            return true;
    return false;
}

std::unique_ptr<SpelBord> Efter(const SpelRegler& regler, const SpelBord& bord, const Drag& d) {
    auto efter = bord.Kopia();
    regler.GorDrag(*efter, d, nullptr);
    regler.KlarSpel(*efter);
    return efter;
}

// The cards of a table, slot by slot (the window lays the slots out where the view has room).
std::string Korten(const SpelBord& bord) {
    std::string kort;
    for (const Lucka& l : bord.luckor)
        kort += KortKod(l);
    return kort;
}

// A winnable deal of game `spel`.
unsigned VinnbarFroFor(int spel) {
    VinnbarGiv giv = HittaVinnbarGiv(spel, 1);
    return giv.fro;
}

// Whether the window could make `d` now: the gesture the game names for it lies in the view.
bool IFonstret(Korning& k, const Drag& d) {
    std::optional<Gest> gest = k.Spel().GestFor(d);
    const QRect vy = k.Vy().rect();
    return gest && vy.contains(ToQPoint(gest->fran)) &&
           (gest->klick || vy.contains(ToQPoint(gest->till)));
}

// The results of game `spel` stored in its hiscore table (a Korning plays as "Spelare").
int SparadeResultat(int spel) {
    HiscoreLista tabell{};
    std::string namn = "FJOLK:Spel" + std::to_string(spel);
    AttributeStore::Program().ReadAttr(namn.c_str(), B_RAW_TYPE, 0, tabell.data(), sizeof tabell);
    return static_cast<int>(std::count_if(tabell.begin(), tabell.end(), [](const auto& post) {
        return std::string(post.namn) == "Spelare";
    }));
}

int SynligaHiInfo(Korning& k) {
    int antal = 0;
    for (QMessageBox* box : k.win->findChildren<QMessageBox*>(QStringLiteral("Hi Info")))
        antal += box->isVisible() ? 1 : 0;
    return antal;
}

QAction* ItemFor(Korning& k, type_code what) {
    switch (what) {
    case kOmGiv:
        return k.win->OmGivItem();
    case kAngra:
        return k.win->AngraItem();
    case kGorOm:
        return k.win->GorOmItem();
    case kFragaGivNummer:
        return k.win->GivNummerItem();
    default:
        return k.win->NyGivItem();
    }
}

} // namespace

class TestSpelhjalp : public QObject {
    Q_OBJECT

private slots:
    void menyernasNyaItemsKraverEttSpel() {
        Korning k;
        k.win->MenusBeginning();
        Spelhjalp& h = k.Hjalp();
        QVERIFY(!h.tipsItem->isEnabled());
        QVERIFY(!h.slutforItem->isEnabled());
        QVERIFY(!h.fragaItem->isEnabled());
        QCOMPARE(h.tipsItem->shortcut(), QKeySequence(Qt::Key_H));
        k.Starta(3, 1);
        QVERIFY(h.tipsItem->isEnabled());
        QVERIFY(h.slutforItem->isEnabled());
        QVERIFY(h.fragaItem->isEnabled());
    }

    // The options' check boxes follow the Options tab's buttons in Tab's order, and a screen
    // reader is told what each does.
    void alternativenNasMedTabOchBeskrivs() {
        Korning k;
        k.win->show();
        k.win->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(k.win.get()));
        WelcomeView& valkomst = *k.win->ValkomstVy();
        valkomst.flikar->setCurrentWidget(valkomst.optionFlik);
        Behandla();
        valkomst.aterstallKnapp->setFocus();
        Spelhjalp& h = k.Hjalp();
        for (QCheckBox* ruta : {h.vinnbaraRuta, h.sjalvRuta, h.forlorasRuta}) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QCOMPARE(QApplication::focusWidget(), ruta);
            QVERIFY2(!ruta->accessibleDescription().isEmpty(), qPrintable(ruta->text()));
        }
    }

    void hSkriverHINamnfaltet() {
        Korning k;
        QLineEdit* falt = k.win->ValkomstVy()->spelarFalt;
        falt->clear();
        k.win->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(k.win.get()));
        falt->setFocus();
        QTest::keyClicks(falt, QStringLiteral("Hugo"));
        QCOMPARE(falt->text(), QStringLiteral("Hugo"));
    }

    void alternativenArAvTillsDeSlasPaOchAterstallsAv() {
        {
            Korning k;
            Spelhjalp& h = k.Hjalp();
            QVERIFY(!h.vinnbaraRuta->isChecked());
            QVERIFY(!h.sjalvRuta->isChecked());
            QVERIFY(!h.forlorasRuta->isChecked());
            h.vinnbaraRuta->setChecked(true);
            h.forlorasRuta->setChecked(true);
            char pa = 0;
            QCOMPARE(
                AttributeStore::Program().ReadAttr("FJOLK:BaraVinnbara", B_BOOL_TYPE, 0, &pa, 1),
                ssize_t(1));
            QCOMPARE(pa, char(1));
            std::unique_ptr<FjolkWin> igen =
                std::make_unique<FjolkWin>(BRect(0, 0, 800, 600), AttributeStore::Program());
            QVERIFY(igen->Hjalp()->vinnbaraRuta->isChecked());
            QVERIFY(!igen->Hjalp()->sjalvRuta->isChecked());
            QVERIFY(igen->Hjalp()->forlorasRuta->isChecked());
            k.Posta(kAterstall);
            QVERIFY(!h.vinnbaraRuta->isChecked());
            QVERIFY(!h.forlorasRuta->isChecked());
            QVERIFY(AttributeStore::Program().ReadAttr("FJOLK:BaraVinnbara", B_BOOL_TYPE, 0, &pa,
                                                       1) != 1);
        }
    }

    // In every game, on a small table laid out by hand: the hint is a move the rules list,
    // nothing moves, and the table after it can still be won.
    void tipsetArEttListatDragSomHallerBordetVinnbart() {
        for (int spel = 0; spel < kAntalSpel; ++spel) {
            Korning k;
            k.Starta(spel, 1);
            LaggUt(k, SmaBord(spel));
            const SpelRegler& regler = k.Spel().Regler();
            auto fore = k.Spel().Tabell().Kopia();
            QCOMPARE(Los(regler, *fore, Spelhjalp::SpelarGranser()).utfall, Utfall::Vinnbar);
            k.Hjalp().Tips();
            k.VantaPaSvar();
            QVERIFY2(k.Hjalp().SenasteTips().has_value(), SpelNamn(spel));
            const Drag& tips = *k.Hjalp().SenasteTips();
            QVERIFY2(Listat(regler, *fore, tips), SpelNamn(spel));
            QVERIFY(k.Spel().Tabell().Lika(*fore));
            QVERIFY2(k.Hjalp().notis->Text().startsWith(QStringLiteral("Hint: ")),
                     qPrintable(k.Hjalp().notis->Text()));
            QVERIFY(!k.Hjalp().notis->Ramar().empty());
            QCOMPARE(Los(regler, *Efter(regler, *fore, tips), Spelhjalp::SpelarGranser()).utfall,
                     Utfall::Vinnbar);
        }
    }

    void tipsPaEttForloratBordSagerDet() {
        Korning k;
        // Black hole's small table after the move that loses it.
        Uppstallning b = SmaBord(10);
        k.Starta(10, 1);
        LaggUt(k, b);
        k.Gor(b.forlorar);
        k.Hjalp().Tips();
        k.VantaPaSvar();
        QCOMPARE(k.Hjalp().notis->Text(),
                 QStringLiteral("This deal can no longer be won from here. Undo may help."));
        QVERIFY(!k.Hjalp().SenasteTips().has_value());
        k.Hjalp().KanVinnas();
        QCOMPARE(k.Hjalp().notis->Text(), QStringLiteral("No"));
    }

    void kanVinnasSvararMedDragen() {
        Korning k;
        k.Starta(3, VinnbarFroFor(3));
        SokSvar svar = Los(k.Spel().Regler(), k.Spel().Tabell(), Spelhjalp::SpelarGranser());
        QCOMPARE(svar.utfall, Utfall::Vinnbar);
        k.Hjalp().KanVinnas();
        k.VantaPaSvar();
        QCOMPARE(k.Hjalp().notis->Text(), QStringLiteral("Yes, in %1 moves").arg(svar.drag.size()));
    }

    void vinnbaraGivarKanVinnasOchFoljerFrot() {
        for (int spel : {3, 8, 10}) {
            VinnbarGiv a = HittaVinnbarGiv(spel, 77);
            VinnbarGiv b = HittaVinnbarGiv(spel, 77);
            QVERIFY(a.hittad);
            QCOMPARE(a.fro, b.fro);
            QCOMPARE(a.forsok, b.forsok);
            QCOMPARE(a.fro, VinnbarFro(77, a.forsok - 1));
            QCOMPARE(Los(*ReglerFor(spel), *GivFor(spel, a.fro), VinnbarGranser()).utfall,
                     Utfall::Vinnbar);
            // Every deal tried before it could not be proven winnable.
            for (int i = 0; i + 1 < a.forsok; ++i)
                QVERIFY(Los(*ReglerFor(spel), *GivFor(spel, VinnbarFro(77, i)), VinnbarGranser())
                            .utfall != Utfall::Vinnbar);
        }
    }

    // Black hole twice over, and Idioten 2, whose first deal is otherwise never shuffled.
    void fonstretGerDenVinnbaraGivenOchSagerHurMangaSomProvades() {
        for (int spel : {10, 10, 1}) {
            Korning k;
            k.Hjalp().vinnbaraRuta->setChecked(true);
            k.win->show();
            QVERIFY(QTest::qWaitForWindowExposed(k.win.get()));
            std::srand(4242);
            unsigned bas = static_cast<unsigned>(std::rand());
            VinnbarGiv giv = HittaVinnbarGiv(spel, bas);
            QVERIFY(giv.hittad);
            std::srand(4242);
            k.Posta(kStartaSpel0 + static_cast<type_code>(spel));
            QTRY_VERIFY_WITH_TIMEOUT(k.Vy().Spel() != nullptr, kVanta);
            QCOMPARE(Korten(k.Spel().Tabell()), Korten(*GivFor(spel, giv.fro)));
            QCOMPARE(k.Hjalp().notis->Text(), QString::fromStdString(VinnbarText(spel, giv)));
        }
    }

    void vinnbarTextenSagerHurDetGick() {
        VinnbarGiv hittad{7, 3, true};
        QCOMPARE(QString::fromStdString(VinnbarText(2, hittad)),
                 QStringLiteral("Deal 3 of 3 tried can be won"));
        VinnbarGiv ingen{7, 100, false};
        QCOMPARE(QString::fromStdString(VinnbarText(2, ingen)),
                 QStringLiteral("None of the 100 deals of Godnattvalsen tried could be shown to be "
                                "winnable in time: this one is dealt, and it may not be"));
    }

    // The search for a winnable deal runs beside the window: held on the solver's thread, the
    // window still takes commands, and closing the game ends the search without a deal.
    void givSokningenSlutarNarSpeletStangs() {
        Korning k;
        k.Hjalp().vinnbaraRuta->setChecked(true);
        k.win->show();
        QVERIFY(QTest::qWaitForWindowExposed(k.win.get()));
        HallnaSokningar h(k);
        k.Posta(kStartaSpel0 + 2);
        QTRY_VERIFY_WITH_TIMEOUT(h.inne.load() > 0, kVanta);
        QVERIFY(k.Hjalp().Soker());
        QCOMPARE(k.Hjalp().notis->Text(),
                 QStringLiteral("Looking for a deal that can be won (deal 1)..."));
        QVERIFY(!k.Hjalp().tipsItem->isEnabled());
        k.Posta(kStang);
        QVERIFY(!k.Hjalp().Soker());
        QVERIFY(k.Vy().Spel() == nullptr);
        QCOMPARE(k.Hjalp().notis->Text(), QString());
        h.slapp = true;
        QTest::qWait(100);
        Behandla();
        QVERIFY(k.Vy().Spel() == nullptr);
        QCOMPARE(k.Hjalp().notis->Text(), QString());
    }

    // A new deal asked for while the search runs starts the search over, from deal 1.
    void nyGivUnderSokningenBorjarOm() {
        Korning k;
        k.win->show();
        QVERIFY(QTest::qWaitForWindowExposed(k.win.get()));
        k.Starta(3, 1);
        k.Hjalp().vinnbaraRuta->setChecked(true);
        HallnaSokningar h(k);
        k.Posta(kNyGiv);
        QTRY_VERIFY_WITH_TIMEOUT(h.inne.load() > 0, kVanta);
        QVERIFY(k.Hjalp().Soker());
        k.Posta(kNyGiv);
        QVERIFY(k.Hjalp().Soker());
        QCOMPARE(k.Hjalp().notis->Text(),
                 QStringLiteral("Looking for a deal that can be won (deal 1)..."));
        h.slapp = true;
        k.VantaPaSvar();
        QVERIFY2(k.Hjalp().notis->Text().startsWith(QStringLiteral("Deal ")),
                 qPrintable(k.Hjalp().notis->Text()));
        QVERIFY(k.Vy().isEnabled());
    }

    // While the next deal is looked for, the game left stays on the table with its result
    // already recorded: New Deal again, Close and Exit record nothing more, and what would
    // deal or change that table waits for no search.
    void givSokningenSpararDetLamnadeSpeletEnGang() {
        Korning k;
        k.win->show();
        QVERIFY(QTest::qWaitForWindowExposed(k.win.get()));
        k.Starta(3, 1);
        std::vector<Drag> dragen = k.Spel().Regler().LagligaDrag(k.Spel().Tabell());
        QVERIFY(!dragen.empty());
        k.Gor(dragen.front());
        QVERIFY(k.Spel().Has_Undos());
        k.Hjalp().vinnbaraRuta->setChecked(true);
        HallnaSokningar h(k);
        k.Posta(kNyGiv);
        QTRY_VERIFY_WITH_TIMEOUT(h.inne.load() > 0, kVanta);
        QCOMPARE(SparadeResultat(3), 1);
        QCOMPARE(SynligaHiInfo(k), 1);
        auto lamnat = k.Spel().Tabell().Kopia();
        k.win->MenusBeginning();
        for (type_code what : {kOmGiv, kAngra, kGorOm, kFragaGivNummer})
            QVERIFY2(!ItemFor(k, what)->isEnabled(), qPrintable(ItemFor(k, what)->text()));
        QVERIFY(ItemFor(k, kNyGiv)->isEnabled());
        for (type_code what : {kOmGiv, kAngra, kNyGiv})
            k.Posta(what);
        QCoreApplication::postEvent(k.win.get(), new Meddelande(kGivNummer, QStringLiteral("5")));
        Behandla();
        QVERIFY(k.Spel().Tabell().Lika(*lamnat));
        QVERIFY(k.Hjalp().Soker());
        QCOMPARE(SparadeResultat(3), 1);
        QCOMPARE(SynligaHiInfo(k), 1);
        k.Posta(kStang);
        QVERIFY(k.Vy().Spel() == nullptr);
        QCOMPARE(SparadeResultat(3), 1);
        StatisticsRow rad;
        QCOMPARE(AttributeStore::Program().ReadStatistics(3, "Spelare", &rad), B_OK);
        QCOMPARE(rad.played, 1);
        h.slapp = true;
    }

    // Once the deal found is dealt, the game's items and their keys work at once, without the
    // menu being opened first.
    void givenSomHittasGerMenynsItemsOchTangenter() {
        Korning k;
        k.win->show();
        QVERIFY(QTest::qWaitForWindowExposed(k.win.get()));
        k.Hjalp().vinnbaraRuta->setChecked(true);
        k.Posta(kStartaSpel0 + 8);
        k.VantaPaSvar();
        QTRY_VERIFY_WITH_TIMEOUT(!k.Hjalp().SokerGiv(), kVanta);
        QVERIFY(k.win->SpelVy()->Spel() != nullptr);
        for (type_code what : {kNyGiv, kOmGiv, kFragaGivNummer})
            QVERIFY2(ItemFor(k, what)->isEnabled(), qPrintable(ItemFor(k, what)->text()));
        k.win->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(k.win.get()));
        QTest::keyClick(k.win.get(), Qt::Key_D, Qt::ControlModifier);
        Behandla();
        QTRY_COMPARE_WITH_TIMEOUT(SparadeResultat(8), 1, kVanta);
        k.VantaPaSvar();
        QTRY_VERIFY_WITH_TIMEOUT(!k.Hjalp().SokerGiv(), kVanta);
        QVERIFY(ItemFor(k, kOmGiv)->isEnabled());
    }

    // Exit while the next deal is looked for records the game left no second time.
    void avslutaUnderGivSokningenSpararInteIgen() {
        Korning k;
        k.win->show();
        QVERIFY(QTest::qWaitForWindowExposed(k.win.get()));
        k.Starta(8, 1);
        k.Hjalp().vinnbaraRuta->setChecked(true);
        HallnaSokningar h(k);
        k.Posta(kNyGiv);
        QTRY_VERIFY_WITH_TIMEOUT(h.inne.load() > 0, kVanta);
        QCOMPARE(SparadeResultat(8), 1);
        k.Posta(kAvsluta);
        QCOMPARE(SparadeResultat(8), 1);
        h.slapp = true;
    }

    // Finish plays the solution through the play view as the player's own moves: the same
    // hiscore entry as the same moves made by hand.
    void slutforVinnerMedSammaPostSomForHand() {
        const int spel = 3;
        unsigned fro = VinnbarFroFor(spel);
        SokSvar svar = Los(*ReglerFor(spel), *GivFor(spel, fro), Spelhjalp::SpelarGranser());
        QCOMPARE(svar.utfall, Utfall::Vinnbar);

        HighScoreTable forHand{};
        {
            Korning k;
            k.Starta(spel, fro);
            for (const Drag& d : svar.drag)
                k.Gor(d);
            Behandla();
            forHand = k.Forsta(spel);
            for (QMessageBox* box : k.win->findChildren<QMessageBox*>())
                box->close();
        }
        Korning k;
        k.Starta(spel, fro);
        k.Hjalp().Slutfor();
        QTRY_VERIFY_WITH_TIMEOUT(!k.Hjalp().Soker() && !k.Hjalp().Slutfors(), kVanta);
        Behandla();
        HighScoreTable slutford = k.Forsta(spel);
        QCOMPARE(QByteArray(slutford.namn), QByteArray("Spelare"));
        QCOMPARE(QByteArray(slutford.namn), QByteArray(forHand.namn));
        QCOMPARE(slutford.kort, forHand.kort);
        QCOMPARE(slutford.giv, forHand.giv);
        QCOMPARE(slutford.angra, forHand.angra);
        QVERIFY(k.win->HiInfo() != nullptr);
    }

    // A card the window is too small to show cannot be pressed: Finish looks for a way the
    // window shows, and when there is none it stops and says so rather than pressing beside it.
    void slutforSagerTillNarKortetArUtanforFonstret() {
        Korning k;
        k.win->show();
        QVERIFY(QTest::qWaitForWindowExposed(k.win.get()));
        k.Starta(8, 1);
        k.win->resize(320, 130);
        Behandla();
        LaggUt(k, SmaBord(8));
        auto fore = k.Spel().Tabell().Kopia();
        k.Hjalp().KanVinnas();
        k.VantaPaSvar();
        // The known way's first card lies outside: a way the window shows is searched for.
        HallnaSokningar h(k);
        k.Hjalp().Slutfor();
        QTRY_VERIFY_WITH_TIMEOUT(h.inne.load() > 0, kVanta);
        QVERIFY(k.Hjalp().Soker());
        QVERIFY(!k.Hjalp().Slutfors());
        QCOMPARE(k.Hjalp().notis->Text(),
                 QStringLiteral("Searching for a way to finish that the window can show..."));
        QCOMPARE(k.Hjalp().slutforItem->text(), QStringLiteral("Finish (under way...)"));
        h.slapp = true;
        QTRY_VERIFY_WITH_TIMEOUT(!k.Hjalp().Soker() && !k.Hjalp().Slutfors(), kVanta);
        QVERIFY2(k.Hjalp().notis->Text().startsWith(QStringLiteral("Finish stopped: the move ")),
                 qPrintable(k.Hjalp().notis->Text()));
        QVERIFY(k.Hjalp().notis->Text().endsWith(
            QStringLiteral(" cannot be made in the window as it is. A larger window may show "
                           "its card.")));
        QVERIFY(k.Spel().Tabell().Lika(*fore));
        // No way the window shows was found; that tells nothing of the deal, which stays
        // known to be winnable.
        const QString stopp = k.Hjalp().notis->Text();
        k.Hjalp().KanVinnas();
        QVERIFY2(k.Hjalp().notis->Text().startsWith(QStringLiteral("Yes, in ")),
                 qPrintable(k.Hjalp().notis->Text()));
        // Asked again on the same table in the same window, it stops at once, with no search.
        k.Hjalp().Slutfor();
        QVERIFY(!k.Hjalp().Soker());
        Behandla();
        QVERIFY(!k.Hjalp().Soker());
        QVERIFY(!k.Hjalp().Slutfors());
        QCOMPARE(k.Hjalp().notis->Text(), stopp);
    }

    // At the window's opening size a long Freecell column runs below the view's edge: the
    // plain solution of this deal comes to a card the window cannot show, and Finish goes on
    // from there by a way that uses only moves the window shows, to the win.
    void slutforGarVidareMedDragSomFonstretVisar() {
        const int spel = 8;
        const unsigned fro = 3;
        {
            Korning k(BRect(0, 0, 640, 400));
            k.win->show();
            QVERIFY(QTest::qWaitForWindowExposed(k.win.get()));
            k.Starta(spel, fro);
            SokSvar svar = Los(k.Spel().Regler(), k.Spel().Tabell(), Spelhjalp::SpelarGranser());
            QCOMPARE(svar.utfall, Utfall::Vinnbar);
            std::size_t gjorda = 0;
            while (gjorda < svar.drag.size() && IFonstret(k, svar.drag[gjorda]))
                k.Gor(svar.drag[gjorda++]);
            QVERIFY2(gjorda < svar.drag.size(), "the plain solution fits this window");
        }
        Korning k(BRect(0, 0, 640, 400));
        k.win->show();
        QVERIFY(QTest::qWaitForWindowExposed(k.win.get()));
        k.Starta(spel, fro);
        k.Hjalp().Slutfor();
        QTRY_VERIFY_WITH_TIMEOUT(!k.Hjalp().Soker() && !k.Hjalp().Slutfors(), kVanta);
        Behandla();
        // Won: the hiscore has the whole deck home (and the window has dealt anew).
        QVERIFY2(k.win->HiInfo() != nullptr, qPrintable(k.Hjalp().notis->Text()));
        QCOMPARE(static_cast<int>(k.Forsta(spel).kort), 52);
        QVERIFY(!k.Hjalp().notis->Text().startsWith(QStringLiteral("Finish stopped")));
    }

    // A search held to the moves the window shows says "not known" where the whole search
    // says "cannot be won": a way may need a move it left out. Its moves are all such moves.
    void sokningMedBaraVissaDragSagerAldrigOvinnbar() {
        const SpelRegler& svart = *ReglerFor(10);
        Uppstallning b = SmaBord(10);
        Korning k;
        k.Starta(10, 1);
        LaggUt(k, b);
        k.Gor(b.forlorar);
        auto forlorat = k.Spel().Tabell().Kopia();
        QCOMPARE(Los(svart, *forlorat, Spelhjalp::SpelarGranser()).utfall, Utfall::Ovinnbar);
        SokGranser alla = Spelhjalp::SpelarGranser();
        alla.bara = [](const SpelBord&, const Drag&) { return true; };
        QCOMPARE(Los(svart, *forlorat, alla).utfall, Utfall::Okant);

        SokGranser inga = Spelhjalp::SpelarGranser();
        inga.bara = [](const SpelBord&, const Drag&) { return false; };
        auto fri = GivFor(8, 3);
        const SpelRegler& regler = *ReglerFor(8);
        QCOMPARE(Los(regler, *fri, Spelhjalp::SpelarGranser()).utfall, Utfall::Vinnbar);
        SokSvar ingen = Los(regler, *fri, inga);
        QCOMPARE(ingen.utfall, Utfall::Okant);
        QVERIFY(ingen.drag.empty());

        // The plain solution's first move refused on the deal's table: the answer begins
        // otherwise, and its moves win.
        const Drag forsta = Los(regler, *fri, Spelhjalp::SpelarGranser()).drag.front();
        SokGranser utan = Spelhjalp::SpelarGranser();
        int fragade = 0;
        utan.bara = [&](const SpelBord& bord, const Drag& d) {
            ++fragade;
            return !(bord.Lika(*fri) && d == forsta);
        };
        SokSvar svar = Los(regler, *fri, utan);
        QCOMPARE(svar.utfall, Utfall::Vinnbar);
        QVERIFY(fragade > 0);
        QVERIFY(!svar.drag.empty());
        QVERIFY(!(svar.drag.front() == forsta));
        auto bord = fri->Kopia();
        for (const Drag& d : svar.drag) {
            QVERIFY(Listat(regler, *bord, d));
            regler.GorDrag(*bord, d, nullptr);
        }
        QVERIFY(regler.KlarSpel(*bord));
    }

    // With "Finish by Itself" on, once every card left can go home the game plays them there:
    // the player makes only the first moves of a solution.
    void slutforSjalvSpelarHemKortenNarInteAnnatBehovs() {
        const int spel = 8;
        unsigned fro = VinnbarFroFor(spel);
        const SpelRegler& regler = *ReglerFor(spel);
        auto vunnet = GivFor(spel, fro);
        SokSvar svar = Los(regler, *vunnet, Spelhjalp::SpelarGranser());
        QCOMPARE(svar.utfall, Utfall::Vinnbar);
        for (const Drag& d : svar.drag)
            regler.GorDrag(*vunnet, d, nullptr);
        QVERIFY(regler.KlarSpel(*vunnet));

        Korning k;
        k.Hjalp().sjalvRuta->setChecked(true);
        k.Starta(spel, fro);
        std::size_t gjorda = 0;
        while (!k.Hjalp().Slutfors() && gjorda < svar.drag.size())
            k.Gor(svar.drag[gjorda++]);
        QVERIFY(k.Hjalp().Slutfors());
        QVERIFY2(gjorda < svar.drag.size(), qPrintable(QString::number(gjorda)));
        QTRY_VERIFY_WITH_TIMEOUT(!k.Hjalp().Slutfors(), kVanta);
        Behandla();
        QVERIFY(k.win->HiInfo() != nullptr);
        QCOMPARE(static_cast<int>(k.Forsta(spel).kort), regler.Resultat(*vunnet).kort);
    }

    // A press stops a finish before its next move. The press comes while the finish is known
    // to be under way and before any of its moves ran: a finish of a game dealt without
    // flights makes all its moves within a few milliseconds, so waiting to see one under way
    // could see it already over.
    void enTryckningStopparSlutfor() {
        Korning k;
        k.Starta(3, VinnbarFroFor(3));
        k.Hjalp().KanVinnas();
        k.VantaPaSvar();
        QCOMPARE(k.Hjalp().Utfallet(), std::optional<Utfall>(Utfall::Vinnbar));
        auto fore = k.Spel().Tabell().Kopia();
        k.Hjalp().Slutfor();
        QVERIFY(k.Hjalp().Slutfors());
        QTest::mousePress(&k.Vy(), Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
        QTest::mouseRelease(&k.Vy(), Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
        QVERIFY(!k.Hjalp().Slutfors());
        QCOMPARE(k.Hjalp().notis->Text(), QStringLiteral("Finish stopped."));
        Behandla();
        QTest::qWait(50);
        QVERIFY(k.Spel().Tabell().Lika(*fore));
        QVERIFY(!k.Spel().KlarSpel());
    }

    // A press between two moves of a finish stops it there: the moves made stay made.
    void enTryckningMittISlutforetStopparDar() {
        Korning k;
        k.Starta(3, VinnbarFroFor(3));
        k.Hjalp().KanVinnas();
        k.VantaPaSvar();
        auto fore = k.Spel().Tabell().Kopia();
        k.Hjalp().Slutfor();
        while (k.Hjalp().Slutfors() && k.Spel().Tabell().Lika(*fore))
            QCoreApplication::processEvents();
        QVERIFY(k.Hjalp().Slutfors());
        QTest::mousePress(&k.Vy(), Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
        QTest::mouseRelease(&k.Vy(), Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
        QVERIFY(!k.Hjalp().Slutfors());
        auto efter = k.Spel().Tabell().Kopia();
        Behandla();
        QTest::qWait(50);
        QVERIFY(k.Spel().Tabell().Lika(*efter));
        QVERIFY(!k.Spel().KlarSpel());
    }

    void fonstretSvararMedanLosarenSoker() {
        Korning k;
        k.Starta(8, 1);
        HallnaSokningar h(k);
        k.Hjalp().Tips();
        QTRY_VERIFY_WITH_TIMEOUT(h.inne.load() > 0, kVanta);
        QVERIFY(k.Hjalp().Soker());
        QCOMPARE(k.Hjalp().tipsItem->text(), QStringLiteral("Hint (searching...)"));
        // Meanwhile the game's own first choice, said to be a guess.
        QVERIFY2(k.Hjalp().notis->Text().startsWith(
                     QStringLiteral("Hint (a guess while the search goes on): ")),
                 qPrintable(k.Hjalp().notis->Text()));
        QVERIFY(k.Hjalp().SenasteTips().has_value());
        QVERIFY(Listat(k.Spel().Regler(), k.Spel().Tabell(), *k.Hjalp().SenasteTips()));
        // The player moves on while the search is held: the move is made, the old question
        // is dropped.
        std::vector<Drag> dragen = k.Spel().Regler().LagligaDrag(k.Spel().Tabell());
        QVERIFY(!dragen.empty());
        auto fore = k.Spel().Tabell().Kopia();
        k.Gor(dragen.front());
        QVERIFY(!k.Spel().Tabell().Lika(*fore));
        QVERIFY(!k.Hjalp().Soker());
        h.slapp = true;
    }
};

QTEST_MAIN(TestSpelhjalp)
#include "test_spelhjalp.moc"
