#include "KanaReader.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <optional>

using namespace kova;

namespace {

struct Row {
    const char *text;
    const char *kana;
};

constexpr Row rows[] = {
    {"起きる時間です。病院の予約があります", "オキル ジカンデス。 ビョーインノ ヨヤクガ アリマス"},
    {"今日は東京へ行く!", "キョーワ トーキョーエ イク!"},
    {"お薬を飲んで、Zoom会議（A社）です", "オクスリヲ ノンデ、 Zoom カイギ( A シャ)デス"},
    {"Zoomで", "Zoom デ"},
    {"「ゴミの日」・😀ﾗｰﾒﾝ𠮷", "ゴミノヒ ラーメン"},
    {"朝の\r\n\r\n\tお茶", "アサノ\n\nオチャ"},
    {"０時 1時 四時 ７時 ９時 十四時 17時 １９時 二十時 何時",
     "レイジ イチジ ヨジ シチジ クジ ジューヨジ ジューシチジ ジュークジ ニジュージ ナンジ"},
    {"7:05に 7:00だ 23:59を", "シチジゴフンニ シチジダ ニジューサンジゴジューキューフンヲ"},
    {"７：００〜８：３０", "シチジカラ ハチジサンジュップン"},
    {"七時十分に 7時05分です", "シチジジュップンニ シチジゴフンデス"},
    {"十分後に 十分な 10分の休み 3分の1", "ジュップンゴニ ジューブンナ ジュップンノ ヤスミ サンブンノイチ"},
    {"1分 2分 3分 4分 6分 8分 10分 100分",
     "イップン ニフン サンプン ヨンプン ロップン ハップン ジュップン ヒャップン"},
    {"7時半 4時間 1時間半 30分間 90秒",
     "シチジハン ヨジカン イチジカンハン サンジュップンカン キュージュービョー"},
    {"4月1日 7/7に 9月24日 十二月二十日",
     "シガツツイタチ シチガツナノカニ クガツニジューヨッカ ジューニガツ ハツカ"},
    {"1日 二日間 14日 31日", "イチニチ フツカカン ジューヨッカ サンジューイチニチ"},
    {"1か月 6ヶ月 8週間 4年", "イッカゲツ ロッカゲツ ハッシューカン ヨネン"},
    {"1人 二人 4人 11人 何人 数回", "ヒトリ フタリ ヨニン ジューイチニン ナンニン スーカイ"},
    {"1本 3本 4杯 6匹 8冊 10個 何本", "イッポン サンボン ヨンハイ ロッピキ ハッサツ ジュッコ ナンボン"},
    {"3階 1軒 20歳 1つ 2粒 3袋 第3会議室",
     "サンガイ イッケン ハタチ ヒトツ フタツブ サンフクロ ダイサン カイギシツ"},
    {"50% 5キロ 10キロ 5kmを", "ゴジュッパーセント ゴキロ ジュッキロ ゴ km ヲ"},
    {"0は 300 660 1,000円 8,888",
     "ゼロワ サンビャク ロッピャクロクジュー センエン ハッセンハッピャクハチジューハチ"},
    {"5万円 10000000 1億2345人 1兆 千円",
     "ゴマンエン イッセンマン イチオクニセンサンビャクヨンジューゴニン イッチョー センエン"},
    {"3.14は 1.5倍 37.2度", "サンテンイチヨンワ イッテンゴバイ サンジューナナテンニド"},
    {"090-1234-56に 10000000000000000に",
     "ゼロキューゼロ- イチニサンヨン- ゴロクニ "
     "イチゼロゼロゼロゼロゼロゼロゼロゼロゼロゼロゼロゼロゼロゼロゼロゼロニ"},
    {"二〇二六年 六本木で三日月を", "ニセンニジューロクネン ロッポンギデ ミカズキヲ"},
};

} // namespace

/// With the real analyser and dictionary, but for its failures.
class KanaReaderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_reader.emplace(); }
    void cleanup() {
        m_reader.reset();
        qputenv("PATH", m_path);
    }

    void textIsReadAsAJapaneseReadsIt_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("kana");
        for (const Row &row : rows) {
            QTest::newRow(row.text) << QString::fromUtf8(row.text) << QString::fromUtf8(row.kana);
        }
    }

    void textIsReadAsAJapaneseReadsIt() {
        QFETCH(QString, text);
        QFETCH(QString, kana);
        QCOMPARE(read(text), kana);
    }

    void aMissingReadingIsToldOnce_data() {
        QTest::addColumn<QByteArray>("analyser");
        QTest::newRow("is not installed") << QByteArray();
        QTest::newRow("has no dictionary") << QByteArray("exit 1");
        QTest::newRow("crashes") << QByteArray("kill -SEGV $$");
        QTest::newRow("hangs") << QByteArray("exec /bin/sleep 60");
        QTest::newRow("is silent") << QByteArray("exit 0");
        QTest::newRow("says something else") << QByteArray("echo; echo 予約; echo");
    }

    void aMissingReadingIsToldOnce() {
        QFETCH(QByteArray, analyser);
        const QTemporaryDir folder;
        qputenv("PATH", folder.path().toUtf8());
        if (QFile program(folder.filePath(QStringLiteral("mecab"))); !analyser.isEmpty()) {
            QVERIFY(program.open(QIODevice::WriteOnly));
            program.write("#!/bin/sh\n" + analyser + '\n');
            program.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        }
        m_reader.emplace(std::chrono::milliseconds(analyser.startsWith("exec") ? 50 : 5000));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^kova-alarm: Japanese is .")));
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".")));
        QCOMPARE(read(QStringLiteral("予約")), QStringLiteral("予約"));
        QCOMPARE(read(QStringLiteral("会議")), QStringLiteral("会議"));
    }

    void aTextWithoutEndHoldsNobodyUp() {
        const QString text(1'000'000, QChar(u'朝'));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^kova-alarm: Japanese is .")));
        QCOMPARE(read(text), text);
    }

    void onlyTheLastTextIsDone() {
        m_reader->read(QStringLiteral("予約"), [](const QString &) { QFAIL("replaced"); });
        QCOMPARE(read(QStringLiteral("会議")), QStringLiteral("カイギ"));
        QCOMPARE(read(QStringLiteral("会議")), QStringLiteral("カイギ"));
    }

private:
    QString read(const QString &text) {
        QString kana;
        m_reader->read(text, [&kana](const QString &done) { kana = done; });
        return QTest::qWaitFor([&kana] { return !kana.isEmpty(); }) ? kana : QString();
    }

    const QByteArray m_path = qgetenv("PATH");
    std::optional<KanaReader> m_reader;
};

QTEST_GUILESS_MAIN(KanaReaderTest)
#include "KanaReaderTest.moc"
