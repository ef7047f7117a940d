#pragma once

#include <optional>
#include <string>

// Deals game `spelNr` (with the random numbers as seeded), draws its table at
// `bredd` × `hojd` view units without showing a window and writes it as a PNG picture, with
// `kvot` pixels to a unit each way (the screen's when none is given). Returns the program's
// exit code, and says on stderr what went wrong. With `fro`, the random numbers were seeded
// by it, and the picture shows its deal.
int SparaBild(int spelNr, int bredd, int hojd, const std::string& fil,
              std::optional<double> kvot = std::nullopt,
              std::optional<unsigned> fro = std::nullopt);
