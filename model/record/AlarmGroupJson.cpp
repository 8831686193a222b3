#include "AlarmGroupJson.h"

#include <QStringDecoder>
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>
#include <string_view>

namespace kova {

namespace {

template <typename T> using Member = T AlarmGroup::*;
using Field = std::variant<Member<QUuid>, Member<QString>, Member<std::optional<QString>>, Member<qint64>,
                           Member<QList<qint64>>, Member<bool>, Member<float>, Member<double>>;

struct CodingKey {
    std::string_view name;
    Field field;

    bool isOptional() const { return std::holds_alternative<Member<std::optional<QString>>>(field); }
};

const std::array<CodingKey, 19> codingKeys{{
    {"id", &AlarmGroup::id},
    {"label", &AlarmGroup::label},
    {"targetHour", &AlarmGroup::targetHour},
    {"targetMinute", &AlarmGroup::targetMinute},
    {"alarmCount", &AlarmGroup::alarmCount},
    {"intervalMinutes", &AlarmGroup::intervalMinutes},
    {"startBefore", &AlarmGroup::startBefore},
    {"isEnabled", &AlarmGroup::isEnabled},
    {"repeatDays", &AlarmGroup::repeatDays},
    {"soundName", &AlarmGroup::soundName},
    {"customSoundPath", &AlarmGroup::customSoundPath},
    {"customSoundName", &AlarmGroup::customSoundName},
    {"volume", &AlarmGroup::volume},
    {"ttsEnabled", &AlarmGroup::ttsEnabled},
    {"ttsMessage", &AlarmGroup::ttsMessage},
    {"ttsLastEnabled", &AlarmGroup::ttsLastEnabled},
    {"ttsLastMessage", &AlarmGroup::ttsLastMessage},
    {"ttsVolume", &AlarmGroup::ttsVolume},
    {"createdAt", &AlarmGroup::createdAt},
}};

// Writing: one overload for each type of field. Each appends the value and tells whether JSON can express it.

template <typename Number> bool append(QByteArray &json, Number value) {
    if constexpr (std::is_floating_point_v<Number>) {
        if (!std::isfinite(value)) {
            return false;
        }
    }
    // The shortest decimal that reads back as the same number: a float of 0.8 is written as 0.8.
    std::array<char, 32> digits{};
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    json.append(digits.data(), written.ptr - digits.data());
    return true;
}

bool append(QByteArray &json, bool value) {
    json += value ? "true" : "false";
    return true;
}

bool append(QByteArray &json, const QString &value) {
    json += '"';
    for (const char byte : value.toUtf8()) {
        if (byte == '"' || byte == '\\') {
            json += '\\';
            json += byte;
        } else if (static_cast<unsigned char>(byte) < 0x20) {
            json += "\\u00" + QByteArray(1, byte).toHex();
        } else {
            json += byte;
        }
    }
    json += '"';
    return true;
}

bool append(QByteArray &json, const std::optional<QString> &value) {
    return append(json, value.value_or(QString()));
}

bool append(QByteArray &json, const QUuid &value) {
    return append(json, value.toString(QUuid::WithoutBraces).toUpper());
}

bool append(QByteArray &json, const QList<qint64> &values) {
    json += '[';
    for (const qint64 value : values) {
        json += json.endsWith('[') ? "" : ",";
        append(json, value);
    }
    json += ']';
    return true;
}

bool isAbsent(const AlarmGroup &group, const Field &field) {
    const auto *const text = std::get_if<Member<std::optional<QString>>>(&field);
    return text != nullptr && !(group.**text).has_value();
}

bool append(QByteArray &json, const AlarmGroup &group) {
    json += '{';
    for (const CodingKey &key : codingKeys) {
        if (isAbsent(group, key.field)) {
            continue;
        }
        json += json.endsWith('{') ? "\"" : ",\"";
        json.append(key.name.data(), static_cast<qsizetype>(key.name.size()));
        json += "\":";
        if (!std::visit([&](auto member) { return append(json, group.*member); }, key.field)) {
            return false;
        }
    }
    json += '}';
    return true;
}

// Reading: a type of JSON value fits some types of field, and no others.

struct NumberText {
    std::string_view digits;
};

double toDouble(NumberText number) {
    return QByteArrayView(number.digits.data(), static_cast<qsizetype>(number.digits.size())).toDouble();
}

template <typename Value, typename T> bool assign(Value, T &) {
    return false;
}

bool assign(bool value, bool &field) {
    field = value;
    return true;
}

bool assign(std::nullptr_t, std::optional<QString> &field) {
    field.reset();
    return true;
}

bool assign(std::string_view value, QString &field) {
    // QString::fromUtf8 would take a first U+FEFF for a mark of the encoding and drop it.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    field = decoder(QByteArrayView(value.data(), static_cast<qsizetype>(value.size())));
    return true;
}

bool assign(std::string_view value, std::optional<QString> &field) {
    return assign(value, field.emplace());
}

bool assign(std::string_view value, QUuid &field) {
    const QLatin1StringView text(value.data(), static_cast<qsizetype>(value.size()));
    field = QUuid::fromString(text);
    return text.compare(field.toString(QUuid::WithoutBraces), Qt::CaseInsensitive) == 0;
}

bool assign(NumberText number, double &field) {
    field = toDouble(number);
    return std::isfinite(field);
}

bool assign(NumberText number, float &field) {
    // Half a step above the largest float: from here on a number no longer rounds to a finite float.
    constexpr double firstBeyond = 0x1.ffffffp+127;
    const double value = toDouble(number);
    const bool fits = std::abs(value) < firstBeyond;
    field = fits ? static_cast<float>(value) : 0.0F;
    return fits;
}

// A whole number may be written with a fraction or an exponent, as 7.0.
bool assign(NumberText number, qint64 &field) {
    if (number.digits.find_first_of(".eE") == std::string_view::npos) {
        const char *const end = number.digits.data() + number.digits.size();
        return std::from_chars(number.digits.data(), end, field).ec == std::errc();
    }
    const double value = toDouble(number);
    const bool fits = value >= -0x1p63 && value < 0x1p63 && std::trunc(value) == value;
    field = fits ? static_cast<qint64>(value) : 0;
    return fits;
}

bool assign(NumberText number, QList<qint64> &field) {
    return assign(number, field.emplaceBack());
}

// Takes the parser's events: the list at depth 1, a group at depth 2, its weekdays or what it does not know
// below. Nothing is kept but the groups themselves.
class ListReader : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, ListReader> {
public:
    QList<AlarmGroup> groups;
    QString failure;

    bool Null() { return scalar(nullptr); }
    bool Bool(bool value) { return scalar(value); }
    bool RawNumber(const char *text, unsigned size, bool) { return scalar(NumberText{{text, size}}); }
    bool String(const char *text, unsigned size, bool) { return scalar(std::string_view(text, size)); }

    bool StartArray() {
        if (m_depth == 2 && m_key != nullptr) {
            const auto *const list = std::get_if<Member<QList<qint64>>>(&m_key->field);
            if (list == nullptr) {
                return fail();
            }
            groups.last().**list = {};
            m_isInList = true;
            m_found |= bit(*m_key);
        } else if (m_depth == 1 || m_isInList) {
            return fail();
        }
        m_depth += 1;
        return true;
    }
    bool EndArray(unsigned) {
        m_depth -= 1;
        m_isInList = false;
        return true;
    }
    bool StartObject() {
        if (m_depth == 0 || m_isInList || (m_depth == 2 && m_key != nullptr)) {
            return fail();
        }
        if (m_depth == 1) {
            groups.resize(groups.size() + 1);
            m_found = 0;
        }
        m_depth += 1;
        return true;
    }
    bool EndObject(unsigned) {
        m_depth -= 1;
        for (const CodingKey &key : codingKeys) {
            if (m_depth == 1 && !key.isOptional() && (m_found & bit(key)) == 0) {
                m_key = &key;
                return fail();
            }
        }
        m_key = nullptr;
        return true;
    }
    bool Key(const char *text, unsigned size, bool) {
        if (m_depth == 2) {
            const std::string_view name(text, size);
            const auto *const found = std::find_if(codingKeys.begin(), codingKeys.end(),
                                                   [name](const auto &key) { return key.name == name; });
            m_key = found == codingKeys.end() ? nullptr : found;
        }
        return true;
    }

private:
    static std::uint32_t bit(const CodingKey &key) { return 1U << (&key - codingKeys.data()); }

    template <typename Value> bool scalar(Value value) {
        if (m_depth < 2) {
            return fail();
        }
        const bool isKnown = m_depth == 2 ? m_key != nullptr : m_isInList;
        if (!isKnown) {
            return true;
        }
        if (const bool isElement = std::holds_alternative<Member<QList<qint64>>>(m_key->field);
            isElement != m_isInList) {
            return fail();
        }
        m_found |= bit(*m_key);
        return std::visit([&](auto member) { return assign(value, groups.last().*member); }, m_key->field) ||
               fail();
    }

    bool fail() {
        failure =
            m_depth < 2 && m_key == nullptr
                ? QStringLiteral("not a list of groups")
                : QStringLiteral("group %1 has no right \"%2\"")
                      .arg(groups.size() - 1)
                      .arg(QLatin1StringView(m_key->name.data(), static_cast<qsizetype>(m_key->name.size())));
        return false;
    }

    int m_depth = 0;
    bool m_isInList = false;
    const CodingKey *m_key = nullptr; // the member being read, null for one that the record does not know
    std::uint32_t m_found = 0;        // a bit for each key of the group being read
};

} // namespace

Result<QByteArray> encodeGroups(const QList<AlarmGroup> &groups) {
    constexpr qsizetype usualSize = 512;
    QByteArray json = "[";
    json.reserve(groups.size() * usualSize);
    for (const AlarmGroup &group : groups) {
        json += json.size() > 1 ? "," : "";
        if (!append(json, group)) {
            return Failure{QStringLiteral("group %1 holds a number that is not finite").arg(group.idText())};
        }
    }
    return json + ']';
}

Result<QList<AlarmGroup>> decodeGroups(const QByteArray &json) {
    constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag |
                               rapidjson::kParseNumbersAsStringsFlag;
    rapidjson::MemoryStream stream(json.constData(), static_cast<size_t>(json.size()));
    rapidjson::Reader parser;
    ListReader reader;
    const rapidjson::ParseResult result = parser.Parse<flags>(stream, reader);
    if (!result) {
        return Failure{reader.failure.isEmpty()
                           ? QString::fromLatin1(rapidjson::GetParseError_En(result.Code()))
                           : reader.failure};
    }
    if (static_cast<qsizetype>(stream.Tell()) != json.size()) {
        return Failure{QStringLiteral("there is more after the list")};
    }
    return std::move(reader.groups);
}

} // namespace kova
