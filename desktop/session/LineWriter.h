#pragma once

#include "Log.h"

#include <mutex>

namespace kova {

/// Writes lines to an output descriptor.
class LineWriter : public Log {
public:
    explicit LineWriter(int descriptor) : m_descriptor(descriptor) {}

    void print(const QString &line) override;

private:
    qsizetype writeNonBlocking(const QByteArray &bytes) const;

    const int m_descriptor;
    std::mutex m_mutex;
    bool m_lastLineIncomplete = false;
};

} // namespace kova
