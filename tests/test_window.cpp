#include "app/Bakgrund.h"
#include "app/FjolkApp.h"
#include "app/FjolkView.h"
#include "app/FjolkWin.h"
#include "app/FonsterRam.h"
#include "cards/Hiscore.h"
#include "games/Spelfabrik.h"
#include "platform/Meddelande.h"
#include "platform/QtGeometry.h"
#include "support/Gester.h"
#include "support/Poster.h"
#include "welcome/StatistikDialog.h"
#include "welcome/WelcomeView.h"

#include <QAction>
#include <QCheckBox>
#include <QCompleter>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QIcon>
#include <QImageReader>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QScopeGuard>
#include <QScreen>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>

#include <sqlite3.h>
#include <sys/stat.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>

namespace {

// One run of the program on its own data folder.
struct Korning {
    QTemporaryDir dir;
    std::unique_ptr<FjolkWin> win;
    int hjalpOppnad = 0;

    Korning() { Starta(); }
    void Starta() {
        AttributeStore::SetDataDirectory(dir.path().toStdString());
        BRect ram = GetWindowSize(Store(), BRect(0, 0, 1023, 767));
        win = std::make_unique<FjolkWin>(ram, Store());
        win->ValkomstVy()->animeringsRuta->setChecked(false);
        // Help is counted, never handed to the machine's desktop.
        win->SattHjalpOppnare({[] { return QStringLiteral("/usr/bin/xdg-open"); },
                               [this](const QUrl&) {
                                   ++hjalpOppnad;
                                   return true;
                               }});
        Behandla();
    }
    void StartaOm() {
        win.reset();
        Starta();
    }
    AttributeStore& Store() { return AttributeStore::Program(); }
    void Posta(type_code what) {
        QCoreApplication::postEvent(win.get(), new Meddelande(what));
        Behandla();
    }
    FjolkView& Vy() { return *win->SpelVy(); }
    HiscoreLista Tabell(int spelNr) {
        HiscoreLista tabell{};
        std::string namn = "FJOLK:Spel" + std::to_string(spelNr);
        Store().ReadAttr(namn.c_str(), B_RAW_TYPE, 0, tabell.data(), sizeof tabell);
        return tabell;
    }
    bool Finns(const char* namn) {
        char buffer[1920];
        for (size_t storlek : {size_t(16), size_t(20), size_t(1920)})
            for (type_code typ : {B_RECT_TYPE, B_RAW_TYPE})
                if (Store().ReadAttr(namn, typ, 0, buffer, storlek) > 0)
                    return true;
        return false;
    }
    BRect Ram(const char* namn) {
        BRect ram;
        Store().ReadAttr(namn, B_RECT_TYPE, 0, &ram, sizeof ram);
        return ram;
    }
};

// Game 0's table with `hoga` unbeatable entries, then low ones that any fresh deal beats.
void FyllTabell(AttributeStore& store, int hoga) {
    HiscoreLista tabell{};
    for (int i = 0; i < 40; ++i)
        tabell[i] = i < hoga ? Post("Mästare", 48, 1, 0) : Post("Nybörjare", 0, 3, 999);
    store.WriteAttr("FJOLK:Spel0", B_RAW_TYPE, 0, tabell.data(), sizeof tabell);
}

// The window active, with no alert over it, and the keyboard focus in the name field.
void FokusINamnfaltet(Korning& k) {
    for (QMessageBox* box : k.win->findChildren<QMessageBox*>())
        box->close();
    k.win->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(k.win.get()));
    k.win->ValkomstVy()->spelarFalt->setFocus();
    QVERIFY(k.win->ValkomstVy()->spelarFalt->hasFocus());
}

// Makes the first move the rules list with the gesture the game names for it.
void GestForForstaDraget(Korning& k) {
    Patiens& spel = *k.Vy().Spel();
    std::vector<Drag> dragen = spel.Regler().LagligaDrag(spel.Tabell());
    QVERIFY(!dragen.empty());
    std::optional<Gest> gest = spel.GestFor(dragen.front());
    QVERIFY(gest.has_value());
    GorGest(k.Vy(), *gest);
    Behandla();
}

} // namespace

class FjolkWinTest : public QObject {
    Q_OBJECT

private slots:
    void forstaStartenSkriverEnCentreradRamGenast() {
        QTemporaryDir dir;
        AttributeStore store(dir.path().toStdString());
        BRect ram = GetWindowSize(store, BRect(0, 0, 1023, 767));
        QCOMPARE(ram, BRect(191, 183, 831, 583));
        BRect lagrad;
        QCOMPARE(store.ReadAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &lagrad, 16), ssize_t(16));
        QCOMPARE(lagrad, ram);
        // The stored frame wins from then on.
        BRect flyttad(10, 20, 650, 420);
        store.WriteAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &flyttad, 16);
        QCOMPARE(GetWindowSize(store, BRect(0, 0, 1023, 767)), flyttad);
    }

    void skadadRamRaknasSomAldrigLagrad() {
        QTemporaryDir dir;
        AttributeStore store(dir.path().toStdString());
        for (BRect skadad : {BRect(std::nanf(""), 0, 640, 400), BRect(0, 0, 1e30f, 400),
                             BRect(100, 100, 50, 500)}) {
            store.WriteAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &skadad, 16);
            QCOMPARE(GetWindowSize(store, BRect(0, 0, 1023, 767)), BRect(191, 183, 831, 583));
            BRect lagrad;
            store.ReadAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &lagrad, 16);
            QCOMPARE(lagrad, BRect(191, 183, 831, 583));
        }
    }

    void fonstretOppnasPaRamenMedTitelOchFastStorlek() {
        Korning k;
        QCOMPARE(k.win->windowTitle(), QStringLiteral("Fjolks Patience 2.0"));
        QCOMPARE(k.win->Frame(), BRect(191, 183, 831, 583));
        QCOMPARE(k.win->minimumSize(), QSize(640, 400));
        QCOMPARE(k.win->maximumSize(), QSize(640, 400));
        QVERIFY(k.win->ValkomstVy()->isVisible());
        QVERIFY(!k.Vy().isVisible());
    }

    void menyernaHarSinaKommandonOchKortkommandon() {
        Korning k;
        QStringList texter;
        for (QAction* meny : k.win->menuBar()->actions()) {
            texter << meny->text();
            for (QAction* a : meny->menu()->actions())
                texter << (a->isSeparator() ? QStringLiteral("-")
                                            : a->text() + " " + a->shortcut().toString());
        }
        QCOMPARE(texter, (QStringList{"Game", "New Deal Ctrl+D", "Restart Deal F5", "Deal Number… ",
                                      "Undo Ctrl+Z", "Redo Ctrl+Shift+Z", "Close Ctrl+W", "Hint H",
                                      "Finish ", "Can This Deal Be Won? ", "-", "Exit Ctrl+Q",
                                      "Help", "Help Ctrl+H", "Statistics… ", "Reset Statistics… ",
                                      "-", "About Ctrl+A"}));
        QCOMPARE(k.win->GorOmItem()->shortcuts(),
                 (QList<QKeySequence>{QKeySequence(QStringLiteral("Ctrl+Shift+Z")),
                                      QKeySequence(QStringLiteral("Ctrl+Y"))}));
    }

    void ctrlAINamnfaltetOppnarOmOchBokstaverSkrivsIFaltet() {
        Korning k;
        QLineEdit* falt = k.win->ValkomstVy()->spelarFalt;
        FokusINamnfaltet(k);
        QTest::keyClick(falt, Qt::Key_A, Qt::ControlModifier);
        Behandla();
        QMessageBox* om = k.win->findChild<QMessageBox*>(QStringLiteral("About"));
        QVERIFY(om != nullptr && om->isVisible());
        QVERIFY(falt->selectedText().isEmpty());
        QCOMPARE(falt->text(), QStringLiteral("Guest"));

        FokusINamnfaltet(k);
        falt->setCursorPosition(0);
        QTest::keyClicks(falt, QStringLiteral("Bo "));
        QCOMPARE(falt->text(), QStringLiteral("Bo Guest"));
        // Undo is disabled on the welcome screen: its key still belongs to the menu and
        // does not take the typing back.
        QTest::keyClick(falt, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(falt->text(), QStringLiteral("Bo Guest"));
    }

    void allaMenyernasTangenterNarMenynFranNamnfaltet() {
        Korning k;
        QLineEdit* falt = k.win->ValkomstVy()->spelarFalt;
        QMap<QString, QAction*> items;
        for (QAction* meny : k.win->menuBar()->actions())
            for (QAction* a : meny->menu()->actions())
                for (const QKeySequence& tangenter : a->shortcuts())
                    items[tangenter.toString()] = a;
        // Exit and Close last: on the welcome screen both end the program.
        for (const char* tangenter : {"Ctrl+A", "Ctrl+H", "Ctrl+D", "F5", "Ctrl+Z", "Ctrl+Shift+Z",
                                      "Ctrl+Y", "Ctrl+W", "Ctrl+Q"}) {
            QAction* item = items.value(QString::fromLatin1(tangenter));
            QVERIFY2(item != nullptr, tangenter);
            // New Deal and Undo wait for a game; enabled, their keys reach them too.
            item->setEnabled(true);
            QSignalSpy utlost(item, &QAction::triggered);
            FokusINamnfaltet(k);
            QKeyCombination tangent = QKeySequence(QString::fromLatin1(tangenter))[0];
            QTest::keyClick(falt, tangent.key(), tangent.keyboardModifiers());
            QCOMPARE(utlost.count(), 1);
            QVERIFY2(falt->selectedText().isEmpty(), tangenter);
            Behandla();
        }
        QVERIFY(k.win->Avslutad());
    }

    void lagratLangtNamnVisasFranForstaBokstaven() {
        Korning k;
        char namn[20] = "Abcdefghijklmnopqrs";
        k.Store().WriteAttr("FJOLK:PlayerName", B_RAW_TYPE, 0, namn, sizeof namn);
        k.StartaOm();
        QLineEdit* falt = k.win->ValkomstVy()->spelarFalt;
        QCOMPARE(falt->text(), QStringLiteral("Abcdefghijklmnopqrs"));
        QVERIFY(QFontMetrics(falt->font()).horizontalAdvance(falt->text()) > falt->width());
        // Painted, the field has scrolled as far as its cursor needs: the cursor, and with it
        // the text, starts at the field's left edge.
        falt->grab();
        QRect markor = falt->inputMethodQuery(Qt::ImCursorRectangle).toRect();
        QVERIFY2(markor.left() < QFontMetrics(falt->font()).horizontalAdvance(QLatin1Char('A')),
                 qPrintable(QString::number(markor.left())));
    }

    void namnPa25TeckenLagrasSomDeForsta19() {
        Korning k;
        k.win->ValkomstVy()->spelarFalt->setText(QStringLiteral("Abcdefghijklmnopqrstuvwxy"));
        k.win->QuitRequested();
        char namn[20];
        QCOMPARE(k.Store().ReadAttr("FJOLK:PlayerName", B_RAW_TYPE, 0, namn, 20), ssize_t(20));
        QCOMPARE(QByteArray(namn, 20), QByteArray("Abcdefghijklmnopqrs\0", 20));
        k.win->ValkomstVy()->spelarFalt->setText(QStringLiteral("Eva"));
        k.win->QuitRequested();
        k.Store().ReadAttr("FJOLK:PlayerName", B_RAW_TYPE, 0, namn, 20);
        QCOMPARE(QByteArray(namn, 20), QByteArray("Eva                \0", 20));
        QVERIFY(k.win->Avslutad());
    }

    void stangPaValkomstskarmenAvslutar() {
        Korning k;
        k.Posta(kStang);
        QVERIFY(k.win->Avslutad());
    }

    void spelStartasUrListanOchMenyernaFoljerSpelet() {
        Korning k;
        // The play view's frame waits for the first game.
        QVERIFY(!k.Vy().HarRam());
        k.win->MenusBeginning();
        QVERIFY(!k.win->NyGivItem()->isEnabled());
        QVERIFY(!k.win->AngraItem()->isEnabled());
        k.Posta(kStartaSpel0);
        QVERIFY(k.win->VisarSpel());
        QVERIFY(k.Vy().isVisible());
        QVERIFY(!k.win->ValkomstVy()->isVisible());
        QVERIFY(k.Vy().Spel() != nullptr);
        QCOMPARE(k.win->windowTitle(), QStringLiteral("Fjolks Patience - Idioten"));
        QCOMPARE(k.win->minimumSize(), QSize(100, 100));
        QCOMPARE(k.win->maximumSize(), QSize(1280, 1024));
        QCOMPARE(QByteArray(k.Vy().spelarNamn), QByteArray("Guest"));
        QVERIFY(k.win->NyGivItem()->isEnabled());
        QCOMPARE(k.win->AngraItem()->isEnabled(), k.Vy().Spel()->Has_Undos());
    }

    void listanValjerSpeletSomVisadesEfterStang() {
        Korning k;
        // As --game 5 starts it: not through the list.
        k.win->StartaSpel(5);
        Behandla();
        QVERIFY(k.win->VisarSpel());
        k.Posta(kStang);
        QListWidget* lista = k.win->ValkomstVy()->spelLista;
        QCOMPARE(lista->currentRow(), 5);
        QVERIFY(lista->item(5)->isSelected());
        QVERIFY(!lista->item(0)->isSelected());
        QCOMPARE(k.win->ValkomstVy()->titelRad->text(),
                 QStringLiteral("Highscore for Glädjespridaren"));
    }

    void nyaSpelkommandonKraverEttSpel() {
        Korning k;
        k.win->MenusBeginning();
        for (QAction* item : {k.win->OmGivItem(), k.win->GivNummerItem(), k.win->GorOmItem()})
            QVERIFY(!item->isEnabled());
        for (type_code what : {kOmGiv, kGorOm, kFragaGivNummer})
            k.Posta(what);
        QCoreApplication::postEvent(k.win.get(), new Meddelande(kGivNummer, QStringLiteral("7")));
        Behandla();
        QVERIFY(!k.win->VisarSpel());
        QVERIFY(k.win->findChild<QInputDialog*>() == nullptr);
        QVERIFY(k.win->HiInfo() == nullptr);
        k.Posta(kStartaSpel0 + 8);
        QVERIFY(k.win->OmGivItem()->isEnabled());
        QVERIFY(k.win->GivNummerItem()->isEnabled());
        QVERIFY(!k.win->GorOmItem()->isEnabled());
    }

    // Redo is offered after an undo, makes the move again with the undos still counted,
    // and is forgotten once the player makes a move of their own.
    void redoFoljerAngraTillsSpelarenGorEttDrag() {
        Korning k;
        k.Posta(kStartaSpel0 + 8);
        Patiens& spel = *k.Vy().Spel();
        GestForForstaDraget(k);
        GestForForstaDraget(k);
        QCOMPARE(int(spel.UndoLista().size()), 2);
        QVERIFY(!k.win->GorOmItem()->isEnabled());
        auto fore = spel.Tabell().Kopia();
        k.Posta(kAngra);
        QVERIFY(k.win->GorOmItem()->isEnabled());
        QCOMPARE(spel.AntalUndo(), 1);
        k.Posta(kGorOm);
        QCOMPARE(spel.AntalUndo(), 1);
        fore->antalUndo = 1;
        QVERIFY(spel.Tabell().Lika(*fore));
        QVERIFY(!k.win->GorOmItem()->isEnabled());
        QVERIFY(k.win->AngraItem()->isEnabled());

        k.Posta(kAngra);
        k.Posta(kAngra);
        k.Posta(kGorOm);
        QCOMPARE(spel.AntalUndo(), 3);
        QVERIFY(k.win->GorOmItem()->isEnabled());
        GestForForstaDraget(k);
        QVERIFY(!k.win->GorOmItem()->isEnabled());
        auto efter = spel.Tabell().Kopia();
        k.Posta(kGorOm);
        QVERIFY(spel.Tabell().Lika(*efter));
    }

    // Restart records the result as New Deal does, then deals the same cards again.
    void omgivRegistrerarOchDelarSammaKortIgen() {
        Korning k;
        k.win->ValkomstVy()->spelarFalt->setText(QStringLiteral("Eva"));
        k.Posta(kStartaSpel0 + 8);
        Patiens& spel = *k.Vy().Spel();
        auto givet = spel.Tabell().Kopia();
        GestForForstaDraget(k);
        QVERIFY(!spel.Tabell().Lika(*givet));
        k.Posta(kOmGiv);
        QCOMPARE(k.win->HiscorePlats(), 1);
        QVERIFY(k.win->HiInfo() != nullptr);
        QCOMPARE(k.win->HiInfo()->text(), QStringLiteral("You are number 1 on the Hiscoretable!"));
        QVERIFY(spel.Tabell().Lika(*givet));
        QVERIFY(!k.win->AngraItem()->isEnabled());
        QCOMPARE(k.win->windowTitle(), QStringLiteral("Fjolks Patience - Freecell"));
    }

    // Deal Number N deals what the program started with --seed N --game G deals: it seeds
    // the random numbers before it makes its window, and the game chosen deals first. (Not
    // so Idioten 2, whose first deal is never shuffled: Deal Number N is its New Deal then.)
    void givNummerDelarSomSeed_data() {
        QTest::addColumn<int>("spelNr");
        for (int nr = 0; nr < kAntalSpel; ++nr)
            QTest::addRow("%s", SpelNamn(nr)) << nr;
    }
    void givNummerDelarSomSeed() {
        QFETCH(int, spelNr);
        std::unique_ptr<SpelBord> medSeed;
        {
            std::srand(1234);
            Korning start;
            start.win->StartaSpel(spelNr);
            Behandla();
            // Idioten 2's first deal is not shuffled; its deal of the seed is New Deal's.
            start.Vy().GivAvFro(1234);
            medSeed = start.Vy().Spel()->Tabell().Kopia();
        }
        Korning k;
        k.Posta(kStartaSpel0 + static_cast<type_code>(spelNr));
        k.Posta(kNyGiv);
        QVERIFY(!k.Vy().Spel()->Tabell().Lika(*medSeed));
        QCoreApplication::postEvent(k.win.get(),
                                    new Meddelande(kGivNummer, QStringLiteral("1234")));
        Behandla();
        QVERIFY(k.Vy().Spel()->Tabell().Lika(*medSeed));
        QCOMPARE(k.win->GivNummer(), std::optional<unsigned>(1234));
        QCOMPARE(
            k.win->windowTitle(),
            QStringLiteral("Fjolks Patience - %1 #1234").arg(QString::fromUtf8(TitelNamn(spelNr))));
        // Restarted, it is still that deal and keeps its number; a new deal is no numbered one.
        k.Posta(kOmGiv);
        QVERIFY(k.Vy().Spel()->Tabell().Lika(*medSeed));
        QCOMPARE(k.win->GivNummer(), std::optional<unsigned>(1234));
        k.Posta(kNyGiv);
        QVERIFY(!k.win->GivNummer());
        QCOMPARE(k.win->windowTitle(),
                 QStringLiteral("Fjolks Patience - %1").arg(QString::fromUtf8(TitelNamn(spelNr))));
    }

    // The deal left is recorded as New Deal records it, with its alert.
    void givNummerRegistrerarSpeletSomLamnas() {
        Korning k;
        k.win->ValkomstVy()->spelarFalt->setText(QStringLiteral("Eva"));
        k.Posta(kStartaSpel0 + 8);
        QCoreApplication::postEvent(k.win.get(), new Meddelande(kGivNummer, QStringLiteral("0")));
        Behandla();
        QCOMPARE(k.win->HiscorePlats(), 1);
        QVERIFY(k.win->HiInfo() != nullptr);
        QCOMPARE(k.win->GivNummer(), std::optional<unsigned>(0));
        QCOMPARE(k.win->windowTitle(), QStringLiteral("Fjolks Patience - Freecell #0"));
    }

    // The random deals after a numbered one are those the start's seeding gives.
    void givNummerLamnarSlumpgivarnaSomDeVar() {
        std::unique_ptr<SpelBord> andraGiven;
        {
            std::srand(77);
            Korning a;
            a.Posta(kStartaSpel0 + 8);
            a.Posta(kNyGiv);
            andraGiven = a.Vy().Spel()->Tabell().Kopia();
        }
        std::srand(77);
        Korning b;
        b.Posta(kStartaSpel0 + 8);
        QCoreApplication::postEvent(b.win.get(), new Meddelande(kGivNummer, QStringLiteral("5")));
        Behandla();
        b.Posta(kNyGiv);
        QVERIFY(b.Vy().Spel()->Tabell().Lika(*andraGiven));
    }

    // What is not a deal's number is said so, and nothing is dealt or recorded.
    void felaktigtGivNummerSags() {
        Korning k;
        k.Posta(kStartaSpel0 + 8);
        auto fore = k.Vy().Spel()->Tabell().Kopia();
        for (const char* text : {"4294967296", "12x", ""}) {
            QCoreApplication::postEvent(k.win.get(),
                                        new Meddelande(kGivNummer, QString::fromLatin1(text)));
            Behandla();
            QMessageBox* varning = nullptr;
            for (QMessageBox* box :
                 k.win->findChildren<QMessageBox*>(QStringLiteral("Deal Number")))
                if (box->isVisible())
                    varning = box;
            QVERIFY2(varning != nullptr, text);
            QCOMPARE(varning->text(),
                     QStringLiteral("\"%1\" is not a deal's number: give a whole number from 0 "
                                    "to 4294967295.")
                         .arg(QString::fromLatin1(text)));
            varning->close();
            Behandla();
        }
        QVERIFY(k.Vy().Spel()->Tabell().Lika(*fore));
        QVERIFY(k.win->HiInfo() == nullptr);
        QVERIFY(!k.win->GivNummer());
    }

    // The menu item asks for the number in a small dialog that takes digits only.
    void givNummerFragasIEnDialog() {
        Korning k;
        k.Posta(kStartaSpel0 + 8);
        k.Posta(kFragaGivNummer);
        auto* dialog = k.win->findChild<QInputDialog*>(QStringLiteral("Deal Number"));
        QVERIFY(dialog != nullptr);
        QVERIFY(dialog->isVisible());
        auto* falt = dialog->findChild<QLineEdit*>();
        QVERIFY(falt != nullptr);
        falt->setFocus();
        QTest::keyClicks(falt, QStringLiteral("4a2-"));
        QCOMPARE(falt->text(), QStringLiteral("42"));
        dialog->accept();
        Behandla();
        QCOMPARE(k.win->GivNummer(), std::optional<unsigned>(42));
        QCOMPARE(k.win->windowTitle(), QStringLiteral("Fjolks Patience - Freecell #42"));
        // Asked again, it offers the number on the table.
        for (QMessageBox* box : k.win->findChildren<QMessageBox*>())
            box->close();
        k.Posta(kFragaGivNummer);
        dialog = nullptr;
        for (QInputDialog* d : k.win->findChildren<QInputDialog*>())
            if (d->isVisible())
                dialog = d;
        QVERIFY(dialog != nullptr);
        QCOMPARE(dialog->textValue(), QStringLiteral("42"));
        dialog->reject();
        Behandla();
        QCOMPARE(k.win->GivNummer(), std::optional<unsigned>(42));
    }

    // OK takes only a deal's number: nothing, or a number past the last deal, cannot be
    // given.
    void givNummerOkBaraForEttNummer() {
        Korning k;
        k.Posta(kStartaSpel0 + 8);
        k.Posta(kFragaGivNummer);
        auto* dialog = k.win->findChild<QInputDialog*>(QStringLiteral("Deal Number"));
        QVERIFY(dialog != nullptr);
        auto* falt = dialog->findChild<QLineEdit*>();
        auto* knappar = dialog->findChild<QDialogButtonBox*>();
        QVERIFY(falt != nullptr && knappar != nullptr);
        QPushButton* ok = knappar->button(QDialogButtonBox::Ok);
        QVERIFY(ok != nullptr);
        QVERIFY(!ok->isEnabled());
        falt->setFocus();
        QTest::keyClicks(falt, QStringLiteral("4294967296"));
        QVERIFY(!ok->isEnabled());
        QTest::keyClick(falt, Qt::Key_Backspace);
        QTest::keyClick(falt, Qt::Key_5);
        QCOMPARE(falt->text(), QStringLiteral("4294967295"));
        QVERIFY(ok->isEnabled());
        QTest::keyClick(falt, Qt::Key_Return);
        Behandla();
        QCOMPARE(k.win->GivNummer(), std::optional<unsigned>(4294967295u));
        QVERIFY(k.win->findChild<QMessageBox*>(QStringLiteral("Deal Number")) == nullptr);
    }

    void spelSomInteFinnsAnnuLamnarValkomstskarmen() {
        int saknat = 0;
        while (saknat < kAntalSpel && SpelFinns(saknat))
            ++saknat;
        if (saknat == kAntalSpel)
            QSKIP("every game of the list is built");
        Korning k;
        k.Posta(kStartaSpel0 + saknat);
        QVERIFY(!k.win->VisarSpel());
        QVERIFY(k.win->ValkomstVy()->isVisible());
    }

    void nyGivMittISpeletRegistrerarOchTalarOmDet() {
        Korning k;
        k.win->ValkomstVy()->spelarFalt->setText(QStringLiteral("Eva"));
        k.Posta(kStartaSpel0);
        k.Posta(kNyGiv);
        HiscoreLista tabell = k.Tabell(0);
        QCOMPARE(QByteArray(tabell[0].namn), QByteArray("Eva"));
        QCOMPARE(int(tabell[0].giv), 1);
        QCOMPARE(int(tabell[1].kort), -1);
        QCOMPARE(k.win->HiscorePlats(), 1);
        QMessageBox* info = k.win->HiInfo();
        QVERIFY(info != nullptr);
        QCOMPARE(info->windowTitle(), QStringLiteral("Hi Info"));
        QCOMPARE(info->text(), QStringLiteral("You are number 1 on the Hiscoretable!"));
        QCOMPARE(info->buttons().size(), 1);
        QCOMPARE(info->buttons()[0]->text(), QStringLiteral("OK"));
        QVERIFY(!info->isModal());
        QTest::keyClick(info, Qt::Key_Escape);
        Behandla();
        QVERIFY(k.win->HiInfo() == nullptr);
        QVERIFY(k.win->VisarSpel());
        QVERIFY(!k.Vy().Spel()->Has_Undos());
    }

    void missadTabellSagsMedSinText() {
        Korning k;
        FyllTabell(k.Store(), 40);
        k.Posta(kStartaSpel0);
        k.Posta(kNyGiv);
        QCOMPARE(k.win->HiscorePlats(), 41);
        QCOMPARE(k.win->HiInfo()->text(),
                 QStringLiteral("You've missed the Hiscoretable! Better luck next time!"));
    }

    void plats40VisasMenIngenRadValjsEfterStang() {
        Korning k;
        FyllTabell(k.Store(), 39);
        k.Posta(kStartaSpel0);
        k.Posta(kStang);
        QCOMPARE(k.win->HiscorePlats(), 40);
        QVERIFY(!k.win->VisarSpel());
        QVERIFY(k.win->HiInfo() == nullptr);
        QVERIFY(k.win->ValkomstVy()->hiscoreLista->selectedItems().isEmpty());
        QCOMPARE(k.win->ValkomstVy()->titelRad->text(), QStringLiteral("Highscore for Idioten 1"));
    }

    void plats39ValjerRad39EfterStang() {
        Korning k;
        FyllTabell(k.Store(), 38);
        k.Posta(kStartaSpel0);
        k.Posta(kStang);
        QCOMPARE(k.win->HiscorePlats(), 39);
        QCOMPARE(k.win->ValkomstVy()->hiscoreLista->currentRow(), 39);
        QCOMPARE(k.win->windowTitle(), QStringLiteral("Fjolks Patience 2.0"));
        QCOMPARE(k.win->Frame(), k.Ram("FJOLK:FirstWindow"));
    }

    void underDragIgnorerasAllaKommandonUtomExit() {
        Korning k;
        k.Posta(kStartaSpel0);
        const Patiens& spel = *k.Vy().Spel();
        // Press on the first card on the table and pull it past the click square.
        int kort = 0;
        while (spel.Luckor()[kort].Tom())
            ++kort;
        BPoint start = Mitt(spel.Luckor()[kort].GePos());
        TryckOchDra(k.Vy(), start, start + BPoint(20, 20));
        QVERIFY(k.Vy().drar);
        for (type_code what :
             {kNyGiv, kAngra, kGorOm, kOmGiv, kFragaGivNummer, kStang, kOm, kHjalp, kRensaBakgrund})
            k.Posta(what);
        QCoreApplication::postEvent(k.win.get(), new Meddelande(kGivNummer, QStringLiteral("7")));
        Behandla();
        QVERIFY(k.win->findChild<QInputDialog*>() == nullptr);
        QVERIFY(k.win->VisarSpel());
        QVERIFY(k.win->HiInfo() == nullptr);
        QVERIFY(!k.Finns("FJOLK:Spel0"));
        k.Posta(kAvsluta);
        QVERIFY(k.win->Avslutad());
        QVERIFY(k.Finns("FJOLK:Spel0"));
    }

    void varjeSpelOppnasPaSinEgenRam() {
        Korning k;
        k.Posta(kStartaSpel0);
        // A game never played opens at the current frame.
        QCOMPARE(k.win->Frame(), BRect(191, 183, 831, 583));
        k.win->SattFrame(BRect(50, 60, 950, 760));
        // Stored once the window has settled, or when the game is left.
        QVERIFY(k.win->RamVantar());
        QVERIFY(!k.Finns("FJOLK:SpelWinNr0"));
        k.Posta(kStang);
        QCOMPARE(k.Ram("FJOLK:SpelWinNr0"), BRect(50, 60, 950, 760));
        QCOMPARE(k.win->Frame(), BRect(191, 183, 831, 583));
        QCOMPARE(k.Ram("FJOLK:FirstWindow"), BRect(191, 183, 831, 583));
        k.Posta(kStartaSpel0);
        QCOMPARE(k.win->Frame(), BRect(50, 60, 950, 760));
        QCOMPARE(k.Vy().Bounds().IntegerWidth(), 899);
    }

    void allaTolvSpelenOppnasMedSinTitelPaSinEgenRam() {
        Korning k;
        auto ram = [](int nr) {
            float f = static_cast<float>(nr);
            return BRect(10 + 7 * f, 20 + 5 * f, 410 + 47 * f, 320 + 31 * f);
        };
        const QStringList titlar{"Idioten",  "Idioten 2",       "Godnattvalsen",  "Tower of Hanoi",
                                 "Kvarnen",  "Glädjespridaren", "Farfars Klocka", "13-Pyramiden",
                                 "Freecell", "Eight off",       "Black hole",     "Strategy"};
        for (int nr = 0; nr < kAntalSpel; ++nr) {
            k.Posta(kStartaSpel0 + static_cast<type_code>(nr));
            QVERIFY(k.win->VisarSpel());
            QCOMPARE(k.win->windowTitle(), QStringLiteral("Fjolks Patience - ") + titlar[nr]);
            // Never played: the frame the window has.
            QCOMPARE(k.win->Frame(), BRect(191, 183, 831, 583));
            k.win->SattFrame(ram(nr));
            k.Posta(kStang);
            QCOMPARE(k.win->Frame(), BRect(191, 183, 831, 583));
        }
        for (int nr = kAntalSpel - 1; nr >= 0; --nr) {
            k.Posta(kStartaSpel0 + static_cast<type_code>(nr));
            QCOMPARE(k.win->Frame(), ram(nr));
            QCOMPARE(k.Ram(("FJOLK:SpelWinNr" + std::to_string(nr)).c_str()), ram(nr));
            k.Posta(kStang);
        }
    }

    // The close box ends the program at once: the name is kept, the game left is not recorded.
    void stangningsrutanAvslutarUtanAttRegistrera() {
        Korning k;
        k.win->ValkomstVy()->spelarFalt->setText(QStringLiteral("Eva"));
        k.Posta(kStartaSpel0);
        GestForForstaDraget(k);
        QVERIFY(k.win->close());
        Behandla();
        QVERIFY(k.win->Avslutad());
        QVERIFY(k.win->HiInfo() == nullptr);
        QVERIFY(!k.Finns("FJOLK:Spel0"));
        char namn[20];
        QCOMPARE(k.Store().ReadAttr("FJOLK:PlayerName", B_RAW_TYPE, 0, namn, 20), ssize_t(20));
        QCOMPARE(QByteArray(namn, 20), QByteArray("Eva                \0", 20));
    }

    void omstartHittarNamnRamarOchHiscores() {
        Korning k;
        k.win->ValkomstVy()->spelarFalt->setText(QStringLiteral("Eva"));
        k.win->SattFrame(BRect(100, 120, 740, 520));
        k.Posta(kStartaSpel0);
        k.win->SattFrame(BRect(10, 20, 1010, 820));
        k.Posta(kStang);
        k.Posta(kAvsluta);
        QVERIFY(k.win->Avslutad());
        k.StartaOm();
        // The name as it was typed; the blanks it is stored padded with are not shown.
        QCOMPARE(k.win->ValkomstVy()->spelarFalt->text(), QStringLiteral("Eva"));
        char lagrat[20];
        QCOMPARE(k.Store().ReadAttr("FJOLK:PlayerName", B_RAW_TYPE, 0, lagrat, 20), ssize_t(20));
        QCOMPARE(QByteArray(lagrat, 20), QByteArray("Eva                ") + '\0');
        QCOMPARE(k.win->Frame(), BRect(100, 120, 740, 520));
        QCOMPARE(QByteArray(k.Tabell(0)[0].namn), QByteArray("Eva"));
        QCOMPARE(k.win->ValkomstVy()->hiscoreLista->count(), 40);
        k.Posta(kStartaSpel0);
        QCOMPARE(k.win->Frame(), BRect(10, 20, 1010, 820));
    }

    void aterstallTarBortExaktDeTreRamarna() {
        Korning k;
        BRect ram(1, 2, 700, 500);
        for (const char* namn : {"FJOLK:SpelWinNr0", "FJOLK:SpelWinNr1", "FJOLK:SpelWinNr2"})
            k.Store().WriteAttr(namn, B_RECT_TYPE, 0, &ram, 16);
        FyllTabell(k.Store(), 3);
        k.win->ValkomstVy()->animeringsRuta->setChecked(false);
        Behandla();
        QVERIFY(!k.win->Animering());
        k.Posta(kAterstall);
        QVERIFY(!k.Finns("FJOLK:FirstWindow"));
        QVERIFY(!k.Finns("FJOLK:SpelWinNr0"));
        QVERIFY(!k.Finns("FJOLK:SpelWinNr1"));
        QVERIFY(k.Finns("FJOLK:SpelWinNr2"));
        QVERIFY(k.Finns("FJOLK:Spel0"));
        QVERIFY(k.win->Animering());
        QVERIFY(k.win->ValkomstVy()->animeringsRuta->isChecked());
    }

    // Every way of leaving a deal counts it once: New Deal, Restart Deal, Close, Exit.
    void varjeGivRaknasEnGangIStatistiken() {
        Korning k;
        k.Posta(kStartaSpel0);
        k.Posta(kNyGiv);
        k.Posta(kNyGiv);
        k.Posta(kOmGiv);
        k.Posta(kStang);
        StatisticsRow rad;
        QCOMPARE(k.Store().ReadStatistics(0, "Guest", &rad), B_OK);
        QCOMPARE(rad.played, int64_t(4));
        QCOMPARE(rad.won, int64_t(0));
        QLabel* statistik = k.win->ValkomstVy()->statistikRad;
        QVERIFY(statistik->isVisible());
        QVERIFY2(statistik->text().startsWith(
                     QStringLiteral("Guest: 4 played, 0 won (0%), streak 0 (best 0), last ")),
                 qPrintable(statistik->text()));
        // Within the window, under the tabs.
        QVERIFY(k.win->ValkomstVy()->rect().contains(statistik->geometry()));
        QVERIFY(!statistik->geometry().intersects(k.win->ValkomstVy()->flikar->geometry()));
        // Another name shows its own record.
        k.win->ValkomstVy()->spelarFalt->setText(QStringLiteral("Eva"));
        QCOMPARE(statistik->text(), QStringLiteral("Eva: no games played yet"));
        k.win->ValkomstVy()->spelarFalt->setText(QStringLiteral("Guest"));
        k.Posta(kStartaSpel0 + 3);
        k.Posta(kAvsluta);
        QCOMPARE(k.Store().ReadStatistics(3, "Guest", &rad), B_OK);
        QCOMPARE(rad.played, int64_t(1));
        QCOMPARE(k.Store().ReadStatistics(0, "Guest", &rad), B_OK);
        QCOMPARE(rad.played, int64_t(4));
    }

    void statistikfonstretVisarAllaTolvSpelen() {
        Korning k;
        k.Posta(kStartaSpel0 + 8);
        k.Posta(kStang);
        k.Posta(kStatistik);
        StatistikDialog* fonster = k.win->StatistikFonster();
        QVERIFY(fonster != nullptr && fonster->isVisible());
        QCOMPARE(fonster->tabell->rowCount(), 12);
        QCOMPARE(fonster->tabell->accessibleName(), QStringLiteral("Statistics"));
        QVERIFY(!fonster->tabell->accessibleDescription().isEmpty());
        QCOMPARE(fonster->tabell->item(8, 0)->text(), QStringLiteral("Freecell"));
        QCOMPARE(fonster->tabell->item(8, 1)->text(), QStringLiteral("Guest"));
        QCOMPARE(fonster->tabell->item(8, 2)->text(), QStringLiteral("1"));
        QCOMPARE(fonster->tabell->item(8, 4)->text(), QStringLiteral("0"));
        QCOMPARE(fonster->tabell->item(0, 2)->text(), QStringLiteral("0"));
        QCOMPARE(fonster->tabell->item(0, 4)->text(), QString());
    }

    // The window left open beside the game counts each result as it is recorded.
    void statistikfonstretFoljerSpeletMedan() {
        Korning k;
        k.Posta(kStartaSpel0 + 8);
        k.Posta(kStatistik);
        StatistikDialog* fonster = k.win->StatistikFonster();
        QVERIFY(fonster != nullptr && fonster->isVisible());
        QCOMPARE(fonster->tabell->item(8, 2)->text(), QStringLiteral("0"));
        k.Posta(kNyGiv);
        QCOMPARE(fonster->tabell->item(8, 1)->text(), QStringLiteral("Guest"));
        QCOMPARE(fonster->tabell->item(8, 2)->text(), QStringLiteral("1"));
        k.Posta(kStang);
        QCOMPARE(fonster->tabell->item(8, 2)->text(), QStringLiteral("2"));
    }

    // Reset Statistics asks first; Reset to default leaves them, as it leaves the hiscores.
    void nollstallStatistikFragarForstOchBehallerHiscores() {
        Korning k;
        k.Posta(kStartaSpel0);
        k.Posta(kStang);
        k.Posta(kAterstall);
        StatisticsRow rad;
        QCOMPARE(k.Store().ReadStatistics(0, "Guest", &rad), B_OK);
        k.Posta(kFragaNollstall);
        auto fraga = [&] {
            return k.win->findChild<QMessageBox*>(QStringLiteral("Reset Statistics"));
        };
        QVERIFY(fraga() != nullptr && fraga()->isVisible());
        QTest::keyClick(fraga(), Qt::Key_Escape);
        Behandla();
        QCOMPARE(k.Store().ReadStatistics(0, "Guest", &rad), B_OK);
        k.Posta(kFragaNollstall);
        QPushButton* ja = nullptr;
        for (QAbstractButton* b : fraga()->buttons())
            if (b->text() == QStringLiteral("Reset"))
                ja = qobject_cast<QPushButton*>(b);
        QVERIFY(ja != nullptr);
        ja->click();
        Behandla();
        QCOMPARE(k.Store().ReadStatistics(0, "Guest", &rad), B_ENTRY_NOT_FOUND);
        QCOMPARE(k.win->ValkomstVy()->statistikRad->text(),
                 QStringLiteral("Guest: no games played yet"));
        QCOMPARE(QByteArray(k.Tabell(0)[0].namn), QByteArray("Guest"));
    }

    void animeringsrutanGallerSpelSomStartasSedan() {
        Korning k;
        QVERIFY(!k.win->Animering());
        k.win->ValkomstVy()->animeringsRuta->setChecked(true);
        Behandla();
        QVERIFY(k.win->Animering());
    }

    void omRutanSagerHaKul() {
        Korning k;
        k.Posta(kOm);
        QMessageBox* om = k.win->findChild<QMessageBox*>(QStringLiteral("About"));
        QVERIFY(om != nullptr);
        QCOMPARE(om->windowTitle(), QStringLiteral("About"));
        // The title, the author, the author's address and the wish, each on a line of its
        // own between empty lines, indented with blanks.
        QStringList rader = om->text().split(QLatin1Char('\n'));
        QCOMPARE(rader.size(), 7);
        QCOMPARE(rader[0].trimmed(), QStringLiteral("Fjolks Patience 2.0 beta"));
        QVERIFY(rader[2].trimmed().startsWith(QStringLiteral("by ")));
        QVERIFY(rader[4].trimmed().contains(QLatin1Char('@')));
        QCOMPARE(rader[6].trimmed(), QStringLiteral("Enjoy, it's freeware!"));
        for (int i : {1, 3, 5})
            QVERIFY(rader[i].isEmpty());
        for (int i : {0, 2, 4, 6})
            QVERIFY(rader[i].startsWith(QLatin1Char(' ')));
        QCOMPARE(om->buttons().size(), 1);
        QCOMPARE(om->buttons()[0]->text(), QStringLiteral("Have Fun!"));
    }

    void bakgrundsbildLaddasMedFullAlfaOchRensas() {
        Korning k;
        QString fil = k.dir.filePath(QStringLiteral("bild.png"));
        QImage bild(4, 4, QImage::Format_ARGB32);
        bild.fill(qRgba(200, 10, 10, 100));
        QVERIFY(bild.save(fil));
        QCoreApplication::postEvent(k.win.get(), new Meddelande(kBakgrundVald, fil));
        Behandla();
        QCOMPARE(qAlpha(k.Vy().BakgrundsBild().pixel(1, 1)), 255);
        // The table's far corner, where no card lies, shows the picture, then the green.
        auto horn = [&] {
            return QColor(k.Vy().OffBitmap().pixel(k.Vy().width() - 2, k.Vy().height() - 2));
        };
        k.Posta(kStartaSpel0);
        QCOMPARE(horn(), QColor(200, 10, 10));
        k.Posta(kStang);
        k.Posta(kRensaBakgrund);
        QVERIFY(k.Vy().BakgrundsBild().isNull());
        k.Posta(kStartaSpel0);
        QCOMPARE(horn(), QColor(0, 160, 0));
    }

    void filSomInteArEnBildGerIngenBild() {
        Korning k;
        QString fil = k.dir.filePath(QStringLiteral("text.png"));
        QFile f(fil);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("not a picture");
        f.close();
        QCoreApplication::postEvent(k.win.get(), new Meddelande(kBakgrundVald, fil));
        Behandla();
        QVERIFY(k.Vy().BakgrundsBild().isNull());
    }

    // A named pipe is no picture: refused at once, with a word in the window, where opening
    // it would wait for a writer for good.
    void namngivetRorVagrasGenast() {
        Korning k;
        QString fil = k.dir.filePath(QStringLiteral("ror.png"));
        QCOMPARE(mkfifo(fil.toLocal8Bit().constData(), 0644), 0);
        QCoreApplication::postEvent(k.win.get(), new Meddelande(kBakgrundVald, fil));
        Behandla();
        QVERIFY(k.Vy().BakgrundsBild().isNull());
        QVERIFY(k.win->Notis() != nullptr);
        QCOMPARE(k.win->Notis()->text(),
                 fil + QStringLiteral(" is not a picture file; only a picture file can be the "
                                      "background."));
        std::string fel;
        QVERIFY(LasBakgrundsBild(k.dir.path(), QSize(1280, 1024), &fel).isNull());
        QVERIFY(fel.find("is not a picture file") != std::string::npos);
    }

    // A picture larger than the table can show is scaled down as it is read, its ratio kept,
    // to the least size that covers the largest play view at the screen's ratio.
    void storBildSkalasNedVidLaddning() {
        QCOMPARE(BakgrundsStorlek(QSize(1280, 1024)), QSize(1280, 1024));
        QCOMPARE(BakgrundsStorlek(QSize(1920, 1080)), QSize(1280, 720));
        QCOMPARE(BakgrundsStorlek(QSize(1024, 768)), QSize(1280, 960));
        QCOMPARE(BakgrundsStorlek(QSize(1080, 1920)), QSize(576, 1024));
        QTemporaryDir dir;
        QString fil = dir.filePath(QStringLiteral("stor.png"));
        QImage stor(3000, 2000, QImage::Format_RGB32);
        stor.fill(qRgb(10, 20, 30));
        QVERIFY(stor.save(fil));
        std::string fel;
        QImage bild = LasBakgrundsBild(fil, QSize(1280, 1024), &fel);
        QCOMPARE(bild.size(), QSize(1536, 1024));
        QCOMPARE(bild.pixel(5, 5), qRgb(10, 20, 30));
        bild = LasBakgrundsBild(fil, QSize(1280, 720), &fel);
        QCOMPARE(bild.size(), QSize(1280, 853));
        // A small one is kept as it is.
        QImage liten(300, 200, QImage::Format_RGB32);
        liten.fill(Qt::red);
        QVERIFY(liten.save(fil));
        QCOMPARE(LasBakgrundsBild(fil, QSize(1280, 1024), &fel).size(), QSize(300, 200));
    }

    // A frame stored for a screen that is gone comes onto the nearest, its size kept.
    void ramUtanforSkarmarnaFlyttasPaNarmasteSkarm() {
        std::vector<BRect> en = {BRect(0, 0, 1279, 1023)};
        QCOMPARE(FlyttaPaSkarm(BRect(50000, 50000, 50640, 50400), en), BRect(639, 623, 1279, 1023));
        QCOMPARE(FlyttaPaSkarm(BRect(-5000, -5000, -4360, -4600), en), BRect(0, 0, 640, 400));
        QCOMPARE(FlyttaPaSkarm(BRect(-5000, 100, -4000, 900), en), BRect(0, 100, 1000, 900));
        // Enough of its top on the screen to take hold of: it stays.
        QCOMPARE(FlyttaPaSkarm(BRect(-576, 50, 64, 450), en), BRect(-576, 50, 64, 450));
        QCOMPARE(FlyttaPaSkarm(BRect(1200, 1000, 1840, 1400), en), BRect(1200, 1000, 1840, 1400));
        QCOMPARE(FlyttaPaSkarm(BRect(1240, 1000, 1880, 1400), en), BRect(639, 623, 1279, 1023));
        // Larger than the screen: from its top left corner.
        QCOMPARE(FlyttaPaSkarm(BRect(3000, 0, 4500, 1200), en), BRect(0, 0, 1500, 1200));
        std::vector<BRect> tva = {BRect(0, 0, 1279, 1023), BRect(1280, 0, 3199, 1079)};
        QCOMPARE(FlyttaPaSkarm(BRect(5000, 200, 5640, 600), tva), BRect(2559, 200, 3199, 600));
        QCOMPARE(FlyttaPaSkarm(BRect(1500, 100, 2140, 500), tva), BRect(1500, 100, 2140, 500));
        QCOMPARE(FlyttaPaSkarm(BRect(5, 5, 10, 10), {}), BRect(5, 5, 10, 10));

        Korning k;
        BRect borta(50000, 50000, 50640, 50400);
        k.Store().WriteAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &borta, 16);
        BRect spelBorta(-5000, -5000, -4000, -4200);
        k.Store().WriteAttr("FJOLK:SpelWinNr0", B_RECT_TYPE, 0, &spelBorta, 16);
        k.StartaOm();
        QRect skarm = k.win->screen()->availableGeometry();
        BRect ram = k.win->Frame();
        QCOMPARE(ram.Width(), 640.0f);
        QCOMPARE(ram.Height(), 400.0f);
        QVERIFY(skarm.contains(QPoint(int(ram.left), int(ram.top))));
        k.Posta(kStartaSpel0);
        ram = k.win->Frame();
        QCOMPARE(ram.Width(), 1000.0f);
        QCOMPARE(ram.Height(), 800.0f);
        // At the screen's top left corner (but for the window frame's own margins).
        QVERIFY(skarm.contains(QPoint(int(ram.left), int(ram.top))));
        QVERIFY((QPoint(int(ram.left), int(ram.top)) - skarm.topLeft()).manhattanLength() <= 16);
    }

    // Moves store no frame while they come; the frame the window settles at is stored once
    // they stop.
    void ramenLagrasNarFonstretHarVilat() {
        Korning k;
        BRect forst = k.Ram("FJOLK:FirstWindow");
        // However slowly the moves come here, none of them is the last.
        k.win->SattRamVila(3600000);
        for (int i = 1; i <= 100; ++i) {
            k.win->SattFrame(BRect(100 + i, 50 + i, 740 + i, 450 + i));
            Behandla();
        }
        QVERIFY(k.win->RamVantar());
        QCOMPARE(k.Ram("FJOLK:FirstWindow"), forst);
        k.win->SattRamVila(10);
        QTRY_VERIFY_WITH_TIMEOUT(!k.win->RamVantar(), 5000);
        QCOMPARE(k.Ram("FJOLK:FirstWindow"), BRect(200, 150, 840, 550));
    }

    // While another program holds the store, "New Deal" names no place: the result waits,
    // and is entered when the game is left.
    void resultatSomVantarSagsSomDetAr() {
        Korning k;
        k.win->ValkomstVy()->spelarFalt->setText(QStringLiteral("Eva"));
        k.Posta(kStartaSpel0);
        std::string fil = k.dir.path().toStdString() + "/fjolk.db";
        sqlite3* annan = nullptr;
        QCOMPARE(sqlite3_open(fil.c_str(), &annan), SQLITE_OK);
        QCOMPARE(sqlite3_exec(annan, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
        k.Posta(kNyGiv);
        QCOMPARE(k.win->HiscorePlats(), kHiscoreVantar);
        QCOMPARE(k.win->HiInfo()->text(),
                 QStringLiteral("Your result will be saved as soon as the store is free.\n"
                                "(another program is using %1.)")
                     .arg(QString::fromStdString(fil)));
        QVERIFY(!k.Finns("FJOLK:Spel0"));
        sqlite3_exec(annan, "ROLLBACK", nullptr, nullptr, nullptr);
        sqlite3_close(annan);
        k.Posta(kStang);
        HiscoreLista tabell = k.Tabell(0);
        QCOMPARE(QByteArray(tabell[0].namn), QByteArray("Eva"));
        QCOMPARE(QByteArray(tabell[1].namn), QByteArray("Eva"));
        QCOMPARE(int(tabell[2].kort), -1);
        QVERIFY(k.win->HiscorePlats() >= 1 && k.win->HiscorePlats() <= 2);
        QCOMPARE(k.win->ValkomstVy()->hiscoreLista->currentRow(), k.win->HiscorePlats());
    }

    void bildpanelenBorjarIBildmappenSedanDarSistaBildenValdes() {
        QTemporaryDir hem;
        const QByteArray hemNu = qgetenv("HOME");
        const QByteArray configNu = qgetenv("XDG_CONFIG_HOME");
        qputenv("HOME", hem.path().toLocal8Bit());
        qputenv("XDG_CONFIG_HOME", hem.filePath(QStringLiteral(".config")).toLocal8Bit());
        auto aterstall = qScopeGuard([&] {
            qputenv("HOME", hemNu);
            qputenv("XDG_CONFIG_HOME", configNu);
        });
        // Without a pictures folder: the home folder.
        QCOMPARE(FjolkWin::StartMapp(), hem.path());
        QVERIFY(QDir(hem.path()).mkpath(QStringLiteral("Pictures")));
        QVERIFY(QDir(hem.path()).mkpath(QStringLiteral("other")));
        const QString bild = hem.filePath(QStringLiteral("other/bg.png"));
        QImage ruta(4, 4, QImage::Format_RGB32);
        ruta.fill(Qt::blue);
        QVERIFY(ruta.save(bild));

        Korning k;
        k.Posta(kValjBakgrund);
        QFileDialog* panel = k.win->FilPanel();
        QVERIFY(panel->isVisible());
        QCOMPARE(panel->directory().absolutePath(), hem.filePath(QStringLiteral("Pictures")));
        QCOMPARE(panel->nameFilters().size(), 2);
        QCOMPARE(panel->nameFilters()[0], FjolkWin::BildFilter());
        QCOMPARE(panel->nameFilters()[1], QStringLiteral("All Files (*)"));
        QCOMPARE(panel->selectedNameFilter(), FjolkWin::BildFilter());

        // The name typed, and its completion list still open when Enter chooses it.
        auto* namn = panel->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        QVERIFY(namn != nullptr);
        namn->setText(bild);
        QCompleter* komplettering = namn->completer();
        QVERIFY(komplettering != nullptr);
        komplettering->popup()->show();
        QVERIFY(komplettering->popup()->isVisible());
        QTest::keyClick(namn, Qt::Key_Return);
        Behandla();
        QVERIFY(!panel->isVisible());
        QVERIFY(!komplettering->popup()->isVisible());
        QCOMPARE(k.Vy().BakgrundsBild().pixel(0, 0), QColor(Qt::blue).rgb());

        k.Posta(kValjBakgrund);
        QFileDialog* igen = k.win->FilPanel();
        QVERIFY(igen->isVisible());
        QCOMPARE(igen->directory().absolutePath(), hem.filePath(QStringLiteral("other")));
        auto* nyttNamn = igen->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        QVERIFY(nyttNamn != nullptr);
        QCOMPARE(nyttNamn->text(), QString());
    }

    void bildfiltretHarVarjeFormatQtLaser() {
        const QString filter = FjolkWin::BildFilter();
        QVERIFY(filter.startsWith(QStringLiteral("Pictures (*.")));
        QVERIFY(filter.endsWith(QLatin1Char(')')));
        const QStringList monster = filter.mid(10, filter.size() - 11).split(QLatin1Char(' '));
        for (const QByteArray& format : QImageReader::supportedImageFormats()) {
            QVERIFY2(monster.contains(QStringLiteral("*.") + QString::fromLatin1(format)),
                     format.constData());
            QVERIFY2(monster.contains(QStringLiteral("*.") + QString::fromLatin1(format).toUpper()),
                     format.constData());
        }
        QVERIFY(monster.contains(QStringLiteral("*.png")));
        QVERIFY(monster.contains(QStringLiteral("*.jpg")));
        QCOMPARE(monster.size(), 2 * QImageReader::supportedImageFormats().size());
    }

    void fonstretHarProgrammetsIkon() {
        const QString tema = QIcon::themeName();
        const QStringList sokvagar = QIcon::themeSearchPaths();
        auto aterstall = qScopeGuard([&] {
            QIcon::setThemeSearchPaths(sokvagar);
            QIcon::setThemeName(tema);
        });
        // No theme has it: the icon built into the program, at every size.
        QTemporaryDir tomt;
        QIcon::setThemeSearchPaths({tomt.path()});
        QIcon::setThemeName(QStringLiteral("hicolor"));
        QIcon inbyggd = FjolkWin::ProgramIkon();
        QVERIFY(inbyggd.name().isEmpty());
        QCOMPARE(inbyggd.availableSizes(),
                 (QList<QSize>{QSize(16, 16), QSize(32, 32), QSize(48, 48), QSize(64, 64),
                               QSize(128, 128), QSize(256, 256)}));
        Korning k;
        QCOMPARE(k.win->windowIcon().availableSizes(), inbyggd.availableSizes());
        QImage bild = k.win->windowIcon().pixmap(QSize(48, 48)).toImage();
        QCOMPARE(bild.size(), QSize(48, 48));
        QCOMPARE(qAlpha(bild.pixel(0, 0)), 0);
        QCOMPARE(qAlpha(bild.pixel(30, 24)), 255);

        // The installed theme's icon comes first.
        QTemporaryDir tematrad;
        QDir rot(tematrad.path());
        QVERIFY(rot.mkpath(QStringLiteral("hicolor/48x48/apps")));
        QFile index(rot.filePath(QStringLiteral("hicolor/index.theme")));
        QVERIFY(index.open(QIODevice::WriteOnly));
        index.write("[Icon Theme]\nName=Hicolor\nDirectories=48x48/apps\n\n"
                    "[48x48/apps]\nSize=48\nType=Fixed\n");
        index.close();
        QImage rod(48, 48, QImage::Format_ARGB32);
        rod.fill(Qt::red);
        QVERIFY(rod.save(rot.filePath(
            QStringLiteral("hicolor/48x48/apps/io.github.fjolkspatience.FjolksPatience.png"))));
        QIcon::setThemeSearchPaths({tematrad.path()});
        QIcon::setThemeName(QStringLiteral("hicolor"));
        QIcon franTemat = FjolkWin::ProgramIkon();
        QCOMPARE(franTemat.name(), QStringLiteral("io.github.fjolkspatience.FjolksPatience"));
        QCOMPARE(franTemat.pixmap(QSize(48, 48)).toImage().pixel(24, 24), QColor(Qt::red).rgb());
    }

    void hjalpenOppnasAvDesktopenNarDenKan() {
        Korning k;
        QList<QUrl> oppnade;
        k.win->SattHjalpOppnare({[] { return QStringLiteral("/usr/bin/xdg-open"); },
                                 [&](const QUrl& url) {
                                     oppnade << url;
                                     return true;
                                 }});
        k.Posta(kHjalp);
        QCOMPARE(oppnade, QList<QUrl>{QUrl::fromLocalFile(FjolkWin::HjalpFil())});
        QVERIFY(k.win->HjalpFonster() == nullptr);
    }

    void hjalpenVisasIEgetFonsterNarDesktopenInteKan() {
        Korning k;
        int forsok = 0;
        k.win->SattHjalpOppnare({[] { return QStringLiteral("/usr/bin/xdg-open"); },
                                 [&](const QUrl&) {
                                     ++forsok;
                                     return false;
                                 }});
        k.Posta(kHjalp);
        QCOMPARE(forsok, 1);
        QTextBrowser* sida = k.win->HjalpFonster();
        QVERIFY(sida != nullptr);
        QVERIFY(sida->isVisible());
        QVERIFY(sida->isWindow());
        QCOMPARE(sida->source(), QUrl::fromLocalFile(FjolkWin::HjalpFil()));
        QVERIFY(sida->toPlainText().contains(QStringLiteral("Godnattvalsen")));
        // Asked again, the same window shows the page again.
        sida->close();
        k.Posta(kHjalp);
        QCOMPARE(k.win->HjalpFonster(), sida);
        QVERIFY(sida->isVisible());
    }

    void utanXdgOpenVisasHjalpenIEgetFonster() {
        Korning k;
        int forsok = 0;
        k.win->SattHjalpOppnare({[] { return QString(); },
                                 [&](const QUrl&) {
                                     ++forsok;
                                     return true;
                                 }});
        k.Posta(kHjalp);
        QCOMPARE(forsok, 0);
        QVERIFY(k.win->HjalpFonster() != nullptr && k.win->HjalpFonster()->isVisible());
    }

    void varforHjalpenInteOppnadesSags() {
        const QString fil = QStringLiteral("/x/Help/Help.html");
        auto svar = [](bool utfall) { return [utfall](const QUrl&) { return utfall; }; };
        auto xdg = [] { return QStringLiteral("/usr/bin/xdg-open"); };
        QCOMPARE(OppnaMedDesktopen(fil, {[] { return QString(); }, svar(true)}),
                 QStringLiteral("there is no xdg-open to open /x/Help/Help.html with"));
        QCOMPARE(OppnaMedDesktopen(fil, {xdg, svar(false)}),
                 QStringLiteral("the desktop could not open /x/Help/Help.html"));
        QCOMPARE(OppnaMedDesktopen(fil, {xdg, svar(true)}), QString());
    }

    void f1OppnarHjalpenLiksomCtrlH() {
        Korning k;
        for (QKeyCombination tangent :
             {QKeyCombination(Qt::Key_F1), QKeyCombination(Qt::ControlModifier, Qt::Key_H)}) {
            FokusINamnfaltet(k);
            QTest::keyClick(k.win->ValkomstVy()->spelarFalt, tangent.key(),
                            tangent.keyboardModifiers());
            Behandla();
        }
        QCOMPARE(k.hjalpOppnad, 2);
        QCOMPARE(k.win->ValkomstVy()->spelarFalt->text(), QStringLiteral("Guest"));
    }

    void hjalpsidanLiggerBredvidProgrammet() {
        QVERIFY(FjolkWin::HjalpFil().endsWith(QStringLiteral("/Help/Help.html")));
        // The build puts the page beside the program, one folder above the tests.
        QFile sida(QCoreApplication::applicationDirPath() + QStringLiteral("/../Help/Help.html"));
        QVERIFY(sida.open(QIODevice::ReadOnly));
        QByteArray text = sida.readAll();
        for (const char* spel : {"Idioten 1", "Idioten 2", "Godnattvalsen", "Tower of Hanoi",
                                 "Kvarnen", "Glädjespridaren", "Farfars klocka", "13-Pyramiden",
                                 "Freecell", "Eight off", "Black hole", "Strategy"})
            QVERIFY2(text.contains(spel), spel);
    }
};

QTEST_MAIN(FjolkWinTest)
#include "test_window.moc"
