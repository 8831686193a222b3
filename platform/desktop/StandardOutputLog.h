#pragma once

#include "Log.h"

#include <mutex>

namespace kova {

/// Lines on descriptor 1. A line that its reader has no room for is lost, never waited for.
class StandardOutputLog : public Log {
public:
    void print(const QString &line) override;

private:
    std::mutex m_mutex;
    bool m_isCut = false; ///< the last line went out only in part
};

} // namespace kova
