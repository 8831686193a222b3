#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <optional>

namespace kova {

/// The user's preferences: one data value under each key. Main thread.
class Preferences {
public:
    /// Makes the data to store; none leaves the stored value as it is. Pure, since any thread may run it.
    using Encoder = std::function<std::optional<QByteArray>()>;

    virtual ~Preferences() = default;

    /// None when nothing readable is stored.
    virtual std::optional<QByteArray> data(const QString &key) const = 0;

    /// Returns at once. Values land in the order of the calls, each whole or not at all; a value that a newer
    /// one overtakes may never be encoded.
    virtual void setData(const QString &key, Encoder encode) = 0;
};

} // namespace kova
