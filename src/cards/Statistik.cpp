#include "cards/Statistik.h"

#include "cards/Hiscore.h"

#include <algorithm>
#include <cstdio>
#include <ctime>

void RaknaIn(StatisticsRow& rad, bool vunnen, int64_t sekunder, int angra, int64_t nar) {
    ++rad.played;
    rad.lastGame = nar;
    if (!vunnen) {
        rad.currentStreak = 0;
        return;
    }
    ++rad.won;
    ++rad.currentStreak;
    rad.longestStreak = std::max(rad.longestStreak, rad.currentStreak);
    sekunder = std::max<int64_t>(sekunder, 0);
    rad.fastestSeconds = rad.fastestSeconds < 0 ? sekunder : std::min(rad.fastestSeconds, sekunder);
    rad.fewestUndos = rad.fewestUndos < 0 ? angra : std::min<int64_t>(rad.fewestUndos, angra);
}

bool ForInStatistik(HiscoreStore& store, const Resultatpost& post,
                    std::vector<std::string>* notiser) {
    if (!post.resultat.iStatistiken)
        return true;
    if (store.StatisticsDamaged()) {
        std::string undan;
        if (store.RebuildStatistics(&undan) != B_OK)
            return false;
        if (notiser != nullptr)
            notiser->push_back(
                "The statistics stored in " + store.DataDirectory() + " could not be read" +
                (undan.empty() ? std::string() : "; they were kept as the table " + undan) +
                " and fresh statistics were started. The hiscores are untouched.");
    }
    StatisticsRow rad;
    status_t status = store.ReadStatistics(post.spelNr, post.post.namn, &rad);
    if (status == B_ENTRY_NOT_FOUND) {
        rad = StatisticsRow{};
        rad.game = post.spelNr;
        rad.player = post.post.namn;
    } else if (status != B_OK) {
        return false;
    }
    RaknaIn(rad, post.resultat.vunnen, post.sekunder, post.angra, post.nar);
    return store.WriteStatistics(rad) == B_OK;
}

int AndelVunna(const StatisticsRow& rad) {
    return rad.played > 0 ? static_cast<int>(rad.won * 100 / rad.played) : 0;
}

std::string StatistikTid(int64_t sekunder) {
    char text[48];
    if (sekunder >= 3600)
        std::snprintf(
            text, sizeof text, "%lld:%02lld:%02lld", static_cast<long long>(sekunder / 3600),
            static_cast<long long>(sekunder / 60 % 60), static_cast<long long>(sekunder % 60));
    else
        std::snprintf(text, sizeof text, "%lld:%02lld", static_cast<long long>(sekunder / 60),
                      static_cast<long long>(sekunder % 60));
    return text;
}

std::string StatistikDatum(int64_t nar) {
    if (nar <= 0)
        return "-";
    std::time_t t = static_cast<std::time_t>(nar);
    std::tm lokal{};
    localtime_r(&t, &lokal);
    return HiscoreDatum(lokal);
}

std::string StatistikText(const StatisticsRow& rad) {
    if (rad.played == 0)
        return rad.player + ": no games played yet";
    char text[256];
    std::snprintf(text, sizeof text, "%s: %lld played, %lld won (%d%%), streak %lld (best %lld)",
                  rad.player.c_str(), static_cast<long long>(rad.played),
                  static_cast<long long>(rad.won), AndelVunna(rad),
                  static_cast<long long>(rad.currentStreak),
                  static_cast<long long>(rad.longestStreak));
    std::string rad1 = text;
    if (rad.won > 0)
        rad1 += ", fastest " + StatistikTid(rad.fastestSeconds) + ", fewest undos " +
                std::to_string(rad.fewestUndos);
    return rad1 + ", last " + StatistikDatum(rad.lastGame);
}
