#include "cards/Hiscore.h"
#include "cards/Statistik.h"
#include "platform/AttributeStore.h"
#include "platform/Meddelande.h"
#include "platform/QtGeometry.h"
#include "support/Lyssnare.h"
#include "support/Poster.h"
#include "welcome/WelcomeView.h"

#include <QAccessible>
#include <QCheckBox>
#include <QFontInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTabBar>
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

// Ink: a pixel of text darker than `grans`, below the white of the list (255) or the olive
// of the page (142).
bool Black(QRgb p, int grans) {
    return qGray(p) < grans;
}
constexpr int kListInk = 200;
constexpr int kSidInk = 100;

// The left edges of the runs of ink along a band of rows, runs split where at least
// `glapp` columns hold no ink.
std::vector<int> InkLopp(const QImage& bild, int topp, int botten, int glapp, int grans) {
    std::vector<int> lopp;
    int tomma = glapp;
    for (int x = 0; x < bild.width(); ++x) {
        bool ink = false;
        for (int y = std::max(topp, 0); y <= std::min(botten, bild.height() - 1) && !ink; ++y)
            ink = Black(bild.pixel(x, y), grans);
        if (ink && tomma >= glapp)
            lopp.push_back(x);
        tomma = ink ? 0 : tomma + 1;
    }
    return lopp;
}

// The words of a heading as it reads: each runs up to and including its colon.
QStringList Ord(const QString& rubrik) {
    QStringList ord;
    for (const QString& del : rubrik.split(QLatin1Char(':'))) {
        QString o = del.trimmed();
        if (!o.isEmpty())
            ord << o;
    }
    for (qsizetype i = 0; i + 1 < ord.size(); ++i)
        ord[i] += QStringLiteral(" :");
    return ord;
}

// The room a check box or button leaves for its text.
int Textrum(QAbstractButton* knapp, QStyle::SubElement del) {
    QStyleOptionButton option;
    option.initFrom(knapp);
    return knapp->style()->subElementRect(del, &option, knapp).width();
}

// The text of a control is not wider than the room its control gives it.
void Ryms(const QString& text, const QFont& font, int rum, const char* vad) {
    int bredd = QFontMetrics(font).horizontalAdvance(text);
    qreal exakt = QFontMetricsF(font).horizontalAdvance(text);
    QVERIFY2(bredd <= rum && exakt <= rum,
             qPrintable(QStringLiteral("%1 \"%2\": %3 px in %4 px at %5 px %6")
                            .arg(QString::fromLatin1(vad), text)
                            .arg(exakt)
                            .arg(rum)
                            .arg(font.pixelSize())
                            .arg(QFontInfo(font).family())));
}

} // namespace

class WelcomeViewTest : public QObject {
    Q_OBJECT

private slots:
    // The longest record a name can have still shows whole in the margin under the tabs, and
    // the line follows the game chosen and the name typed.
    void statistikradenRymsOchFoljerSpeletOchNamnet() {
        Skarm s;
        StatisticsRow rad{0,     "Abcdefghijklmnopqrs", 123456, 98765,     4321,
                          54321, 36000 + 59 * 61,       998,    1764000000};
        QCOMPARE(s.store.WriteStatistics(rad), B_OK);
        s.vy->spelarFalt->setText(QStringLiteral("Abcdefghijklmnopqrs"));
        QLabel* linje = s.vy->statistikRad;
        QCOMPARE(linje->text(), QString::fromStdString(StatistikText(rad)));
        QVERIFY(linje->text().contains(QStringLiteral(
            "123456 played, 98765 won (80%), streak 4321 (best 54321), fastest 10:59:59")));
        QVERIFY(QFontMetrics(linje->font()).horizontalAdvance(linje->text()) <=
                linje->contentsRect().width());
        QVERIFY(s.vy->rect().contains(linje->geometry()));
        QVERIFY(!linje->geometry().intersects(s.vy->flikar->geometry()));
        s.KlickaRad(s.vy->spelLista, 8);
        QCOMPARE(linje->text(), QStringLiteral("Abcdefghijklmnopqrs: no games played yet"));
        s.KlickaRad(s.vy->spelLista, 0);
        s.vy->spelarFalt->setText(QStringLiteral("Eva"));
        QCOMPARE(linje->text(), QStringLiteral("Eva: no games played yet"));
    }

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
        QCOMPARE(s.vy->hjalpRad->geometry(), ToQRect(BRect(10, 10, 210, 30)));
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

    void ingenTextArBredareAnSinKontroll() {
        Skarm s(true);
        s.SparaTabell(5);
        for (QLabel* etikett : s.vy->findChildren<QLabel*>()) {
            if (etikett == s.vy->rubrikRad)
                continue;
            Ryms(etikett->text(), etikett->font(), etikett->contentsRect().width(), "label");
        }
        for (QCheckBox* ruta : s.vy->findChildren<QCheckBox*>())
            Ryms(ruta->text(), ruta->font(), Textrum(ruta, QStyle::SE_CheckBoxContents),
                 "check box");
        for (QPushButton* knapp : s.vy->findChildren<QPushButton*>())
            Ryms(knapp->text(), knapp->font(), Textrum(knapp, QStyle::SE_PushButtonContents),
                 "button");
        QTabBar* flikar = s.vy->flikar->tabBar();
        for (int i = 0; i < flikar->count(); ++i)
            Ryms(flikar->tabText(i), flikar->font(), flikar->tabRect(i).width(), "tab");
        // The title of every game, and every heading, word by word.
        for (int spel = 0; spel < 12; ++spel) {
            s.vy->hiscoreLista->VisaHiscoreLista(spel);
            Ryms(s.vy->titelRad->text(), s.vy->titelRad->font(), s.vy->titelRad->width(), "title");
            std::vector<RubrikRad::Ord> ord = s.vy->rubrikRad->OrdRutor();
            if (ord.empty()) {
                QCOMPARE(s.vy->rubrikRad->text(), QStringLiteral("No Highscore table found "));
                Ryms(s.vy->rubrikRad->text(), s.vy->rubrikRad->font(), s.vy->rubrikRad->width(),
                     "heading");
            }
            for (const RubrikRad::Ord& o : ord)
                QVERIFY2(QRectF(s.vy->rubrikRad->rect()).contains(o.ruta), qPrintable(o.text));
        }
        // The controls' fonts stay readable.
        for (QWidget* w : s.vy->findChildren<QWidget*>())
            QVERIFY2(w->font().pixelSize() >= 7, qPrintable(w->objectName()));
    }

    void radernaArFastBredd12() {
        Skarm s(true);
        QFont font = s.vy->hiscoreLista->font();
        QCOMPARE(font.pixelSize(), 12);
        QFontInfo info(font);
        QVERIFY(info.fixedPitch());
        QCOMPARE(info.family(), QStringLiteral("DejaVu Sans Mono"));
        // The longest row that a table can hold ends inside the list.
        HighScoreTable lang = Post("Abcdefghijklmnopqrs", 52, 3, 999, "59:59", "28/12 2024");
        QString rad = QString::fromUtf8(HiscoreRad(38, lang, 0)).trimmed();
        QCOMPARE(rad.size(), qsizetype(49));
        QVERIFY(s.vy->hiscoreLista->KolumnX(0) + QFontMetricsF(font).horizontalAdvance(rad) <=
                s.vy->hiscoreLista->viewport()->geometry().right() + 1);
    }

    void rubrikensOrdStarOverSinaKolumner() {
        Skarm s;
        const qreal tecken = QFontMetricsF(s.vy->hiscoreLista->font()).horizontalAdvance('0');
        // Each of the five layouts, every game, and the first heading over game 0's rows.
        for (int spel = -1; spel < 12; ++spel) {
            HiscoreLista tabell = TomTabell(HiscoreFamiljFor(std::max(spel, 0)));
            tabell[0] = Post("Eva", 52, 3, 120, "12:34", "1/2 2003");
            std::string namn = HiscoreAttributNamn(std::max(spel, 0));
            s.store.WriteAttr(namn.c_str(), B_RAW_TYPE, 0, tabell.data(), sizeof tabell);
            std::unique_ptr<Skarm> forsta;
            WelcomeView* vy = s.vy;
            if (spel < 0) {
                forsta = std::make_unique<Skarm>(true);
                forsta->store.WriteAttr(namn.c_str(), B_RAW_TYPE, 0, tabell.data(), sizeof tabell);
                forsta->vy->deleteLater();
                forsta->vy = new WelcomeView(&forsta->fonster, forsta->store);
                forsta->vy->setGeometry(0, 0, 640, 375);
                forsta->vy->show();
                QCoreApplication::processEvents();
                vy = forsta->vy;
                QCOMPARE(vy->rubrikRad->text(), QString::fromLatin1(kRubrikStart));
            } else {
                vy->hiscoreLista->VisaHiscoreLista(spel);
                QCOMPARE(vy->rubrikRad->text(), QString::fromLatin1(HiscoreRubrik(spel)));
            }
            QCoreApplication::processEvents();
            const QString vad = QStringLiteral("game %1").arg(spel);

            // Where the fields of the first row begin, in the list's pixels: a blank between
            // two fields leaves most of a character without ink, glyphs within one far less.
            HighOLLView* lista = vy->hiscoreLista;
            QImage listBild = lista->grab().toImage();
            QRect rad = lista->visualItemRect(lista->item(0))
                            .translated(lista->viewport()->pos())
                            .adjusted(0, 1, 0, -1);
            std::vector<int> falt = InkLopp(listBild, rad.top(), rad.bottom(),
                                            static_cast<int>(tecken * 3 / 4), kListInk);

            // Where each heading word's ink begins; no ink outside the words.
            RubrikRad* rubrik = vy->rubrikRad;
            QImage rubrikBild = rubrik->grab().toImage();
            std::vector<RubrikRad::Ord> ord = rubrik->OrdRutor();
            QStringList texter;
            for (const RubrikRad::Ord& o : ord)
                texter << o.text;
            QCOMPARE(texter, Ord(rubrik->text()));
            QVERIFY2(falt.size() >= ord.size(), qPrintable(vad));
            for (int y = 0; y < rubrikBild.height(); ++y)
                for (int x = 0; x < rubrikBild.width(); ++x)
                    if (Black(rubrikBild.pixel(x, y), kSidInk)) {
                        bool iOrd = false;
                        for (const RubrikRad::Ord& o : ord)
                            iOrd = iOrd || o.ruta.adjusted(-1, -1, 1, 1).contains(QPointF(x, y));
                        QVERIFY2(iOrd, qPrintable(QStringLiteral("%1: ink at %2, %3 outside "
                                                                 "the words")
                                                      .arg(vad)
                                                      .arg(x)
                                                      .arg(y)));
                    }
            for (size_t i = 0; i < ord.size(); ++i) {
                QRect ruta = ord[i].ruta.toAlignedRect();
                std::vector<int> ink = InkLopp(rubrikBild.copy(ruta), 0, ruta.height(), 1, kSidInk);
                QVERIFY2(!ink.empty(), qPrintable(ord[i].text));
                int ordX = rubrik->x() + ruta.left() + ink.front();
                int faltX = lista->x() + falt[i];
                QVERIFY2(std::abs(ordX - faltX) <= tecken,
                         qPrintable(QStringLiteral("%1: \"%2\" begins at %3, its column at %4")
                                        .arg(vad, ord[i].text)
                                        .arg(ordX)
                                        .arg(faltX)));
                for (size_t j = 0; j < i; ++j)
                    QVERIFY2(!ord[i].ruta.intersects(ord[j].ruta), qPrintable(ord[i].text));
            }
        }
    }

    void spellistanVisarVarjeRad() {
        Skarm s;
        QListWidget* lista = s.vy->spelLista;
        QCOMPARE(lista->count(), 12);
        for (int rad = 0; rad < 12; ++rad)
            QVERIFY2(lista->viewport()->rect().contains(lista->visualItemRect(lista->item(rad))),
                     qPrintable(lista->item(rad)->text()));
        lista->scrollToItem(lista->item(11));
        QVERIFY(lista->viewport()->rect().contains(lista->visualItemRect(lista->item(11))));
    }

    void langtNamnVisasFranForstaBokstaven() {
        Skarm s(true);
        QLineEdit* falt = s.vy->spelarFalt;
        const QString namn = QStringLiteral("Abcdefghijklmnopqrs");
        QVERIFY(QFontMetrics(falt->font()).horizontalAdvance(namn) > falt->width());
        // A field of the same size that holds only the first letters shows them where a long
        // name that shows from its first letter shows its own.
        QLineEdit borjan(QStringLiteral("Abcde"), falt->parentWidget());
        borjan.setGeometry(falt->geometry().translated(0, 100));
        borjan.show();
        const int bredd = QFontMetrics(falt->font()).horizontalAdvance(QStringLiteral("Abcd"));
        auto visarBorjan = [&] {
            QImage bild = falt->grab().toImage();
            QImage ref = borjan.grab().toImage();
            QRect del(0, 0, bredd, falt->height());
            return bild.copy(del) == ref.copy(del);
        };

        falt->setText(namn);
        QVERIFY(visarBorjan());
        s.vy->spelarFalt->setText(QStringLiteral("Guest"));
        QVERIFY(!visarBorjan());
        s.KlickaRad(s.vy->hiscoreLista, 1);
        QCOMPARE(falt->text(), namn);
        QVERIFY(visarBorjan());
        // Typed, it shows its end while the typing goes on, and its beginning after.
        falt->clear();
        falt->setFocus();
        QTest::keyClicks(falt, namn);
        QVERIFY(!visarBorjan());
        s.KlickaRad(s.vy->spelLista, 3);
        QVERIFY(!falt->hasFocus());
        QVERIFY(visarBorjan());
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

    void pilarnaValjerRadOchVisarDessTabell() {
        Skarm s;
        s.SparaTabell(1);
        s.SparaTabell(2);
        s.vy->spelLista->setCurrentRow(0);
        s.vy->spelLista->setFocus();
        QTest::keyClick(s.vy->spelLista, Qt::Key_Down);
        QCOMPARE(s.vy->spelLista->currentRow(), 1);
        QVERIFY(s.vy->spelLista->item(1)->isSelected());
        QCOMPARE(s.vy->titelRad->text(), QStringLiteral("Highscore for Idioten 2"));
        QCOMPARE(s.vy->hiscoreLista->count(), 40);
        QTest::keyClick(s.vy->spelLista, Qt::Key_Down);
        QCOMPARE(s.vy->titelRad->text(), QStringLiteral("Highscore for Godnattvalsen"));
        QTest::keyClick(s.vy->spelLista, Qt::Key_End);
        QCOMPARE(s.vy->spelLista->currentRow(), 11);
        QCOMPARE(s.vy->titelRad->text(), QStringLiteral("Highscore for Strategy"));
        QCOMPARE(s.vy->hiscoreLista->count(), 0);
        QCOMPARE(s.vy->rubrikRad->text(), QStringLiteral("No Highscore table found "));
        QTest::keyClick(s.vy->spelLista, Qt::Key_Up);
        QCOMPARE(s.vy->titelRad->text(), QStringLiteral("Highscore for Black hole"));
        QVERIFY(s.Koder().empty());
        // The row the keys chose is chosen: one click on it starts it.
        s.KlickaRad(s.vy->spelLista, 10);
        QCOMPARE(s.Koder(), (std::vector<type_code>{MakeTypeCode("AAAN")}));
    }

    void enterStartarDenValdaRaden() {
        Skarm s;
        s.vy->spelLista->setFocus();
        s.KlickaRad(s.vy->spelLista, 7);
        QVERIFY(s.Koder().empty());
        QTest::keyClick(s.vy->spelLista, Qt::Key_Return);
        QCOMPARE(s.Koder(), (std::vector<type_code>{MakeTypeCode("AAAK")}));
        QTest::keyClick(s.vy->spelLista, Qt::Key_Up);
        QCOMPARE(s.vy->titelRad->text(), QStringLiteral("Highscore for Farfars klocka"));
        QTest::keyClick(s.vy->spelLista, Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(s.Koder(), (std::vector<type_code>{MakeTypeCode("AAAK"), MakeTypeCode("AAAJ")}));
    }

    void enterUtanValdRadGorIngenting() {
        Skarm s;
        s.vy->spelLista->clearSelection();
        s.vy->spelLista->setFocus();
        QTest::keyClick(s.vy->spelLista, Qt::Key_Return);
        QVERIFY(s.Koder().empty());
    }

    void hogerknappenValjerOchStartarSomVanstra() {
        Skarm s(true);
        QRect r = s.vy->spelLista->visualItemRect(s.vy->spelLista->item(2));
        QTest::mouseClick(s.vy->spelLista->viewport(), Qt::RightButton, Qt::NoModifier, r.center());
        QCOMPARE(s.vy->spelLista->currentRow(), 2);
        QCOMPARE(s.vy->titelRad->text(), QStringLiteral("Highscore for Godnattvalsen"));
        QVERIFY(s.Koder().empty());
        QTest::mouseClick(s.vy->spelLista->viewport(), Qt::RightButton, Qt::NoModifier, r.center());
        QCOMPARE(s.Koder(), (std::vector<type_code>{MakeTypeCode("AAAF")}));
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

    // A press is the whole click: moving the pointer over other rows before letting go
    // chooses none of them, in either list.
    void draMedKnappenNereValjerIngenAnnanRad() {
        Skarm s(true);
        s.SparaTabell(3);
        s.KlickaRad(s.vy->spelLista, 3);
        auto dra = [](QListWidget* lista, int fran, int till) {
            QWidget* yta = lista->viewport();
            QPoint a = lista->visualItemRect(lista->item(fran)).center();
            QPoint b = lista->visualItemRect(lista->item(till)).center();
            QTest::mousePress(yta, Qt::LeftButton, Qt::NoModifier, a);
            for (int steg = 1; steg <= 4; ++steg) {
                QPointF q = a + (b - a) * steg / 4;
                QMouseEvent flytt(QEvent::MouseMove, q, yta->mapToGlobal(q), Qt::NoButton,
                                  Qt::LeftButton, Qt::NoModifier);
                QCoreApplication::sendEvent(yta, &flytt);
            }
            QTest::mouseRelease(yta, Qt::LeftButton, Qt::NoModifier, b);
        };
        dra(s.vy->spelLista, 0, 3);
        QCOMPARE(s.vy->spelLista->currentRow(), 0);
        QVERIFY(s.vy->spelLista->item(0)->isSelected());
        QVERIFY(!s.vy->spelLista->item(3)->isSelected());
        QCOMPARE(s.vy->titelRad->text(), QStringLiteral("Highscore for Idioten 1"));
        QVERIFY(s.Koder().empty());
        s.KlickaRad(s.vy->spelLista, 3);
        QVERIFY(s.Koder().empty());
        QCOMPARE(s.vy->titelRad->text(), QStringLiteral("Highscore for Tower of Hanoi"));

        dra(s.vy->hiscoreLista, 0, 1);
        QCOMPARE(s.vy->hiscoreLista->currentRow(), 0);
        QVERIFY(!s.vy->hiscoreLista->item(1)->isSelected());
        QCOMPARE(s.vy->spelarFalt->text(), QStringLiteral("Eva"));
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

    // Columns count characters as the player sees them: a name with å, ä or ö puts its
    // numbers where a name of as many plain letters does.
    void radMedAAOLinjerarEfterTecken() {
        QString rad = QString::fromStdString(HiscoreRad(0, Post("Åsa Öberg", 12, 2, 5), 0));
        QString enkel = QString::fromStdString(HiscoreRad(0, Post("Asa Oberg", 12, 2, 5), 0));
        QCOMPARE(rad, QStringLiteral("1  Åsa Öberg") + Blanka(12) +
                          QStringLiteral("12 2 5   05:07 3/2 2001  "));
        QCOMPARE(rad.size(), enkel.size());
        QCOMPARE(rad.mid(12), enkel.mid(12));
        // Nineteen bytes of å hold nine of them and half of a tenth.
        HighScoreTable langt = Post("ååååååååå\xc3", 1, 1, 0);
        QCOMPARE(QString::fromStdString(HiscoreRad(0, langt, 8)).left(13),
                 QStringLiteral("1  ååååååååå\uFFFD"));
    }

    // Control characters and bytes that are not UTF-8 show as U+FFFD, one column each, and a
    // click on the row never puts them into the name field.
    void styrteckenOchTrasigUtf8VisasSomErsattning() {
        Skarm s;
        HiscoreLista tabell = TomTabell(HiscoreFamiljFor(0));
        tabell[0] = Post("E\x01va\xff", 12, 2, 5);
        tabell[1] = Post("Bo\tB\x7f\xc2\x85", 11, 2, 5);
        s.store.WriteAttr("FJOLK:Spel0", B_RAW_TYPE, 0, tabell.data(), sizeof tabell);
        s.vy->hiscoreLista->VisaHiscoreLista(0);
        QCOMPARE(s.vy->hiscoreRader[0]->text(), QStringLiteral("1  E\uFFFDva\uFFFD") + Blanka(16) +
                                                    QStringLiteral("12 2 5   05:07 3/2 2001  "));
        QCOMPARE(s.vy->hiscoreRader[1]->text(), QStringLiteral("2  Bo\uFFFDB\uFFFD\uFFFD") +
                                                    Blanka(15) +
                                                    QStringLiteral("11 2 5   05:07 3/2 2001  "));
        s.KlickaRad(s.vy->hiscoreLista, 0);
        QCOMPARE(s.vy->spelarFalt->text(), QStringLiteral("Eva"));
        s.KlickaRad(s.vy->hiscoreLista, 1);
        QCOMPARE(s.vy->spelarFalt->text(), QStringLiteral("BoB"));
        QCOMPARE(RentNamn("Guest              ", 20), std::string("Guest"));
        QCOMPARE(RentNamn("  Eva  \n", 20), std::string("  Eva"));
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
    // Tab goes from the name to the games, the hiscores and then the options; a screen
    // reader has a name or a description for each.
    void tabOrdningOchNamn() {
        Skarm s(true);
        QList<QWidget*> ordning;
        QWidget* w = s.vy->spelarFalt;
        for (int i = 0; i < 40 && ordning.size() < 7; ++i, w = w->nextInFocusChain())
            if ((w->focusPolicy() & Qt::TabFocus) && s.vy->isAncestorOf(w) &&
                w->parentWidget() != s.vy->flikar && !ordning.contains(w) &&
                w->metaObject()->className() != QByteArray("QTabBar"))
                ordning << w;
        QCOMPARE(ordning, (QList<QWidget*>{s.vy->spelarFalt, s.vy->spelLista, s.vy->hiscoreLista,
                                           s.vy->animeringsRuta, s.vy->oppnaKnapp, s.vy->rensaKnapp,
                                           s.vy->aterstallKnapp}));
        QCOMPARE(s.vy->spelarFalt->accessibleName(), QStringLiteral("Player name"));
        QCOMPARE(s.vy->spelLista->accessibleName(), QStringLiteral("Games"));
        QCOMPARE(s.vy->hiscoreLista->accessibleName(), QStringLiteral("Hiscore table"));
        for (QWidget* c : ordning)
            QVERIFY2(!c->accessibleDescription().isEmpty(), c->metaObject()->className());
        // Each hiscore row is read as it shows.
        QAccessibleInterface* lista = QAccessible::queryAccessibleInterface(s.vy->hiscoreLista);
        QVERIFY(lista != nullptr);
        QCOMPARE(lista->text(QAccessible::Name), QStringLiteral("Hiscore table"));
        QVERIFY(lista->childCount() >= 40);
        // Each hiscore row is read out in the heading's words, an empty one as empty.
        auto raderna = [&] {
            QStringList namn;
            for (int i = 0; i < lista->childCount(); ++i)
                namn << lista->child(i)->text(QAccessible::Name);
            return namn;
        };
        QStringList rader = raderna();
        QVERIFY(rader.contains(QStringLiteral(
            "1. Eva, cards made 12, deal 2, undos 5, time to play 05:07, date 3/2 2001")));
        QVERIFY(rader.contains(QStringLiteral("2. Abcdefghijklmnopqrs, cards made 3, deal 1, "
                                              "undos 900, time to play 05:07, date 3/2 2001")));
        QVERIFY(rader.contains(QStringLiteral("3. empty")));
        QVERIFY(rader.contains(QStringLiteral("40. empty")));
        // Another game's table in its own heading's words; the list tells a screen reader,
        // which is listening, that its rows are new.
        SattTillganglighet(true);
        s.SparaTabell(3);
        s.vy->hiscoreLista->VisaHiscoreLista(3);
        rader = raderna();
        QVERIFY2(
            rader.contains(QStringLiteral("1. Eva, undos 5, time to play 05:07, date 3/2 2001")),
            qPrintable(rader.join(QLatin1Char('|'))));
        s.SparaTabell(7);
        s.vy->hiscoreLista->VisaHiscoreLista(7);
        QVERIFY(raderna().contains(QStringLiteral(
            "1. Eva, cards left 12, deal 2, undos 5, time to play 05:07, date 3/2 2001")));
        // The record beside the table is read as it shows.
        QAccessibleInterface* statistik = QAccessible::queryAccessibleInterface(s.vy->statistikRad);
        QCOMPARE(statistik->text(QAccessible::Name), s.vy->statistikRad->text());
        QVERIFY(!statistik->text(QAccessible::Description).isEmpty());
        SattTillganglighet(false);
    }
};

QTEST_MAIN(WelcomeViewTest)
#include "test_welcome.moc"
