#pragma once

#include <QString>

namespace kova {

/// The services' lines on standard output. Any thread.
class Log {
public:
    virtual ~Log() = default;

    /// Writes one line, whatever control characters are in it, and flushes it, so that a pipe sees it at
    /// once; never waits for a reader.
    virtual void print(const QString &line) = 0;
};

} // namespace kova
