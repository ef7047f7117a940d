#pragma once

#include "app/FonsterRam.h"
#include "app/Hjalpfil.h"
#include "platform/AttributeStore.h"
#include "platform/Geometry.h"

#include <QMainWindow>

#include <optional>
#include <string>
#include <utility>
#include <vector>

class FjolkView;
class Meddelande;
class QAction;
class QFileDialog;
class QMessageBox;
class StatistikDialog;
class QStackedLayout;
class QTimer;
class QTextBrowser;
class Spelhjalp;
class WelcomeView;

// The program's one window and its controller: every command from the menus, the welcome
// screen and the play view arrives here as a posted message. It starts and ends games,
// records their results, remembers its frame per game and keeps the background picture.
class FjolkWin : public QMainWindow {
public:
    FjolkWin(BRect frame, AttributeStore& store);
    ~FjolkWin() override;

    void MessageReceived(const Meddelande& message);
    bool QuitRequested();
    void FrameResized(float width, float height);
    void FrameMoved(BPoint where);
    void MenusBeginning();
    void InitSpel(int nummer, const char* namn);
    void AddHiScore(bool visa);
    // Starts game `nummer` as if it were chosen in the list, once the window is on the
    // screen: what the command line's --game does.
    void StartaSpel(int nummer);

    // The window's frame as the program stores it: left, top, and the size as
    // right − left and bottom − top.
    BRect Frame() const;
    void SattFrame(BRect frame);

    FjolkView* SpelVy() const { return spelVy; }
    WelcomeView* ValkomstVy() const { return valkomstVy; }
    QAction* AngraItem() const { return angraItem; }
    QAction* NyGivItem() const { return nyGivItem; }
    QAction* GorOmItem() const { return gorOmItem; }
    QAction* OmGivItem() const { return omGivItem; }
    QAction* GivNummerItem() const { return givNummerItem; }
    // The number of the deal on the table when it was dealt by its number.
    std::optional<unsigned> GivNummer() const { return givNummer; }
    int SpelNr() const { return spelNr; }
    int HiscorePlats() const { return hiscorePlats; }
    bool Animering() const { return animering; }
    bool VisarSpel() const { return visarSpel; }
    bool Avslutad() const { return avslutad; }
    // The open panel for the background picture; a new one each time it is opened.
    QFileDialog* FilPanel() const { return filPanel; }
    // Where the panel first opens: the user's pictures folder, or the home folder.
    static QString StartMapp();
    // The panel's filter: every picture format this Qt reads.
    static QString BildFilter();
    // The last "Hi Info" alert, while it is open.
    QMessageBox* HiInfo() const;
    // The notice that tells what the player should know of (see Notify), while it is open.
    QMessageBox* Notis() const;
    // Shows what was noted since the last look, in the notice.
    void VisaNotiser();
    // Stores the frame the window settled at, if it has not been stored yet.
    void SparaRam();
    // Whether a frame waits to be stored.
    bool RamVantar() const { return osparadRam.has_value(); }
    // How long the window must have been still before its frame is stored, in ms.
    void SattRamVila(int millisekunder);

    // The icon theme's icon of the program, or the one built into it.
    static QIcon ProgramIkon();

    // The help page beside the program.
    static QString HjalpFil();
    // Our own window with the help page, shown when the desktop cannot open it; null
    // until then.
    QTextBrowser* HjalpFonster() const { return hjalpFonster; }
    StatistikDialog* StatistikFonster() const { return statistikFonster; }
    void SattHjalpOppnare(HjalpOppnare oppnare) { hjalpOppnare = std::move(oppnare); }
    // Hint, Finish, "Can This Deal Be Won?" and the solver's options.
    Spelhjalp* Hjalp() const { return spelhjalp; }

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* mal, QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void ByggMeny();
    QAction* MenyItem(const QKeySequence& tangenter) const;
    void Posta(type_code what);
    void SattStorleksGranser(int minW, int maxW, int minH, int maxH);
    void VisaVarning(const QString& titel, const QString& text, const QString& knapp);
    void LaddaBakgrund(const QString& fil);
    void RensaBakgrund();
    void StangSpel();
    void LasSpelarNamn();
    bool LamnaOsparade();
    bool PaSkarmen() const;
    BRect PaEnSkarm(BRect ram) const;
    void VisaNotis(QStringList rader);
    void DelaUtSpel(int nummer);
    void VisaHjalp();
    QFileDialog* NyFilPanel();
    void FragaGivNummer();
    void VisaStatistikFonster();
    void FragaNollstallStatistik();
    void NollstallStatistik();
    void DelaGivNummer(const QString& text);
    void VisaSpeletsTitel();

    AttributeStore& store;
    QAction* angraItem = nullptr;
    FjolkView* spelVy = nullptr;
    int spelNr = 0;
    WelcomeView* valkomstVy = nullptr;
    QFileDialog* filPanel = nullptr;
    bool animering = true;
    QAction* nyGivItem = nullptr;
    int hiscorePlats = 0;

    QStackedLayout* lager = nullptr;
    bool visarSpel = false;
    // While the window changes between the welcome screen and a game, its interim
    // frames belong to neither and are not remembered.
    bool byterLage = false;
    bool avslutad = false;
    // The player chose to quit without the results that could not be saved.
    bool utanOsparade = false;
    // A game shown before the window was on the screen, dealt once it is.
    int vantandeSpel = -1;
    // The frame last taken and the attribute it belongs to, stored once the window has
    // settled; and the timer that waits for that.
    std::optional<std::pair<std::string, BRect>> osparadRam;
    QTimer* ramTimer = nullptr;
    QMessageBox* notis = nullptr;
    StatistikDialog* statistikFonster = nullptr;
    // The folder of the last picture chosen.
    QString bildMapp;
    HjalpOppnare hjalpOppnare = DesktopensOppnare();
    QTextBrowser* hjalpFonster = nullptr;
    // Commands that came while the game worked, posted again once it is done.
    std::vector<std::pair<type_code, QString>> vantande;
    QAction* gorOmItem = nullptr;
    QAction* omGivItem = nullptr;
    QAction* givNummerItem = nullptr;
    std::optional<unsigned> givNummer;
    Spelhjalp* spelhjalp = nullptr;
};

// The text of the "About" alert.
extern const char* const kOmText;
