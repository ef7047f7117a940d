#pragma once

#include <string>
#include <vector>

// What the player should know of and would otherwise never see: a store moved aside, results
// that cannot be saved, a picture refused. Noted where it happens (and on stderr at once),
// shown by the window when it next looks. Each text is noted once a run, unless `once` is
// false: news of something that can happen again (results saved late).
void Notify(const std::string& text, bool once = true);
// The texts noted since the last call, oldest first.
std::vector<std::string> TakeNotices();
