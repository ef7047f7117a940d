#pragma once

#include <cstdint>

using bigtime_t = int64_t;

// Microseconds on a monotonic clock: the games' playing time and the card animations are
// measured with it, so a change of the wall clock never shows in either.
bigtime_t system_time();

// Sleeps for the given number of microseconds (nothing for zero or less).
void snooze(bigtime_t microseconds);
