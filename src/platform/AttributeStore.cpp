#include "platform/AttributeStore.h"

#include <sqlite3.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <chrono>
#include <filesystem>
#include <memory>
#include <string_view>
#include <thread>

namespace {

// 'FJLK' marks our database, so another program's file is recognised and left alone.
constexpr int kApplicationId = 0x464A4C4B;

std::string TypeText(type_code type) {
    std::string text(4, ' ');
    for (int i = 0; i < 4; ++i)
        text[i] = static_cast<char>((type >> (24 - 8 * i)) & 0xff);
    return text;
}

std::string TimeStamp() {
    std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char text[32];
    std::strftime(text, sizeof text, "%Y%m%d-%H%M%S", &local);
    return text;
}

bool MakeFolder(const std::string& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    return std::filesystem::is_directory(folder, error);
}

std::string& ConfiguredDataDirectory() {
    static std::string folder;
    return folder;
}

std::unique_ptr<AttributeStore>& ProgramStore() {
    static std::unique_ptr<AttributeStore> store;
    return store;
}

} // namespace

AttributeStore::AttributeStore(std::string folder)
    : dataDirectory(std::move(folder)), databasePath(dataDirectory + "/" + kDatabaseName) {
    if (!MakeFolder(dataDirectory) || access(dataDirectory.c_str(), W_OK | X_OK) != 0) {
        std::fprintf(stderr,
                     "Fjolks Patience: cannot write to the data folder %s; "
                     "playing on defaults, nothing will be saved.\n",
                     dataDirectory.c_str());
        return;
    }
    if (Open())
        initStatus = B_OK;
}

AttributeStore::~AttributeStore() {
    Close();
}

void AttributeStore::Close() {
    for (sqlite3_stmt** statement : {&readStatement, &writeStatement, &removeStatement}) {
        sqlite3_finalize(*statement);
        *statement = nullptr;
    }
    if (db != nullptr)
        sqlite3_close(db);
    db = nullptr;
}

bool AttributeStore::Open() {
    std::string why = "no database";
    bool movedAside = false;
    // Another program setting up the same store can keep it busy for a moment; one that
    // SQLite calls damaged or foreign is moved aside once.
    for (int attempt = 0; attempt < 50; ++attempt) {
        OpenResult result = OpenExisting();
        if (result == OpenResult::Ours)
            return true;
        if (db != nullptr)
            why = sqlite3_errmsg(db);
        Close();
        if (result == OpenResult::NotOurs) {
            if (movedAside)
                break;
            MoveAside("is damaged or belongs to another program");
            movedAside = true;
            continue;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    std::fprintf(stderr, "Fjolks Patience: cannot open %s (%s); playing on defaults.\n",
                 databasePath.c_str(), why.c_str());
    return false;
}

// Opens (or creates) the database and checks that it is ours and whole.
AttributeStore::OpenResult AttributeStore::OpenExisting() {
    int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
    if (sqlite3_open_v2(databasePath.c_str(), &db, flags, nullptr) != SQLITE_OK)
        return OpenResult::Failed;
    // Two running programs take turns rather than fail.
    sqlite3_busy_timeout(db, 10000);
    if (sqlite3_db_readonly(db, "main") != 0)
        return OpenResult::Failed;
    OpenResult check = CheckOurs();
    if (check != OpenResult::Ours)
        return check;
    if (sqlite3_exec(db, "PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL;", nullptr, nullptr,
                     nullptr) != SQLITE_OK)
        return OpenResult::Failed;
    if (!CreateSchema())
        return OpenResult::Failed;
    readStatement = Prepare("SELECT type, value FROM attributes WHERE name = ?1");
    writeStatement = Prepare("INSERT INTO attributes(name, type, value) VALUES (?1, ?2, ?3) "
                             "ON CONFLICT(name) DO UPDATE SET type = ?2, value = ?3");
    removeStatement = Prepare("DELETE FROM attributes WHERE name = ?1");
    bool prepared = readStatement && writeStatement && removeStatement;
    return prepared ? OpenResult::Ours : OpenResult::Failed;
}

// A fresh (empty) file is ours to set up; anything else must carry our mark, our table
// and pass SQLite's own check. Only a file SQLite calls damaged or foreign counts as not
// ours: a busy or unreadable one is left alone.
AttributeStore::OpenResult AttributeStore::CheckOurs() {
    // One statement, one snapshot: another program creating the store at this moment is
    // seen either before or after, never half done.
    int id = 0;
    int tables = 0;
    sqlite3_stmt* statement = nullptr;
    int code = sqlite3_prepare_v2(db,
                                  "SELECT (SELECT application_id FROM pragma_application_id()),"
                                  " (SELECT count(*) FROM sqlite_schema)",
                                  -1, &statement, nullptr);
    if (code == SQLITE_OK) {
        code = sqlite3_step(statement);
        if (code == SQLITE_ROW) {
            id = sqlite3_column_int(statement, 0);
            tables = sqlite3_column_int(statement, 1);
            code = SQLITE_OK;
        }
    }
    sqlite3_finalize(statement);
    code &= 0xff;
    if (code == SQLITE_NOTADB || code == SQLITE_CORRUPT)
        return OpenResult::NotOurs;
    if (code != SQLITE_OK)
        return OpenResult::Failed;
    if (id == 0 && tables == 0)
        return OpenResult::Ours;
    if (id != kApplicationId)
        return OpenResult::NotOurs;

    statement = Prepare("PRAGMA quick_check");
    if (statement == nullptr)
        return OpenResult::NotOurs;
    int step = sqlite3_step(statement);
    bool whole =
        step == SQLITE_ROW &&
        std::string_view(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0))) == "ok";
    sqlite3_finalize(statement);
    if (step == SQLITE_BUSY || step == SQLITE_IOERR)
        return OpenResult::Failed;
    return whole ? OpenResult::Ours : OpenResult::NotOurs;
}

bool AttributeStore::CreateSchema() {
    const char* sql = "BEGIN IMMEDIATE;"
                      "CREATE TABLE IF NOT EXISTS attributes("
                      " name TEXT PRIMARY KEY NOT NULL,"
                      " type TEXT NOT NULL,"
                      " value BLOB NOT NULL) WITHOUT ROWID;"
                      "PRAGMA application_id = 1179274315;"
                      "COMMIT;";
    static_assert(kApplicationId == 1179274315);
    if (sqlite3_exec(db, sql, nullptr, nullptr, nullptr) == SQLITE_OK)
        return true;
    sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
    return false;
}

void AttributeStore::MoveAside(const char* why) {
    std::string aside = databasePath + ".damaged-" + TimeStamp();
    std::error_code error;
    for (int n = 2; std::filesystem::exists(aside, error); ++n)
        aside = databasePath + ".damaged-" + TimeStamp() + "-" + std::to_string(n);
    std::filesystem::rename(databasePath, aside, error);
    if (error) {
        std::fprintf(stderr, "Fjolks Patience: %s %s, and it cannot be moved aside (%s).\n",
                     databasePath.c_str(), why, error.message().c_str());
        return;
    }
    for (const char* companion : {"-wal", "-shm"}) {
        std::filesystem::path side = databasePath + companion;
        if (std::filesystem::exists(side, error))
            std::filesystem::rename(side, aside + companion, error);
    }
    std::fprintf(stderr,
                 "Fjolks Patience: %s %s; it was kept as %s and a fresh store was started.\n",
                 databasePath.c_str(), why, aside.c_str());
}

sqlite3_stmt* AttributeStore::Prepare(const char* sql) const {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(db, sql, -1, &statement, nullptr) != SQLITE_OK) {
        sqlite3_finalize(statement);
        return nullptr;
    }
    return statement;
}

ssize_t AttributeStore::ReadAttr(const char* name, type_code type, off_t offset, void* buffer,
                                 size_t length) const {
    if (initStatus != B_OK)
        return initStatus;
    if (name == nullptr || offset != 0 || (buffer == nullptr && length > 0))
        return B_BAD_VALUE;
    sqlite3_reset(readStatement);
    sqlite3_bind_text(readStatement, 1, name, -1, SQLITE_TRANSIENT);
    int step = sqlite3_step(readStatement);
    ssize_t result;
    if (step == SQLITE_DONE) {
        result = B_ENTRY_NOT_FOUND;
    } else if (step != SQLITE_ROW) {
        result = B_FILE_ERROR;
    } else {
        const unsigned char* storedType = sqlite3_column_text(readStatement, 0);
        const void* value = sqlite3_column_blob(readStatement, 1);
        size_t size = static_cast<size_t>(sqlite3_column_bytes(readStatement, 1));
        bool sameType =
            storedType != nullptr && TypeText(type) == reinterpret_cast<const char*>(storedType);
        if (!sameType || size != length) {
            result = B_ENTRY_NOT_FOUND;
        } else {
            if (length > 0)
                std::memcpy(buffer, value, length);
            result = static_cast<ssize_t>(length);
        }
    }
    sqlite3_reset(readStatement);
    return result;
}

ssize_t AttributeStore::WriteAttr(const char* name, type_code type, off_t offset,
                                  const void* buffer, size_t length) {
    if (initStatus != B_OK)
        return initStatus;
    if (name == nullptr || offset != 0 || (buffer == nullptr && length > 0))
        return B_BAD_VALUE;
    std::string typeText = TypeText(type);
    sqlite3_reset(writeStatement);
    sqlite3_bind_text(writeStatement, 1, name, -1, SQLITE_TRANSIENT);
    sqlite3_bind_text(writeStatement, 2, typeText.data(), 4, SQLITE_TRANSIENT);
    sqlite3_bind_blob(writeStatement, 3, length > 0 ? buffer : "", static_cast<int>(length),
                      SQLITE_TRANSIENT);
    int step = sqlite3_step(writeStatement);
    sqlite3_reset(writeStatement);
    return step == SQLITE_DONE ? static_cast<ssize_t>(length) : B_FILE_ERROR;
}

status_t AttributeStore::RemoveAttr(const char* name) {
    if (initStatus != B_OK)
        return initStatus;
    if (name == nullptr)
        return B_BAD_VALUE;
    sqlite3_reset(removeStatement);
    sqlite3_bind_text(removeStatement, 1, name, -1, SQLITE_TRANSIENT);
    int step = sqlite3_step(removeStatement);
    bool removed = step == SQLITE_DONE && sqlite3_changes(db) > 0;
    sqlite3_reset(removeStatement);
    if (step != SQLITE_DONE)
        return B_FILE_ERROR;
    return removed ? B_OK : B_ENTRY_NOT_FOUND;
}

// Every write commits with a full sync of the write-ahead log, so there is nothing left
// to flush here; a store in the middle of a transaction is not yet safe.
status_t AttributeStore::Sync() {
    if (initStatus != B_OK)
        return initStatus;
    return sqlite3_get_autocommit(db) ? B_OK : B_ERROR;
}

status_t AttributeStore::Exclusive(const std::function<void()>& work) {
    if (initStatus != B_OK) {
        work();
        return initStatus;
    }
    if (transactionDepth > 0) {
        ++transactionDepth;
        work();
        --transactionDepth;
        return B_OK;
    }
    if (sqlite3_exec(db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr) != SQLITE_OK) {
        work();
        return B_FILE_ERROR;
    }
    ++transactionDepth;
    work();
    --transactionDepth;
    if (sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr) != SQLITE_OK) {
        sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
        return B_FILE_ERROR;
    }
    return B_OK;
}

std::string AttributeStore::DefaultDataDirectory() {
    const char* dataHome = std::getenv("XDG_DATA_HOME");
    std::string base;
    if (dataHome != nullptr && dataHome[0] == '/') {
        base = dataHome;
    } else {
        const char* home = std::getenv("HOME");
        base = std::string(home != nullptr ? home : ".") + "/.local/share";
    }
    return base + "/FjolksPatience";
}

// A new folder takes effect at once: the next Program() opens the store there.
void AttributeStore::SetDataDirectory(std::string folder) {
    ConfiguredDataDirectory() = std::move(folder);
    ProgramStore().reset();
}

AttributeStore& AttributeStore::Program() {
    std::unique_ptr<AttributeStore>& store = ProgramStore();
    if (!store)
        store = std::make_unique<AttributeStore>(
            ConfiguredDataDirectory().empty() ? DefaultDataDirectory() : ConfiguredDataDirectory());
    return *store;
}
