#pragma once

#include "cards/Hiscore.h"
#include "platform/AttributeStore.h"
#include "platform/SystemTime.h"
#include "support/Gester.h"

#include <memory>
#include <vector>

// A game of type Spel in a real play view, dealt with a seed, with a table a test may lay
// out card by card.
template <typename Spel> struct Testbord {
    std::unique_ptr<FjolkView> vy;
    Spel* spel = nullptr;

    Testbord(int spelNr, unsigned fro, bool tomt, int bredd, int hojd, bool animera) {
        vy = VyMedSpel(spelNr, fro, bredd, hojd, animera);
        spel = dynamic_cast<Spel*>(vy->Spel());
        if (tomt)
            for (Lucka& l : L())
                l.TaBortKort();
    }
    std::vector<Lucka>& L() { return spel->LuckorForTest(); }
    const Lucka& At(int lucka) { return L()[lucka]; }
    void Lagg(int lucka, kortfarg farg, int valor) {
        Kort k(farg, valor, BRect(0, 0, 0, 0));
        k.NyPos(spel->FramsidaFor(k));
        L()[lucka].TaEmotKort(k);
    }
    bool Har(int lucka, kortfarg farg, int valor) {
        return !L()[lucka].Tom() && L()[lucka].GeKort().KortFarg() == farg &&
               L()[lucka].GeKort().KortValor() == valor;
    }
    int Antal(int forsta, int sista) {
        int antal = 0;
        for (int i = forsta; i <= sista; ++i)
            antal += L()[i].Tom() ? 0 : 1;
        return antal;
    }
    BPoint Mitten(int lucka) { return Mitt(L()[lucka].GePos()); }
    void Klicka(int lucka) { KlickaPa(*vy, Mitten(lucka)); }
    // What the view's off-screen frame shows at a point.
    QColor Pixel(BPoint p) {
        vy->InvalidateOffscreen();
        return vy->OffBitmap().pixelColor(static_cast<int>(p.x), static_cast<int>(p.y));
    }
};

// Game `spelNr`'s stored hiscore table, all empty entries when there is none.
inline HiscoreLista LasHiscore(int spelNr) {
    HiscoreLista tabell;
    ssize_t last = AttributeStore::Program().ReadAttr(HiscoreAttributNamn(spelNr).c_str(),
                                                      B_RAW_TYPE, 0, tabell.data(), sizeof tabell);
    return last == static_cast<ssize_t>(sizeof tabell) ? tabell : HiscoreLista{};
}

// A clock that runs 25 ms a reading, so that every flight ends after a few steps; undone
// by SattKlocka({}).
inline void SnabbKlocka() {
    static bigtime_t nu = 0;
    SattKlocka([] { return nu += 25000; });
}
