#pragma once

#include "FakeClock.h"
#include "RunLoop.h"

#include <QPointer>
#include <algorithm>
#include <map>

namespace kova {

/// An event loop whose time moves only by `advance`, together with the clock.
class FakeRunLoop : public RunLoop {
public:
    explicit FakeRunLoop(FakeClock &clock) : m_clock(clock) {}

    int timersMade = 0;

    /// Advances the time; delayed actions and the ticks of whole seconds run in order.
    void advance(std::chrono::milliseconds span) {
        const double end = m_clock.time + toSeconds(span);
        for (double next = nextEvent(); next <= end; next = nextEvent()) {
            moveTo(next);
            runDue();
            if (m_tick && m_clock.time == std::floor(m_clock.time)) {
                const auto tick = m_tick;
                tick();
            }
        }
        moveTo(end);
    }

    /// Advances the time without ticks, as during suspend.
    void sleep(std::chrono::milliseconds span) {
        moveTo(m_clock.time + toSeconds(span));
        runDue();
    }

    std::unique_ptr<QObject> everySecond(QObject *owner, std::function<void()> action) override {
        timersMade += 1;
        m_tick = [owner = QPointer(owner), action = std::move(action)] {
            if (owner) {
                action();
            }
        };
        auto timer = std::make_unique<QObject>();
        QObject::connect(timer.get(), &QObject::destroyed, [this] { m_tick = nullptr; });
        return timer;
    }

    void after(std::chrono::milliseconds delay, QObject *owner, std::function<void()> action) override {
        m_delayed.emplace(m_elapsed + toSeconds(delay), Delayed{QPointer(owner), std::move(action)});
    }

private:
    struct Delayed {
        QPointer<QObject> owner;
        std::function<void()> action;
    };

    static double toSeconds(std::chrono::milliseconds span) {
        return static_cast<double>(span.count()) / 1000.0;
    }

    double nextEvent() const {
        const double tick = std::floor(m_clock.time) + 1;
        return m_delayed.empty() ? tick
                                 : std::min(tick, m_clock.time + (m_delayed.begin()->first - m_elapsed));
    }
    void moveTo(double time) {
        m_elapsed += time - m_clock.time;
        m_clock.time = time;
    }
    void runDue() {
        while (!m_delayed.empty() && m_delayed.begin()->first <= m_elapsed + 1e-6) {
            const auto due = m_delayed.extract(m_delayed.begin());
            if (due.mapped().owner) {
                due.mapped().action();
            }
        }
    }

    FakeClock &m_clock;
    double m_elapsed = 0;
    std::function<void()> m_tick;
    std::multimap<double, Delayed> m_delayed; ///< by the time when they are due
};

} // namespace kova
