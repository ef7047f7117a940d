#include "app/FjolkView.h"
#include "app/FjolkWin.h"
#include "app/FonsterRam.h"
#include "app/Spelhjalp.h"
#include "app/Tangentbord.h"
#include "app/TillgangligtBord.h"
#include "cards/Hiscore.h"
#include "cards/Hogar.h"
#include "games/Spelfabrik.h"
#include "platform/AttributeStore.h"
#include "platform/Meddelande.h"
#include "support/Gester.h"
#include "support/Hjalpkorning.h"
#include "support/Lyssnare.h"
#include "support/Tangenter.h"
#include "support/Testbord.h"
#include "welcome/WelcomeView.h"

#include <QAccessible>
#include <QCheckBox>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cstdlib>

// What a screen reader hears of a game: each move, whichever hand made it, told once in
// words as a notification of the table; the place in the frame as the focus; "won" and the
// hiscore alert's text at the end; undo and redo; and nothing at all while none listens.

namespace {

// What reached the screen reader: the words of each notification shown, and the name of
// each object that got the focus, in the order they came.
struct Hort {
    bool utrop;
    QString text;
};

std::vector<Hort>& Horda() {
    static std::vector<Hort> horda;
    return horda;
}

void Lyssna(QAccessibleEvent* event) {
    QAccessibleInterface* objekt = event->accessibleInterface();
    if (objekt == nullptr)
        return;
    if (event->type() == QAccessible::ObjectShow && objekt->role() == QAccessible::Notification)
        Horda().push_back({true, objekt->text(QAccessible::Name)});
    else if (event->type() == QAccessible::Focus)
        Horda().push_back({false, objekt->text(QAccessible::Name)});
}

// The notifications heard since the last call, but for the cards taken up on the way.
QStringList Utropen() {
    QStringList texter;
    for (const Hort& h : std::exchange(Horda(), {}))
        if (h.utrop && !h.text.startsWith(QStringLiteral("holding ")))
            texter << h.text;
    return texter;
}

BordIOrd IOrd(const SpelRegler& regler, const SpelBord& bord) {
    return {regler.Hogar(bord), bord.luckor};
}

void VarjeSpel() {
    QTest::addColumn<int>("spelNr");
    for (int nr = 0; nr < kAntalSpel; ++nr)
        if (SpelFinns(nr))
            QTest::addRow("%s", SpelNamn(nr)) << nr;
}

// The listed moves of the table to try: none that shuffles, nor a press on a card over
// the stock, which makes two moves as one.
std::vector<Drag> Provade(const Patiens& spel, size_t hogst) {
    std::vector<Drag> dragen;
    for (const Drag& d : spel.Regler().LagligaDrag(spel.Tabell()))
        if (d.slag != DragSlag::NyttForsok && !(d.slag == DragSlag::Knapp && d.fran >= 0) &&
            spel.GestFor(d) && dragen.size() < hogst)
            dragen.push_back(d);
    return dragen;
}

Lucka MedKort(kortfarg farg, int valor, bool baksida = false) {
    Lucka lucka(BRect(0, 0, 10, 10), baksida);
    lucka.TaEmotKort(Kort(farg, valor, BRect(0, 0, 10, 10)));
    return lucka;
}

Lucka Tom(bool baksida = false) {
    return Lucka(BRect(0, 0, 10, 10), baksida);
}

// Eight off with the foundations built up to the queens and the four kings in the columns:
// four moves from won.
void NastanVunnet(FjolkView& vy) {
    Patiens& spel = *vy.Spel();
    TommaBordet(spel);
    auto lagg = [&](int i, kortfarg farg, int valor) { LaggKort(spel, i, farg, valor); };
    for (int f = 0; f < 4; ++f) {
        auto farg = static_cast<kortfarg>(f);
        for (int v = 1; v <= 12; ++v)
            lagg(192 + 13 * f + v - 1, farg, v);
        lagg(22 * f, farg, 13);
    }
    spel.KlarSpel();
    vy.InvalidateOffscreen();
}

// The listed move that puts a king home.
std::optional<Drag> KungHem(const Patiens& spel) {
    for (const Drag& d : spel.Regler().LagligaDrag(spel.Tabell()))
        if (d.till >= 192)
            return d;
    return std::nullopt;
}

} // namespace

class TillganglighetTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        AttributeStore::SetDataDirectory(dir.path().toStdString());
        QAccessible::installUpdateHandler(Lyssna);
        SattTillganglighet(true);
    }
    void init() {
        SattTillganglighet(true);
        Horda().clear();
    }

    void andringIOrd() {
        BordIOrd fore;
        fore.hogar = {{HogSlag::Kolumn, 3, 0, 4},
                      {HogSlag::Kolumn, 5, 5, 9},
                      {HogSlag::Grund, 2, 10, 12},
                      {HogSlag::Lek, 0, 13, 15},
                      {HogSlag::Avfall, 0, 16, 18}};
        fore.luckor = {MedKort(SPADER, 13),
                       MedKort(HJARTER, 12),
                       MedKort(KLOVER, 11),
                       Tom(),
                       Tom(),
                       MedKort(RUTER, 4),
                       Tom(),
                       Tom(),
                       Tom(),
                       Tom(),
                       MedKort(KLOVER, 1),
                       Tom(),
                       Tom(),
                       MedKort(HJARTER, 2, true),
                       Tom(true),
                       Tom(true),
                       MedKort(SPADER, 5),
                       MedKort(SPADER, 6),
                       Tom()};
        QCOMPARE(BeskrivAndring(fore, fore), std::string());

        // A run of two from column 3 to column 5, named by the card it was taken by.
        BordIOrd efter = fore;
        efter.luckor[1] = Tom();
        efter.luckor[2] = Tom();
        efter.luckor[6] = MedKort(HJARTER, 12);
        efter.luckor[7] = MedKort(KLOVER, 11);
        QCOMPARE(BeskrivAndring(fore, efter),
                 std::string("queen of hearts and 1 more from column 3 to column 5"));

        // One card home, and one taken off the table.
        efter = fore;
        efter.luckor[2] = Tom();
        efter.luckor[11] = MedKort(KLOVER, 11);
        efter.luckor[5] = Tom();
        QCOMPARE(BeskrivAndring(fore, efter),
                 std::string("jack of clubs from column 3 to foundation 2; four of diamonds "
                             "removed from column 5"));

        // The waste turned over onto the stock: face down, the cards are not named.
        efter = fore;
        efter.luckor[16] = Tom();
        efter.luckor[17] = Tom();
        efter.luckor[15] = MedKort(SPADER, 5, true);
        efter.luckor[14] = MedKort(SPADER, 6, true);
        QCOMPARE(BeskrivAndring(fore, efter), std::string("2 cards from waste to stock"));
        efter.luckor[14] = Tom(true);
        QCOMPARE(BeskrivAndring(fore, efter),
                 std::string("a card from waste to stock; six of spades removed from waste"));
    }

    void mangaAndringar() {
        // A deal from the stock to four columns is told by its number of cards.
        BordIOrd fore;
        for (int k = 0; k < 4; ++k)
            fore.hogar.push_back({HogSlag::Kolumn, k + 1, 2 * k, 2 * k + 1});
        fore.hogar.push_back({HogSlag::Lek, 0, 8, 11});
        fore.luckor.assign(12, Tom());
        for (int i = 8; i < 12; ++i)
            fore.luckor[i] = MedKort(RUTER, i, true);
        BordIOrd efter = fore;
        for (int k = 0; k < 4; ++k) {
            efter.luckor[8 + k] = Tom(true);
            efter.luckor[2 * k] = MedKort(RUTER, 8 + k);
        }
        QCOMPARE(BeskrivAndring(fore, efter), std::string("4 cards from stock to 4 piles"));
        // Another card from column 2 to column 1 as well: two sources.
        fore.luckor[3] = MedKort(SPADER, 1);
        efter.luckor[1] = MedKort(SPADER, 1);
        QCOMPARE(BeskrivAndring(fore, efter), std::string("5 cards moved"));
    }

    // For every game, each move made with the keys is told once, in the words of what the
    // rules' own move makes of the table; the focus stays on the frame's place, read by its
    // own name.
    void dragMedTangenterSagsEnGang_data() { VarjeSpel(); }
    void dragMedTangenterSagsEnGang() {
        QFETCH(int, spelNr);
        auto vy = VyMedSpel(spelNr, 7, 1280, 1024);
        Patiens& spel = *vy->Spel();
        const SpelRegler& regler = spel.Regler();
        QAccessibleInterface* bord = QAccessible::queryAccessibleInterface(vy.get());
        auto fore = spel.Tabell().Kopia();
        int provade = 0;
        for (const Drag& d : Provade(spel, 6)) {
            spel.Tabell().TaFran(*fore);
            vy->InvalidateOffscreen();
            auto efter = EfterDrag(regler, *fore, d, 11);
            std::string vantat = BeskrivAndring(IOrd(regler, *fore), IOrd(regler, *efter));
            QVERIFY2(!vantat.empty(), Beskriv(d).c_str());
            Horda().clear();
            std::srand(11);
            QCOMPARE(GorMedTangenter(*vy, *spel.GestFor(d)), QString());
            QCOMPARE(Utropen(), QStringList{QString::fromStdString(vantat)});
            QCOMPARE(vy->Meddelat(), vantat);
            const BordsPlats* har = vy->Tangenterna().FokusPlats();
            QVERIFY(har != nullptr);
            QCOMPARE(bord->focusChild(), bord->child(vy->Tangenterna().Fokus()));
            QVERIFY(bord->focusChild()->state().focused);
            QCOMPARE(bord->focusChild()->text(QAccessible::Name),
                     QString::fromStdString(har->namn));
            ++provade;
        }
        QVERIFY(provade > 0);
    }

    // A move made with the mouse is told as well, and a click that moves nothing is not.
    void dragMedMusenSags_data() { VarjeSpel(); }
    void dragMedMusenSags() {
        QFETCH(int, spelNr);
        auto vy = VyMedSpel(spelNr, 8, 1280, 1024);
        Patiens& spel = *vy->Spel();
        const SpelRegler& regler = spel.Regler();
        auto fore = spel.Tabell().Kopia();
        std::vector<Drag> dragen = Provade(spel, 1);
        QVERIFY(!dragen.empty());
        std::srand(12);
        auto efter = EfterDrag(regler, *fore, dragen.front(), 12);
        std::srand(12);
        GorGest(*vy, *spel.GestFor(dragen.front()));
        QVERIFY(spel.Tabell().Lika(*efter));
        QCOMPARE(Utropen(), QStringList{QString::fromStdString(
                                BeskrivAndring(IOrd(regler, *fore), IOrd(regler, *efter)))});
        KlickaPa(*vy, BPoint(2, 1020));
        QCOMPARE(Utropen(), QStringList());
    }

    // Keys that move nothing say so; cards taken up are named; Escape puts them back.
    void tangenterUtanDrag() {
        // Freecell, seed 3: column 8 ends in the jack of diamonds, column 7 in the six of
        // spades.
        auto vy = VyMedSpel(8, 3, 1280, 1024);
        Tangent(*vy, Qt::Key_End);
        QCOMPARE(vy->Tangenterna().FokusPlats()->namn.substr(0, 29),
                 std::string("column 8: jack of diamonds on"));
        Tangent(*vy, Qt::Key_Left);
        Horda().clear();
        Tangent(*vy, Qt::Key_Period);
        QCOMPARE(vy->Meddelat(), std::string("holding six of spades"));
        Tangent(*vy, Qt::Key_Right);
        QCOMPARE(Horda().back().utrop, false);
        QCOMPARE(Horda().back().text.left(9), QStringLiteral("column 8:"));
        Tangent(*vy, Qt::Key_Return);
        QCOMPARE(vy->Meddelat(), std::string("nothing moved"));
        Tangent(*vy, Qt::Key_Period);
        Tangent(*vy, Qt::Key_Escape);
        QCOMPARE(vy->Meddelat(), std::string("put back"));
        Tangent(*vy, Qt::Key_Home);
        Horda().clear();
        Tangent(*vy, Qt::Key_Period);
        QCOMPARE(vy->Meddelat(), std::string("nothing to take"));
        Tangent(*vy, Qt::Key_End);
        Tangent(*vy, Qt::Key_Return);
        QCOMPARE(Utropen(),
                 QStringList({QStringLiteral("nothing to take"),
                              QStringLiteral("jack of diamonds from column 8 to free cell 1")}));
    }

    // Idioten 1's "Next try" on the table: the frame coming to it says "Next try button", and
    // the place is a button named "Next try", so a screen reader that reads the table's
    // places and names the role itself does not say "button" twice.
    void knappenSagsSomKnappEnGang() {
        auto vy = VyMedSpel(0, 3, 1280, 1024);
        const std::vector<BordsPlats>& platser = vy->Tangenterna().Platserna();
        auto knapp = std::find_if(platser.begin(), platser.end(),
                                  [](const BordsPlats& p) { return p.knapp >= 0; });
        QVERIFY(knapp != platser.end());
        const int k = static_cast<int>(knapp - platser.begin());
        TillPlats(*vy, k);
        QCOMPARE(vy->Tangenterna().Fokus(), k);
        QCOMPARE(vy->Meddelat(), std::string("Next try button"));
        QAccessibleInterface* bord = QAccessible::queryAccessibleInterface(vy.get());
        QVERIFY(bord != nullptr && bord->child(k) != nullptr);
        QCOMPARE(bord->child(k)->role(), QAccessible::Button);
        QCOMPARE(bord->child(k)->text(QAccessible::Name), QStringLiteral("Next try"));
    }

    // The last move tells what it did and "won", then the window's hiscore alert its text;
    // undo and redo tell what they did after their own word.
    void vinstOchAngra() {
        QTemporaryDir egen;
        AttributeStore::SetDataDirectory(egen.path().toStdString());
        BRect ram = GetWindowSize(AttributeStore::Program(), BRect(0, 0, 1023, 767));
        auto win = std::make_unique<FjolkWin>(ram, AttributeStore::Program());
        win->ValkomstVy()->animeringsRuta->setChecked(false);
        Behandla();
        QCoreApplication::postEvent(win.get(), new Meddelande(kStartaSpel0 + 9));
        Behandla();
        FjolkView& vy = *win->SpelVy();
        QVERIFY(vy.Spel() != nullptr);
        NastanVunnet(vy);
        Horda().clear();

        std::optional<Drag> hem = KungHem(*vy.Spel());
        QVERIFY(hem.has_value());
        QCOMPARE(GorMedTangenter(vy, *vy.Spel()->GestFor(*hem)), QString());
        QCOMPARE(Utropen(),
                 QStringList{QStringLiteral("king of hearts from column 1 to foundation 1")});
        QCoreApplication::postEvent(win.get(), new Meddelande(kAngra));
        Behandla();
        QCOMPARE(Utropen(),
                 QStringList{QStringLiteral("undo: king of hearts from foundation 1 to column 1")});
        QCoreApplication::postEvent(win.get(), new Meddelande(kGorOm));
        Behandla();
        QCOMPARE(Utropen(),
                 QStringList{QStringLiteral("redo: king of hearts from column 1 to foundation 1")});

        for (int kvar = 3; kvar > 0; --kvar) {
            hem = KungHem(*vy.Spel());
            QVERIFY(hem.has_value());
            QCOMPARE(GorMedTangenter(vy, *vy.Spel()->GestFor(*hem)), QString());
        }
        Behandla();
        QStringList hort = Utropen();
        QCOMPARE(hort.size(), 5);
        QCOMPARE(hort[0], QStringLiteral("king of diamonds from column 2 to foundation 2"));
        QCOMPARE(hort[1], QStringLiteral("king of clubs from column 3 to foundation 3"));
        QCOMPARE(hort[2], QStringLiteral("king of spades from column 4 to foundation 4"));
        QCOMPARE(hort[3], QStringLiteral("won"));
        QVERIFY(win->HiInfo() != nullptr);
        QCOMPARE(hort[4], win->HiInfo()->text());
        QCOMPARE(hort[4], QStringLiteral("You are number 1 on the Hiscoretable!"));
        win.reset();
        AttributeStore::SetDataDirectory(dir.path().toStdString());
    }

    // What the table's notice shows (a hint, an answer, a lost deal) is heard too.
    void notisenHors() {
        auto vy = VyMedSpel(8, 3, 1280, 1024);
        auto* notis = new Bordsnotis(vy.get());
        Horda().clear();
        notis->Visa(QStringLiteral("Hint: jack of diamonds from column 8 to free cell 1"));
        QCOMPARE(Utropen(), QStringList{QStringLiteral(
                                "Hint: jack of diamonds from column 8 to free cell 1")});
    }

    // Looking for a winnable deal is told once, not once for every deal tried, and what was
    // found is told at the end.
    void givSokningenSagsEnGang() {
        {
            Korning k;
            k.win->show();
            QVERIFY(QTest::qWaitForWindowExposed(k.win.get()));
            k.Hjalp().vinnbaraRuta->setChecked(true);
            std::srand(5);
            Horda().clear();
            k.Posta(kStartaSpel0 + 2);
            QTRY_VERIFY_WITH_TIMEOUT(!k.Hjalp().SokerGiv(), kVantaPaLosaren);
            QStringList hort = Utropen();
            const QString sista = k.Hjalp().notis->Text();
            QVERIFY2(sista.startsWith(QStringLiteral("Deal ")) ||
                         sista.startsWith(QStringLiteral("None of the ")),
                     qPrintable(sista));
            QCOMPARE(hort.filter(QStringLiteral("Looking for a deal")),
                     QStringList{QStringLiteral("Looking for a deal that can be won (deal 1)...")});
            QVERIFY2(hort.contains(sista), qPrintable(hort.join(QStringLiteral(" | "))));
        }
        AttributeStore::SetDataDirectory(dir.path().toStdString());
    }

    // While no screen reader listens nothing is told: no notification, no focus event, no
    // words kept.
    void ingenLyssnar() {
        SattTillganglighet(false);
        QVERIFY(!TillgangligtBord::Lyssnar());
        auto vy = VyMedSpel(8, 3, 1280, 1024);
        Tangent(*vy, Qt::Key_End);
        Tangent(*vy, Qt::Key_Return);
        Tangent(*vy, Qt::Key_Left);
        Tangent(*vy, Qt::Key_Period);
        Tangent(*vy, Qt::Key_Escape);
        std::vector<Drag> dragen = Provade(*vy->Spel(), 1);
        QVERIFY(!dragen.empty());
        GorGest(*vy, *vy->Spel()->GestFor(dragen.front()));
        QVERIFY(vy->Spel()->Has_Undos());
        QCOMPARE(vy->Meddelat(), std::string());
        QCOMPARE(Horda().size(), size_t(0));
        SattTillganglighet(true);
        QVERIFY(TillgangligtBord::Lyssnar());
    }

private:
    QTemporaryDir dir;
};

QTEST_MAIN(TillganglighetTest)
#include "test_tillganglighet.moc"
