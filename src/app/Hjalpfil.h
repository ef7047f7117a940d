#pragma once

#include <QString>

// The help page of a program in programFolder: beside it, as in the build folder, or in
// the shared data folder of an installed tree (bin/../share/fjolkpatience). The first
// that exists; when neither does, the one beside the program.
QString HittaHjalpFil(const QString& programFolder);
