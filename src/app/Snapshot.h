#pragma once

#include <string>

// Deals game `spelNr` (with the random numbers as seeded), draws its table at
// `bredd` × `hojd` without showing a window and writes it as a PNG picture. Returns the
// program's exit code, and says on stderr what went wrong.
int SparaBild(int spelNr, int bredd, int hojd, const std::string& fil);
