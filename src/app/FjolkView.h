#pragma once

#include "cards/KortSpel.h"
#include "cards/SpelYta.h"
#include "platform/Geometry.h"

#include <QImage>
#include <QWidget>

#include <functional>
#include <memory>

// The play area: owns the game being played, composes the table in an off-screen frame
// (background copy, then the game's drawing) and shows only what changed, and turns the
// mouse into the game's operations.
//
// A press is a click or a drag only once the pointer has told: a release inside the
// game's click square is a click, the first move out of it a drag. Only then does the
// press reach the game, so no nested event loop waits for the mouse.
class FjolkView : public QWidget, public SpelYta {
    enum class Gest { Ingen, Tryckt, Drag };

public:
    explicit FjolkView(QWidget* parent = nullptr);
    ~FjolkView() override;

    // The largest table: both buffers have this size and are never reallocated.
    static constexpr int kMaxBredd = 1280;
    static constexpr int kMaxHojd = 1024;

    void SattSpel(std::unique_ptr<Patiens> nytt);
    std::unique_ptr<Patiens> TaSpel();
    Patiens* Spel() const { return spel.get(); }

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

    // Drawing access for the games and the animations.
    QImage& OffBitmap() override { return offBitmap; }
    const QImage& BackBitmap() const { return backBitmap; }
    // Copies the background over `rect` of the off-screen frame.
    void RitaBakgrund(BRect rect) override;
    // Puts `rect` of the off-screen frame on the screen now.
    void VisaNu(BRect rect) override;

    void SattBakgrundsBild(const QImage& bild);
    void RensaBakgrundsBild();
    const QImage& BakgrundsBild() const { return bakgrundsBild; }

    // Told after every completed gesture, so the window's menus follow the table.
    std::function<void()> efterGest;

    bool drar = false;
    char spelarNamn[20] = "Guest";
    bool tryckSparr = false;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void MouseDown(BPoint where);
    void MouseUp(BPoint where);
    void FyllBakgrund();
    // Puts the background, picture or plain green, under `yta` of the frame.
    void LaggBakgrund(QPainter& p, const QRect& yta);
    BRect DragRektangel() const;

    std::unique_ptr<Patiens> spel;
    QImage offBitmap;
    QImage backBitmap;
    QImage bakgrundsBild;

    Gest gest = Gest::Ingen;
    BPoint tryckPunkt;
    BPoint musPunkt;
    uint32_t musKnappar = 0;
};
