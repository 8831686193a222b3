#pragma once

#include "Preferences.h"

#include <QMap>

namespace kova {

/// Preferences in memory, written at once.
class FakePreferences : public Preferences {
public:
    QMap<QString, QByteArray> stored;
    int saves = 0;

    std::optional<QByteArray> data(const QString &key) const override {
        return stored.contains(key) ? std::optional(stored.value(key)) : std::nullopt;
    }
    void setData(const QString &key, Encoder encode) override {
        saves += 1;
        if (const auto value = encode()) {
            stored[key] = *value;
        }
    }
};

} // namespace kova
