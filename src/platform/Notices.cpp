#include "platform/Notices.h"

#include <cstdio>
#include <mutex>
#include <set>

namespace {

struct Noted {
    std::mutex lock;
    std::set<std::string> seen;
    std::vector<std::string> waiting;
};

Noted& State() {
    static Noted noted;
    return noted;
}

} // namespace

void Notify(const std::string& text, bool once) {
    Noted& noted = State();
    std::lock_guard<std::mutex> guard(noted.lock);
    if (!noted.seen.insert(text).second && once)
        return;
    std::fprintf(stderr, "Fjolks Patience: %s\n", text.c_str());
    noted.waiting.push_back(text);
}

std::vector<std::string> TakeNotices() {
    Noted& noted = State();
    std::lock_guard<std::mutex> guard(noted.lock);
    std::vector<std::string> taken;
    taken.swap(noted.waiting);
    return taken;
}
