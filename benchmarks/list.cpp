// Reading and writing the saved list.

#include "AlarmGroupJson.h"
#include "groups.h"

#include <benchmark/benchmark.h>

namespace kova {

namespace {

void encodeList(benchmark::State &state) {
    const QList<AlarmGroup> groups = manyGroups(state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(encodeGroups(groups));
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(encodeList)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->Complexity();

void decodeList(benchmark::State &state) {
    const QByteArray json = encodeGroups(manyGroups(state.range(0))).value();
    for (auto _ : state) {
        const auto groups = decodeGroups(json);
        if (!groups) {
            state.SkipWithError("the list can't be read");
        }
        benchmark::DoNotOptimize(groups);
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(decodeList)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->Complexity();

} // namespace

} // namespace kova
