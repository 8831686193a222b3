#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace kova {

struct FileChooserRequest {
    QString message;
    QStringList allowedContentTypes; ///< MIME types; "audio/*" allows any audio
};

/// The desktop's dialog for one existing file. Main thread.
class FileChooser {
public:
    virtual ~FileChooser() = default;

    /// Modal: waits for the user while the event loop runs on. None when the user cancels.
    virtual std::optional<QString> chooseFile(const FileChooserRequest &request) = 0;

    /// Closes an open dialog as the user's cancel does.
    virtual void cancel() = 0;
};

} // namespace kova
