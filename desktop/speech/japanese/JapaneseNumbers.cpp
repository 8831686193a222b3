#include "JapaneseNumbers.h"

#include <QRegularExpression>
#include <algorithm>
#include <array>
#include <optional>

namespace kova {

namespace {

constexpr std::array<QStringView, 10> digitNames{u"ゼロ", u"イチ", u"ニ",   u"サン", u"ヨン",
                                                 u"ゴ",   u"ロク", u"ナナ", u"ハチ", u"キュー"};
constexpr QStringView kanjiDigits = u"〇一二三四五六七八九";

struct Unit {
    QChar sign;
    quint64 value;
    QStringView name;
};
constexpr quint64 myriad = 10'000;
constexpr std::array<Unit, 6> units{{{u'兆', 1'000'000'000'000, u"チョー"},
                                     {u'億', 100'000'000, u"オク"},
                                     {u'万', myriad, u"マン"},
                                     {u'千', 1000, u"セン"},
                                     {u'百', 100, u"ヒャク"},
                                     {u'十', 10, u"ジュー"}}};

const Unit *unitOf(QChar sign) {
    const auto *const unit =
        std::find_if(units.begin(), units.end(), [sign](const Unit &one) { return one.sign == sign; });
    return unit != units.end() ? unit : nullptr;
}

// -1 for what is no digit.
int digitOf(QChar character) {
    if (character == u'零') {
        return 0;
    }
    const bool isAscii = character >= u'0' && character <= u'9';
    return isAscii ? character.digitValue() : static_cast<int>(kanjiDigits.indexOf(character));
}

std::optional<quint64> valueOf(const QString &number) {
    constexpr quint64 limit = myriad * myriad * myriad * myriad;
    quint64 whole = 0;   // up to the last 万, 億 or 兆
    quint64 section = 0; // up to the last 千, 百 or 十
    quint64 digits = 0;
    for (const QChar character : number) {
        const Unit *const unit = unitOf(character);
        if (unit == nullptr) {
            digits = digits * 10 + static_cast<quint64>(digitOf(character));
        } else if (digits >= myriad || section >= myriad) {
            return std::nullopt;
        } else if (unit->value < myriad) {
            section += std::max<quint64>(digits, 1) * unit->value;
            digits = 0;
        } else {
            whole += std::max<quint64>(section + digits, 1) * unit->value;
            section = digits = 0;
        }
        if (digits >= limit || whole >= limit) {
            return std::nullopt;
        }
    }
    const quint64 value = whole + section + digits;
    return value < limit ? std::optional(value) : std::nullopt;
}

constexpr QStringView rowK = u"カキクケコ";
constexpr QStringView rowH = u"ハヒフヘホ";
constexpr QStringView voiceless = u"カキクケコサシスセソタチツテトハヒフヘホパピプペポ";

// What becomes of the counter's first sound behind ン.
enum class AfterN { Stays, IsVoiced, IsPlosive };

// 一 and 本, ホン, meet as イッポン; 三 and 本 as サンボン.
QString joined(QString number, QString counter, AfterN afterN) {
    const QChar first = counter.isEmpty() ? QChar() : counter[0];
    const auto shortens = [&number](QStringView end) { return number.endsWith(end); };
    const bool isShort =
        voiceless.contains(first) &&
        (shortens(u"イチ") || shortens(u"ハチ") || shortens(u"ジュー") ||
         ((rowK.contains(first) || rowH.contains(first)) && (shortens(u"ロク") || shortens(u"ヒャク"))));
    // In the script a voiced sound stands behind the voiceless one, and of the ハ row the plosive behind
    // both.
    if (isShort) {
        number.back() = u'ッ';
        counter[0] = rowH.contains(first) ? QChar(first.unicode() + 2) : first;
    } else if (number.endsWith(u'ン') && rowH.contains(first) && afterN == AfterN::IsPlosive) {
        counter[0] = QChar(first.unicode() + 2);
    } else if (number.endsWith(u'ン') && !number.endsWith(u"ヨン") && afterN == AfterN::IsVoiced) {
        counter[0] = QChar(first.unicode() + 1);
    }
    return number + counter;
}

QString belowMyriad(quint64 value, bool isCounted) {
    QString kana;
    for (const Unit &unit : units) {
        if (unit.value >= myriad || value < unit.value) {
            continue;
        }
        const quint64 count = value / unit.value;
        value %= unit.value;
        // 百 and 千, but 一千万.
        const bool isBare = count == 1 && (unit.value < 1000 || !isCounted);
        kana += isBare ? unit.name.toString()
                       : joined(digitNames.at(count).toString(), unit.name.toString(),
                                unit.value > 10 ? AfterN::IsVoiced : AfterN::Stays);
    }
    return value > 0 ? kana.append(digitNames.at(value)) : kana;
}

struct Meeting {
    QStringView number;
    QStringView counter;
    QStringView said;
};

// Numbers that are words of their own with these counters.
constexpr std::array<Meeting, 25> words{{
    {u"イチ", u"人", u"ヒトリ"},
    {u"ニ", u"人", u"フタリ"},
    {u"ニジュー", u"歳", u"ハタチ"},
    {u"ニ", u"日", u"フツカ"},
    {u"サン", u"日", u"ミッカ"},
    {u"ヨン", u"日", u"ヨッカ"},
    {u"ゴ", u"日", u"イツカ"},
    {u"ロク", u"日", u"ムイカ"},
    {u"ナナ", u"日", u"ナノカ"},
    {u"ハチ", u"日", u"ヨーカ"},
    {u"キュー", u"日", u"ココノカ"},
    {u"ジュー", u"日", u"トーカ"},
    {u"ニジュー", u"日", u"ハツカ"},
    {u"ジューヨン", u"日", u"ジューヨッカ"},
    {u"ニジューヨン", u"日", u"ニジューヨッカ"},
    {u"イチ", u"つ", u"ヒトツ"},
    {u"ニ", u"つ", u"フタツ"},
    {u"サン", u"つ", u"ミッツ"},
    {u"ヨン", u"つ", u"ヨッツ"},
    {u"ゴ", u"つ", u"イツツ"},
    {u"ロク", u"つ", u"ムッツ"},
    {u"ナナ", u"つ", u"ナナツ"},
    {u"ハチ", u"つ", u"ヤッツ"},
    {u"キュー", u"つ", u"ココノツ"},
    {u"ニジュー", u"才", u"ハタチ"},
}};

// How numbers end with counters that begin so.
constexpr std::array<Meeting, 10> endings{{
    {u"ゼロ", u"時", u"レイ"},
    {u"ヨン", u"時", u"ヨ"},
    {u"ナナ", u"時", u"シチ"},
    {u"キュー", u"時", u"ク"},
    {u"ヨン", u"月", u"シ"},
    {u"ナナ", u"月", u"シチ"},
    {u"キュー", u"月", u"ク"},
    {u"ヨン", u"年", u"ヨ"},
    {u"ヨン", u"人", u"ヨ"},
    {u"ヨン", u"円", u"ヨ"},
}};

QString wordOf(const QString &number, const QString &counter) {
    const auto *const word = std::find_if(words.begin(), words.end(), [&](const Meeting &one) {
        return one.number == number && one.counter == counter;
    });
    return word != words.end() ? word->said.toString() : QString();
}

AfterN afterN(const QString &counter, const QString &reading) {
    constexpr QStringView plosive = u"分泊歩発拍";
    constexpr QStringView voiced = u"階軒足";
    if (plosive.contains(counter[0])) {
        return AfterN::IsPlosive;
    }
    return voiced.contains(counter[0]) || rowH.contains(reading[0]) ? AfterN::IsVoiced : AfterN::Stays;
}

} // namespace

bool isNumeral(QChar character) {
    return digitOf(character) >= 0 || unitOf(character) != nullptr;
}

QString numberInKana(const QString &number) {
    const std::optional<quint64> value = valueOf(number);
    if (!value) {
        return digitsInKana(number);
    }
    if (*value == 0) {
        return digitNames[0].toString();
    }
    QString kana;
    quint64 rest = *value;
    for (const Unit &unit : units) {
        if (unit.value >= myriad && rest >= unit.value) {
            kana += joined(belowMyriad(rest / unit.value, true), unit.name.toString(), AfterN::Stays);
            rest %= unit.value;
        }
    }
    return kana + belowMyriad(rest, false);
}

QString digitsInKana(const QString &digits) {
    QString kana;
    for (const QChar character : digits) {
        const Unit *const unit = unitOf(character);
        kana += unit != nullptr ? unit->name : digitNames.at(static_cast<size_t>(digitOf(character)));
    }
    return kana;
}

QString countedInKana(const QString &number, const QString &counter, const QString &reading) {
    constexpr QStringView ofOldNumbers = u"箱皿袋粒束口組切晩";
    if (counter == QStringView(u"日間")) {
        return countedInKana(number, counter.left(1), reading.left(2)) + reading.mid(2);
    }
    if (QString word = wordOf(number, counter); !word.isEmpty()) {
        return word;
    }
    if (ofOldNumbers.contains(counter[0])) {
        const bool isOne = number == digitNames[1];
        const bool isTwo = number == digitNames[2];
        return (isOne ? QStringLiteral("ヒト") : isTwo ? QStringLiteral("フタ") : number) + reading;
    }
    // Foreign units change no number but ten.
    if (counter == reading && !number.endsWith(u"ジュー")) {
        return number + reading;
    }
    for (const Meeting &ending : endings) {
        if (counter.startsWith(ending.counter) && number.endsWith(ending.number)) {
            return number.chopped(ending.number.size()).append(ending.said) + reading;
        }
    }
    return joined(number, reading, afterN(counter, reading));
}

QString withNumbersInFull(QString text) {
    static const QRegularExpression hour(QStringLiteral("(?<![\\d:])([01]?\\d|2[0-4]):00(?![\\d:])"));
    static const QRegularExpression minute(
        QStringLiteral("(?<![\\d:])([01]?\\d|2[0-4]):([0-5]\\d)(?![\\d:])"));
    static const QRegularExpression day(
        QStringLiteral("(?<![\\d/])(1[0-2]|0?[1-9])/([12]\\d|3[01]|0?[1-9])(?![\\d/])"));
    static const QRegularExpression thousand(QStringLiteral("(?<=\\d),(?=(\\d{3},)*\\d{3}(?!\\d))"));
    static const QRegularExpression span(QStringLiteral("(?<=[\\d時分日月年]) ?[〜~] ?(?=\\d)"));
    return text.replace(hour, QStringLiteral("\\1時"))
        .replace(minute, QStringLiteral("\\1時\\2分"))
        .replace(day, QStringLiteral("\\1月\\2日"))
        .replace(thousand, QString())
        .replace(span, QStringLiteral("から"));
}

} // namespace kova
