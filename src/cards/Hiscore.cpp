#include "cards/Hiscore.h"

#include "platform/AttributeStore.h"

#include <cstdio>
#include <cstring>

HighScoreTable::HighScoreTable() {
    std::memset(this, 0, sizeof *this);
}

namespace {

// Keys are 32-bit as the tables always ranked them; reckoned wider first so that a
// damaged entry wraps instead of overflowing.
int32_t Nyckel(int64_t varde) {
    return static_cast<int32_t>(static_cast<uint32_t>(varde));
}

int32_t NyIdioten(int kort, int giv, int angra, int, int) {
    return Nyckel(int64_t(kort) * 10000 + (4 - int64_t(giv)) * 1000 - (int64_t(angra) - 999));
}
int32_t GammalIdioten(const HighScoreTable& p, int) {
    return NyIdioten(p.kort, p.giv, p.angra, 0, 0);
}

// More undos rank higher here: the tables have always counted them so.
int32_t NyIdioten2(int kort, int, int angra, int mm, int ss) {
    return Nyckel(ss + int64_t(kort) * 10000000 + int64_t(angra) * 10000 + int64_t(mm) * 100);
}
int32_t GammalIdioten2(const HighScoreTable& p, int) {
    return Nyckel(int64_t(p.kort) * 10000000 + int64_t(p.angra) * 10000);
}

int32_t NyTower(int, int, int angra, int mm, int ss) {
    return Nyckel(ss + int64_t(angra) * 10000 + int64_t(mm) * 100);
}
int32_t GammalTower(const HighScoreTable& p, int f) {
    return Nyckel(int64_t(p.kort) * f * 10000000 + int64_t(p.angra) * 10000);
}

int32_t NyGladje(int kort, int, int angra, int mm, int ss) {
    return Nyckel(ss + int64_t(kort) * 10000000 + (999 - int64_t(angra)) * 10000 +
                  int64_t(mm) * 100);
}
int32_t GammalGladje(const HighScoreTable& p, int) {
    return Nyckel(int64_t(p.kort) * 10000000 + (999 - int64_t(p.angra)) * 10000);
}

int32_t NyPyramiden(int kort, int giv, int angra, int, int) {
    return Nyckel(angra + int64_t(kort) * 10000 + int64_t(giv) * 1000);
}
int32_t GammalPyramiden(const HighScoreTable& p, int f) {
    return Nyckel(int64_t(p.kort) * f * 10000 + int64_t(p.giv) * 1000 + p.angra);
}

int32_t NyFreecell(int kort, int, int angra, int, int) {
    return Nyckel(int64_t(kort) * 10000 - (int64_t(angra) - 1999));
}
int32_t GammalFreecell(const HighScoreTable& p, int) {
    return Nyckel(int64_t(p.kort) * 10000 + int64_t(p.giv) * 1000 - (int64_t(p.angra) - 999));
}

constexpr HiscoreFamilj kIdioten{3, false, false, &NyIdioten, &GammalIdioten};
constexpr HiscoreFamilj kIdioten2{1, false, true, &NyIdioten2, &GammalIdioten2};
constexpr HiscoreFamilj kTower{1, true, true, &NyTower, &GammalTower};
constexpr HiscoreFamilj kGladje{1, false, true, &NyGladje, &GammalGladje};
constexpr HiscoreFamilj kPyramiden{3, true, false, &NyPyramiden, &GammalPyramiden};
constexpr HiscoreFamilj kFreecell{3, false, false, &NyFreecell, &GammalFreecell};

// Game number → family: Idioten, Idioten 2, Godnattvalsen, Tower of Hanoi, Kvarnen,
// Glädjespridaren, Farfars klocka, 13-Pyramiden, Freecell, Eight off, Black hole,
// Strategy.
const HiscoreFamilj* const kFamiljer[12] = {&kIdioten,  &kIdioten2, &kIdioten2, &kTower,
                                            &kIdioten,  &kGladje,   &kGladje,   &kPyramiden,
                                            &kFreecell, &kFreecell, &kIdioten,  &kIdioten};

void Kopiera(char* till, size_t storlek, const char* fran) {
    std::snprintf(till, storlek, "%s", fran);
}

} // namespace

const HiscoreFamilj& HiscoreFamiljFor(int spelNr) {
    if (spelNr < 0 || spelNr >= 12)
        return kIdioten;
    return *kFamiljer[spelNr];
}

std::string HiscoreAttributNamn(int spelNr) {
    return "FJOLK:Spel" + std::to_string(spelNr);
}

HighScoreTable TomPost(const HiscoreFamilj& familj) {
    HighScoreTable post;
    Kopiera(post.namn, sizeof post.namn, " ");
    post.kort = -1;
    post.giv = familj.tomtGiv;
    post.angra = 0;
    Kopiera(post.tid, sizeof post.tid, " ");
    Kopiera(post.datum, sizeof post.datum, " ");
    return post;
}

HiscoreLista TomTabell(const HiscoreFamilj& familj) {
    HiscoreLista tabell;
    tabell.fill(TomPost(familj));
    return tabell;
}

int HiscoreMinuter(int64_t sekunder) {
    int64_t mm = sekunder / 60;
    return mm >= 60 ? 59 : static_cast<int>(mm);
}

std::string HiscoreTid(int mm, int ss) {
    // Cut to the 6 bytes the entry keeps, as it always was.
    char tid[32];
    const char* format =
        mm < 10 ? (ss < 10 ? "0%i:0%i" : "0%i:%i") : (ss < 10 ? "%i:0%i" : "%i:%i");
    std::snprintf(tid, sizeof tid, format, mm, ss);
    return std::string(tid).substr(0, sizeof(HighScoreTable::tid) - 1);
}

std::string HiscoreDatum(const std::tm& datum) {
    char text[48];
    std::snprintf(text, sizeof text, "%i/%i %i", datum.tm_mday, datum.tm_mon + 1,
                  datum.tm_year + 1900);
    return std::string(text).substr(0, sizeof(HighScoreTable::datum) - 1);
}

int HiscoreIndex(const HiscoreLista& tabell, const HiscoreFamilj& familj, int32_t ny) {
    int f = 1;
    for (int i = 0; i < kHiscorePlatser; ++i) {
        if (tabell[i].kort == -1)
            f = -53;
        int32_t gammal = familj.gammalNyckel(tabell[i], f);
        if (familj.stigande ? ny <= gammal : gammal <= ny)
            return i;
    }
    return kHiscorePlatser;
}

void HiscoreInfoga(HiscoreLista& tabell, int index, const HighScoreTable& post) {
    for (int i = kHiscorePlatser - 1; i > index; --i)
        tabell[i] = tabell[i - 1];
    tabell[index] = post;
}

int AddHiscore(AttributeStore& store, int spelNr, const HiscoreResultat& resultat, int& angra,
               const char* spelarNamn, bigtime_t startTid, std::time_t nu) {
    int64_t sekunder = (system_time() - startTid) / 1000000;
    int ss = static_cast<int>(sekunder % 60);
    int mm = HiscoreMinuter(sekunder);
    const HiscoreFamilj& familj = HiscoreFamiljFor(spelNr);
    std::string namn = HiscoreAttributNamn(spelNr);
    int index = kHiscorePlatser;

    store.Exclusive([&] {
        HiscoreLista tabell = TomTabell(familj);
        ssize_t last = B_NO_INIT;
        if (store.InitCheck() == B_OK)
            last = store.ReadAttr(namn.c_str(), B_RAW_TYPE, 0, tabell.data(), sizeof tabell);
        if (store.InitCheck() != B_OK || last == B_ENTRY_NOT_FOUND || last == B_FILE_ERROR) {
            tabell = TomTabell(familj);
            store.WriteAttr(namn.c_str(), B_RAW_TYPE, 0, tabell.data(), sizeof tabell);
            store.Sync();
        }
        if (angra > 999)
            angra = 999;
        int32_t ny = familj.nyNyckel(resultat.kort, resultat.giv, angra, mm, ss);
        index = HiscoreIndex(tabell, familj, ny);
        if (index == kHiscorePlatser) {
            if (!familj.skrivOforandrad)
                return;
        } else {
            HighScoreTable post;
            Kopiera(post.namn, sizeof post.namn, spelarNamn != nullptr ? spelarNamn : "");
            post.kort = static_cast<int8_t>(resultat.kort);
            post.giv = static_cast<int8_t>(resultat.giv);
            post.angra = angra;
            Kopiera(post.tid, sizeof post.tid, HiscoreTid(mm, ss).c_str());
            std::tm lokal{};
            localtime_r(&nu, &lokal);
            Kopiera(post.datum, sizeof post.datum, HiscoreDatum(lokal).c_str());
            HiscoreInfoga(tabell, index, post);
        }
        store.WriteAttr(namn.c_str(), B_RAW_TYPE, 0, tabell.data(), sizeof tabell);
        store.Sync();
    });
    return index + 1;
}

int AddHiscore(int spelNr, const HiscoreResultat& resultat, int& angra, const char* spelarNamn,
               bigtime_t startTid) {
    return AddHiscore(AttributeStore::Program(), spelNr, resultat, angra, spelarNamn, startTid,
                      std::time(nullptr));
}

std::string HiscoreMeddelande(int plats) {
    if (plats < 0 || plats > 40)
        return "You've missed the Hiscoretable! Better luck next time!";
    return "You are number " + std::to_string(plats) + " on the Hiscoretable!";
}
