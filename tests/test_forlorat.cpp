#include "app/Spelhjalp.h"
#include "solver/Losare.h"
#include "support/Hjalpkorning.h"
#include "support/Smabord.h"

#include <QTest>

#include <array>
#include <functional>
#include <optional>
#include <vector>

// "Tell Me When the Deal Is Lost" on a small table laid out by hand in each game: the notice
// comes exactly on the move that loses, names it, and goes with Undo; the move that keeps the
// deal won-able says nothing.

namespace {

bool Listat(const SpelRegler& regler, const SpelBord& bord, const Drag& drag) {
    for (const Drag& d : regler.LagligaDrag(bord))
        if (d == drag)
            return true;
    return false;
}

QString Forlorade(const QString& drag, bool angraHjalper) {
    return QStringLiteral("The move ") + drag +
           (angraHjalper
                ? QStringLiteral(" lost this deal: it can no longer be won. Undo may help.")
                : QStringLiteral(" lost this deal: it can no longer be won."));
}

} // namespace

class TestForlorat : public QObject {
    Q_OBJECT

private:
    // The table laid out in a window with the option on, the window's verdict on it known.
    void Forbered(Korning& k, const Uppstallning& b) {
        // Switched on once the table is laid out: the dealt one is never searched.
        k.Starta(b.spel, 1);
        k.Hjalp().forlorasRuta->setChecked(true);
        LaggUt(k, b);
        k.Hjalp().EfterDrag();
        k.VantaPaSvar();
        QCOMPARE(k.Hjalp().Utfallet(), std::optional<Utfall>(Utfall::Vinnbar));
        const SpelRegler& regler = k.Spel().Regler();
        QVERIFY2(Listat(regler, k.Spel().Tabell(), b.forlorar), Beskriv(b.forlorar).c_str());
        QVERIFY2(Listat(regler, k.Spel().Tabell(), b.haller), Beskriv(b.haller).c_str());
    }

    void Prova(const Uppstallning& b) {
        Korning k;
        Forbered(k, b);
        if (QTest::currentTestFailed())
            return;
        // Undo counts itself on the table: the cards are compared.
        const std::vector<LuckaBild> start = Bordet(k.Spel());

        // The move that keeps the deal won-able: not a word.
        k.Gor(b.haller);
        k.VantaPaSvar();
        QCOMPARE(k.Hjalp().Utfallet(), std::optional<Utfall>(Utfall::Vinnbar));
        QCOMPARE(k.Hjalp().notis->Text(), QString());
        k.Posta(kAngra);
        k.VantaPaSvar();
        QVERIFY(Bordet(k.Spel()) == start);

        // The move that loses it: named, at once.
        QString ord =
            QString::fromStdString(DragIOrd(k.Spel().Regler(), k.Spel().Tabell(), b.forlorar));
        k.Gor(b.forlorar);
        k.VantaPaSvar();
        QCOMPARE(k.Hjalp().Utfallet(), std::optional<Utfall>(Utfall::Ovinnbar));
        const bool kanAngras = k.Spel().Has_Undos();
        QCOMPARE(k.Hjalp().notis->Text(), Forlorade(ord, kanAngras));
        if (!kanAngras)
            return;
        k.Posta(kAngra);
        k.VantaPaSvar();
        QVERIFY(Bordet(k.Spel()) == start);
        QCOMPARE(k.Hjalp().notis->Text(), QString());
        QCOMPARE(k.Hjalp().Utfallet(), std::optional<Utfall>(Utfall::Vinnbar));
    }

private slots:
    void forlorat_data() {
        QTest::addColumn<int>("spel");
        for (int spel : {0, 1, 2, 4, 5, 6, 7, 8, 9, 10, 11})
            QTest::newRow(SpelNamn(spel)) << spel;
    }
    void forlorat() {
        QFETCH(int, spel);
        Prova(SmaBord(spel));
    }

    // Kvarnen's redeal cannot be undone: the notice does not send the player to Undo, and it
    // stays until the next deal.
    void kvarnensOmgivKanInteAngras() {
        Korning k;
        Uppstallning b = SmaBord(4);
        Forbered(k, b);
        k.Gor(b.forlorar);
        k.VantaPaSvar();
        QVERIFY(!k.Spel().Has_Undos());
        QString text = k.Hjalp().notis->Text();
        QVERIFY2(text.endsWith(QStringLiteral("it can no longer be won.")), qPrintable(text));
        k.Posta(kAngra);
        QCOMPARE(k.Hjalp().notis->Text(), text);
    }

    // Tower of Hanoi cannot go from won-able to lost: a card goes into an empty tower or onto
    // a larger one, and every way the nine cards can lie in three towers can be sorted into
    // one (all 19,958,400 ways were searched back from the three won ones). Here a table where
    // every tower's top card covers a smaller one: won-able, and so after every listed move.
    void towerKanInteForloras() {
        Korning k;
        Uppstallning b = SmaBord(3);
        k.Starta(3, 1);
        k.Hjalp().forlorasRuta->setChecked(true);
        LaggUt(k, b);
        const SpelRegler& regler = k.Spel().Regler();
        std::vector<Drag> dragen = regler.LagligaDrag(k.Spel().Tabell());
        QCOMPARE(dragen.size(), std::size_t(3));
        QCOMPARE(Los(regler, k.Spel().Tabell()).utfall, Utfall::Vinnbar);
        for (const Drag& d : dragen) {
            auto efter = k.Spel().Tabell().Kopia();
            regler.GorDrag(*efter, d, nullptr);
            QCOMPARE(Los(regler, *efter).utfall, Utfall::Vinnbar);
        }
        k.Hjalp().EfterDrag();
        k.VantaPaSvar();
        for (const Drag& d : dragen) {
            k.Gor(d);
            k.VantaPaSvar();
            QCOMPARE(k.Hjalp().notis->Text(), QString());
            k.Posta(kAngra);
            k.VantaPaSvar();
        }
    }
};

QTEST_MAIN(TestForlorat)
#include "test_forlorat.moc"
