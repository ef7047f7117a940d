#include "platform/QtGeometry.h"

#include <cmath>

QRect ToQRect(const BRect& r) {
    return QRect(QPoint(static_cast<int>(r.left), static_cast<int>(r.top)),
                 QPoint(static_cast<int>(r.right), static_cast<int>(r.bottom)));
}

QRectF ToQRectF(const BRect& r) {
    return QRectF(QPointF(r.left, r.top), QPointF(r.right + 1.0f, r.bottom + 1.0f));
}

BRect ToBRect(const QRect& r) {
    return BRect(static_cast<float>(r.left()), static_cast<float>(r.top()),
                 static_cast<float>(r.right()), static_cast<float>(r.bottom()));
}

QPoint ToQPoint(BPoint p) {
    return QPoint(static_cast<int>(p.x), static_cast<int>(p.y));
}

BPoint ToBPoint(QPointF p) {
    return BPoint(static_cast<float>(p.x()), static_cast<float>(p.y()));
}

QColor ToQColor(rgb_color c) {
    return QColor(c.red, c.green, c.blue, c.alpha);
}

namespace {

int Kant(int vy, qreal kvot) {
    return static_cast<int>(std::floor(vy * kvot + 0.5));
}

} // namespace

QRect TillPixlar(const QRect& vy, qreal kvot) {
    QPoint forsta(Kant(vy.left(), kvot), Kant(vy.top(), kvot));
    QPoint efter(Kant(vy.left() + vy.width(), kvot), Kant(vy.top() + vy.height(), kvot));
    return QRect(forsta, QSize(efter.x() - forsta.x(), efter.y() - forsta.y()));
}

QPoint TillPixlar(QPoint vy, qreal kvot) {
    return QPoint(Kant(vy.x(), kvot), Kant(vy.y(), kvot));
}

QRect FranPixlar(const QRect& pixlar, qreal kvot) {
    QPoint forsta(static_cast<int>(std::floor(pixlar.left() / kvot)),
                  static_cast<int>(std::floor(pixlar.top() / kvot)));
    QPoint efter(static_cast<int>(std::ceil((pixlar.left() + pixlar.width()) / kvot)),
                 static_cast<int>(std::ceil((pixlar.top() + pixlar.height()) / kvot)));
    return QRect(forsta, QSize(efter.x() - forsta.x(), efter.y() - forsta.y()));
}

QPointF PixelPunkt(QPoint pixel, qreal kvot) {
    return QPointF(pixel.x() / kvot, pixel.y() / kvot);
}
