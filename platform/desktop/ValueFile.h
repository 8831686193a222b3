#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace kova {

/// The most that a value may take.
inline constexpr qint64 mostValueBytes = 32 * 1024 * 1024;

/// The content of a regular file of a sane size; never waits for a pipe's other end.
std::optional<QByteArray> readValueFile(const QString &path);

/// Replaces the file at the path as a whole, after keeping what lies there as `<path>~`. Equal bytes are not
/// written again. The answer is what went wrong, if anything; the file is then as it was.
std::optional<QString> replaceValueFile(const QString &path, const QByteArray &bytes);

} // namespace kova
