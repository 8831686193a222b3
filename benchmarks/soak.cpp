// Simulates three days of 500 groups second by second and compares each ring with the expected one. Prints a
// JSON object for each day; fails if a ring is missing or unexpected, or if the memory grows.

#include "AlarmGroupJson.h"
#include "AlarmViewModel.h"
#include "FakeServices.h"
#include "RingOracle.h"

#include <cstdio>
#include <fstream>
#include <unistd.h>

namespace kova {

namespace {

constexpr time_t day = 86400;
constexpr time_t start = 1774652400; // 2026-03-28 00:00:00 in Berlin; the clocks go forward in the next night
constexpr long allowedGrowth = 1024;

// KiB
long residentMemory() {
    long size = 0;
    long pages = 0;
    std::ifstream("/proc/self/statm") >> size >> pages;
    return pages * sysconf(_SC_PAGESIZE) / 1024;
}

QList<AlarmGroup> speakingGroups() {
    QRandomGenerator random(500);
    QList<AlarmGroup> groups = randomGroups(random, 500);
    for (AlarmGroup &group : groups) {
        group.ttsEnabled = group.ttsLastEnabled = random.bounded(2) == 0;
        group.ttsMessage = group.ttsLastMessage = QStringLiteral("起きてください");
    }
    return groups;
}

struct Day {
    int expected = 0;
    int missing = 0;
    int unexpected = 0;
};

class Soak {
public:
    Soak() {
        m_services.clock.time = start - 1 - instantEpoch;
        m_services.listStorage.store(encodeGroups(m_groups));
        m_store.load();
    }

    Day runDay() {
        Day result;
        for (const time_t end = m_second + day; m_second < end; ++m_second) {
            m_services.runLoop.advance(std::chrono::seconds(1));
            const QStringList rang = takeRings();
            QStringList expected;
            if (const auto ring = m_oracle.tick(m_second)) {
                expected.append(QStringLiteral("%1 alarm #%2").arg(ring->first).arg(ring->second));
            }
            result.expected += static_cast<int>(expected.size());
            result.missing += expected == rang ? 0 : static_cast<int>(expected.size());
            result.unexpected += expected == rang ? 0 : static_cast<int>(rang.size());
            if (m_second % 600 == 30) {
                edit();
            }
        }
        return result;
    }

private:
    // Returns the rings since the last call. Clears the records of the fakes, so that only the product's
    // memory can grow.
    QStringList takeRings() {
        const QString prefix = QStringLiteral("[Scheduler] FIRE: ");
        QStringList rings;
        for (const QString &line : m_services.log.take()) {
            if (line.startsWith(prefix)) {
                rings.append(line.mid(prefix.size()));
            }
        }
        m_services.notificationCenter.requests.clear();
        m_services.synthesizers.readings.clear();
        if (!m_services.synthesizers.reading.isNull()) {
            m_services.synthesizers.finish();
        }
        return rings;
    }

    // Toggles a group twice, which saves and publishes the list twice.
    void edit() {
        const QUuid id = m_groups.at(m_second / 600 % m_groups.size()).id;
        m_store.toggleGroup(id);
        m_store.toggleGroup(id);
    }

    const QList<AlarmGroup> m_groups = speakingGroups();
    FakeServices m_services;
    AlarmViewModel m_store{m_services.listStorage, m_services.clock, m_services.scheduler,
                           m_services.powerManager};
    RingOracle m_oracle{m_groups};
    time_t m_second = start;
};

} // namespace

} // namespace kova

int main() {
    qputenv("TZ", "Europe/Berlin");
    tzset();
    kova::Soak soak;
    bool isGood = true;
    long first = 0;
    for (int number = 1; number <= 3; ++number) {
        const kova::Day day = soak.runDay();
        const long memory = kova::residentMemory();
        first = number == 1 ? memory : first;
        std::printf(
            R"({"day": %d, "expected": %d, "missing": %d, "unexpected": %d, "rss": %ld, "growth": %ld})"
            "\n",
            number, day.expected, day.missing, day.unexpected, memory, memory - first);
        isGood = isGood && day.expected > 0 && day.missing == 0 && day.unexpected == 0 &&
                 memory - first <= kova::allowedGrowth;
    }
    return isGood ? 0 : 1;
}
