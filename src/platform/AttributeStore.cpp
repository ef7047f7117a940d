#include "platform/AttributeStore.h"

#include "platform/Notices.h"

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
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

constexpr const char* kCreateStatistics = "CREATE TABLE IF NOT EXISTS statistics("
                                          " game INTEGER NOT NULL,"
                                          " player TEXT NOT NULL,"
                                          " played INTEGER NOT NULL,"
                                          " won INTEGER NOT NULL,"
                                          " current_streak INTEGER NOT NULL,"
                                          " longest_streak INTEGER NOT NULL,"
                                          " fastest_seconds INTEGER NOT NULL,"
                                          " fewest_undos INTEGER NOT NULL,"
                                          " last_game INTEGER NOT NULL,"
                                          " PRIMARY KEY (game, player)) WITHOUT ROWID;";

constexpr const char* kReadAttribute = "SELECT type, value FROM attributes WHERE name = ?1";
constexpr const char* kWriteAttribute =
    "INSERT INTO attributes(name, type, value) VALUES (?1, ?2, ?3) "
    "ON CONFLICT(name) DO UPDATE SET type = ?2, value = ?3";
constexpr const char* kRemoveAttribute = "DELETE FROM attributes WHERE name = ?1";
constexpr const char* kRenameAttribute = "UPDATE attributes SET name = ?2 WHERE name = ?1";

constexpr const char* kStatisticsColumns =
    "game, player, played, won, current_streak, longest_streak, fastest_seconds, "
    "fewest_undos, last_game";

// Rows no recording of results can make.
constexpr const char* kImpossibleStatistics =
    "SELECT count(*) FROM statistics WHERE NOT ("
    " typeof(game) = 'integer' AND typeof(player) = 'text' AND typeof(played) = 'integer'"
    " AND typeof(won) = 'integer' AND typeof(current_streak) = 'integer'"
    " AND typeof(longest_streak) = 'integer' AND typeof(fastest_seconds) = 'integer'"
    " AND typeof(fewest_undos) = 'integer' AND typeof(last_game) = 'integer'"
    " AND game BETWEEN 0 AND 11 AND won BETWEEN 0 AND played"
    " AND current_streak BETWEEN 0 AND won AND longest_streak BETWEEN current_streak AND won"
    " AND (won = 0) = (fastest_seconds = -1) AND (won = 0) = (fewest_undos = -1)"
    " AND fastest_seconds >= -1 AND fewest_undos >= -1)";

bool MakeFolder(const std::string& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    return std::filesystem::is_directory(folder, error);
}

// Whether a store could be made in `folder`: it is a writable folder, or the nearest part
// of its path that exists is.
bool FolderCanBeWritten(const std::string& folder) {
    std::error_code error;
    std::filesystem::path path = folder;
    while (!path.empty() && !std::filesystem::exists(path, error)) {
        if (path == path.parent_path())
            return false;
        path = path.parent_path();
    }
    if (path.empty())
        path = ".";
    return std::filesystem::is_directory(path, error) && access(path.c_str(), W_OK | X_OK) == 0;
}

// A file's path as a URI's, so that no character of it is read as part of the URI.
std::string UriPath(const std::string& path) {
    static const char* const hex = "0123456789ABCDEF";
    std::string uri;
    for (unsigned char c : path) {
        if (std::isalnum(c) || c == '/' || c == '-' || c == '_' || c == '.' || c == '~') {
            uri += static_cast<char>(c);
        } else {
            uri += '%';
            uri += hex[c >> 4];
            uri += hex[c & 15];
        }
    }
    return uri;
}

// Why no store can be made in `folder`, in the player's words.
std::string FolderProblem(const std::string& folder) {
    std::error_code error;
    if (!std::filesystem::exists(folder, error))
        return "the data folder " + folder + " cannot be made";
    if (!std::filesystem::is_directory(folder, error))
        return "the data folder " + folder + " is a file, not a folder";
    return "the data folder " + folder + " is read-only";
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

AttributeStore::AttributeStore(std::string folder, int wait)
    : dataDirectory(std::move(folder)), databasePath(dataDirectory + "/" + kDatabaseName),
      waitMilliseconds(wait) {
    Open();
}

void AttributeStore::Open() {
    std::error_code error;
    bool canWrite = FolderCanBeWritten(dataDirectory);
    // Only a file is opened as the store: a named pipe would block the start for good.
    if (std::filesystem::exists(databasePath, error) &&
        !std::filesystem::is_regular_file(databasePath, error) && canWrite)
        MoveAside("is not a file");
    // The same for the files SQLite keeps beside it, which hold nothing then.
    for (const char* companion : {"-wal", "-shm"}) {
        std::string side = databasePath + companion;
        if (std::filesystem::exists(side, error) &&
            !std::filesystem::is_regular_file(side, error) && canWrite)
            MoveAside(side, "is not a file");
    }
    if (std::filesystem::exists(databasePath, error)) {
        OpenForReading();
        return;
    }
    if (!canWrite) {
        problem = FolderProblem(dataDirectory);
        Notify(problem + "; playing on defaults, nothing will be saved.");
        return;
    }
    mode = Mode::Absent;
    initStatus = B_OK;
}

AttributeStore::~AttributeStore() {
    Close();
}

void AttributeStore::Close() {
    for (sqlite3_stmt** statement :
         {&readStatement, &statStatement, &writeStatement, &removeStatement, &renameStatement}) {
        sqlite3_finalize(*statement);
        *statement = nullptr;
    }
    if (db != nullptr)
        sqlite3_close(db);
    db = nullptr;
    schemaReady = false;
}

void AttributeStore::SetWait(int milliseconds) {
    waitMilliseconds = milliseconds;
    if (db != nullptr)
        sqlite3_busy_timeout(db, milliseconds);
}

// Opens the database that is there, writable if its folder and file are, else only for
// reading. A database that cannot be opened normally (its folder read-only, its disk full)
// is still read, as it lies.
void AttributeStore::OpenForReading() {
    bool writable = access(dataDirectory.c_str(), W_OK | X_OK) == 0 &&
                    access(databasePath.c_str(), R_OK | W_OK) == 0;
    std::string why = "no database";
    bool movedAside = false;
    bool busy = false;
    // Another program setting up the same store can keep it busy for a moment; one that
    // SQLite calls damaged or foreign is moved aside once. The tries together wait no
    // longer than one write would: a program holding the store longer is not waited for.
    auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(waitMilliseconds);
    for (int attempt = 0; attempt < 50; ++attempt) {
        OpenResult result = OpenExisting(writable, false);
        if (result == OpenResult::Ours) {
            mode = writable ? Mode::ReadWrite : Mode::ReadOnly;
            if (!writable)
                problem = "the data folder " + dataDirectory + " is read-only";
            initStatus = B_OK;
            return;
        }
        int code = db != nullptr ? sqlite3_errcode(db) & 0xff : SQLITE_CANTOPEN;
        if (db != nullptr)
            why = sqlite3_errmsg(db);
        Close();
        if (result == OpenResult::NotOurs) {
            if (!writable || movedAside)
                break;
            MoveAside("is damaged or belongs to another program");
            movedAside = true;
            std::error_code error;
            if (!std::filesystem::exists(databasePath, error)) {
                mode = Mode::Absent;
                initStatus = B_OK;
                return;
            }
            continue;
        }
        busy = code == SQLITE_BUSY || code == SQLITE_LOCKED;
        if (!busy || std::chrono::steady_clock::now() >= deadline)
            break;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    if (OpenExisting(false, true) == OpenResult::Ours) {
        mode = Mode::ReadOnly;
        problem = !writable ? "the data folder " + dataDirectory + " is read-only"
                  : busy    ? "another program is using " + databasePath
                            : databasePath + " can only be read (" + why + ")";
        initStatus = B_OK;
        return;
    }
    Close();
    problem = databasePath + " cannot be opened (" + why + ")";
    Notify("cannot open " + databasePath + " (" + why + "); playing on defaults.");
}

// Opens the database and checks that it is ours and whole. An immutable open reads the
// file as it lies, without the shared-memory file a read otherwise needs beside it.
AttributeStore::OpenResult AttributeStore::OpenExisting(bool writable, bool immutable) {
    int flags = (writable ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY) | SQLITE_OPEN_NOMUTEX;
    std::string path = databasePath;
    if (immutable) {
        flags |= SQLITE_OPEN_URI;
        path = "file:" + UriPath(databasePath) + "?immutable=1";
    }
    if (sqlite3_open_v2(path.c_str(), &db, flags, nullptr) != SQLITE_OK)
        return OpenResult::Failed;
    NoteFile();
    // Two running programs take turns rather than fail.
    sqlite3_busy_timeout(db, waitMilliseconds);
    OpenResult check = CheckOurs();
    if (check != OpenResult::Ours)
        return check;
    if (writable &&
        sqlite3_exec(db, "PRAGMA synchronous=FULL", nullptr, nullptr, nullptr) != SQLITE_OK)
        return OpenResult::Failed;
    return OpenResult::Ours;
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
    if (!AttributesTableFits())
        return sqlite3_errcode(db) == SQLITE_BUSY ? OpenResult::Failed : OpenResult::NotOurs;

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

// Whether a table of attributes, if there is one, is one our reads and writes work on: a
// table of that name made otherwise would refuse every write.
bool AttributeStore::AttributesTableFits() const {
    sqlite3_stmt* statement =
        Prepare("SELECT count(*) FROM sqlite_schema WHERE name = 'attributes'");
    bool exists = statement != nullptr && sqlite3_step(statement) == SQLITE_ROW &&
                  sqlite3_column_int(statement, 0) > 0;
    sqlite3_finalize(statement);
    if (!exists)
        return true;
    for (const char* sql : {kReadAttribute, kWriteAttribute}) {
        statement = Prepare(sql);
        if (statement == nullptr)
            return false;
        sqlite3_finalize(statement);
    }
    return true;
}

// Whether the store can be written: made, set up and ready. The first write of a run makes
// the folder and the database when there are none; a store that could only be read is
// opened again for writing, in case its folder has since become writable.
bool AttributeStore::MakeWritable() {
    // The data folder removed or replaced while the program runs: a write into the file
    // still open would go where no one finds it again. The store is opened anew, as at
    // start; one that could not be had then is tried again.
    if (transactionDepth == 0 && (mode == Mode::None || (db != nullptr && FileReplaced()))) {
        Close();
        mode = Mode::None;
        initStatus = B_NO_INIT;
        problem.clear();
        Open();
        if (mode == Mode::None) {
            lastFailure = initStatus;
            return false;
        }
    }
    if (mode == Mode::ReadWrite && schemaReady)
        return true;
    if (mode == Mode::ReadOnly) {
        if (access(dataDirectory.c_str(), W_OK | X_OK) != 0 ||
            access(databasePath.c_str(), W_OK) != 0) {
            problem = "the data folder " + dataDirectory + " is read-only";
            lastFailure = B_READ_ONLY_DEVICE;
            return false;
        }
        Close();
        if (OpenExisting(true, false) != OpenResult::Ours) {
            status_t status = Fail(db != nullptr ? sqlite3_errcode(db) : SQLITE_CANTOPEN,
                                   "cannot be opened for writing");
            Close();
            OpenExisting(false, true);
            lastFailure = status;
            return false;
        }
        mode = Mode::ReadWrite;
    }
    if (mode == Mode::Absent) {
        if (!MakeFolder(dataDirectory)) {
            problem = "the data folder " + dataDirectory + " cannot be made";
            lastFailure = B_READ_ONLY_DEVICE;
            return false;
        }
        int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
        if (sqlite3_open_v2(databasePath.c_str(), &db, flags, nullptr) != SQLITE_OK) {
            lastFailure =
                Fail(db != nullptr ? sqlite3_errcode(db) : SQLITE_CANTOPEN, "cannot be made");
            Close();
            return false;
        }
        NoteFile();
        sqlite3_busy_timeout(db, waitMilliseconds);
        sqlite3_exec(db, "PRAGMA synchronous=FULL", nullptr, nullptr, nullptr);
        mode = Mode::ReadWrite;
    }
    if (!CreateSchema())
        return false;
    // The cause is taken at the statement that failed, before another one clears it.
    for (auto [statement, sql] : {std::pair{&writeStatement, kWriteAttribute},
                                  std::pair{&removeStatement, kRemoveAttribute},
                                  std::pair{&renameStatement, kRenameAttribute}}) {
        if (*statement == nullptr)
            *statement = Prepare(sql);
        if (*statement == nullptr) {
            lastFailure = Fail(sqlite3_errcode(db), "cannot be written");
            return false;
        }
    }
    schemaReady = true;
    return true;
}

void AttributeStore::NoteFile() {
    struct stat st {};
    openedFile = stat(databasePath.c_str(), &st) == 0 ? std::pair{st.st_dev, st.st_ino}
                                                      : std::pair{dev_t{0}, ino_t{0}};
}

bool AttributeStore::FileReplaced() const {
    struct stat st {};
    return stat(databasePath.c_str(), &st) != 0 || std::pair{st.st_dev, st.st_ino} != openedFile;
}

// The write-ahead log, our table and our mark; set up once, by whichever program first
// writes, and only looked at after that.
bool AttributeStore::CreateSchema() {
    sqlite3_stmt* statement =
        Prepare("SELECT (SELECT application_id FROM pragma_application_id()),"
                " (SELECT count(*) FROM sqlite_schema WHERE name = 'attributes'),"
                " (SELECT journal_mode FROM pragma_journal_mode()),"
                " (SELECT user_version FROM pragma_user_version())");
    bool ready = false;
    if (statement != nullptr && sqlite3_step(statement) == SQLITE_ROW)
        ready = sqlite3_column_int(statement, 0) == kApplicationId &&
                sqlite3_column_int(statement, 1) == 1 &&
                std::string_view(
                    reinterpret_cast<const char*>(sqlite3_column_text(statement, 2))) == "wal" &&
                sqlite3_column_int(statement, 3) >= kSchemaVersion;
    sqlite3_finalize(statement);
    if (ready)
        return true;
    int code = sqlite3_exec(db, "PRAGMA journal_mode=WAL", nullptr, nullptr, nullptr);
    // The steps run in one transaction, and only those the store has not had: a store of
    // an older run keeps its attributes and gains the statistics table.
    if (code == SQLITE_OK)
        code = sqlite3_exec(db,
                            "BEGIN IMMEDIATE;"
                            "CREATE TABLE IF NOT EXISTS attributes("
                            " name TEXT PRIMARY KEY NOT NULL,"
                            " type TEXT NOT NULL,"
                            " value BLOB NOT NULL) WITHOUT ROWID;"
                            "PRAGMA application_id = 1179274315;",
                            nullptr, nullptr, nullptr);
    int version = 0;
    if (code == SQLITE_OK) {
        statement = Prepare("PRAGMA user_version");
        if (statement != nullptr && sqlite3_step(statement) == SQLITE_ROW)
            version = sqlite3_column_int(statement, 0);
        sqlite3_finalize(statement);
    }
    if (code == SQLITE_OK && version < 1)
        code =
            sqlite3_exec(db, (std::string(kCreateStatistics) + "PRAGMA user_version = 1;").c_str(),
                         nullptr, nullptr, nullptr);
    if (code == SQLITE_OK)
        code = sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
    static_assert(kApplicationId == 1179274315);
    if (code == SQLITE_OK)
        return true;
    lastFailure = Fail(code, "cannot be set up");
    if (!sqlite3_get_autocommit(db))
        sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
    return false;
}

// The status of a failed write, with its cause in the player's words kept in `problem`.
status_t AttributeStore::Fail(int code, const char* what) {
    int primary = code & 0xff;
    int systemError = db != nullptr ? sqlite3_system_errno(db) : 0;
    std::string message = db != nullptr ? sqlite3_errmsg(db) : sqlite3_errstr(code);
    if (primary == SQLITE_BUSY || primary == SQLITE_LOCKED) {
        problem = "another program is using " + databasePath;
        return B_BUSY;
    }
    if (primary == SQLITE_FULL || systemError == ENOSPC || systemError == EDQUOT) {
        problem = "the disk holding " + dataDirectory + " is full";
        return B_DEVICE_FULL;
    }
    if (primary == SQLITE_READONLY || systemError == EROFS || systemError == EACCES ||
        systemError == EPERM) {
        problem = "the data folder " + dataDirectory + " is read-only";
        return B_READ_ONLY_DEVICE;
    }
    problem = databasePath + " " + what + " (" + message + ")";
    return B_FILE_ERROR;
}

void AttributeStore::MoveAside(const char* why) {
    std::string aside = MoveAside(databasePath, why);
    if (aside.empty())
        return;
    std::error_code error;
    for (const char* companion : {"-wal", "-shm"}) {
        std::filesystem::path side = databasePath + companion;
        if (std::filesystem::exists(side, error))
            std::filesystem::rename(side, aside + companion, error);
    }
    Notify(databasePath + " " + why + "; it was kept as " + aside +
           " and a fresh store was started.");
}

// Renames `path` to a free name that says when; the new name, or empty when it stays.
std::string AttributeStore::MoveAside(const std::string& path, const char* why) {
    std::string aside = path + ".damaged-" + TimeStamp();
    std::error_code error;
    for (int n = 2; std::filesystem::exists(aside, error); ++n)
        aside = path + ".damaged-" + TimeStamp() + "-" + std::to_string(n);
    std::filesystem::rename(path, aside, error);
    if (error) {
        Notify(path + " " + why + ", and it cannot be moved aside (" + error.message() + ").");
        return {};
    }
    if (path != databasePath)
        Notify(path + " " + why + "; it was kept as " + aside + ".");
    return aside;
}

sqlite3_stmt* AttributeStore::Prepare(const char* sql) const {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(db, sql, -1, &statement, nullptr) != SQLITE_OK) {
        sqlite3_finalize(statement);
        return nullptr;
    }
    return statement;
}

// The reading statements, once there is a table to read: a store another program is just
// setting up may not have it yet.
bool AttributeStore::PrepareStatements() const {
    if (db == nullptr)
        return false;
    if (readStatement == nullptr)
        readStatement = Prepare(kReadAttribute);
    if (statStatement == nullptr)
        statStatement = Prepare("SELECT type, length(value) FROM attributes WHERE name = ?1");
    return readStatement != nullptr && statStatement != nullptr;
}

ssize_t AttributeStore::ReadAttr(const char* name, type_code type, off_t offset, void* buffer,
                                 size_t length) const {
    if (initStatus != B_OK)
        return initStatus;
    if (name == nullptr || offset != 0 || (buffer == nullptr && length > 0))
        return B_BAD_VALUE;
    if (!PrepareStatements())
        return B_ENTRY_NOT_FOUND;
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

bool AttributeStore::StatAttr(const char* name, type_code* type, size_t* size) const {
    if (initStatus != B_OK || name == nullptr || !PrepareStatements())
        return false;
    sqlite3_reset(statStatement);
    sqlite3_bind_text(statStatement, 1, name, -1, SQLITE_TRANSIENT);
    bool found = sqlite3_step(statStatement) == SQLITE_ROW;
    if (found) {
        const unsigned char* text = sqlite3_column_text(statStatement, 0);
        type_code code = 0;
        for (int i = 0; i < 4; ++i)
            code =
                (code << 8) | (text != nullptr && text[i] != 0 ? static_cast<uint8_t>(text[i]) : 0);
        if (type != nullptr)
            *type = code;
        if (size != nullptr)
            *size = static_cast<size_t>(sqlite3_column_int64(statStatement, 1));
    }
    sqlite3_reset(statStatement);
    return found;
}

ssize_t AttributeStore::WriteAttr(const char* name, type_code type, off_t offset,
                                  const void* buffer, size_t length) {
    if (name == nullptr || offset != 0 || (buffer == nullptr && length > 0))
        return B_BAD_VALUE;
    if (!MakeWritable())
        return lastFailure;
    std::string typeText = TypeText(type);
    sqlite3_reset(writeStatement);
    sqlite3_bind_text(writeStatement, 1, name, -1, SQLITE_TRANSIENT);
    sqlite3_bind_text(writeStatement, 2, typeText.data(), 4, SQLITE_TRANSIENT);
    sqlite3_bind_blob(writeStatement, 3, length > 0 ? buffer : "", static_cast<int>(length),
                      SQLITE_TRANSIENT);
    int step = sqlite3_step(writeStatement);
    sqlite3_reset(writeStatement);
    if (step != SQLITE_DONE)
        return Failed(step, "cannot be written");
    if (transactionDepth == 0)
        problem.clear();
    return static_cast<ssize_t>(length);
}

status_t AttributeStore::RemoveAttr(const char* name) {
    if (initStatus != B_OK)
        return initStatus;
    if (name == nullptr)
        return B_BAD_VALUE;
    if (mode == Mode::Absent && transactionDepth == 0)
        return B_ENTRY_NOT_FOUND;
    if (!MakeWritable())
        return lastFailure;
    sqlite3_reset(removeStatement);
    sqlite3_bind_text(removeStatement, 1, name, -1, SQLITE_TRANSIENT);
    int step = sqlite3_step(removeStatement);
    bool removed = step == SQLITE_DONE && sqlite3_changes(db) > 0;
    sqlite3_reset(removeStatement);
    if (step != SQLITE_DONE)
        return Failed(step, "cannot be written");
    return removed ? B_OK : B_ENTRY_NOT_FOUND;
}

status_t AttributeStore::RenameAttr(const char* from, const char* to) {
    if (from == nullptr || to == nullptr)
        return B_BAD_VALUE;
    if (!MakeWritable())
        return lastFailure;
    sqlite3_reset(renameStatement);
    sqlite3_bind_text(renameStatement, 1, from, -1, SQLITE_TRANSIENT);
    sqlite3_bind_text(renameStatement, 2, to, -1, SQLITE_TRANSIENT);
    int step = sqlite3_step(renameStatement);
    bool renamed = step == SQLITE_DONE && sqlite3_changes(db) > 0;
    sqlite3_reset(renameStatement);
    if (step != SQLITE_DONE)
        return Failed(step, "cannot be written");
    return renamed ? B_OK : B_ENTRY_NOT_FOUND;
}

// A write that failed inside a transaction spoils the whole of it.
status_t AttributeStore::Failed(int code, const char* what) {
    status_t status = Fail(code, what);
    if (transactionDepth > 0 && transactionFailure == B_OK)
        transactionFailure = status;
    return status;
}

// Every write commits with a full sync of the write-ahead log, so there is nothing left
// to flush here; a store in the middle of a transaction is not yet safe.
status_t AttributeStore::Sync() {
    if (initStatus != B_OK)
        return initStatus;
    if (db == nullptr)
        return B_OK;
    return sqlite3_get_autocommit(db) ? B_OK : B_ERROR;
}

status_t AttributeStore::Exclusive(const std::function<bool()>& work) {
    if (transactionDepth > 0) {
        ++transactionDepth;
        bool done = work();
        --transactionDepth;
        if (!done && transactionFailure == B_OK)
            transactionFailure = B_CANCELED;
        return done ? B_OK : B_CANCELED;
    }
    if (!MakeWritable())
        return lastFailure;
    int code = sqlite3_exec(db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    if (code != SQLITE_OK)
        return Fail(code, "cannot be written");
    transactionFailure = B_OK;
    ++transactionDepth;
    bool done = work();
    --transactionDepth;
    if (!done && transactionFailure == B_OK)
        transactionFailure = B_CANCELED;
    if (transactionFailure == B_OK) {
        code = sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
        if (code == SQLITE_OK) {
            problem.clear();
            return B_OK;
        }
        transactionFailure = Fail(code, "cannot be written");
    }
    if (!sqlite3_get_autocommit(db))
        sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
    return transactionFailure;
}

// What the store holds under the statistics' name: "table", another kind of object ("view",
// "index", "trigger"), or nothing.
std::string AttributeStore::StatisticsKind() const {
    sqlite3_stmt* statement = Prepare("SELECT type FROM sqlite_schema WHERE name = 'statistics'");
    std::string kind;
    if (statement != nullptr && sqlite3_step(statement) == SQLITE_ROW)
        kind = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
    sqlite3_finalize(statement);
    return kind;
}

bool AttributeStore::StatisticsTableExists() const {
    return StatisticsKind() == "table";
}

bool AttributeStore::StatisticsDamaged() const {
    if (initStatus != B_OK || db == nullptr)
        return false;
    std::string kind = StatisticsKind();
    if (kind != "table")
        return !kind.empty();
    sqlite3_stmt* statement = Prepare(kImpossibleStatistics);
    bool damaged = statement == nullptr || sqlite3_step(statement) != SQLITE_ROW ||
                   sqlite3_column_int64(statement, 0) != 0;
    sqlite3_finalize(statement);
    if (!damaged) {
        statement = Prepare((std::string("SELECT ") + kStatisticsColumns +
                             " FROM statistics WHERE game = 0 AND player = ''")
                                .c_str());
        damaged = statement == nullptr;
        sqlite3_finalize(statement);
    }
    return damaged;
}

status_t AttributeStore::ListStatistics(int game, std::vector<StatisticsRow>* rows) const {
    rows->clear();
    if (initStatus != B_OK)
        return initStatus;
    if (StatisticsDamaged())
        return B_BAD_VALUE;
    if (db == nullptr || !StatisticsTableExists())
        return B_OK;
    sqlite3_stmt* statement =
        Prepare((std::string("SELECT ") + kStatisticsColumns +
                 " FROM statistics WHERE ?1 < 0 OR game = ?1 ORDER BY game, player")
                    .c_str());
    if (statement == nullptr)
        return B_FILE_ERROR;
    sqlite3_bind_int(statement, 1, game);
    int step;
    while ((step = sqlite3_step(statement)) == SQLITE_ROW) {
        StatisticsRow row;
        row.game = sqlite3_column_int(statement, 0);
        const unsigned char* player = sqlite3_column_text(statement, 1);
        row.player = player != nullptr ? reinterpret_cast<const char*>(player) : "";
        int64_t* fields[] = {
            &row.played,         &row.won,         &row.currentStreak, &row.longestStreak,
            &row.fastestSeconds, &row.fewestUndos, &row.lastGame};
        for (int i = 0; i < 7; ++i)
            *fields[i] = sqlite3_column_int64(statement, i + 2);
        rows->push_back(row);
    }
    sqlite3_finalize(statement);
    return step == SQLITE_DONE ? B_OK : B_FILE_ERROR;
}

status_t AttributeStore::ReadStatistics(int game, const std::string& player,
                                        StatisticsRow* row) const {
    std::vector<StatisticsRow> rows;
    status_t status = ListStatistics(game, &rows);
    if (status != B_OK)
        return status;
    for (const StatisticsRow& candidate : rows)
        if (candidate.player == player) {
            *row = candidate;
            return B_OK;
        }
    return B_ENTRY_NOT_FOUND;
}

status_t AttributeStore::WriteStatistics(const StatisticsRow& row) {
    if (!MakeWritable())
        return lastFailure;
    // A table dropped by hand since the schema step is made again, so results can still
    // be entered.
    if (!StatisticsTableExists()) {
        status_t status = RunWrite(kCreateStatistics);
        if (status != B_OK)
            return status;
    }
    sqlite3_stmt* statement =
        Prepare((std::string("INSERT OR REPLACE INTO statistics(") + kStatisticsColumns +
                 ") VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9)")
                    .c_str());
    if (statement == nullptr)
        return Failed(sqlite3_errcode(db), "cannot be written");
    sqlite3_bind_int(statement, 1, row.game);
    sqlite3_bind_text(statement, 2, row.player.c_str(), -1, SQLITE_TRANSIENT);
    const int64_t fields[] = {
        row.played,         row.won,         row.currentStreak, row.longestStreak,
        row.fastestSeconds, row.fewestUndos, row.lastGame};
    for (int i = 0; i < 7; ++i)
        sqlite3_bind_int64(statement, i + 3, fields[i]);
    int step = sqlite3_step(statement);
    sqlite3_finalize(statement);
    if (step != SQLITE_DONE)
        return Failed(step, "cannot be written");
    return B_OK;
}

status_t AttributeStore::RunWrite(const std::string& sql) {
    if (!MakeWritable())
        return lastFailure;
    int code = sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK)
        return Failed(code, "cannot be written");
    return B_OK;
}

status_t AttributeStore::ClearStatistics() {
    // Nothing to clear is nothing to write: a store from before the statistics stays as it is.
    if (initStatus == B_OK && (db == nullptr || !StatisticsTableExists()))
        return B_OK;
    return RunWrite("DELETE FROM statistics");
}

status_t AttributeStore::RebuildStatistics(std::string* keptAs) {
    if (!MakeWritable())
        return lastFailure;
    std::string aside = "statistics.damaged-" + TimeStamp();
    // A view, an index or a trigger of that name holds no row of its own to keep.
    std::string kind = StatisticsKind();
    if (kind == "view" || kind == "index" || kind == "trigger") {
        status_t status = RunWrite("DROP " + kind + " statistics");
        if (status != B_OK)
            return status;
        aside.clear();
    }
    for (int n = 2; n < 100 && StatisticsTableExists(); ++n) {
        if (sqlite3_exec(db, ("ALTER TABLE statistics RENAME TO \"" + aside + "\"").c_str(),
                         nullptr, nullptr, nullptr) == SQLITE_OK)
            break;
        aside = "statistics.damaged-" + TimeStamp() + "-" + std::to_string(n);
    }
    // A table SQLite cannot even rename holds nothing that could be read again.
    if (StatisticsTableExists()) {
        aside.clear();
        status_t status = RunWrite("DROP TABLE statistics");
        if (status != B_OK)
            return status;
    }
    if (keptAs != nullptr)
        *keptAs = aside;
    return RunWrite(kCreateStatistics);
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
            ConfiguredDataDirectory().empty() ? DefaultDataDirectory() : ConfiguredDataDirectory(),
            kShortWait);
    return *store;
}

std::string TimeStamp() {
    std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char text[32];
    std::strftime(text, sizeof text, "%Y%m%d-%H%M%S", &local);
    return text;
}
