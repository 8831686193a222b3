#pragma once

#include <QString>
#include <optional>

namespace kova {

/// The files that are installed with the application. Any thread.
class Resources {
public:
    virtual ~Resources() = default;

    /// Returns the path of a resource, or of a folder if the extension is empty; nullopt if there is none.
    virtual std::optional<QString> path(const QString &name, const QString &extension) const = 0;

    virtual bool fileExists(const QString &path) const = 0;
};

} // namespace kova
