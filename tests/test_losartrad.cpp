#include "app/LosKommando.h"
#include "app/LosarTrad.h"
#include "games/Spelfabrik.h"

#include <QLineEdit>
#include <QTest>

#include <atomic>
#include <thread>
#include <vector>

// The answers that reached the test's thread, in order.
struct Svaren {
    QObject mottagare;
    std::vector<std::pair<int, SokSvar>> svar;
    std::thread::id trad;
    LosarTrad::Svar Tar() {
        return [this](int id, const SokSvar& s) {
            trad = std::this_thread::get_id();
            svar.emplace_back(id, s);
        };
    }
};

// The solver's thread: it answers a request through a queued call, a newer request
// cancels the older (whose answer never comes), and while a search is held up the window's
// thread goes on taking input.
class TestLosarTrad : public QObject {
    Q_OBJECT

private slots:
    void svararGenomEttKoatAnrop() {
        Svaren s;
        LosarTrad losare(&s.mottagare, s.Tar());
        auto bord = GivFor(3, 1);
        losare.Fraga(7, *ReglerFor(3), *bord, SokGranser{});
        QTRY_COMPARE_WITH_TIMEOUT(s.svar.size(), std::size_t(1), 60000);
        QCOMPARE(s.svar[0].first, 7);
        QVERIFY(s.trad == std::this_thread::get_id());
        const SokSvar& svar = s.svar[0].second;
        QCOMPARE(svar.utfall, Utfall::Vinnbar);
        QVERIFY(!svar.drag.empty());
    }

    void nyFragaAvbryterDenGamlaOchFonstretSvarar() {
        Svaren s;
        LosarTrad losare(&s.mottagare, s.Tar());
        std::atomic<bool> inne{false};
        std::atomic<bool> slapp{false};
        losare.SattTestKrok([&] {
            inne = true;
            while (!slapp)
                std::this_thread::yield();
        });
        auto svart = GivFor(8, 1); // a Freecell deal not decided within its first check
        losare.Fraga(1, *ReglerFor(8), *svart, SokGranser{});
        QTRY_VERIFY_WITH_TIMEOUT(inne.load(), 60000);

        // The search is held; the window's thread still takes typing.
        QLineEdit falt;
        falt.show();
        QTest::keyClicks(&falt, QStringLiteral("spelar"));
        QCOMPARE(falt.text(), QStringLiteral("spelar"));
        QVERIFY(s.svar.empty());

        auto latt = GivFor(3, 2);
        losare.Fraga(2, *ReglerFor(3), *latt, SokGranser{});
        slapp = true;
        QTRY_COMPARE_WITH_TIMEOUT(s.svar.size(), std::size_t(1), 60000);
        QCOMPARE(s.svar[0].first, 2);
        QCOMPARE(s.svar[0].second.utfall, Utfall::Vinnbar);
        // The first request's answer never comes.
        QTest::qWait(200);
        QCOMPARE(s.svar.size(), std::size_t(1));
    }

    void avbrytenFragaSvararInte() {
        Svaren s;
        LosarTrad losare(&s.mottagare, s.Tar());
        std::atomic<bool> inne{false};
        losare.SattTestKrok([&] { inne = true; });
        auto bord = GivFor(8, 1);
        losare.Fraga(3, *ReglerFor(8), *bord, SokGranser{});
        QTRY_VERIFY_WITH_TIMEOUT(inne.load(), 60000);
        losare.Avbryt();
        QTest::qWait(200);
        QVERIFY(s.svar.empty());
    }
};

QTEST_MAIN(TestLosarTrad)
#include "test_losartrad.moc"
