#pragma once

#include "Preferences.h"

#include <chrono>
#include <map>
#include <memory>

namespace kova {

/// One file per key, `<key>.json` in a folder of the user's, written by a thread of its own. At every instant
/// a whole value lies under the file's name, and the value that it replaced as `<key>.json~` beside it; what
/// could not be read is kept as `<key>.json.unreadable`. A failed write leaves all as it is, says so on
/// standard error, and is tried again at intervals until the value has landed.
class FilePreferences : public Preferences {
public:
    /// The folder is made at the first write, for the user's eyes only. The intervals grow from the first one
    /// to a minute.
    explicit FilePreferences(const QString &folder = defaultFolder(),
                             std::chrono::milliseconds firstRetry = std::chrono::seconds(5));
    /// Waits for the last try to land what is pending.
    ~FilePreferences() override;

    /// $XDG_CONFIG_HOME/kova-alarm
    static QString defaultFolder();

    std::optional<QByteArray> data(const QString &key) override;
    void setData(const QString &key, const QByteArray &bytes) override;
    void keepUnreadable(const QString &key) override;

    /// Tries to land every value now. The answer is why the newest one has not landed, if it hasn't.
    std::optional<QString> flush(std::chrono::milliseconds timeout);

private:
    class Writer;

    QString path(const QString &key) const;
    Writer &writer(const QString &key);

    const QString m_folder;
    const std::chrono::milliseconds m_firstRetry;
    std::map<QString, std::unique_ptr<Writer>> m_writers; ///< by key
};

} // namespace kova
