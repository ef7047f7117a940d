// Rendering all 52 faces and the four backs at a card size and a pixel ratio: whenever a
// game is laid out, which is at every deal and every step of a window resize.
#include "cards/KortUtSeende.h"

#include <QGuiApplication>

#include <benchmark/benchmark.h>

#include <utility>

namespace {

void Framsidor(benchmark::State& state, Utseende utseende) {
    const int w = static_cast<int>(state.range(0));
    const int h = static_cast<int>(state.range(1));
    const qreal kvot = static_cast<qreal>(state.range(2));
    const QImage symboler = LaddaKortSymboler(kvot);
    // Drawn over the last picture, as a game lays its cards out again.
    QImage bild;
    for (auto _ : state) {
        KortBilder bilder = RitaKortUtSeende(utseende, w, h, symboler, kvot, std::move(bild));
        benchmark::DoNotOptimize(bilder.bild.constBits());
        bild = std::move(bilder.bild);
    }
}

void Utseende_A(benchmark::State& state) {
    Framsidor(state, Utseende::A);
}
void Utseende_B(benchmark::State& state) {
    Framsidor(state, Utseende::B);
}

// 44 × 83 is Idioten 1 at 640 × 480; 93 × 191 its card in a 1280 × 1024 window, the
// largest any built game lays out; each at one and at two pixels to a unit.
void Storlekar(benchmark::internal::Benchmark* b) {
    for (int kvot : {1, 2})
        for (auto [w, h] : {std::pair{44, 83}, std::pair{120, 170}, std::pair{93, 191}})
            b->Args({w, h, kvot});
}

BENCHMARK(Utseende_A)->Apply(Storlekar)->Unit(benchmark::kMillisecond);
BENCHMARK(Utseende_B)->Apply(Storlekar)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM",
            qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
