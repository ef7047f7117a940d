// Rendering all 52 faces and the four backs at a card size: whenever a game is laid out,
// which is at every deal and every step of a window resize.
#include "cards/KortUtSeende.h"

#include <QGuiApplication>

#include <benchmark/benchmark.h>

namespace {

void Framsidor(benchmark::State& state, Utseende utseende) {
    static const QImage symboler = LaddaKortSymboler();
    const int w = static_cast<int>(state.range(0));
    const int h = static_cast<int>(state.range(1));
    for (auto _ : state) {
        KortBilder bilder = RitaKortUtSeende(utseende, w, h, symboler);
        benchmark::DoNotOptimize(bilder.bild.constBits());
    }
}

void Utseende_A(benchmark::State& state) {
    Framsidor(state, Utseende::A);
}
void Utseende_B(benchmark::State& state) {
    Framsidor(state, Utseende::B);
}

// 44 × 83 is Idioten 1 at 640 × 480; 93 × 191 its card in a 1280 × 1024 window, the
// largest any built game lays out.
BENCHMARK(Utseende_A)
    ->Args({44, 83})
    ->Args({120, 170})
    ->Args({93, 191})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(Utseende_B)
    ->Args({44, 83})
    ->Args({120, 170})
    ->Args({93, 191})
    ->Unit(benchmark::kMillisecond);

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
