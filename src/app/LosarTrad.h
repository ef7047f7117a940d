#pragma once

#include "solver/Losare.h"

#include <QObject>

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <thread>

// The solver off the window's thread: one thread that takes a copy of a table and a request
// and answers through a queued call on the thread of `mottagare` (the window's), as a queued
// signal would. A newer request cancels the one being searched, whose answer is then never
// given; the window never waits on it.
class LosarTrad {
public:
    using Svar = std::function<void(int id, const SokSvar& svar)>;
    LosarTrad(QObject* mottagare, Svar svar);
    ~LosarTrad();
    LosarTrad(const LosarTrad&) = delete;
    LosarTrad& operator=(const LosarTrad&) = delete;

    // Searches a copy of `bord` under `regler` within `granser`; `id` comes back with the
    // answer.
    void Fraga(int id, const SpelRegler& regler, const SpelBord& bord, SokGranser granser);
    // Cancels the request being searched or waiting, if any.
    void Avbryt();

    // For tests: called at the search's checks, on the search's thread.
    void SattTestKrok(SokKrok krok);

private:
    struct Begaran {
        int id;
        const SpelRegler* regler;
        std::unique_ptr<SpelBord> bord;
        SokGranser granser;
    };
    void Kor(std::stop_token slut);

    QObject* mottagare;
    Svar besvara;
    std::mutex las;
    std::condition_variable_any vakna;
    std::optional<Begaran> nasta;
    std::stop_source pagaende;
    SokKrok testKrok;
    std::jthread trad;
};
