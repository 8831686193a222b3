#pragma once

#include "Bookmarks.h"

#include <QMap>
#include <QPointer>
#include <QStringList>
#include <vector>

namespace kova {

/// A bookmark is "bookmark:" and the path. Paths in `lost` can be neither marked nor found, those in
/// `unreadable` be found but not read.
class FakeBookmarks : public Bookmarks {
public:
    QStringList lost;
    QMap<QString, QString> unreadable; ///< path to obstacle
    bool isSlow = false;               ///< answers only when told to

    void create(const QString &path, QObject *owner, Created answer) override {
        later(owner, [this, path, answer] {
            answer(lost.contains(path) ? Result<QByteArray>(Failure{QStringLiteral("no such file")})
                                       : "bookmark:" + path.toUtf8());
        });
    }
    void resolve(const QByteArray &bookmark, QObject *owner, Resolved answer) override {
        later(owner, [this, bookmark, answer] {
            const QString path = QString::fromUtf8(bookmark).section(u':', 1);
            if (!bookmark.startsWith("bookmark:") || lost.contains(path)) {
                answer(Failure{QStringLiteral("no such file")});
            } else {
                answer(ResolvedBookmark{
                    path, unreadable.contains(path) ? std::optional(unreadable.value(path)) : std::nullopt});
            }
        });
    }

    /// The disk has woken up.
    void answer() {
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
            answer();
        }
    }

    std::vector<std::pair<QPointer<QObject>, std::function<void()>>> m_waiting;
};

} // namespace kova
