#include "DesktopFileChooser.h"
#include "SoundForms.h"

#include <QRegularExpression>
#include <QTest>

using namespace kova;

class FileChooserTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void onlyWhatIsPlayedIsOffered() {
        const QStringList filters = fileNameFilters(
            {QStringLiteral("audio/*"), QStringLiteral("audio/x-aiff"), QStringLiteral("audio/midi")});
        QCOMPARE(filters.size(), 2); // none for what is not played
        QSet<QString> offered;
        const QRegularExpression pattern(QStringLiteral("\\*\\.(\\w+)"));
        for (auto match = pattern.globalMatch(filters.join(u' ')); match.hasNext();) {
            offered.insert(match.next().captured(1));
        }
        QCOMPARE(offered.size(), soundForms().size());
        for (const QString &suffix : std::as_const(offered)) {
            QVERIFY(soundFormOf("/a/b." + suffix.toUpper().toStdString()) != nullptr);
        }
        for (const char *const other : {"/a/b.mid", "/a/b.mp3.mod", "/a.mp3/b", "mp3", ""}) {
            QVERIFY(soundFormOf(other) == nullptr);
        }
    }
};

QTEST_GUILESS_MAIN(FileChooserTest)
#include "FileChooserTest.moc"
