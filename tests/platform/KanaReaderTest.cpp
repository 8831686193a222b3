#include "KanaReader.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <optional>

using namespace kova;
using namespace Qt::StringLiterals;

// Mixed text, times, dates, counters and amounts, as they are written and pronounced.
constexpr char readings[] = R"(
起きる時間です。病院の予約があります → オキル ジカンデス。 ビョーインノ ヨヤクガ アリマス
今日は東京へ行く! → キョーワ トーキョーエ イク!
お薬を飲んで、Zoom会議（A社）です → オクスリヲ ノンデ、 Zoom カイギ( A シャ)デス
LED電球を買う Zoomで A4用紙 → LED デンキューヲ カウ Zoom デ A ヨン ヨーシ
「ゴミの日」・😀ﾗｰﾒﾝ𠮷 → ゴミノヒ ラーメン
０時 1時 四時 ７時 ９時 十四時 17時 １９時 二十時 何時 → レイジ イチジ ヨジ シチジ クジ ジューヨジ ジューシチジ ジュークジ ニジュージ ナンジ
7:05に 7:00だ 23:59を 0:00です 19:45発 → シチジゴフンニ シチジダ ニジューサンジゴジューキューフンヲ レイジデス ジュークジヨンジューゴフンハツ
７：００〜８：３０ 10:00-11:30会議 → シチジカラ ハチジサンジュップン ジュージカラ ジューイチジサンジュップン カイギ
七時十分に 7時05分です → シチジジュップンニ シチジゴフンデス
午前7時 午後3時15分 AM7:30起床 → ゴゼン シチジ ゴゴ サンジジューゴフン AM シチジサンジュップン キショー
毎朝6時半 夜7時 明日9時 8時ちょうど → マイアサ ロクジハン ヨル シチジ アシタ クジ ハチジ チョード
7時から8時まで 3時のおやつ → シチジカラ ハチジマデ サンジノ オヤツ
7時半 4時間 24時間 1時間半 30分間 90秒 → シチジハン ヨジカン ニジューヨジカン イチジカンハン サンジュップンカン キュージュービョー
十分後に 十分な 10分の休み 3分の1 → ジュップンゴニ ジューブンナ ジュップンノ ヤスミ サンブンノイチ
1分 2分 3分 4分 6分 8分 10分 100分 何分 → イップン ニフン サンプン ヨンプン ロップン ハップン ジュップン ヒャップン ナンプン
30分後に 5分前に 1〜2時間 → サンジュップンゴニ ゴフン マエニ イチカラ ニジカン
12月24日は休み → ジューニガツニジューヨッカワ ヤスミ
12/24(木)は 12月24日（木）です → ジューニガツニジューヨッカ モクヨービワ ジューニガツニジューヨッカ モクヨービデス
4月1日 7/7に 9月24日 十二月二十日 → シガツツイタチ シチガツナノカニ クガツニジューヨッカ ジューニガツ ハツカ
1日(金)の朝 毎月1日に 来月1日 → ツイタチ キンヨービノ アサ マイツキ ツイタチニ ライゲツ ツイタチ
1日 二日間 8日 14日 20日 31日 → イチニチ フツカカン ヨーカ ジューヨッカ ハツカ サンジューイチニチ
4月17日 9月19日 29日 数日 何日 → シガツジューシチニチ クガツジュークニチ ニジュークニチ スージツ ナンニチ
2026年11月26日 2026/01/05に 2026-11-26 → ニセンニジューロクネンジューイチガツニジューロクニチ ニセンニジューロクネンイチガツイツカニ ニセンニジューロクネンジューイチガツニジューロクニチ
二〇二六年 令和8年 六本木で三日月を → ニセンニジューロクネン レイワ ハチネン ロッポンギデ ミカズキヲ
1か月 6ヶ月 1週間 8週間 4年 小学4年生 → イッカゲツ ロッカゲツ イッシューカン ハッシューカン ヨネン ショーガク ヨネンセイ
第2月曜日 1泊2日 3泊4日 → ダイニ ゲツヨービ イッパクフツカ サンパクヨッカ
1人 二人 4人 11人 何人 2人前 2人分 → ヒトリ フタリ ヨニン ジューイチニン ナンニン ニニンマエ フタリブン
1回 3回 6回 8回 10回 数回 第1回 1日3回 → イッカイ サンカイ ロッカイ ハッカイ ジュッカイ スーカイ ダイイッカイ イチニチサンカイ
1本 3本 何本 4杯 6匹 8冊 10個 → イッポン サンボン ナンボン ヨンハイ ロッピキ ハッサツ ジュッコ
1枚 10枚 3足 1歩 3歩 1錠 4畳半 → イチマイ ジューマイ サンゾク イッポ サンポ イチジョー ヨジョー ハン
3階 1軒 20歳 1つ 2粒 3袋 第3会議室 → サンガイ イッケン ハタチ ヒトツ フタツブ サンフクロ ダイサン カイギシツ
3番目 2本目 3丁目 3番ホーム 12号車 → サンバンメ ニホンメ サンチョーメ サンバン ホーム ジューニ ゴーシャ
50% 5キロ 10キロ 5kmを 3cm 100m 25℃ → ゴジュッパーセント ゴキロ ジュッキロ ゴキロメートルヲ サンセンチ ヒャクメートル ニジューゴド
60kgです 100g 500mlの水 1.5L → ロクジュッキログラムデス ヒャクグラム ゴヒャクミリリットルノ ミズ イッテンゴリットル
300円 600円 8000円 1,980円 ¥500で $5 → サンビャクエン ロッピャクエン ハッセンエン センキューヒャクハチジューエン ゴヒャクエンデ ゴドル
0は 300 660 1,000円 8,888 → ゼロワ サンビャク ロッピャクロクジュー センエン ハッセンハッピャクハチジューハチ
5万円 10000000 1億2345人 1兆 千円 → ゴマンエン イッセンマン イチオクニセンサンビャクヨンジューゴニン イッチョー センエン
3.14は 1.5倍 37.2度 → サンテンイチヨンワ イッテンゴバイ サンジューナナテンニド
090-1234-56に 10000000000000000に → ゼロキューゼロ- イチニサンヨン- ゴロクニ イチゼロゼロゼロゼロゼロゼロゼロゼロゼロゼロゼロゼロゼロゼロゼロゼロニ
)";

/// Uses the real MeCab and dictionary, and scripts for its failures.
class KanaReaderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_reader.emplace(); }
    void cleanup() {
        m_reader.reset();
        qputenv("PATH", m_path);
    }

    void textIsReadAsPronounced_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("kana");
        for (const QString &line : QString::fromUtf8(readings).split(u'\n', Qt::SkipEmptyParts)) {
            const QStringList row = line.split(u" → "_s);
            QTest::newRow(qUtf8Printable(line)) << row.at(0) << row.at(1);
        }
        QTest::newRow("lines") << u"朝の\r\n\r\n\tお茶"_s << u"アサノ\n\nオチャ"_s;
    }

    void textIsReadAsPronounced() {
        QFETCH(QString, text);
        QFETCH(QString, kana);
        QCOMPARE(read(text), kana);
    }

    void missingReadingIsLoggedOnce() {
        const QByteArray isNotInstalled;
        for (const QByteArray &analyser :
             {isNotInstalled, QByteArray("exit 1"), QByteArray("kill -SEGV $$"),
              QByteArray("exec /bin/sleep 60"), QByteArray("exit 0"), QByteArray("echo; echo 予約; echo")}) {
            const QTemporaryDir folder;
            qputenv("PATH", folder.path().toUtf8());
            if (QFile program(folder.filePath(u"mecab"_s)); !analyser.isEmpty()) {
                QVERIFY(program.open(QIODevice::WriteOnly));
                program.write("#!/bin/sh\n" + analyser + '\n');
                program.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
            }
            m_reader.emplace(std::chrono::milliseconds(analyser.startsWith("exec") ? 50 : 5000));
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^kova-alarm: no kana reading.*: ."_s));
            QTest::failOnWarning(QRegularExpression(u"."_s));
            QCOMPARE(read(u"予約"_s), u"予約"_s);
            QCOMPARE(read(u"会議"_s), u"会議"_s);
        }
    }

    void tooLongTextIsReturnedUnchanged() {
        const QString text(1'000'000, QChar(u'朝'));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^kova-alarm: no kana reading.*: ."_s));
        QCOMPARE(read(text), text);
    }

    void newRequestReplacesThePendingOne() {
        m_reader->read(u"予約"_s, [](const QString &) { QFAIL("replaced"); });
        QCOMPARE(read(u"会議"_s), u"カイギ"_s);
        QCOMPARE(read(u"会議"_s), u"カイギ"_s);
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
