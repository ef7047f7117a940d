#pragma once

#include "platform/Geometry.h"

#include <QColor>
#include <QPoint>
#include <QPointF>
#include <QRect>

// The one place where the table's float geometry becomes Qt's pixel geometry. Edges are
// truncated and inclusive, so (0, 0, 43, 82) is 44 × 83 pixels.
QRect ToQRect(const BRect& r);
QRectF ToQRectF(const BRect& r);
BRect ToBRect(const QRect& r);
QPoint ToQPoint(BPoint p);
BPoint ToBPoint(QPointF p);
QColor ToQColor(rgb_color c);

// The pictures the table is drawn in have `kvot` device pixels to a view unit each way.
// A view rectangle covers the pixels between its edges times `kvot`, each edge on the
// nearest pixel boundary: rectangles side by side cover pixels side by side, and at a whole
// ratio every edge falls exactly on one.
QRect TillPixlar(const QRect& vy, qreal kvot);
QPoint TillPixlar(QPoint vy, qreal kvot);
// The view rectangle that covers all of the pixels `pixlar`.
QRect FranPixlar(const QRect& pixlar, qreal kvot);
// Where, in view units, a picture of the same ratio is drawn so that its top-left pixel
// lands on `pixel`: copied there, it keeps every pixel as it is.
QPointF PixelPunkt(QPoint pixel, qreal kvot);
