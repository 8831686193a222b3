#pragma once

#include "ProcessActivity.h"

namespace kova {

class MessageBuses;

/// Activities held as idle inhibitors. Nothing here ends a process that the user started, so there is no more
/// to hold.
class InhibitorProcessActivity : public ProcessActivity {
public:
    explicit InhibitorProcessActivity(MessageBuses &buses) : m_buses(buses) {}

    std::unique_ptr<ActivityToken> beginUserInitiated(const QString &reason) override;

private:
    MessageBuses &m_buses;
};

} // namespace kova
