#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

using status_t = int32_t;
using type_code = uint32_t;

// Four-character codes such as 'RECT', built without multi-character literals.
constexpr type_code MakeTypeCode(const char (&code)[5]) {
    return (type_code(uint8_t(code[0])) << 24) | (type_code(uint8_t(code[1])) << 16) |
           (type_code(uint8_t(code[2])) << 8) | type_code(uint8_t(code[3]));
}

inline constexpr type_code B_RECT_TYPE = MakeTypeCode("RECT");
inline constexpr type_code B_RAW_TYPE = MakeTypeCode("RAWT");
inline constexpr type_code B_BOOL_TYPE = MakeTypeCode("BOOL");

// Results as the program's node reports them: bytes read or written when not negative.
inline constexpr status_t B_OK = 0;
inline constexpr status_t B_ERROR = -1;
inline constexpr status_t B_NO_INIT = -0x7fff0001;
inline constexpr status_t B_BAD_VALUE = -0x7fff0002;
inline constexpr status_t B_ENTRY_NOT_FOUND = -0x7fff0003;
inline constexpr status_t B_FILE_ERROR = -0x7fff0004;
// Another program holds the store longer than this one waits.
inline constexpr status_t B_BUSY = -0x7fff0005;
inline constexpr status_t B_DEVICE_FULL = -0x7fff0006;
inline constexpr status_t B_READ_ONLY_DEVICE = -0x7fff0007;
// The work of a transaction gave up; nothing of it was kept.
inline constexpr status_t B_CANCELED = -0x7fff0008;

// One player's record in one game, a row of the store's statistics table. Times are seconds;
// -1 where no game was won yet, a last game of 0 where none was played.
struct StatisticsRow {
    int game = 0;
    std::string player;
    int64_t played = 0;
    int64_t won = 0;
    int64_t currentStreak = 0;
    int64_t longestStreak = 0;
    int64_t fastestSeconds = -1;
    int64_t fewestUndos = -1;
    int64_t lastGame = 0;

    bool operator==(const StatisticsRow&) const = default;
};

// The local time now as "YYYYMMDD-HHMMSS": the note of when a damaged store or table was
// kept aside.
std::string TimeStamp();

// The program's persistent attributes (window frames, player name, hiscore tables), one row
// per attribute in a SQLite database in the data folder. It answers like an attribute node:
// `InitCheck` first, then reads and writes of whole values at offset 0.
//
// Opening only reads: the database, its folder and its settings are made by the first
// write. A store that can be read but not written (a read-only folder or medium, a full
// disk) shows everything stored and refuses writes with the reason, in `Problem`. A damaged
// or foreign database is moved aside, never overwritten; a data folder that can neither be
// read nor made leaves the store uninitialised, so every caller falls back to defaults.
class AttributeStore {
public:
    // How long a write waits for another program that holds the store: long enough for
    // that program's own write, short enough that a window waiting on it is not frozen.
    static constexpr int kShortWait = 250;
    static constexpr int kLongWait = 10000;

    explicit AttributeStore(std::string dataDirectory, int waitMilliseconds = kLongWait);
    ~AttributeStore();
    AttributeStore(const AttributeStore&) = delete;
    AttributeStore& operator=(const AttributeStore&) = delete;

    status_t InitCheck() const { return initStatus; }

    // Reads the whole value of `name` into `buffer`. A value stored with another type code
    // or another size than `length` counts as absent (B_ENTRY_NOT_FOUND).
    ssize_t ReadAttr(const char* name, type_code type, off_t offset, void* buffer,
                     size_t length) const;
    // Replaces the value of `name`; returns `length` on success.
    ssize_t WriteAttr(const char* name, type_code type, off_t offset, const void* buffer,
                      size_t length);
    status_t RemoveAttr(const char* name);
    // Whether anything is stored under `name`, and its type and size whatever they are.
    bool StatAttr(const char* name, type_code* type, size_t* size) const;
    // Gives the value of `from` the name `to` (which must be free).
    status_t RenameAttr(const char* from, const char* to);
    // Once this returned B_OK, what was written survives a crash or a power cut.
    status_t Sync();

    // Runs `work` as one exclusive transaction, so that a read-change-write of the same
    // attribute by two running programs never loses either's change. When the store cannot
    // be written (held by another program past the wait, read-only, full) the work is not
    // run at all; when `work` returns false or one of its writes fails, none of it is kept.
    status_t Exclusive(const std::function<bool()>& work);

    // The statistics table, beside the attributes. A store made before it existed gains it
    // with its first write. Reads of a table that cannot be read as ours (columns or values
    // that no statistics have) return B_BAD_VALUE; `RebuildStatistics` keeps it aside under
    // a name of its own and starts an empty one, the attributes untouched.
    status_t ReadStatistics(int game, const std::string& player, StatisticsRow* row) const;
    // Every row of `game`, or of all games when it is negative, by game and then player.
    status_t ListStatistics(int game, std::vector<StatisticsRow>* rows) const;
    status_t WriteStatistics(const StatisticsRow& row);
    status_t ClearStatistics();
    bool StatisticsDamaged() const;
    status_t RebuildStatistics(std::string* keptAs);
    // The schema step of the database the store is at; 0 for one made before statistics.
    static constexpr int kSchemaVersion = 1;

    // Why writes fail now, in the player's words ("the disk holding … is full"); empty
    // while they succeed.
    const std::string& Problem() const { return problem; }
    bool Writable() const { return mode == Mode::ReadWrite || mode == Mode::Absent; }
    void SetWait(int milliseconds);
    int Wait() const { return waitMilliseconds; }

    const std::string& DataDirectory() const { return dataDirectory; }
    const std::string& DatabasePath() const { return databasePath; }

    // The store of this program run, in the folder set by `SetDataDirectory` (the
    // "--data-dir" option) or else in the user's data folder. Its writes wait only briefly.
    static AttributeStore& Program();
    static void SetDataDirectory(std::string dataDirectory);
    static std::string DefaultDataDirectory();

    static constexpr const char* kDatabaseName = "fjolk.db";

private:
    // Absent: no database yet, one can be made. ReadOnly: readable, not writable now.
    enum class Mode { None, Absent, ReadOnly, ReadWrite };
    enum class OpenResult { Ours, NotOurs, Failed };

    void Open();
    void OpenForReading();
    void NoteFile();
    bool FileReplaced() const;
    OpenResult OpenExisting(bool writable, bool immutable);
    OpenResult CheckOurs();
    bool AttributesTableFits() const;
    bool MakeWritable();
    bool CreateSchema();
    bool PrepareStatements() const;
    bool StatisticsTableExists() const;
    std::string StatisticsKind() const;
    status_t RunWrite(const std::string& sql);
    void MoveAside(const char* why);
    std::string MoveAside(const std::string& path, const char* why);
    void Close();
    status_t Fail(int code, const char* what);
    status_t Failed(int code, const char* what);
    sqlite3_stmt* Prepare(const char* sql) const;

    std::string dataDirectory;
    std::string databasePath;
    int waitMilliseconds;
    status_t initStatus = B_NO_INIT;
    Mode mode = Mode::None;
    bool schemaReady = false;
    std::string problem;
    sqlite3* db = nullptr;
    mutable sqlite3_stmt* readStatement = nullptr;
    mutable sqlite3_stmt* statStatement = nullptr;
    sqlite3_stmt* writeStatement = nullptr;
    sqlite3_stmt* removeStatement = nullptr;
    sqlite3_stmt* renameStatement = nullptr;
    // The file the open database is, to notice it removed or replaced under us.
    std::pair<dev_t, ino_t> openedFile{};
    int transactionDepth = 0;
    status_t transactionFailure = B_OK;
    status_t lastFailure = B_NO_INIT;
};
