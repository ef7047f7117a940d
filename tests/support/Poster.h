#pragma once

#include "cards/Hiscore.h"

#include <cstdio>
#include <cstring>

// A stored hiscore entry for a test's table.
inline HighScoreTable Post(const char* namn, int kort, int giv, int angra,
                           const char* tid = "05:07", const char* datum = "3/2 2001") {
    HighScoreTable post;
    std::snprintf(post.namn, sizeof post.namn, "%s", namn);
    post.kort = static_cast<int8_t>(kort);
    post.giv = static_cast<int8_t>(giv);
    post.angra = angra;
    std::snprintf(post.tid, sizeof post.tid, "%s", tid);
    std::snprintf(post.datum, sizeof post.datum, "%s", datum);
    return post;
}
