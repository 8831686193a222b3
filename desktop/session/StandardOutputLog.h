#pragma once

#include "LineWriter.h"
#include "Log.h"

#include <unistd.h>

namespace kova {

/// Lines on standard output.
class StandardOutputLog : public Log {
public:
    void print(const QString &line) override { m_lines.write(line); }

private:
    LineWriter m_lines{STDOUT_FILENO};
};

} // namespace kova
