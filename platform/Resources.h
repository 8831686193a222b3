#pragma once

#include <QString>
#include <optional>

namespace kova {

/// The files that come with the application. Any thread.
class Resources {
public:
    virtual ~Resources() = default;

    /// Where a resource lies; an empty extension looks for a folder. None when there is no such resource.
    virtual std::optional<QString> path(const QString &name, const QString &extension) const = 0;

    virtual bool fileExists(const QString &path) const = 0;
};

} // namespace kova
