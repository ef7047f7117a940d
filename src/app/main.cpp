#include "app/CommandLine.h"
#include "app/FjolkApp.h"
#include "app/FjolkWin.h"
#include "app/LosKommando.h"
#include "app/Snapshot.h"
#include "app/Spelhjalp.h"
#include "app/StartMatning.h"
#include "welcome/WelcomeView.h"

#include "platform/AttributeStore.h"
#include <QCheckBox>

#include <QApplication>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <optional>

namespace {

QStringList Arguments(int argc, char* argv[]) {
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    return arguments;
}

} // namespace

int main(int argc, char* argv[]) {
    // Read before the application object exists, so that --help and --version work
    // without a display; Qt's own options are left in argv for QApplication to take.
    CommandLine commandLine = ParseCommandLine(UtanQtsVal(Arguments(argc, argv)));
    if (commandLine.outcome == CommandLine::Outcome::Exit) {
        std::fputs(commandLine.message.toLocal8Bit().constData(),
                   commandLine.exitCode == 0 ? stdout : stderr);
        return commandLine.exitCode;
    }

    // A search needs no display, nor any Qt at all.
    if (commandLine.solve) {
        SokGranser granser;
        granser.lagen = commandLine.limit;
        if (commandLine.seeds)
            return LosGivar(commandLine.game, commandLine.seeds->first, commandLine.seeds->second,
                            granser, stdout);
        unsigned fro = *commandLine.seed;
        if (commandLine.winnableOnly) {
            std::srand(fro);
            VinnbarGiv giv = HittaVinnbarGiv(commandLine.game, static_cast<unsigned>(std::rand()));
            std::printf("%s (seed %u)\n", VinnbarText(commandLine.game, giv).c_str(), giv.fro);
            fro = giv.fro;
        }
        return LosEnGiv(commandLine.game, fro, granser, stdout);
    }

    // A snapshot is drawn without a display.
    if (!commandLine.snapshot.empty() && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    // Also the class of our windows under X11 (WM_CLASS), which the desktop entry's
    // StartupWMClass names.
    QApplication::setApplicationName(QStringLiteral("Fjolks Patience"));
    QApplication::setApplicationVersion(QStringLiteral(FJOLK_VERSION));
    // Lets the desktop tie our windows to the menu entry and its icon.
    QApplication::setDesktopFileName(QStringLiteral(FJOLK_APP_ID));

    std::srand(commandLine.seed ? *commandLine.seed : static_cast<unsigned>(std::time(nullptr)));
    if (!commandLine.dataDirectory.empty())
        AttributeStore::SetDataDirectory(commandLine.dataDirectory);
    std::optional<unsigned> vinnbar;
    if (commandLine.winnableOnly && commandLine.game >= 0 && !commandLine.snapshot.empty()) {
        vinnbar = HittaVinnbarGiv(commandLine.game, static_cast<unsigned>(std::rand())).fro;
        std::srand(*vinnbar);
    }
    if (!commandLine.snapshot.empty())
        return SparaBild(commandLine.game, commandLine.width, commandLine.height,
                         commandLine.snapshot, commandLine.ratio, vinnbar);
    MatForstaBilden(commandLine.game >= 0);
    FjolkApp fjolk(AttributeStore::Program());
    if (commandLine.noAnimation)
        fjolk.Fonster()->ValkomstVy()->animeringsRuta->setChecked(false);
    if (commandLine.winnableOnly)
        fjolk.Fonster()->Hjalp()->BaraVinnbaraForKorningen();
    // As if chosen twice in the list; dealt once the window is on the screen.
    if (commandLine.game >= 0)
        fjolk.Fonster()->StartaSpel(commandLine.game);
    return QApplication::exec();
}
