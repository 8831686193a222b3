#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace kova {

/// The most that a value may take.
inline constexpr qint64 mostValueBytes = qint64{32} * 1024 * 1024;

/// The content of a regular file of a sane size; never waits for a pipe's other end.
std::optional<QByteArray> readValueFile(const QString &path);

/// Whether there is nothing at all at the path, not even what can't be read.
bool isAbsent(const QString &path);

/// Replaces the file at the path as a whole, readable for the user alone, after keeping what lies there as
/// `<path>~`. Equal bytes are not written again. The answer is what went wrong, if anything; the file is then
/// as it was.
std::optional<QString> replaceValueFile(const QString &path, const QByteArray &bytes);

/// Gives what lies at the path, whatever it is, the first free name of `<path>.unreadable`,
/// `<path>.unreadable.2` and so on, and says so on standard error. The answer is what went wrong, if
/// anything.
std::optional<QString> setAsideValueFile(const QString &path);

/// Removes what a kill while a value was replaced has left beside the file.
void removeLeftovers(const QString &path);

} // namespace kova
