#include "app/FjolkWin.h"
#include "app/FonsterRam.h"
#include "cards/Hiscore.h"
#include "cards/VantandeResultat.h"
#include "platform/AttributeStore.h"
#include "platform/Meddelande.h"
#include "welcome/WelcomeView.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QLabel>
#include <QListWidgetItem>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <sqlite3.h>

#include <ctime>
#include <filesystem>
#include <memory>
#include <string>

// Results that only this run holds (the store cannot take them and neither can the journal
// beside it) are never dropped by quitting without a word: the player is asked first.

namespace {

struct Korning {
    QTemporaryDir dir;
    std::string folder = dir.path().toStdString();
    std::unique_ptr<FjolkWin> win;
    sqlite3* annan = nullptr;

    Korning() {
        // A journal that cannot be written: what waits, waits in memory only.
        std::filesystem::create_directory(folder + "/" + VantandeResultat::kJournalNamn);
        AttributeStore::SetDataDirectory(folder);
        BRect ram = GetWindowSize(AttributeStore::Program(), BRect(0, 0, 1023, 767));
        win = std::make_unique<FjolkWin>(ram, AttributeStore::Program());
        win->ValkomstVy()->animeringsRuta->setChecked(false);
        Behandla();
    }
    ~Korning() {
        Slapp();
        win.reset();
    }
    static void Behandla() {
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();
    }
    void Posta(type_code what) {
        QCoreApplication::postEvent(win.get(), new Meddelande(what));
        Behandla();
    }
    // Another program holds the store.
    void Las() {
        QCOMPARE(sqlite3_open((folder + "/fjolk.db").c_str(), &annan), SQLITE_OK);
        QCOMPARE(sqlite3_exec(annan, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    }
    void Slapp() {
        if (annan == nullptr)
            return;
        sqlite3_exec(annan, "ROLLBACK", nullptr, nullptr, nullptr);
        sqlite3_close(annan);
        annan = nullptr;
    }
    QMessageBox* Fragan() const {
        auto* box = win->findChild<QMessageBox*>(QStringLiteral("Unsaved Results"));
        return box != nullptr && box->isVisible() ? box : nullptr;
    }
    void Svara(const char* knapp) {
        QMessageBox* box = Fragan();
        QVERIFY(box != nullptr);
        QPushButton* valt = nullptr;
        for (QAbstractButton* b : box->buttons())
            if (b->text() == QLatin1String(knapp))
                valt = qobject_cast<QPushButton*>(b);
        QVERIFY(valt != nullptr);
        valt->click();
        Behandla();
    }
    int Poster(int spelNr) {
        AttributeStore las(folder);
        HiscoreLista tabell;
        std::string namn = HiscoreAttributNamn(spelNr);
        if (las.ReadAttr(namn.c_str(), B_RAW_TYPE, 0, tabell.data(), sizeof tabell) != 1920)
            return 0;
        int antal = 0;
        for (const HighScoreTable& post : tabell)
            antal += post.kort != -1 ? 1 : 0;
        return antal;
    }
};

} // namespace

class OsparatTest : public QObject {
    Q_OBJECT

private slots:
    void avslutaFragarOchForsokIgenSparar() {
        Korning k;
        k.Posta(kStartaSpel0);
        k.Las();
        k.Posta(kAvsluta);
        QVERIFY(!k.win->Avslutad());
        QMessageBox* box = k.Fragan();
        QVERIFY(box != nullptr);
        QCOMPARE(box->text(),
                 QStringLiteral("1 result could not be saved (another program is using %1).\n"
                                "It is lost if the program ends now: choose Try Again once the "
                                "store can take it.")
                     .arg(QString::fromStdString(k.folder + "/fjolk.db")));
        // Still held: asked again, nothing ends.
        k.Svara("Try Again");
        QVERIFY(!k.win->Avslutad());
        QVERIFY(k.Fragan() != nullptr);
        QCOMPARE(k.Poster(0), 0);
        k.Slapp();
        k.Svara("Try Again");
        QVERIFY(k.win->Avslutad());
        QVERIFY(k.Fragan() == nullptr);
        QCOMPARE(k.Poster(0), 1);
        QCOMPARE(VantandeResultat::For(k.folder).Antal(), size_t(0));
    }

    void stangningsrutanVantarPaSvaret() {
        Korning k;
        k.Posta(kStartaSpel0);
        k.Las();
        k.Posta(kNyGiv);
        QCloseEvent stang;
        QCoreApplication::sendEvent(k.win.get(), &stang);
        QVERIFY(!stang.isAccepted());
        QVERIFY(!k.win->Avslutad());
        QVERIFY(k.Fragan() != nullptr);
        QVERIFY(k.Fragan()->text().startsWith(QStringLiteral("1 result could not be saved")));
        // Quitting without them is the player's choice, and only then.
        k.Svara("Quit Anyway");
        QVERIFY(k.win->Avslutad());
        k.Slapp();
        QCOMPARE(k.Poster(0), 0);
    }

    // "Reset to default" while another program holds the store: the frames stay remembered,
    // and the player is told so rather than left to find out at the next start.
    void aterstallningSomInteGickSags() {
        Korning k;
        BRect ram(10, 20, 650, 420);
        QCOMPARE(AttributeStore::Program().WriteAttr("FJOLK:SpelWinNr0", B_RECT_TYPE, 0, &ram, 16),
                 ssize_t(16));
        k.Las();
        k.Posta(kAterstall);
        k.win->VisaNotiser();
        QVERIFY(k.win->Notis() != nullptr);
        QVERIFY2(k.win->Notis()->text().contains(
                     QStringLiteral("The remembered window frames could not be forgotten "
                                    "(another program is using %1).")
                         .arg(QString::fromStdString(k.folder + "/fjolk.db"))),
                 qPrintable(k.win->Notis()->text()));
        k.Slapp();
        BRect kvar;
        QCOMPARE(AttributeStore::Program().ReadAttr("FJOLK:SpelWinNr0", B_RECT_TYPE, 0, &kvar, 16),
                 ssize_t(16));
        QCOMPARE(kvar, ram);
    }

    // Results that waited when the last run ended are entered once the window is up; the
    // welcome screen then shows the table and the statistics with them, not as they were.
    void valkomstskarmenVisarResultatSomVantade() {
        QTemporaryDir dir;
        std::string folder = dir.path().toStdString();
        AttributeStore::SetDataDirectory(folder);
        AttributeStore& store = AttributeStore::Program();
        GetWindowSize(store, BRect(0, 0, 1023, 767));
        sqlite3* annan = nullptr;
        QCOMPARE(sqlite3_open((folder + "/fjolk.db").c_str(), &annan), SQLITE_OK);
        QCOMPARE(sqlite3_exec(annan, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
        int undos = 0;
        QCOMPARE(AddHiscore(store, 0, HiscoreResultat{12, 1}, undos, "Guest", system_time(),
                            std::time(nullptr)),
                 kHiscoreVantar);
        sqlite3_exec(annan, "ROLLBACK", nullptr, nullptr, nullptr);
        sqlite3_close(annan);

        FjolkWin win(BRect(0, 0, 640, 400), store);
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();
        QCOMPARE(VantandeResultat::For(folder).Antal(), size_t(0));
        WelcomeView* valkomst = win.ValkomstVy();
        QCOMPARE(valkomst->VisatSpel(), 0);
        QVERIFY(valkomst->hiscoreRader[0] != nullptr);
        QVERIFY2(valkomst->hiscoreRader[0]->text().contains(QStringLiteral("Guest")),
                 qPrintable(valkomst->hiscoreRader[0]->text()));
        QVERIFY2(valkomst->statistikRad->text().contains(QStringLiteral("1 played")),
                 qPrintable(valkomst->statistikRad->text()));
    }

    void ingetOsparatAvslutarGenast() {
        Korning k;
        k.Posta(kStartaSpel0);
        k.Posta(kAvsluta);
        QVERIFY(k.win->Avslutad());
        QVERIFY(k.Fragan() == nullptr);
        QCOMPARE(k.Poster(0), 1);
    }
};

QTEST_MAIN(OsparatTest)
#include "test_osparat.moc"
