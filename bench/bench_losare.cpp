// The solver over the deals of seeds 1..N of every game, each searched with a limit of one
// second (or --limit-ms): the share of deals won-able, cannot be won and not known, the
// median, 99th-percentile and largest time, the positions searched a second and the most
// memory one search held. Freecell's deals also go to Debian's Freecell solver library when
// the build found it, with its default settings and with its fastest preset, for the time
// and the agreement on which deals can be won. Times are the searching thread's CPU time.
// Then Google Benchmark's figures of a fixed search per game.
//
//   build/bench/bench_losare --seeds=1000 [--limit-ms=1000] [--game=N] [--without-fcs]
//                            [--slow-ms=T (lists the deals that took longer)]
#include "app/LosKommando.h"
#include "games/Spelfabrik.h"
#include "solver/Losare.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <iterator>
#include <string>
#include <vector>

#ifdef FJOLK_FCS
#include <freecell-solver/fcs_cl.h>
#include <freecell-solver/fcs_user.h>
#endif

namespace {

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

// The CPU time of this thread in ms: other work on a shared machine does not count.
double CpuMs() {
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) * 1000.0 + static_cast<double>(t.tv_nsec) / 1e6;
}

Resultat KorSpel(int spel, unsigned antalGivar, int gransMs) {
    Resultat r;
    SokGranser granser;
    granser.tid = std::chrono::milliseconds(gransMs);
    granser.tradTid = true;
    for (unsigned fro = 1; fro <= antalGivar; ++fro) {
        auto bord = GivFor(spel, fro);
        double fore = CpuMs();
        SokSvar svar = Los(*ReglerFor(spel), *bord, granser);
        double ms = CpuMs() - fore;
        ++r.antal[static_cast<int>(svar.utfall)];
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

// The arguments of the library's preset "amateur-star" (`-l as`), which its authors call
// its fastest: a list of searches it switches between every 500 positions.
// clang-format off
const char* kSnabbasteArg[] = {
    "--method", "random-dfs", "-seed", "2", "-to", "0[01][23456789]", "-step", "500", "-sp", "r:tf", "--st-name", "3", "-nst",
    "--method", "random-dfs", "-seed", "1", "-to", "0[0123456789]", "-step", "500", "-sp", "r:tf", "--st-name", "4", "-nst",
    "--method", "random-dfs", "-seed", "3", "-to", "0[1]=asw(1)[23467]=asw(1)", "-step", "500", "-sp", "r:tf", "--st-name", "5", "-nst",
    "--method", "random-dfs", "-seed", "4", "-to", "0[0123467]", "-step", "500", "-sp", "r:tf", "--st-name", "9", "-nst",
    "--method", "random-dfs", "-to", "[01][23456789]", "-seed", "8", "-step", "500", "-sp", "r:tf", "--st-name", "10", "-nst",
    "--method", "a-star", "-asw", "0.2,0.8,0,0,0", "-step", "500", "-sp", "r:tf", "--st-name", "11", "-nst",
    "--method", "random-dfs", "-to", "[01]=asw(1)[23456789]=asw(1)", "-seed", "268", "-step", "500", "-sp", "r:tf", "--st-name", "12", "-nst",
    "--method", "random-dfs", "-to", "[0123456789]", "-seed", "142", "-step", "500", "-sp", "r:tf", "--st-name", "15", "-nst",
    "--method", "a-star", "-to", "0123467", "-asw", "0.5,0,0.3,0,0", "-step", "500", "-sp", "r:tf", "--st-name", "18", "-nst",
    "--method", "random-dfs", "-seed", "105", "-step", "500", "-sp", "r:tf", "--st-name", "20", "-nst",
    "--method", "a-star", "-asw", "0.5,0,0.5,0,0", "-step", "500", "-sp", "r:tf", "--st-name", "21", "-nst",
    "--method", "soft-dfs", "-to", "013[2456789]", "-step", "500", "-sp", "r:tf", "--st-name", "22", "-nst",
    "--method", "soft-dfs", "-to", "0123456789", "-dto", "19,0126394875", "-step", "500", "-sp", "r:tf", "--st-name", "23", "-nst",
    "--method", "random-dfs", "-to", "0123467", "-dto", "16,0[123467]=asw(1,0,0,0,0,0)", "-step", "500", "-sp", "r:tf", "--st-name", "24", "-nst",
    "--method", "random-dfs", "-to", "01234567", "-dto", "13,[0187465]=asw(1)", "-dto", "26,[0134587]=asw(1)", "-step", "500", "-sp", "r:tf", "--st-name", "32",
    "--prelude",
    "380@24,380@5,380@9,760@32,380@12,380@24,380@10,380@5,380@3,380@9,380@24,380@18,7"
    "60@20,380@11,380@12,380@5,760@24,380@21,380@4,380@9,380@11,380@9,380@10,380@4,38"
    "0@5,380@15,380@5,760@15,380@18,380@21,380@15,380@18,380@20,380@22,760@23,380@24,"
    "380@32,1520@12,760@18,1520@32,1520@24,2280@10,2280@24,4560@12",
};
// clang-format on

struct FcsResultat {
    std::vector<double> ms;
    int antal[3] = {0, 0, 0};
    int olika = 0;
    double summa = 0;
};

// Seeds 1..N through the library, with its defaults or its fastest preset: 0 solved, 1 not
// solvable, 2 gave up at its iteration limit.
FcsResultat KorFcs(unsigned antalGivar, const Resultat& var, bool snabbast) {
    FcsResultat r;
    for (unsigned fro = 1; fro <= antalGivar; ++fro) {
        auto bord = GivFor(8, fro);
        std::string text = FcsBord(*bord);
        void* fcs = freecell_solver_user_alloc();
        if (snabbast) {
            char* fel = nullptr;
            int sista = 0;
            int antalArg = static_cast<int>(std::size(kSnabbasteArg));
            if (freecell_solver_user_cmd_line_parse_args(fcs, antalArg, kSnabbasteArg, 0, nullptr,
                                                         nullptr, nullptr FCS__PASS_ERR_STR(&fel),
                                                         &sista) != FCS_CMD_LINE_OK) {
                std::fprintf(stderr, "the preset's arguments were refused at %d\n", sista);
                std::exit(1);
            }
            std::free(fel);
        }
        freecell_solver_user_limit_iterations_long(fcs, 3000000);
        double fore = CpuMs();
        int svar = freecell_solver_user_solve_board(fcs, text.c_str());
        double t = CpuMs() - fore;
        freecell_solver_user_free(fcs);
        int utfall = svar == FCS_STATE_WAS_SOLVED ? 0 : svar == FCS_STATE_IS_NOT_SOLVEABLE ? 1 : 2;
        ++r.antal[utfall];
        r.ms.push_back(t);
        r.summa += t;
        Utfall vart = var.utfall[fro - 1];
        if ((utfall == 0 && vart == Utfall::Ovinnbar) || (utfall == 1 && vart == Utfall::Vinnbar))
            ++r.olika;
    }
    return r;
}

void FcsRad(const char* namn, const FcsResultat& r, double n) {
    std::printf("| %s | %.1f %% | %.1f %% | %.1f %% | %.2f ms | %.1f ms | %.0f ms | %.1f s |\n",
                namn, 100.0 * r.antal[0] / n, 100.0 * r.antal[1] / n, 100.0 * r.antal[2] / n,
                Percentil(r.ms, 0.5), Percentil(r.ms, 0.99),
                *std::max_element(r.ms.begin(), r.ms.end()), r.summa / 1000.0);
}

void JamforFcs(unsigned antalGivar, const Resultat& var) {
    FcsResultat vart;
    vart.ms = var.ms;
    for (int i = 0; i < 3; ++i)
        vart.antal[i] = var.antal[i];
    for (double t : var.ms)
        vart.summa += t;
    FcsResultat standard = KorFcs(antalGivar, var, false);
    FcsResultat snabbast = KorFcs(antalGivar, var, true);
    double n = static_cast<double>(antalGivar);
    std::printf("\nFreecell against libfreecell-solver (CPU time of the searching thread):\n");
    std::printf("| Solver | Won-able | Cannot | Not known | Median | p99 | Max | Total |\n");
    std::printf("|---|---|---|---|---|---|---|---|\n");
    FcsRad("ours", vart, n);
    FcsRad("fc-solve, default settings", standard, n);
    FcsRad("fc-solve, fastest preset (-l as)", snabbast, n);
    for (const FcsResultat* r : {&standard, &snabbast})
        std::printf("Ratio ours / %s: total %.2f, median %.2f. Deals the two disagree on "
                    "(won-able by one, proven not by the other): %d.\n",
                    r == &standard ? "default" : "fastest", vart.summa / r->summa,
                    Percentil(vart.ms, 0.5) / Percentil(r->ms, 0.5), r->olika);
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
    bool medFcs = true;
    double langsamMs = -1;
    std::vector<char*> resten{argv[0]};
    for (int i = 1; i < argc; ++i) {
        if (std::strncmp(argv[i], "--seeds=", 8) == 0)
            antalGivar = static_cast<unsigned>(std::atoi(argv[i] + 8));
        else if (std::strncmp(argv[i], "--limit-ms=", 11) == 0)
            gransMs = std::atoi(argv[i] + 11);
        else if (std::strncmp(argv[i], "--game=", 7) == 0)
            endast = std::atoi(argv[i] + 7);
        else if (std::strcmp(argv[i], "--without-fcs") == 0)
            medFcs = false;
        else if (std::strncmp(argv[i], "--slow-ms=", 10) == 0)
            langsamMs = std::atof(argv[i] + 10);
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
        if (langsamMs >= 0)
            for (std::size_t i = 0; i < r.ms.size(); ++i)
                if (r.ms[i] > langsamMs)
                    std::printf("  seed %zu: %.1f ms, %s\n", i + 1, r.ms[i],
                                UtfallNamn(r.utfall[i]));
#ifdef FJOLK_FCS
        if (spel == 8 && medFcs)
            JamforFcs(antalGivar, r);
#endif
    }
    int n = static_cast<int>(resten.size());
    benchmark::Initialize(&n, resten.data());
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
