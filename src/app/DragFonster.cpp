#include "app/DragFonster.h"

#include "platform/QtGeometry.h"

#include <QBitmap>
#include <QPainter>

DragFonster::DragFonster(QWidget* agare)
    : QWidget(agare, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowTransparentForInput |
                         Qt::WindowDoesNotAcceptFocus | Qt::NoDropShadowWindowHint) {
    setObjectName(QStringLiteral("DragBild"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::NoFocus);
}

void DragFonster::Visa(const QImage& kort, int alfa, QPoint hornet) {
    // The colours as they lie on the table: a premultiplied pixel of alpha 200 is brought
    // back to full strength, and the transparency is left to the window's opacity.
    bild = kort.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < bild.height(); ++y) {
        auto* rad = reinterpret_cast<QRgb*>(bild.scanLine(y));
        for (int x = 0; x < bild.width(); ++x)
            rad[x] = qAlpha(rad[x]) == 0 ? qRgb(0, 0, 0) : (qUnpremultiply(rad[x]) | 0xff000000u);
    }
    bild = bild.convertToFormat(QImage::Format_RGB32);

    // The window and its shape are in view units, the picture in the screen's pixels: a unit
    // belongs to the shape when any of its pixels shows a card, so the edge keeps every pixel
    // of the outline.
    const qreal kvot = kort.devicePixelRatio();
    const QRect yta = FranPixlar(kort.rect(), kvot);
    QImage form(yta.size(), QImage::Format_Mono);
    form.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
    form.fill(0);
    for (int y = 0; y < kort.height(); ++y)
        for (int x = 0; x < kort.width(); ++x)
            if (qAlpha(kort.pixel(x, y)) != 0)
                form.setPixel(static_cast<int>(x / kvot), static_cast<int>(y / kvot), 1);

    setWindowOpacity(alfa / 255.0);
    setFixedSize(yta.size());
    setMask(QBitmap::fromImage(form));
    move(hornet);
    show();
    raise();
    update();
}

void DragFonster::Flytta(QPoint hornet) {
    if (isVisible())
        move(hornet);
}

void DragFonster::Gom() {
    hide();
    bild = QImage();
}

// Drawn in its own pixels: one to one on a screen of the picture's ratio.
void DragFonster::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setCompositionMode(QPainter::CompositionMode_Source);
    p.drawImage(QPoint(0, 0), bild);
}
