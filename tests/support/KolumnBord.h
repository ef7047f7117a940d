#pragma once

#include "games/KolumnRegler.h"
#include "games/KolumnSpel.h"
#include "platform/QtGeometry.h"
#include "support/Testbord.h"

#include <QFont>
#include <QFontMetricsF>
#include <QImage>

#include <cmath>
#include <initializer_list>

// A column game (Freecell, Eight off, Glädjespridaren) in a real play view, with a table a
// test may lay out card by card.
struct KolumnBord : Testbord<KolumnSpel> {
    using Testbord<KolumnSpel>::Testbord;
    // Kings of spades at the bases of the given columns: full columns that take nothing.
    void Kungar(std::initializer_list<int> kolumner) {
        for (int c : kolumner)
            Lagg(c * KolumnRegler::kPlatserPerKolumn, SPADER, 13);
    }
    // What is drawn dark inside an empty free cell, around where its text belongs and clear
    // of the outline's edges and rounded corners.
    QRect TextI(int lucka) {
        QRect inne = ToQRect(Pos(lucka)).adjusted(3, 3, -3, -3) &
                     FriTextensPlats(lucka).toAlignedRect().adjusted(-6, -6, 6, 6);
        const QImage& bild = vy->OffBitmap();
        QRect text;
        for (int y = inne.top(); y <= inne.bottom(); ++y)
            for (int x = inne.left(); x <= inne.right(); ++x) {
                QRgb p = bild.pixel(x, y);
                if (qRed(p) < 80 && qGreen(p) < 80 && qBlue(p) < 80)
                    text |= QRect(x, y, 1, 1);
            }
        return text;
    }
    // Where "Free" lies when it is drawn in the table's font, 24 pixels, its base line
    // starting 15 pixels in from the cell's left and 35 down from its top.
    QRectF FriTextensPlats(int lucka) {
        QFont font = KortSpel::BordsFont();
        BRect r = Pos(lucka);
        return QFontMetricsF(font)
            .tightBoundingRect(QStringLiteral("Free"))
            .translated(r.left + 15, r.top + 35);
    }
    // Whether the text drawn in empty free cell `lucka` is "Free" in the table's font.
    bool FriTextI24(int lucka) {
        QRect sett = TextI(lucka);
        QRectF ratt = FriTextensPlats(lucka);
        auto nara = [](double a, double b) { return std::abs(a - b) <= 2.0; };
        return sett.height() >= 15 && nara(sett.left(), ratt.left()) &&
               nara(sett.right() + 1, ratt.right()) && nara(sett.top(), ratt.top()) &&
               nara(sett.bottom() + 1, ratt.bottom());
    }

    // Of the free cells `celler`, `tomma` are empty, and each empty one shows "Free" in the
    // table's font.
    void FriIDeTommaCellerna(std::initializer_list<int> celler, int tomma) {
        int antal = 0;
        for (int cell : celler) {
            if (!L()[cell].Tom())
                continue;
            ++antal;
            QVERIFY2(FriTextI24(cell), qPrintable(QString::number(cell)));
        }
        QCOMPARE(antal, tomma);
    }

    // Half the lengthening below a slot's card.
    BPoint Under(int lucka) {
        BRect r = Pos(lucka);
        return BPoint((r.left + r.right) / 2, r.bottom + 50);
    }
};
