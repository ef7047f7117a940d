#pragma once

#include "cards/Hiscore.h"

#include <string>
#include <vector>

// A hiscore entry as its row in the list, built at the columns of its game's layout: at
// most 60 characters, whatever the stored bytes hold; an empty entry is 60 blanks. Columns
// count characters (an å is one), and what is no character to show (a control character, a
// byte that is not UTF-8) shows as U+FFFD.
std::string HiscoreRad(int index, const HighScoreTable& post, int spelNr);
// `langd` stored bytes as the characters they show: UTF-8 decoded, every control character
// and every byte that is not UTF-8 made U+FFFD.
inline constexpr char32_t kErsattning = 0xfffd;
std::u32string Tecken(const char* bytes, size_t langd);
// Stored bytes up to a NUL (at most `max`) as they show.
std::string VisbarText(const char* bytes, size_t max);
// A stored name as the name field takes it: without what cannot be shown and without its
// trailing blanks.
std::string RentNamn(const char* bytes, size_t max);
// The column headings of a game's table.
const char* HiscoreRubrik(int spelNr);
// The columns at which a game's rows write their fields, left to right: position, name,
// the game's numbers, time and date; one for each word of its heading.
std::vector<int> HiscoreKolumner(int spelNr);
// The headings the list shows before a game is chosen, and when there is no table.
extern const char* const kRubrikStart;
extern const char* const kIngenTabell;
