#pragma once

#include "cards/Hiscore.h"

#include <string>
#include <vector>

// A hiscore entry as its row in the list, built byte by byte at the columns of its game's
// layout: at most 60 characters, whatever the stored bytes hold; an empty entry is 60
// blanks.
std::string HiscoreRad(int index, const HighScoreTable& post, int spelNr);
// The column headings of a game's table.
const char* HiscoreRubrik(int spelNr);
// The columns at which a game's rows write their fields, left to right: position, name,
// the game's numbers, time and date; one for each word of its heading.
std::vector<int> HiscoreKolumner(int spelNr);
// The headings the list shows before a game is chosen, and when there is no table.
extern const char* const kRubrikStart;
extern const char* const kIngenTabell;
