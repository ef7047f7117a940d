#include "app/Bakgrund.h"

#include <QImageReader>

#include <sys/stat.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr int kStorstaBredd = 1280;
constexpr int kStorstaHojd = 1024;
// The most a picture may take while it is read. A JPEG is scaled down while it is read and
// stays far below; a format read whole first (PNG, BMP) is refused above this.
constexpr int kGransMB = 64;

} // namespace

QSize BakgrundsStorlek(QSize skarm) {
    if (skarm.width() <= 0 || skarm.height() <= 0)
        return QSize(kStorstaBredd, kStorstaHojd);
    double kvot = double(skarm.width()) / skarm.height();
    int bredd = std::min(kStorstaBredd, int(std::lround(kStorstaHojd * kvot)));
    return QSize(bredd, std::min(kStorstaHojd, int(std::lround(bredd / kvot))));
}

QImage LasBakgrundsBild(const QString& fil, QSize storlek, std::string* fel) {
    QByteArray sokvag = fil.toLocal8Bit();
    struct stat st {};
    if (stat(sokvag.constData(), &st) != 0 || !S_ISREG(st.st_mode)) {
        *fel = fil.toStdString() + " is not a picture file; only a picture file can be the "
                                   "background.";
        return QImage();
    }
    QImageReader lasare(fil);
    lasare.setAllocationLimit(kGransMB);
    QSize full = lasare.size();
    if (full.isValid() && (full.width() > storlek.width() || full.height() > storlek.height())) {
        double skala = std::max(double(storlek.width()) / full.width(),
                                double(storlek.height()) / full.height());
        if (skala < 1)
            lasare.setScaledSize(QSize(std::max(1, int(std::lround(full.width() * skala))),
                                       std::max(1, int(std::lround(full.height() * skala)))));
    }
    QImage bild = lasare.read();
    if (bild.isNull()) {
        bool forStor = full.isValid() &&
                       qint64(full.width()) * full.height() * 4 > qint64(kGransMB) * 1024 * 1024;
        *fel = forStor ? fil.toStdString() + " is too large to load (" +
                             std::to_string(full.width()) + " × " + std::to_string(full.height()) +
                             " pixels); a smaller picture, or a JPEG, can be the background."
                       : fil.toStdString() + " is not a picture that can be read (" +
                             lasare.errorString().toStdString() + ").";
        return QImage();
    }
    bild = bild.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < bild.height(); ++y) {
        auto* rad = reinterpret_cast<QRgb*>(bild.scanLine(y));
        for (int x = 0; x < bild.width(); ++x)
            rad[x] |= 0xff000000u;
    }
    return bild;
}
