#pragma once

#include "platform/Geometry.h"

#include <QFont>
#include <QImage>

#include <array>
#include <vector>

// The two looks of the cards: A with the suit symbol top left and one label, B with
// symbols and labels in two opposite corners.
enum class Utseende { A, B };

// All 52 faces and four backs rendered at one card size into one picture. The rectangles
// are in view units; the picture has its ratio of device pixels to them.
struct KortBilder {
    QImage bild;
    BRect ram;
    std::vector<BRect> kortPos;
    std::array<BRect, 4> baksidor;
};

// Where the four suit symbols lie in "Kort.png", in the units of its smallest drawing: heart,
// diamond, club, spade.
const std::array<BRect, 4>& SymbolRektanglar();

// The plain font of the value labels: 32 pixels in look A, 26 in look B.
QFont KortEtikettFont(Utseende utseende);

// Renders the faces at w × h view units with `kvot` device pixels to a unit each way: the
// card's edges, symbols and labels keep their sizes in view units and are drawn in as many
// pixels as the ratio gives. The backs are striped in fresh random colours each time. A
// picture of the same size given as `buffert` is drawn into instead of a new one.
KortBilder RitaKortUtSeende(Utseende utseende, int w, int h, const QImage& symboler,
                            qreal kvot = 1.0, QImage buffert = QImage());

// The ratio of the symbol picture that suits faces of `kvot` device pixels to a unit: the
// plain drawing at one pixel to a unit or less, else the drawing with twice the pixels.
qreal SymbolKvot(qreal kvot);
// The suit symbols from the program's resources, drawn for SymbolKvot(kvot) and carrying
// that ratio; a null picture, with a message on stderr, when they cannot be read (the faces
// are then drawn without symbols).
QImage LaddaKortSymboler(qreal kvot = 1.0);
