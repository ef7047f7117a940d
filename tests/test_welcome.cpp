#include "cards/Hiscore.h"
#include "platform/AttributeStore.h"
#include "platform/Meddelande.h"
#include "platform/QtGeometry.h"
#include "support/Poster.h"
#include "welcome/WelcomeView.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>
#include <cstring>
#include <memory>
#include <vector>

namespace {

// Stands in for the game window: keeps the commands the welcome screen posts.
class Fonster : public QWidget {
public:
    bool event(QEvent* e) override {
        if (e->type() == Meddelande::Typ()) {
            koder.push_back(static_cast<Meddelande*>(e)->what);
            return true;
        }
        return QWidget::event(e);
    }
    std::vector<type_code> koder;
};

struct Skarm {
    QTemporaryDir dir;
    AttributeStore store{dir.path().toStdString()};
    Fonster fonster;
    WelcomeView* vy = nullptr;

    explicit Skarm(bool medTabell = false) {
        if (medTabell)
            SparaTabell(0);
        fonster.resize(640, 375);
        vy = new WelcomeView(&fonster, store);
        vy->setGeometry(0, 0, 640, 375);
        fonster.show();
        QCoreApplication::processEvents();
    }
    void SparaTabell(int spelNr) {
        HiscoreLista tabell = TomTabell(HiscoreFamiljFor(spelNr));
        tabell[0] = Post("Eva", 12, 2, 5);
        tabell[1] = Post("Abcdefghijklmnopqrs", 3, 1, 900);
        std::string namn = HiscoreAttributNamn(spelNr);
        store.WriteAttr(namn.c_str(), B_RAW_TYPE, 0, tabell.data(), sizeof tabell);
    }
    std::vector<type_code> Koder() {
        QCoreApplication::sendPostedEvents();
        return fonster.koder;
    }
    void KlickaRad(QListWidget* lista, int rad) {
        QRect r = lista->visualItemRect(lista->item(rad));
        QTest::mouseClick(lista->viewport(), Qt::LeftButton, Qt::NoModifier, r.center());
    }
};

QString Blanka(int n) {
    return QString(n, QLatin1Char(' '));
}

} // namespace

class WelcomeViewTest : public QObject {
    Q_OBJECT

private slots:
    void kontrollernaHarSinaRamarNamnOchTexter() {
        Skarm s;
        QCOMPARE(s.vy->objectName(), QStringLiteral("WelcomeView"));
        QCOMPARE(s.vy->flikar->objectName(), QStringLiteral("tab_view"));
        QCOMPARE(s.vy->flikar->geometry(), QRect(20, 20, 600, 335));
        QCOMPARE(s.vy->flikar->tabText(0), QStringLiteral("Choose a game"));
        QCOMPARE(s.vy->flikar->tabText(1), QStringLiteral("Options"));
        QCOMPARE(s.vy->spelFlik->objectName(), QStringLiteral("SpelView"));
        QCOMPARE(s.vy->optionFlik->objectName(), QStringLiteral("OptionView"));
        QCOMPARE(s.vy->hjalpRad->text(),
                 QStringLiteral("Enter a name or click in the hiscoretable"));
        QCOMPARE(s.vy->hjalpRad->pos(), QPoint(10, 10));
        QCOMPARE(s.vy->titelRad->objectName(), QStringLiteral("hititleview"));
        QCOMPARE(s.vy->titelRad->geometry(), ToQRect(BRect(300, 20, 600, 40)));
        QCOMPARE(s.vy->titelRad->text(), QStringLiteral("Highscore for Idioten 1"));
        QVERIFY(s.vy->titelRad->font().bold());
        QCOMPARE(s.vy->rubrikRad->objectName(), QStringLiteral("hiinfoview"));
        QCOMPARE(s.vy->spelarFalt->objectName(), QStringLiteral("textcontrol"));
        QCOMPARE(s.vy->spelarFalt->text(), QStringLiteral("Guest"));
        QCOMPARE(s.vy->valjRad->text(), QStringLiteral("Choose a game to play"));
        QCOMPARE(s.vy->valjRad->geometry(), ToQRect(BRect(10, 70, 210, 90)));
        QCOMPARE(s.vy->hiscoreLista->objectName(), QStringLiteral("Highoutlinelistview"));
        QCOMPARE(s.vy->hiscoreLista->geometry(), ToQRect(BRect(200, 65, 570, 300)));
        QVERIFY(QFontInfo(s.vy->hiscoreLista->font()).fixedPitch());
        QCOMPARE(s.vy->hiscoreLista->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
        QCOMPARE(s.vy->spelLista->geometry(), ToQRect(BRect(10, 100, 170, 300)));
        QStringList spel;
        for (int i = 0; i < s.vy->spelLista->count(); ++i)
            spel << s.vy->spelLista->item(i)->text();
        QCOMPARE(spel, (QStringList{"Idioten 1", "Idioten 2", "Godnattvalsen", "Tower of Hanoi",
                                    "Kvarnen", "Glädjespridaren", "Farfars klocka", "13-Pyramiden",
                                    "Freecell", "Eight off", "Black hole", "Strategy"}));
        QCOMPARE(s.vy->animeringsRuta->objectName(), QStringLiteral("checkbox"));
        QCOMPARE(s.vy->animeringsRuta->text(), QStringLiteral("Animation"));
        QCOMPARE(s.vy->animeringsRuta->geometry(), ToQRect(BRect(49, 110, 115, 132)));
        QCOMPARE(s.vy->oppnaKnapp->objectName(), QStringLiteral("openbutton"));
        QCOMPARE(s.vy->oppnaKnapp->text(), QStringLiteral("Choose Background"));
        QCOMPARE(s.vy->oppnaKnapp->geometry(), ToQRect(BRect(200, 50, 300, 100)));
        QCOMPARE(s.vy->rensaKnapp->objectName(), QStringLiteral("clearbutton"));
        QCOMPARE(s.vy->rensaKnapp->text(), QStringLiteral("Clear Background"));
        QCOMPARE(s.vy->rensaKnapp->geometry(), ToQRect(BRect(200, 150, 300, 200)));
        QCOMPARE(s.vy->aterstallKnapp->objectName(), QStringLiteral("resetallbutton"));
        QCOMPARE(s.vy->aterstallKnapp->text(), QStringLiteral("Reset to default"));
        QCOMPARE(s.vy->aterstallKnapp->geometry(), ToQRect(BRect(200, 250, 300, 300)));
        QCOMPARE(s.vy->palette().color(QPalette::Window), QColor(0, 160, 0));
        QCOMPARE(s.vy->spelFlik->palette().color(QPalette::Window), QColor(160, 160, 0));
        QCOMPARE(s.vy->optionFlik->palette().color(QPalette::Window), QColor(0, 160, 160));
    }

    void utanTabellStarRubrikenSomIngenTabell() {
        Skarm s;
        QCOMPARE(s.vy->rubrikRad->text(), QStringLiteral("No Highscore table found "));
        QCOMPARE(s.vy->hiscoreLista->count(), 0);
    }

    void medTabellVisasSpel0MedStartrubriken() {
        Skarm s(true);
        QCOMPARE(s.vy->rubrikRad->text(),
                 QStringLiteral("  Pos :    Name :   Cards made :        Deal :     Undos :     "
                                "Time to play :      Date "));
        QCOMPARE(s.vy->hiscoreLista->count(), 40);
        QCOMPARE(s.vy->hiscoreRader[0]->text(),
                 "1  Eva" + Blanka(18) + "12 2 5   05:07 3/2 2001  ");
        QCOMPARE(s.vy->hiscoreRader[2]->text(), Blanka(60));
    }

    void radernaByggsVidSinaKolumner() {
        HighScoreTable eva = Post("Eva", 12, 2, 5);
        QCOMPARE(HiscoreRad(0, eva, 0),
                 "1  Eva" + std::string(18, ' ') + "12 2 5   05:07 3/2 2001  ");
        QCOMPARE(HiscoreRad(0, eva, 7),
                 "1  Eva" + std::string(18, ' ') + "12 2 5   05:07 3/2 2001  ");
        QCOMPARE(HiscoreRad(0, eva, 4),
                 "1  Eva" + std::string(17, ' ') + "12 2  5   05:07 3/2 2001  ");
        QCOMPARE(HiscoreRad(0, eva, 3), "1  Eva" + std::string(23, ' ') + "5   05:07 3/2 2001  ");
        QCOMPARE(HiscoreRad(0, eva, 8),
                 "1  Eva" + std::string(18, ' ') + "12   5   05:07 3/2 2001  ");
        QCOMPARE(HiscoreRad(9, eva, 8).substr(0, 6), std::string("10 Eva"));
        HighScoreTable lang = Post("Abcdefghijklmnopqrs", 3, 1, 900);
        QCOMPARE(HiscoreRad(1, lang, 0).substr(0, 24), std::string("2  Abcdefghijklmnopqrs  "));
        QCOMPARE(HiscoreRad(1, Post(" ", -1, 3, 0), 0), std::string(60, ' '));
    }

    void skadadPostBlirAldrigLangreAn60() {
        HighScoreTable skrap;
        std::memset(static_cast<void*>(&skrap), 'x', sizeof skrap);
        skrap.kort = 100;
        skrap.angra = -2147483647 - 1;
        std::string rad = HiscoreRad(39, skrap, 0);
        QVERIFY(rad.size() <= 60);
        QCOMPARE(rad.substr(0, 4), std::string("40 x"));
    }

    void rubrikernaPerSpel() {
        QCOMPARE(QString::fromLatin1(HiscoreRubrik(0)),
                 QStringLiteral("  Pos :    Name :   Cards done :        Deal :     Undos :     "
                                "Time to play :      Date "));
        QCOMPARE(QString::fromLatin1(HiscoreRubrik(4)), QString::fromLatin1(HiscoreRubrik(0)));
        QCOMPARE(QString::fromLatin1(HiscoreRubrik(7)),
                 QStringLiteral("  Pos :    Name :       Cards left :    Deal :     Undos :     "
                                "Time to play :      Date "));
        QCOMPARE(QString::fromLatin1(HiscoreRubrik(3)),
                 QStringLiteral("  Pos :    Name :                                Undos :     "
                                "Time to play :      Date "));
        for (int spel : {1, 2, 5, 6, 8, 9, 10, 11})
            QCOMPARE(QString::fromLatin1(HiscoreRubrik(spel)),
                     QStringLiteral("  Pos :    Name :                   Cards done : Undos :     "
                                    "Time to play :      Date "));
    }

    void forstaKlicketValjerAndraStartar() {
        Skarm s;
        s.SparaTabell(4);
        s.KlickaRad(s.vy->spelLista, 4);
        QCOMPARE(s.vy->spelLista->currentRow(), 4);
        QCOMPARE(s.vy->titelRad->text(), QStringLiteral("Highscore for Kvarnen"));
        QCOMPARE(s.vy->hiscoreLista->count(), 40);
        QVERIFY(s.Koder().empty());
        s.KlickaRad(s.vy->spelLista, 4);
        QCOMPARE(s.Koder(), (std::vector<type_code>{MakeTypeCode("AAAH")}));
    }

    void dubbelklickStartarEnGang() {
        Skarm s;
        QRect r = s.vy->spelLista->visualItemRect(s.vy->spelLista->item(1));
        // A double click reaches the list as a click, then the double-click press.
        QTest::mouseClick(s.vy->spelLista->viewport(), Qt::LeftButton, Qt::NoModifier, r.center());
        QTest::mouseDClick(s.vy->spelLista->viewport(), Qt::LeftButton, Qt::NoModifier, r.center());
        QCOMPARE(s.Koder(), (std::vector<type_code>{MakeTypeCode("AAAE")}));
        QCOMPARE(s.vy->rubrikRad->text(), QStringLiteral("No Highscore table found "));
    }

    void klickUnderSistaRadenGorIngenting() {
        Skarm s(true);
        s.vy->spelLista->setCurrentRow(2);
        s.vy->spelLista->resize(160, 400);
        QTest::mouseClick(s.vy->spelLista->viewport(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(20, 380));
        QCOMPARE(s.vy->spelLista->currentRow(), 2);
        QVERIFY(s.Koder().empty());
        s.vy->hiscoreLista->VisaHiscoreLista(5);
        QCOMPARE(s.vy->hiscoreLista->count(), 0);
        QTest::mouseClick(s.vy->hiscoreLista->viewport(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(20, 20));
        QCOMPARE(s.vy->spelarFalt->text(), QStringLiteral("Guest"));
    }

    void klickPaHiscoreradenTarNamnetOchLamnarFokus() {
        Skarm s(true);
        s.vy->spelarFalt->setFocus();
        s.KlickaRad(s.vy->hiscoreLista, 1);
        QCOMPARE(s.vy->spelarFalt->text(), QStringLiteral("Abcdefghijklmnopqrs"));
        QVERIFY(!s.vy->spelarFalt->hasFocus());
        QCOMPARE(s.vy->hiscoreLista->currentRow(), 1);
        s.KlickaRad(s.vy->hiscoreLista, 0);
        QCOMPARE(s.vy->spelarFalt->text(), QStringLiteral("Eva"));
    }

    void knapparnaOchRutanPostarSinaKoder() {
        Skarm s;
        s.vy->flikar->setCurrentIndex(1);
        QTest::mouseClick(s.vy->oppnaKnapp, Qt::LeftButton);
        QTest::mouseClick(s.vy->rensaKnapp, Qt::LeftButton);
        QTest::mouseClick(s.vy->aterstallKnapp, Qt::LeftButton);
        QTest::mouseClick(s.vy->animeringsRuta, Qt::LeftButton);
        QCOMPARE(s.Koder(), (std::vector<type_code>{MakeTypeCode("AAAV"), MakeTypeCode("AAAX"),
                                                    MakeTypeCode("AAAY"), MakeTypeCode("AAAZ")}));
    }

    void bakgrundsbildenLaggsSomPlattor() {
        Skarm s;
        QImage bild(7, 5, QImage::Format_ARGB32);
        bild.fill(QColor(1, 2, 3));
        bild.setPixel(0, 0, qRgb(200, 0, 0));
        s.vy->SetViewBitmap(bild);
        QImage skarm = s.vy->grab().toImage();
        QCOMPARE(QColor(skarm.pixel(7, 5)), QColor(200, 0, 0));
        QCOMPARE(QColor(skarm.pixel(14, 10)), QColor(200, 0, 0));
        QCOMPARE(QColor(skarm.pixel(8, 5)), QColor(1, 2, 3));
        s.vy->SetViewBitmap(QImage());
        QCOMPARE(QColor(s.vy->grab().toImage().pixel(7, 5)), QColor(0, 160, 0));
    }
};

QTEST_MAIN(WelcomeViewTest)
#include "test_welcome.moc"
