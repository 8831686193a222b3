#pragma once

#include "Result.h"

#include <QByteArray>
#include <optional>

namespace kova {

/// A file that is read and replaced as a whole. May be used in any thread, one at a time.
class AtomicFile {
public:
    static constexpr qint64 maxSize = qint64{64} * 1024 * 1024;

    explicit AtomicFile(QString path) : m_path(std::move(path)) {}

    const QString &path() const { return m_path; }

    /// Whether anything is located at the path, be it a broken link.
    bool exists() const;

    /// Fails for anything but a regular file of at most maxSize bytes.
    Result<QByteArray> read() const;

    /// Replaces the file, readable for the user only, after saving its content as `<path>~`. A link stays a
    /// link. Equal bytes are not written again. Returns the reason of a failure, which changes neither file.
    std::optional<QString> replace(const QByteArray &bytes) const;

    /// Renames whatever is at the path to the first free name of `<path>.unreadable`, `<path>.unreadable.2`
    /// and so on, and warns. Returns the reason of a failure.
    std::optional<QString> moveAside() const;

private:
    const QString m_path;
};

} // namespace kova
