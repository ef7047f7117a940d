#include "app/FjolkView.h"
#include "games/Spelfabrik.h"
#include "platform/AttributeStore.h"
#include "support/Gester.h"
#include "support/Urval.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <string>

// Random gestures on every game the factory knows, with the table checked after each: it
// is unchanged, or changed exactly as one of the moves the game's rules listed before the
// gesture; no card is lost or doubled; the undo list and Has_Undos agree; undoing
// everything brings back the table as last dealt; a won game is reported exactly when it
// is won; every listed move can be made by the gesture the game names for it; and redo,
// mixed in with the undos, gives back exactly the table each undo took back, counting no
// undo out, until a move forgets it. A failure names the game, seed, size and the gestures
// that led there.
//
// FJOLK_SOAK_GESTER sets the gestures of each round (600 unless set), for long runs.

namespace {

int TalFranMiljon(const char* namn, int standard) {
    const char* text = std::getenv(namn);
    if (text == nullptr || *text == '\0')
        return standard;
    return std::max(1, std::atoi(text));
}

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

// Godnattvalsen: stock and piles empty, a king at the top of each value-built foundation.
bool GodnattvalsenVunnen(const std::vector<Lucka>& luckor) {
    for (int c = 0; c < 4; ++c) {
        const Lucka& kung = luckor[28 * c + 12];
        if (kung.Tom() || kung.GeKort().KortValor() != 13 || !luckor[28 * c + 14].Tom())
            return false;
    }
    return luckor[112].Tom();
}

// Tower of Hanoi: nine slots in a row, 9 down to the ace.
bool TowerVunnen(const std::vector<Lucka>& luckor) {
    for (int i = 0; i <= 26; ++i) {
        int k = 0;
        while (k < 9 && !luckor[i + k].Tom() && luckor[i + k].GeKort().KortValor() == 9 - k)
            ++k;
        if (k == 9)
            return true;
    }
    return false;
}

// Strategy: all 52 cards on the foundations' slots.
bool StrategyVunnen(const std::vector<Lucka>& luckor) {
    int hemma = 0;
    for (int i = 424; i <= 635; ++i)
        hemma += luckor[i].Tom() ? 0 : 1;
    return hemma == 52;
}

// 13-Pyramiden: no card left in the 28 places of the pyramid.
bool PyramidenVunnen(const std::vector<Lucka>& luckor) {
    for (int i = 0; i < 28; ++i)
        if (!luckor[i].Tom())
            return false;
    return true;
}

// Black hole: every one of the 52 cards in the hole.
bool BlackholeVunnen(const std::vector<Lucka>& luckor) {
    for (int i = 0; i < 52; ++i)
        if (luckor[i].Tom())
            return false;
    return true;
}

// Kvarnen: each foundation of 18 slots runs from its ace to its king in one suit.
bool KvarnenVunnen(const std::vector<Lucka>& luckor) {
    for (int k = 0; k < 4; ++k)
        for (int j = 0; j < 13; ++j) {
            const Lucka& l = luckor[18 * k + j];
            if (l.Tom() || l.GeKort().KortValor() != j + 1 ||
                l.GeKort().KortFarg() != luckor[18 * k].GeKort().KortFarg())
                return false;
        }
    return true;
}

// Farfars klocka: all 52 cards on the twelve clock piles, slots 0..227.
bool KlockanVunnen(const std::vector<Lucka>& luckor) {
    int paKlockan = 0;
    for (int i = 0; i < 228; ++i)
        paKlockan += luckor[i].Tom() ? 0 : 1;
    return paKlockan == 52;
}

// Idioten 2: nothing left in the stock (slots 112..163), and each column (14 places from
// 0, 14, 28, 42) holds its ace alone.
bool Idioten2Vunnen(const std::vector<Lucka>& luckor) {
    for (int i = 112; i <= 163; ++i)
        if (!luckor[i].Tom())
            return false;
    for (int bas = 0; bas < 56; bas += 14) {
        if (luckor[bas].Tom() || luckor[bas].GeKort().KortValor() != 1)
            return false;
        for (int i = bas + 1; i < bas + 14; ++i)
            if (!luckor[i].Tom())
                return false;
    }
    return true;
}

// Glädjespridaren: a king on level 12 of each foundation of 22 places from slot 352.
bool GladjespridarenVunnen(const std::vector<Lucka>& luckor) {
    for (int f = 0; f < 4; ++f) {
        const Lucka& l = luckor[352 + 22 * f + 12];
        if (l.Tom() || l.GeKort().KortValor() != 13)
            return false;
    }
    return true;
}

const std::map<int, std::function<bool(const std::vector<Lucka>&)>>& VunnetFor() {
    static const std::map<int, std::function<bool(const std::vector<Lucka>&)>> tabell = {
        {0, IdiotenVunnen}, {1, Idioten2Vunnen},   {2, GodnattvalsenVunnen},
        {3, TowerVunnen},   {4, KvarnenVunnen},    {5, GladjespridarenVunnen},
        {6, KlockanVunnen}, {7, PyramidenVunnen},  {8, KungarPa(184)},
        {9, KungarPa(192)}, {10, BlackholeVunnen}, {11, StrategyVunnen}};
    return tabell;
}

std::multiset<int> KortenPa(const SpelBord& bord) {
    std::multiset<int> kort;
    for (const Lucka& l : bord.luckor)
        if (!l.Tom())
            kort.insert(13 * l.GeKort().KortFarg() + l.GeKort().KortValor() - 1);
    for (const Kort& k : bord.kortlek.Korten())
        kort.insert(13 * k.KortFarg() + k.KortValor() - 1);
    return kort;
}

struct Utfall {
    bool ok = true;
    std::string vad;
    // The move began a new stretch of play that undo does not reach back across.
    bool nyBas = false;
};

// The move left no record of its own, or the records undo had before it are gone: undo no
// longer reaches back across it.
bool HistorikenBorta(const SpelBord& fore, const SpelBord& efter) {
    return efter.undoLista.size() <= fore.undoLista.size() ||
           !std::equal(fore.undoLista.begin(), fore.undoLista.end(), efter.undoLista.begin());
}

// What undoing everything must give back after a move that began a new stretch: the table
// with the records it has now taken back by the rules.
std::vector<LuckaBild> BasEfter(const SpelRegler& regler, const SpelBord& bord) {
    auto kopia = bord.Kopia();
    while (!kopia->undoLista.empty())
        regler.Angra(*kopia, nullptr);
    return Bordet(*kopia);
}

// Tells what a gesture did, by the moves the rules listed before it.
Utfall VadGesten(const SpelRegler& regler, const SpelBord& fore, const SpelBord& efter,
                 unsigned fro) {
    if (efter.Lika(fore))
        return {};
    std::vector<Drag> dragen = regler.LagligaDrag(fore);
    for (const Drag& d : dragen)
        if (EfterDrag(regler, fore, d, fro)->Lika(efter))
            return {true, Beskriv(d), HistorikenBorta(fore, efter)};
    // A new attempt shuffles: its kind and its cards are what can be told.
    for (const Drag& d : dragen)
        if (d.slag == DragSlag::NyttForsok && efter.undoLista.empty() &&
            KortenPa(efter) == KortenPa(fore))
            return {true, Beskriv(d), true};
    return {false, "a change no listed move makes", false};
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
    // The tables the undos since the last move took back, the newest last: what redo
    // must give back.
    std::vector<std::unique_ptr<SpelBord>> angrade;
    // What the last redo did wrong, if anything.
    std::string redoFel;

    Omgang(int nr, unsigned s, int w, int h) : spelNr(nr), seed(s), bredd(w), hojd(h), slump(s) {
        vy = VyMedSpel(nr, s, w, h);
        antalKort = KortenPa(Spel().Tabell()).size();
        bas = Bordet(Spel());
    }
    Patiens& Spel() { return *vy->Spel(); }

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
        const auto& luckor = Spel().Luckor();
        std::uniform_int_distribution<size_t> i(0, luckor.size() - 1);
        return Mitt(luckor[i(slump)].GePos());
    }
    BPoint NagonPunkt() {
        return std::uniform_int_distribution<int>(0, 2)(slump) == 0 ? SlumpPunkt() : SlumpLucka();
    }

    // One random gesture; false when it was an undo or a new deal rather than a gesture.
    bool Steg() {
        int val = std::uniform_int_distribution<int>(0, 99)(slump);
        bool gest = true;
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
        } else if (val < 92) {
            logg << " undo";
            Angra();
            gest = false;
        } else if (val < 97) {
            logg << " redo";
            redoFel = GorOm();
            gest = false;
        } else {
            logg << " newdeal";
            Spel().NyttSpel(vy->Bounds());
            vy->InvalidateOffscreen();
            bas = Bordet(Spel());
            angrade.clear();
            gest = false;
        }
        QCoreApplication::sendPostedEvents();
        return gest;
    }

    void Angra() {
        auto fore = Spel().Tabell().Kopia();
        Spel().Undo();
        if (!fore->undoLista.empty())
            angrade.push_back(std::move(fore));
        vy->InvalidateOffscreen();
    }

    // Redo is offered exactly while an undo since the last move is left to make again; it
    // gives back the table that undo took back, with every undo still counted.
    std::string GorOm() {
        if (Spel().Has_Redos() != !angrade.empty())
            return angrade.empty() ? "redo offered with nothing undone"
                                   : "redo not offered after an undo";
        int antalUndo = Spel().AntalUndo();
        int kvar = Spel().Redo();
        vy->InvalidateOffscreen();
        if (angrade.empty())
            return kvar == 0 ? "" : "redo with nothing undone said it had more";
        std::unique_ptr<SpelBord> vantat = std::move(angrade.back());
        angrade.pop_back();
        if (Spel().AntalUndo() != antalUndo)
            return "redo changed the undo count";
        vantat->antalUndo = antalUndo;
        if (!vantat->Lika(Spel().Tabell()))
            return "redo did not give back the table the undo took back";
        if (kvar != static_cast<int>(angrade.size()))
            return "redo miscounted what is left to make again";
        return {};
    }

    // Undoes everything the list holds and compares with the table as last dealt.
    bool AngraAllt() {
        for (int i = 0; i < 100000 && Spel().Has_Undos(); ++i)
            Angra();
        logg << " undo-all";
        return Bordet(Spel()) == bas;
    }

    // Undoes up to `antal` moves, then makes those again: the table is the one before.
    std::string AngraOchGorOm(int antal) {
        auto fore = Spel().Tabell().Kopia();
        logg << " undo-redo(" << antal << ")";
        const size_t redan = angrade.size();
        for (int i = 0; i < antal && Spel().Has_Undos(); ++i)
            Angra();
        while (angrade.size() > redan)
            if (std::string fel = GorOm(); !fel.empty())
                return fel;
        if (Spel().Has_Redos() != (redan > 0))
            return "redo offered wrongly with those undos made again";
        fore->antalUndo = Spel().AntalUndo();
        return fore->Lika(Spel().Tabell()) ? "" : "undo and redo did not give the table back";
    }

    // Every move the rules list now is made by the gesture the game names for it, and
    // makes exactly that move; the table is put back after each.
    std::string VarjeDragHarSinGest() {
        const SpelRegler& regler = Spel().Regler();
        auto fore = Spel().Tabell().Kopia();
        std::string fel;
        for (const Drag& d : regler.LagligaDrag(*fore)) {
            Spel().Tabell().TaFran(*fore);
            vy->InvalidateOffscreen();
            std::optional<Gest> gest = Spel().GestFor(d);
            if (!gest) {
                fel = "no gesture for " + Beskriv(d);
                break;
            }
            unsigned fro = slump();
            std::srand(fro);
            GorGest(*vy, *gest);
            QCoreApplication::sendPostedEvents();
            if (!EfterDrag(regler, *fore, d, fro)->Lika(Spel().Tabell())) {
                fel = "the gesture for " + Beskriv(d) + " did something else";
                break;
            }
        }
        Spel().Tabell().TaFran(*fore);
        vy->InvalidateOffscreen();
        return fel;
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
            if (!SpelFinns(nr) || !SpeletValt(nr))
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
        const int antalSteg = TalFranMiljon("FJOLK_SOAK_GESTER", 600);
        Omgang o(spelNr, seed, bredd, hojd);
        const size_t antalLuckor = o.Spel().Luckor().size();
        const bool alltSyns = bredd >= 1280;
        for (int steg = 0; steg < antalSteg; ++steg) {
            auto fore = o.Spel().Tabell().Kopia();
            unsigned fro = o.slump();
            std::srand(fro);
            bool varGest = o.Steg();
            Patiens& spel = o.Spel();
            QVERIFY2(o.redoFel.empty(),
                     qPrintable(QString::fromStdString(o.redoFel) + " after " + o.Var()));
            if (varGest) {
                Utfall utfall = VadGesten(spel.Regler(), *fore, spel.Tabell(), fro);
                QVERIFY2(utfall.ok,
                         qPrintable(QString::fromStdString(utfall.vad) + " after " + o.Var()));
                if (!spel.Tabell().Lika(*fore))
                    o.angrade.clear();
                if (utfall.nyBas)
                    o.bas = BasEfter(spel.Regler(), spel.Tabell());
            }
            QVERIFY2(spel.Luckor().size() == antalLuckor, qPrintable(o.Var()));
            std::multiset<int> kort = KortenPa(spel.Tabell());
            QVERIFY2(kort.size() == o.antalKort, qPrintable(o.Var()));
            QVERIFY2(std::set<int>(kort.begin(), kort.end()).size() == kort.size(),
                     qPrintable(o.Var()));
            QVERIFY2(spel.Has_Undos() == !spel.UndoLista().empty(), qPrintable(o.Var()));
            auto vunnen = VunnetFor().find(spelNr);
            if (vunnen != VunnetFor().end())
                QVERIFY2(spel.KlarSpel() == vunnen->second(spel.Luckor()), qPrintable(o.Var()));
            if (steg % 50 == 49)
                QVERIFY2(o.AngraAllt(), qPrintable(o.Var()));
            if (steg % 50 == 24) {
                std::string fel = o.AngraOchGorOm(1 + steg / 50 % 8);
                QVERIFY2(fel.empty(),
                         qPrintable(QString::fromStdString(fel) + " after " + o.Var()));
            }
            if (alltSyns && steg % 40 == 20) {
                std::string fel = o.VarjeDragHarSinGest();
                QVERIFY2(fel.empty(),
                         qPrintable(QString::fromStdString(fel) + " after " + o.Var()));
            }
        }
        QVERIFY2(o.AngraAllt(), qPrintable(o.Var()));
    }

private:
    QTemporaryDir dir;
};

QTEST_MAIN(SoakTest)
#include "test_soak.moc"
