#include "app/DragFonster.h"

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

    QImage form(kort.size(), QImage::Format_Mono);
    form.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
    for (int y = 0; y < kort.height(); ++y)
        for (int x = 0; x < kort.width(); ++x)
            form.setPixel(x, y, qAlpha(kort.pixel(x, y)) != 0 ? 1 : 0);

    setWindowOpacity(alfa / 255.0);
    setFixedSize(bild.size());
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

void DragFonster::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setCompositionMode(QPainter::CompositionMode_Source);
    p.drawImage(QPoint(0, 0), bild);
}
