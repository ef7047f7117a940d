#pragma once

#include "cards/Kortlek.h"
#include "cards/Lucka.h"

#include <memory>
#include <utility>
#include <vector>

// Everything a game's rules read and change: its slots, its deck, its undo records and the
// undos taken. A game's own table adds its counters. Tables are copied and compared whole:
// that is how the soak test checks a gesture against the moves the rules list, and how a
// solver tries moves.
struct SpelBord {
    virtual ~SpelBord() = default;

    std::vector<Lucka> luckor;
    std::vector<std::pair<int, int>> undoLista;
    Kortlek kortlek;
    int antalUndo = 0;

    virtual std::unique_ptr<SpelBord> Kopia() const = 0;
    // The same game's table, slot for slot, card for card, counter for counter.
    virtual bool Lika(const SpelBord& annat) const = 0;
    // Becomes a copy of `annat`, a table of the same game.
    virtual void TaFran(const SpelBord& annat) = 0;
    // Takes the layout of `annat`, a table of the same game: where each slot lies and the
    // face each card is drawn with. Cards, records and counters stay. A game whose table
    // keeps areas of its own (a stock's or a button's) takes those too.
    virtual void TaLaggningFran(const SpelBord& annat) {
        for (size_t i = 0; i < luckor.size() && i < annat.luckor.size(); ++i) {
            luckor[i].NyPos(annat.luckor[i].GePos());
            luckor[i].GeKort().NyPos(annat.luckor[i].GeKort().GePos());
        }
    }

    bool operator==(const SpelBord&) const = default;

protected:
    SpelBord() = default;
    SpelBord(const SpelBord&) = default;
    SpelBord& operator=(const SpelBord&) = default;
};

// A game's table type B derives from BordAv<B> and declares its own defaulted operator==.
template <typename B> struct BordAv : SpelBord {
    std::unique_ptr<SpelBord> Kopia() const override {
        return std::make_unique<B>(static_cast<const B&>(*this));
    }
    bool Lika(const SpelBord& annat) const override {
        const B* b = dynamic_cast<const B*>(&annat);
        return b != nullptr && static_cast<const B&>(*this) == *b;
    }
    void TaFran(const SpelBord& annat) override {
        static_cast<B&>(*this) = dynamic_cast<const B&>(annat);
    }
    bool operator==(const BordAv&) const = default;
};
