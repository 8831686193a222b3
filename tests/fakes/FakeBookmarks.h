#pragma once

#include "Bookmarks.h"

#include <QStringList>

namespace kova {

/// A bookmark is "bookmark:" and the path. Paths in `lost` can be neither marked nor found.
class FakeBookmarks : public Bookmarks {
public:
    QStringList lost;
    mutable QStringList accessed;

    Result<QByteArray> create(const QString &path) const override {
        if (lost.contains(path)) {
            return Failure{QStringLiteral("no such file")};
        }
        return "bookmark:" + path.toUtf8();
    }
    Result<ResolvedBookmark> resolve(const QByteArray &bookmark) const override {
        const QString path = QString::fromUtf8(bookmark).section(u':', 1);
        if (!bookmark.startsWith("bookmark:") || lost.contains(path)) {
            return Failure{QStringLiteral("no such file")};
        }
        return ResolvedBookmark{path, false};
    }
    bool startAccessing(const QString &path) const override {
        accessed.append(path);
        return true;
    }
};

} // namespace kova
