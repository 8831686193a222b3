#pragma once

#include <QString>
#include <optional>

namespace kova {

/// The files that are installed with the application. Any thread.
class Resources {
public:
    virtual ~Resources() = default;

    /// Returns the path of a file, given by its name below the resources; nullopt if there is none.
    virtual std::optional<QString> path(const QString &name) const = 0;
};

} // namespace kova
