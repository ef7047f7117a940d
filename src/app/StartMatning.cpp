#include "app/StartMatning.h"

#include "app/FjolkView.h"
#include "welcome/WelcomeView.h"

#include <QApplication>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace {

class ForstaBilden : public QObject {
public:
    explicit ForstaBilden(bool spel) : QObject(qApp), vantarSpel(spel) {}

    bool eventFilter(QObject* mal, QEvent* e) override {
        if (e->type() != QEvent::Paint || sett)
            return false;
        auto* vy = dynamic_cast<FjolkView*>(mal);
        bool ratt = vantarSpel ? (vy != nullptr && vy->SpeletPaBordet() != nullptr)
                               : dynamic_cast<WelcomeView*>(mal) != nullptr;
        if (!ratt)
            return false;
        sett = true;
        // Reported once this paint is done and on its way to the screen.
        QTimer::singleShot(0, [] {
            auto nu = std::chrono::system_clock::now().time_since_epoch();
            std::printf("first-paint %.6f\n", std::chrono::duration<double>(nu).count());
            std::fflush(stdout);
            QCoreApplication::exit(0);
        });
        return false;
    }

private:
    bool vantarSpel;
    bool sett = false;
};

} // namespace

void MatForstaBilden(bool spel) {
    if (std::getenv("FJOLK_STARTUP_PROBE") == nullptr)
        return;
    qApp->installEventFilter(new ForstaBilden(spel));
}
