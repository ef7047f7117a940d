#include "platform/SystemTime.h"

#include <chrono>
#include <thread>

bigtime_t system_time() {
    using namespace std::chrono;
    return duration_cast<microseconds>(steady_clock::now().time_since_epoch()).count();
}

void snooze(bigtime_t microseconds) {
    if (microseconds > 0)
        std::this_thread::sleep_for(std::chrono::microseconds(microseconds));
}
