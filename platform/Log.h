#pragma once

#include <QString>

namespace kova {

/// The services' lines on standard output. Any thread.
class Log {
public:
    virtual ~Log() = default;

    /// Writes the text as one line, without control characters, and flushes it. Never blocks: a line that a
    /// reader has no room for is dropped.
    virtual void print(const QString &line) = 0;
};

} // namespace kova
