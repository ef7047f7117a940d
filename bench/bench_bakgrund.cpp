// A background picture loaded as the window loads one: a 5790 × 5790 JPEG, scaled down as it
// is read to what the largest table shows (1280 × 1024); a 4000 × 4000 PNG, read whole and
// then scaled; and a picture already small enough. The counter "MB" is the picture kept.
#include "app/Bakgrund.h"

#include <QGuiApplication>
#include <QPainter>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <string>

namespace {

QTemporaryDir* mapp = nullptr;

// A picture with detail everywhere, so that no format gets it cheaply. FJOLK_BILD names a
// picture to load instead, so that the program's peak memory is the load's alone.
QString Bild(const char* namn, int sida) {
    if (!qEnvironmentVariableIsEmpty("FJOLK_BILD"))
        return qEnvironmentVariable("FJOLK_BILD");
    QString fil = mapp->filePath(QString::fromLatin1(namn));
    if (QFile::exists(fil))
        return fil;
    QImage bild(sida, sida, QImage::Format_RGB32);
    for (int y = 0; y < sida; ++y) {
        auto* rad = reinterpret_cast<QRgb*>(bild.scanLine(y));
        for (int x = 0; x < sida; ++x)
            rad[x] = qRgb((x * 7 + y) & 255, (x ^ y) & 255, (x * y / 97) & 255);
    }
    bild.save(fil);
    return fil;
}

void Ladda(benchmark::State& state, const char* namn, int sida) {
    QString fil = Bild(namn, sida);
    QImage bild;
    for (auto _ : state) {
        std::string fel;
        bild = LasBakgrundsBild(fil, QSize(1280, 1024), &fel);
        benchmark::DoNotOptimize(bild);
    }
    state.counters["MB"] = double(bild.sizeInBytes()) / (1024 * 1024);
}

void StorJpeg(benchmark::State& state) {
    Ladda(state, "stor.jpg", 5790);
}
void StorPng(benchmark::State& state) {
    Ladda(state, "stor.png", 4000);
}
void LitenPng(benchmark::State& state) {
    Ladda(state, "liten.png", 800);
}

BENCHMARK(StorJpeg)->Unit(benchmark::kMillisecond);
BENCHMARK(StorPng)->Unit(benchmark::kMillisecond);
BENCHMARK(LitenPng)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QTemporaryDir dir;
    mapp = &dir;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
