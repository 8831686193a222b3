// Reading, writing and changing the list.

#include "AlarmGroupJson.h"
#include "AlarmViewModel.h"
#include "FakeServices.h"
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
    const QByteArray json = encodeGroups(manyGroups(state.range(0)));
    for (auto _ : state) {
        const auto groups = decodeGroups(json);
        if (!groups) {
            state.SkipWithError("the list cannot be read");
        }
        benchmark::DoNotOptimize(groups);
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(decodeList)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->Complexity();

// Main thread only: the storage encodes a list when it is read.
struct Store {
    explicit Store(qint64 count) { services.listStorage.store(encodeGroups(manyGroups(count))); }

    FakeServices services;
    AlarmViewModel model{services.listStorage, services.clock, services.scheduler, services.powerManager};
};

void toggleLastGroup(benchmark::State &state) {
    Store store(state.range(0));
    store.model.load();
    for (auto _ : state) {
        store.model.toggleGroup(store.model.groups().constLast().id);
    }
}
BENCHMARK(toggleLastGroup)->Arg(20)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMicrosecond);

void deleteEveryOtherGroup(benchmark::State &state) {
    const QByteArray json = encodeGroups(manyGroups(state.range(0)));
    Store store(0);
    for (auto _ : state) {
        state.PauseTiming();
        store.services.listStorage.store(json);
        store.model.load();
        QSet<QUuid> ids;
        for (qsizetype i = 0; i < store.model.groups().size(); i += 2) {
            ids.insert(store.model.groups().at(i).id);
        }
        state.ResumeTiming();
        store.model.deleteSelectedGroups(ids);
    }
}
BENCHMARK(deleteEveryOtherGroup)->Arg(20)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMicrosecond);

} // namespace

} // namespace kova
