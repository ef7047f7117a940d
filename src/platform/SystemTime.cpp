#include "platform/SystemTime.h"

#include <chrono>
#include <ctime>
#include <thread>
#include <utility>

namespace {

std::function<bigtime_t()>& Ersattning() {
    static std::function<bigtime_t()> klocka;
    return klocka;
}

} // namespace

bigtime_t system_time() {
    if (Ersattning())
        return Ersattning()();
    using namespace std::chrono;
    return duration_cast<microseconds>(steady_clock::now().time_since_epoch()).count();
}

bigtime_t thread_time() {
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return static_cast<bigtime_t>(t.tv_sec) * 1000000 + t.tv_nsec / 1000;
}

void snooze(bigtime_t microseconds) {
    if (microseconds > 0)
        std::this_thread::sleep_for(std::chrono::microseconds(microseconds));
}

void SattKlocka(std::function<bigtime_t()> klocka) {
    Ersattning() = std::move(klocka);
}
