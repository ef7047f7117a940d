#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

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

// The program's persistent attributes (window frames, player name, hiscore tables), one row
// per attribute in a SQLite database in the data folder. It answers like an attribute node:
// `InitCheck` first, then reads and writes of whole values at offset 0.
//
// A damaged or foreign database is moved aside, never overwritten; a data folder that
// cannot be written leaves the store uninitialised, so every caller falls back to defaults
// and nothing is written.
class AttributeStore {
public:
    explicit AttributeStore(std::string dataDirectory);
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
    // Once this returned B_OK, what was written survives a crash or a power cut.
    status_t Sync();

    // Runs `work` as one exclusive transaction, so that a read-change-write of the same
    // attribute by two running programs never loses either's change.
    status_t Exclusive(const std::function<void()>& work);

    const std::string& DatabasePath() const { return databasePath; }

    // The store of this program run, in the folder set by `SetDataDirectory` (the
    // "--data-dir" option) or else in the user's data folder.
    static AttributeStore& Program();
    static void SetDataDirectory(std::string dataDirectory);
    static std::string DefaultDataDirectory();

    static constexpr const char* kDatabaseName = "fjolk.db";

private:
    enum class OpenResult { Ours, NotOurs, Failed };

    bool Open();
    OpenResult OpenExisting();
    OpenResult CheckOurs();
    bool CreateSchema();
    void MoveAside(const char* why);
    void Close();
    sqlite3_stmt* Prepare(const char* sql) const;

    std::string dataDirectory;
    std::string databasePath;
    status_t initStatus = B_NO_INIT;
    sqlite3* db = nullptr;
    sqlite3_stmt* readStatement = nullptr;
    sqlite3_stmt* writeStatement = nullptr;
    sqlite3_stmt* removeStatement = nullptr;
    int transactionDepth = 0;
};
