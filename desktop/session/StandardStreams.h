#pragma once

#include "Log.h"

#include <mutex>

namespace kova {

/// Prepares descriptors 0 to 2: opens closed ones on /dev/null, makes output to pipes and terminals
/// non-blocking, and sends Qt's messages to standard error. Call before anything else is opened.
void prepareStandardStreams();

/// Writes lines to an output descriptor.
class LineWriter : public Log {
public:
    explicit LineWriter(int descriptor) : m_descriptor(descriptor) {}

    void print(const QString &line) override;

private:
    const int m_descriptor;
    std::mutex m_mutex;
    bool m_lastLineIncomplete = false;
};

} // namespace kova
