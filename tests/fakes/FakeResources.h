#pragma once

#include "Resources.h"

#include <QSet>

namespace kova {

/// Resources below "/resources", with a folder "Sounds" unless the test removes it.
class FakeResources : public Resources {
public:
    bool hasSoundsFolder = true;
    QSet<QString> files{QStringLiteral("/resources/Sounds/morning_glass.mp3"),
                        QStringLiteral("/resources/Sounds/wakeup_pulse.mp3")};

    std::optional<QString> path(const QString &name, const QString &extension) const override {
        const QString root = QStringLiteral("/resources/");
        if (extension.isEmpty()) {
            return hasSoundsFolder ? std::optional(root + name) : std::nullopt;
        }
        const QString file = root + name + u'.' + extension;
        return fileExists(file) ? std::optional(file) : std::nullopt;
    }
    bool fileExists(const QString &path) const override { return files.contains(path); }
};

} // namespace kova
