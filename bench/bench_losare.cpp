// The solver over the deals of seeds 1..N of every game, each searched with a limit of one
// second (or --limit-ms): the share of deals won-able, cannot be won and not known, the
// median, 99th-percentile and largest time, the positions searched a second and the most
// memory one search held. Freecell's deals also go to Debian's Freecell solver library when
// the build found it, with its default settings, for the time and the agreement on which
// deals can be won. Then Google Benchmark's figures of a fixed search per game.
//
//   build/bench/bench_losare --seeds=1000 [--limit-ms=1000] [--game=N]
#include "app/LosKommando.h"
#include "games/Spelfabrik.h"
#include "solver/Losare.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#ifdef FJOLK_FCS
#include <freecell-solver/fcs_user.h>
#endif

namespace {

using Klocka = std::chrono::steady_clock;

struct Resultat {
    int antal[3] = {0, 0, 0};
    std::vector<double> ms;
    std::vector<Utfall> utfall;
    std::uint64_t lagen = 0;
    double sekunder = 0;
    std::size_t minne = 0;
};

double Percentil(std::vector<double> v, double p) {
    if (v.empty())
        return 0;
    std::sort(v.begin(), v.end());
    auto i = static_cast<std::size_t>(p * static_cast<double>(v.size() - 1) + 0.5);
    return v[std::min(i, v.size() - 1)];
}

Resultat KorSpel(int spel, unsigned antalGivar, int gransMs) {
    Resultat r;
    SokGranser granser;
    granser.tid = std::chrono::milliseconds(gransMs);
    for (unsigned fro = 1; fro <= antalGivar; ++fro) {
        auto bord = GivFor(spel, fro);
        SokSvar svar = Los(*ReglerFor(spel), *bord, granser);
        ++r.antal[static_cast<int>(svar.utfall)];
        double ms = static_cast<double>(svar.tid.count()) / 1000.0;
        r.ms.push_back(ms);
        r.utfall.push_back(svar.utfall);
        r.lagen += svar.lagen;
        r.sekunder += ms / 1000.0;
        r.minne = std::max(r.minne, svar.minne);
    }
    return r;
}

void SkrivRad(const char* namn, const Resultat& r) {
    double n = static_cast<double>(r.ms.size());
    std::printf(
        "| %s | %.1f %% | %.1f %% | %.1f %% | %.2f ms | %.1f ms | %.0f ms | %.0f k | %.1f MB |\n",
        namn, 100.0 * r.antal[0] / n, 100.0 * r.antal[1] / n, 100.0 * r.antal[2] / n,
        Percentil(r.ms, 0.5), Percentil(r.ms, 0.99),
        r.ms.empty() ? 0.0 : *std::max_element(r.ms.begin(), r.ms.end()),
        r.sekunder > 0 ? static_cast<double>(r.lagen) / r.sekunder / 1000.0 : 0.0,
        static_cast<double>(r.minne) / (1024.0 * 1024.0));
    std::fflush(stdout);
}

#ifdef FJOLK_FCS
// The deal in the library's text form: one line a column, bottom card first.
std::string FcsBord(const SpelBord& bord) {
    static const char* const valorer = "A23456789TJQK";
    static const char* const farger = "HDCS";
    std::string text;
    for (int c = 0; c < 8; ++c) {
        for (int p = 0; p < 22 && !bord.luckor[22 * c + p].Tom(); ++p) {
            const Kort& k = bord.luckor[22 * c + p].GeKort();
            if (p > 0)
                text += ' ';
            text += valorer[k.KortValor() - 1];
            text += farger[k.KortFarg()];
        }
        text += '\n';
    }
    return text;
}

// Seeds 1..N through the library: 0 solved, 1 not solvable, 2 gave up at its iteration
// limit.
void JamforFcs(unsigned antalGivar, const Resultat& var) {
    std::vector<double> ms;
    int antal[3] = {0, 0, 0};
    int olika = 0;
    double summa = 0;
    for (unsigned fro = 1; fro <= antalGivar; ++fro) {
        auto bord = GivFor(8, fro);
        std::string text = FcsBord(*bord);
        void* fcs = freecell_solver_user_alloc();
        freecell_solver_user_limit_iterations_long(fcs, 3000000);
        auto borjan = Klocka::now();
        int svar = freecell_solver_user_solve_board(fcs, text.c_str());
        double t = std::chrono::duration<double, std::milli>(Klocka::now() - borjan).count();
        freecell_solver_user_free(fcs);
        int utfall = svar == FCS_STATE_WAS_SOLVED ? 0 : svar == FCS_STATE_IS_NOT_SOLVEABLE ? 1 : 2;
        ++antal[utfall];
        ms.push_back(t);
        summa += t;
        Utfall vart = var.utfall[fro - 1];
        if ((utfall == 0 && vart == Utfall::Ovinnbar) || (utfall == 1 && vart == Utfall::Vinnbar))
            ++olika;
    }
    double n = static_cast<double>(antalGivar);
    double varSumma = 0;
    for (double t : var.ms)
        varSumma += t;
    std::printf("\nFreecell against libfreecell-solver (its default settings):\n");
    std::printf("| Solver | Won-able | Cannot | Not known | Median | p99 | Max | Total |\n");
    std::printf("|---|---|---|---|---|---|---|---|\n");
    std::printf("| ours | %.1f %% | %.1f %% | %.1f %% | %.2f ms | %.1f ms | %.0f ms | %.1f s |\n",
                100.0 * var.antal[0] / n, 100.0 * var.antal[1] / n, 100.0 * var.antal[2] / n,
                Percentil(var.ms, 0.5), Percentil(var.ms, 0.99),
                *std::max_element(var.ms.begin(), var.ms.end()), varSumma / 1000.0);
    std::printf("| fc-solve default | %.1f %% | %.1f %% | %.1f %% | %.2f ms | %.1f ms | %.0f ms | "
                "%.1f s |\n",
                100.0 * antal[0] / n, 100.0 * antal[1] / n, 100.0 * antal[2] / n,
                Percentil(ms, 0.5), Percentil(ms, 0.99), *std::max_element(ms.begin(), ms.end()),
                summa / 1000.0);
    std::printf("Ratio ours / theirs: total %.2f, median %.2f. Deals the two disagree on "
                "(won-able by one, proven not by the other): %d.\n",
                varSumma / summa, Percentil(var.ms, 0.5) / Percentil(ms, 0.5), olika);
}
#endif

void FastSokning(benchmark::State& state) {
    int spel = static_cast<int>(state.range(0));
    auto bord = GivFor(spel, 2);
    std::uint64_t lagen = 0;
    for (auto _ : state) {
        SokSvar svar = Los(*ReglerFor(spel), *bord, SokGranser{20000});
        lagen += svar.lagen;
        benchmark::DoNotOptimize(svar.drag.data());
    }
    state.counters["positions/s"] =
        benchmark::Counter(static_cast<double>(lagen), benchmark::Counter::kIsRate);
    state.SetLabel(SpelNamn(spel));
}
BENCHMARK(FastSokning)->DenseRange(0, kAntalSpel - 1)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    unsigned antalGivar = 100;
    int gransMs = 1000;
    int endast = -1;
    std::vector<char*> resten{argv[0]};
    for (int i = 1; i < argc; ++i) {
        if (std::strncmp(argv[i], "--seeds=", 8) == 0)
            antalGivar = static_cast<unsigned>(std::atoi(argv[i] + 8));
        else if (std::strncmp(argv[i], "--limit-ms=", 11) == 0)
            gransMs = std::atoi(argv[i] + 11);
        else if (std::strncmp(argv[i], "--game=", 7) == 0)
            endast = std::atoi(argv[i] + 7);
        else
            resten.push_back(argv[i]);
    }
    std::printf("Seeds 1..%u, %d ms a deal.\n\n", antalGivar, gransMs);
    std::printf(
        "| Game | Won-able | Cannot be won | Not known | Median | p99 | Max | Positions/s | "
        "Peak memory |\n");
    std::printf("|---|---|---|---|---|---|---|---|---|\n");
    for (int spel = 0; spel < kAntalSpel; ++spel) {
        if (endast >= 0 && spel != endast)
            continue;
        Resultat r = KorSpel(spel, antalGivar, gransMs);
        SkrivRad(SpelNamn(spel), r);
#ifdef FJOLK_FCS
        if (spel == 8)
            JamforFcs(antalGivar, r);
#endif
    }
    int n = static_cast<int>(resten.size());
    benchmark::Initialize(&n, resten.data());
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
