#include "app/CommandLine.h"

#include <QTest>

namespace {

CommandLine Parse(QStringList arguments) {
    arguments.prepend(QStringLiteral("fjolkpatience"));
    return ParseCommandLine(arguments);
}

} // namespace

class CommandLineTest : public QObject {
    Q_OBJECT

private slots:
    void utanArgumentKorProgrammet() {
        CommandLine c = Parse({});
        QVERIFY(c.outcome == CommandLine::Outcome::Run);
        QVERIFY(!c.seed.has_value());
        QVERIFY(c.dataDirectory.empty());
    }

    void seedOchDataDirLases() {
        CommandLine c = Parse({"--seed", "4711", "--data-dir", "/tmp/fjolk data"});
        QVERIFY(c.outcome == CommandLine::Outcome::Run);
        QCOMPARE(c.seed.value(), 4711u);
        QCOMPARE(c.dataDirectory, std::string("/tmp/fjolk data"));
        QCOMPARE(Parse({"--seed=0"}).seed.value(), 0u);
        QCOMPARE(Parse({"--seed", "4294967295"}).seed.value(), 4294967295u);
    }

    void hjalpOchVersionAvslutarMedNoll() {
        CommandLine help = Parse({"--help"});
        QVERIFY(help.outcome == CommandLine::Outcome::Exit);
        QCOMPARE(help.exitCode, 0);
        QVERIFY(help.message.contains("--seed <N>"));
        QVERIFY(help.message.contains("--data-dir <DIR>"));
        CommandLine version = Parse({"--version"});
        QCOMPARE(version.exitCode, 0);
        QCOMPARE(version.message, QStringLiteral("Fjolks Patience 2.0.0\n"));
    }

    void felaktigaVardenGerKod2() {
        for (const QStringList& bad : {QStringList{"--seed", "sju"}, QStringList{"--seed", "-1"},
                                       QStringList{"--seed", "4294967296"}, QStringList{"--seed"},
                                       QStringList{"--data-dir", ""},
                                       QStringList{"--colour", "red"}, QStringList{"extra"}}) {
            CommandLine c = Parse(bad);
            QVERIFY2(c.outcome == CommandLine::Outcome::Exit, qPrintable(bad.join(' ')));
            QCOMPARE(c.exitCode, 2);
            QVERIFY(c.message.startsWith("fjolkpatience: "));
        }
        QVERIFY(Parse({"--seed", "sju"}).message.contains("'sju'"));
    }
};

QTEST_GUILESS_MAIN(CommandLineTest)
#include "test_commandline.moc"
