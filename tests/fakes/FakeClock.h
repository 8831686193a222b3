#pragma once

#include "Clock.h"

#include <QDateTime>
#include <QTimeZone>
#include <cmath>

namespace kova {

/// A clock that the test sets, in a time zone of its choice.
class FakeClock : public Clock {
public:
    Instant time = 0;
    bool isReadable = true;

    void setZone(const QByteArray &name) {
        m_zone = QTimeZone(name);
        m_validUntil = m_validFrom = 0;
    }
    /// Sets the local time; a time that the zone skips is moved forward.
    void set(const QDate &date, const QTime &timeOfDay) {
        time = static_cast<double>(QDateTime(date, timeOfDay, m_zone).toMSecsSinceEpoch()) / 1000.0 -
               instantEpoch;
    }

    Instant now() const override { return time; }

    std::optional<LocalTime> localTime(Instant moment) const override {
        if (!isReadable) {
            return std::nullopt;
        }
        const qint64 utc = static_cast<qint64>(std::floor(moment + instantEpoch));
        const qint64 local = utc + offsetAt(utc);
        const qint64 days = (local - (local % 86400 + 86400) % 86400) / 86400;
        const auto second = static_cast<int>((local % 86400 + 86400) % 86400);
        // 1970-01-01 was a Thursday, the fifth day of a week that starts on Sunday.
        const auto weekday = static_cast<int>(((days + 4) % 7 + 7) % 7) + 1;
        return LocalTime{second / 3600, second / 60 % 60, second % 60, weekday};
    }

private:
    // The offset is cached between two transitions.
    qint64 offsetAt(qint64 utc) const {
        if (utc < m_validFrom || utc >= m_validUntil) {
            const QDateTime moment = QDateTime::fromSecsSinceEpoch(utc, QTimeZone::utc());
            const QDateTime next = m_zone.nextTransition(moment).atUtc;
            m_offset = m_zone.offsetFromUtc(moment);
            m_validFrom = utc;
            m_validUntil = next.isValid() ? next.toSecsSinceEpoch() : utc + 86400;
        }
        return m_offset;
    }

    QTimeZone m_zone = QTimeZone::utc();
    mutable qint64 m_validFrom = 0;
    mutable qint64 m_validUntil = 0;
    mutable qint64 m_offset = 0;
};

} // namespace kova
