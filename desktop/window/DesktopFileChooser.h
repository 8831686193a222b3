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
    /// The dialog stands in front of this window, which is not owned; Qt's own has these colours.
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

/// Name filters for MIME types: first all of them together, then each one. None names a file that is not
/// played.
QStringList fileNameFilters(const QStringList &contentTypes);

} // namespace kova
