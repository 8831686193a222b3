#pragma once

#include <QString>

#include <mutex>

namespace kova {

/// Lines on one of the process's output descriptors. A line that its reader has no room for is lost, never
/// waited for; control characters become spaces. Any thread.
class LineWriter {
public:
    explicit LineWriter(int descriptor) : m_descriptor(descriptor) {}

    void write(const QString &line);

private:
    qsizetype writeWithoutWaiting(const QByteArray &bytes) const;

    const int m_descriptor;
    std::mutex m_mutex;
    bool m_isCut = false; ///< the last line went out only in part
};

} // namespace kova
