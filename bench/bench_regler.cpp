// The rules without a window, as hints and a solver will use them: listing every legal
// move of a table, and a move made and taken back. Each game's table is the one reached by
// 12 random moves from a dealt game (seeded, so every run measures the same tables).
#include "games/Spelfabrik.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <random>

namespace {

std::unique_ptr<SpelBord> MittISpelet(const SpelRegler& regler, unsigned fro) {
    std::srand(fro);
    std::mt19937 slump(fro);
    auto bord = regler.NyttBord();
    regler.LaggUtLeken(*bord);
    regler.DelaUt(*bord, nullptr);
    regler.KlarSpel(*bord);
    for (int i = 0; i < 12; ++i) {
        std::vector<Drag> dragen = regler.LagligaDrag(*bord);
        std::erase_if(dragen, [](const Drag& d) { return d.slag == DragSlag::NyttForsok; });
        if (dragen.empty())
            break;
        regler.GorDrag(*bord, dragen[slump() % dragen.size()], nullptr);
    }
    return bord;
}

void LagligaDrag(benchmark::State& state) {
    int spelNr = static_cast<int>(state.range(0));
    const SpelRegler& regler = *ReglerFor(spelNr);
    auto bord = MittISpelet(regler, 3);
    size_t antal = 0;
    for (auto _ : state) {
        std::vector<Drag> dragen = regler.LagligaDrag(*bord);
        antal = dragen.size();
        benchmark::DoNotOptimize(dragen.data());
    }
    state.SetLabel(std::string(SpelNamn(spelNr)) + ", " + std::to_string(antal) + " moves");
}

void DragOchAngra(benchmark::State& state) {
    int spelNr = static_cast<int>(state.range(0));
    const SpelRegler& regler = *ReglerFor(spelNr);
    auto bord = MittISpelet(regler, 3);
    std::vector<Drag> dragen = regler.LagligaDrag(*bord);
    std::erase_if(dragen, [](const Drag& d) {
        return d.slag == DragSlag::NyttForsok || d.slag == DragSlag::Knapp;
    });
    if (dragen.empty()) {
        state.SkipWithError("no move to make");
        return;
    }
    for (auto _ : state) {
        regler.GorDrag(*bord, dragen.front(), nullptr);
        regler.Angra(*bord, nullptr);
    }
    state.SetLabel(SpelNamn(spelNr));
}

void VarjeSpel(benchmark::internal::Benchmark* b) {
    for (int nr = 0; nr < kAntalSpel; ++nr)
        if (ReglerFor(nr) != nullptr)
            b->Arg(nr);
}

BENCHMARK(LagligaDrag)->Apply(VarjeSpel)->Unit(benchmark::kMicrosecond);
BENCHMARK(DragOchAngra)->Apply(VarjeSpel)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
