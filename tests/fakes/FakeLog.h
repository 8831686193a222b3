#pragma once

#include "Log.h"

#include <QStringList>

namespace kova {

/// Records the lines. Other fakes write into it too, so that tests can check the order of effects.
class FakeLog : public Log {
public:
    QStringList lines;

    void print(const QString &line) override { lines.append(line); }

    QStringList take() { return std::exchange(lines, {}); }
};

} // namespace kova
