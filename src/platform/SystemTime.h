#pragma once

#include <cstdint>
#include <functional>

using bigtime_t = int64_t;

// Microseconds on a monotonic clock: the games' playing time and the card animations are
// measured with it, so a change of the wall clock never shows in either. It counts from
// the machine's start, so a value may be small, and a moment before it negative: nothing
// may take a time of zero or below to mean "not given".
bigtime_t system_time();

// Microseconds of processor time the calling thread has used: a measure of work that other
// programs on a busy machine do not lengthen.
bigtime_t thread_time();

// Sleeps for the given number of microseconds (nothing for zero or less).
void snooze(bigtime_t microseconds);

// Puts another clock behind system_time(), for tests that must know what it reads; an
// empty function gives the real clock back.
void SattKlocka(std::function<bigtime_t()> klocka);
