#include "app/FjolkView.h"
#include "games/Spelfabrik.h"
#include "platform/AttributeStore.h"
#include "support/Gester.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <string>

// Thousands of random gestures on every game the factory knows, with the table checked
// after each: no card lost or doubled, the undo list and Has_Undos agreeing, undoing
// everything bringing back the table as last dealt, and a won game reported exactly when
// it is won. A failure names the game, seed, size and the gestures that led there.

namespace {

constexpr int kStegPerOmgang = 600;

// Each game's own won condition, reckoned here from the table alone.
bool IdiotenVunnen(const std::vector<Lucka>& luckor) {
    for (int rad = 0; rad < 4; ++rad) {
        int s = 13 * rad;
        for (int k = 0; k < 12; ++k) {
            const Lucka& l = luckor[s + k];
            if (l.Tom() || l.GeKort().KortValor() != k + 2 ||
                l.GeKort().KortFarg() != luckor[s].GeKort().KortFarg())
                return false;
        }
    }
    return true;
}

// Freecell and Eight off: a king on the top level of each of the four foundations.
std::function<bool(const std::vector<Lucka>&)> KungarPa(int forstaGrund) {
    return [forstaGrund](const std::vector<Lucka>& luckor) {
        for (int f = 0; f < 4; ++f) {
            const Lucka& l = luckor[forstaGrund + 13 * f + 12];
            if (l.Tom() || l.GeKort().KortValor() != 13)
                return false;
        }
        return true;
    };
}

const std::map<int, std::function<bool(const std::vector<Lucka>&)>>& VunnetFor() {
    static const std::map<int, std::function<bool(const std::vector<Lucka>&)>> tabell = {
        {0, IdiotenVunnen}, {8, KungarPa(184)}, {9, KungarPa(192)}};
    return tabell;
}

std::multiset<int> KortenPaBordet(const Patiens& spel) {
    std::multiset<int> kort;
    for (const Lucka& l : spel.Luckor())
        if (!l.Tom())
            kort.insert(13 * l.GeKort().KortFarg() + l.GeKort().KortValor() - 1);
    for (const Kort& k : spel.Kortleken().Korten())
        kort.insert(13 * k.KortFarg() + k.KortValor() - 1);
    return kort;
}

struct Omgang {
    int spelNr;
    unsigned seed;
    int bredd;
    int hojd;
    std::ostringstream logg;
    std::unique_ptr<FjolkView> vy;
    std::mt19937 slump;
    size_t antalKort = 0;
    std::vector<LuckaBild> bas;

    Omgang(int nr, unsigned s, int w, int h) : spelNr(nr), seed(s), bredd(w), hojd(h), slump(s) {
        vy = VyMedSpel(nr, s, w, h);
        antalKort = KortenPaBordet(*vy->Spel()).size();
        bas = Bordet(*vy->Spel());
    }

    QString Var() const {
        return QStringLiteral("game %1 seed %2 size %3x%4, gestures:%5")
            .arg(spelNr)
            .arg(seed)
            .arg(bredd)
            .arg(hojd)
            .arg(QString::fromStdString(logg.str()));
    }

    BPoint SlumpPunkt() {
        std::uniform_int_distribution<int> x(-20, bredd + 20);
        std::uniform_int_distribution<int> y(-20, hojd + 20);
        return BPoint(float(x(slump)), float(y(slump)));
    }
    BPoint SlumpLucka() {
        const auto& luckor = vy->Spel()->Luckor();
        std::uniform_int_distribution<size_t> i(0, luckor.size() - 1);
        return Mitt(luckor[i(slump)].GePos());
    }
    BPoint NagonPunkt() {
        return std::uniform_int_distribution<int>(0, 2)(slump) == 0 ? SlumpPunkt() : SlumpLucka();
    }

    void Steg() {
        Patiens& spel = *vy->Spel();
        int val = std::uniform_int_distribution<int>(0, 99)(slump);
        if (val < 35) {
            BPoint p = NagonPunkt();
            logg << " click(" << p.x << "," << p.y << ")";
            KlickaPa(*vy, p);
        } else if (val < 70) {
            BPoint fran = NagonPunkt();
            BPoint till = NagonPunkt();
            logg << " drag(" << fran.x << "," << fran.y << "->" << till.x << "," << till.y << ")";
            DraFranTill(*vy, fran, till);
        } else if (val < 78) {
            BPoint p = NagonPunkt();
            logg << " jitter(" << p.x << "," << p.y << ")";
            TryckSkakaSlapp(*vy, p);
        } else if (val < 82) {
            BPoint p = NagonPunkt();
            logg << " dragout(" << p.x << "," << p.y << ")";
            DraOchSlappUtanfor(*vy, p);
        } else if (val < 97) {
            logg << " undo";
            spel.Undo();
            vy->InvalidateOffscreen();
        } else {
            logg << " newdeal";
            spel.NyttSpel(vy->Bounds());
            vy->InvalidateOffscreen();
        }
        QCoreApplication::sendPostedEvents();
    }

    // Undoes everything the list holds and compares with the table as last dealt.
    bool AngraAllt() {
        Patiens& spel = *vy->Spel();
        for (int i = 0; i < 100000 && spel.Has_Undos(); ++i)
            spel.Undo();
        logg << " undo-all";
        return Bordet(spel) == bas;
    }
};

} // namespace

class SoakTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { AttributeStore::SetDataDirectory(dir.path().toStdString()); }

    void slumpspelPaVarjeSpel_data() {
        QTest::addColumn<int>("spelNr");
        QTest::addColumn<unsigned>("seed");
        QTest::addColumn<int>("bredd");
        QTest::addColumn<int>("hojd");
        for (int nr = 0; nr < kAntalSpel; ++nr) {
            if (!SpelFinns(nr))
                continue;
            for (unsigned seed : {1u, 2u, 3u})
                for (auto [w, h] : {std::pair{640, 480}, std::pair{1280, 1024}})
                    QTest::addRow("%s seed %u %dx%d", SpelNamn(nr), seed, w, h)
                        << nr << seed << w << h;
        }
    }

    void slumpspelPaVarjeSpel() {
        QFETCH(int, spelNr);
        QFETCH(unsigned, seed);
        QFETCH(int, bredd);
        QFETCH(int, hojd);
        Omgang o(spelNr, seed, bredd, hojd);
        const size_t antalLuckor = o.vy->Spel()->Luckor().size();
        for (int steg = 0; steg < kStegPerOmgang; ++steg) {
            o.Steg();
            const Patiens& spel = *o.vy->Spel();
            QVERIFY2(spel.Luckor().size() == antalLuckor, qPrintable(o.Var()));
            std::multiset<int> kort = KortenPaBordet(spel);
            QVERIFY2(kort.size() == o.antalKort, qPrintable(o.Var()));
            QVERIFY2(std::set<int>(kort.begin(), kort.end()).size() == kort.size(),
                     qPrintable(o.Var()));
            Patiens& andra = *o.vy->Spel();
            QVERIFY2(andra.Has_Undos() == !spel.UndoLista().empty(), qPrintable(o.Var()));
            auto vunnen = VunnetFor().find(spelNr);
            if (vunnen != VunnetFor().end())
                QVERIFY2(andra.KlarSpel() == vunnen->second(spel.Luckor()), qPrintable(o.Var()));
            if (spel.UndoLista().empty())
                o.bas = Bordet(spel);
            if (steg % 50 == 49)
                QVERIFY2(o.AngraAllt(), qPrintable(o.Var()));
        }
        QVERIFY2(o.AngraAllt(), qPrintable(o.Var()));
    }

private:
    QTemporaryDir dir;
};

QTEST_MAIN(SoakTest)
#include "test_soak.moc"
