#pragma once

#include "platform/AttributeStore.h"
#include "platform/SystemTime.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

// One entry of a game's hiscore table, stored byte for byte as it lies in memory.
struct HighScoreTable {
    char namn[20];
    int8_t kort;
    int8_t giv;
    // 2 bytes padding
    int32_t angra;
    char tid[6];
    char datum[11];
    // 3 bytes padding

    // Every byte zero, padding included, so that a stored table is the same bytes each time.
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
static_assert(std::is_trivially_copyable_v<HiscoreLista>);

// Undo counts above this are entered as this.
inline constexpr int kMaxAngra = 999;

// What a finished or abandoned game hands to its table besides its undo count.
struct HiscoreResultat {
    int kort = 0;
    int giv = 0;
    // Whether the game was won when the result was recorded; and whether the result is the
    // deal's first, the one its statistics count.
    bool vunnen = false;
    bool iStatistiken = true;
};

// How one game ranks its results: the deal an empty entry shows, the order, whether a
// table the result missed is written back all the same, the key of a new result and the
// key of a stored entry (with the factor f of the walk, which only the ascending tables
// use). Keys are 32-bit as the tables have always ranked them.
struct HiscoreFamilj {
    int8_t tomtGiv;
    bool stigande;
    bool skrivOforandrad;
    int32_t (*nyNyckel)(int kort, int giv, int angra, int mm, int ss);
    int32_t (*gammalNyckel)(const HighScoreTable& post, int f);
};

// The family of game number 0..11 (others get game 0's).
const HiscoreFamilj& HiscoreFamiljFor(int spelNr);

// "FJOLK:Spel%i".
std::string HiscoreAttributNamn(int spelNr);

// An entry as an empty place shows it, and a table of nothing else.
HighScoreTable TomPost(const HiscoreFamilj& familj);
HiscoreLista TomTabell(const HiscoreFamilj& familj);

// Minutes of a playing time, never more than 59.
int HiscoreMinuter(int64_t sekunder);
// "05:07", "12:05", "03:45", "00:00": what the entry's 6 bytes keep.
std::string HiscoreTid(int mm, int ss);
// "3/2 2001": what the entry's 11 bytes keep.
std::string HiscoreDatum(const std::tm& datum);

// The 0-based place of a new key in the table, kHiscorePlatser when it misses the table.
int HiscoreIndex(const HiscoreLista& tabell, const HiscoreFamilj& familj, int32_t ny);

// The entry of a result; the name is cut to 19 characters.
HighScoreTable HiscorePost(const char* spelarNamn, const HiscoreResultat& resultat, int angra,
                           int mm, int ss, const std::tm& datum);

// Enters an entry at a place: the entries below move down one and the last falls out.
// A place outside the table changes nothing.
void HiscoreInfoga(HiscoreLista& tabell, int index, const HighScoreTable& post);

// What entering a result needs of the attribute store: AttributeStore answers through it,
// and so can a store that watches what the procedure does.
class HiscoreStore {
public:
    virtual ~HiscoreStore() = default;
    virtual status_t InitCheck() const = 0;
    virtual ssize_t ReadAttr(const char* name, type_code type, off_t offset, void* buffer,
                             size_t length) = 0;
    virtual ssize_t WriteAttr(const char* name, type_code type, off_t offset, const void* buffer,
                              size_t length) = 0;
    virtual bool StatAttr(const char* name, type_code* type, size_t* size) = 0;
    virtual status_t RenameAttr(const char* from, const char* to) = 0;
    virtual status_t Sync() = 0;
    virtual status_t Exclusive(const std::function<bool()>& work) = 0;
    virtual status_t ReadStatistics(int game, const std::string& player, StatisticsRow* row) = 0;
    virtual status_t WriteStatistics(const StatisticsRow& row) = 0;
    virtual bool StatisticsDamaged() = 0;
    virtual status_t RebuildStatistics(std::string* keptAs) = 0;
    // Where the results that wait for the store are kept beside it.
    virtual std::string DataDirectory() const = 0;
};

// A result on its way into its table: the entry as it will stand there and what its key is
// reckoned from. It is entered whole, in a transaction, whenever the store takes it; the
// place is found then, in the table as it is then.
struct Resultatpost {
    uint64_t id = 0;
    int spelNr = 0;
    HiscoreResultat resultat;
    int angra = 0;
    int mm = 0;
    int ss = 0;
    // The whole playing time and when it was played, for the statistics.
    int64_t sekunder = 0;
    int64_t nar = 0;
    HighScoreTable post;
};

// The record of a result played now, with an id no other record shares.
Resultatpost NyResultatpost(int spelNr, const HiscoreResultat& resultat, int angra, int mm, int ss,
                            const char* spelarNamn, std::time_t nu);

// Enters `post` in its table, inside the transaction the caller holds: true with its 1-based
// place (41 when it missed), false when the store failed (the caller then keeps nothing).
// A stored table that is not 40 entries of 'RAWT' is kept aside under a name that says when
// ("FJOLK:Spel8.damaged-20261125-214400"), never overwritten; what was kept aside is told in
// `notiser`.
bool ForInResultat(HiscoreStore& store, const Resultatpost& post, int* plats,
                   std::vector<std::string>* notiser);

// What AddHiscore returns when the store could not take the result now: it waits, and is
// entered at the next chance.
inline constexpr int kHiscoreVantar = 0;

// Records a game's result in its table and returns the 1-based place (41 when it missed
// the table), or kHiscoreVantar when the store cannot take it now (held by another program,
// read-only, full): the result then waits with the others (see VantandeResultat). Results
// that waited are entered first, in the same transaction. The game's undo count is capped
// at 999 here.
int AddHiscore(HiscoreStore& store, int spelNr, const HiscoreResultat& resultat, int& angra,
               const char* spelarNamn, bigtime_t startTid, std::time_t nu);
int AddHiscore(AttributeStore& store, int spelNr, const HiscoreResultat& resultat, int& angra,
               const char* spelarNamn, bigtime_t startTid, std::time_t nu);
// The same in the program's own store, dated now.
int AddHiscore(int spelNr, const HiscoreResultat& resultat, int& angra, const char* spelarNamn,
               bigtime_t startTid);

// The store as entering a result sees it.
std::unique_ptr<HiscoreStore> HiscoreLager(AttributeStore& store);

// What the "Hi Info" alert says of a place.
std::string HiscoreMeddelande(int plats);
