#include "platform/AttributeStore.h"
#include "platform/Geometry.h"
#include "platform/QtGeometry.h"
#include "platform/SystemTime.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <signal.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <thread>

namespace {

std::string Folder(const QTemporaryDir& dir) {
    return dir.path().toStdString();
}

std::vector<std::string> FilesIn(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

// Captures what the code under test writes to stderr.
class StderrCapture {
public:
    StderrCapture() : file(std::tmpfile()) {
        std::fflush(stderr);
        saved = dup(fileno(stderr));
        dup2(fileno(file), fileno(stderr));
    }
    ~StderrCapture() {
        Restore();
        std::fclose(file);
    }
    std::string Text() {
        Restore();
        std::string text;
        std::rewind(file);
        char buffer[512];
        size_t n;
        while ((n = std::fread(buffer, 1, sizeof buffer, file)) > 0)
            text.append(buffer, n);
        return text;
    }

private:
    void Restore() {
        if (saved < 0)
            return;
        std::fflush(stderr);
        dup2(saved, fileno(stderr));
        close(saved);
        saved = -1;
    }
    std::FILE* file;
    int saved = -1;
};

// The store kept aside in `folder`, without its companion files; empty when there is none.
std::string UndanlagdStore(const std::string& folder) {
    for (const std::string& n : FilesIn(folder))
        if (n.rfind("fjolk.db.damaged-", 0) == 0 && !n.ends_with("-wal") && !n.ends_with("-shm"))
            return folder + "/" + n;
    return {};
}

// What the first row of `sql` holds in its first column, in the database at `path`.
QByteArray ForstaVardet(const std::string& path, const char* sql) {
    sqlite3* db = nullptr;
    QByteArray varde;
    if (sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK) {
        sqlite3_stmt* st = nullptr;
        sqlite3_prepare_v2(db, sql, -1, &st, nullptr);
        if (sqlite3_step(st) == SQLITE_ROW)
            varde = reinterpret_cast<const char*>(sqlite3_column_text(st, 0));
        sqlite3_finalize(st);
    }
    sqlite3_close(db);
    return varde;
}

QByteArray LasFil(const std::string& fil) {
    QFile f(QString::fromStdString(fil));
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return f.readAll();
}

const std::array<char, 20> kNamn = {'E', 'v', 'a', ' ', ' ', ' ', ' ', ' ', ' ', ' ',
                                    ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', 0};

} // namespace

class PlatformTest : public QObject {
    Q_OBJECT

private slots:
    void rektangelMattOchKanter() {
        BRect r(10.5f, 20, 50.9f, 80);
        QCOMPARE(r.Width(), 50.9f - 10.5f);
        QCOMPARE(r.Height(), 60.0f);
        QCOMPARE(r.IntegerWidth(), 40);
        QCOMPARE(r.IntegerHeight(), 60);
        QVERIFY(r.Contains(BPoint(10.5f, 20)));
        QVERIFY(r.Contains(BPoint(50.9f, 80)));
        QVERIFY(!r.Contains(BPoint(51, 80)));
        QVERIFY(!r.Contains(BPoint(30, 19.99f)));
        QVERIFY(r.Contains(BRect(10.5f, 20, 50.9f, 80)));
        QVERIFY(!r.Contains(BRect(10, 20, 50, 80)));
        QVERIFY(!BRect().IsValid());
    }

    void rektangelFlyttasOchKrymps() {
        BRect r(0, 0, 100, 50);
        r.InsetBy(10, 5);
        QCOMPARE(r, BRect(10, 5, 90, 45));
        r.OffsetBy(-10, 15);
        QCOMPARE(r, BRect(0, 20, 80, 60));
        r.OffsetTo(3, 4);
        QCOMPARE(r, BRect(3, 4, 83, 44));
    }

    void rektanglarSnittOchUnion() {
        BRect a(0, 0, 10, 10);
        BRect b(5, 5, 20, 20);
        QCOMPARE(a & b, BRect(5, 5, 10, 10));
        QCOMPARE(a | b, BRect(0, 0, 20, 20));
        QVERIFY(a.Intersects(b));
        QVERIFY(BRect(0, 0, 10, 10).Intersects(BRect(10, 10, 12, 12)));
        QVERIFY(!(a & BRect(11, 0, 12, 10)).IsValid());
        QVERIFY(!a.Intersects(BRect(11, 0, 12, 10)));
    }

    void qtRektangelTackerAllaKantpunkter() {
        // Inclusive edges: (0, 0, 43, 82) covers 44 × 83 pixels.
        QRect q = ToQRect(BRect(0, 0, 43, 82));
        QCOMPARE(q, QRect(0, 0, 44, 83));
        QCOMPARE(ToQRect(BRect(1.9f, 2.9f, 10.9f, 20.9f)), QRect(QPoint(1, 2), QPoint(10, 20)));
        QCOMPARE(ToBRect(QRect(3, 4, 10, 20)), BRect(3, 4, 12, 23));
        QCOMPARE(ToQPoint(BPoint(5.7f, -2.2f)), QPoint(5, -2));
        QCOMPARE(ToBPoint(QPointF(5.5, 6.5)), BPoint(5.5f, 6.5f));
    }

    void vynsRektanglarIPixlar() {
        QCOMPARE(TillPixlar(QRect(3, 4, 44, 83), 1.0), QRect(3, 4, 44, 83));
        QCOMPARE(TillPixlar(QRect(3, 4, 44, 83), 2.0), QRect(6, 8, 88, 166));
        QCOMPARE(TillPixlar(QPoint(3, 4), 2.0), QPoint(6, 8));
        QCOMPARE(FranPixlar(QRect(6, 8, 88, 166), 2.0), QRect(3, 4, 44, 83));
        // An odd pixel edge lies inside a view unit, which is then covered whole.
        QCOMPARE(FranPixlar(QRect(7, 8, 87, 165), 2.0), QRect(3, 4, 44, 83));
        // At a ratio that is not whole, rectangles side by side still cover pixels side by
        // side, each edge on its nearest pixel boundary.
        QRect a = TillPixlar(QRect(0, 0, 3, 1), 1.5);
        QRect b = TillPixlar(QRect(3, 0, 3, 1), 1.5);
        QCOMPARE(a, QRect(0, 0, 5, 2));
        QCOMPARE(b.left(), a.right() + 1);
        QCOMPARE(a.width() + b.width(), 9);
        QCOMPARE(PixelPunkt(QPoint(5, 9), 2.0), QPointF(2.5, 4.5));
    }

    void systemTimeGarFramatISnooze() {
        bigtime_t fore = system_time();
        snooze(20000);
        bigtime_t efter = system_time();
        QVERIFY(efter - fore >= 20000);
    }

    void klockanKanBytasUtOchFasTillbaka() {
        SattKlocka([] { return bigtime_t(7); });
        QCOMPARE(system_time(), bigtime_t(7));
        SattKlocka({});
        bigtime_t fore = system_time();
        snooze(1000);
        QVERIFY(system_time() >= fore + 1000);
    }

    void typkoderArFyraTecken() {
        QCOMPARE(B_RECT_TYPE, type_code(0x52454354));
        QCOMPARE(B_RAW_TYPE, type_code(0x52415754));
    }

    void attributSkrivsOchLasesHelt() {
        QTemporaryDir dir;
        AttributeStore store(Folder(dir));
        QCOMPARE(store.InitCheck(), B_OK);
        BRect ram(10, 20, 650, 420);
        QCOMPARE(store.WriteAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &ram, sizeof ram),
                 ssize_t(16));
        QCOMPARE(store.Sync(), B_OK);
        BRect last;
        QCOMPARE(store.ReadAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &last, sizeof last),
                 ssize_t(16));
        QCOMPARE(last, ram);

        // Another run of the program finds it again.
        AttributeStore nasta(Folder(dir));
        BRect igen;
        QCOMPARE(nasta.ReadAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &igen, sizeof igen),
                 ssize_t(16));
        QCOMPARE(igen, ram);
    }

    void saknatAttributArEntryNotFound() {
        QTemporaryDir dir;
        AttributeStore store(Folder(dir));
        std::array<char, 20> namn{};
        QCOMPARE(store.ReadAttr("FJOLK:PlayerName", B_RAW_TYPE, 0, namn.data(), 20),
                 ssize_t(B_ENTRY_NOT_FOUND));
        QCOMPARE(store.RemoveAttr("FJOLK:PlayerName"), B_ENTRY_NOT_FOUND);
    }

    void felTypkodEllerStorlekRaknasSomSaknat() {
        QTemporaryDir dir;
        AttributeStore store(Folder(dir));
        QCOMPARE(store.WriteAttr("FJOLK:PlayerName", B_RAW_TYPE, 0, kNamn.data(), 20), ssize_t(20));
        std::array<char, 20> namn{};
        QCOMPARE(store.ReadAttr("FJOLK:PlayerName", B_RECT_TYPE, 0, namn.data(), 20),
                 ssize_t(B_ENTRY_NOT_FOUND));
        QCOMPARE(store.ReadAttr("FJOLK:PlayerName", B_RAW_TYPE, 0, namn.data(), 16),
                 ssize_t(B_ENTRY_NOT_FOUND));
        std::array<char, 24> storre{};
        QCOMPARE(store.ReadAttr("FJOLK:PlayerName", B_RAW_TYPE, 0, storre.data(), 24),
                 ssize_t(B_ENTRY_NOT_FOUND));
        QCOMPARE(store.ReadAttr("FJOLK:PlayerName", B_RAW_TYPE, 0, namn.data(), 20), ssize_t(20));
        QCOMPARE(namn, kNamn);
    }

    void taBortAttributTarBaraDet() {
        QTemporaryDir dir;
        AttributeStore store(Folder(dir));
        BRect ram(1, 2, 3, 4);
        store.WriteAttr("FJOLK:SpelWinNr0", B_RECT_TYPE, 0, &ram, 16);
        store.WriteAttr("FJOLK:SpelWinNr2", B_RECT_TYPE, 0, &ram, 16);
        QCOMPARE(store.RemoveAttr("FJOLK:SpelWinNr0"), B_OK);
        BRect last;
        QCOMPARE(store.ReadAttr("FJOLK:SpelWinNr0", B_RECT_TYPE, 0, &last, 16),
                 ssize_t(B_ENTRY_NOT_FOUND));
        QCOMPARE(store.ReadAttr("FJOLK:SpelWinNr2", B_RECT_TYPE, 0, &last, 16), ssize_t(16));
    }

    void enRadPerAttributSomSqliteVisar() {
        QTemporaryDir dir;
        {
            AttributeStore store(Folder(dir));
            BRect ram(1, 2, 3, 4);
            store.WriteAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &ram, 16);
            store.WriteAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &ram, 16);
            store.WriteAttr("FJOLK:PlayerName", B_RAW_TYPE, 0, kNamn.data(), 20);
        }
        sqlite3* db = nullptr;
        std::string path = Folder(dir) + "/fjolk.db";
        QCOMPARE(sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
        sqlite3_stmt* st = nullptr;
        sqlite3_prepare_v2(db, "SELECT name, type, length(value) FROM attributes ORDER BY name", -1,
                           &st, nullptr);
        QCOMPARE(sqlite3_step(st), SQLITE_ROW);
        QCOMPARE(QByteArray(reinterpret_cast<const char*>(sqlite3_column_text(st, 0))),
                 QByteArray("FJOLK:FirstWindow"));
        QCOMPARE(QByteArray(reinterpret_cast<const char*>(sqlite3_column_text(st, 1))),
                 QByteArray("RECT"));
        QCOMPARE(sqlite3_column_int(st, 2), 16);
        QCOMPARE(sqlite3_step(st), SQLITE_ROW);
        QCOMPARE(QByteArray(reinterpret_cast<const char*>(sqlite3_column_text(st, 1))),
                 QByteArray("RAWT"));
        QCOMPARE(sqlite3_column_int(st, 2), 20);
        QCOMPARE(sqlite3_step(st), SQLITE_DONE);
        sqlite3_finalize(st);
        sqlite3_close(db);
    }

    void skadadDatabasFlyttasUndanOchEnNyBorjar() {
        QTemporaryDir dir;
        std::string path = Folder(dir) + "/fjolk.db";
        QByteArray skrap(4096, 'x');
        {
            QFile f(QString::fromStdString(path));
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write(skrap);
        }
        StderrCapture err;
        AttributeStore store(Folder(dir));
        std::string text = err.Text();
        QCOMPARE(store.InitCheck(), B_OK);
        QVERIFY2(text.find("fjolk.db") != std::string::npos, text.c_str());
        QVERIFY2(text.find("kept as") != std::string::npos, text.c_str());
        auto names = FilesIn(Folder(dir));
        auto aside = std::find_if(names.begin(), names.end(), [](const std::string& n) {
            return n.rfind("fjolk.db.damaged-", 0) == 0;
        });
        QVERIFY(aside != names.end());
        QFile kvar(QString::fromStdString(Folder(dir) + "/" + *aside));
        QVERIFY(kvar.open(QIODevice::ReadOnly));
        QCOMPARE(kvar.readAll(), skrap);
        BRect ram(1, 2, 3, 4);
        QCOMPARE(store.WriteAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &ram, 16), ssize_t(16));
    }

    void annanProgramsDatabasLamnasOrord() {
        QTemporaryDir dir;
        std::string path = Folder(dir) + "/fjolk.db";
        sqlite3* db = nullptr;
        QCOMPARE(sqlite3_open(path.c_str(), &db), SQLITE_OK);
        QCOMPARE(sqlite3_exec(db, "CREATE TABLE notes(t TEXT); INSERT INTO notes VALUES('mine');",
                              nullptr, nullptr, nullptr),
                 SQLITE_OK);
        sqlite3_close(db);

        StderrCapture err;
        AttributeStore store(Folder(dir));
        std::string text = err.Text();
        QCOMPARE(store.InitCheck(), B_OK);
        QVERIFY2(text.find("another program") != std::string::npos, text.c_str());
        std::string aside = UndanlagdStore(Folder(dir));
        QVERIFY(!aside.empty());
        QCOMPARE(ForstaVardet(aside, "SELECT t FROM notes"), QByteArray("mine"));
    }

    // Root may write anywhere, so the check runs as the unprivileged user "nobody" then.
    void skrivskyddadMappGerStandardvardenOchEttMeddelande() {
        QTemporaryDir dir;
        std::string folder = Folder(dir) + "/readonly";
        std::filesystem::create_directory(folder);
        chmod(Folder(dir).c_str(), 0755);
        chmod(folder.c_str(), 0555);
        std::string errFile = Folder(dir) + "/stderr.txt";
        std::fclose(std::fopen(errFile.c_str(), "w"));
        chmod(errFile.c_str(), 0666);
        pid_t child = fork();
        if (child == 0) {
            if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0))
                _exit(10);
            if (!std::freopen(errFile.c_str(), "w", stderr))
                _exit(11);
            AttributeStore store(folder);
            BRect ram(1, 2, 3, 4);
            bool defaults =
                store.InitCheck() == B_NO_INIT &&
                store.WriteAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &ram, 16) == B_NO_INIT;
            std::fflush(stderr);
            _exit(defaults ? 0 : 1);
        }
        int status = 0;
        waitpid(child, &status, 0);
        chmod(folder.c_str(), 0755);
        QVERIFY(WIFEXITED(status));
        QCOMPARE(WEXITSTATUS(status), 0);
        QFile err(QString::fromStdString(errFile));
        QVERIFY(err.open(QIODevice::ReadOnly));
        QByteArray text = err.readAll();
        QVERIFY2(text.contains("nothing will be saved"), text.constData());
        QCOMPARE(text.count('\n'), 1);
        QVERIFY(FilesIn(folder).empty());
    }

    // Opening only reads: no folder, database or setting is made before the first write,
    // and a store that is there is left byte for byte as it was.
    void oppnaSkriverIngenting() {
        QTemporaryDir dir;
        std::string folder = Folder(dir) + "/data";
        {
            AttributeStore store(folder);
            QCOMPARE(store.InitCheck(), B_OK);
            BRect ram;
            QCOMPARE(store.ReadAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &ram, 16),
                     ssize_t(B_ENTRY_NOT_FOUND));
            QCOMPARE(store.Sync(), B_OK);
            QCOMPARE(store.RemoveAttr("FJOLK:FirstWindow"), B_ENTRY_NOT_FOUND);
        }
        QVERIFY(!std::filesystem::exists(folder));
        {
            AttributeStore store(folder);
            QCOMPARE(store.WriteAttr("FJOLK:PlayerName", B_RAW_TYPE, 0, kNamn.data(), 20),
                     ssize_t(20));
        }
        QByteArray fore = LasFil(folder + "/fjolk.db");
        auto tid = std::filesystem::last_write_time(folder + "/fjolk.db");
        {
            AttributeStore store(folder);
            std::array<char, 20> namn{};
            QCOMPARE(store.ReadAttr("FJOLK:PlayerName", B_RAW_TYPE, 0, namn.data(), 20),
                     ssize_t(20));
        }
        QCOMPARE(LasFil(folder + "/fjolk.db"), fore);
        QVERIFY(std::filesystem::last_write_time(folder + "/fjolk.db") == tid);
    }

    // A read-only data folder shows everything stored; writes are refused with the reason,
    // and nothing in the folder changes. Root may write anywhere, so the store is opened
    // as the unprivileged user "nobody" then.
    void skrivskyddadMappVisarAlltSomLagrats() {
        QTemporaryDir dir;
        std::string folder = Folder(dir) + "/readonly";
        BRect ram(10, 20, 650, 420);
        std::array<char, 1920> tabell{};
        for (size_t i = 0; i < tabell.size(); ++i)
            tabell[i] = static_cast<char>(i);
        {
            AttributeStore store(folder);
            store.WriteAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &ram, 16);
            store.WriteAttr("FJOLK:PlayerName", B_RAW_TYPE, 0, kNamn.data(), 20);
            store.WriteAttr("FJOLK:Spel3", B_RAW_TYPE, 0, tabell.data(), 1920);
        }
        chmod(Folder(dir).c_str(), 0755);
        chmod((folder + "/fjolk.db").c_str(), 0644);
        chmod(folder.c_str(), 0555);
        std::vector<std::string> fore = FilesIn(folder);
        QByteArray bytes = LasFil(folder + "/fjolk.db");
        pid_t child = fork();
        if (child == 0) {
            if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0))
                _exit(10);
            AttributeStore store(folder, AttributeStore::kShortWait);
            if (store.InitCheck() != B_OK)
                _exit(11);
            BRect last;
            std::array<char, 20> namn{};
            std::array<char, 1920> lastTabell{};
            if (store.ReadAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &last, 16) != 16 ||
                !(last == ram))
                _exit(12);
            if (store.ReadAttr("FJOLK:PlayerName", B_RAW_TYPE, 0, namn.data(), 20) != 20 ||
                namn != kNamn)
                _exit(13);
            if (store.ReadAttr("FJOLK:Spel3", B_RAW_TYPE, 0, lastTabell.data(), 1920) != 1920 ||
                lastTabell != tabell)
                _exit(14);
            if (store.Writable() || store.Problem().find("read-only") == std::string::npos)
                _exit(15);
            if (store.WriteAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &ram, 16) !=
                B_READ_ONLY_DEVICE)
                _exit(16);
            if (store.Exclusive([] { return true; }) != B_READ_ONLY_DEVICE)
                _exit(17);
            _exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        chmod(folder.c_str(), 0755);
        QVERIFY(WIFEXITED(status));
        QCOMPARE(WEXITSTATUS(status), 0);
        QCOMPARE(FilesIn(folder), fore);
        QCOMPARE(LasFil(folder + "/fjolk.db"), bytes);
    }

    // The cause of a failed write is named as the player would put it.
    void upptagenStoreSagerVarfor() {
        QTemporaryDir dir;
        AttributeStore store(Folder(dir), 20);
        BRect ram(1, 2, 3, 4);
        QCOMPARE(store.WriteAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &ram, 16), ssize_t(16));
        QVERIFY(store.Problem().empty());
        sqlite3* annan = nullptr;
        QCOMPARE(sqlite3_open((Folder(dir) + "/fjolk.db").c_str(), &annan), SQLITE_OK);
        QCOMPARE(sqlite3_exec(annan, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
        bool kord = false;
        QCOMPARE(store.Exclusive([&] { return kord = true; }), B_BUSY);
        QVERIFY(!kord);
        QCOMPARE(store.WriteAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &ram, 16), ssize_t(B_BUSY));
        QCOMPARE(store.Problem(), "another program is using " + Folder(dir) + "/fjolk.db");
        sqlite3_exec(annan, "ROLLBACK", nullptr, nullptr, nullptr);
        sqlite3_close(annan);
        // A transaction whose work gives up keeps nothing.
        QCOMPARE(store.Exclusive([&] {
            BRect annat(5, 6, 7, 8);
            store.WriteAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &annat, 16);
            return false;
        }),
                 B_CANCELED);
        BRect last;
        QCOMPARE(store.ReadAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &last, 16), ssize_t(16));
        QCOMPARE(last, ram);
    }

    void mappSomInteKanSkapasGerStandardvarden() {
        QTemporaryDir dir;
        QFile blocker(dir.filePath(QStringLiteral("file")));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        blocker.close();
        std::string folder = Folder(dir) + "/file/data";
        StderrCapture err;
        AttributeStore store(folder);
        std::string text = err.Text();
        QCOMPARE(store.InitCheck(), B_NO_INIT);
        QVERIFY2(text.find("nothing will be saved") != std::string::npos, text.c_str());
        QCOMPARE(std::count(text.begin(), text.end(), '\n'), 1);
        BRect ram(1, 2, 3, 4);
        QCOMPARE(store.WriteAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &ram, 16),
                 ssize_t(B_NO_INIT));
        QCOMPARE(store.ReadAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &ram, 16), ssize_t(B_NO_INIT));
        QVERIFY(!std::filesystem::exists(folder));
    }

    void exclusiveSamlarLasOchSkrivITransaktion() {
        QTemporaryDir dir;
        AttributeStore a(Folder(dir));
        AttributeStore b(Folder(dir));
        int32_t noll = 0;
        a.WriteAttr("counter", B_RAW_TYPE, 0, &noll, 4);
        for (int i = 0; i < 50; ++i) {
            for (AttributeStore* store : {&a, &b}) {
                store->Exclusive([&] {
                    int32_t n = 0;
                    store->ReadAttr("counter", B_RAW_TYPE, 0, &n, 4);
                    ++n;
                    return store->WriteAttr("counter", B_RAW_TYPE, 0, &n, 4) == 4;
                });
            }
        }
        int32_t n = 0;
        QCOMPARE(b.ReadAttr("counter", B_RAW_TYPE, 0, &n, 4), ssize_t(4));
        QCOMPARE(n, 100);
    }

    void tvaProgramSomStartarSamtidigtSkaparEnGemensamStore() {
        for (int varv = 0; varv < 20; ++varv) {
            QTemporaryDir dir;
            std::atomic<int> redo{0};
            std::atomic<int> oppnade{0};
            std::vector<std::thread> tradar;
            for (int i = 0; i < 6; ++i)
                tradar.emplace_back([&] {
                    ++redo;
                    while (redo < 6) {
                    }
                    AttributeStore store(Folder(dir));
                    if (store.InitCheck() == B_OK)
                        ++oppnade;
                });
            for (auto& t : tradar)
                t.join();
            QCOMPARE(oppnade.load(), 6);
            for (const std::string& namn : FilesIn(Folder(dir)))
                QVERIFY2(namn.find("damaged") == std::string::npos, namn.c_str());
        }
    }

    // Something other than a file where the store belongs (a named pipe, a folder) is
    // moved aside as a damaged store is, without being opened: a pipe would block the start
    // for good.
    void storeSomInteArEnFilFlyttasUndan() {
        for (bool ror : {true, false}) {
            QTemporaryDir dir;
            std::string path = Folder(dir) + "/fjolk.db";
            if (ror) {
                QCOMPARE(mkfifo(path.c_str(), 0644), 0);
            } else {
                QVERIFY(std::filesystem::create_directory(path));
                std::fclose(std::fopen((path + "/inside").c_str(), "w"));
            }
            pid_t child = fork();
            if (child == 0) {
                std::freopen("/dev/null", "w", stderr);
                AttributeStore store(Folder(dir));
                BRect ram(1, 2, 3, 4);
                bool ok = store.InitCheck() == B_OK &&
                          store.WriteAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &ram, 16) == 16;
                _exit(ok ? 0 : 1);
            }
            int status = 0;
            pid_t klar = 0;
            for (int i = 0; i < 2000 && klar == 0; ++i) {
                klar = waitpid(child, &status, WNOHANG);
                if (klar == 0)
                    std::this_thread::sleep_for(std::chrono::milliseconds(10));
            }
            if (klar == 0) {
                kill(child, SIGKILL);
                waitpid(child, &status, 0);
                QFAIL("opening the store never returned");
            }
            QVERIFY(WIFEXITED(status));
            QCOMPARE(WEXITSTATUS(status), 0);
            std::string kvar = UndanlagdStore(Folder(dir));
            QVERIFY(!kvar.empty());
            if (ror)
                QVERIFY(std::filesystem::is_fifo(kvar));
            else
                QVERIFY(std::filesystem::exists(kvar + "/inside"));
            QVERIFY(std::filesystem::is_regular_file(path));
        }
    }

    // The same for the files SQLite keeps beside the store: a pipe or a folder in their
    // place is moved aside alone, and the store keeps what it holds.
    void foljefilSomInteArEnFilFlyttasUndan() {
        for (const char* foljare : {"-wal", "-shm"}) {
            QTemporaryDir dir;
            {
                AttributeStore store(Folder(dir));
                QCOMPARE(store.WriteAttr("FJOLK:PlayerName", B_RAW_TYPE, 0, kNamn.data(), 20),
                         ssize_t(20));
            }
            std::string sida = Folder(dir) + "/fjolk.db" + foljare;
            std::filesystem::remove(sida);
            QCOMPARE(mkfifo(sida.c_str(), 0644), 0);
            StderrCapture err;
            AttributeStore store(Folder(dir));
            std::string text = err.Text();
            QVERIFY2(text.find("kept as") != std::string::npos, text.c_str());
            std::array<char, 20> namn{};
            QCOMPARE(store.ReadAttr("FJOLK:PlayerName", B_RAW_TYPE, 0, namn.data(), 20),
                     ssize_t(20));
            QCOMPARE(namn, kNamn);
            BRect ram(1, 2, 3, 4);
            QCOMPARE(store.WriteAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &ram, 16), ssize_t(16));
            QVERIFY(std::filesystem::is_regular_file(sida));
            bool undan = false;
            for (const std::string& n : FilesIn(Folder(dir)))
                undan = undan || n.rfind(std::string("fjolk.db") + foljare + ".damaged-", 0) == 0;
            QVERIFY(undan);
        }
    }

    // A database with our mark whose table of attributes is not ours cannot take a write;
    // it is moved aside whole and a fresh store starts, rather than refusing every result.
    void frammandeAttributtabellFlyttasUndan() {
        QTemporaryDir dir;
        std::string path = Folder(dir) + "/fjolk.db";
        sqlite3* db = nullptr;
        QCOMPARE(sqlite3_open(path.c_str(), &db), SQLITE_OK);
        QCOMPARE(sqlite3_exec(db,
                              "PRAGMA application_id = 1179274315;"
                              "CREATE TABLE attributes(name TEXT, other INTEGER);"
                              "INSERT INTO attributes VALUES('FJOLK:Spel0', 7);",
                              nullptr, nullptr, nullptr),
                 SQLITE_OK);
        sqlite3_close(db);
        StderrCapture err;
        AttributeStore store(Folder(dir));
        std::string text = err.Text();
        QCOMPARE(store.InitCheck(), B_OK);
        QVERIFY2(text.find("kept as") != std::string::npos, text.c_str());
        BRect ram(1, 2, 3, 4);
        QCOMPARE(store.WriteAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &ram, 16), ssize_t(16));
        QVERIFY(store.Problem().empty());
        std::string aside = UndanlagdStore(Folder(dir));
        QVERIFY(!aside.empty());
        QCOMPARE(ForstaVardet(aside, "SELECT other FROM attributes"), QByteArray("7"));
    }

    // Another program holding the store whole (exclusive locking) while this one starts:
    // the start waits about as long as a write would, not many times that, shows what it
    // can and says why results cannot be saved; once the store is free they are.
    void storeLastVidStartenHallerInteUppStarten() {
        QTemporaryDir dir;
        {
            AttributeStore store(Folder(dir), 20);
            QCOMPARE(store.WriteAttr("FJOLK:PlayerName", B_RAW_TYPE, 0, kNamn.data(), 20),
                     ssize_t(20));
        }
        std::string path = Folder(dir) + "/fjolk.db";
        sqlite3* annan = nullptr;
        QCOMPARE(sqlite3_open(path.c_str(), &annan), SQLITE_OK);
        QCOMPARE(sqlite3_exec(annan,
                              "PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE;"
                              "UPDATE attributes SET name = name;",
                              nullptr, nullptr, nullptr),
                 SQLITE_OK);
        // One wait is a second: the start takes about that, where fifty tries, each waiting
        // the whole wait, took fifty; the bound lies far from both.
        const int vanta = 1000;
        auto fore = std::chrono::steady_clock::now();
        AttributeStore store(Folder(dir), vanta);
        auto tid = std::chrono::steady_clock::now() - fore;
        QVERIFY2(tid < std::chrono::milliseconds(15 * vanta),
                 std::to_string(std::chrono::duration_cast<std::chrono::milliseconds>(tid).count())
                     .c_str());
        QCOMPARE(store.InitCheck(), B_OK);
        QCOMPARE(store.Problem(), "another program is using " + path);
        std::array<char, 20> namn{};
        QCOMPARE(store.ReadAttr("FJOLK:PlayerName", B_RAW_TYPE, 0, namn.data(), 20), ssize_t(20));
        QCOMPARE(namn, kNamn);
        sqlite3_exec(annan, "COMMIT", nullptr, nullptr, nullptr);
        sqlite3_close(annan);
        BRect ram(1, 2, 3, 4);
        QCOMPARE(store.WriteAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &ram, 16), ssize_t(16));
        QVERIFY(store.Problem().empty());
    }

    // The data folder removed, or replaced by a file, while the program runs: a write never
    // goes into the removed store, where no one would find it again.
    void borttagenMappUnderKorningenTarIngetIOnodan() {
        QTemporaryDir dir;
        std::string folder = Folder(dir) + "/data";
        AttributeStore store(folder);
        BRect ram(1, 2, 3, 4);
        QCOMPARE(store.WriteAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &ram, 16), ssize_t(16));
        std::filesystem::remove_all(folder);
        BRect annan(5, 6, 7, 8);
        QCOMPARE(store.WriteAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &annan, 16), ssize_t(16));
        {
            AttributeStore igen(folder);
            BRect last;
            QCOMPARE(igen.ReadAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &last, 16), ssize_t(16));
            QCOMPARE(last, annan);
        }
        std::filesystem::remove_all(folder);
        std::fclose(std::fopen(folder.c_str(), "w"));
        StderrCapture err;
        QVERIFY(store.WriteAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &ram, 16) < 0);
        QCOMPARE(store.Exclusive([] { return true; }) == B_OK, false);
        err.Text();
        QCOMPARE(store.Problem(), "the data folder " + folder + " is a file, not a folder");
        QCOMPARE(std::filesystem::file_size(folder), std::uintmax_t{0});
    }

    // A data folder that cannot be had at all says why, so that a result that waits for it
    // is not told only that the store is busy.
    void oanvandbarMappSagerVarfor() {
        QTemporaryDir dir;
        std::string fil = Folder(dir) + "/file";
        std::fclose(std::fopen(fil.c_str(), "w"));
        StderrCapture err;
        AttributeStore iFilen(fil + "/data");
        AttributeStore filen(fil);
        err.Text();
        QCOMPARE(iFilen.InitCheck(), B_NO_INIT);
        QCOMPARE(filen.InitCheck(), B_NO_INIT);
        QCOMPARE(iFilen.Problem(), "the data folder " + fil + "/data cannot be made");
        QCOMPARE(filen.Problem(), "the data folder " + fil + " is a file, not a folder");
    }

    void standardmappFoljerXdg() {
        qputenv("XDG_DATA_HOME", "/tmp/xdg-here");
        QCOMPARE(AttributeStore::DefaultDataDirectory(),
                 std::string("/tmp/xdg-here/FjolksPatience"));
        qputenv("XDG_DATA_HOME", "relative/ignored");
        qputenv("HOME", "/home/someone");
        QCOMPARE(AttributeStore::DefaultDataDirectory(),
                 std::string("/home/someone/.local/share/FjolksPatience"));
    }
};

QTEST_GUILESS_MAIN(PlatformTest)
#include "test_platform.moc"
