#include "cards/HiscoreRader.h"

#include <algorithm>
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

// Writes `text` followed by `blanka` blanks at `kolumn`, as far as the row reaches; the
// row ends after them until a later field writes further. Columns count characters as the
// player sees them.
void SkrivVid(std::u32string& rad, int kolumn, const std::u32string& text, int blanka) {
    int pos = kolumn;
    for (size_t i = 0; i < text.size() && pos < kRadLangd; ++i)
        rad[static_cast<size_t>(pos++)] = text[i];
    for (int i = 0; i < blanka && pos < kRadLangd; ++i)
        rad[static_cast<size_t>(pos++)] = U' ';
    if (pos < kRadLangd)
        rad[static_cast<size_t>(pos)] = U'\0';
}

void SkrivFalt(std::u32string& rad, int kolumn, const char* text, size_t max, int blanka) {
    SkrivVid(rad, kolumn, Tecken(text, strnlen(text, max)), blanka);
}

void SkrivTal(std::u32string& rad, int kolumn, int tal, int blanka) {
    char text[16];
    std::snprintf(text, sizeof text, "%i", tal);
    SkrivFalt(rad, kolumn, text, sizeof text, blanka);
}

bool Styrtecken(char32_t c) {
    return c < 0x20 || (c >= 0x7f && c < 0xa0);
}

void LaggTill(std::string& utf8, char32_t c) {
    if (c < 0x80) {
        utf8 += static_cast<char>(c);
    } else if (c < 0x800) {
        utf8 += static_cast<char>(0xc0 | (c >> 6));
        utf8 += static_cast<char>(0x80 | (c & 0x3f));
    } else if (c < 0x10000) {
        utf8 += static_cast<char>(0xe0 | (c >> 12));
        utf8 += static_cast<char>(0x80 | ((c >> 6) & 0x3f));
        utf8 += static_cast<char>(0x80 | (c & 0x3f));
    } else {
        utf8 += static_cast<char>(0xf0 | (c >> 18));
        utf8 += static_cast<char>(0x80 | ((c >> 12) & 0x3f));
        utf8 += static_cast<char>(0x80 | ((c >> 6) & 0x3f));
        utf8 += static_cast<char>(0x80 | (c & 0x3f));
    }
}

std::string Utf8(const std::u32string& text) {
    std::string utf8;
    for (char32_t c : text)
        LaggTill(utf8, c);
    return utf8;
}

} // namespace

std::u32string Tecken(const char* bytes, size_t langd) {
    static constexpr char32_t kMinst[] = {0, 0x80, 0x800, 0x10000};
    const auto* b = reinterpret_cast<const unsigned char*>(bytes);
    std::u32string text;
    size_t i = 0;
    while (i < langd) {
        unsigned char c = b[i];
        int foljande = c < 0x80             ? 0
                       : (c & 0xe0) == 0xc0 ? 1
                       : (c & 0xf0) == 0xe0 ? 2
                       : (c & 0xf8) == 0xf0 ? 3
                                            : -1;
        char32_t tecken = kErsattning;
        size_t steg = 1;
        if (foljande == 0) {
            tecken = c;
        } else if (foljande > 0 && i + static_cast<size_t>(foljande) < langd) {
            char32_t v = c & (0x3fu >> foljande);
            bool hel = true;
            for (size_t k = 1; hel && k <= static_cast<size_t>(foljande); ++k) {
                hel = (b[i + k] & 0xc0) == 0x80;
                v = (v << 6) | (b[i + k] & 0x3fu);
            }
            if (hel && v >= kMinst[foljande] && v <= 0x10ffff && (v < 0xd800 || v > 0xdfff)) {
                tecken = v;
                steg = static_cast<size_t>(foljande) + 1;
            }
        }
        text += Styrtecken(tecken) ? kErsattning : tecken;
        i += steg;
    }
    return text;
}

std::string VisbarText(const char* bytes, size_t max) {
    return Utf8(Tecken(bytes, strnlen(bytes, max)));
}

std::string RentNamn(const char* bytes, size_t max) {
    std::u32string text = Tecken(bytes, strnlen(bytes, max));
    std::erase(text, kErsattning);
    while (!text.empty() && text.back() == U' ')
        text.pop_back();
    return Utf8(text);
}

std::string HiscoreRad(int index, const HighScoreTable& post, int spelNr) {
    if (post.kort == -1)
        return std::string(kRadLangd, ' ');
    std::u32string rad(kRadLangd, U' ');
    SkrivTal(rad, kPosKolumn, index + 1, 3);
    SkrivFalt(rad, kNamnKolumn, post.namn, sizeof post.namn, 28);
    Kolumner k = KolumnerFor(spelNr);
    if (k.a >= 0)
        SkrivTal(rad, k.a, post.kort, 16);
    if (k.b >= 0)
        SkrivTal(rad, k.b, post.giv, 15);
    SkrivTal(rad, k.c, post.angra, 15);
    SkrivFalt(rad, kTidKolumn, post.tid, sizeof post.tid, 26);
    SkrivFalt(rad, kDatumKolumn, post.datum, sizeof post.datum, 2);
    return Utf8(rad.substr(0, std::min(rad.find(U'\0'), rad.size())));
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
