#include "cards/Luckor.h"

int Toppen(const std::vector<Lucka>& luckor, int forsta) {
    int i = forsta;
    while (Fylld(luckor, i + 1))
        ++i;
    return i;
}

int LekTopp(const std::vector<Lucka>& luckor, int forsta, int sista) {
    int topp = -1;
    for (int i = forsta; i <= sista && Fylld(luckor, i); ++i)
        topp = i;
    return topp;
}

int ForstaTomma(const std::vector<Lucka>& luckor, int forsta, int sista) {
    for (int i = forsta; i <= sista; ++i)
        if (TomLucka(luckor, i))
            return i;
    return -1;
}

int AntalFyllda(const std::vector<Lucka>& luckor, int forsta, int sista) {
    int antal = 0;
    for (int i = forsta; i <= sista; ++i)
        if (Fylld(luckor, i))
            ++antal;
    return antal;
}

int TraffMedBand(const std::vector<Lucka>& luckor, int forsta, int sista, BPoint p, float band) {
    for (int i = forsta; i <= sista; ++i) {
        if (!Fylld(luckor, i))
            continue;
        BRect r = luckor[i].GePos();
        BRect remsa = r & BRect(r.left, r.top, r.right, r.top + band);
        if ((r.Contains(p) && Topp(luckor, i)) || remsa.Contains(p))
            return i;
    }
    return -1;
}

int ToppVid(const std::vector<Lucka>& luckor, int forsta, int sista, BPoint p) {
    for (int i = forsta; i <= sista; ++i)
        if (Topp(luckor, i) && luckor[i].GePos().Contains(p))
            return i;
    return -1;
}

BRect Forlangd(BRect r, float nedat) {
    r.bottom += nedat;
    return r;
}

void Flytta(std::vector<Lucka>& luckor, int fran, int till) {
    luckor[till].TaEmotKort(luckor[fran].GeKort());
    luckor[fran].TaBortKort();
}
