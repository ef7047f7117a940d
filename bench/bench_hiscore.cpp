// One result entered into a hiscore table: read, rank, write back and sync, in one
// transaction. The store lies in the working folder, on disk, not in a memory folder.
#include "cards/Hiscore.h"
#include "platform/AttributeStore.h"

#include <benchmark/benchmark.h>

#include <filesystem>

namespace {

void HiscoreSkrivning(benchmark::State& state) {
    std::filesystem::path folder = std::filesystem::current_path() / "bench-hiscore-store";
    std::filesystem::remove_all(folder);
    {
        AttributeStore store(folder.string());
        int i = 0;
        for (auto _ : state) {
            // Each result beats the ones before it, so every iteration writes the table.
            int undos = 999 - i++ % 1000;
            int plats = AddHiscore(store, 0, HiscoreResultat{48, 1}, undos, "Eva",
                                   system_time() - 61000000, std::time(nullptr));
            benchmark::DoNotOptimize(plats);
        }
    }
    std::filesystem::remove_all(folder);
}

BENCHMARK(HiscoreSkrivning)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
