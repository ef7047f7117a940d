#include "cards/HiscoreRader.h"

#include <cstdio>
#include <cstring>

const char* const kIngenTabell = "No Highscore table found ";
const char* const kRubrikStart =
    "  Pos :    Name :   Cards made :        Deal :     Undos :     Time to play :      Date ";

namespace {

const char* const kRubrikDeal =
    "  Pos :    Name :   Cards done :        Deal :     Undos :     Time to play :      Date ";
const char* const kRubrikKvar =
    "  Pos :    Name :       Cards left :    Deal :     Undos :     Time to play :      Date ";
const char* const kRubrikTower =
    "  Pos :    Name :                                Undos :     Time to play :      Date ";
const char* const kRubrikKort =
    "  Pos :    Name :                   Cards done : Undos :     Time to play :      Date ";

// The columns of `kort`, `giv` and `angra` in a game's rows; -1 where a game shows none.
struct Kolumner {
    int a;
    int b;
    int c;
};

Kolumner KolumnerFor(int spelNr) {
    switch (spelNr) {
    case 0:
    case 7:
        return {24, 27, 29};
    case 4:
        return {23, 26, 29};
    case 3:
        return {-1, -1, 29};
    default:
        return {24, -1, 29};
    }
}

constexpr int kRadLangd = 60;
constexpr int kPosKolumn = 0;
constexpr int kNamnKolumn = 3;
constexpr int kTidKolumn = 33;
constexpr int kDatumKolumn = 39;

// Writes `text` followed by `blanka` blanks at `kolumn`, as far as the row reaches.
void SkrivVid(char* rad, int kolumn, const char* text, size_t textLangd, int blanka) {
    int pos = kolumn;
    for (size_t i = 0; i < textLangd && pos < kRadLangd; ++i)
        rad[pos++] = text[i];
    for (int i = 0; i < blanka && pos < kRadLangd; ++i)
        rad[pos++] = ' ';
    if (pos < kRadLangd)
        rad[pos] = '\0';
}

void SkrivTal(char* rad, int kolumn, int tal, int blanka) {
    char text[16];
    int n = std::snprintf(text, sizeof text, "%i", tal);
    SkrivVid(rad, kolumn, text, static_cast<size_t>(n), blanka);
}

} // namespace

std::string HiscoreRad(int index, const HighScoreTable& post, int spelNr) {
    if (post.kort == -1)
        return std::string(kRadLangd, ' ');
    char rad[kRadLangd + 1];
    std::memset(rad, ' ', kRadLangd);
    rad[kRadLangd] = '\0';
    SkrivTal(rad, kPosKolumn, index + 1, 3);
    SkrivVid(rad, kNamnKolumn, post.namn, strnlen(post.namn, sizeof post.namn), 28);
    Kolumner k = KolumnerFor(spelNr);
    if (k.a >= 0)
        SkrivTal(rad, k.a, post.kort, 16);
    if (k.b >= 0)
        SkrivTal(rad, k.b, post.giv, 15);
    SkrivTal(rad, k.c, post.angra, 15);
    SkrivVid(rad, kTidKolumn, post.tid, strnlen(post.tid, sizeof post.tid), 26);
    SkrivVid(rad, kDatumKolumn, post.datum, strnlen(post.datum, sizeof post.datum), 2);
    return std::string(rad, strnlen(rad, kRadLangd));
}

const char* HiscoreRubrik(int spelNr) {
    switch (spelNr) {
    case 0:
    case 4:
        return kRubrikDeal;
    case 7:
        return kRubrikKvar;
    case 3:
        return kRubrikTower;
    default:
        return kRubrikKort;
    }
}

std::vector<int> HiscoreKolumner(int spelNr) {
    Kolumner k = KolumnerFor(spelNr);
    std::vector<int> kolumner = {kPosKolumn, kNamnKolumn};
    for (int kolumn : {k.a, k.b, k.c})
        if (kolumn >= 0)
            kolumner.push_back(kolumn);
    kolumner.push_back(kTidKolumn);
    kolumner.push_back(kDatumKolumn);
    return kolumner;
}
