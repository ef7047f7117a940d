#pragma once

#include "cards/Drag.h"
#include "cards/SpelBord.h"
#include "cards/SpelRegler.h"

#include <memory>
#include <optional>
#include <vector>

// The move among those the rules list for `efter` that makes the table `fore` of it, undos
// taken aside: what an undo from `fore` to `efter` took back. None when no listed move does.
std::optional<Drag> DragSomGor(const SpelRegler& regler, const SpelBord& efter,
                               const SpelBord& fore);

// Whether two tables of one game hold the same cards, records and counters, however each is
// laid out on the screen.
bool SammaStallning(const SpelBord& a, const SpelBord& b);

// The moves undo took back, newest last, for redo to make again. It keeps the table as the
// last undo or redo left it: once the table is anything else than that, laid out anew or
// not (a move was made, a new attempt or a new deal begun), the moves are forgotten.
class GorOmLista {
public:
    // An undo turned `fore` into `efter`: the move it took back is remembered. An undo no
    // listed move makes again breaks the chain, and everything is forgotten.
    void Angrat(const SpelRegler& regler, const SpelBord& fore, const SpelBord& efter);
    // The move redo makes on `bord` now: the one taken back last, while the table is as undo
    // or redo left it and the rules still allow the move there.
    std::optional<Drag> Nasta(const SpelRegler& regler, const SpelBord& bord) const;
    // Redo made the move Nasta gave, and left `bord`.
    void Gjort(const SpelBord& bord);
    void Glom();
    // The moves left to make again on `bord`.
    int Antal(const SpelBord& bord) const;

private:
    bool Aktuell(const SpelBord& bord) const;

    std::vector<Drag> dragen;
    std::unique_ptr<SpelBord> lamnat;
};
