#pragma once

#include "cards/Drag.h"
#include "cards/SpelBord.h"
#include "cards/SpelRegler.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <stop_token>
#include <string>
#include <vector>

// "Can this deal be won?" for any game, over its rules alone: a depth-first search that
// makes and takes back the moves on one table, remembers the tables it has seen by the
// keys the game gives, and tries the moves in the game's order. The moves it answers with
// are the rules' own, so replayed through the rules (or the gestures the game names for
// them) they win.

enum class Utfall {
    Vinnbar,  // `drag` wins
    Ovinnbar, // every table the moves reach was searched
    Okant,    // a limit was reached, or the search was cancelled
};

struct SokGranser {
    std::uint64_t lagen = 0;          // tables to search; 0: no limit
    std::chrono::milliseconds tid{0}; // 0: no limit
    // `tid` counts the searching thread's processor time, not the clock's: a measurement
    // then does not depend on what else the machine runs.
    bool tradTid = false;
    std::size_t minne = 512u * 1024 * 1024; // bytes for the tables seen; 0: no limit
    // When set, only the moves it accepts on the table they start from are made; such a
    // search never answers "cannot be won", since a win may need a move it refused.
    std::function<bool(const SpelBord&, const Drag&)> bara = {};
};

struct SokSvar {
    Utfall utfall = Utfall::Okant;
    std::vector<Drag> drag;
    std::uint64_t lagen = 0;          // tables made and keyed
    std::chrono::microseconds tid{0}; // as the limit counts it: the clock's or the thread's
    std::size_t minne = 0;            // the most bytes the search held
    // Some listed moves were never tried (a new attempt shuffles by chance): the answer
    // holds within the current deal or attempt.
    bool inomForsoket = false;
    bool avbruten = false; // stopped by the stop token
};

// Moves made on one table and taken back newest first: by the rules' own undo where the
// game says that takes the move back exactly (the undo count put back as it was), else
// from a copy kept for that move. A search makes and takes back every move this way.
class DragPaBord {
public:
    DragPaBord(const SpelRegler& regler, SpelBord& bord);
    ~DragPaBord();
    void Gor(const Drag& drag);
    void TaTillbaka();
    std::size_t Antal() const { return antal; }
    // How many of the moves made so far were taken back from a copy.
    std::uint64_t Kopior() const { return kopior; }

private:
    struct Steg {
        int antalUndo = 0;
        std::size_t undoFore = 0;
        bool kopia = false;
    };
    const SpelRegler& regler;
    const SokKunskap& kunskap;
    SpelBord& bord;
    std::vector<Steg> steg;
    std::vector<std::unique_ptr<SpelBord>> sparade;
    std::size_t antal = 0;
    std::uint64_t kopior = 0;
};

// Called every few thousand tables (tests use it to make a search wait); may be empty.
using SokKrok = std::function<void()>;

// Searches from `bord` (left as it was) with the rules' own search knowledge.
SokSvar Los(const SpelRegler& regler, const SpelBord& bord, const SokGranser& granser = {},
            std::stop_token stopp = {}, const SokKrok& krok = {});

// How many steps (a move made or taken back) the search takes between two looks at the stop token,
// the clock and the memory: the longest it can run on after a cancellation.
inline constexpr std::uint64_t kKollIntervall = 256;

// One move in words, told from the table before it: "nine of hearts from column 3 to free
// cell 1".
std::string DragIOrd(const SpelRegler& regler, const SpelBord& fore, const Drag& drag);

// "won-able", "cannot be won", "not known".
const char* UtfallNamn(Utfall utfall);
