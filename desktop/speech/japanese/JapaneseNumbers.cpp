#include "JapaneseNumbers.h"

#include <QRegularExpression>
#include <algorithm>
#include <array>
#include <optional>

namespace kova {

namespace {

constexpr quint64 myriad = 10'000;
constexpr std::array<QStringView, 10> digitNames{u"ゼロ", u"イチ", u"ニ",   u"サン", u"ヨン",
                                                 u"ゴ",   u"ロク", u"ナナ", u"ハチ", u"キュー"};
constexpr QStringView kanjiDigits = u"〇一二三四五六七八九";

struct Unit {
    QChar sign;
    quint64 value;
    QStringView name;
};
constexpr std::array<Unit, 6> units{{{u'兆', 1'000'000'000'000, u"チョー"},
                                     {u'億', 100'000'000, u"オク"},
                                     {u'万', myriad, u"マン"},
                                     {u'千', 1000, u"セン"},
                                     {u'百', 100, u"ヒャク"},
                                     {u'十', 10, u"ジュー"}}};

// Numbers that change before counters with one of these first characters, as FORM=READING pairs:
// "イチ=ヒトリ" replaces the number and a counter of one character, "^イチ=ヒト" the number, and "~ヨン=ヨ"
// the end of a number.
struct Irregular {
    QStringView counters;
    QStringView readings;
};
constexpr std::array<Irregular, 8> irregulars{{
    {u"時", u"~ゼロ=レイ ~ヨン=ヨ ~ナナ=シチ ~キュー=ク"},
    {u"月", u"~ヨン=シ ~ナナ=シチ ~キュー=ク"},
    {u"日",
     u"ニ=フツカ サン=ミッカ ヨン=ヨッカ ゴ=イツカ ロク=ムイカ ナナ=ナノカ ハチ=ヨーカ キュー=ココノカ "
     u"ジュー=トーカ ジューヨン=ジューヨッカ ニジュー=ハツカ ニジューヨン=ニジューヨッカ スー=スージツ "
     u"~ナナ=シチ ~キュー=ク"},
    {u"人", u"イチ=ヒトリ ニ=フタリ ~ヨン=ヨ"},
    {u"つ", u"イチ=ヒトツ ニ=フタツ サン=ミッツ ヨン=ヨッツ ゴ=イツツ ロク=ムッツ ナナ=ナナツ ハチ=ヤッツ "
            u"キュー=ココノツ"},
    {u"歳才", u"ニジュー=ハタチ"},
    {u"年円畳", u"~ヨン=ヨ"},
    {u"箱皿袋粒束口組切晩", u"^イチ=ヒト ^ニ=フタ ~="},
}};

// Counters that begin with a voiced or a plosive sound after ン.
constexpr QStringView voicedCounters = u"階軒足百千";
constexpr QStringView plosiveCounters = u"分泊歩発拍";

constexpr QStringView rowK = u"カキクケコ";
constexpr QStringView rowH = u"ハヒフヘホ";
constexpr QStringView voiceless = u"カキクケコサシスセソタチツテトハヒフヘホパピプペポ";

const Unit *unitOf(QChar sign) {
    const auto *const unit =
        std::find_if(units.begin(), units.end(), [sign](const Unit &one) { return one.sign == sign; });
    return unit != units.end() ? unit : nullptr;
}

// Returns -1 if the character is not a digit.
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

// Changes the sounds where a number and a counter meet: イチ and ホン become イッポン, サン and ホン become
// サンボン. In Unicode the voiced kana follows the voiceless one, and the plosive of the ハ row follows both.
QString joined(QString number, QString counter, QChar sign) {
    const QChar first = counter[0];
    const bool isH = rowH.contains(first);
    const auto endsWith = [&number](std::initializer_list<QStringView> ends) {
        return std::any_of(ends.begin(), ends.end(), [&](QStringView end) { return number.endsWith(end); });
    };
    const bool isGeminated = (voiceless.contains(first) && endsWith({u"イチ", u"ハチ", u"ジュー"})) ||
                             ((isH || rowK.contains(first)) && endsWith({u"ロク", u"ヒャク"}));
    if (isGeminated) {
        number.back() = u'ッ';
    }
    const bool isPlosive = isH && (isGeminated || (number.endsWith(u'ン') && plosiveCounters.contains(sign)));
    const bool isVoiced =
        (isH || voicedCounters.contains(sign)) && number.endsWith(u'ン') && !endsWith({u"ヨン"});
    counter[0] = QChar(first.unicode() + (isPlosive ? 2 : isVoiced ? 1 : 0));
    return number + counter;
}

// Returns the reading of a positive number. Before a unit such as 万, 千 is read イッセン.
QString readingOf(quint64 value, bool isBeforeUnit) {
    QString kana;
    for (const Unit &unit : units) {
        if (const quint64 count = std::exchange(value, value % unit.value) / unit.value; count > 0) {
            const bool isBare = count == 1 && unit.value <= (isBeforeUnit ? 100 : 1000);
            const QString name = unit.name.toString();
            kana += isBare ? name : joined(readingOf(count, true), name, unit.sign);
        }
    }
    return value > 0 ? kana.append(digitNames.at(value)) : kana;
}

// Returns a null string if the number is regular before the counter.
QString irregular(const QString &number, const QString &counter, const QString &reading) {
    for (const Irregular &row : irregulars) {
        if (!row.counters.contains(counter[0])) {
            continue;
        }
        for (const QStringView pair : row.readings.split(u' ')) {
            const QStringView form = pair.left(pair.indexOf(u'='));
            QString said = pair.mid(form.size() + 1).toString();
            if (form == number && counter.size() == 1) {
                return said;
            }
            if (form[0] == u'^' && form.mid(1) == number) {
                return said + reading;
            }
            if (form[0] == u'~' && number.endsWith(form.mid(1))) {
                return number.chopped(form.size() - 1) + said + reading;
            }
        }
    }
    return {};
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
    return *value > 0 ? readingOf(*value, false) : digitNames[0].toString();
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
    if (counter == QStringView(u"日間")) {
        return countedInKana(number, counter.left(1), reading.left(2)) + reading.mid(2);
    }
    if (QString kana = irregular(number, counter, reading); !kana.isNull()) {
        return kana;
    }
    // Before a loanword only ten changes.
    const bool isLoanword = counter == reading;
    return isLoanword && !number.endsWith(u"ジュー") ? number + reading : joined(number, reading, counter[0]);
}

QString withNumbersInFull(QString text) {
    static const auto pattern = [](const char *regex) {
        return QRegularExpression(QString::fromUtf8(regex));
    };
    static const std::array<std::pair<QRegularExpression, QString>, 18> rewritings{{
        {pattern("(?<![\\d/-])(\\d{4})([/-])(1[0-2]|0?[1-9])\\2([12]\\d|3[01]|0?[1-9])(?![\\d/-])"),
         QStringLiteral("\\1年\\3月\\4日")},
        {pattern("(?<![\\d:])([01]?\\d|2[0-4]):00(?![\\d:])"), QStringLiteral("\\1時")},
        {pattern("(?<![\\d:])([01]?\\d|2[0-4]):([0-5]\\d)(?![\\d:])"), QStringLiteral("\\1時\\2分")},
        {pattern("(?<![\\d/])(1[0-2]|0?[1-9])/([12]\\d|3[01]|0?[1-9])(?![\\d/])"),
         QStringLiteral("\\1月\\2日")},
        {pattern("(?<=\\d日) ?\\(([月火水木金土日])\\)"), QStringLiteral("\\1曜日")},
        {pattern("(?<=\\d),(?=(\\d{3},)*\\d{3}(?!\\d))"), QString()},
        {pattern("¥ ?(\\d+)円?"), QStringLiteral("\\1円")},
        {pattern("\\$ ?(\\d+(\\.\\d+)?)"), QStringLiteral("\\1ドル")},
        {pattern("(?<=\\d) ?°C"), QStringLiteral("度")},
        {pattern("(?<=\\d) ?km(?![A-Za-z])"), QStringLiteral("キロメートル")},
        {pattern("(?<=\\d) ?cm(?![A-Za-z])"), QStringLiteral("センチ")},
        {pattern("(?<=\\d) ?mm(?![A-Za-z])"), QStringLiteral("ミリ")},
        {pattern("(?<=\\d) ?m(?![A-Za-z])"), QStringLiteral("メートル")},
        {pattern("(?<=\\d) ?kg(?![A-Za-z])"), QStringLiteral("キログラム")},
        {pattern("(?<=\\d) ?g(?![A-Za-z])"), QStringLiteral("グラム")},
        {pattern("(?<=\\d) ?m[lL](?![A-Za-z])"), QStringLiteral("ミリリットル")},
        {pattern("(?<=\\d) ?[lL](?![A-Za-z])"), QStringLiteral("リットル")},
        {pattern("(?<=[\\d時分日月年]) ?[〜~] ?(?=\\d)|(?<=[時分]) ?[-–] ?(?=\\d)"), QStringLiteral("から")},
    }};
    for (const auto &[regex, replacement] : rewritings) {
        text.replace(regex, replacement);
    }
    return text;
}

} // namespace kova
