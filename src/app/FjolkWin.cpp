#include "app/FjolkWin.h"

#include "app/FjolkView.h"
#include "app/Hjalpfil.h"
#include "app/Spelhjalp.h"
#include "cards/Hiscore.h"
#include "games/Spelfabrik.h"
#include "platform/Meddelande.h"
#include "platform/QtGeometry.h"
#include "welcome/WelcomeView.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QCompleter>
#include <QDir>
#include <QDirIterator>
#include <QFileDialog>
#include <QFileInfo>
#include <QIcon>
#include <QImageReader>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QStackedLayout>
#include <QStandardPaths>
#include <QTextBrowser>
#include <QUrl>
#include <QWindow>

#include <cstdio>
#include <cstring>
#include <optional>
#include <string>

const char* const kOmText = "\n"
                            "            Fjolks Patience 2.0 beta\n"
                            "\n"
                            "       Twelve patiences, dealt by hand\n"
                            "\n"
                            "     by the Fjolks Patience developers\n"
                            "\n"
                            "           Enjoy, it's freeware!\n";

namespace {

constexpr int kValkomstBredd = 640;
constexpr int kValkomstHojd = 400;

std::string SpelRamNamn(int nummer) {
    return "FJOLK:SpelWinNr" + std::to_string(nummer);
}

// A UTF-8 text cut to at most `max` bytes without splitting a character.
std::string KortaUtf8(const QString& text, size_t max) {
    QByteArray bytes = text.toUtf8();
    size_t n = std::min(static_cast<size_t>(bytes.size()), max);
    while (n > 0 && n < static_cast<size_t>(bytes.size()) &&
           (static_cast<unsigned char>(bytes[static_cast<int>(n)]) & 0xC0) == 0x80)
        --n;
    return std::string(bytes.constData(), n);
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

    angraItem->setEnabled(false);
    nyGivItem->setEnabled(false);
    SattStorleksGranser(kValkomstBredd, kValkomstBredd, kValkomstHojd, kValkomstHojd);
    SattFrame(frame);
    show();
    windowHandle()->installEventFilter(this);
    byterLage = false;
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
    angraItem = item(spelMeny, "Undo", kAngra, QKeySequence(Qt::CTRL | Qt::Key_Z));
    item(spelMeny, "Close", kStang, QKeySequence(Qt::CTRL | Qt::Key_W));
    spelMeny->addSeparator();
    item(spelMeny, "Exit", kAvsluta, QKeySequence(Qt::CTRL | Qt::Key_Q));
    QMenu* hjalpMeny = menyRad->addMenu(QStringLiteral("Help"));
    QAction* hjalp = item(hjalpMeny, "Help", kHjalp, QKeySequence(Qt::CTRL | Qt::Key_H));
    // F1 as well, as on every other desktop program.
    hjalp->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_H), QKeySequence(Qt::Key_F1)});
    item(hjalpMeny, "About", kOm, QKeySequence(Qt::CTRL | Qt::Key_A));
    connect(spelMeny, &QMenu::aboutToShow, this, [this] { MenusBeginning(); });
    qApp->installEventFilter(this);
}

QAction* FjolkWin::MenyItem(const QKeySequence& tangenter) const {
    for (QAction* meny : menuBar()->actions())
        for (QAction* item : meny->menu()->actions())
            if (item->shortcuts().contains(tangenter))
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
    nyGivItem->setEnabled(spel != nullptr);
    angraItem->setEnabled(spel != nullptr && spel->Has_Undos());
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
        spelhjalp->SpeletSlut();
        if (visarSpel)
            AddHiScore(false);
        QuitRequested();
        return;
    }
    // From a press to its release the cards are the player's: commands wait.
    if (spelVy->GestPagar())
        return;
    Patiens* spel = spelVy->Spel();

    if (what == kNyGiv) {
        if (spel == nullptr)
            return;
        AddHiScore(true);
        // The new deal is laid out over the window's frame, as it always was; the next
        // resize lays it out over the view again.
        auto dela = [this] {
            FjolkView::Arbete delar(*spelVy);
            if (Patiens* nu = spelVy->Spel()) {
                nu->NyttSpel(Frame());
                spelVy->InvalidateOffscreen();
            }
        };
        if (spelhjalp->BaraVinnbara())
            spelhjalp->SokVinnbarGiv(spelNr, dela);
        else
            dela();
    } else if (what == kAngra) {
        if (spel == nullptr)
            return;
        if (spel->Undo() == 0)
            angraItem->setEnabled(false);
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
            spelhjalp->SokVinnbarGiv(nummer, [this, nummer] {
                FjolkView::Arbete delar(*spelVy);
                DelaUtSpel(nummer);
            });
        else
            DelaUtSpel(nummer);
    } else if (what == kHjalp) {
        VisaHjalp();
    } else if (what == kOm) {
        VisaVarning(QStringLiteral("About"), QString::fromUtf8(kOmText),
                    QStringLiteral("Have Fun!"));
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
        for (const char* namn : {"FJOLK:FirstWindow", "FJOLK:SpelWinNr0", "FJOLK:SpelWinNr1"})
            store.RemoveAttr(namn);
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
    byterLage = true;
    spelhjalp->SpeletSlut();
    AddHiScore(false);
    spelVy->TaSpel();
    vantandeSpel = -1;
    visarSpel = false;
    // The list chooses the game whose table is shown, however that game was started.
    valkomstVy->spelLista->setCurrentRow(spelNr);
    valkomstVy->hiscoreLista->VisaHiscoreLista(spelNr);
    if (hiscorePlats <= 39)
        valkomstVy->hiscoreLista->setCurrentRow(hiscorePlats);
    BRect ram = LasRam(store, "FJOLK:FirstWindow").value_or(Frame());
    SattStorleksGranser(kValkomstBredd, kValkomstBredd, kValkomstHojd, kValkomstHojd);
    SattFrame(BRect(ram.left, ram.top, ram.left + kValkomstBredd, ram.top + kValkomstHojd));
    setWindowTitle(QStringLiteral("Fjolks Patience 2.0"));
    lager->setCurrentWidget(valkomstVy);
    byterLage = false;
    MenusBeginning();
}

void FjolkWin::InitSpel(int nummer, const char* namn) {
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
    SattFrame(LasRam(store, SpelRamNamn(nummer).c_str()).value_or(Frame()));
    setWindowTitle(QStringLiteral("Fjolks Patience - %1").arg(QString::fromUtf8(namn)));
    byterLage = false;
}

void FjolkWin::AddHiScore(bool visa) {
    Patiens* spel = spelVy->Spel();
    if (spel == nullptr)
        return;
    hiscorePlats = spel->AddHiscore();
    if (visa)
        VisaVarning(QStringLiteral("Hi Info"),
                    QString::fromStdString(HiscoreMeddelande(hiscorePlats)), QStringLiteral("OK"));
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

QMessageBox* FjolkWin::HiInfo() const {
    QMessageBox* senaste = nullptr;
    for (QMessageBox* box : findChildren<QMessageBox*>(QStringLiteral("Hi Info")))
        if (box->isVisible())
            senaste = box;
    return senaste;
}

bool FjolkWin::QuitRequested() {
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

void FjolkWin::LasSpelarNamn() {
    if (store.InitCheck() != B_OK)
        return;
    char buffer[21] = {};
    if (store.ReadAttr("FJOLK:PlayerName", B_RAW_TYPE, 0, buffer, 20) == 20)
        valkomstVy->spelarFalt->setText(
            QString::fromUtf8(buffer, static_cast<int>(strnlen(buffer, 20))));
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

void FjolkWin::FrameMoved(BPoint) {
    if (byterLage)
        return;
    BRect ram = Frame();
    std::string namn = visarSpel ? SpelRamNamn(spelNr) : std::string("FJOLK:FirstWindow");
    store.WriteAttr(namn.c_str(), B_RECT_TYPE, 0, &ram, sizeof ram);
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
    spelhjalp->SpeletSlut();
    QuitRequested();
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
    QImageReader lasare(fil);
    QImage bild = lasare.read();
    if (bild.isNull()) {
        std::fprintf(stderr, "Fjolks Patience: %s is not a picture I can read (%s).\n",
                     qPrintable(fil), qPrintable(lasare.errorString()));
        return;
    }
    bild = bild.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < bild.height(); ++y) {
        auto* rad = reinterpret_cast<QRgb*>(bild.scanLine(y));
        for (int x = 0; x < bild.width(); ++x)
            rad[x] |= 0xff000000u;
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
