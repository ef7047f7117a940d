#include "app/DragFonster.h"
#include "app/FjolkApp.h"
#include "app/FjolkView.h"
#include "app/FjolkWin.h"
#include "cards/Hiscore.h"
#include "games/KolumnSpel.h"
#include "platform/Meddelande.h"
#include "platform/QtGeometry.h"
#include "platform/SystemTime.h"
#include "support/Gester.h"
#include "welcome/WelcomeView.h"

#include <QCheckBox>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <vector>

// The window as a player sees it on the screen: the first deal flying onto the table,
// alerts that paint while cards fly, nothing that slips into the game mid-flight, and the
// dragged cards under the pointer wherever it goes. Pictures are taken from what the
// windows have put on the screen.

namespace {

constexpr int kFreecell = 8;
constexpr int kEightoff = 9;

// Each reading of the clock lies a millisecond after the one before: a deal's flights take
// a known number of steps, however fast the machine is.
struct StegKlocka {
    StegKlocka() {
        static bigtime_t nu;
        nu = 1000;
        SattKlocka([] { return nu += 1000; });
    }
    ~StegKlocka() { SattKlocka({}); }
};

// One run of the program on its own data folder.
struct Korning {
    QTemporaryDir dir;
    std::unique_ptr<FjolkWin> win;

    explicit Korning(bool animera) {
        AttributeStore::SetDataDirectory(dir.path().toStdString());
        AttributeStore& store = AttributeStore::Program();
        win = std::make_unique<FjolkWin>(GetWindowSize(store, BRect(0, 0, 1023, 767)), store);
        win->ValkomstVy()->animeringsRuta->setChecked(animera);
    }
    FjolkView& Vy() { return *win->SpelVy(); }
    void Posta(type_code what) { QCoreApplication::postEvent(win.get(), new Meddelande(what)); }
};

// What a window has put on the screen, `del` of it (in the window's coordinates).
QImage PaSkarmen(const QWidget& fonster, QRect del) {
    QPixmap bild = fonster.screen()->grabWindow(fonster.winId());
    return bild.toImage().convertToFormat(QImage::Format_RGB32).copy(del);
}

int Antal(const QImage& bild, QRgb farg) {
    int n = 0;
    for (int y = 0; y < bild.height(); ++y)
        for (int x = 0; x < bild.width(); ++x)
            n += (bild.pixel(x, y) & 0xffffffu) == (farg & 0xffffffu);
    return n;
}

const QRgb kGron = qRgb(0, 160, 0);
const QRgb kFramsida = qRgb(220, 220, 220);

// Cards still in a column game's deck, waiting to be dealt.
int KvarILeken(const Patiens* spel) {
    auto* kolumner = dynamic_cast<const KolumnSpel*>(spel);
    if (kolumner == nullptr)
        return -1;
    const std::vector<Lucka>& luckor = kolumner->Luckor();
    return static_cast<int>(std::count_if(luckor.begin() + kolumner->Planen().forstaLek,
                                          luckor.end(), [](const Lucka& l) { return !l.Tom(); }));
}

// Watches the play view while a game is being dealt onto it: what held when its first
// picture was drawn, and the table as the screen showed it now and then.
class Givning : public QObject {
public:
    explicit Givning(FjolkWin& fonster) : win(fonster) { win.SpelVy()->installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* e) override {
        if (e->type() != QEvent::Paint)
            return false;
        FjolkView* vy = win.SpelVy();
        if (vy->SpeletPaBordet() == nullptr || vy->Spel() != nullptr)
            return false;
        if (malningar++ == 0) {
            synlig = vy->isVisible();
            paSkarmen = win.windowHandle()->isExposed();
            valkomstDold = !win.ValkomstVy()->isVisible();
            titel = win.windowTitle();
            spelet = vy->SpeletPaBordet();
        }
        if (malningar % 50 == 0)
            bilder.push_back(Bordet());
        return false;
    }

    // The play view's part of the window, as it is on the screen.
    QImage Bordet() const {
        FjolkView* vy = win.SpelVy();
        return PaSkarmen(win, QRect(vy->mapTo(&win, QPoint(0, 0)), vy->size()));
    }

    FjolkWin& win;
    int malningar = 0;
    bool synlig = false;
    bool paSkarmen = false;
    bool valkomstDold = false;
    QString titel;
    const Patiens* spelet = nullptr;
    std::vector<QImage> bilder;
};

// The first deal seen through `g`: the view was shown and on the screen, held the game from
// its first picture on, and a picture taken halfway shows the green table with some of the
// cards dealt, fewer than at the end.
void ForstaGivenSyntes(Givning& g, Korning& k, const char* titel) {
    QVERIFY(k.Vy().Spel() != nullptr);
    QVERIFY(g.malningar > 100);
    QVERIFY(g.synlig);
    QVERIFY(g.paSkarmen);
    QVERIFY(g.valkomstDold);
    QCOMPARE(g.titel, QString::fromUtf8(titel));
    QCOMPARE(g.spelet, k.Vy().Spel());
    QVERIFY(g.bilder.size() >= 3);
    const QImage& mitt = g.bilder[g.bilder.size() / 2];
    QImage slut = g.Bordet();
    int gront = Antal(mitt, kGron);
    int kort = Antal(mitt, kFramsida);
    QVERIFY2(gront > mitt.width() * mitt.height() / 3, qPrintable(QString::number(gront)));
    QVERIFY2(kort > 2000, qPrintable(QString::number(kort)));
    QVERIFY2(kort < Antal(slut, kFramsida), qPrintable(QString::number(kort)));
}

} // namespace

class SkarmTest : public QObject {
    Q_OBJECT

private slots:
    // Freecell chosen in the list with two clicks: the play view is shown first and the
    // deal flies onto it.
    void forstaGivenFlygerPaBordetFranListan() {
        StegKlocka klocka;
        std::srand(3);
        Korning k(true);
        QVERIFY(QTest::qWaitForWindowExposed(k.win.get()));
        Behandla();
        QVERIFY(k.win->Animering());
        Givning g(*k.win);
        SpelOLLView* lista = k.win->ValkomstVy()->spelLista;
        QPoint rad = lista->visualItemRect(lista->item(kFreecell)).center();
        QTest::mouseClick(lista->viewport(), Qt::LeftButton, Qt::NoModifier, rad);
        QTest::mouseClick(lista->viewport(), Qt::LeftButton, Qt::NoModifier, rad);
        QVERIFY(QTest::qWaitFor([&] { return k.Vy().Spel() != nullptr; }, 60000));
        ForstaGivenSyntes(g, k, "Fjolks Patience - Freecell");
        QCOMPARE(KvarILeken(k.Vy().Spel()), 0);
    }

    // --game: the window is put on the screen showing the play view, and only then is the
    // game dealt onto it, its flights on the screen.
    void forstaGivenFlygerPaBordetFranKommandoraden() {
        StegKlocka klocka;
        std::srand(3);
        Korning k(true);
        // Not on the screen yet, as a window is before the window system has shown it.
        k.win->hide();
        Behandla();
        QVERIFY(!k.win->windowHandle()->isExposed());
        Givning g(*k.win);
        k.win->StartaSpel(kEightoff);
        Behandla();
        QVERIFY(k.win->VisarSpel());
        QVERIFY(k.Vy().SpeletPaBordet() == nullptr);
        k.win->show();
        QVERIFY(QTest::qWaitFor([&] { return k.Vy().Spel() != nullptr; }, 60000));
        ForstaGivenSyntes(g, k, "Fjolks Patience - Eight off");
        QCOMPARE(KvarILeken(k.Vy().Spel()), 0);
    }

    // "New Deal": the alert has painted its text while the new deal's first cards fly, long
    // before the last one.
    void hiInfoMalasMedanKortenFlyger() {
        StegKlocka klocka;
        std::srand(3);
        Korning k(true);
        QVERIFY(QTest::qWaitForWindowExposed(k.win.get()));
        k.Posta(kStartaSpel0 + kFreecell);
        QVERIFY(QTest::qWaitFor([&] { return k.Vy().Spel() != nullptr; }, 60000));

        struct Varning : QObject {
            Korning& k;
            int kvarVidText = -1;
            QString text;
            QImage bild;
            explicit Varning(Korning& korning) : k(korning) {}
            bool eventFilter(QObject* o, QEvent* e) override {
                auto* etikett = qobject_cast<QLabel*>(o);
                if (e->type() == QEvent::Paint && etikett != nullptr && kvarVidText < 0 &&
                    etikett->window()->objectName() == QStringLiteral("Hi Info") &&
                    !etikett->text().isEmpty()) {
                    kvarVidText = KvarILeken(k.Vy().Spel());
                    text = etikett->text();
                } else if (e->type() == QEvent::Paint && o == k.win->SpelVy() && kvarVidText > 0 &&
                           bild.isNull() && k.win->HiInfo() != nullptr) {
                    QMessageBox* info = k.win->HiInfo();
                    bild = PaSkarmen(*info, info->rect());
                }
                return false;
            }
        } varning(k);
        qApp->installEventFilter(&varning);
        k.Posta(kNyGiv);
        QVERIFY(QTest::qWaitFor(
            [&] { return k.win->HiInfo() != nullptr && KvarILeken(k.Vy().Spel()) == 0; }, 60000));
        qApp->removeEventFilter(&varning);

        QCOMPARE(varning.text, QStringLiteral("You are number 1 on the Hiscoretable!"));
        // Painted during the deal, with cards still to fly after it.
        QVERIFY2(varning.kvarVidText > 1, qPrintable(QString::number(varning.kvarVidText)));
        // And on the screen then: the alert's text, dark on its light face.
        QVERIFY(!varning.bild.isNull());
        int morka = 0;
        for (int y = 0; y < varning.bild.height(); ++y)
            for (int x = 0; x < varning.bild.width(); ++x)
                morka += qGray(varning.bild.pixel(x, y)) < 80;
        QVERIFY2(morka > 100, qPrintable(QString::number(morka)));
    }

    // Mid-flight, a posted "New Deal" and "Undo" and a click on a card reach the program:
    // the commands wait until the deal is over, and the click starts no gesture.
    void ingentingTarSigInMittIFlygningen() {
        StegKlocka klocka;
        std::srand(3);
        Korning k(true);
        QVERIFY(QTest::qWaitForWindowExposed(k.win.get()));
        k.Posta(kStartaSpel0 + kFreecell);
        QVERIFY(QTest::qWaitFor([&] { return k.Vy().Spel() != nullptr; }, 60000));

        struct Storning : QObject {
            Korning& k;
            int malningar = 0;
            int forraKvar = 52;
            bool forstaKlar = false;
            bool omborjad = false;
            int hiInfoUnderGiven = 0;
            bool gestStartad = false;
            bool skickat = false;
            bool underFlygning = false;
            explicit Storning(Korning& korning) : k(korning) {}
            bool eventFilter(QObject* o, QEvent* e) override {
                if (e->type() != QEvent::Paint || o != k.win->SpelVy())
                    return false;
                int kvar = KvarILeken(k.Vy().Spel());
                forstaKlar = forstaKlar || (kvar == 0 && malningar > 0);
                if (forstaKlar || kvar <= 0 || (kvar == 52 && forraKvar == 52))
                    return false;
                // The deal only ever goes on: a deal begun again would put cards back.
                omborjad = omborjad || kvar > forraKvar;
                forraKvar = kvar;
                hiInfoUnderGiven = std::max(
                    hiInfoUnderGiven,
                    int(k.win->findChildren<QMessageBox*>(QStringLiteral("Hi Info")).size()));
                if (++malningar == 200) {
                    // Comes in through the screen's events while the cards fly.
                    QTimer::singleShot(0, [this] {
                        underFlygning = k.Vy().Arbetar() && KvarILeken(k.Vy().Spel()) > 0;
                        k.Posta(kNyGiv);
                        k.Posta(kAngra);
                        const Patiens& spel = *k.Vy().Spel();
                        int kort = 0;
                        while (spel.Luckor()[kort].Tom())
                            ++kort;
                        BPoint p = Mitt(spel.Luckor()[kort].GePos());
                        QTest::mousePress(&k.Vy(), Qt::LeftButton, Qt::NoModifier, ToQPoint(p));
                        gestStartad = k.Vy().GestPagar();
                        QTest::mouseRelease(&k.Vy(), Qt::LeftButton, Qt::NoModifier, ToQPoint(p));
                        skickat = true;
                    });
                }
                return false;
            }
        } storning(k);
        k.win->SpelVy()->installEventFilter(&storning);
        k.Posta(kNyGiv);
        QVERIFY(QTest::qWaitFor([&] { return storning.skickat; }, 60000));
        // The first new deal ends, then the waiting one is dealt.
        QVERIFY(QTest::qWaitFor(
            [&] {
                return k.win->findChildren<QMessageBox*>(QStringLiteral("Hi Info")).size() == 2 &&
                       KvarILeken(k.Vy().Spel()) == 0 && !k.Vy().Arbetar();
            },
            60000));
        Behandla();
        k.win->SpelVy()->removeEventFilter(&storning);

        QVERIFY(storning.underFlygning);
        QVERIFY(!storning.omborjad);
        QCOMPARE(storning.hiInfoUnderGiven, 1);
        QVERIFY(!storning.gestStartad);
        QVERIFY(!k.Vy().GestPagar());
        // The click made no move, and Undo found nothing to take back.
        QVERIFY(!k.Vy().Spel()->Has_Undos());
        QCOMPARE(k.Vy().Spel()->AntalUndo(), 0);
        QCOMPARE(k.win->findChildren<QMessageBox*>(QStringLiteral("Hi Info")).size(), qsizetype(2));
    }

    // A Freecell card dragged over the menu bar and past the window's edge: its picture
    // stays under the pointer, with the same hot spot, and goes when it is released.
    void dragbildenSynsOverMenyradenOchUtanforFonstret() {
        std::srand(3);
        Korning k(false);
        QVERIFY(QTest::qWaitForWindowExposed(k.win.get()));
        k.Posta(kStartaSpel0 + kFreecell);
        Behandla();
        FjolkView& vy = k.Vy();
        QVERIFY(vy.Spel() != nullptr);
        const std::vector<Lucka>& luckor = vy.Spel()->Luckor();
        int topp = Toppen(luckor, 0);
        BRect kortRam = luckor[topp].GePos();
        Kort kortet = luckor[topp].GeKort();
        BPoint tryck = Mitt(kortRam);

        QMenuBar* meny = k.win->menuBar();
        QPoint overMenyn = vy.mapFromGlobal(meny->mapToGlobal(QPoint(150, meny->height() / 2)));
        QVERIFY(overMenyn.y() < 0);
        TryckOchDra(vy, tryck, ToBPoint(QPointF(overMenyn)));
        QVERIFY(vy.drar);
        const DragFonster* drag = vy.DragBild();
        QVERIFY(drag != nullptr);
        QVERIFY(drag->isVisible());
        QPoint pekare = vy.mapToGlobal(overMenyn);
        QPoint hornet = pekare - ToQPoint(tryck - kortRam.LeftTop());
        QCOMPARE(drag->geometry(), QRect(hornet, ToQRect(kortRam).size()));
        QVERIFY(QRect(meny->mapToGlobal(QPoint(0, 0)), meny->size()).contains(pekare));

        // On the screen, once it has painted: the card's face in its own colours, made half
        // transparent.
        Behandla();
        QImage sett = PaSkarmen(*drag, drag->rect());
        QImage ansikte = KortSpel::mp_kortbitmap.copy(ToQRect(kortet.GePos()));
        int lika = 0;
        int jamforda = 0;
        for (int y = 0; y < ansikte.height(); ++y)
            for (int x = 0; x < ansikte.width(); ++x) {
                QRgb a = ansikte.pixel(x, y);
                if (qAlpha(a) != 255)
                    continue;
                ++jamforda;
                QRgb s = sett.pixel(x, y);
                lika += std::abs(qRed(a) - qRed(s)) <= 2 && std::abs(qGreen(a) - qGreen(s)) <= 2 &&
                        std::abs(qBlue(a) - qBlue(s)) <= 2;
            }
        QVERIFY(jamforda > 1000);
        QCOMPARE(lika, jamforda);
        QCOMPARE(drag->windowOpacity(), 200.0 / 255.0);
        QVERIFY(drag->mask().contains(QPoint(ansikte.width() / 2, ansikte.height() / 2)));
        QVERIFY(!drag->mask().contains(QPoint(0, 0)));

        // Past the window's right edge.
        QPoint ute = vy.mapFromGlobal(k.win->frameGeometry().topRight() + QPoint(80, 60));
        QMouseEvent flytt(QEvent::MouseMove, QPointF(ute), vy.mapToGlobal(QPointF(ute)),
                          Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&vy, &flytt);
        pekare = vy.mapToGlobal(ute);
        QVERIFY(drag->isVisible());
        QCOMPARE(drag->geometry().topLeft(), pekare - ToQPoint(tryck - kortRam.LeftTop()));
        QVERIFY(!k.win->frameGeometry().intersects(drag->geometry()));

        QTest::mouseRelease(&vy, Qt::LeftButton, Qt::NoModifier, ute);
        QVERIFY(!drag->isVisible());
        QVERIFY(!vy.GestPagar());
        QVERIFY(vy.Spel()->Luckor()[topp].GeKort() == kortet);
        QVERIFY(!vy.Spel()->Has_Undos());
    }
};

QTEST_MAIN(SkarmTest)
#include "test_skarm.moc"
