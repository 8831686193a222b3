#pragma once

#include "ProcessActivity.h"

namespace kova {

class MessageBuses;

/// Implements activities by idle inhibitors. The desktop does not end a process that the user started, so
/// nothing else is needed.
class InhibitorProcessActivity : public ProcessActivity {
public:
    explicit InhibitorProcessActivity(MessageBuses &buses) : m_buses(buses) {}

    std::unique_ptr<ActivityToken> beginUserInitiated(const QString &reason) override;

private:
    MessageBuses &m_buses;
};

} // namespace kova
