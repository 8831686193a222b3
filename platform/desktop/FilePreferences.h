#pragma once

#include "Preferences.h"

#include <chrono>
#include <memory>

namespace kova {

/// One file per key, `<key>.json` in a folder of the user's, written by a thread of its own. At every instant
/// a whole value lies under the file's name, and the value that it replaced as `<key>.json~` beside it. A
/// failed write leaves both as they are and says so on standard error.
class FilePreferences : public Preferences {
public:
    /// The folder is made at the first write, for the user's eyes only.
    explicit FilePreferences(const QString &folder = defaultFolder());
    /// Waits for the last value to land.
    ~FilePreferences() override;

    /// $XDG_CONFIG_HOME/kova-alarm
    static QString defaultFolder();

    std::optional<QByteArray> data(const QString &key) const override;
    void setData(const QString &key, Encoder encode) override;

    /// Waits until every value has landed; false when the disk takes longer.
    bool flush(std::chrono::milliseconds timeout) const;

private:
    class Writer;

    QString path(const QString &key) const;

    const QString m_folder;
    std::unique_ptr<Writer> m_writer; ///< from the first write on
};

} // namespace kova
