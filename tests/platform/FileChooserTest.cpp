#include "DesktopFileChooser.h"
#include "SoundFormats.h"

#include <QApplication>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeView>

using namespace kova;

class FileChooserTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void onlySupportedFormatsAreOffered() {
        const QStringList filters = fileNameFilters(
            {QStringLiteral("audio/*"), QStringLiteral("audio/x-aiff"), QStringLiteral("audio/midi")});
        QCOMPARE(filters.size(), 2); // none for an unsupported type
        QSet<QString> offered;
        const QRegularExpression pattern(QStringLiteral("\\*\\.(\\w+)"));
        for (auto match = pattern.globalMatch(filters.join(u' ')); match.hasNext();) {
            offered.insert(match.next().captured(1));
        }
        QCOMPARE(offered.size(), soundFormats.size());
        for (const QString &suffix : std::as_const(offered)) {
            QVERIFY(soundFormatOf("/a/b." + suffix.toUpper().toStdString()) != nullptr);
        }
        for (const char *const other : {"/a/b.mid", "/a/b.mp3.mod", "/a.mp3/b", "mp3", ""}) {
            QVERIFY(soundFormatOf(other) == nullptr);
        }
    }

    void qtDialogIsJapaneseAndStartsInTheHomeFolder() {
        const QTemporaryDir home; // without a folder for music
        qputenv("HOME", home.path().toUtf8());
        QVERIFY(QDir(home.path()).mkdir(QStringLiteral("b")));
        QFile sound(home.filePath(QStringLiteral("a.mp3")));
        QVERIFY(sound.open(QFile::WriteOnly) && sound.write("abc") == 3 && sound.flush());
        sound.setFileTime(QDate(2026, 3, 2).startOfDay(), QFile::FileModificationTime);
        sound.close();
        QStringList texts;
        DesktopFileChooser chooser;
        QTimer::singleShot(0, this, [&] {
            auto *const dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
            const auto *const list = dialog->findChild<QTreeView *>();
            QTRY_COMPARE(list->model()->rowCount(list->rootIndex()), 2);
            texts << dialog->directory().path() << dialog->labelText(QFileDialog::Reject);
            for (const auto &[row, column] : {std::pair(0, 0), {0, 2}, {1, 0}, {1, 1}, {1, 2}, {1, 3}}) {
                texts << list->model()->index(row, column, list->rootIndex()).data().toString();
            }
            chooser.cancel();
        });
        QCOMPARE(chooser.chooseFile({QStringLiteral("選択"), {QStringLiteral("audio/*")}}), std::nullopt);
        QCOMPARE(texts.join(u'|'), home.path() + QStringLiteral("|キャンセル|b|フォルダ|a.mp3|3 バイト|"
                                                                "MP3 オーディオ|2026/03/02 0:00"));
    }

    void typedFileOfAnotherTypeIsRejected() {
        const QTemporaryDir folder;
        for (const char *const name : {"notes.txt", "a.MP3"}) {
            QVERIFY(QFile(folder.filePath(QString::fromLatin1(name))).open(QFile::WriteOnly));
        }
        DesktopFileChooser chooser;
        const auto type = [](const QString &path) {
            auto *const dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
            dialog->findChild<QLineEdit *>()->setText(path);
            QMetaObject::invokeMethod(dialog, "accept");
        };
        QTimer::singleShot(0, this, [&] {
            QTimer::singleShot(0, this, [&] { type(folder.filePath(QStringLiteral("a.MP3"))); });
            type(folder.filePath(QStringLiteral("notes.txt")));
        });
        const auto chosen = chooser.chooseFile({QStringLiteral("選択"), {QStringLiteral("audio/*")}});
        QCOMPARE(chosen.value_or(QString()), folder.filePath(QStringLiteral("a.MP3")));
    }
};

int main(int argc, char *argv[]) {
    const QApplication application(argc, argv);
    QLocale::setDefault(QLocale(QLocale::Japanese));
    FileChooserTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "FileChooserTest.moc"
