#include "app/CommandLine.h"
#include "app/Hjalpfil.h"
#include "app/Options.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <iterator>

namespace {

const QString kAppId = QStringLiteral("io.github.fjolkspatience.FjolksPatience");

void Skriv(const QString& fil) {
    QVERIFY(QDir().mkpath(QFileInfo(fil).path()));
    QFile f(fil);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write("<html></html>");
}

// Installs this build under prefix as "cmake --install" does. Gives cmake's output when it
// fails.
QString Installera(const QTemporaryDir& prefix) {
    QProcess cmake;
    QProcessEnvironment miljo = QProcessEnvironment::systemEnvironment();
    miljo.remove(QStringLiteral("DESTDIR"));
    cmake.setProcessEnvironment(miljo);
    cmake.setProcessChannelMode(QProcess::MergedChannels);
    cmake.start(QStringLiteral(FJOLK_CMAKE),
                {QStringLiteral("--install"), QStringLiteral(FJOLK_BUILD_DIR),
                 QStringLiteral("--prefix"), prefix.path()});
    if (!cmake.waitForFinished(60000) || cmake.exitStatus() != QProcess::NormalExit ||
        cmake.exitCode() != 0)
        return QString::fromLocal8Bit(cmake.readAll()) + cmake.errorString();
    return QString();
}

QByteArray Las(const QString& fil) {
    QFile f(fil);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

} // namespace

class InstallationTest : public QObject {
    Q_OBJECT

private slots:
    void hjalpsidanBredvidProgrammetGarForst() {
        QTemporaryDir trad;
        Skriv(trad.filePath(QStringLiteral("bin/Help/Help.html")));
        Skriv(trad.filePath(QStringLiteral("share/fjolkpatience/Help/Help.html")));
        QCOMPARE(HittaHjalpFil(trad.filePath(QStringLiteral("bin"))),
                 trad.filePath(QStringLiteral("bin/Help/Help.html")));
    }

    void hjalpsidanUnderShareHittasNarDenSaknasBredvid() {
        QTemporaryDir trad;
        Skriv(trad.filePath(QStringLiteral("share/fjolkpatience/Help/Help.html")));
        QCOMPARE(HittaHjalpFil(trad.filePath(QStringLiteral("bin"))),
                 trad.filePath(QStringLiteral("share/fjolkpatience/Help/Help.html")));
    }

    void utanHjalpsidaGesPlatsenBredvid() {
        QTemporaryDir trad;
        QString fil = HittaHjalpFil(trad.filePath(QStringLiteral("bin")));
        QCOMPARE(fil, trad.filePath(QStringLiteral("bin/Help/Help.html")));
        QVERIFY(!QFileInfo::exists(fil));
    }

    void byggmappensHjalpsidaLiggerBredvidProgrammet() {
        const QString bygge = QStringLiteral(FJOLK_BUILD_DIR);
        QString fil = HittaHjalpFil(bygge);
        QCOMPARE(fil, QDir(bygge).filePath(QStringLiteral("Help/Help.html")));
        QVERIFY(QFileInfo::exists(fil));
    }

    void installeratProgramHittarSinHjalpsida() {
        QTemporaryDir prefix;
        QString fel = Installera(prefix);
        QVERIFY2(fel.isEmpty(), qPrintable(fel));
        QDir tree(prefix.path());
        QVERIFY(QFileInfo(tree.filePath(QStringLiteral("bin/fjolkpatience"))).isExecutable());
        QVERIFY(!QFileInfo::exists(tree.filePath(QStringLiteral("bin/Help"))));
        const QString hjalp = tree.filePath(QStringLiteral("share/fjolkpatience/Help/Help.html"));
        QCOMPARE(HittaHjalpFil(tree.filePath(QStringLiteral("bin"))), hjalp);
        QVERIFY(Las(hjalp).contains("Freecell"));
    }

    void debianpaketetsProgramIGamesHittarSinHjalpsida() {
        // debian/rules installs the program in games/, beside share/ as bin/ is.
        QVERIFY(Las(QStringLiteral(FJOLK_SOURCE_DIR "/debian/rules"))
                    .contains("-DCMAKE_INSTALL_BINDIR=games"));
        QTemporaryDir trad;
        Skriv(trad.filePath(QStringLiteral("share/fjolkpatience/Help/Help.html")));
        QCOMPARE(HittaHjalpFil(trad.filePath(QStringLiteral("games"))),
                 trad.filePath(QStringLiteral("share/fjolkpatience/Help/Help.html")));
    }

    void paketetRekommenderarXdgUtilsForHjalpen() {
        QByteArray control = Las(QStringLiteral(FJOLK_SOURCE_DIR "/debian/control"));
        QVERIFY(control.contains("\nRecommends: xdg-utils\n"));
    }

    void installeratTradHarMenyposterIkonerOchManual() {
        QTemporaryDir prefix;
        QString fel = Installera(prefix);
        QVERIFY2(fel.isEmpty(), qPrintable(fel));
        QDir share(prefix.filePath(QStringLiteral("share")));

        QByteArray desktop =
            Las(share.filePath(QStringLiteral("applications/%1.desktop").arg(kAppId)));
        QVERIFY(desktop.contains("\nExec=fjolkpatience\n"));
        QVERIFY(desktop.contains("\nIcon=" + kAppId.toUtf8() + "\n"));
        QVERIFY(desktop.contains("\nCategories=Game;CardGame;\n"));
        // The class Qt gives our windows under X11: the application's name.
        QVERIFY(desktop.contains("\nStartupWMClass=Fjolks Patience\n"));
        QByteArray metainfo =
            Las(share.filePath(QStringLiteral("metainfo/%1.metainfo.xml").arg(kAppId)));
        QVERIFY(metainfo.contains("<id>" + kAppId.toUtf8() + "</id>"));
        QVERIFY(metainfo.contains("<release version=\"" FJOLK_VERSION "\""));
        for (const char* spel : {"Idioten 1", "Idioten 2", "Godnattvalsen", "Tower of Hanoi",
                                 "Kvarnen", "Glädjespridaren", "Farfars klocka", "13-Pyramiden",
                                 "Freecell", "Eight off", "Black hole", "Strategy"})
            QVERIFY2(metainfo.contains(QByteArray("<li>") + spel + "</li>"), spel);

        QVERIFY(QFileInfo::exists(
            share.filePath(QStringLiteral("icons/hicolor/scalable/apps/%1.svg").arg(kAppId))));
        for (int storlek : {16, 32, 48, 64, 128, 256}) {
            QImage ikon(share.filePath(
                QStringLiteral("icons/hicolor/%1x%1/apps/%2.png").arg(storlek).arg(kAppId)));
            QCOMPARE(ikon.size(), QSize(storlek, storlek));
            // Cards in the middle, nothing in the corners.
            QVERIFY(qAlpha(ikon.pixel(storlek * 5 / 8, storlek / 2)) == 255);
            QCOMPARE(qAlpha(ikon.pixel(0, 0)), 0);
        }
        QVERIFY(QFileInfo::exists(share.filePath(QStringLiteral("man/man6/fjolkpatience.6.gz"))));
        QVERIFY(QFileInfo::exists(share.filePath(QStringLiteral("doc/fjolkpatience/copyright"))));
    }

    void programmetTarQtsEgnaVal() {
        QTemporaryDir data;
        const QString bild = data.filePath(QStringLiteral("t.png"));
        for (const QStringList& argument :
             {QStringList{"-platform", "offscreen", "-style", "fusion", "--version"},
              QStringList{"-style=fusion", "--platform", "offscreen", "--data-dir", data.path(),
                          "--game", "1", "--seed", "3", "--snapshot", bild}}) {
            QProcess program;
            QProcessEnvironment miljo = QProcessEnvironment::systemEnvironment();
            miljo.remove(QStringLiteral("QT_QPA_PLATFORM"));
            miljo.remove(QStringLiteral("DISPLAY"));
            miljo.remove(QStringLiteral("WAYLAND_DISPLAY"));
            program.setProcessEnvironment(miljo);
            program.start(QStringLiteral(FJOLK_BUILD_DIR "/fjolkpatience"), argument);
            QVERIFY(program.waitForFinished(60000));
            QVERIFY2(program.exitStatus() == QProcess::NormalExit && program.exitCode() == 0,
                     program.readAllStandardError().constData());
        }
        QCOMPARE(QImage(bild).size(), QSize(640, 480));
    }

    void metainfonsAdresserNamnerFilerIForradet() {
        const QString kalla = QStringLiteral(FJOLK_SOURCE_DIR);
        const QString text =
            QString::fromUtf8(Las(kalla + QStringLiteral("/dist/%1.metainfo.xml.in").arg(kAppId)));
        QVERIFY(!text.isEmpty());
        const QString hem = QStringLiteral("https://github.com/fjolkspatience/fjolkspatience");
        const QString filer =
            QStringLiteral("https://raw.githubusercontent.com/fjolkspatience/fjolkspatience/main/");
        static const QRegularExpression adress(QStringLiteral("https?://[^<\"\\s]+"));
        int antalFiler = 0;
        for (const QRegularExpressionMatch& m : adress.globalMatch(text)) {
            const QString url = m.captured();
            if (url == hem)
                continue;
            QVERIFY2(url.startsWith(filer), qPrintable(url));
            QVERIFY2(QFileInfo(kalla + QLatin1Char('/') + url.mid(filer.size())).isFile(),
                     qPrintable(url));
            ++antalFiler;
        }
        QVERIFY(antalFiler >= 1);
        // The default screenshot is a picture of the welcome screen's size.
        static const QRegularExpression standard(
            QStringLiteral("<screenshot type=\"default\">\\s*<caption>[^<]*</caption>\\s*"
                           "<image>([^<]+)</image>"));
        QRegularExpressionMatch forsta = standard.match(text);
        QVERIFY(forsta.hasMatch());
        QCOMPARE(QImage(kalla + QLatin1Char('/') + forsta.captured(1).mid(filer.size())).size(),
                 QSize(640, 400));
    }

    void metainfonsReleaseSagerVadDenArOchTangentbordetSpelar() {
        const QString text = QString::fromUtf8(
            Las(QStringLiteral(FJOLK_SOURCE_DIR "/dist/%1.metainfo.xml.in").arg(kAppId)));
        static const QRegularExpression release(
            QStringLiteral(
                "<release version=\"@PROJECT_VERSION@\"[^>]*>\\s*<description>(.*)</description>"),
            QRegularExpression::DotMatchesEverythingOption);
        QRegularExpressionMatch m = release.match(text);
        QVERIFY(m.hasMatch());
        const QString anteckning = m.captured(1).simplified();
        QVERIFY2(anteckning.contains(QStringLiteral("all twelve games")), qPrintable(anteckning));
        for (const char* spel :
             {"Idioten 1", "Godnattvalsen", "Tower of Hanoi", "Kvarnen", "Glädjespridaren",
              "Farfars klocka", "13-Pyramiden", "Freecell", "Eight off", "Black hole", "Strategy"})
            QVERIFY2(anteckning.contains(QString::fromUtf8(spel)), spel);
        QVERIFY(!anteckning.contains(QStringLiteral("follow")));
        // Every game plays by keys alone, so the metadata may promise it.
        QVERIFY(text.contains(QStringLiteral("<control>keyboard</control>")));
    }

    void manualenHarVarjeValIHjalpen() {
        QByteArray manual = Las(QStringLiteral(FJOLK_BUILD_DIR "/fjolkpatience.6"));
        QVERIFY(manual.startsWith(".TH FJOLKPATIENCE 6 "));
        QVERIFY(manual.contains("Fjolks Patience " FJOLK_VERSION));
        const QString hjalp =
            ParseCommandLine({QStringLiteral("fjolkpatience"), QStringLiteral("--help")}).message;
        // The option lines of the help: "  -h, --help", "  --seed <N>", ...
        static const QRegularExpression valRad(
            QStringLiteral("^  (?:-(\\w), )?--([\\w-]+)(?: <([\\w-]+)>)?  "),
            QRegularExpression::MultilineOption);
        int antal = 0;
        for (const QRegularExpressionMatch& val : valRad.globalMatch(hjalp)) {
            ++antal;
            QByteArray rubrik =
                "\\fB\\-\\-" + val.captured(2).replace('-', "\\-").toUtf8() + "\\fR";
            if (!val.captured(1).isEmpty())
                rubrik.prepend("\\fB\\-" + val.captured(1).toUtf8() + "\\fR, ");
            if (!val.captured(3).isEmpty())
                rubrik += " \\fI" + val.captured(3).toUtf8() + "\\fR";
            QVERIFY2(manual.contains(".TP\n" + rubrik + "\n"), rubrik.constData());
        }
        QCOMPARE(antal, static_cast<int>(std::size(kOptions)));
        QCOMPARE(manual.count(".TP\n"
                              "\\fB"),
                 antal);
        QVERIFY(manual.contains(".SH KEYS\n"));
        for (const KeyHelp& key : kPlayKeys) {
            // A line of roff that starts with a dot starts with \& to be read as text.
            QByteArray namn =
                key.keys[0] == '.' ? "\\&" + QByteArray(key.keys) : QByteArray(key.keys);
            QVERIFY2(manual.contains(".TP\n.B " + namn + "\n"), key.keys);
        }
        // What a screen reader hears follows the keys.
        QVERIFY(manual.contains(".PP\nA screen reader (Orca, through AT-SPI) hears the place"));
        QVERIFY(manual.contains("\"nothing moved\""));
    }
};

QTEST_GUILESS_MAIN(InstallationTest)
#include "test_installation.moc"
