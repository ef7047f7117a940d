#include "cards/Hiscore.h"
#include "cards/VantandeResultat.h"
#include "platform/AttributeStore.h"
#include "support/Vakt.h"

#include "platform/Notices.h"

#include <QTemporaryDir>
#include <QTest>
#include <sqlite3.h>

#include <atomic>
#include <climits>
#include <cstring>
#include <optional>
#include <random>
#include <set>
#include <thread>
#include <vector>

namespace {

constexpr bigtime_t kSekund = 1000000;

// What the clock reads in these tests: it stands still, so a playing time is exactly what
// a test makes it. Three hours after the machine started, unless a test says otherwise.
bigtime_t klockan = 3 * 3600 * kSekund;

// A start time that makes the playing time come out as mm:ss, half a second clear of the
// next second.
bigtime_t StartFor(int mm, int ss) {
    return system_time() - (bigtime_t(mm) * 60 + ss) * kSekund - kSekund / 2;
}

HiscoreLista Full(const HighScoreTable& post) {
    HiscoreLista tabell;
    tabell.fill(post);
    return tabell;
}

bool SammaBytes(const HiscoreLista& a, const HiscoreLista& b) {
    return std::memcmp(a.data(), b.data(), sizeof a) == 0;
}

QByteArray Namn(const HighScoreTable& p) {
    return QByteArray(p.namn);
}

// One data folder and its store: a fresh program file for each test.
struct Bord {
    QTemporaryDir dir;
    AttributeStore store{dir.path().toStdString()};

    // A game of a minute unless the test gives the moment it started.
    int Lagg(int spelNr, int kort, int giv, int angra, const char* namn = "Eva",
             std::optional<bigtime_t> start = std::nullopt) {
        int undos = angra;
        return AddHiscore(store, spelNr, HiscoreResultat{kort, giv}, undos, namn,
                          start.value_or(StartFor(1, 0)), Datum(22, 11, 2026));
    }
    HiscoreLista Tabell(int spelNr) {
        HiscoreLista tabell;
        std::string namn = HiscoreAttributNamn(spelNr);
        if (store.ReadAttr(namn.c_str(), B_RAW_TYPE, 0, tabell.data(), sizeof tabell) != 1920)
            qFatal("no table");
        return tabell;
    }
    void Spara(int spelNr, const HiscoreLista& tabell) {
        std::string namn = HiscoreAttributNamn(spelNr);
        if (store.WriteAttr(namn.c_str(), B_RAW_TYPE, 0, tabell.data(), sizeof tabell) != 1920)
            qFatal("table not stored");
    }
    // A table of the given entries, the rest empty.
    void Spara(int spelNr, std::initializer_list<HighScoreTable> poster) {
        HiscoreLista tabell = TomTabell(HiscoreFamiljFor(spelNr));
        int i = 0;
        for (const HighScoreTable& p : poster)
            tabell[i++] = p;
        Spara(spelNr, tabell);
    }
    QList<QByteArray> Namnen(int spelNr, int antal) {
        HiscoreLista t = Tabell(spelNr);
        QList<QByteArray> namn;
        for (int i = 0; i < antal; ++i)
            namn << Namn(t[i]);
        return namn;
    }
};

// The names stored that match an SQL pattern, as SQLite itself lists them.
std::vector<std::string> Attribut(const QTemporaryDir& dir, const char* monster) {
    std::vector<std::string> namn;
    sqlite3* db = nullptr;
    std::string fil = dir.path().toStdString() + "/fjolk.db";
    if (sqlite3_open_v2(fil.c_str(), &db, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK) {
        sqlite3_stmt* st = nullptr;
        sqlite3_prepare_v2(db, "SELECT name FROM attributes WHERE name LIKE ?1 ORDER BY name", -1,
                           &st, nullptr);
        sqlite3_bind_text(st, 1, monster, -1, SQLITE_TRANSIENT);
        while (sqlite3_step(st) == SQLITE_ROW)
            namn.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(st, 0)));
        sqlite3_finalize(st);
    }
    sqlite3_close(db);
    return namn;
}

bool ArTom(const HighScoreTable& p, int giv) {
    return Namn(p) == " " && p.kort == -1 && p.giv == giv && p.angra == 0 &&
           QByteArray(p.tid) == " " && QByteArray(p.datum) == " ";
}

HighScoreTable Post(const char* namn, int kort, int giv, int angra) {
    HighScoreTable post;
    std::strncpy(post.namn, namn, 19);
    post.kort = static_cast<int8_t>(kort);
    post.giv = static_cast<int8_t>(giv);
    post.angra = angra;
    std::strcpy(post.tid, "10:00");
    std::strcpy(post.datum, "1/1 2020");
    return post;
}

} // namespace

class HiscoreTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        SattKlocka([] { return klockan; });
    }
    void init() { klockan = 3 * 3600 * kSekund; }
    void cleanupTestCase() { SattKlocka({}); }

    void postenLiggerPaSinaPlatserIMinnet() {
        HighScoreTable post = Post("Eva", 12, 2, 300);
        std::strcpy(post.tid, "05:07");
        std::strcpy(post.datum, "3/2 2001");
        unsigned char bytes[48];
        std::memcpy(bytes, &post, 48);
        QCOMPARE(QByteArray(reinterpret_cast<char*>(bytes), 4), QByteArray("Eva\0", 4));
        QCOMPARE(int(bytes[20]), 12);
        QCOMPARE(int(bytes[21]), 2);
        QCOMPARE(int(bytes[24]) + 256 * int(bytes[25]), 300);
        QCOMPARE(int(bytes[26]) + int(bytes[27]), 0);
        QCOMPARE(QByteArray(reinterpret_cast<char*>(bytes + 28), 6), QByteArray("05:07\0", 6));
        QCOMPARE(QByteArray(reinterpret_cast<char*>(bytes + 34), 9), QByteArray("3/2 2001\0", 9));
        // kort -1 is the byte 0xFF; angra is little-endian.
        post.kort = -1;
        post.angra = 0x01020304;
        std::memcpy(bytes, &post, 48);
        QCOMPARE(int(bytes[20]), 0xFF);
        QCOMPARE(QByteArray(reinterpret_cast<char*>(bytes + 24), 4), QByteArray("\4\3\2\1", 4));
        QCOMPARE(sizeof(HiscoreLista), size_t(1920));
    }

    void nyPostArNollIAllaBytes() {
        HighScoreTable ny;
        unsigned char bytes[48];
        std::memcpy(bytes, &ny, 48);
        for (int i = 0; i < 48; ++i)
            QCOMPARE(int(bytes[i]), 0);
    }

    void attributetHeterEfterSpelet() {
        QCOMPARE(HiscoreAttributNamn(0), std::string("FJOLK:Spel0"));
        QCOMPARE(HiscoreAttributNamn(7), std::string("FJOLK:Spel7"));
        QCOMPARE(HiscoreAttributNamn(11), std::string("FJOLK:Spel11"));
    }

    void familjetabellen() {
        const int tomtGiv[12] = {3, 1, 1, 1, 3, 1, 1, 3, 3, 3, 3, 3};
        const bool stigande[12] = {false, false, false, true,  false, false,
                                   false, true,  false, false, false, false};
        const bool skriver[12] = {false, true,  true,  true,  false, true,
                                  true,  false, false, false, false, false};
        for (int spel = 0; spel < 12; ++spel) {
            const HiscoreFamilj& f = HiscoreFamiljFor(spel);
            QCOMPARE(int(f.tomtGiv), tomtGiv[spel]);
            QCOMPARE(f.stigande, stigande[spel]);
            QCOMPARE(f.skrivOforandrad, skriver[spel]);
        }
        // "as 0", "as 1", "as 5", "as 8": the same keys.
        for (int spel : {4, 10, 11})
            QVERIFY(HiscoreFamiljFor(spel).nyNyckel == HiscoreFamiljFor(0).nyNyckel);
        QVERIFY(HiscoreFamiljFor(2).gammalNyckel == HiscoreFamiljFor(1).gammalNyckel);
        QVERIFY(HiscoreFamiljFor(6).nyNyckel == HiscoreFamiljFor(5).nyNyckel);
        QVERIFY(HiscoreFamiljFor(9).gammalNyckel == HiscoreFamiljFor(8).gammalNyckel);
        QVERIFY(HiscoreFamiljFor(0).nyNyckel != HiscoreFamiljFor(8).nyNyckel);
    }

    void tomTabellHar40TommaPoster() {
        for (int spel = 0; spel < 12; ++spel) {
            int giv = spel == 1 || spel == 2 || spel == 3 || spel == 5 || spel == 6 ? 1 : 3;
            HiscoreLista t = TomTabell(HiscoreFamiljFor(spel));
            for (int i = 0; i < 40; ++i)
                QVERIFY2(ArTom(t[i], giv),
                         qPrintable(QStringLiteral("game %1 entry %2").arg(spel).arg(i)));
        }
    }

    void forstaResultatetSkaparTabellenMed40TommaOchHamnarForst() {
        for (int spel = 0; spel < 12; ++spel) {
            Bord b;
            Vakt vakt(b.store);
            int undos = 2;
            QCOMPARE(AddHiscore(vakt, spel, HiscoreResultat{5, 1}, undos, "Eva", StartFor(1, 0),
                                Datum(22, 11, 2026)),
                     1);
            // The empty table is written at once, then the table with the result.
            QCOMPARE(vakt.skrivningar, 2);
            QCOMPARE(vakt.syncar, 2);
            QCOMPARE(vakt.senastNamn, "FJOLK:Spel" + std::to_string(spel));
            QCOMPARE(vakt.senastTyp, MakeTypeCode("RAWT"));
            QCOMPARE(vakt.senastLangd, size_t(1920));
            HiscoreLista t = b.Tabell(spel);
            QCOMPARE(Namn(t[0]), QByteArray("Eva"));
            QCOMPARE(int(t[0].kort), 5);
            QCOMPARE(int(t[0].giv), 1);
            QCOMPARE(t[0].angra, 2);
            QCOMPARE(QByteArray(t[0].tid), QByteArray("01:00"));
            QCOMPARE(QByteArray(t[0].datum), QByteArray("22/11 2026"));
            // The padding is stored as zeros, the same bytes each time.
            for (int i = 0; i < 40; ++i) {
                const auto* bytes = reinterpret_cast<const unsigned char*>(&t[i]);
                for (int pad : {22, 23, 45, 46, 47})
                    QCOMPARE(int(bytes[pad]), 0);
            }
            int giv = spel == 1 || spel == 2 || spel == 3 || spel == 5 || spel == 6 ? 1 : 3;
            for (int i = 1; i < 40; ++i) {
                QCOMPARE(Namn(t[i]), QByteArray(" "));
                QCOMPARE(int(t[i].kort), -1);
                QCOMPARE(int(t[i].giv), giv);
                QCOMPARE(t[i].angra, 0);
                QCOMPARE(QByteArray(t[i].tid), QByteArray(" "));
                QCOMPARE(QByteArray(t[i].datum), QByteArray(" "));
            }
        }
    }

    void allaLasningarOchSkrivningarIEnTransaktion() {
        Bord b;
        Vakt vakt(b.store);
        for (int i = 0; i < 3; ++i) {
            int undos = i;
            AddHiscore(vakt, 0, HiscoreResultat{10, 1}, undos, "Eva", StartFor(0, 1),
                       Datum(1, 1, 2026));
        }
        QCOMPARE(vakt.transaktioner, 3);
        QCOMPARE(vakt.lasningar, 3);
        QCOMPARE(vakt.skrivningar, 4);
        // Each result counts in its player's statistics, in the same transaction.
        QCOMPARE(vakt.statistikLasningar, 3);
        QCOMPARE(vakt.statistikSkrivningar, 3);
        QVERIFY(!vakt.utanforTransaktion);
    }

    void likaNyckelHamnarOverDenAldre() {
        Bord b;
        QCOMPARE(b.Lagg(0, 20, 2, 5, "Forst"), 1);
        QCOMPARE(b.Lagg(0, 20, 2, 5, "Sedan"), 1);
        QCOMPARE(b.Namnen(0, 2), (QList<QByteArray>{"Sedan", "Forst"}));
    }

    void resultatSom41BastGer41OchLamnarTabellenOrord() {
        Bord b;
        HiscoreLista full;
        for (int i = 0; i < 40; ++i)
            full[i] = Post("Bra", 48, 1, i);
        b.Spara(0, full);
        QCOMPARE(b.Lagg(0, 3, 3, 10), 41);
        QVERIFY(SammaBytes(b.Tabell(0), full));
        QCOMPARE(HiscoreMeddelande(41),
                 std::string("You've missed the Hiscoretable! Better luck next time!"));
        QCOMPARE(HiscoreMeddelande(40), std::string("You are number 40 on the Hiscoretable!"));
        QCOMPARE(HiscoreMeddelande(1), std::string("You are number 1 on the Hiscoretable!"));
        QCOMPARE(HiscoreMeddelande(kHiscoreVantar),
                 std::string("Your result will be saved as soon as the store is free."));
        QCOMPARE(HiscoreMeddelande(-1),
                 std::string("You've missed the Hiscoretable! Better luck next time!"));
    }

    void sistaPlatsenAr40() {
        Bord b;
        HiscoreLista full;
        for (int i = 0; i < 40; ++i)
            full[i] = Post("Bra", 48 - i, 1, 0);
        b.Spara(0, full);
        // The last entry's own result: an equal key goes above it, into place 40.
        QCOMPARE(b.Lagg(0, 9, 1, 0, "Sist"), 40);
        HiscoreLista t = b.Tabell(0);
        QCOMPARE(Namn(t[39]), QByteArray("Sist"));
        QCOMPARE(int(t[38].kort), 10);
    }

    // Games 1, 2, 3, 5 and 6 write a table the result missed back unchanged; the others
    // leave the store alone.
    void missatResultatSkrivsTillbakaBaraForVissaSpel() {
        for (int spel = 0; spel < 12; ++spel) {
            bool stigande = spel == 3 || spel == 7;
            // Tables no result of 0 cards, deal 3 and 999 undos can enter.
            HiscoreLista full = Full(stigande ? Post("Bra", 0, 1, 0) : Post("Bra", 100, 1, 0));
            Bord b;
            b.Spara(spel, full);
            Vakt vakt(b.store);
            int undos = 999;
            QCOMPARE(AddHiscore(vakt, spel, HiscoreResultat{0, 3}, undos, "Eva", StartFor(0, 1),
                                Datum(1, 1, 2026)),
                     41);
            bool skriver = spel == 1 || spel == 2 || spel == 3 || spel == 5 || spel == 6;
            QCOMPARE(vakt.skrivningar, skriver ? 1 : 0);
            QCOMPARE(vakt.syncar, skriver ? 1 : 0);
            QVERIFY(SammaBytes(b.Tabell(spel), full));
        }
    }

    void speltidenSkrivsMinuterOchSekunder() {
        struct Fall {
            int mm, ss;
            const char* tid;
        };
        for (Fall fall :
             {Fall{75, 7, "59:07"}, Fall{5, 7, "05:07"}, Fall{12, 5, "12:05"}, Fall{3, 45, "03:45"},
              Fall{0, 0, "00:00"}, Fall{60, 0, "59:00"}, Fall{59, 59, "59:59"}}) {
            Bord b;
            b.Lagg(0, 5, 1, 0, "Eva", StartFor(fall.mm, fall.ss));
            QCOMPARE(QByteArray(b.Tabell(0)[0].tid), QByteArray(fall.tid));
        }
    }

    // The clock counts from the machine's start: two seconds after it, a game begun 75
    // minutes earlier started at a negative time, and is still 59:07 long.
    void speltidenRattNarKlockanNyssStartat() {
        struct Fall {
            int mm, ss;
            const char* tid;
        };
        for (bigtime_t nu : {bigtime_t(0), 2 * kSekund, 61 * kSekund}) {
            for (Fall fall : {Fall{75, 7, "59:07"}, Fall{5, 7, "05:07"}, Fall{0, 0, "00:00"},
                              Fall{59, 59, "59:59"}}) {
                klockan = nu;
                QVERIFY(fall.mm == 0 || StartFor(fall.mm, fall.ss) < 0);
                Bord b;
                b.Lagg(0, 5, 1, 0, "Eva", StartFor(fall.mm, fall.ss));
                QCOMPARE(QByteArray(b.Tabell(0)[0].tid), QByteArray(fall.tid));
            }
        }
    }

    void tidensFyraFormat() {
        QCOMPARE(HiscoreTid(5, 7), std::string("05:07"));
        QCOMPARE(HiscoreTid(3, 45), std::string("03:45"));
        QCOMPARE(HiscoreTid(12, 5), std::string("12:05"));
        QCOMPARE(HiscoreTid(12, 45), std::string("12:45"));
        QCOMPARE(HiscoreTid(0, 0), std::string("00:00"));
        // Cut to what the 6 bytes keep.
        QCOMPARE(HiscoreTid(123, 45), std::string("123:4"));
        QCOMPARE(HiscoreMinuter(75 * 60 + 7), 59);
        QCOMPARE(HiscoreMinuter(60 * 60), 59);
        QCOMPARE(HiscoreMinuter(60 * 60 - 1), 59);
        QCOMPARE(HiscoreMinuter(5 * 60 + 7), 5);
        QCOMPARE(HiscoreMinuter(59), 0);
    }

    void namnPa19TeckenFyllerFaltetExakt() {
        Bord b;
        b.Lagg(0, 5, 1, 0, "Abcdefghijklmnopqrs");
        QCOMPARE(QByteArray(b.Tabell(0)[0].namn, 20), QByteArray("Abcdefghijklmnopqrs\0", 20));
        b.Lagg(0, 6, 1, 0, "Abcdefghijklmnopqrstuvwxyz");
        QCOMPARE(QByteArray(b.Tabell(0)[0].namn, 20), QByteArray("Abcdefghijklmnopqrs\0", 20));
        b.Lagg(0, 7, 1, 0, "Bo");
        QCOMPARE(QByteArray(b.Tabell(0)[0].namn, 20), QByteArray("Bo").leftJustified(20, '\0'));
    }

    void datumet3Februari2001() {
        std::tm tm{};
        tm.tm_mday = 3;
        tm.tm_mon = 1;
        tm.tm_year = 101;
        QCOMPARE(HiscoreDatum(tm), std::string("3/2 2001"));
        tm.tm_mday = 31;
        tm.tm_mon = 11;
        tm.tm_year = 2026 - 1900;
        QCOMPARE(HiscoreDatum(tm), std::string("31/12 2026"));
        // Cut to what the 11 bytes keep.
        tm.tm_year = 12345 - 1900;
        QCOMPARE(HiscoreDatum(tm), std::string("31/12 1234"));
        Bord b;
        int undos = 0;
        AddHiscore(b.store, 0, HiscoreResultat{5, 1}, undos, "Eva", StartFor(0, 1),
                   Datum(3, 2, 2001));
        QCOMPARE(QByteArray(b.Tabell(0)[0].datum, 11), QByteArray("3/2 2001\0\0\0", 11));
    }

    void stigandeTabellSatterAldrigUnderEnTomPost() {
        for (int spel : {3, 7}) {
            Bord b;
            b.Spara(spel, {Post("A", 0, 1, 10), Post("B", 0, 1, 20), Post("C", 0, 1, 30)});
            // Far worse than every stored result, and still above the empties.
            QCOMPARE(b.Lagg(spel, 40, 3, 900), 4);
            QCOMPARE(b.Namnen(spel, 5), (QList<QByteArray>{"A", "B", "C", "Eva", " "}));
        }
        // An empty entry of Tower of Hanoi weighs -1 · -53 · 10000000.
        const HiscoreFamilj& tower = HiscoreFamiljFor(3);
        HiscoreLista tom = TomTabell(tower);
        QCOMPARE(tower.gammalNyckel(tom[0], -53), 530000000);
        QCOMPARE(HiscoreIndex(tom, tower, 530000000), 0);
        QCOMPARE(HiscoreIndex(tom, tower, 530000001), 40);
        // 13-Pyramiden: -1 · -53 · 10000 + 3 · 1000.
        const HiscoreFamilj& pyramiden = HiscoreFamiljFor(7);
        QCOMPARE(HiscoreIndex(TomTabell(pyramiden), pyramiden, 533000), 0);
        QCOMPARE(HiscoreIndex(TomTabell(pyramiden), pyramiden, 533001), 40);
    }

    // Once the walk has met an empty entry, the factor stays -53 for every entry after it.
    void faktornGallerRestenAvVandringen() {
        const HiscoreFamilj& pyramiden = HiscoreFamiljFor(7);
        HiscoreLista t = TomTabell(pyramiden);
        t[0] = Post("A", 2, 1, 0);
        t[2] = Post("C", 60, 1, 0);
        // 55 cards: 550000 + 1000. Entry 2 weighs 60 · -53 · 10000 + 1000 behind the empty
        // entry 1, not 601000.
        int32_t ny = pyramiden.nyNyckel(55, 1, 0, 0, 0);
        QCOMPARE(ny, 551000);
        QCOMPARE(HiscoreIndex(t, pyramiden, ny), 40);
        // Without the empty entry before it, entry 2 keeps its own weight.
        t[1] = Post("B", 3, 1, 0);
        QCOMPARE(HiscoreIndex(t, pyramiden, ny), 2);
    }

    void angerOver999BlirPrecis999() {
        Bord b;
        for (int fore : {1500, 1000, 999, 998}) {
            int undos = fore;
            AddHiscore(b.store, 0, HiscoreResultat{40, 1}, undos, "Eva", StartFor(0, 1),
                       Datum(1, 1, 2026));
            QCOMPARE(undos, fore > 999 ? 999 : fore);
            QCOMPARE(b.Tabell(0)[0].angra, fore > 999 ? 999 : fore);
        }
    }

    void infogaFlyttarNedOchSistaFallerUr() {
        HiscoreLista t;
        for (int i = 0; i < 40; ++i)
            t[i] = Post("X", i, 1, i);
        HiscoreInfoga(t, 5, Post("Ny", 99, 1, 0));
        QCOMPARE(int(t[4].kort), 4);
        QCOMPARE(Namn(t[5]), QByteArray("Ny"));
        QCOMPARE(int(t[6].kort), 5);
        QCOMPARE(int(t[39].kort), 38);
        HiscoreInfoga(t, 39, Post("Sist", 98, 1, 0));
        QCOMPARE(Namn(t[39]), QByteArray("Sist"));
        QCOMPARE(int(t[38].kort), 37);
        HiscoreLista fore = t;
        HiscoreInfoga(t, 40, Post("Utanfor", 1, 1, 0));
        HiscoreInfoga(t, -1, Post("Utanfor", 1, 1, 0));
        QVERIFY(SammaBytes(t, fore));
    }

    void nyPostAvResultatet() {
        std::tm tm{};
        tm.tm_mday = 3;
        tm.tm_mon = 1;
        tm.tm_year = 101;
        HighScoreTable p =
            HiscorePost("Abcdefghijklmnopqrstuvwxyz", HiscoreResultat{30, 2}, 17, 5, 7, tm);
        QCOMPARE(QByteArray(p.namn, 20), QByteArray("Abcdefghijklmnopqrs\0", 20));
        QCOMPARE(int(p.kort), 30);
        QCOMPARE(int(p.giv), 2);
        QCOMPARE(p.angra, 17);
        QCOMPARE(QByteArray(p.tid, 6), QByteArray("05:07\0", 6));
        QCOMPARE(QByteArray(p.datum, 11), QByteArray("3/2 2001\0\0\0", 11));
    }

    // Idioten 1, Kvarnen, Black hole, Strategy: more cards, then an earlier deal, then fewer
    // undos; an equal key goes above.
    void familj0FlerKortTidigareGivFarreAnger() {
        for (int spel : {0, 4, 10, 11}) {
            Bord b;
            // Keys: 302949, 203949, 202989, 202939.
            b.Spara(spel, {Post("K30", 30, 2, 50), Post("K20g1", 20, 1, 50),
                           Post("K20g2a10", 20, 2, 10), Post("K20g2a60", 20, 2, 60)});
            QCOMPARE(b.Lagg(spel, 31, 3, 999, "A"), 1); // 311000
            QCOMPARE(b.Lagg(spel, 20, 1, 40, "B"), 3);  // 203959
            QCOMPARE(b.Lagg(spel, 20, 2, 10, "C"), 5);  // 202989, equal to K20g2a10
            QCOMPARE(b.Lagg(spel, 20, 2, 11, "D"), 7);  // 202988
            QCOMPARE(b.Lagg(spel, 0, 3, 999, "E"), 9);  // 1000, above the empties (-8001)
            QCOMPARE(b.Namnen(spel, 10),
                     (QList<QByteArray>{"A", "K30", "B", "K20g1", "C", "K20g2a10", "D", "K20g2a60",
                                        "E", " "}));
        }
    }

    // Idioten 2 and Godnattvalsen rank MORE undos higher; the time lifts a result only above
    // entries with the same cards and undos.
    void familj1Och2FlerAngerRankasHogre() {
        for (int spel : {1, 2}) {
            Bord b;
            // Keys: 100500000, 100050000.
            b.Spara(spel, {Post("K10a50", 10, 1, 50), Post("K10a5", 10, 1, 5)});
            QCOMPARE(b.Lagg(spel, 10, 1, 20, "A20", StartFor(0, 0)), 2); // 100200000
            QCOMPARE(b.Lagg(spel, 10, 1, 51, "A51", StartFor(0, 0)), 1); // 100510000
            QCOMPARE(b.Lagg(spel, 10, 1, 5, "A5", StartFor(0, 3)), 4);   // 100050003
            QCOMPARE(b.Lagg(spel, 11, 1, 0, "K11"), 1);                  // 110000100
            QCOMPARE(b.Lagg(spel, 9, 1, 999, "K9"), 7);                  // 99990100
            QCOMPARE(b.Namnen(spel, 8),
                     (QList<QByteArray>{"K11", "A51", "K10a50", "A20", "A5", "K10a5", "K9", " "}));
        }
        for (int spel : {1, 2}) {
            Bord b;
            b.Spara(spel, {Post("K10a6", 10, 1, 6), Post("K10a5", 10, 1, 5)});
            // 59:59 adds 5959, less than one undo's 10000.
            QCOMPARE(b.Lagg(spel, 10, 1, 5, "Lang", StartFor(59, 59)), 2);
            QCOMPARE(b.Lagg(spel, 10, 1, 6, "Kort", StartFor(0, 0)), 1);
        }
    }

    // Glädjespridaren and Farfars klocka: more cards, then fewer undos; the time lifts a
    // result only above entries with the same cards and undos.
    void familj5Och6FarreAngerRankasHogre() {
        for (int spel : {5, 6}) {
            Bord b;
            // Keys: 109940000, 109490000.
            b.Spara(spel, {Post("K10a5", 10, 1, 5), Post("K10a50", 10, 1, 50)});
            QCOMPARE(b.Lagg(spel, 10, 1, 20, "A20", StartFor(0, 0)), 2); // 109790000
            QCOMPARE(b.Lagg(spel, 10, 1, 4, "A4", StartFor(0, 0)), 1);   // 109950000
            QCOMPARE(b.Lagg(spel, 10, 1, 50, "A50", StartFor(2, 0)), 4); // 109490200
            QCOMPARE(b.Lagg(spel, 9, 1, 0, "K9"), 6);                    // 99990100
            QCOMPARE(b.Lagg(spel, 11, 1, 999, "K11"), 1);                // 110000100
            QCOMPARE(b.Namnen(spel, 8),
                     (QList<QByteArray>{"K11", "A4", "K10a5", "A20", "A50", "K10a50", "K9", " "}));
        }
        for (int spel : {5, 6}) {
            Bord b;
            b.Spara(spel, {Post("K10a5", 10, 1, 5), Post("K10a6", 10, 1, 6)});
            // 59:59 adds 5959, less than one undo's 10000.
            QCOMPARE(b.Lagg(spel, 10, 1, 6, "Lang", StartFor(59, 59)), 2);
            QCOMPARE(b.Lagg(spel, 10, 1, 5, "Kort", StartFor(0, 0)), 1);
        }
    }

    // Tower of Hanoi, ascending: fewer undos, then the shorter time; a stored entry weighs
    // kort · 10000000 + angra · 10000 without its time.
    void familj3StigandeEfterAnger() {
        Bord b;
        // Keys: 100000, 200000.
        b.Spara(3, {Post("A10", 0, 1, 10), Post("B20", 0, 1, 20)});
        QCOMPARE(b.Lagg(3, 0, 1, 15, "N15", StartFor(0, 0)), 2);    // 150000
        QCOMPARE(b.Lagg(3, 0, 1, 10, "N10t", StartFor(0, 3)), 2);   // 100003
        QCOMPARE(b.Lagg(3, 0, 1, 10, "N10", StartFor(0, 0)), 1);    // 100000, equal to A10
        QCOMPARE(b.Lagg(3, 0, 1, 2000, "Sist", StartFor(0, 0)), 6); // 9990000
        QCOMPARE(b.Namnen(3, 7),
                 (QList<QByteArray>{"N10", "A10", "N10t", "N15", "B20", "Sist", " "}));
        const HiscoreFamilj& f = HiscoreFamiljFor(3);
        QCOMPARE(f.nyNyckel(7, 1, 15, 2, 9), 150209);
        QCOMPARE(f.gammalNyckel(Post("X", 2, 1, 3), 1), 20030000);
        // A stored count of 1 weighs 10000000, more than 999 undos of a new result.
        Bord c;
        c.Spara(3, {Post("Kort1", 1, 1, 0)});
        QCOMPARE(c.Lagg(3, 0, 1, 999, "Ny", StartFor(0, 0)), 1);
    }

    // 13-Pyramiden, ascending: fewer cards left, then an earlier deal, then fewer undos.
    void familj7StigandeEfterKortKvar() {
        Bord b;
        // Keys: 1005, 31000, 32000.
        b.Spara(7, {Post("Kvar0", 0, 1, 5), Post("Kvar3", 3, 1, 0), Post("Kvar3giv2", 3, 2, 0)});
        QCOMPARE(b.Lagg(7, 0, 1, 5, "Lika"), 1);    // 1005
        QCOMPARE(b.Lagg(7, 2, 3, 100, "Kvar2"), 3); // 23100
        QCOMPARE(b.Lagg(7, 3, 2, 0, "Giv2"), 5);    // 32000
        QCOMPARE(b.Lagg(7, 3, 1, 1, "Ang1"), 5);    // 31001
        QCOMPARE(b.Lagg(7, 40, 3, 0, "Kvar40"), 8); // 403000, above the empties (533000)
        QCOMPARE(b.Namnen(7, 9), (QList<QByteArray>{"Lika", "Kvar0", "Kvar2", "Kvar3", "Ang1",
                                                    "Giv2", "Kvar3giv2", "Kvar40", " "}));
    }

    // Freecell and Eight off: more cards, then fewer undos; the new key equals the stored key
    // of an entry of deal 1.
    void familj8Och9NyNyckelLikaMedLagradGiv1() {
        for (int spel : {8, 9}) {
            const HiscoreFamilj& f = HiscoreFamiljFor(spel);
            QCOMPARE(f.nyNyckel(30, 1, 12, 0, 0), 301987);
            QCOMPARE(f.gammalNyckel(Post("X", 30, 1, 12), 1), 301987);
            Bord b;
            // Keys: 521999, 301994.
            b.Spara(spel, {Post("K52", 52, 1, 0), Post("K30a5", 30, 1, 5)});
            QCOMPARE(b.Lagg(spel, 30, 1, 5, "Lika"), 2); // 301994
            QCOMPARE(b.Lagg(spel, 30, 1, 6, "A6"), 4);   // 301993
            QCOMPARE(b.Lagg(spel, 52, 1, 1, "A1"), 2);   // 521998
            QCOMPARE(b.Namnen(spel, 6),
                     (QList<QByteArray>{"K52", "A1", "Lika", "K30a5", "A6", " "}));
        }
    }

    void tvaProgramVarannanGangForlorarIngenting() {
        QTemporaryDir dir;
        AttributeStore a(dir.path().toStdString());
        AttributeStore b(dir.path().toStdString());
        for (int i = 0; i < 20; ++i) {
            int undos = i;
            QCOMPARE(AddHiscore(i % 2 ? a : b, 0, HiscoreResultat{i, 1}, undos, i % 2 ? "A" : "B",
                                StartFor(0, 1), Datum(1, 1, 2026)),
                     1);
        }
        HiscoreLista t;
        QCOMPARE(a.ReadAttr("FJOLK:Spel0", B_RAW_TYPE, 0, t.data(), 1920), ssize_t(1920));
        for (int i = 0; i < 20; ++i) {
            QCOMPARE(int(t[i].kort), 19 - i);
            QCOMPARE(Namn(t[i]), QByteArray((19 - i) % 2 ? "A" : "B"));
        }
        QCOMPARE(int(t[20].kort), -1);
    }

    void tvaProgramSamtidigtForlorarIngenting() {
        QTemporaryDir dir;
        // The store exists already, as after any earlier run; the two programs then enter
        // their results at the same time.
        QCOMPARE(AttributeStore(dir.path().toStdString()).InitCheck(), B_OK);
        std::atomic<int> redo{0};
        std::vector<int> platser[2];
        auto spela = [&](int program) {
            AttributeStore store(dir.path().toStdString());
            ++redo;
            while (redo < 2)
                std::this_thread::yield();
            for (int i = 0; i < 20; ++i) {
                int undos = 0;
                platser[program].push_back(AddHiscore(store, 0, HiscoreResultat{2 * i + program, 1},
                                                      undos, program ? "A" : "B", StartFor(0, 1),
                                                      Datum(1, 1, 2026)));
            }
        };
        std::thread forsta(spela, 0);
        std::thread andra(spela, 1);
        forsta.join();
        andra.join();
        for (int program : {0, 1}) {
            QCOMPARE(platser[program].size(), size_t(20));
            for (int plats : platser[program])
                QVERIFY(plats >= 1 && plats <= 40);
        }
        // All forty results are there, best first, whichever program entered them.
        AttributeStore store(dir.path().toStdString());
        HiscoreLista t;
        QCOMPARE(store.ReadAttr("FJOLK:Spel0", B_RAW_TYPE, 0, t.data(), 1920), ssize_t(1920));
        for (int i = 0; i < 40; ++i) {
            QCOMPARE(int(t[i].kort), 39 - i);
            QCOMPARE(Namn(t[i]), QByteArray((39 - i) % 2 ? "A" : "B"));
        }
    }

    // Without a store no place is named: the result waits, in memory, for one.
    void utanLagerVantarResultatet() {
        QTemporaryDir dir;
        QFile hinder(dir.filePath(QStringLiteral("fil")));
        QVERIFY(hinder.open(QIODevice::WriteOnly));
        hinder.close();
        std::string mapp = (dir.path() + QStringLiteral("/fil/inne")).toStdString();
        AttributeStore store(mapp);
        QCOMPARE(store.InitCheck(), B_NO_INIT);
        int undos = 1200;
        QCOMPARE(AddHiscore(store, 0, HiscoreResultat{5, 1}, undos, "Eva", StartFor(0, 1),
                            Datum(1, 1, 2026)),
                 kHiscoreVantar);
        QCOMPARE(undos, 999);
        QCOMPARE(VantandeResultat::For(mapp).Antal(), size_t(1));
    }

    // Whatever is stored under a table's name and is not 40 entries of 'RAWT' is kept aside,
    // byte for byte, under a name that says when; the player is told once, and a fresh table
    // takes the result.
    void tabellSomInteKanLasasLaggsUndan() {
        struct Fall {
            size_t storlek;
            type_code typ;
        };
        for (Fall fall : {Fall{100, B_RAW_TYPE}, Fall{1921, B_RAW_TYPE}, Fall{1919, B_RAW_TYPE},
                          Fall{1920, B_RECT_TYPE}}) {
            Bord b;
            QByteArray skadad(static_cast<qsizetype>(fall.storlek), 'x');
            for (qsizetype i = 0; i < skadad.size(); ++i)
                skadad[i] = static_cast<char>(i * 7);
            QCOMPARE(
                b.store.WriteAttr("FJOLK:Spel8", fall.typ, 0, skadad.constData(), fall.storlek),
                ssize_t(fall.storlek));
            TakeNotices();
            QCOMPARE(b.Lagg(8, 5, 1, 0), 1);
            HiscoreLista t = b.Tabell(8);
            QCOMPARE(Namn(t[0]), QByteArray("Eva"));
            for (int i = 1; i < 40; ++i)
                QVERIFY(ArTom(t[i], 3));
            std::vector<std::string> undan = Attribut(b.dir, "FJOLK:Spel8.damaged-%");
            QCOMPARE(undan.size(), size_t(1));
            // "FJOLK:Spel8.damaged-" and the moment, YYYYMMDD-HHMMSS.
            QCOMPARE(undan[0].size(), size_t(20 + 15));
            QCOMPARE(undan[0][28], '-');
            type_code typ = 0;
            size_t storlek = 0;
            QVERIFY(b.store.StatAttr(undan[0].c_str(), &typ, &storlek));
            QCOMPARE(typ, fall.typ);
            QCOMPARE(storlek, fall.storlek);
            QByteArray kvar(static_cast<qsizetype>(fall.storlek), 0);
            QCOMPARE(b.store.ReadAttr(undan[0].c_str(), fall.typ, 0, kvar.data(), fall.storlek),
                     ssize_t(fall.storlek));
            QCOMPARE(kvar, skadad);
            std::vector<std::string> notiser = TakeNotices();
            QCOMPARE(notiser.size(), size_t(1));
            QVERIFY2(notiser[0].find("kept as " + undan[0]) != std::string::npos,
                     notiser[0].c_str());
            QVERIFY2(notiser[0].find(std::to_string(fall.storlek) + " bytes") != std::string::npos,
                     notiser[0].c_str());
            // The next result goes into the fresh table; nothing more is kept aside.
            QCOMPARE(b.Lagg(8, 6, 1, 0, "Bo"), 1);
            QCOMPARE(Attribut(b.dir, "FJOLK:Spel8.damaged-%").size(), size_t(1));
            QCOMPARE(b.Namnen(8, 3), (QList<QByteArray>{"Bo", "Eva", " "}));
        }
    }

    // Stored bytes can be anything: keys are reckoned wide and wrap to 32 bits.
    void skrapbytesGerBestamdaNycklar() {
        HighScoreTable p = Post("X", 0, 0, INT_MIN);
        // 4000 - (-2147483648 - 999) = 2147488647, which wraps to -2147478649.
        QCOMPARE(HiscoreFamiljFor(0).gammalNyckel(p, 1), -2147478649);
        p = Post("X", 127, 0, INT_MAX);
        // 1270000000 + 21474836470000 wraps to 1269990000.
        QCOMPARE(HiscoreFamiljFor(1).gammalNyckel(p, 1), 1269990000);
        p = Post("X", -128, 0, INT_MAX);
        QCOMPARE(HiscoreFamiljFor(3).gammalNyckel(p, -53), -879486736);

        std::mt19937 slump(20260101);
        for (int varv = 0; varv < 50; ++varv) {
            HiscoreLista skrap;
            auto* bytes = reinterpret_cast<unsigned char*>(skrap.data());
            for (size_t i = 0; i < sizeof skrap; ++i)
                bytes[i] = static_cast<unsigned char>(slump());
            int spel = varv % 12;
            Bord b;
            b.Spara(spel, skrap);
            int plats = b.Lagg(spel, int(slump() % 60), int(slump() % 4), int(slump() % 2000));
            QVERIFY(plats >= 1 && plats <= 41);
            HiscoreLista efter = b.Tabell(spel);
            if (plats == 41) {
                QVERIFY(SammaBytes(efter, skrap));
            } else {
                QCOMPARE(Namn(efter[plats - 1]), QByteArray("Eva"));
                // Moved down whole, padding and all.
                QCOMPARE(std::memcmp(efter.data() + plats, skrap.data() + plats - 1,
                                     48 * size_t(40 - plats)),
                         0);
            }
        }
    }
};

QTEST_GUILESS_MAIN(HiscoreTest)
#include "test_hiscore.moc"
