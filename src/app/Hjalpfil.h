#pragma once

#include <QString>
#include <QUrl>

#include <functional>

// The help page of a program in programFolder: beside it, as in the build folder, or in
// the shared data folder of an installed tree (bin/../share/fjolkpatience). The first
// that exists; when neither does, the one beside the program.
QString HittaHjalpFil(const QString& programFolder);

// How the desktop opens a page: the program it opens documents with, and the call that
// asks it to. Tests put their own in place of the desktop's.
struct HjalpOppnare {
    // The path of xdg-open, or an empty text when there is none.
    std::function<QString()> xdgOpen;
    std::function<bool(const QUrl&)> oppna;
};
HjalpOppnare DesktopensOppnare();

// Asks the desktop to open the page `fil`. An empty text when it did; else why not.
QString OppnaMedDesktopen(const QString& fil, const HjalpOppnare& oppnare);
