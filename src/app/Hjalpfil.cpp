#include "app/Hjalpfil.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

// FJOLK_DATA_FROM_BIN, the data folder seen from the program's folder, comes from the
// install rules (CMakeLists.txt).
QString HittaHjalpFil(const QString& programFolder) {
    const QDir program(programFolder);
    const QString bredvid = program.filePath(QStringLiteral("Help/Help.html"));
    if (QFileInfo::exists(bredvid))
        return bredvid;
    const QString installerad =
        QDir::cleanPath(program.filePath(QStringLiteral(FJOLK_DATA_FROM_BIN "/Help/Help.html")));
    if (QFileInfo::exists(installerad))
        return installerad;
    return bredvid;
}

HjalpOppnare DesktopensOppnare() {
    return {[] { return QStandardPaths::findExecutable(QStringLiteral("xdg-open")); },
            [](const QUrl& url) { return QDesktopServices::openUrl(url); }};
}

QString OppnaMedDesktopen(const QString& fil, const HjalpOppnare& oppnare) {
    // Without xdg-open Qt finds no program for a local page at all.
    if (oppnare.xdgOpen().isEmpty())
        return QStringLiteral("there is no xdg-open to open %1 with").arg(fil);
    if (!oppnare.oppna(QUrl::fromLocalFile(fil)))
        return QStringLiteral("the desktop could not open %1").arg(fil);
    return QString();
}
