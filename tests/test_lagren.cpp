#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

#include <map>
#include <set>

// The layers of the program as its include lines show them: the platform knows nothing
// above it; the card model and framework know no game, no window and no welcome screen;
// the games know no window; the welcome screen knows no window; the solver knows the card
// model alone and nothing knows the solver but the window's layer; and the card model, the
// solver and every game's rules need no Qt, not even through the headers they include.

namespace {

struct Fil {
    QString lager;       // platform, cards, games, app, welcome
    QStringList projekt; // "cards/Kort.h", ...
    QStringList system;  // <QImage>, <vector>, ...
};

QString Kallkod() {
    QString rot = qEnvironmentVariable("FJOLK_SOURCE_DIR");
    if (rot.isEmpty())
        rot = QStringLiteral(QT_TESTCASE_SOURCEDIR "/..");
    return rot + QStringLiteral("/src");
}

std::map<QString, Fil> LasFilerna() {
    std::map<QString, Fil> filer;
    static const QRegularExpression rad(QStringLiteral(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"])"));
    QDir rot(Kallkod());
    QDirIterator it(Kallkod(), {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QString sokvag = it.next();
        QString namn = rot.relativeFilePath(sokvag);
        QFile f(sokvag);
        if (!f.open(QIODevice::ReadOnly))
            qFatal("cannot read %s", qPrintable(sokvag));
        Fil fil;
        fil.lager = namn.section(QLatin1Char('/'), 0, 0);
        for (const QByteArray& r : f.readAll().split('\n')) {
            auto m = rad.match(QString::fromUtf8(r));
            if (!m.hasMatch())
                continue;
            (m.captured(1) == QStringLiteral("\"") ? fil.projekt : fil.system) << m.captured(2);
        }
        filer[namn] = fil;
    }
    return filer;
}

bool ArQt(const QString& system) {
    return system.startsWith(QLatin1Char('Q')) || system.startsWith(QStringLiteral("qt"));
}

// The Qt headers a file reaches, directly or through the project's headers; empty when
// none.
QString QtGenom(const std::map<QString, Fil>& filer, const QString& namn,
                std::set<QString>& besokta) {
    if (!besokta.insert(namn).second)
        return {};
    auto it = filer.find(namn);
    if (it == filer.end())
        return {};
    for (const QString& s : it->second.system)
        if (ArQt(s))
            return namn + QStringLiteral(" includes <") + s + QLatin1Char('>');
    for (const QString& p : it->second.projekt) {
        QString via = QtGenom(filer, p, besokta);
        if (!via.isEmpty())
            return namn + QStringLiteral(" -> ") + via;
    }
    return {};
}

// The files that must stay free of Qt: the card model, the rules framework, the hiscore
// ranking and every game's rules.
bool UtanQt(const QString& namn) {
    static const QSet<QString> kortmodell = {
        QStringLiteral("cards/Kort.h"),         QStringLiteral("cards/Kortlek.h"),
        QStringLiteral("cards/Kortlek.cpp"),    QStringLiteral("cards/Lucka.h"),
        QStringLiteral("cards/Luckor.h"),       QStringLiteral("cards/Luckor.cpp"),
        QStringLiteral("cards/Drag.h"),         QStringLiteral("cards/Drag.cpp"),
        QStringLiteral("cards/SpelBord.h"),     QStringLiteral("cards/SpelRegler.h"),
        QStringLiteral("cards/Hiscore.h"),      QStringLiteral("cards/Hiscore.cpp"),
        QStringLiteral("cards/HiscoreRader.h"), QStringLiteral("cards/HiscoreRader.cpp"),
        QStringLiteral("cards/SokKunskap.h"),   QStringLiteral("cards/SokKunskap.cpp")};
    QString bas = namn.section(QLatin1Char('/'), -1);
    return kortmodell.contains(namn) || namn.startsWith(QStringLiteral("solver/")) ||
           (namn.startsWith(QStringLiteral("games/")) && bas.contains(QStringLiteral("Regler.")));
}

} // namespace

class LagerTest : public QObject {
    Q_OBJECT

private slots:
    void kallkodenFinns() {
        QVERIFY2(QFile::exists(Kallkod() + QStringLiteral("/cards/KortSpel.h")),
                 qPrintable(Kallkod()));
    }

    void ingetLagerSerUppat() {
        const std::map<QString, QStringList> forbjudet = {
            {QStringLiteral("platform"),
             {QStringLiteral("cards/"), QStringLiteral("games/"), QStringLiteral("app/"),
              QStringLiteral("welcome/"), QStringLiteral("solver/")}},
            {QStringLiteral("cards"),
             {QStringLiteral("games/"), QStringLiteral("app/"), QStringLiteral("welcome/"),
              QStringLiteral("solver/")}},
            {QStringLiteral("games"),
             {QStringLiteral("app/"), QStringLiteral("welcome/"), QStringLiteral("solver/")}},
            {QStringLiteral("welcome"), {QStringLiteral("app/"), QStringLiteral("solver/")}},
            // The solver plays any game through its rules alone.
            {QStringLiteral("solver"),
             {QStringLiteral("games/"), QStringLiteral("app/"), QStringLiteral("welcome/")}},
        };
        QStringList fel;
        auto filer = LasFilerna();
        QVERIFY(filer.size() >= 60);
        for (const auto& [namn, fil] : filer) {
            auto regel = forbjudet.find(fil.lager);
            if (regel == forbjudet.end())
                continue;
            for (const QString& p : fil.projekt)
                for (const QString& ovan : regel->second)
                    if (p.startsWith(ovan))
                        fel << namn + QStringLiteral(" includes ") + p;
        }
        QVERIFY2(fel.isEmpty(), qPrintable(fel.join(QStringLiteral("; "))));
    }

    void kortmodellenOchReglernaBehoverIngetQt() {
        auto filer = LasFilerna();
        int provade = 0;
        QStringList fel;
        for (const auto& [namn, fil] : filer) {
            if (!UtanQt(namn))
                continue;
            ++provade;
            std::set<QString> besokta;
            QString via = QtGenom(filer, namn, besokta);
            if (!via.isEmpty())
                fel << via;
        }
        QVERIFY2(fel.isEmpty(), qPrintable(fel.join(QStringLiteral("; "))));
        // The card model's files, the solver's and at least the three first games' rules
        // were looked at.
        QVERIFY(provade >= 21);
    }

    // The check itself: a header that reaches Qt through another is caught.
    void qtGenomEnAnnanFilUpptacks() {
        std::map<QString, Fil> filer;
        filer[QStringLiteral("games/XRegler.h")] = {
            QStringLiteral("games"), {QStringLiteral("cards/Y.h")}, {}};
        filer[QStringLiteral("cards/Y.h")] = {
            QStringLiteral("cards"), {}, {QStringLiteral("vector"), QStringLiteral("QImage")}};
        std::set<QString> besokta;
        QCOMPARE(QtGenom(filer, QStringLiteral("games/XRegler.h"), besokta),
                 QStringLiteral("games/XRegler.h -> cards/Y.h includes <QImage>"));
    }
};

QTEST_GUILESS_MAIN(LagerTest)
#include "test_lagren.moc"
