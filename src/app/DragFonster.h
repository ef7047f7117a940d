#pragma once

#include <QImage>
#include <QWidget>

// The dragged cards under the pointer, anywhere on the screen: over the table, the menu
// bar and past the window's edge. A frameless window of the cards' own shape that takes
// neither the mouse nor the focus; the view that owns the drag moves it.
//
// The cards are shown in their full colours, cut to their shape by a mask from the
// picture's alpha, and the whole window is made half transparent by its opacity: with a
// compositor that gives what an alpha of 200 gives, and without one the cards still look
// like cards, opaque, with their rounded corners cut away.
class DragFonster : public QWidget {
public:
    explicit DragFonster(QWidget* agare);

    // Shows `bild`, whose visible pixels all have the alpha `alfa`, with its top-left
    // corner at `hornet` on the screen; the window is as large as the picture is in view
    // units by its ratio.
    void Visa(const QImage& bild, int alfa, QPoint hornet);
    // Moves the picture's top-left corner to `hornet` on the screen.
    void Flytta(QPoint hornet);
    void Gom();

    // What the window paints: the picture's colours at full strength.
    const QImage& Bild() const { return bild; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage bild;
};
