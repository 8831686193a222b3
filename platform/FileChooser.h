#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace kova {

struct FileChooserRequest {
    QString message;
    QStringList allowedContentTypes; ///< MIME types; "audio/*" allows any audio
};

/// The desktop's dialog for choosing one existing file. Main thread.
class FileChooser {
public:
    virtual ~FileChooser() = default;

    /// Modal. Returns nullopt if the user cancels. Rejects a file of another type, but not by its content.
    virtual std::optional<QString> chooseFile(const FileChooserRequest &request) = 0;

    virtual void cancel() = 0;
};

} // namespace kova
