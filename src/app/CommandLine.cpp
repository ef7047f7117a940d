#include "app/CommandLine.h"

#include <QCommandLineParser>
#include <QCoreApplication>

namespace {

// Parsed before the application object exists, the parser cannot know our name itself.
QString HelpText(const QCommandLineParser& parser) {
    return parser.helpText().replace(QStringLiteral("<executable_name>"),
                                     QStringLiteral("fjolkpatience"));
}

CommandLine Fail(const QString& why, const QCommandLineParser& parser) {
    CommandLine result;
    result.outcome = CommandLine::Outcome::Exit;
    result.exitCode = 2;
    result.message = QStringLiteral("fjolkpatience: %1\n\n%2").arg(why, HelpText(parser));
    return result;
}

} // namespace

CommandLine ParseCommandLine(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Fjolks Patience 2.0: twelve patience card games with hiscore tables."));
    QCommandLineOption helpOption({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Show this help and exit."));
    QCommandLineOption versionOption({QStringLiteral("v"), QStringLiteral("version")},
                                     QStringLiteral("Show the version and exit."));
    QCommandLineOption seedOption(
        QStringLiteral("seed"),
        QStringLiteral("Shuffle with random numbers seeded by N instead of the current time, "
                       "so that a deal can be played again exactly."),
        QStringLiteral("N"));
    QCommandLineOption dataDirOption(
        QStringLiteral("data-dir"),
        QStringLiteral("Keep window frames, player name and hiscores in DIR instead of the "
                       "user's data folder."),
        QStringLiteral("DIR"));
    QCommandLineOption gameOption(QStringLiteral("game"),
                                  QStringLiteral("Deal game N (0 to 11) at once."),
                                  QStringLiteral("N"));
    QCommandLineOption noAnimationOption(
        QStringLiteral("no-animation"),
        QStringLiteral("Start with the \"Animation\" option off: cards move at once."));
    QCommandLineOption sizeOption(QStringLiteral("size"),
                                  QStringLiteral("The table's size for --snapshot, e.g. 640x480 "
                                                 "(at most 1280x1024)."),
                                  QStringLiteral("WxH"));
    QCommandLineOption snapshotOption(
        QStringLiteral("snapshot"),
        QStringLiteral("Deal the game of --game, draw the table without a display and write "
                       "it to FILE as a PNG picture, then exit."),
        QStringLiteral("FILE"));
    parser.addOption(helpOption);
    parser.addOption(versionOption);
    parser.addOption(seedOption);
    parser.addOption(dataDirOption);
    parser.addOption(gameOption);
    parser.addOption(noAnimationOption);
    parser.addOption(sizeOption);
    parser.addOption(snapshotOption);

    if (!parser.parse(arguments))
        return Fail(parser.errorText(), parser);
    if (!parser.positionalArguments().isEmpty())
        return Fail(QStringLiteral("unexpected argument '%1'")
                        .arg(parser.positionalArguments().constFirst()),
                    parser);

    CommandLine result;
    if (parser.isSet(helpOption)) {
        result.outcome = CommandLine::Outcome::Exit;
        result.message = HelpText(parser);
        return result;
    }
    if (parser.isSet(versionOption)) {
        result.outcome = CommandLine::Outcome::Exit;
        result.message = QStringLiteral("Fjolks Patience %1\n").arg(QStringLiteral(FJOLK_VERSION));
        return result;
    }
    if (parser.isSet(seedOption)) {
        bool ok = false;
        uint seed = parser.value(seedOption).toUInt(&ok);
        if (!ok)
            return Fail(QStringLiteral("--seed wants a whole number from 0 to 4294967295, "
                                       "not '%1'")
                            .arg(parser.value(seedOption)),
                        parser);
        result.seed = seed;
    }
    if (parser.isSet(dataDirOption)) {
        QString folder = parser.value(dataDirOption);
        if (folder.isEmpty())
            return Fail(QStringLiteral("--data-dir wants a folder name"), parser);
        result.dataDirectory = folder.toStdString();
    }
    if (parser.isSet(gameOption)) {
        bool ok = false;
        int game = parser.value(gameOption).toInt(&ok);
        if (!ok || game < 0 || game > 11)
            return Fail(QStringLiteral("--game wants a game number from 0 to 11, not '%1'")
                            .arg(parser.value(gameOption)),
                        parser);
        result.game = game;
    }
    result.noAnimation = parser.isSet(noAnimationOption);
    if (parser.isSet(sizeOption)) {
        QStringList parts = parser.value(sizeOption).split(QLatin1Char('x'));
        bool okW = false;
        bool okH = false;
        int width = parts.size() == 2 ? parts[0].toInt(&okW) : 0;
        int height = parts.size() == 2 ? parts[1].toInt(&okH) : 0;
        if (!okW || !okH || width < 100 || height < 100 || width > 1280 || height > 1024)
            return Fail(QStringLiteral("--size wants WxH from 100x100 to 1280x1024, not '%1'")
                            .arg(parser.value(sizeOption)),
                        parser);
        result.width = width;
        result.height = height;
    }
    if (parser.isSet(snapshotOption)) {
        if (parser.value(snapshotOption).isEmpty())
            return Fail(QStringLiteral("--snapshot wants a file name"), parser);
        if (result.game < 0)
            return Fail(QStringLiteral("--snapshot needs --game N"), parser);
        result.snapshot = parser.value(snapshotOption).toStdString();
    }
    return result;
}
