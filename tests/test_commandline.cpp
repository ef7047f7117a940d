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

    void spelStorlekOchBildLases() {
        CommandLine c = Parse(
            {"--game", "0", "--seed", "7", "--size", "1280x1024", "--snapshot", "/tmp/a.png"});
        QVERIFY(c.outcome == CommandLine::Outcome::Run);
        QCOMPARE(c.game, 0);
        QCOMPARE(c.width, 1280);
        QCOMPARE(c.height, 1024);
        QCOMPARE(c.snapshot, std::string("/tmp/a.png"));
        QVERIFY(!c.noAnimation);
        QVERIFY(Parse({"--no-animation"}).noAnimation);
        QVERIFY(!c.winnableOnly);
        QVERIFY(Parse({"--winnable-only"}).winnableOnly);
        CommandLine los = Parse({"--solve", "--game", "8", "--seed", "5", "--winnable-only"});
        QVERIFY(los.outcome == CommandLine::Outcome::Run);
        QVERIFY(los.solve && los.winnableOnly);
        CommandLine standard = Parse({"--game", "11"});
        QCOMPARE(standard.game, 11);
        QCOMPARE(standard.width, 640);
        QCOMPARE(standard.height, 480);
        QVERIFY(standard.snapshot.empty());
    }

    void bildensKvotLases() {
        CommandLine c = Parse({"--game", "8", "--ratio", "2", "--snapshot", "/tmp/a.png"});
        QVERIFY(c.outcome == CommandLine::Outcome::Run);
        QCOMPARE(c.ratio.value(), 2.0);
        QCOMPARE(Parse({"--game", "8", "--ratio=1.5", "--snapshot", "a.png"}).ratio.value(), 1.5);
        QVERIFY(!Parse({"--game", "8", "--snapshot", "a.png"}).ratio.has_value());
        QVERIFY(Parse({"--help"}).message.contains("--ratio <R>"));
        for (const QStringList& bad :
             {QStringList{"--game", "8", "--ratio", "0.5", "--snapshot", "a.png"},
              QStringList{"--game", "8", "--ratio", "5", "--snapshot", "a.png"},
              QStringList{"--game", "8", "--ratio", "two", "--snapshot", "a.png"},
              QStringList{"--game", "8", "--ratio", "nan", "--snapshot", "a.png"},
              QStringList{"--game", "8", "--ratio", "2"}}) {
            CommandLine f = Parse(bad);
            QVERIFY2(f.outcome == CommandLine::Outcome::Exit, qPrintable(bad.join(' ')));
            QCOMPARE(f.exitCode, 2);
            QVERIFY(f.message.contains("--ratio"));
        }
    }

    void hjalpenOchVersionenNamnerSammaVersion() {
        const QStringList hjalp = Parse({"--help"}).message.split(QLatin1Char('\n'));
        QVERIFY(hjalp.size() > 2);
        QCOMPARE(hjalp[1], QStringLiteral("Fjolks Patience 2.0.0: twelve patience card games "
                                          "with hiscore tables."));
        QCOMPARE(Parse({"--version"}).message, QStringLiteral("Fjolks Patience 2.0.0\n"));
        QCOMPARE(QStringLiteral(FJOLK_VERSION), QStringLiteral("2.0.0"));
    }

    void qtsEgnaValLamnasAtQt() {
        const QStringList alla = {"fjolkpatience",
                                  "-platform",
                                  "offscreen",
                                  "--seed",
                                  "3",
                                  "-style",
                                  "fusion",
                                  "--style=windows",
                                  "-reverse",
                                  "--platformtheme",
                                  "gtk3",
                                  "-stylesheet=a.qss",
                                  "-qwindowgeometry",
                                  "640x480+0+0",
                                  "--game",
                                  "4",
                                  "-display",
                                  ":52",
                                  "-name",
                                  "patiens",
                                  "-sync"};
        QCOMPARE(UtanQtsVal(alla), (QStringList{"fjolkpatience", "--seed", "3", "--game", "4"}));
        CommandLine c = ParseCommandLine(UtanQtsVal(alla));
        QVERIFY(c.outcome == CommandLine::Outcome::Run);
        QCOMPARE(c.seed.value(), 3u);
        QCOMPARE(c.game, 4);
        // Ours, and what no one knows, stay to be parsed.
        QCOMPARE(UtanQtsVal({"fjolkpatience", "-h", "--no-animation", "--colour", "red", "x"}),
                 (QStringList{"fjolkpatience", "-h", "--no-animation", "--colour", "red", "x"}));
        QCOMPARE(
            ParseCommandLine(UtanQtsVal({"fjolkpatience", "-platform", "offscreen", "--version"}))
                .message,
            QStringLiteral("Fjolks Patience 2.0.0\n"));
        QCOMPARE(
            ParseCommandLine(UtanQtsVal({"fjolkpatience", "-style", "fusion", "--bad"})).exitCode,
            2);
    }

    void felaktigaVardenGerKod2() {
        for (const QStringList& bad :
             {QStringList{"--seed", "sju"}, QStringList{"--seed", "-1"},
              QStringList{"--seed", "4294967296"}, QStringList{"--seed"},
              QStringList{"--data-dir", ""}, QStringList{"--colour", "red"}, QStringList{"extra"},
              QStringList{"--game", "12"}, QStringList{"--game", "-1"}, QStringList{"--game", "x"},
              QStringList{"--game", "0", "--size", "99x480"},
              QStringList{"--game", "0", "--size", "1281x480"},
              QStringList{"--game", "0", "--size", "640"}, QStringList{"--snapshot", "a.png"}}) {
            CommandLine c = Parse(bad);
            QVERIFY2(c.outcome == CommandLine::Outcome::Exit, qPrintable(bad.join(' ')));
            QCOMPARE(c.exitCode, 2);
            QVERIFY(c.message.startsWith("fjolkpatience: "));
        }
        QVERIFY(Parse({"--seed", "sju"}).message.contains("'sju'"));
    }

    void losningLases() {
        CommandLine c = Parse({"--solve", "--game", "8", "--seed", "3", "--limit", "5000"});
        QVERIFY(c.outcome == CommandLine::Outcome::Run);
        QVERIFY(c.solve);
        QCOMPARE(c.game, 8);
        QCOMPARE(c.seed.value(), 3u);
        QCOMPARE(c.limit, 5000ull);
        QVERIFY(!c.seeds.has_value());
        CommandLine manga = Parse({"--solve", "--game", "10", "--seeds", "1-1000"});
        QVERIFY(manga.seeds.has_value());
        QCOMPARE(manga.seeds->first, 1u);
        QCOMPARE(manga.seeds->second, 1000u);
        QCOMPARE(manga.limit, 0ull);
        QVERIFY(!Parse({"--game", "3"}).solve);
        QVERIFY(Parse({"--help"}).message.contains("--solve"));
        QVERIFY(Parse({"--help"}).message.contains("--seeds <A-B>"));
        QVERIFY(Parse({"--help"}).message.contains("--limit <POSITIONS>"));
    }

    void felaktigLosningGerKod2() {
        for (const QStringList& bad :
             {QStringList{"--solve", "--seed", "3"}, QStringList{"--solve", "--game", "3"},
              QStringList{"--game", "3", "--seeds", "1-5"},
              QStringList{"--game", "3", "--seed", "1", "--limit", "9"},
              QStringList{"--solve", "--game", "3", "--seeds", "5-1"},
              QStringList{"--solve", "--game", "3", "--seeds", "1"},
              QStringList{"--solve", "--game", "3", "--seeds", "a-b"},
              QStringList{"--solve", "--game", "3", "--seed", "1", "--limit", "0"},
              QStringList{"--solve", "--game", "3", "--seed", "1", "--limit", "many"}}) {
            CommandLine c = Parse(bad);
            QVERIFY2(c.outcome == CommandLine::Outcome::Exit, qPrintable(bad.join(' ')));
            QCOMPARE(c.exitCode, 2);
            QVERIFY(c.message.startsWith("fjolkpatience: "));
        }
    }
};

QTEST_GUILESS_MAIN(CommandLineTest)
#include "test_commandline.moc"
