#include "app/CommandLine.h"
#include "platform/AttributeStore.h"

#include <QApplication>

#include <cstdio>
#include <cstdlib>
#include <ctime>

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
    // without a display.
    CommandLine commandLine = ParseCommandLine(Arguments(argc, argv));
    if (commandLine.outcome == CommandLine::Outcome::Exit) {
        std::fputs(commandLine.message.toLocal8Bit().constData(),
                   commandLine.exitCode == 0 ? stdout : stderr);
        return commandLine.exitCode;
    }

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Fjolks Patience"));
    QApplication::setApplicationVersion(QStringLiteral(FJOLK_VERSION));

    std::srand(commandLine.seed ? *commandLine.seed : static_cast<unsigned>(std::time(nullptr)));
    if (!commandLine.dataDirectory.empty())
        AttributeStore::SetDataDirectory(commandLine.dataDirectory);
    AttributeStore::Program();

    // The game window is not built yet: until it is, the program explains itself.
    std::fputs(ParseCommandLine({QStringLiteral("fjolkpatience"), QStringLiteral("--help")})
                   .message.toLocal8Bit()
                   .constData(),
               stdout);
    return 0;
}
