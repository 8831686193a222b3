#pragma once

#include "FileChooser.h"

#include <QFileDialog>
#include <QPalette>
#include <QPointer>
#include <QWindow>

namespace kova {

/// The file dialog of the desktop or the portal if available, otherwise Qt's, in Japanese.
class DesktopFileChooser : public FileChooser {
public:
    /// Sets the window that the dialog belongs to, which is not owned, and the colours of Qt's own dialog.
    void setParentWindow(QWindow *window, const QPalette &palette) {
        m_parentWindow = window;
        m_palette = palette;
    }

    std::optional<QString> chooseFile(const FileChooserRequest &request) override;

    void cancel() override;

private:
    QPointer<QWindow> m_parentWindow;
    QPalette m_palette;
    QPointer<QFileDialog> m_dialog;
};

/// Returns name filters for MIME types: one for all, then one for each. None contains a suffix that the
/// player does not support.
QStringList fileNameFilters(const QStringList &contentTypes);

} // namespace kova
