#pragma once

#include "platform/AttributeStore.h"

#include <cstdint>
#include <string>
#include <vector>

struct Resultatpost;
class HiscoreStore;

// Counts one recorded game into its player's record: played, and when won the streak, the
// fastest time and the fewest undos; a lost game ends the streak.
void RaknaIn(StatisticsRow& rad, bool vunnen, int64_t sekunder, int angra, int64_t nar);

// Counts `post` into its player's record inside the transaction the caller holds (unless it
// is not the deal's first result); false when the store failed. A statistics table that
// cannot be read as ours is kept aside and started afresh, the hiscores untouched; what was
// kept aside is told in `notiser`.
bool ForInStatistik(HiscoreStore& store, const Resultatpost& post,
                    std::vector<std::string>* notiser);

// The share of games won, in whole percent, rounded down.
int AndelVunna(const StatisticsRow& rad);
// "2:05", "1:02:03": a playing time in seconds.
std::string StatistikTid(int64_t sekunder);
// "5/12 2026": the day of a last game.
std::string StatistikDatum(int64_t nar);
// One line for the welcome screen: "Eva: 12 played, 5 won (41%), streak 2 (best 3),
// fastest 2:05, fewest undos 0, last 5/12 2026"; "Eva: no games played yet".
std::string StatistikText(const StatisticsRow& rad);
