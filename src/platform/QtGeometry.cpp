#include "platform/QtGeometry.h"

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
