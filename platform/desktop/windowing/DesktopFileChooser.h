#pragma once

#include "FileChooser.h"

#include <QFileDialog>
#include <QPointer>
#include <QWindow>

namespace kova {

/// The desktop's own file dialog, or its portal's, where there is one; else Qt's.
class DesktopFileChooser : public FileChooser {
public:
    /// The dialog stands in front of this window. Not owned.
    void setParentWindow(QWindow *window) { m_parentWindow = window; }

    std::optional<QString> chooseFile(const FileChooserRequest &request) override;

    /// Closes an open dialog as the user's cancel does, so that a ringing alarm can be reached.
    void cancel();

private:
    QPointer<QWindow> m_parentWindow;
    QPointer<QFileDialog> m_dialog;
};

/// Name filters for MIME types: first all of them together, then each one. None names a file that is not
/// played.
QStringList fileNameFilters(const QStringList &contentTypes);

} // namespace kova
