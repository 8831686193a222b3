#pragma once

#include "Bookmarks.h"

#include <QPointer>
#include <QStringList>
#include <vector>

namespace kova {

/// A bookmark is "bookmark:" and the path. Paths in `lost` can be neither created nor resolved.
class FakeBookmarks : public Bookmarks {
public:
    QStringList lost;
    bool isSlow = false; ///< waits for respond()

    void create(const QString &path, QObject *owner, Created done) override {
        later(owner, [this, path, done] {
            done(lost.contains(path) ? Result<QByteArray>(Failure{QStringLiteral("no such file")})
                                     : "bookmark:" + path.toUtf8());
        });
    }
    void resolve(const QByteArray &bookmark, QObject *owner, Resolved done) override {
        later(owner, [this, bookmark, done] {
            const QString path = QString::fromUtf8(bookmark).section(u':', 1);
            const bool isFound = bookmark.startsWith("bookmark:") && !lost.contains(path);
            done(isFound ? Result<QString>(path) : Failure{QStringLiteral("no such file")});
        });
    }

    /// Completes the pending calls.
    void respond() {
        for (const auto &[owner, action] : std::exchange(m_waiting, {})) {
            if (owner) {
                action();
            }
        }
    }

private:
    void later(QObject *owner, const std::function<void()> &action) {
        m_waiting.emplace_back(owner, action);
        if (!isSlow) {
            respond();
        }
    }

    std::vector<std::pair<QPointer<QObject>, std::function<void()>>> m_waiting;
};

} // namespace kova
