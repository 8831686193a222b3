#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <optional>

namespace kova {

/// Where the list of groups is saved. Main thread.
class ListStorage {
public:
    /// Returns the bytes to save. Called on another thread, once for each attempt.
    using Encoder = std::function<QByteArray()>;

    virtual ~ListStorage() = default;

    /// Returns nullopt if nothing is stored, or if it cannot be read; then it is also marked as unreadable.
    virtual std::optional<QByteArray> read() = 0;

    /// Saves in the background, as a whole and in call order, and does not block. A list superseded by a
    /// newer one may never be encoded or saved.
    virtual void write(Encoder encode) = 0;

    /// Reports why the stored bytes are invalid. The next write moves them aside permanently instead of
    /// replacing them.
    virtual void markUnreadable(const QString &reason) = 0;
};

} // namespace kova
