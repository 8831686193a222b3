#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace kova {

/// The user's preferences: one data value under each key. Main thread.
class Preferences {
public:
    virtual ~Preferences() = default;

    /// None when nothing readable is stored. What is stored but can't be read is kept as `keepUnreadable`
    /// says.
    virtual std::optional<QByteArray> data(const QString &key) = 0;

    /// Returns at once. Values land in the order of the calls, each whole or not at all; one that a newer one
    /// overtakes may never land.
    virtual void setData(const QString &key, const QByteArray &bytes) = 0;

    /// What is stored makes no sense to its owner: the next value that lands does not replace it, but sets it
    /// aside for good.
    virtual void keepUnreadable(const QString &key) = 0;
};

} // namespace kova
