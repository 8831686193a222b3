#pragma once

#include "AlarmScheduler.h"
#include "FileChooser.h"

namespace kova {

/// Connects the ringing with the rest of the application: an alarm closes an open file dialog, which would
/// cover the alert; closing the main window or quitting ends the ringing. Main thread.
class RingingCoordinator : public QObject {
    Q_OBJECT

public:
    /// Requires the application object. Both must outlive the coordinator.
    RingingCoordinator(AlarmScheduler &scheduler, FileChooser &fileChooser);

    /// Called when the user closes the main window. Does not stop a preview.
    void windowClosed();

private:
    AlarmScheduler &m_scheduler;
};

} // namespace kova
