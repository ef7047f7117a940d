#include "app/CommandLine.h"

#include "app/Options.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <algorithm>

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
        QStringLiteral("Fjolks Patience %1: %2")
            .arg(QStringLiteral(FJOLK_VERSION), QString::fromUtf8(kProgramDescription)));
    for (const Option& option : kOptions) {
        QStringList names;
        if (option.shortName != nullptr)
            names << QString::fromUtf8(option.shortName);
        names << QString::fromUtf8(option.name);
        parser.addOption(QCommandLineOption(
            names, QString::fromUtf8(option.description),
            option.valueName != nullptr ? QString::fromUtf8(option.valueName) : QString()));
    }
    const QString helpOption = QStringLiteral("help");
    const QString versionOption = QStringLiteral("version");
    const QString seedOption = QStringLiteral("seed");
    const QString dataDirOption = QStringLiteral("data-dir");
    const QString gameOption = QStringLiteral("game");
    const QString noAnimationOption = QStringLiteral("no-animation");
    const QString sizeOption = QStringLiteral("size");
    const QString ratioOption = QStringLiteral("ratio");
    const QString snapshotOption = QStringLiteral("snapshot");
    const QString solveOption = QStringLiteral("solve");
    const QString seedsOption = QStringLiteral("seeds");
    const QString limitOption = QStringLiteral("limit");

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
    if (parser.isSet(ratioOption)) {
        bool ok = false;
        double ratio = parser.value(ratioOption).toDouble(&ok);
        if (!ok || !(ratio >= 1.0 && ratio <= 4.0))
            return Fail(QStringLiteral("--ratio wants a number from 1 to 4, such as 2 or 1.5, "
                                       "not '%1'")
                            .arg(parser.value(ratioOption)),
                        parser);
        if (!parser.isSet(snapshotOption))
            return Fail(QStringLiteral("--ratio is for --snapshot FILE"), parser);
        result.ratio = ratio;
    }
    if (parser.isSet(snapshotOption)) {
        if (parser.value(snapshotOption).isEmpty())
            return Fail(QStringLiteral("--snapshot wants a file name"), parser);
        if (result.game < 0)
            return Fail(QStringLiteral("--snapshot needs --game N"), parser);
        result.snapshot = parser.value(snapshotOption).toStdString();
    }
    result.solve = parser.isSet(solveOption);
    result.winnableOnly = parser.isSet(QStringLiteral("winnable-only"));
    if (parser.isSet(seedsOption)) {
        QStringList parts = parser.value(seedsOption).split(QLatin1Char('-'));
        bool okA = false;
        bool okB = false;
        uint a = parts.size() == 2 ? parts[0].toUInt(&okA) : 0;
        uint b = parts.size() == 2 ? parts[1].toUInt(&okB) : 0;
        if (!okA || !okB || a > b)
            return Fail(QStringLiteral("--seeds wants A-B with whole numbers A <= B, not '%1'")
                            .arg(parser.value(seedsOption)),
                        parser);
        if (!result.solve)
            return Fail(QStringLiteral("--seeds is for --solve"), parser);
        result.seeds = std::make_pair(a, b);
    }
    if (parser.isSet(limitOption)) {
        bool ok = false;
        qulonglong limit = parser.value(limitOption).toULongLong(&ok);
        if (!ok || limit == 0)
            return Fail(QStringLiteral("--limit wants a number of positions above 0, not '%1'")
                            .arg(parser.value(limitOption)),
                        parser);
        if (!result.solve)
            return Fail(QStringLiteral("--limit is for --solve"), parser);
        result.limit = limit;
    }
    if (result.solve && result.game < 0)
        return Fail(QStringLiteral("--solve needs --game N"), parser);
    if (result.solve && !result.seed && !result.seeds)
        return Fail(QStringLiteral("--solve needs --seed S or --seeds A-B"), parser);
    return result;
}

QStringList UtanQtsVal(const QStringList& arguments) {
    // Qt takes these with one dash or two; the first group is followed by a value.
    static const QStringList medVarde = {
        QStringLiteral("platform"),        QStringLiteral("platformpluginpath"),
        QStringLiteral("platformtheme"),   QStringLiteral("plugin"),
        QStringLiteral("qwindowgeometry"), QStringLiteral("geometry"),
        QStringLiteral("qwindowtitle"),    QStringLiteral("title"),
        QStringLiteral("qwindowicon"),     QStringLiteral("icon"),
        QStringLiteral("display"),         QStringLiteral("name"),
        QStringLiteral("visual"),          QStringLiteral("session"),
        QStringLiteral("style"),           QStringLiteral("stylesheet")};
    static const QStringList utanVarde = {
        QStringLiteral("reverse"), QStringLiteral("widgetcount"), QStringLiteral("testability"),
        QStringLiteral("nograb"),  QStringLiteral("dograb"),      QStringLiteral("sync")};
    static const QStringList medLikhet = {QStringLiteral("style="), QStringLiteral("stylesheet="),
                                          QStringLiteral("qmljsdebugger=")};
    QStringList kvar;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& argument = arguments[i];
        if (i == 0 || !argument.startsWith(QLatin1Char('-')) || argument == QStringLiteral("--")) {
            kvar << argument;
            continue;
        }
        QString namn = argument.mid(argument.startsWith(QStringLiteral("--")) ? 2 : 1);
        if (medVarde.contains(namn))
            ++i;
        else if (!utanVarde.contains(namn) &&
                 std::none_of(medLikhet.begin(), medLikhet.end(),
                              [&](const QString& forled) { return namn.startsWith(forled); }))
            kvar << argument;
    }
    return kvar;
}
