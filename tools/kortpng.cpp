// Draws the four suit symbols of the cards, "Kort.png": a 161 × 46 picture with a
// transparent background and a heart, a diamond, a club and a spade, each filling about
// 39 × 43 pixels of its place. Run as: kortpng resources/Kort.png
// With a scale, the same drawing with that many pixels to each of those: for screens of more
// than one pixel to a unit, "kortpng resources/Kort@2x.png 2".
#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <cstdio>
#include <cstdlib>

namespace {

const QColor kRod(215, 0, 0);
const QColor kSvart(0, 0, 0);

// Each symbol is drawn in a box of 39 × 43 pixels: x 0..39, y 0..43 of its place.
constexpr double kB = 39.0;
constexpr double kH = 43.0;

QPainterPath Hjarter() {
    QPainterPath p;
    p.moveTo(kB / 2, kH - 0.3);
    p.cubicTo(kB * 0.36, kH * 0.80, 0.3, kH * 0.60, 0.3, kH * 0.30);
    p.cubicTo(0.3, kH * 0.10, kB * 0.14, 0.3, kB * 0.28, 0.3);
    p.cubicTo(kB * 0.40, 0.3, kB * 0.47, kH * 0.08, kB / 2, kH * 0.19);
    p.cubicTo(kB * 0.53, kH * 0.08, kB * 0.60, 0.3, kB * 0.72, 0.3);
    p.cubicTo(kB * 0.86, 0.3, kB - 0.3, kH * 0.10, kB - 0.3, kH * 0.30);
    p.cubicTo(kB - 0.3, kH * 0.60, kB * 0.64, kH * 0.80, kB / 2, kH - 0.3);
    p.closeSubpath();
    return p;
}

QPainterPath Ruter() {
    QPainterPath p;
    p.moveTo(kB / 2, 0.3);
    p.quadTo(kB * 0.72, kH * 0.28, kB - 0.3, kH / 2);
    p.quadTo(kB * 0.72, kH * 0.72, kB / 2, kH - 0.3);
    p.quadTo(kB * 0.28, kH * 0.72, 0.3, kH / 2);
    p.quadTo(kB * 0.28, kH * 0.28, kB / 2, 0.3);
    p.closeSubpath();
    return p;
}

// The foot shared by the black suits: a flared stem under the symbol.
QPainterPath Fot() {
    QPainterPath p;
    p.moveTo(kB / 2 - 1.5, kH * 0.56);
    p.cubicTo(kB / 2 - 2.0, kH * 0.80, kB * 0.36, kH - 2.0, kB * 0.26, kH - 0.3);
    p.lineTo(kB * 0.74, kH - 0.3);
    p.cubicTo(kB * 0.64, kH - 2.0, kB / 2 + 2.0, kH * 0.80, kB / 2 + 1.5, kH * 0.56);
    p.closeSubpath();
    return p;
}

QPainterPath Klover() {
    QPainterPath p;
    const double r = 9.8;
    p.addEllipse(QPointF(kB / 2, r + 0.3), r, r);
    p.addEllipse(QPointF(r + 0.3, kH * 0.50), r, r);
    p.addEllipse(QPointF(kB - r - 0.3, kH * 0.50), r, r);
    p.addEllipse(QPointF(kB / 2, kH * 0.42), 5.5, 5.5);
    p.setFillRule(Qt::WindingFill);
    return p.united(Fot()).simplified();
}

QPainterPath Spader() {
    QPainterPath p;
    p.moveTo(kB / 2, 0.3);
    p.cubicTo(kB * 0.40, kH * 0.14, 0.3, kH * 0.32, 0.3, kH * 0.52);
    p.cubicTo(0.3, kH * 0.68, kB * 0.14, kH * 0.75, kB * 0.27, kH * 0.75);
    p.cubicTo(kB * 0.38, kH * 0.75, kB * 0.46, kH * 0.68, kB / 2, kH * 0.62);
    p.cubicTo(kB * 0.54, kH * 0.68, kB * 0.62, kH * 0.75, kB * 0.73, kH * 0.75);
    p.cubicTo(kB * 0.86, kH * 0.75, kB - 0.3, kH * 0.68, kB - 0.3, kH * 0.52);
    p.cubicTo(kB - 0.3, kH * 0.32, kB * 0.60, kH * 0.14, kB / 2, 0.3);
    p.closeSubpath();
    return p.united(Fot()).simplified();
}

void Rita(QPainter& painter, const QPainterPath& symbol, int vanster, const QColor& farg) {
    painter.save();
    // The places start at x 0, 41, 81, 121 and y 1.
    painter.translate(vanster, 1);
    painter.setPen(Qt::NoPen);
    painter.setBrush(farg);
    painter.drawPath(symbol);
    painter.restore();
}

} // namespace

int main(int argc, char* argv[]) {
    const int skala = argc == 3 ? std::atoi(argv[2]) : 1;
    if ((argc != 2 && argc != 3) || skala < 1 || skala > 4) {
        std::fprintf(stderr, "usage: kortpng OUTPUT.png [SCALE 1..4]\n");
        return 2;
    }
    QImage bild(161 * skala, 46 * skala, QImage::Format_ARGB32_Premultiplied);
    bild.fill(Qt::transparent);
    {
        QPainter painter(&bild);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(skala, skala);
        // Nothing may spill out of a symbol's place.
        Rita(painter, Hjarter(), 0, kRod);
        Rita(painter, Ruter(), 41, kRod);
        Rita(painter, Klover(), 81, kSvart);
        Rita(painter, Spader(), 121, kSvart);
    }
    if (!bild.convertToFormat(QImage::Format_ARGB32).save(QString::fromLocal8Bit(argv[1]), "PNG")) {
        std::fprintf(stderr, "kortpng: cannot write %s\n", argv[1]);
        return 1;
    }
    return 0;
}
