#include "app/FjolkWin.h"

#include "app/Bakgrund.h"
#include "app/FjolkView.h"
#include "app/Hjalpfil.h"
#include "app/Spelhjalp.h"
#include "cards/Fro.h"
#include "cards/Hiscore.h"
#include "cards/HiscoreRader.h"
#include "cards/VantandeResultat.h"
#include "games/Spelfabrik.h"
#include "platform/Meddelande.h"
#include "platform/Notices.h"
#include "platform/QtGeometry.h"
#include "welcome/StatistikDialog.h"
#include "welcome/WelcomeView.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QCompleter>
#include <QDialogButtonBox>
#include <QDir>
#include <QDirIterator>
#include <QFileDialog>
#include <QFileInfo>
#include <QIcon>
#include <QImageReader>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QScreen>
#include <QStackedLayout>
#include <QStandardPaths>
#include <QTextBrowser>
#include <QTimer>
#include <QUrl>
#include <QWindow>

#include <cstdio>
#include <cstring>
#include <optional>
#include <string>

const char* const kOmText = "         Fjolks Patience 2.0 beta\n"
                            "\n"
                            "    by the Fjolks Patience developers\n"
                            "\n"
                            " fjolkspatience@users.noreply.github.com\n"
                            "\n"
                            "           Enjoy, it's freeware!";

namespace {

constexpr int kValkomstBredd = 640;
constexpr int kValkomstHojd = 400;
// A moved or resized window has settled when this long has passed without another move.
constexpr int kRamVila = 300;
// How often the window looks for what the player should be told.
constexpr int kNotisTitt = 500;

std::string SpelRamNamn(int nummer) {
    return "FJOLK:SpelWinNr" + std::to_string(nummer);
}

} // namespace

FjolkWin::FjolkWin(BRect frame, AttributeStore& attributStore) : store(attributStore) {
    byterLage = true;
    setWindowTitle(QStringLiteral("Fjolks Patience 2.0"));
    setWindowIcon(ProgramIkon());
    animering = true;
    spelNr = 0;
    ByggMeny();

    auto* innehall = new QWidget(this);
    lager = new QStackedLayout(innehall);
    lager->setContentsMargins(0, 0, 0, 0);
    spelVy = new FjolkView(innehall);
    valkomstVy = new WelcomeView(innehall, store);
    lager->addWidget(spelVy);
    lager->addWidget(valkomstVy);
    lager->setCurrentWidget(valkomstVy);
    setCentralWidget(innehall);
    spelhjalp =
        new Spelhjalp(this, spelVy, valkomstVy, store, menuBar()->actions().front()->menu());
    spelVy->efterGest = [this] { MenusBeginning(); };
    spelVy->efterArbete = [this] {
        for (auto& [what, fil] : std::exchange(vantande, {}))
            QCoreApplication::postEvent(this, new Meddelande(what, fil));
    };

    valkomstVy->animeringsRuta->setChecked(true);
    valkomstVy->spelLista->setCurrentRow(0);
    LasSpelarNamn();

    bildMapp = StartMapp();
    filPanel = NyFilPanel();

    ramTimer = new QTimer(this);
    ramTimer->setSingleShot(true);
    ramTimer->setInterval(kRamVila);
    connect(ramTimer, &QTimer::timeout, this, [this] { SparaRam(); });
    auto* notisTimer = new QTimer(this);
    notisTimer->setInterval(kNotisTitt);
    connect(notisTimer, &QTimer::timeout, this, [this] { VisaNotiser(); });
    notisTimer->start();

    angraItem->setEnabled(false);
    nyGivItem->setEnabled(false);
    SattStorleksGranser(kValkomstBredd, kValkomstBredd, kValkomstHojd, kValkomstHojd);
    SattFrame(PaEnSkarm(frame));
    show();
    windowHandle()->installEventFilter(this);
    byterLage = false;
    if (store.InitCheck() == B_OK && !store.Problem().empty())
        Notify("Results cannot be saved now: " + store.Problem() + ".");
    // Results that waited for the store when the last run ended are entered once the
    // window is up.
    QTimer::singleShot(0, this, [this] {
        ForInVantande(store);
        if (!visarSpel) {
            valkomstVy->hiscoreLista->VisaHiscoreLista(valkomstVy->VisatSpel());
            valkomstVy->VisaStatistik();
        }
        VisaNotiser();
    });
}

FjolkWin::~FjolkWin() = default;

void FjolkWin::ByggMeny() {
    QMenuBar* menyRad = menuBar();
    menyRad->setObjectName(QStringLiteral("menu_bar"));
    QMenu* spelMeny = menyRad->addMenu(QStringLiteral("Game"));
    auto item = [this](QMenu* meny, const char* text, type_code what, QKeySequence kortkommando) {
        QAction* action = meny->addAction(QString::fromUtf8(text));
        action->setShortcut(kortkommando);
        connect(action, &QAction::triggered, this, [this, what] { Posta(what); });
        return action;
    };
    nyGivItem = item(spelMeny, "New Deal", kNyGiv, QKeySequence(Qt::CTRL | Qt::Key_D));
    omGivItem = item(spelMeny, "Restart Deal", kOmGiv, QKeySequence(Qt::Key_F5));
    givNummerItem = item(spelMeny, "Deal Number…", kFragaGivNummer, QKeySequence());
    angraItem = item(spelMeny, "Undo", kAngra, QKeySequence(Qt::CTRL | Qt::Key_Z));
    gorOmItem = item(spelMeny, "Redo", kGorOm, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z));
    gorOmItem->setShortcuts(
        {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)});
    item(spelMeny, "Close", kStang, QKeySequence(Qt::CTRL | Qt::Key_W));
    spelMeny->addSeparator();
    item(spelMeny, "Exit", kAvsluta, QKeySequence(Qt::CTRL | Qt::Key_Q));
    QMenu* hjalpMeny = menyRad->addMenu(QStringLiteral("Help"));
    QAction* hjalp = item(hjalpMeny, "Help", kHjalp, QKeySequence(Qt::CTRL | Qt::Key_H));
    // F1 as well, as on every other desktop program.
    hjalp->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_H), QKeySequence(Qt::Key_F1)});
    item(hjalpMeny, "Statistics…", kStatistik, QKeySequence());
    item(hjalpMeny, "Reset Statistics…", kFragaNollstall, QKeySequence());
    hjalpMeny->addSeparator();
    item(hjalpMeny, "About", kOm, QKeySequence(Qt::CTRL | Qt::Key_A));
    connect(spelMeny, &QMenu::aboutToShow, this, [this] { MenusBeginning(); });
    qApp->installEventFilter(this);
}

QAction* FjolkWin::MenyItem(const QKeySequence& tangenter) const {
    for (QAction* meny : menuBar()->actions())
        for (QAction* item : meny->menu()->actions())
            if (!tangenter.isEmpty() && item->shortcuts().contains(tangenter))
                return item;
    return nullptr;
}

bool FjolkWin::eventFilter(QObject* mal, QEvent* e) {
    // The game waiting for the window to come on the screen is started again, from the
    // event loop rather than from inside the window's first paint.
    if (e->type() == QEvent::Expose && vantandeSpel >= 0 && PaSkarmen()) {
        StartaSpel(std::exchange(vantandeSpel, -1));
        return false;
    }
    // The menu's keys come first wherever the focus is in this window, as they always did:
    // a control such as the name field never takes Ctrl+A or Ctrl+Z for itself, and the key
    // of a disabled item is swallowed rather than handed to the control.
    if (e->type() != QEvent::ShortcutOverride && e->type() != QEvent::KeyPress)
        return false;
    auto* widget = qobject_cast<QWidget*>(mal);
    if (widget == nullptr || widget->window() != this)
        return false;
    auto* tangent = static_cast<QKeyEvent*>(e);
    if (MenyItem(QKeySequence(tangent->keyCombination())) == nullptr)
        return false;
    // A key without Ctrl is a menu key on the table only: in the name field it types.
    if (!visarSpel && tangent->modifiers() == Qt::NoModifier)
        return false;
    // An override left unaccepted lets the item's shortcut run; a key press that arrives
    // at all belongs to an item that is disabled, and ends here.
    e->setAccepted(e->type() == QEvent::KeyPress);
    return true;
}

void FjolkWin::Posta(type_code what) {
    QCoreApplication::postEvent(this, new Meddelande(what));
}

void FjolkWin::MenusBeginning() {
    Patiens* spel = spelVy->Spel();
    // While the next deal is looked for, New Deal only starts the search over.
    Patiens* kvar = spelhjalp != nullptr && spelhjalp->SokerGiv() ? nullptr : spel;
    nyGivItem->setEnabled(spel != nullptr);
    angraItem->setEnabled(kvar != nullptr && kvar->Has_Undos());
    gorOmItem->setEnabled(kvar != nullptr && kvar->Has_Redos());
    omGivItem->setEnabled(kvar != nullptr);
    givNummerItem->setEnabled(kvar != nullptr);
    if (spelhjalp != nullptr) {
        spelhjalp->EfterDrag();
        spelhjalp->MenusBeginning();
    }
}

bool FjolkWin::event(QEvent* e) {
    if (e->type() == Meddelande::Typ()) {
        auto* m = static_cast<Meddelande*>(e);
        // A command that comes while the game works waits for the work to end.
        if (spelVy->Arbetar())
            vantande.emplace_back(m->what, m->fil);
        else
            MessageReceived(*m);
        return true;
    }
    return QMainWindow::event(e);
}

bool FjolkWin::PaSkarmen() const {
    return windowHandle() != nullptr && windowHandle()->isExposed();
}

void FjolkWin::StartaSpel(int nummer) {
    Posta(kStartaSpel0 + static_cast<type_code>(nummer));
}

void FjolkWin::DelaUtSpel(int nummer) {
    spelVy->TaEmotSpel([&] { return SkapaSpel(nummer, spelVy, spelVy->Bounds(), animering); });
}

void FjolkWin::MessageReceived(const Meddelande& message) {
    type_code what = message.what;
    if (what == kDragMeddelande)
        return;
    FjolkView::Arbete arbete(*spelVy);
    if (what == kAvsluta) {
        if (visarSpel)
            AddHiScore(false);
        spelhjalp->SpeletSlut();
        QuitRequested();
        return;
    }
    // From a press to its release the cards are the player's: commands wait.
    if (spelVy->GestPagar())
        return;
    Patiens* spel = spelVy->Spel();
    // The table shown while the next deal is looked for is the game already left.
    if (spelhjalp->SokerGiv() && (what == kOmGiv || what == kFragaGivNummer || what == kGivNummer ||
                                  what == kGorOm || what == kAngra))
        return;

    if (what == kNyGiv) {
        if (spel == nullptr)
            return;
        AddHiScore(true);
        // The new deal is laid out over the window's frame, as it always was; the next
        // resize lays it out over the view again.
        auto dela = [this](unsigned) {
            FjolkView::Arbete delar(*spelVy);
            if (Patiens* nu = spelVy->Spel()) {
                nu->NyttSpel(Frame());
                spelVy->InvalidateOffscreen();
            }
            // Dealt when a search for a winnable deal ends, after this command's refresh.
            MenusBeginning();
        };
        if (spelhjalp->BaraVinnbara())
            spelhjalp->SokVinnbarGiv(spelNr, dela);
        else
            dela(0);
        if (std::exchange(givNummer, std::nullopt))
            VisaSpeletsTitel();
    } else if (what == kOmGiv) {
        if (spel == nullptr)
            return;
        AddHiScore(true);
        spel->OmGiv(spelVy->Bounds());
        spelVy->InvalidateOffscreen();
    } else if (what == kFragaGivNummer) {
        if (spel == nullptr)
            return;
        FragaGivNummer();
    } else if (what == kGivNummer) {
        if (spel == nullptr)
            return;
        DelaGivNummer(message.fil);
    } else if (what == kGorOm) {
        if (spel == nullptr)
            return;
        spelVy->GorOchBeratta("redo", [spel] { spel->Redo(); });
        spelVy->InvalidateOffscreen();
        if (spel->KlarSpel())
            Posta(kSpelKlart);
    } else if (what == kAngra) {
        if (spel == nullptr)
            return;
        spelVy->GorOchBeratta("undo", [this, spel] {
            if (spel->Undo() == 0)
                angraItem->setEnabled(false);
        });
        spelVy->InvalidateOffscreen();
    } else if (what == kStang) {
        StangSpel();
    } else if (what >= kStartaSpel0 && what < kStartaSpel0 + kAntalSpel) {
        int nummer = static_cast<int>(what - kStartaSpel0);
        if (!SpelFinns(nummer)) {
            std::fprintf(stderr, "Fjolks Patience: %s cannot be played yet.\n", SpelNamn(nummer));
            return;
        }
        // The play view is shown first and the game dealt onto it, its flights on the
        // screen; a window not yet on the screen deals once it is.
        InitSpel(nummer, TitelNamn(nummer));
        if (!PaSkarmen())
            vantandeSpel = nummer;
        else if (spelhjalp->BaraVinnbara())
            spelhjalp->SokVinnbarGiv(nummer, [this, nummer](unsigned fro) {
                FjolkView::Arbete delar(*spelVy);
                DelaUtSpel(nummer);
                spelVy->GivAvFro(fro);
                spelVy->InvalidateOffscreen();
                MenusBeginning();
            });
        else
            DelaUtSpel(nummer);
    } else if (what == kHjalp) {
        VisaHjalp();
    } else if (what == kOm) {
        VisaVarning(QStringLiteral("About"), QString::fromUtf8(kOmText),
                    QStringLiteral("Have Fun!"));
    } else if (what == kStatistik) {
        VisaStatistikFonster();
    } else if (what == kFragaNollstall) {
        FragaNollstallStatistik();
    } else if (visarSpel) {
        return;
    } else if (what == kValjBakgrund) {
        // Each opening starts afresh: an empty name field, in the folder of the last picture.
        if (!filPanel->isVisible())
            std::exchange(filPanel, NyFilPanel())->deleteLater();
        filPanel->show();
        filPanel->raise();
    } else if (what == kBakgrundVald) {
        LaddaBakgrund(message.fil);
    } else if (what == kRensaBakgrund) {
        RensaBakgrund();
    } else if (what == kAterstall) {
        spelhjalp->Aterstall();
        RensaBakgrund();
        valkomstVy->animeringsRuta->setChecked(true);
        animering = true;
        // A frame not yet stored is forgotten with the rest.
        osparadRam.reset();
        ramTimer->stop();
        for (const char* namn : {"FJOLK:FirstWindow", "FJOLK:SpelWinNr0", "FJOLK:SpelWinNr1"}) {
            status_t status = store.RemoveAttr(namn);
            if (status != B_OK && status != B_ENTRY_NOT_FOUND)
                Notify("The remembered window frames could not be forgotten (" + store.Problem() +
                       ").");
        }
        store.Sync();
    } else if (what == kAnimering) {
        animering = valkomstVy->animeringsRuta->isChecked();
    }
    MenusBeginning();
}

void FjolkWin::StangSpel() {
    if (!visarSpel) {
        // Closing the welcome screen quits.
        SattStorleksGranser(kValkomstBredd, kValkomstBredd, kValkomstHojd, kValkomstHojd);
        Posta(kAvsluta);
        return;
    }
    AddHiScore(false);
    spelhjalp->SpeletSlut();
    SparaRam();
    byterLage = true;
    spelVy->TaSpel();
    vantandeSpel = -1;
    visarSpel = false;
    // The list chooses the game whose table is shown, however that game was started.
    valkomstVy->spelLista->setCurrentRow(spelNr);
    valkomstVy->hiscoreLista->VisaHiscoreLista(spelNr);
    if (hiscorePlats >= 1 && hiscorePlats <= 39)
        valkomstVy->hiscoreLista->setCurrentRow(hiscorePlats);
    BRect ram = PaEnSkarm(LasRam(store, "FJOLK:FirstWindow").value_or(Frame()));
    SattStorleksGranser(kValkomstBredd, kValkomstBredd, kValkomstHojd, kValkomstHojd);
    SattFrame(BRect(ram.left, ram.top, ram.left + kValkomstBredd, ram.top + kValkomstHojd));
    setWindowTitle(QStringLiteral("Fjolks Patience 2.0"));
    lager->setCurrentWidget(valkomstVy);
    byterLage = false;
    MenusBeginning();
}

void FjolkWin::InitSpel(int nummer, const char* namn) {
    SparaRam();
    byterLage = true;
    if (!visarSpel) {
        lager->setCurrentWidget(spelVy);
        visarSpel = true;
    }
    spelVy->TaSpel();
    vantandeSpel = -1;
    spelNr = nummer;
    std::string spelare = KortaUtf8(valkomstVy->spelarFalt->text(), 19);
    std::memset(spelVy->spelarNamn, 0, sizeof spelVy->spelarNamn);
    std::memcpy(spelVy->spelarNamn, spelare.data(), spelare.size());
    SattStorleksGranser(100, 1280, 100, 1024);
    SattFrame(PaEnSkarm(LasRam(store, SpelRamNamn(nummer).c_str()).value_or(Frame())));
    setWindowTitle(QStringLiteral("Fjolks Patience - %1").arg(QString::fromUtf8(namn)));
    givNummer.reset();
    byterLage = false;
}

void FjolkWin::VisaSpeletsTitel() {
    QString titel =
        QStringLiteral("Fjolks Patience - %1").arg(QString::fromUtf8(TitelNamn(spelNr)));
    if (givNummer)
        titel += QStringLiteral(" #%1").arg(*givNummer);
    setWindowTitle(titel);
}

void FjolkWin::FragaGivNummer() {
    auto* dialog = new QInputDialog(this);
    dialog->setObjectName(QStringLiteral("Deal Number"));
    dialog->setWindowTitle(QStringLiteral("Deal Number"));
    dialog->setInputMode(QInputDialog::TextInput);
    dialog->setLabelText(QStringLiteral("Deal number, from 0 to 4294967295:"));
    dialog->setTextValue(givNummer ? QString::number(*givNummer) : QString());
    if (auto* falt = dialog->findChild<QLineEdit*>())
        falt->setValidator(new QRegularExpressionValidator(
            QRegularExpression(QStringLiteral("[0-9]{1,10}")), falt));

    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::WindowModal);
    connect(dialog, &QInputDialog::textValueSelected, this, [this](const QString& text) {
        QCoreApplication::postEvent(this, new Meddelande(kGivNummer, text));
    });
    dialog->show();
    // OK only for a deal's number: not for nothing, nor for one past the last deal.
    if (auto* knappar = dialog->findChild<QDialogButtonBox*>())
        if (QPushButton* ok = knappar->button(QDialogButtonBox::Ok)) {
            auto folj = [ok](const QString& text) {
                bool nummer = false;
                text.toUInt(&nummer);
                ok->setEnabled(nummer);
            };
            connect(dialog, &QInputDialog::textValueChanged, ok, folj);
            folj(dialog->textValue());
        }
}

void FjolkWin::VisaStatistikFonster() {
    if (statistikFonster == nullptr)
        statistikFonster = new StatistikDialog(this, store);
    statistikFonster->Las();
    statistikFonster->show();
    statistikFonster->raise();
}

void FjolkWin::FragaNollstallStatistik() {
    auto* fraga = new QMessageBox(QMessageBox::Question, QStringLiteral("Reset Statistics"),
                                  QStringLiteral("Clear the statistics of every game and every "
                                                 "player? The hiscores are kept."),
                                  QMessageBox::NoButton, this);
    fraga->setObjectName(QStringLiteral("Reset Statistics"));
    QPushButton* ja = fraga->addButton(QStringLiteral("Reset"), QMessageBox::AcceptRole);
    QPushButton* nej = fraga->addButton(QStringLiteral("Cancel"), QMessageBox::RejectRole);
    fraga->setDefaultButton(nej);
    fraga->setEscapeButton(nej);
    fraga->setAttribute(Qt::WA_DeleteOnClose);
    fraga->setWindowModality(Qt::WindowModal);
    connect(ja, &QPushButton::clicked, this, [this] { NollstallStatistik(); });
    fraga->show();
}

void FjolkWin::NollstallStatistik() {
    // Results waiting for the store belong to the statistics being cleared.
    ForInVantande(store);
    if (store.ClearStatistics() != B_OK)
        VisaVarning(QStringLiteral("Reset Statistics"),
                    QStringLiteral("The statistics could not be cleared (%1).")
                        .arg(QString::fromStdString(store.Problem())),
                    QStringLiteral("OK"));
    valkomstVy->VisaStatistik();
    if (statistikFonster != nullptr)
        statistikFonster->Las();
}

void FjolkWin::DelaGivNummer(const QString& text) {
    bool ok = false;
    unsigned nummer = text.trimmed().toUInt(&ok);
    if (!ok) {
        VisaVarning(QStringLiteral("Deal Number"),
                    QStringLiteral("\"%1\" is not a deal's number: give a whole number from 0 "
                                   "to 4294967295.")
                        .arg(text),
                    QStringLiteral("OK"));
        return;
    }
    Patiens* spel = spelVy->Spel();
    AddHiScore(true);
    // Dealt over the view, as the first deal of a game is.
    MedFro(nummer, [&] { spel->NyttSpel(spelVy->Bounds()); });
    spelVy->InvalidateOffscreen();
    givNummer = nummer;
    VisaSpeletsTitel();
}

void FjolkWin::AddHiScore(bool visa) {
    Patiens* spel = spelVy->Spel();
    // A game whose next deal is being looked for was recorded when it was left.
    if (spel == nullptr || spelhjalp->SokerGiv())
        return;
    hiscorePlats = spel->AddHiscore();
    // The statistics window, left open beside the game, counts the result too.
    if (statistikFonster != nullptr && statistikFonster->isVisible())
        statistikFonster->Las();
    if (!visa) {
        // Left silently as always, but a result that waits is not kept from the player.
        if (hiscorePlats == kHiscoreVantar)
            Notify("your result will be saved as soon as the store is free (" + store.Problem() +
                   ").");
        return;
    }
    QString text = QString::fromStdString(HiscoreMeddelande(hiscorePlats));
    // A result that waits says why.
    if (hiscorePlats == kHiscoreVantar && !store.Problem().empty())
        text += QStringLiteral("\n(%1.)").arg(QString::fromStdString(store.Problem()));
    VisaVarning(QStringLiteral("Hi Info"), text, QStringLiteral("OK"));
    spelVy->Meddela(text.toStdString());
}

void FjolkWin::VisaVarning(const QString& titel, const QString& text, const QString& knapp) {
    auto* varning = new QMessageBox(QMessageBox::NoIcon, titel, text, QMessageBox::NoButton, this);
    varning->setObjectName(titel);
    QPushButton* ok = varning->addButton(knapp, QMessageBox::AcceptRole);
    varning->setEscapeButton(ok);
    varning->setDefaultButton(ok);
    varning->setModal(false);
    varning->setAttribute(Qt::WA_DeleteOnClose);
    varning->show();
}

QMessageBox* FjolkWin::Notis() const {
    return notis != nullptr && notis->isVisible() ? notis : nullptr;
}

void FjolkWin::VisaNotiser() {
    QStringList rader;
    for (const std::string& text : TakeNotices())
        rader << QString::fromStdString(text);
    VisaNotis(rader);
}

void FjolkWin::VisaNotis(QStringList rader) {
    if (rader.isEmpty())
        return;
    for (QString& rad : rader)
        if (!rad.isEmpty())
            rad[0] = rad[0].toUpper();
    if (notis == nullptr || !notis->isVisible()) {
        delete notis;
        notis = new QMessageBox(QMessageBox::Information, QStringLiteral("Notice"),
                                rader.join(QLatin1Char('\n')), QMessageBox::NoButton, this);
        notis->setObjectName(QStringLiteral("Notice"));
        QPushButton* ok = notis->addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
        notis->setEscapeButton(ok);
        notis->setDefaultButton(ok);
        notis->setModal(false);
        notis->show();
    } else {
        notis->setText(notis->text() + QLatin1Char('\n') + rader.join(QLatin1Char('\n')));
    }
}

QMessageBox* FjolkWin::HiInfo() const {
    QMessageBox* senaste = nullptr;
    for (QMessageBox* box : findChildren<QMessageBox*>(QStringLiteral("Hi Info")))
        if (box->isVisible())
            senaste = box;
    return senaste;
}

bool FjolkWin::QuitRequested() {
    SparaRam();
    if (!ForInVantande(store) && !LamnaOsparade())
        return false;
    std::string namn = KortaUtf8(valkomstVy->spelarFalt->text(), 19);
    char buffer[20];
    std::memset(buffer, ' ', 19);
    std::memcpy(buffer, namn.data(), namn.size());
    buffer[19] = '\0';
    if (store.InitCheck() == B_OK) {
        store.WriteAttr("FJOLK:PlayerName", B_RAW_TYPE, 0, buffer, sizeof buffer);
        store.Sync();
    }
    avslutad = true;
    QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    return true;
}

// Results that only this run holds (neither the store nor the journal took them) end
// with it: the player chooses, and may free the store first.
bool FjolkWin::LamnaOsparade() {
    size_t kvar = VantandeResultat::For(store.DataDirectory()).BaraIMinnet();
    if (kvar == 0)
        return true;
    if (utanOsparade) {
        std::fprintf(stderr, "Fjolks Patience: %zu results could not be saved (%s).\n", kvar,
                     store.Problem().c_str());
        return true;
    }
    auto* fraga = new QMessageBox(
        QMessageBox::Warning, QStringLiteral("Unsaved Results"),
        QStringLiteral("%1 %2 could not be saved (%3).\n%4 lost if the program ends now: "
                       "choose Try Again once the store can take %5.")
            .arg(kvar)
            .arg(kvar == 1 ? QStringLiteral("result") : QStringLiteral("results"))
            .arg(QString::fromStdString(store.Problem()))
            .arg(kvar == 1 ? QStringLiteral("It is") : QStringLiteral("They are"))
            .arg(kvar == 1 ? QStringLiteral("it") : QStringLiteral("them")),
        QMessageBox::NoButton, this);
    fraga->setObjectName(QStringLiteral("Unsaved Results"));
    QPushButton* igen = fraga->addButton(QStringLiteral("Try Again"), QMessageBox::AcceptRole);
    QPushButton* utan = fraga->addButton(QStringLiteral("Quit Anyway"), QMessageBox::RejectRole);
    fraga->setDefaultButton(igen);
    fraga->setEscapeButton(igen);
    fraga->setAttribute(Qt::WA_DeleteOnClose);
    fraga->setWindowModality(Qt::WindowModal);
    connect(fraga, &QMessageBox::buttonClicked, this, [this, utan](QAbstractButton* knapp) {
        utanOsparade = knapp == utan;
        QMetaObject::invokeMethod(
            this, [this] { QuitRequested(); }, Qt::QueuedConnection);
    });
    fraga->show();
    return false;
}

void FjolkWin::LasSpelarNamn() {
    if (store.InitCheck() != B_OK)
        return;
    char buffer[21] = {};
    // The field shows the name, not the blanks it is stored padded with.
    if (store.ReadAttr("FJOLK:PlayerName", B_RAW_TYPE, 0, buffer, 20) == 20)
        valkomstVy->spelarFalt->setText(QString::fromStdString(RentNamn(buffer, 20)));
}

BRect FjolkWin::Frame() const {
    QRect g = geometry();
    return BRect(static_cast<float>(g.x()), static_cast<float>(g.y()),
                 static_cast<float>(g.x() + g.width()), static_cast<float>(g.y() + g.height()));
}

void FjolkWin::SattFrame(BRect frame) {
    int w = static_cast<int>(frame.Width());
    int h = static_cast<int>(frame.Height());
    w = std::clamp(w, minimumWidth(), maximumWidth());
    h = std::clamp(h, minimumHeight(), maximumHeight());
    setGeometry(static_cast<int>(frame.left), static_cast<int>(frame.top), w, h);
}

void FjolkWin::SattStorleksGranser(int minW, int maxW, int minH, int maxH) {
    setMinimumSize(minW, minH);
    setMaximumSize(maxW, maxH);
}

// The frame is taken at once and stored once the window has settled: a drag makes many
// moves, and none of them waits for the store.
void FjolkWin::FrameMoved(BPoint) {
    if (byterLage)
        return;
    std::string namn = visarSpel ? SpelRamNamn(spelNr) : std::string("FJOLK:FirstWindow");
    if (osparadRam && osparadRam->first != namn)
        SparaRam();
    osparadRam = std::make_pair(namn, Frame());
    ramTimer->start();
}

void FjolkWin::SattRamVila(int millisekunder) {
    ramTimer->setInterval(millisekunder);
    if (ramTimer->isActive())
        ramTimer->start();
}

void FjolkWin::SparaRam() {
    ramTimer->stop();
    if (!osparadRam)
        return;
    auto [namn, ram] = *std::exchange(osparadRam, std::nullopt);
    // A frame is not worth a wait: one the store cannot take now is tried again later.
    int vantan = store.Wait();
    store.SetWait(0);
    ssize_t skrivet = store.WriteAttr(namn.c_str(), B_RECT_TYPE, 0, &ram, sizeof ram);
    store.SetWait(vantan);
    if (skrivet == B_BUSY && !avslutad) {
        osparadRam = std::make_pair(namn, ram);
        ramTimer->start();
    }
}

// A stored frame on no screen (a monitor unplugged since) comes onto the nearest one, its
// size as it was.
BRect FjolkWin::PaEnSkarm(BRect ram) const {
    std::vector<BRect> skarmar;
    for (QScreen* skarm : QGuiApplication::screens())
        skarmar.push_back(ToBRect(skarm->availableGeometry()));
    return FlyttaPaSkarm(ram, skarmar);
}

void FjolkWin::FrameResized(float, float) {
    FrameMoved(BPoint(0, 0));
}

void FjolkWin::moveEvent(QMoveEvent* e) {
    QMainWindow::moveEvent(e);
    FrameMoved(BPoint(0, 0));
}

void FjolkWin::resizeEvent(QResizeEvent* e) {
    QMainWindow::resizeEvent(e);
    FrameResized(static_cast<float>(width()), static_cast<float>(height()));
}

void FjolkWin::closeEvent(QCloseEvent* e) {
    // The close box quits at once and records nothing.
    if (!avslutad) {
        spelhjalp->SpeletSlut();
        if (!QuitRequested()) {
            e->ignore();
            return;
        }
    }
    e->accept();
}

QFileDialog* FjolkWin::NyFilPanel() {
    auto* panel = new QFileDialog(this, QStringLiteral("Choose Background"), bildMapp);
    panel->setFileMode(QFileDialog::ExistingFile);
    panel->setModal(false);
    panel->setNameFilters({BildFilter(), QStringLiteral("All Files (*)")});
    connect(panel, &QFileDialog::fileSelected, this, [this](const QString& fil) {
        bildMapp = QFileInfo(fil).absolutePath();
        QCoreApplication::postEvent(this, new Meddelande(kBakgrundVald, fil));
    });
    // The name field's completion list is a window of its own and would stay over ours.
    connect(panel, &QDialog::finished, panel, [panel] {
        for (QCompleter* komplettering : panel->findChildren<QCompleter*>())
            if (komplettering->popup() != nullptr)
                komplettering->popup()->hide();
    });
    return panel;
}

QString FjolkWin::StartMapp() {
    QString bilder = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    return !bilder.isEmpty() && QFileInfo(bilder).isDir() ? bilder : QDir::homePath();
}

QString FjolkWin::BildFilter() {
    QStringList monster;
    for (const QByteArray& format : QImageReader::supportedImageFormats()) {
        QString andelse = QString::fromLatin1(format).toLower();
        // Names are told apart by case here; cameras write .JPG.
        monster << QStringLiteral("*.") + andelse << QStringLiteral("*.") + andelse.toUpper();
    }
    return QStringLiteral("Pictures (%1)").arg(monster.join(QLatin1Char(' ')));
}

void FjolkWin::LaddaBakgrund(const QString& fil) {
    RensaBakgrund();
    QSize skarm = screen() != nullptr ? screen()->size() : QSize(1280, 1024);
    std::string fel;
    QImage bild = LasBakgrundsBild(fil, BakgrundsStorlek(skarm), &fel);
    if (bild.isNull()) {
        // Told each time: the player chose it just now.
        std::fprintf(stderr, "Fjolks Patience: %s\n", fel.c_str());
        VisaNotis({QString::fromStdString(fel)});
        return;
    }
    spelVy->SattBakgrundsBild(bild);
    valkomstVy->SetViewBitmap(bild);
}

void FjolkWin::RensaBakgrund() {
    spelVy->RensaBakgrundsBild();
    valkomstVy->SetViewBitmap(QImage());
}

void FjolkWin::VisaHjalp() {
    QString fil = HjalpFil();
    if (!QFileInfo::exists(fil))
        return;
    QString varfor = OppnaMedDesktopen(fil, hjalpOppnare);
    if (varfor.isEmpty())
        return;
    std::fprintf(stderr, "Fjolks Patience: %s; the help page is shown in a window of our own.\n",
                 qPrintable(varfor));
    if (hjalpFonster == nullptr) {
        hjalpFonster = new QTextBrowser(this);
        hjalpFonster->setWindowFlag(Qt::Window);
        hjalpFonster->setObjectName(QStringLiteral("Help"));
        hjalpFonster->setWindowTitle(QStringLiteral("Fjolks Patience Help"));
        hjalpFonster->setOpenExternalLinks(true);
        hjalpFonster->resize(700, 600);
    }
    hjalpFonster->setSource(QUrl::fromLocalFile(fil));
    hjalpFonster->show();
    hjalpFonster->raise();
    hjalpFonster->activateWindow();
}

QIcon FjolkWin::ProgramIkon() {
    QIcon inbyggd;
    QDirIterator storlekar(QStringLiteral(":/icons"), {QStringLiteral("*.png")}, QDir::Files,
                           QDirIterator::Subdirectories);
    while (storlekar.hasNext())
        inbyggd.addFile(storlekar.next());
    return QIcon::fromTheme(QStringLiteral(FJOLK_APP_ID), inbyggd);
}

QString FjolkWin::HjalpFil() {
    return HittaHjalpFil(QCoreApplication::applicationDirPath());
}
