#include "app/Hjalpfil.h"

#include <QDir>
#include <QFileInfo>

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
