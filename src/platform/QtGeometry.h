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
