#pragma once

#include <QObject>

namespace kova {

class AlarmScheduler;
class FileChooser;

/// What a ringing alarm asks of the rest of the program: it closes an open file dialog, which would stand in
/// front of the alert, and it ends with the program. Main thread.
class RingingRules : public QObject {
    Q_OBJECT

public:
    /// Needs the application object. Both must outlive the rules.
    RingingRules(AlarmScheduler &scheduler, FileChooser &fileChooser);

    /// Closing the main window silences the alarm that rings.
    void windowClosed();

private:
    void activeAlarmChanged();

    AlarmScheduler &m_scheduler;
    FileChooser &m_fileChooser;
};

} // namespace kova
