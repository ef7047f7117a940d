#include "cards/Hiscore.h"

#include "cards/Statistik.h"
#include "cards/VantandeResultat.h"
#include "platform/AttributeStore.h"

#include <unistd.h>

#include <cctype>
#include <random>

#include <cstdio>
#include <cstring>

HighScoreTable::HighScoreTable() {
    std::memset(static_cast<void*>(this), 0, sizeof *this);
}

namespace {

// A stored table may hold any bytes at all, so keys are reckoned 64-bit wide and only then
// brought to the 32 bits they have always had; for every real result nothing wraps.
int32_t Nyckel(int64_t varde) {
    return static_cast<int32_t>(varde);
}

// Idioten 1, Kvarnen, Black hole, Strategy: more cards, then an earlier deal, then fewer
// undos.
int32_t NyIdioten(int kort, int giv, int angra, int, int) {
    return Nyckel(int64_t{kort} * 10000 + (4 - int64_t{giv}) * 1000 - (int64_t{angra} - 999));
}
int32_t GammalIdioten(const HighScoreTable& p, int) {
    return NyIdioten(p.kort, p.giv, p.angra, 0, 0);
}

// Idioten 2, Godnattvalsen: more cards, then MORE undos; the tables have always counted
// them so.
int32_t NyIdioten2(int kort, int, int angra, int mm, int ss) {
    return Nyckel(ss + int64_t{kort} * 10000000 + int64_t{angra} * 10000 + int64_t{mm} * 100);
}
int32_t GammalIdioten2(const HighScoreTable& p, int) {
    return Nyckel(int64_t{p.kort} * 10000000 + int64_t{p.angra} * 10000);
}

// Tower of Hanoi: fewer undos, then the shorter time.
int32_t NyTower(int, int, int angra, int mm, int ss) {
    return Nyckel(ss + int64_t{angra} * 10000 + int64_t{mm} * 100);
}
int32_t GammalTower(const HighScoreTable& p, int f) {
    return Nyckel(int64_t{p.kort} * f * 10000000 + int64_t{p.angra} * 10000);
}

// Glädjespridaren, Farfars klocka: more cards, then fewer undos.
int32_t NyGladje(int kort, int, int angra, int mm, int ss) {
    return Nyckel(ss + int64_t{kort} * 10000000 + (999 - int64_t{angra}) * 10000 +
                  int64_t{mm} * 100);
}
int32_t GammalGladje(const HighScoreTable& p, int) {
    return Nyckel(int64_t{p.kort} * 10000000 + (999 - int64_t{p.angra}) * 10000);
}

// 13-Pyramiden: fewer cards left, then an earlier deal, then fewer undos.
int32_t NyPyramiden(int kort, int giv, int angra, int, int) {
    return Nyckel(angra + int64_t{kort} * 10000 + int64_t{giv} * 1000);
}
int32_t GammalPyramiden(const HighScoreTable& p, int f) {
    return Nyckel(int64_t{p.kort} * f * 10000 + int64_t{p.giv} * 1000 + p.angra);
}

// Freecell, Eight off: more cards, then fewer undos; the games store deal 1, whose key is
// the new result's.
int32_t NyFreecell(int kort, int, int angra, int, int) {
    return Nyckel(int64_t{kort} * 10000 - (int64_t{angra} - 1999));
}
int32_t GammalFreecell(const HighScoreTable& p, int) {
    return Nyckel(int64_t{p.kort} * 10000 + int64_t{p.giv} * 1000 - (int64_t{p.angra} - 999));
}

constexpr bool kFallande = false;
constexpr bool kStigande = true;
constexpr bool kHoppaOver = false;
constexpr bool kSkrivTillbaka = true;

// Indexed by game number.
constexpr std::array<HiscoreFamilj, 12> kFamiljer{{
    {3, kFallande, kHoppaOver, &NyIdioten, &GammalIdioten},       // Idioten 1
    {1, kFallande, kSkrivTillbaka, &NyIdioten2, &GammalIdioten2}, // Idioten 2
    {1, kFallande, kSkrivTillbaka, &NyIdioten2, &GammalIdioten2}, // Godnattvalsen
    {1, kStigande, kSkrivTillbaka, &NyTower, &GammalTower},       // Tower of Hanoi
    {3, kFallande, kHoppaOver, &NyIdioten, &GammalIdioten},       // Kvarnen
    {1, kFallande, kSkrivTillbaka, &NyGladje, &GammalGladje},     // Glädjespridaren
    {1, kFallande, kSkrivTillbaka, &NyGladje, &GammalGladje},     // Farfars klocka
    {3, kStigande, kHoppaOver, &NyPyramiden, &GammalPyramiden},   // 13-Pyramiden
    {3, kFallande, kHoppaOver, &NyFreecell, &GammalFreecell},     // Freecell
    {3, kFallande, kHoppaOver, &NyFreecell, &GammalFreecell},     // Eight off
    {3, kFallande, kHoppaOver, &NyIdioten, &GammalIdioten},       // Black hole
    {3, kFallande, kHoppaOver, &NyIdioten, &GammalIdioten},       // Strategy
}};

// From the first empty entry on, the ascending tables see every entry as far behind any
// real result.
constexpr int kTomFaktor = -53;

void Kopiera(char* till, size_t storlek, const char* fran) {
    std::snprintf(till, storlek, "%s", fran);
}

class Attributlager : public HiscoreStore {
public:
    explicit Attributlager(AttributeStore& store) : lager(store) {}
    status_t InitCheck() const override { return lager.InitCheck(); }
    ssize_t ReadAttr(const char* name, type_code type, off_t offset, void* buffer,
                     size_t length) override {
        return lager.ReadAttr(name, type, offset, buffer, length);
    }
    ssize_t WriteAttr(const char* name, type_code type, off_t offset, const void* buffer,
                      size_t length) override {
        return lager.WriteAttr(name, type, offset, buffer, length);
    }
    bool StatAttr(const char* name, type_code* type, size_t* size) override {
        return lager.StatAttr(name, type, size);
    }
    status_t RenameAttr(const char* from, const char* to) override {
        return lager.RenameAttr(from, to);
    }
    status_t Sync() override { return lager.Sync(); }
    status_t Exclusive(const std::function<bool()>& work) override { return lager.Exclusive(work); }
    status_t ReadStatistics(int game, const std::string& player, StatisticsRow* row) override {
        return lager.ReadStatistics(game, player, row);
    }
    status_t WriteStatistics(const StatisticsRow& row) override {
        return lager.WriteStatistics(row);
    }
    bool StatisticsDamaged() override { return lager.StatisticsDamaged(); }
    status_t RebuildStatistics(std::string* keptAs) override {
        return lager.RebuildStatistics(keptAs);
    }
    std::string DataDirectory() const override { return lager.DataDirectory(); }

private:
    AttributeStore& lager;
};

} // namespace

const HiscoreFamilj& HiscoreFamiljFor(int spelNr) {
    if (spelNr < 0 || spelNr >= static_cast<int>(kFamiljer.size()))
        return kFamiljer[0];
    return kFamiljer[static_cast<size_t>(spelNr)];
}

std::string HiscoreAttributNamn(int spelNr) {
    char namn[32];
    std::snprintf(namn, sizeof namn, "FJOLK:Spel%i", spelNr);
    return namn;
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
    const char* format =
        mm < 10 ? (ss < 10 ? "0%i:0%i" : "0%i:%i") : (ss < 10 ? "%i:0%i" : "%i:%i");
    char tid[32];
    std::snprintf(tid, sizeof tid, format, mm, ss);
    return std::string(tid).substr(0, sizeof(HighScoreTable::tid) - 1);
}

std::string HiscoreDatum(const std::tm& datum) {
    char text[80];
    std::snprintf(text, sizeof text, "%lld/%lld %lld", static_cast<long long>(datum.tm_mday),
                  static_cast<long long>(datum.tm_mon) + 1,
                  static_cast<long long>(datum.tm_year) + 1900);
    return std::string(text).substr(0, sizeof(HighScoreTable::datum) - 1);
}

int HiscoreIndex(const HiscoreLista& tabell, const HiscoreFamilj& familj, int32_t ny) {
    int f = 1;
    for (int i = 0; i < kHiscorePlatser; ++i) {
        if (tabell[i].kort == -1)
            f = kTomFaktor;
        int32_t gammal = familj.gammalNyckel(tabell[i], f);
        if (familj.stigande ? ny <= gammal : gammal <= ny)
            return i;
    }
    return kHiscorePlatser;
}

HighScoreTable HiscorePost(const char* spelarNamn, const HiscoreResultat& resultat, int angra,
                           int mm, int ss, const std::tm& datum) {
    HighScoreTable post;
    Kopiera(post.namn, sizeof post.namn, spelarNamn != nullptr ? spelarNamn : "");
    post.kort = static_cast<int8_t>(resultat.kort);
    post.giv = static_cast<int8_t>(resultat.giv);
    post.angra = angra;
    Kopiera(post.tid, sizeof post.tid, HiscoreTid(mm, ss).c_str());
    Kopiera(post.datum, sizeof post.datum, HiscoreDatum(datum).c_str());
    return post;
}

void HiscoreInfoga(HiscoreLista& tabell, int index, const HighScoreTable& post) {
    if (index < 0 || index >= kHiscorePlatser)
        return;
    // Moved as bytes: an assignment need not carry the padding, and the stored table is to
    // be the same bytes each time.
    HighScoreTable* plats = tabell.data() + index;
    std::memmove(static_cast<void*>(plats + 1), plats,
                 sizeof(HighScoreTable) * static_cast<size_t>(kHiscorePlatser - 1 - index));
    std::memcpy(static_cast<void*>(plats), &post, sizeof post);
}

Resultatpost NyResultatpost(int spelNr, const HiscoreResultat& resultat, int angra, int mm, int ss,
                            const char* spelarNamn, std::time_t nu) {
    static std::mt19937_64 slump{std::random_device{}() ^ static_cast<uint64_t>(getpid()) << 32 ^
                                 static_cast<uint64_t>(nu)};
    Resultatpost r;
    r.id = slump();
    r.spelNr = spelNr;
    r.resultat = resultat;
    r.angra = angra;
    r.mm = mm;
    r.ss = ss;
    r.sekunder = int64_t{mm} * 60 + ss;
    r.nar = nu;
    std::tm lokal{};
    localtime_r(&nu, &lokal);
    r.post = HiscorePost(spelarNamn, resultat, angra, mm, ss, lokal);
    return r;
}

namespace {

std::string TypText(type_code typ) {
    std::string text;
    for (int i = 3; i >= 0; --i) {
        char c = static_cast<char>((typ >> (8 * i)) & 0xff);
        text += std::isprint(static_cast<unsigned char>(c)) ? c : '?';
    }
    return text;
}

// A stored value under the table's name that is not a table moves aside, to a free name.
bool LaggUndan(HiscoreStore& store, const std::string& namn, type_code typ, size_t storlek,
               std::vector<std::string>* notiser) {
    std::string undan = namn + ".damaged-" + TimeStamp();
    for (int n = 2; store.StatAttr(undan.c_str(), nullptr, nullptr); ++n)
        undan = namn + ".damaged-" + TimeStamp() + "-" + std::to_string(n);
    if (store.RenameAttr(namn.c_str(), undan.c_str()) != B_OK)
        return false;
    if (notiser != nullptr)
        notiser->push_back("The stored hiscore table " + namn +
                           " could not be read as 40 entries (" + std::to_string(storlek) +
                           " bytes of type '" + TypText(typ) + "'); it was kept as " + undan +
                           " and a fresh table was started.");
    return true;
}

} // namespace

bool ForInResultat(HiscoreStore& store, const Resultatpost& r, int* plats,
                   std::vector<std::string>* notiser) {
    const HiscoreFamilj& familj = HiscoreFamiljFor(r.spelNr);
    const std::string namn = HiscoreAttributNamn(r.spelNr);
    HiscoreLista tabell;
    ssize_t last = store.ReadAttr(namn.c_str(), B_RAW_TYPE, 0, tabell.data(), sizeof tabell);
    if (last != static_cast<ssize_t>(sizeof tabell)) {
        if (last != B_ENTRY_NOT_FOUND)
            return false;
        type_code typ = 0;
        size_t storlek = 0;
        if (store.StatAttr(namn.c_str(), &typ, &storlek) &&
            !LaggUndan(store, namn, typ, storlek, notiser))
            return false;
        tabell = TomTabell(familj);
        if (store.WriteAttr(namn.c_str(), B_RAW_TYPE, 0, tabell.data(), sizeof tabell) !=
            static_cast<ssize_t>(sizeof tabell))
            return false;
        store.Sync();
    }
    if (!ForInStatistik(store, r, notiser))
        return false;
    int index = HiscoreIndex(tabell, familj,
                             familj.nyNyckel(r.resultat.kort, r.resultat.giv, r.angra, r.mm, r.ss));
    *plats = index + 1;
    if (index == kHiscorePlatser && !familj.skrivOforandrad)
        return true;
    HiscoreInfoga(tabell, index, r.post);
    if (store.WriteAttr(namn.c_str(), B_RAW_TYPE, 0, tabell.data(), sizeof tabell) !=
        static_cast<ssize_t>(sizeof tabell))
        return false;
    store.Sync();
    return true;
}

int AddHiscore(HiscoreStore& store, int spelNr, const HiscoreResultat& resultat, int& angra,
               const char* spelarNamn, bigtime_t startTid, std::time_t nu) {
    int64_t sekunder = (system_time() - startTid) / 1000000;
    int ss = static_cast<int>(sekunder % 60);
    int mm = HiscoreMinuter(sekunder);
    if (angra > kMaxAngra)
        angra = kMaxAngra;
    Resultatpost post = NyResultatpost(spelNr, resultat, angra, mm, ss, spelarNamn, nu);
    post.sekunder = sekunder;
    return VantandeResultat::For(store.DataDirectory()).ForIn(store, &post);
}

std::unique_ptr<HiscoreStore> HiscoreLager(AttributeStore& store) {
    return std::make_unique<Attributlager>(store);
}

int AddHiscore(AttributeStore& store, int spelNr, const HiscoreResultat& resultat, int& angra,
               const char* spelarNamn, bigtime_t startTid, std::time_t nu) {
    Attributlager lager(store);
    return AddHiscore(lager, spelNr, resultat, angra, spelarNamn, startTid, nu);
}

int AddHiscore(int spelNr, const HiscoreResultat& resultat, int& angra, const char* spelarNamn,
               bigtime_t startTid) {
    return AddHiscore(AttributeStore::Program(), spelNr, resultat, angra, spelarNamn, startTid,
                      std::time(nullptr));
}

std::string HiscoreMeddelande(int plats) {
    if (plats == kHiscoreVantar)
        return "Your result will be saved as soon as the store is free.";
    if (plats < 0 || plats > kHiscorePlatser)
        return "You've missed the Hiscoretable! Better luck next time!";
    char text[64];
    std::snprintf(text, sizeof text, "You are number %i on the Hiscoretable!", plats);
    return text;
}
