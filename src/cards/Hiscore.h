#pragma once

#include "platform/SystemTime.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <string>
#include <type_traits>

class AttributeStore;

// One entry of a game's hiscore table, stored byte for byte as it lies in memory.
struct HighScoreTable {
    char namn[20];
    int8_t kort;
    int8_t giv;
    int32_t angra;
    char tid[6];
    char datum[11];

    HighScoreTable();
};

static_assert(std::endian::native == std::endian::little, "tables are stored little-endian");
static_assert(sizeof(HighScoreTable) == 48);
static_assert(std::is_standard_layout_v<HighScoreTable>);
static_assert(std::is_trivially_copyable_v<HighScoreTable>);
static_assert(offsetof(HighScoreTable, namn) == 0);
static_assert(offsetof(HighScoreTable, kort) == 20);
static_assert(offsetof(HighScoreTable, giv) == 21);
static_assert(offsetof(HighScoreTable, angra) == 24);
static_assert(offsetof(HighScoreTable, tid) == 28);
static_assert(offsetof(HighScoreTable, datum) == 34);

inline constexpr int kHiscorePlatser = 40;
using HiscoreLista = std::array<HighScoreTable, kHiscorePlatser>;
static_assert(sizeof(HiscoreLista) == 1920);

// What a finished or abandoned game hands to its table.
struct HiscoreResultat {
    int kort = 0;
    int giv = 0;
};

// How one game ranks its results: the key of a new result, the key of a stored entry
// (with the factor f of the ascending tables), the order, the deal an empty entry shows,
// and whether a table the result missed is written back all the same.
struct HiscoreFamilj {
    int8_t tomtGiv;
    bool stigande;
    bool skrivOforandrad;
    int32_t (*nyNyckel)(int kort, int giv, int angra, int mm, int ss);
    int32_t (*gammalNyckel)(const HighScoreTable& post, int f);
};

const HiscoreFamilj& HiscoreFamiljFor(int spelNr);

std::string HiscoreAttributNamn(int spelNr);

// An entry as an empty place shows it.
HighScoreTable TomPost(const HiscoreFamilj& familj);
HiscoreLista TomTabell(const HiscoreFamilj& familj);

// Minutes of a playing time, never more than 59.
int HiscoreMinuter(int64_t sekunder);
// "05:07", "12:05", "03:45", "00:00".
std::string HiscoreTid(int mm, int ss);
// "3/2 2001".
std::string HiscoreDatum(const std::tm& datum);

// The 0-based place of a new key in the table, 40 when it misses the table.
int HiscoreIndex(const HiscoreLista& tabell, const HiscoreFamilj& familj, int32_t ny);

// Enters a result at a place: the entries below move down one and the last falls out.
void HiscoreInfoga(HiscoreLista& tabell, int index, const HighScoreTable& post);

// Records a game's result in its table and returns the 1-based place (41 when it missed
// the table). The game's undo count is capped at 999 here. The read, the insertion and
// the write run as one transaction, so two programs never lose each other's results.
int AddHiscore(AttributeStore& store, int spelNr, const HiscoreResultat& resultat, int& angra,
               const char* spelarNamn, bigtime_t startTid, std::time_t nu);
int AddHiscore(int spelNr, const HiscoreResultat& resultat, int& angra, const char* spelarNamn,
               bigtime_t startTid);

// What the "Hi Info" alert says of a place.
std::string HiscoreMeddelande(int plats);
