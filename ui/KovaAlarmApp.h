#pragma once

#include "AlarmViewModel.h"
#include "ProcessActivity.h"

namespace kova {

struct Platform;

/// The application itself: owns the store, and holds the process activity for as long as it lives. Needs the
/// installed ports. Main thread.
class KovaAlarmApp {
public:
    /// Begins the activity, then loads the list and starts the scheduler.
    explicit KovaAlarmApp(const Platform &platform);

    AlarmViewModel &viewModel() { return m_viewModel; }

    /// Lets the machine sleep again and ends the application.
    void quit();

private:
    const Platform &m_platform;
    std::unique_ptr<ActivityToken> m_activity;
    AlarmViewModel m_viewModel;
};

} // namespace kova
