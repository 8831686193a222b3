#include "KanaText.h"

#include "JapaneseNumbers.h"

#include <QHash>
#include <QList>
#include <QRegularExpression>
#include <QStringList>
#include <algorithm>

namespace kova {

namespace {

struct Word {
    bool isApart; ///< follows a space
    QString text;
    QString kind;    ///< the first features
    QString reading; ///< empty if unknown

    bool isA(QStringView some) const { return kind.startsWith(some); }
    bool isNumber() const { return isA(u"名詞,数"); }
    bool isNumeral() const { return isNumber() && std::all_of(text.begin(), text.end(), kova::isNumeral); }
};
using Words = QList<Word>;

bool isKana(const QString &text) {
    return std::all_of(text.begin(), text.end(), [](QChar character) {
        return character.script() == QChar::Script_Katakana || character == QChar(u'ー');
    });
}

Word wordOf(const QString &line) {
    constexpr qsizetype kinds = 3;
    constexpr qsizetype pronunciation = 8;
    const qsizetype tab = line.indexOf(QChar(u'\t'));
    const QString text = line.left(tab);
    const QStringList features = line.mid(tab + 1).split(QChar(u','));
    const QString reading = features.value(pronunciation);
    return {.isApart = text.startsWith(QChar(u' ')),
            .text = text.trimmed(),
            .kind = features.mid(0, kinds).join(QChar(u',')),
            .reading = !reading.isEmpty() && isKana(reading) ? reading : QString()};
}

struct Counter {
    QString text; ///< empty if there is none
    QString reading;
};

// The counter after a number, if `word` is one. The dictionary has most of them.
Counter counterOf(const Word &word, const Word &next) {
    static const QHash<QString, Counter> special{
        {QStringLiteral("月"), {QStringLiteral("月"), QStringLiteral("ガツ")}},
        {QStringLiteral("つ"), {QStringLiteral("つ"), QStringLiteral("ツ")}},
        {QStringLiteral("%"), {QStringLiteral("パーセント"), QStringLiteral("パーセント")}},
        {QStringLiteral("分の"), {QStringLiteral("分の"), QStringLiteral("フンノ")}}};
    const bool isFraction = word.text == QStringView(u"分の") && next.isNumber();
    const bool isCounter = word.isA(u"名詞,接尾,助数詞") && !word.reading.isEmpty();
    const Counter regular = isCounter ? Counter{word.text, word.reading} : Counter();
    return isFraction ? regular : special.value(word.text, regular);
}

// Converts the words of a line to kana.
class Phrases {
public:
    explicit Phrases(const Words &words) : m_words(words) {}

    QString kana() {
        while (m_at < m_words.size()) {
            const Word word = ahead();
            const bool isNumber = word.isNumeral() || (word.isNumber() && !word.reading.isEmpty());
            if (isNumber) {
                addNumber();
            } else {
                addWord(next());
            }
            m_isAfterNumber = isNumber;
        }
        return m_kana.trimmed();
    }

private:
    Word ahead(qsizetype count = 0) const { return m_words.value(m_at + count); }
    Word next() { return m_words.value(m_at++); }
    bool hasAttached() const { return m_at < m_words.size() && !ahead().isApart; }

    void addWord(const Word &word) {
        static const QRegularExpression when(QStringLiteral("^(後|前|以内|おき|ごと)$"));
        if (word.text == QStringView(u"十分") && when.match(ahead().text).hasMatch()) { // not "enough"
            add(QStringLiteral("ジュップン"), beginsPhrase(word));
        } else if (word.isA(u"記号") && word.reading.isEmpty() && !word.kind.contains(QChar(u'点'))) {
            separate(); // a voice would read its name
        } else {
            add(word.reading.isEmpty() ? word.text : word.reading, beginsPhrase(word));
        }
        m_isAfterPrefix = word.isA(u"接頭詞");
    }

    void addNumber() {
        const bool isApart = ahead().isApart || !(m_isAfterNumber || m_isAfterPrefix);
        const Word first = next();
        QString number = first.text;
        while (first.isNumeral() && hasAttached() && ahead().isNumeral()) {
            number += next().text;
        }
        QString kana = first.isNumeral() ? numberInKana(number) : first.reading;
        if (hasAttached() && ahead().text == QChar(u'.') && ahead(1).isNumeral() && !ahead(1).isApart) {
            next();
            kana =
                countedInKana(kana, QStringLiteral("点"), QStringLiteral("テン")) + digitsInKana(next().text);
        }
        const Counter counter = hasAttached() ? counterOf(ahead(), ahead(1)) : Counter();
        if (!counter.text.isEmpty()) {
            next();
            const bool isFirst =
                counter.text == QChar(u'日') && kana == QStringView(u"イチ") && isDayOfMonth();
            kana = isFirst ? QStringLiteral("ツイタチ") : countedInKana(kana, counter.text, counter.reading);
        }
        // 090-1234-5678
        const bool isCode = number.size() > 1 && number.startsWith(QChar(u'0'));
        m_isCode = counter.text.isEmpty() && (isCode || (m_isCode && m_kana.endsWith(QChar(u'-'))));
        if (m_isCode) {
            kana = digitsInKana(number);
        }
        add(kana, isApart);
        m_isAfterPrefix = false;
    }

    // Whether 日 is a date and not a duration: after a month, or before a weekday.
    bool isDayOfMonth() const {
        const auto months = {QStringView(u"ガツ"), QStringView(u"ゲツ"), QStringView(u"ツキ")};
        return ahead().text.endsWith(QStringView(u"曜日")) ||
               std::any_of(months.begin(), months.end(),
                           [this](QStringView month) { return m_kana.endsWith(month); });
    }

    bool beginsPhrase(const Word &word) const {
        static const QRegularExpression attached(QStringLiteral("^(助|(名詞|動詞|形容詞),(接尾|非自立))"));
        return word.isApart || !(m_isAfterPrefix || !word.text.front().isLetterOrNumber() ||
                                 attached.match(word.kind).hasMatch());
    }

    void separate() {
        if (!m_kana.isEmpty() && m_kana.back() != QChar(u' ')) {
            m_kana += QChar(u' ');
        }
    }

    // eSpeak spells a word that begins with Latin letters.
    void add(const QString &text, bool isApart) {
        const bool isAfterLatin = !m_kana.isEmpty() && m_kana.back().script() == QChar::Script_Latin;
        if (isApart || (isAfterLatin && text.front().isLetter())) {
            separate();
        }
        m_kana += text;
    }

    const Words &m_words;
    qsizetype m_at = 0;
    bool m_isAfterNumber = false;
    bool m_isAfterPrefix = false;
    bool m_isCode = false; ///< the last number was read digit by digit
    QString m_kana;
};

bool hasKanji(const QString &text) {
    const auto characters = text.toUcs4();
    return std::any_of(characters.begin(), characters.end(),
                       [](char32_t character) { return QChar::script(character) == QChar::Script_Han; });
}

} // namespace

bool isJapanese(const QString &text) {
    return hasKanji(text) || std::any_of(text.begin(), text.end(), [](QChar character) {
               return character.script() == QChar::Script_Hiragana ||
                      character.script() == QChar::Script_Katakana;
           });
}

QByteArray forAnalyser(const QString &text) {
    QString plain = text.normalized(QString::NormalizationForm_KC);
    plain.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(QChar(u'\r'), QChar(u'\n'));
    for (QChar &character : plain) {
        if (character.category() == QChar::Other_Control && character != QChar(u'\n')) {
            character = QChar(u' ');
        }
    }
    return withNumbersInFull(plain).toUtf8() + '\n';
}

QString kanaOf(const QByteArray &analysis) {
    QStringList lines;
    Words words;
    bool isKnown = false;
    for (const QByteArray &line : analysis.split('\n')) {
        if (line.isEmpty()) {
            lines.append(Phrases(words).kana());
            words.clear();
        } else if (const Word word = wordOf(QString::fromUtf8(line)); !word.text.isEmpty()) {
            words.append(word);
            isKnown = isKnown || !word.reading.isEmpty();
        }
    }
    const QString kana = lines.join(QChar(u'\n'));
    return isKnown || !hasKanji(kana) ? kana.trimmed() : QString();
}

} // namespace kova
