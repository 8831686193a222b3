// The scheduler's tick.

#include "FakeServices.h"
#include "groups.h"

#include <benchmark/benchmark.h>

namespace kova {

namespace {

void tickAt(benchmark::State &state, const QTime &time) {
    FakeServices services;
    services.clock.set(QDate(2026, 1, 5), time);
    services.scheduler.setGroups(manyGroups(state.range(0)));
    for (auto _ : state) {
        services.scheduler.tick();
    }
    if (services.scheduler.activeAlarm()) {
        state.SkipWithError("an alarm was due");
    }
}

void tickInSecond1To59(benchmark::State &state) {
    tickAt(state, QTime(7, 0, 30));
}
BENCHMARK(tickInSecond1To59)->Arg(1)->Arg(10'000)->Unit(benchmark::kMicrosecond);

void tickInSecond0NoneDue(benchmark::State &state) {
    tickAt(state, QTime(12, 0, 0));
}
BENCHMARK(tickInSecond0NoneDue)
    ->Arg(20)
    ->Arg(100)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMicrosecond);

} // namespace

} // namespace kova
