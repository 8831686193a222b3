#pragma once

#include "Resources.h"

#include <QSet>

namespace kova {

/// Files below "/resources".
class FakeResources : public Resources {
public:
    QSet<QString> files{QStringLiteral("/resources/Sounds/morning_glass.mp3"),
                        QStringLiteral("/resources/Sounds/wakeup_pulse.mp3")};

    std::optional<QString> path(const QString &name) const override {
        const QString file = QStringLiteral("/resources/") + name;
        return files.contains(file) ? std::optional(file) : std::nullopt;
    }
};

} // namespace kova
