#pragma once

#include "FileChooser.h"

#include <QFileDialog>
#include <QPalette>
#include <QPointer>
#include <QWindow>

namespace kova {

/// The desktop's own file dialog, or its portal's, where there is one; else Qt's, in Japanese.
class DesktopFileChooser : public FileChooser {
public:
    /// The dialog stands in front of this window. Not owned.
    void setParentWindow(QWindow *window) { m_parentWindow = window; }

    /// The colours of Qt's dialog.
    void setPalette(const QPalette &palette) { m_palette = palette; }

    std::optional<QString> chooseFile(const FileChooserRequest &request) override;

    /// Closes an open dialog as the user's cancel does, so that a ringing alarm can be reached.
    void cancel();

private:
    QPointer<QWindow> m_parentWindow;
    QPalette m_palette;
    QPointer<QFileDialog> m_dialog;
};

/// Name filters for MIME types: first all of them together, then each one. None names a file that is not
/// played.
QStringList fileNameFilters(const QStringList &contentTypes);

} // namespace kova
