#include "app/LosarTrad.h"

#include <QMetaObject>

LosarTrad::LosarTrad(QObject* m, Svar svar) : mottagare(m), besvara(std::move(svar)) {
    trad = std::jthread([this](std::stop_token slut) { Kor(slut); });
}

LosarTrad::~LosarTrad() {
    {
        std::lock_guard<std::mutex> l(las);
        pagaende.request_stop();
        nasta.reset();
    }
    trad.request_stop();
    vakna.notify_all();
    trad.join();
}

void LosarTrad::Fraga(int id, const SpelRegler& regler, const SpelBord& bord, SokGranser granser) {
    {
        std::lock_guard<std::mutex> l(las);
        pagaende.request_stop();
        nasta = Begaran{id, &regler, bord.Kopia(), granser};
    }
    vakna.notify_all();
}

void LosarTrad::Avbryt() {
    std::lock_guard<std::mutex> l(las);
    pagaende.request_stop();
    nasta.reset();
}

void LosarTrad::SattTestKrok(SokKrok krok) {
    std::lock_guard<std::mutex> l(las);
    testKrok = std::move(krok);
}

void LosarTrad::Kor(std::stop_token slut) {
    while (true) {
        Begaran fraga;
        std::stop_token stopp;
        SokKrok krok;
        {
            std::unique_lock<std::mutex> l(las);
            if (!vakna.wait(l, slut, [this] { return nasta.has_value(); }))
                return;
            fraga = std::move(*nasta);
            nasta.reset();
            pagaende = std::stop_source();
            stopp = pagaende.get_token();
            krok = testKrok;
        }
        SokSvar svar = Los(*fraga.regler, *fraga.bord, fraga.granser, stopp, krok);
        if (svar.avbruten)
            continue;
        QMetaObject::invokeMethod(
            mottagare, [svar = std::move(svar), id = fraga.id, f = besvara] { f(id, svar); },
            Qt::QueuedConnection);
    }
}
