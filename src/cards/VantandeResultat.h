#pragma once

#include "cards/Hiscore.h"

#include <cstddef>
#include <mutex>
#include <string>
#include <vector>

// The results that the store could not take when they were played (another program held it
// past the wait, its folder was read-only, its disk full). They wait here and in a journal
// beside the store, so that neither a later failure of the store nor the end of the run
// loses them, and are entered at the next chance: with the next result, when a game is
// left, at quitting, at the next start. Whoever enters them takes them out of the journal
// in the same step, so each is entered once, whichever running program does it.
class VantandeResultat {
public:
    // An empty file name keeps the results in memory only.
    explicit VantandeResultat(std::string journalFil);

    // Enters the waiting results and then `ny` (when given), oldest first, in one
    // transaction of `store`. Returns the place `ny` took (1..41), or kHiscoreVantar when
    // the store could not take them now: `ny` then waits with the rest. Without `ny` the
    // store is not touched while nothing waits.
    int ForIn(HiscoreStore& store, const Resultatpost* ny);

    // How many results wait, here and in the journal; and how many only here, which the end
    // of the run would lose.
    size_t Antal() const;
    size_t BaraIMinnet() const;
    const std::string& JournalFil() const { return journalFil; }

    // The results waiting for the store in `dataDirectory`, one set a folder in a run.
    static VantandeResultat& For(const std::string& dataDirectory);
    static constexpr const char* kJournalNamn = "fjolk-results.journal";

    // A record as one line of the journal, and back; a line that is not whole (a write cut
    // short by a crash) is no record.
    static std::string JournalRad(const Resultatpost& post);
    static bool LasJournalRad(const std::string& rad, Resultatpost* post);

private:
    struct Vantande {
        Resultatpost post;
        // Whether the journal holds it too; one that has left the journal was entered by
        // another running program.
        bool iJournal = false;
    };

    mutable std::mutex las;
    std::vector<Vantande> minne;
    std::string journalFil;
};

// Enters what waits for the program's store, if anything does; true when nothing waits now.
bool ForInVantande(AttributeStore& store);
