#include "cards/Hiscore.h"
#include "cards/VantandeResultat.h"
#include "platform/AttributeStore.h"
#include "platform/Notices.h"
#include "support/Poster.h"
#include "support/Vakt.h"

#include <QTemporaryDir>
#include <QTest>

#include <signal.h>
#include <sqlite3.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

// Results are never lost: not by two running programs, not by a program killed mid-write.

namespace {

constexpr bigtime_t kSekund = 1000000;

HiscoreLista LasTabell(const std::string& folder, int spelNr) {
    AttributeStore store(folder);
    HiscoreLista tabell;
    std::string namn = HiscoreAttributNamn(spelNr);
    if (store.ReadAttr(namn.c_str(), B_RAW_TYPE, 0, tabell.data(), sizeof tabell) != 1920)
        qFatal("the table cannot be read");
    return tabell;
}

// Records `antal` Idioten results in a child process: undo counts forst, forst + steg, ...
pid_t SpelaIBarn(const std::string& folder, const char* prefix, int forst, int steg, int antal,
                 int rapport = -1) {
    pid_t barn = fork();
    if (barn != 0)
        return barn;
    AttributeStore store(folder);
    for (int i = 0; i < antal; ++i) {
        int undos = forst + steg * i;
        char namn[20];
        std::snprintf(namn, sizeof namn, "%s%d", prefix, undos);
        // Won when the undo count is a multiple of three, so that the statistics have
        // both to count.
        AddHiscore(store, 0, HiscoreResultat{rapport >= 0 ? i : 0, 1, undos % 3 == 0}, undos, namn,
                   system_time() - kSekund, std::time(nullptr));
        if (rapport >= 0 && write(rapport, &i, sizeof i) != sizeof i)
            _exit(3);
    }
    _exit(0);
}

// The games played and won in game 0, over every player.
std::pair<int64_t, int64_t> SpeladeOchVunna(const std::string& folder) {
    AttributeStore store(folder);
    std::vector<StatisticsRow> rader;
    if (store.ListStatistics(0, &rader) != B_OK)
        qFatal("the statistics cannot be read");
    std::pair<int64_t, int64_t> summa{0, 0};
    for (const StatisticsRow& rad : rader) {
        summa.first += rad.played;
        summa.second += rad.won;
    }
    return summa;
}

// Another program's connection to the store, which takes the write lock and keeps it.
class AnnatProgram {
public:
    explicit AnnatProgram(const std::string& folder) {
        std::string fil = folder + "/fjolk.db";
        if (sqlite3_open(fil.c_str(), &db) != SQLITE_OK ||
            sqlite3_exec(db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr) != SQLITE_OK)
            qFatal("the other program cannot take the store");
    }
    ~AnnatProgram() { sqlite3_close(db); }
    // Stores its own table of game 8 inside the transaction it holds.
    void SkrivTabell(const HiscoreLista& tabell) {
        sqlite3_stmt* st = nullptr;
        sqlite3_prepare_v2(db, "UPDATE attributes SET value = ?1 WHERE name = 'FJOLK:Spel8'", -1,
                           &st, nullptr);
        sqlite3_bind_blob(st, 1, tabell.data(), sizeof tabell, SQLITE_TRANSIENT);
        if (sqlite3_step(st) != SQLITE_DONE || sqlite3_changes(db) != 1)
            qFatal("the other program's table was not written");
        sqlite3_finalize(st);
    }
    void Slapp(const char* hur = "COMMIT") {
        if (sqlite3_exec(db, hur, nullptr, nullptr, nullptr) != SQLITE_OK)
            qFatal("the other program cannot end its transaction");
    }

private:
    sqlite3* db = nullptr;
};

QList<QByteArray> Namnen(const HiscoreLista& tabell, int antal) {
    QList<QByteArray> namn;
    for (int i = 0; i < antal; ++i)
        namn << QByteArray(tabell[i].namn);
    return namn;
}

HiscoreLista Tabell8(AttributeStore& store) {
    HiscoreLista tabell;
    if (store.ReadAttr("FJOLK:Spel8", B_RAW_TYPE, 0, tabell.data(), sizeof tabell) != 1920)
        qFatal("no table");
    return tabell;
}

// A Freecell table with one entry of `kort` cards.
HiscoreLista TabellMed(const char* namn, int kort) {
    HiscoreLista tabell = TomTabell(HiscoreFamiljFor(8));
    tabell[0] = Post(namn, kort, 1, 0);
    return tabell;
}

int Lagg(HiscoreStore& store, const char* namn, int kort) {
    int undos = 0;
    return AddHiscore(store, 8, HiscoreResultat{kort, 1}, undos, namn, system_time() - kSekund,
                      std::time(nullptr));
}

std::vector<std::string> JournalRader(const std::string& folder) {
    std::vector<std::string> rader;
    std::ifstream journal(folder + "/" + VantandeResultat::kJournalNamn);
    for (std::string rad; std::getline(journal, rad);)
        rader.push_back(rad);
    return rader;
}

// A small filesystem of its own, mounted for the test when it may be.
class LitenDisk {
public:
    explicit LitenDisk(const std::string& mapp) : plats(mapp) {
        std::filesystem::create_directory(plats);
        monterad = mount("fjolktest", plats.c_str(), "tmpfs", 0, "size=256k") == 0;
    }
    ~LitenDisk() {
        if (monterad)
            umount2(plats.c_str(), MNT_DETACH);
    }
    bool monterad = false;

private:
    std::string plats;
};

} // namespace

class DurabilityTest : public QObject {
    Q_OBJECT

private slots:
    // Two programs each record 500 results at once; the table holds exactly the 40 best of
    // the 1000. In Idioten fewer undos rank higher, and the two use even and odd counts.
    void tvaProgramSamtidigtForlorarIngetResultat() {
        QTemporaryDir dir;
        std::string folder = dir.path().toStdString();
        { AttributeStore forst(folder); }
        pid_t a = SpelaIBarn(folder, "A", 0, 2, 500);
        pid_t b = SpelaIBarn(folder, "B", 1, 2, 500);
        int status = 0;
        waitpid(a, &status, 0);
        QCOMPARE(WEXITSTATUS(status), 0);
        waitpid(b, &status, 0);
        QCOMPARE(WEXITSTATUS(status), 0);
        HiscoreLista tabell = LasTabell(folder, 0);
        for (int i = 0; i < 40; ++i) {
            QCOMPARE(tabell[i].angra, i);
            std::string namn = std::string(i % 2 ? "B" : "A") + std::to_string(i);
            QCOMPARE(QByteArray(tabell[i].namn), QByteArray(namn.c_str()));
        }
        // Every game counted once: 167 of A's even counts and 167 of B's odd ones are
        // multiples of three.
        QCOMPARE(SpeladeOchVunna(folder), (std::pair<int64_t, int64_t>{1000, 334}));
    }

    // Another program holds the store past the wait: the result waits (no place is named,
    // nothing is written outside a transaction), the other program's own result committed
    // meanwhile stays, and the next result enters both.
    void lasHallenForbiVantanForlorarIngetResultat() {
        QTemporaryDir dir;
        std::string folder = dir.path().toStdString();
        AttributeStore store(folder, 50);
        HiscoreLista forst = TabellMed("Annan", 10);
        QCOMPARE(store.WriteAttr("FJOLK:Spel8", B_RAW_TYPE, 0, forst.data(), 1920), ssize_t(1920));
        Vakt vakt(store);
        {
            AnnatProgram annat(folder);
            QCOMPARE(Lagg(vakt, "Eva", 30), kHiscoreVantar);
            QCOMPARE(vakt.skrivningar, 0);
            QVERIFY(!vakt.utanforTransaktion);
            QVERIFY2(store.Problem().find("another program") != std::string::npos,
                     store.Problem().c_str());
            // The other program enters its own result and lets go.
            HiscoreLista dess = forst;
            HiscoreInfoga(dess, 0, Post("Annan2", 20, 1, 0));
            annat.SkrivTabell(dess);
            annat.Slapp();
        }
        QCOMPARE(Namnen(Tabell8(store), 3), (QList<QByteArray>{"Annan2", "Annan", " "}));
        QCOMPARE(VantandeResultat::For(folder).Antal(), size_t(1));
        std::vector<std::string> rader = JournalRader(folder);
        QCOMPARE(rader.size(), size_t(1));
        Resultatpost vantar;
        QVERIFY(VantandeResultat::LasJournalRad(rader[0], &vantar));
        QCOMPARE(QByteArray(vantar.post.namn), QByteArray("Eva"));
        QCOMPARE(int(vantar.post.kort), 30);

        TakeNotices();
        QCOMPARE(Lagg(vakt, "Bo", 40), 1);
        QVERIFY(!vakt.utanforTransaktion);
        QCOMPARE(Namnen(Tabell8(store), 5),
                 (QList<QByteArray>{"Bo", "Eva", "Annan2", "Annan", " "}));
        // The player, told that the result would be saved, is told when it is.
        QCOMPARE(TakeNotices(),
                 std::vector<std::string>{"Your result that waited for the store was saved."});
        QCOMPARE(VantandeResultat::For(folder).Antal(), size_t(0));
        QVERIFY(JournalRader(folder).empty());
        QVERIFY(store.Problem().empty());
    }

    // Writes that fail as on a full disk: three results wait and the table is left as it
    // was; once the store takes writes again the next result enters all four.
    void fullDiskForlorarIngetResultat() {
        QTemporaryDir dir;
        std::string folder = dir.path().toStdString();
        AttributeStore store(folder);
        HiscoreLista forst = TabellMed("Annan", 10);
        store.WriteAttr("FJOLK:Spel8", B_RAW_TYPE, 0, forst.data(), 1920);
        Vakt vakt(store);
        vakt.full = true;
        for (int i = 0; i < 3; ++i)
            QCOMPARE(Lagg(vakt, ("Full" + std::to_string(i)).c_str(), 20 + i), kHiscoreVantar);
        HiscoreLista efter = Tabell8(store);
        QCOMPARE(std::memcmp(efter.data(), forst.data(), 1920), 0);
        QCOMPARE(VantandeResultat::For(folder).Antal(), size_t(3));
        QCOMPARE(VantandeResultat::For(folder).BaraIMinnet(), size_t(0));
        QCOMPARE(JournalRader(folder).size(), size_t(3));
        vakt.full = false;
        QCOMPARE(Lagg(vakt, "Ledig", 5), 5);
        QCOMPARE(Namnen(Tabell8(store), 6),
                 (QList<QByteArray>{"Full2", "Full1", "Full0", "Annan", "Ledig", " "}));
        QCOMPARE(VantandeResultat::For(folder).Antal(), size_t(0));
    }

    // Something else under the statistics' name (a view, an index) cannot be written: it is
    // removed, holding no row of its own, fresh statistics start, and the result is entered
    // at once rather than waiting for good.
    void statistikSomInteArEnTabellHindrarIngetResultat() {
        for (const char* annat :
             {"CREATE VIEW statistics AS SELECT 0 AS game, 'x' AS player, 1 AS played",
              "CREATE INDEX statistics ON attributes(type)"}) {
            QTemporaryDir dir;
            std::string folder = dir.path().toStdString();
            AttributeStore store(folder);
            QCOMPARE(Lagg(*HiscoreLager(store), "Forst", 3), 1);
            sqlite3* db = nullptr;
            QCOMPARE(sqlite3_open((folder + "/fjolk.db").c_str(), &db), SQLITE_OK);
            QCOMPARE(sqlite3_exec(db, (std::string("DROP TABLE statistics;") + annat).c_str(),
                                  nullptr, nullptr, nullptr),
                     SQLITE_OK);
            sqlite3_close(db);
            QVERIFY(store.StatisticsDamaged());
            std::vector<StatisticsRow> rader;
            QCOMPARE(store.ListStatistics(8, &rader), B_BAD_VALUE);
            std::unique_ptr<HiscoreStore> lager = HiscoreLager(store);
            QCOMPARE(Lagg(*lager, "Sedan", 5), 1);
            QVERIFY2(store.Problem().empty(), store.Problem().c_str());
            QCOMPARE(Namnen(Tabell8(store), 3), (QList<QByteArray>{"Sedan", "Forst", " "}));
            QVERIFY(!store.StatisticsDamaged());
            QCOMPARE(store.ListStatistics(8, &rader), B_OK);
            QCOMPARE(rader.size(), size_t(1));
            QCOMPARE(rader[0].player, std::string("Sedan"));
            QCOMPARE(rader[0].played, int64_t{1});
        }
    }

    // The same on a filesystem that is really full, where one can be mounted.
    void fulltFilsystemForlorarIngetResultat() {
        QTemporaryDir dir;
        std::string folder = dir.path().toStdString() + "/disk";
        LitenDisk disk(folder);
        if (!disk.monterad)
            QSKIP("no filesystem can be mounted here; the injected failure covers this");
        {
            AttributeStore store(folder, AttributeStore::kShortWait);
            HiscoreLista forst = TabellMed("Annan", 10);
            QCOMPARE(store.WriteAttr("FJOLK:Spel8", B_RAW_TYPE, 0, forst.data(), 1920),
                     ssize_t(1920));
            Vakt vakt(store);
            // Fill the disk.
            std::string fyllnad = folder + "/fyllnad";
            {
                std::ofstream fil(fyllnad, std::ios::binary);
                std::string block(4096, 'x');
                while (fil.write(block.data(), block.size()))
                    fil.flush();
            }
            for (int i = 0; i < 3; ++i)
                QCOMPARE(Lagg(vakt, ("Full" + std::to_string(i)).c_str(), 20 + i), kHiscoreVantar);
            QVERIFY2(store.Problem().find("is full") != std::string::npos, store.Problem().c_str());
            QCOMPARE(Namnen(Tabell8(store), 2), (QList<QByteArray>{"Annan", " "}));
            QCOMPARE(VantandeResultat::For(folder).Antal(), size_t(3));
            // The journal cannot grow on a full disk either: they wait in memory.
            QCOMPARE(VantandeResultat::For(folder).BaraIMinnet(), size_t(3));
            std::filesystem::remove(fyllnad);
            QCOMPARE(Lagg(vakt, "Ledig", 5), 5);
            QCOMPARE(Namnen(Tabell8(store), 6),
                     (QList<QByteArray>{"Full2", "Full1", "Full0", "Annan", "Ledig", " "}));
        }
        // A store opened on a full disk shows what it holds and says why it takes nothing.
        {
            std::ofstream fil(folder + "/fyllnad", std::ios::binary);
            std::string block(4096, 'x');
            while (fil.write(block.data(), block.size()))
                fil.flush();
        }
        AttributeStore igen(folder, AttributeStore::kShortWait);
        QCOMPARE(igen.InitCheck(), B_OK);
        QCOMPARE(Namnen(Tabell8(igen), 5),
                 (QList<QByteArray>{"Full2", "Full1", "Full0", "Annan", "Ledig"}));
        std::unique_ptr<HiscoreStore> lager = HiscoreLager(igen);
        QCOMPARE(Lagg(*lager, "Sen", 50), kHiscoreVantar);
        QVERIFY2(igen.Problem().find("is full") != std::string::npos, igen.Problem().c_str());
    }

    // A result that waited when its program ended is in the journal, and the next run
    // enters it, once.
    void journalenForsInVidNastaStart() {
        QTemporaryDir dir;
        std::string folder = dir.path().toStdString();
        {
            AttributeStore store(folder);
            HiscoreLista forst = TabellMed("Annan", 10);
            store.WriteAttr("FJOLK:Spel8", B_RAW_TYPE, 0, forst.data(), 1920);
        }
        AnnatProgram annat(folder);
        pid_t barn = fork();
        if (barn == 0) {
            AttributeStore store(folder, 50);
            std::unique_ptr<HiscoreStore> lager = HiscoreLager(store);
            _exit(Lagg(*lager, "Forra", 30) == kHiscoreVantar ? 0 : 1);
        }
        int status = 0;
        waitpid(barn, &status, 0);
        QVERIFY(WIFEXITED(status));
        QCOMPARE(WEXITSTATUS(status), 0);
        annat.Slapp("ROLLBACK");
        QCOMPARE(JournalRader(folder).size(), size_t(1));

        AttributeStore store(folder);
        QCOMPARE(VantandeResultat::For(folder).Antal(), size_t(1));
        QVERIFY(ForInVantande(store));
        QCOMPARE(Namnen(Tabell8(store), 3), (QList<QByteArray>{"Forra", "Annan", " "}));
        QVERIFY(JournalRader(folder).empty());
        QVERIFY(ForInVantande(store));
        QCOMPARE(Namnen(Tabell8(store), 3), (QList<QByteArray>{"Forra", "Annan", " "}));
    }

    // A run that ends after entering the journal's results but before emptying it leaves
    // them there: the next run does not enter them again.
    void journalSomInteTomdesForsInInteTvaGanger() {
        QTemporaryDir dir;
        std::string folder = dir.path().toStdString();
        AttributeStore store(folder);
        HiscoreLista forst = TabellMed("Annan", 10);
        store.WriteAttr("FJOLK:Spel8", B_RAW_TYPE, 0, forst.data(), 1920);
        Resultatpost post = NyResultatpost(8, HiscoreResultat{30, 1}, 0, 1, 0, "Forra", 0);
        std::string journal = folder + "/" + VantandeResultat::kJournalNamn;
        auto skriv = [&] {
            std::ofstream fil(journal, std::ios::app);
            fil << VantandeResultat::JournalRad(post) << "\n";
        };
        skriv();
        QVERIFY(ForInVantande(store));
        QCOMPARE(Namnen(Tabell8(store), 3), (QList<QByteArray>{"Forra", "Annan", " "}));
        // As if the journal had not been emptied.
        skriv();
        QVERIFY(ForInVantande(store));
        QCOMPARE(Namnen(Tabell8(store), 3), (QList<QByteArray>{"Forra", "Annan", " "}));
        QVERIFY(JournalRader(folder).empty());
        // Nor counted again in the statistics.
        StatisticsRow rad;
        QCOMPARE(store.ReadStatistics(8, "Forra", &rad), B_OK);
        QCOMPARE(rad.played, int64_t(1));
    }

    // A torn last line (a crash while it was written) is no record; the whole ones are.
    void journalradenSomInteArHelRaknasInte() {
        Resultatpost post = NyResultatpost(8, HiscoreResultat{30, 1}, 5, 1, 2, "Eva", 0);
        std::string rad = VantandeResultat::JournalRad(post);
        Resultatpost last;
        QVERIFY(VantandeResultat::LasJournalRad(rad, &last));
        QCOMPARE(last.id, post.id);
        QCOMPARE(last.spelNr, 8);
        QCOMPARE(last.angra, 5);
        QCOMPARE(last.mm, 1);
        QCOMPARE(last.ss, 2);
        QCOMPARE(std::memcmp(&last.post, &post.post, sizeof post.post), 0);
        for (size_t langd : {size_t(0), size_t(10), rad.size() - 1})
            QVERIFY(!VantandeResultat::LasJournalRad(rad.substr(0, langd), &last));
        std::string andrad = rad;
        andrad[20] = andrad[20] == '1' ? '2' : '1';
        QVERIFY(!VantandeResultat::LasJournalRad(andrad, &last));
        // A result that waits after a torn line is still read, on its own line.
        QTemporaryDir dir;
        std::string folder = dir.path().toStdString();
        {
            std::ofstream fil(folder + "/" + VantandeResultat::kJournalNamn);
            fil << rad.substr(0, 40);
        }
        AttributeStore store(folder);
        HiscoreLista forst = TabellMed("Annan", 10);
        store.WriteAttr("FJOLK:Spel8", B_RAW_TYPE, 0, forst.data(), 1920);
        Vakt vakt(store);
        vakt.full = true;
        QCOMPARE(Lagg(vakt, "Efter", 30), kHiscoreVantar);
        std::vector<std::string> rader = JournalRader(folder);
        QCOMPARE(rader.size(), size_t(2));
        QVERIFY(VantandeResultat::LasJournalRad(rader[1], &last));
        QCOMPARE(QByteArray(last.post.namn), QByteArray("Efter"));
        vakt.full = false;
        QVERIFY(ForInVantande(store));
        QCOMPARE(Namnen(Tabell8(store), 3), (QList<QByteArray>{"Efter", "Annan", " "}));
    }

    // A program killed in the middle of a stream of hiscore writes leaves a whole store
    // holding every result whose write had returned.
    void dodatProgramLamnarHelStoreMedAllaSkrivnaResultat() {
        QTemporaryDir dir;
        std::string folder = dir.path().toStdString();
        { AttributeStore forst(folder); }
        int ror[2];
        QCOMPARE(pipe(ror), 0);
        // Each result has one card more than the one before, so the newest 40 are the best.
        pid_t barn = SpelaIBarn(folder, "K", 0, 0, 120, ror[1]);
        close(ror[1]);
        int klara = -1;
        int i = 0;
        while (klara < 60 && read(ror[0], &i, sizeof i) == sizeof i)
            klara = i;
        kill(barn, SIGKILL);
        // Whatever the child finished before the kill landed counts too.
        while (read(ror[0], &i, sizeof i) == sizeof i)
            klara = i;
        int status = 0;
        waitpid(barn, &status, 0);
        QVERIFY(WIFSIGNALED(status));
        close(ror[0]);

        sqlite3* db = nullptr;
        std::string path = folder + "/fjolk.db";
        QCOMPARE(sqlite3_open(path.c_str(), &db), SQLITE_OK);
        sqlite3_stmt* st = nullptr;
        sqlite3_prepare_v2(db, "PRAGMA integrity_check", -1, &st, nullptr);
        QCOMPARE(sqlite3_step(st), SQLITE_ROW);
        QCOMPARE(QByteArray(reinterpret_cast<const char*>(sqlite3_column_text(st, 0))),
                 QByteArray("ok"));
        sqlite3_finalize(st);
        sqlite3_close(db);

        HiscoreLista tabell = LasTabell(folder, 0);
        // The newest result that returned is on the table, with the 39 before it below.
        QVERIFY(klara >= 40);
        int index = 0;
        while (index < 40 && tabell[index].kort != klara)
            ++index;
        // One more write may have landed between the last report and the kill.
        QVERIFY2(index <= 1, qPrintable(QString::number(index)));
        for (int k = 0; index + k < 40; ++k)
            QCOMPARE(int(tabell[index + k].kort), klara - k);
        // The statistics went with the hiscores, result for result: all of them won by the
        // one player "K0".
        AttributeStore store(folder);
        StatisticsRow rad;
        QCOMPARE(store.ReadStatistics(0, "K0", &rad), B_OK);
        QCOMPARE(rad.played, int64_t(klara + 1 + index));
        QCOMPARE(rad.won, rad.played);
        QCOMPARE(rad.longestStreak, rad.played);
    }
};

QTEST_GUILESS_MAIN(DurabilityTest)
#include "test_durability.moc"
