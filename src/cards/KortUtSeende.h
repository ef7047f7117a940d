#pragma once

#include "platform/Geometry.h"

#include <QFont>
#include <QImage>

#include <array>
#include <vector>

// The two looks of the cards: A with the suit symbol top left and one label, B with
// symbols and labels in two opposite corners.
enum class Utseende { A, B };

// All 52 faces and four backs rendered at one card size into one picture.
struct KortBilder {
    QImage bild;
    BRect ram;
    std::vector<BRect> kortPos;
    std::array<BRect, 4> baksidor;
};

// Where the four suit symbols lie in "Kort.png": heart, diamond, club, spade.
const std::array<BRect, 4>& SymbolRektanglar();

// The plain font of the value labels: 32 pixels in look A, 26 in look B.
QFont KortEtikettFont(Utseende utseende);

// Renders the faces at w × h. The backs are striped in fresh random colours each time.
KortBilder RitaKortUtSeende(Utseende utseende, int w, int h, const QImage& symboler);

// The suit symbols from the program's resources; a null picture, with a message on
// stderr, when they cannot be read (the faces are then drawn without symbols).
QImage LaddaKortSymboler();
