#pragma once

#include "Preferences.h"

#include <QMap>
#include <QSet>

namespace kova {

/// Preferences in memory, written at once.
class FakePreferences : public Preferences {
public:
    QMap<QString, QByteArray> stored;
    QList<QByteArray> setAside;
    int saves = 0;

    std::optional<QByteArray> data(const QString &key) override {
        return stored.contains(key) ? std::optional(stored.value(key)) : std::nullopt;
    }
    void setData(const QString &key, const QByteArray &bytes) override {
        saves += 1;
        if (m_unreadable.remove(key)) {
            setAside.append(stored.value(key));
        }
        stored[key] = bytes;
    }
    void keepUnreadable(const QString &key) override { m_unreadable.insert(key); }

private:
    QSet<QString> m_unreadable;
};

} // namespace kova
