#include "InodeBookmarks.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace kova;

class BookmarksTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder.emplace(); }

    void renamedOrReplacedFileIsResolved() {
        const QByteArray bookmark = bookmarked(QStringLiteral("a.mp3"));
        write(path(QStringLiteral("other.mp3")));
        QVERIFY(QFile::rename(path(QStringLiteral("a.mp3")), path(QStringLiteral("z.mp3"))));
        QCOMPARE(resolveBookmark(bookmark).value(), path(QStringLiteral("z.mp3")));
        write(path(QStringLiteral("a.mp3")));
        QCOMPARE(resolveBookmark(bookmark).value(), path(QStringLiteral("a.mp3")));
    }

    void fileThatReusesTheInodeIsNotResolved() {
        const QByteArray bookmark = bookmarked(QStringLiteral("a.mp3"));
        if (decodeBookmark(bookmark)->birth == 0) {
            QSKIP("The file system does not record the time of birth");
        }
        // The file system reuses the inode soon.
        QVERIFY(QFile::remove(path(QStringLiteral("a.mp3"))));
        for (int number = 0; number < 20; ++number) {
            write(path(QString::number(number)));
        }
        QVERIFY(!resolveBookmark(bookmark));
    }

    void missingFileGivesAReason() {
        QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("folder")));
        for (const QString &name : {QStringLiteral("nothing"), QStringLiteral("folder")}) {
            const auto bookmark = createBookmark(path(name));
            QVERIFY(!bookmark);
            QVERIFY(bookmark.error().contains(path(name)));
        }
        const QByteArray bookmark = bookmarked(QStringLiteral("a.mp3"));
        m_folder.emplace(); // removes the old folder
        QVERIFY(!resolveBookmark(bookmark));
    }

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }

    static void write(const QString &path) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("sound");
    }

    QByteArray bookmarked(const QString &name) const {
        write(path(name));
        return createBookmark(path(name)).value();
    }

    std::optional<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(BookmarksTest)
#include "BookmarksTest.moc"
