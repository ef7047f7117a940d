#include "cards/Hiscore.h"
#include "cards/Statistik.h"
#include "cards/VantandeResultat.h"
#include "platform/AttributeStore.h"
#include "platform/Notices.h"
#include "platform/SystemTime.h"
#include "support/Vakt.h"

#include <QTemporaryDir>
#include <QTest>
#include <sqlite3.h>

#include <ctime>
#include <string>
#include <vector>

namespace {

constexpr bigtime_t kSekund = 1000000;
constexpr bigtime_t kKlockan = 5 * 3600 * kSekund;

// Runs SQL on the store's file as another program would, outside the store.
bool Sql(const QTemporaryDir& dir, const char* sql) {
    sqlite3* db = nullptr;
    std::string fil = dir.path().toStdString() + "/fjolk.db";
    bool ok = sqlite3_open(fil.c_str(), &db) == SQLITE_OK &&
              sqlite3_exec(db, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
    sqlite3_close(db);
    return ok;
}

// The first column of the first row of a query on the store's file.
std::string Fraga(const QTemporaryDir& dir, const char* sql) {
    sqlite3* db = nullptr;
    std::string fil = dir.path().toStdString() + "/fjolk.db";
    std::string svar = "(none)";
    if (sqlite3_open_v2(fil.c_str(), &db, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK) {
        sqlite3_stmt* st = nullptr;
        if (sqlite3_prepare_v2(db, sql, -1, &st, nullptr) == SQLITE_OK &&
            sqlite3_step(st) == SQLITE_ROW && sqlite3_column_text(st, 0) != nullptr)
            svar = reinterpret_cast<const char*>(sqlite3_column_text(st, 0));
        sqlite3_finalize(st);
    }
    sqlite3_close(db);
    return svar;
}

struct Lager {
    QTemporaryDir dir;
    AttributeStore store{dir.path().toStdString()};

    // A game of the given length, won or lost, on the given day.
    int Spela(int spelNr, const char* namn, bool vunnen, int sekunder, int angra,
              std::time_t nar = Datum(1, 12, 2026), bool forsta = true) {
        HiscoreResultat resultat{10, 1, vunnen, forsta};
        int undos = angra;
        return AddHiscore(store, spelNr, resultat, undos, namn,
                          kKlockan - bigtime_t(sekunder) * kSekund - kSekund / 2, nar);
    }
    StatisticsRow Rad(int spelNr, const char* namn) {
        StatisticsRow rad;
        status_t status = store.ReadStatistics(spelNr, namn, &rad);
        if (status == B_ENTRY_NOT_FOUND)
            return StatisticsRow{spelNr, namn};
        if (status != B_OK)
            qFatal("statistics not read");
        return rad;
    }
};

StatisticsRow Vantat(int spel, const char* namn, int64_t spelade, int64_t vunna, int64_t nu,
                     int64_t langst, int64_t snabbast, int64_t farrast, int64_t nar) {
    return StatisticsRow{spel, namn, spelade, vunna, nu, langst, snabbast, farrast, nar};
}

const char* kGammaltLager = "PRAGMA journal_mode=WAL;"
                            "CREATE TABLE attributes(name TEXT PRIMARY KEY NOT NULL,"
                            " type TEXT NOT NULL, value BLOB NOT NULL) WITHOUT ROWID;"
                            "PRAGMA application_id = 1179274315;";

} // namespace

class StatistikTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        SattKlocka([] { return kKlockan; });
    }
    void cleanupTestCase() { SattKlocka({}); }

    void enSpelaresVinsterOchForlusterRaknasForHand() {
        Lager l;
        // W W L W W W L W: streaks of 2, then 3, then 1 so far.
        struct Spel {
            bool vunnen;
            int sekunder, angra;
        };
        const Spel spel[] = {{true, 300, 4}, {true, 250, 6}, {false, 20, 0},  {true, 400, 2},
                             {true, 125, 9}, {true, 500, 3}, {false, 900, 1}, {true, 700, 7}};
        int dag = 1;
        for (Spel s : spel)
            l.Spela(0, "Eva", s.vunnen, s.sekunder, s.angra, Datum(dag++, 12, 2026));
        QCOMPARE(l.Rad(0, "Eva"), Vantat(0, "Eva", 8, 6, 1, 3, 125, 2, Datum(8, 12, 2026)));
        StatisticsRow rad = l.Rad(0, "Eva");
        QCOMPARE(AndelVunna(rad), 75);
        QCOMPARE(StatistikText(rad), std::string("Eva: 8 played, 6 won (75%), streak 1 (best 3), "
                                                 "fastest 2:05, fewest undos 2, last 8/12 2026"));
    }

    void tvaSpelareOchFleraSpelHallsIsar() {
        Lager l;
        l.Spela(0, "Eva", true, 60, 1);
        l.Spela(0, "Bo", false, 30, 0);
        l.Spela(8, "Eva", false, 90, 0);
        l.Spela(0, "Eva", true, 61, 0);
        l.Spela(8, "Eva", true, 3700, 12, Datum(2, 12, 2026));
        l.Spela(0, "Bo", true, 45, 5);
        l.Spela(0, "Bo", false, 45, 5, Datum(3, 12, 2026));
        QCOMPARE(l.Rad(0, "Eva"), Vantat(0, "Eva", 2, 2, 2, 2, 60, 0, Datum(1, 12, 2026)));
        QCOMPARE(l.Rad(0, "Bo"), Vantat(0, "Bo", 3, 1, 0, 1, 45, 5, Datum(3, 12, 2026)));
        QCOMPARE(l.Rad(8, "Eva"), Vantat(8, "Eva", 2, 1, 1, 1, 3700, 12, Datum(2, 12, 2026)));
        QCOMPARE(l.Rad(8, "Bo"), Vantat(8, "Bo", 0, 0, 0, 0, -1, -1, 0));
        std::vector<StatisticsRow> alla;
        QCOMPARE(l.store.ListStatistics(-1, &alla), B_OK);
        QCOMPARE(alla.size(), size_t(3));
        QCOMPARE(alla[0].player, std::string("Bo"));
        QCOMPARE(alla[2].game, 8);
        QCOMPARE(StatistikTid(3700), std::string("1:01:40"));
        QCOMPARE(StatistikText(l.Rad(0, "Bo")),
                 std::string("Bo: 3 played, 1 won (33%), streak 0 (best 1), fastest 0:45, "
                             "fewest undos 5, last 3/12 2026"));
        QCOMPARE(StatistikText(StatisticsRow{1, "Ny"}), std::string("Ny: no games played yet"));
    }

    // A result recorded again for the same deal is a hiscore as always, but no second game.
    void sammaGivRaknasEnGang() {
        Lager l;
        l.Spela(2, "Eva", true, 60, 0);
        l.Spela(2, "Eva", true, 50, 0, Datum(9, 12, 2026), false);
        QCOMPARE(l.Rad(2, "Eva"), Vantat(2, "Eva", 1, 1, 1, 1, 60, 0, Datum(1, 12, 2026)));
        HiscoreLista t;
        QCOMPARE(l.store.ReadAttr("FJOLK:Spel2", B_RAW_TYPE, 0, t.data(), 1920), ssize_t(1920));
        QCOMPARE(int(t[1].kort), 10);
    }

    void statistikenSkrivsIHiscoretransaktionen() {
        Lager l;
        Vakt vakt(l.store);
        int undos = 0;
        AddHiscore(vakt, 0, HiscoreResultat{5, 1, true, true}, undos, "Eva", kKlockan,
                   Datum(1, 12, 2026));
        QCOMPARE(vakt.transaktioner, 1);
        QCOMPARE(vakt.statistikSkrivningar, 1);
        QVERIFY(!vakt.utanforTransaktion);
        // A store that fails the hiscore keeps nothing of the statistics either.
        vakt.full = true;
        AddHiscore(vakt, 0, HiscoreResultat{5, 1, true, true}, undos, "Eva", kKlockan,
                   Datum(2, 12, 2026));
        QCOMPARE(l.Rad(0, "Eva").played, int64_t(1));
        // The waiting result carries its statistics and is counted once when entered.
        vakt.full = false;
        QVERIFY(VantandeResultat::For(l.store.DataDirectory()).Antal() == 1);
        QVERIFY(ForInVantande(l.store));
        QCOMPARE(l.Rad(0, "Eva"), Vantat(0, "Eva", 2, 2, 2, 2, 0, 0, Datum(2, 12, 2026)));
        QVERIFY(ForInVantande(l.store));
        QCOMPARE(l.Rad(0, "Eva").played, int64_t(2));
    }

    void journalradenBarStatistiken() {
        Resultatpost p = NyResultatpost(4, HiscoreResultat{7, 2, true, false}, 3, 1, 5, "Eva",
                                        Datum(4, 12, 2026));
        p.sekunder = 3665;
        Resultatpost q;
        QVERIFY(VantandeResultat::LasJournalRad(VantandeResultat::JournalRad(p), &q));
        QCOMPARE(q.resultat.vunnen, true);
        QCOMPARE(q.resultat.iStatistiken, false);
        QCOMPARE(q.sekunder, int64_t(3665));
        QCOMPARE(q.nar, int64_t(Datum(4, 12, 2026)));
        QCOMPARE(q.angra, 3);
    }

    // A store from before the statistics opens as it is, writing nothing, and gains the
    // table with its first result, its hiscores kept.
    void gammaltLagerFarTabellenOchBehallerHiscores() {
        QTemporaryDir dir;
        QVERIFY(Sql(dir, kGammaltLager));
        HiscoreLista gammal = TomTabell(HiscoreFamiljFor(0));
        std::strcpy(gammal[0].namn, "Gammal");
        gammal[0].kort = 40;
        {
            sqlite3* db = nullptr;
            sqlite3_open((dir.path() + "/fjolk.db").toUtf8().constData(), &db);
            sqlite3_stmt* st = nullptr;
            sqlite3_prepare_v2(db, "INSERT INTO attributes VALUES ('FJOLK:Spel0', 'RAWT', ?1)", -1,
                               &st, nullptr);
            sqlite3_bind_blob(st, 1, gammal.data(), 1920, SQLITE_TRANSIENT);
            QCOMPARE(sqlite3_step(st), SQLITE_DONE);
            sqlite3_finalize(st);
            sqlite3_close(db);
        }
        QCOMPARE(Fraga(dir, "SELECT user_version FROM pragma_user_version()"), std::string("0"));
        {
            AttributeStore store(dir.path().toStdString());
            std::vector<StatisticsRow> rader{StatisticsRow{}};
            QCOMPARE(store.ListStatistics(0, &rader), B_OK);
            QVERIFY(rader.empty());
            QCOMPARE(store.ClearStatistics(), B_OK);
        }
        QCOMPARE(Fraga(dir, "SELECT user_version FROM pragma_user_version()"), std::string("0"));
        QCOMPARE(Fraga(dir, "SELECT count(*) FROM sqlite_schema WHERE name = 'statistics'"),
                 std::string("0"));
        AttributeStore store(dir.path().toStdString());
        int undos = 0;
        QCOMPARE(AddHiscore(store, 0, HiscoreResultat{30, 1, false, true}, undos, "Eva", kKlockan,
                            Datum(1, 12, 2026)),
                 2);
        QCOMPARE(Fraga(dir, "SELECT user_version FROM pragma_user_version()"), std::string("1"));
        QCOMPARE(Fraga(dir, "SELECT played FROM statistics WHERE player = 'Eva'"),
                 std::string("1"));
        HiscoreLista t;
        QCOMPARE(store.ReadAttr("FJOLK:Spel0", B_RAW_TYPE, 0, t.data(), 1920), ssize_t(1920));
        QCOMPARE(QByteArray(t[0].namn), QByteArray("Gammal"));
        QCOMPARE(QByteArray(t[1].namn), QByteArray("Eva"));
    }

    // A statistics table that is not ours is kept aside and started again; the hiscores
    // stay as they were.
    void skadadStatistikByggsOmTomMedHiscoresKvar() {
        const char* skador[] = {
            "DROP TABLE statistics; CREATE TABLE statistics(x, y)",
            "INSERT INTO statistics VALUES (0, 'Eva', 2, 5, 0, 0, 10, 1, 0)",
            "INSERT INTO statistics VALUES (0, 'Eva', 'many', 0, 0, 0, -1, -1, 0)",
            "INSERT INTO statistics VALUES (0, 'Eva', 3, 1, 2, 1, 10, 1, 0)",
        };
        for (const char* skada : skador) {
            Lager l;
            l.Spela(0, "Bo", true, 60, 1);
            l.Spela(0, "Eva", false, 60, 1);
            QVERIFY(
                Sql(l.dir,
                    (std::string("DELETE FROM statistics WHERE player = 'Eva';") + skada).c_str()));
            std::vector<StatisticsRow> rader;
            QCOMPARE(l.store.ListStatistics(0, &rader), B_BAD_VALUE);
            QVERIFY(l.store.StatisticsDamaged());
            HiscoreLista fore;
            QCOMPARE(l.store.ReadAttr("FJOLK:Spel0", B_RAW_TYPE, 0, fore.data(), 1920),
                     ssize_t(1920));
            TakeNotices();
            l.Spela(0, "Eva", true, 90, 0);
            std::vector<std::string> notiser = TakeNotices();
            QCOMPARE(notiser.size(), size_t(1));
            QVERIFY2(notiser[0].find(
                         "could not be read; they were kept as the table statistics.damaged-") !=
                         std::string::npos,
                     notiser[0].c_str());
            QVERIFY(!l.store.StatisticsDamaged());
            QCOMPARE(l.store.ListStatistics(0, &rader), B_OK);
            QCOMPARE(rader.size(), size_t(1));
            QCOMPARE(rader[0], Vantat(0, "Eva", 1, 1, 1, 1, 90, 0, Datum(1, 12, 2026)));
            QCOMPARE(Fraga(l.dir, "SELECT count(*) FROM sqlite_schema"
                                  " WHERE name LIKE 'statistics.damaged-%'"),
                     std::string("1"));
            HiscoreLista efter;
            QCOMPARE(l.store.ReadAttr("FJOLK:Spel0", B_RAW_TYPE, 0, efter.data(), 1920),
                     ssize_t(1920));
            QCOMPARE(QByteArray(efter[0].namn), QByteArray("Eva"));
            QVERIFY(std::memcmp(&efter[1], &fore[0], 2 * sizeof(HighScoreTable)) == 0);
        }
    }

    // A statistics table dropped by another program never keeps a result from its store.
    void borttagenTabellGorsOm() {
        Lager l;
        l.Spela(0, "Eva", true, 60, 1);
        QVERIFY(Sql(l.dir, "DROP TABLE statistics"));
        QCOMPARE(l.Spela(0, "Eva", false, 60, 1), 1);
        QCOMPARE(l.Rad(0, "Eva"), Vantat(0, "Eva", 1, 0, 0, 0, -1, -1, Datum(1, 12, 2026)));
    }

    void nollstallningTommerStatistikenMenInteHiscores() {
        Lager l;
        l.Spela(0, "Eva", true, 60, 1);
        l.Spela(5, "Bo", false, 60, 1);
        QCOMPARE(l.store.ClearStatistics(), B_OK);
        std::vector<StatisticsRow> rader;
        QCOMPARE(l.store.ListStatistics(-1, &rader), B_OK);
        QVERIFY(rader.empty());
        HiscoreLista t;
        QCOMPARE(l.store.ReadAttr("FJOLK:Spel0", B_RAW_TYPE, 0, t.data(), 1920), ssize_t(1920));
        QCOMPARE(QByteArray(t[0].namn), QByteArray("Eva"));
        l.Spela(0, "Eva", false, 60, 1);
        QCOMPARE(l.Rad(0, "Eva"), Vantat(0, "Eva", 1, 0, 0, 0, -1, -1, Datum(1, 12, 2026)));
    }
};

QTEST_GUILESS_MAIN(StatistikTest)
#include "test_statistik.moc"
