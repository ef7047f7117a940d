#pragma once

#include "app/FjolkView.h"
#include "app/FjolkWin.h"
#include "app/Spelhjalp.h"
#include "cards/Hiscore.h"
#include "games/Spelfabrik.h"
#include "platform/AttributeStore.h"
#include "platform/Meddelande.h"
#include "support/Gester.h"
#include "welcome/WelcomeView.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <cstdlib>
#include <memory>
#include <string>
#include <thread>

// The longest a test waits for the solver's answer.
inline constexpr int kVantaPaLosaren = 60000;

// One run of the program on its own data folder, cards moving at once.
struct Korning {
    QTemporaryDir dir;
    std::unique_ptr<FjolkWin> win;

    explicit Korning(BRect ram = BRect(0, 0, 800, 600)) {
        AttributeStore::SetDataDirectory(dir.path().toStdString());
        win = std::make_unique<FjolkWin>(ram, AttributeStore::Program());
        win->ValkomstVy()->animeringsRuta->setChecked(false);
        win->ValkomstVy()->spelarFalt->setText(QStringLiteral("Spelare"));
        Behandla();
    }
    Spelhjalp& Hjalp() { return *win->Hjalp(); }
    FjolkView& Vy() { return *win->SpelVy(); }
    Patiens& Spel() { return *win->SpelVy()->Spel(); }
    void Posta(type_code what) {
        QCoreApplication::postEvent(win.get(), new Meddelande(what));
        Behandla();
    }
    // Game `spel` dealt with random numbers seeded by `fro`.
    void Starta(int spel, unsigned fro) {
        std::srand(fro);
        win->InitSpel(spel, TitelNamn(spel));
        win->SpelVy()->TaEmotSpel(
            [&] { return SkapaSpel(spel, win->SpelVy(), win->SpelVy()->Bounds(), false); });
        win->MenusBeginning();
        Behandla();
    }
    void Gor(const Drag& d) {
        std::optional<Gest> gest = Spel().GestFor(d);
        QVERIFY2(gest.has_value(), Beskriv(d).c_str());
        GorGest(Vy(), *gest);
        Behandla();
    }
    void VantaPaSvar() { QTRY_VERIFY_WITH_TIMEOUT(!Hjalp().Soker(), kVantaPaLosaren); }
    HighScoreTable Forsta(int spel) {
        HiscoreLista tabell{};
        std::string namn = "FJOLK:Spel" + std::to_string(spel);
        AttributeStore::Program().ReadAttr(namn.c_str(), B_RAW_TYPE, 0, tabell.data(),
                                           sizeof tabell);
        return tabell[0];
    }
};

// Holds every search of a run's solver thread at its first check until `slapp` is set: the
// window's side of a search that takes long. Let go when it goes; the solver's thread may
// outlive it, so what the hook reads is shared with it.
struct HallnaSokningar {
    struct Lage {
        std::atomic<int> inne{0};
        std::atomic<bool> slapp{false};
    };
    std::shared_ptr<Lage> lage = std::make_shared<Lage>();
    std::atomic<int>& inne = lage->inne;
    std::atomic<bool>& slapp = lage->slapp;
    explicit HallnaSokningar(Korning& k) {
        k.Hjalp().Trad().SattTestKrok([l = lage] {
            ++l->inne;
            while (!l->slapp)
                std::this_thread::yield();
        });
    }
    ~HallnaSokningar() { slapp = true; }
};
