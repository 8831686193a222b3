#pragma once

#include <QString>

#include <mutex>

namespace kova {

/// Writes plain lines to an output descriptor. Never blocks; a line that does not fit into the reader's
/// buffer is dropped. Any thread.
class LineWriter {
public:
    explicit LineWriter(int descriptor) : m_descriptor(descriptor) {}

    void write(const QString &line);

private:
    qsizetype writeNonBlocking(const QByteArray &bytes) const;

    const int m_descriptor;
    std::mutex m_mutex;
    bool m_lastLineIncomplete = false;
};

} // namespace kova
