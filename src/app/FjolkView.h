#pragma once

#include "cards/Hogar.h"
#include "cards/KortSpel.h"
#include "cards/SpelYta.h"
#include "platform/Geometry.h"

#include <QImage>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <string>

class DragFonster;
class Tangentbord;

// The play area: owns the game being played, composes the table in an off-screen frame
// (background copy, then the game's drawing) and shows only what changed, and turns the
// mouse into the game's operations.
//
// A press is a click or a drag only once the pointer has told: a release inside the
// game's click square is a click, the first move out of it a drag. Only then does the
// press reach the game, so no nested event loop waits for the mouse.
//
// While the game works (deals, flies cards, answers a gesture or a command) the screen
// stays alive: each step it puts on the screen lets the other windows paint. Input waits
// in the window system's queue meanwhile, and a command that arrives is held by the window
// until the work is over, so nothing reaches the game or the window's handler twice.
class FjolkView : public QWidget, public SpelYta {
    enum class Gest { Ingen, Tryckt, Drag };

public:
    explicit FjolkView(QWidget* parent = nullptr);
    ~FjolkView() override;

    // The largest table, in view units: both buffers have this size, in as many device
    // pixels as the screen gives a unit, and are made anew only for another ratio.
    static constexpr int kMaxBredd = 1280;
    static constexpr int kMaxHojd = 1024;
    // The alpha of every visible pixel of the dragged cards.
    static constexpr int kDragAlfa = 200;

    // Marks the game at work for as long as it lives; the last one to end lets what waited
    // for the work happen.
    class Arbete {
    public:
        explicit Arbete(FjolkView& view);
        ~Arbete();
        Arbete(const Arbete&) = delete;
        Arbete& operator=(const Arbete&) = delete;

    private:
        FjolkView& vy;
    };
    bool Arbetar() const { return arbete > 0; }

    void SattSpel(std::unique_ptr<Patiens> nytt);
    std::unique_ptr<Patiens> TaSpel();
    Patiens* Spel() const { return spel.get(); }
    // Makes the game just made under random numbers seeded by `fro` show the deal of `fro`:
    // most games dealt it as they were made; one whose first deal is not shuffled deals again.
    void GivAvFro(unsigned fro);
    // Builds a game on this view with `skapa`, which deals it on the table as it is made,
    // and keeps it.
    void TaEmotSpel(const std::function<std::unique_ptr<Patiens>()>& skapa);
    // The game on the table: the view's own, or the one being dealt while it is made.
    const Patiens* SpeletPaBordet() const { return spel ? spel.get() : givs; }

    BRect Bounds() const override;
    void InvalidateOffscreen() override;
    // Composes the off-screen frame from the background and `game`'s drawing.
    void Komponera(Patiens& game);
    void RitaOm(Patiens& game) override;
    const char* SpelarNamn() const override { return spelarNamn; }
    // From a press until its release the mouse belongs to the table: commands wait.
    bool GestPagar() const { return gest != Gest::Ingen || drar; }
    void Klart();
    static void GorHalvTransparant(QImage& bitmap);

    // The mouse as the game asks for it while it handles a gesture: the position, and
    // the buttons (1 while a drag is under way, 0 for a click or a release).
    void GetMouse(BPoint* where, uint32_t* buttons) const override;

    // Drawing access for the games and the animations. The frame is made when it is first
    // drawn on, when a game is shown: the welcome screen never needs it.
    QImage& OffBitmap() override { return Ram(); }
    bool HarRam() const { return !offBitmap.isNull(); }
    const QImage& BackBitmap() const { return backBitmap; }
    // Copies the background over `rect` of the off-screen frame.
    void RitaBakgrund(BRect rect) override;
    // Puts `rect` of the off-screen frame on the screen now.
    void VisaNu(BRect rect) override;

    // The device pixels to a view unit of the frame, the background buffer and the card
    // faces: the ratio of the screen the view is on, followed whenever the view is shown on
    // one with another (once the game's work is over).
    qreal PixelKvot() const { return kvot; }
    // Makes the buffers and the cards anew at `nyKvot` and composes the table in them: for a
    // picture of the table with more pixels than the screen has, on a view never shown.
    void SattPixelKvot(qreal nyKvot);

    void SattBakgrundsBild(const QImage& bild);
    void RensaBakgrundsBild();
    const QImage& BakgrundsBild() const { return bakgrundsBild; }

    // Told after every completed gesture, so the window's menus follow the table.
    std::function<void()> efterGest;
    // Told when the game's work is over, so what waited for it can happen.
    std::function<void()> efterArbete;

    // The window that shows the dragged cards, while they are dragged.
    const DragFonster* DragBild() const { return dragFonster; }

    bool drar = false;
    char spelarNamn[20] = "Guest";
    bool tryckSparr = false;

    // The keyboard's hand, through the same press and release the mouse makes: a click at
    // `p`; cards taken at `p` (false when nothing was), carried so that the pointer is at
    // `q`, and let go there; or put back where they lay.
    void KlickaVid(BPoint p);
    bool LyftVid(BPoint p);
    void BarTill(BPoint q);
    void SlappVid(BPoint q);
    void LaggTillbaka();
    // The keyboard's places and focus, as they are now.
    Tangentbord& Tangenterna();
    // Tells a screen reader `text`, while one listens; the last one told.
    // `nyPlats`: the text is the name of the place the frame has come to, now the focus;
    // else it tells what was done.
    void Meddela(const std::string& text, bool nyPlats = false);
    const std::string& Meddelat() const { return meddelat; }
    // Does `gor` (an undo, a redo) and tells a screen reader what it did to the table, after
    // `vad`: "undo: seven of clubs from foundation 2 to column 3".
    void GorOchBeratta(const std::string& vad, const std::function<void()>& gor);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void MouseDown(BPoint where);
    void MouseUp(BPoint where);
    void Slapp(BPoint slapp);
    void ArbeteKlart();
    void OmRakna();
    void FyllBakgrund();
    void FoljSkarmen();
    QImage Buffert() const;
    QImage& Ram();
    // Puts the background, picture or plain green, under `yta` of the frame.
    void LaggBakgrund(QPainter& p, const QRect& yta);
    QPoint DragHorn() const;

    std::unique_ptr<Patiens> spel;
    const Patiens* givs = nullptr;
    bool tarEmot = false;
    qreal kvot;
    QImage offBitmap;
    QImage backBitmap;
    QImage bakgrundsBild;

    Gest gest = Gest::Ingen;
    Qt::MouseButton gestKnapp = Qt::LeftButton;
    BPoint tryckPunkt;
    BPoint musPunkt;
    uint32_t musKnappar = 0;

    int arbete = 0;
    // A resize, a new screen or a release that came while the game worked, to be dealt
    // with after.
    bool omRaknaVantar = false;
    bool kvotVantar = false;
    bool slappVantar = false;
    BPoint slappPunkt;

    DragFonster* dragFonster = nullptr;

    void RitaFokus(QPainter& p);
    bool KanTaTangent() const;
    std::unique_ptr<Tangentbord> tangentbord;
    // The table changed since the keyboard last took its places.
    bool platserGamla = true;
    std::string meddelat;
    // The table as the gesture began, while a screen reader listens, to tell what it did.
    std::optional<BordIOrd> gestFore;
    void BorjaBeratta();
    void Beratta(const std::string& vad = {});
};
