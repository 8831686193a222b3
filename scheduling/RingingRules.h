#pragma once

#include <QObject>

namespace kova {

class AlarmScheduler;
class FileChooser;

/// Applies the rules around a ringing alarm: closes an open file dialog, which would hide the alert, and ends
/// the alarm when the application quits or its window is closed. Main thread.
class RingingRules : public QObject {
    Q_OBJECT

public:
    /// Requires the application object. Both arguments must outlive this object.
    RingingRules(AlarmScheduler &scheduler, FileChooser &fileChooser);

    /// Ends a ringing alarm; called when the main window is closed.
    void windowClosed();

private:
    void activeAlarmChanged();

    AlarmScheduler &m_scheduler;
    FileChooser &m_fileChooser;
};

} // namespace kova
