#pragma once

#include "app/FjolkView.h"
#include "cards/Drag.h"
#include "cards/Kort.h"

#include <array>
#include <functional>
#include <initializer_list>
#include <utility>
#include <vector>

struct Korning;

// Small tables laid out by hand, one for each game: a few cards in play and the rest home,
// with a move the rules list that loses the deal and one that keeps it won-able.

struct Kortet {
    int lucka;
    kortfarg farg;
    int valor;
};

// A table to lay out: its cards, what else the game keeps on it, and two of the moves the
// rules list on it (none for Tower of Hanoi, which cannot be lost).
struct Uppstallning {
    int spel;
    std::vector<Kortet> kort;
    std::function<void(Patiens&)> mer;
    Drag forlorar;
    Drag haller;
};

// Game `spel`'s small table.
Uppstallning SmaBord(int spel);

// Empties the window's table and lays out `b` on it, recounted and drawn.
void LaggUt(Korning& k, const Uppstallning& b);
