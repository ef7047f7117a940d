#include "cards/KortUtSeende.h"

#include "platform/QtGeometry.h"

#include <QFont>
#include <QPainter>
#include <QPainterPath>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

constexpr float kHorn = 15.0f;
const QColor kKortGra(220, 220, 220, 255);

QString Etikett(int v) {
    switch (v) {
    case 0:
        return QStringLiteral("A");
    case 10:
        return QStringLiteral("J");
    case 11:
        return QStringLiteral("D");
    case 12:
        return QStringLiteral("K");
    default:
        return QString::number(v + 1);
    }
}

// The label's base point in the card's bottom right corner.
int EtikettX(int v, int w) {
    int x = w - 25;
    if (v == 9)
        x -= 15;
    if (v == 0 || v == 11 || v == 12)
        x -= 5;
    return x;
}

QPainterPath Rundad(const QRectF& r) {
    QPainterPath path;
    path.addRoundedRect(r, kHorn, kHorn);
    return path;
}

void FyllRundad(QPainter& p, const QRectF& r, const QColor& farg) {
    p.setPen(Qt::NoPen);
    p.setBrush(farg);
    p.drawPath(Rundad(r));
}

void RitaKant(QPainter& p, const QRectF& r) {
    p.setPen(QPen(Qt::black, 1.0));
    p.setBrush(Qt::NoBrush);
    p.drawPath(Rundad(r.adjusted(0.5, 0.5, -0.5, -0.5)));
}

// The blank card, filled and outlined, in `pixlar` device pixels of `kvot` to a unit.
QImage TomtKort(QSize pixlar, qreal kvot) {
    QImage kort(pixlar, QImage::Format_ARGB32_Premultiplied);
    kort.setDevicePixelRatio(kvot);
    kort.fill(Qt::transparent);
    QPainter p(&kort);
    p.setRenderHint(QPainter::Antialiasing);
    QRectF ram(0, 0, pixlar.width() / kvot, pixlar.height() / kvot);
    FyllRundad(p, ram, kKortGra);
    RitaKant(p, ram);
    return kort;
}

} // namespace

const std::array<BRect, 4>& SymbolRektanglar() {
    static const std::array<BRect, 4> rektanglar = {BRect(0, 1, 39, 44), BRect(41, 1, 79, 44),
                                                    BRect(81, 1, 119, 44), BRect(121, 1, 159, 44)};
    return rektanglar;
}

qreal SymbolKvot(qreal kvot) {
    return kvot > 1.0 ? 2.0 : 1.0;
}

QImage LaddaKortSymboler(qreal kvot) {
    const qreal symbolKvot = SymbolKvot(kvot);
    const QString namn =
        symbolKvot > 1.0 ? QStringLiteral("Kort@2x.png") : QStringLiteral("Kort.png");
    QImage bild(QStringLiteral(":/") + namn);
    if (bild.isNull()) {
        std::fprintf(stderr,
                     "Fjolks Patience: the suit symbols (%s) cannot be read; "
                     "cards are drawn without them.\n",
                     qPrintable(namn));
        return bild;
    }
    bild = bild.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    bild.setDevicePixelRatio(symbolKvot);
    return bild;
}

QFont KortEtikettFont(Utseende utseende) {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(utseende == Utseende::A ? 32 : 26);
    font.setWeight(QFont::Normal);
    return font;
}

KortBilder RitaKortUtSeende(Utseende utseende, int w, int h, const QImage& symboler, qreal kvot,
                            QImage buffert) {
    KortBilder resultat;
    resultat.ram = BRect(0, 0, static_cast<float>(14 * w + 5), static_cast<float>(4 * h + 5));
    const QSize bildensPixlar = TillPixlar(ToQRect(resultat.ram), kvot).size();
    // A picture of many megabytes, made at every deal: fresh memory costs more to touch than
    // the drawing does.
    if (buffert.size() == bildensPixlar && buffert.format() == QImage::Format_ARGB32_Premultiplied)
        resultat.bild = std::move(buffert);
    else
        resultat.bild = QImage(bildensPixlar, QImage::Format_ARGB32_Premultiplied);
    resultat.bild.setDevicePixelRatio(kvot);
    resultat.bild.fill(Qt::transparent);
    resultat.kortPos.reserve(52);

    const std::array<BRect, 4>& symbol = SymbolRektanglar();
    const float sw = symbol[0].Width();
    const float sh = symbol[0].Height();
    const int y = h - 5 < static_cast<int>(sh) ? static_cast<int>(sh) + 1 : h - 5;
    const qreal symbolKvot = symboler.devicePixelRatio();

    QPainter p(&resultat.bild);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);
    // Symbols drawn for another ratio than the faces' are resampled, not picked pixel by pixel.
    p.setRenderHint(QPainter::SmoothPixmapTransform, symbolKvot != kvot);
    p.setFont(KortEtikettFont(utseende));

    // Every face starts as the same blank card: drawn once, copied 52 times. A face covers
    // the pixels nearest its edges, which at a ratio that is not whole makes faces a pixel
    // wider or taller than others: each size has its own blank card.
    std::vector<std::pair<QSize, QImage>> tommaKort;
    auto tomtKort = [&](QSize pixlar) -> const QImage& {
        for (const auto& [storlek, kort] : tommaKort)
            if (storlek == pixlar)
                return kort;
        tommaKort.emplace_back(pixlar, TomtKort(pixlar, kvot));
        return tommaKort.back().second;
    };

    for (int s = 0; s < 4; ++s) {
        const QColor etikettFarg = s < 2 ? QColor(255, 0, 0) : QColor(0, 0, 0);
        for (int v = 0; v < 13; ++v) {
            const float l = static_cast<float>(v * w);
            const float t = static_cast<float>(s * h);
            BRect ansikte(l + 1, t + 1, l + static_cast<float>(w), static_cast<float>((s + 1) * h));
            QRect pixlar = TillPixlar(ToQRect(ansikte), kvot);
            p.drawImage(PixelPunkt(pixlar.topLeft(), kvot), tomtKort(pixlar.size()));

            if (!symboler.isNull()) {
                QRectF plats = ToQRectF(symbol[s]);
                QRectF kalla(plats.topLeft() * symbolKvot, plats.size() * symbolKvot);
                if (utseende == Utseende::A) {
                    p.drawImage(ToQRectF(BRect(l + 1, t + 1, l + sw, t + sh)), symboler, kalla);
                } else {
                    p.drawImage(ToQRectF(BRect(l + static_cast<float>(w) - sw, t + 1,
                                               l + static_cast<float>(w), t + sh)),
                                symboler, kalla);
                    float botten = static_cast<float>((s + 1) * h);
                    p.drawImage(ToQRectF(BRect(l + 1, botten + 1 - sh, l + sw, botten)), symboler,
                                kalla);
                }
            }

            p.setPen(etikettFarg);
            const QString text = Etikett(v);
            p.drawText(QPointF(l + static_cast<float>(EtikettX(v, w)), t + static_cast<float>(y)),
                       text);
            if (utseende == Utseende::B) {
                int d = v == 9 ? 3 : 0;
                p.drawText(QPointF(l + static_cast<float>(5 - d), t + 30), text);
            }
            resultat.kortPos.push_back(ansikte);
        }
    }

    for (int i = 0; i < 4; ++i) {
        const float l = static_cast<float>(13 * w);
        const float t = static_cast<float>(i * h);
        BRect baksida(l + 1, t + 1, l + static_cast<float>(w), static_cast<float>((i + 1) * h));
        FyllRundad(p, ToQRectF(baksida), kKortGra);
        for (int k = 0; k < w / 5; ++k) {
            // Three fresh draws, red, green, blue: every rendering stripes the backs anew.
            int r = std::rand() % 255;
            int g = std::rand() % 255;
            int b = std::rand() % 255;
            const float in = static_cast<float>(5 * k);
            BRect strimma(l + in + 1, t + in + 1, l + static_cast<float>(w) - in,
                          static_cast<float>((i + 1) * h) - in);
            // Past the middle the stripes turn inside out: such a stripe shows nothing.
            if (strimma.IsValid())
                FyllRundad(p, ToQRectF(strimma), QColor(r, g, b, 255));
        }
        RitaKant(p, ToQRectF(baksida));
        resultat.baksidor[i] = baksida;
    }
    return resultat;
}
