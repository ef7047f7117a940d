#include "cards/Hiscore.h"
#include "platform/AttributeStore.h"

#include <QTemporaryDir>
#include <QTest>

#include <signal.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <string>

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
        AddHiscore(store, 0, HiscoreResultat{rapport >= 0 ? i : 0, 1}, undos, namn,
                   system_time() - kSekund, std::time(nullptr));
        if (rapport >= 0 && write(rapport, &i, sizeof i) != sizeof i)
            _exit(3);
    }
    _exit(0);
}

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
    }
};

QTEST_GUILESS_MAIN(DurabilityTest)
#include "test_durability.moc"
