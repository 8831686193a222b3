#include "AlarmGroupJson.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <array>
#include <cmath>
#include <limits>
#include <variant>

namespace kova {

namespace {

template <typename T> using Member = T AlarmGroup::*;

struct CodingKey {
    QLatin1StringView name;
    std::variant<Member<QUuid>, Member<QString>, Member<std::optional<QString>>, Member<qint64>,
                 Member<QList<qint64>>, Member<bool>, Member<float>, Member<double>>
        field;
};

const std::array<CodingKey, 19> codingKeys{{
    {QLatin1StringView("id"), &AlarmGroup::id},
    {QLatin1StringView("label"), &AlarmGroup::label},
    {QLatin1StringView("targetHour"), &AlarmGroup::targetHour},
    {QLatin1StringView("targetMinute"), &AlarmGroup::targetMinute},
    {QLatin1StringView("alarmCount"), &AlarmGroup::alarmCount},
    {QLatin1StringView("intervalMinutes"), &AlarmGroup::intervalMinutes},
    {QLatin1StringView("startBefore"), &AlarmGroup::startBefore},
    {QLatin1StringView("isEnabled"), &AlarmGroup::isEnabled},
    {QLatin1StringView("repeatDays"), &AlarmGroup::repeatDays},
    {QLatin1StringView("soundName"), &AlarmGroup::soundName},
    {QLatin1StringView("customSoundPath"), &AlarmGroup::customSoundPath},
    {QLatin1StringView("customSoundName"), &AlarmGroup::customSoundName},
    {QLatin1StringView("volume"), &AlarmGroup::volume},
    {QLatin1StringView("ttsEnabled"), &AlarmGroup::ttsEnabled},
    {QLatin1StringView("ttsMessage"), &AlarmGroup::ttsMessage},
    {QLatin1StringView("ttsLastEnabled"), &AlarmGroup::ttsLastEnabled},
    {QLatin1StringView("ttsLastMessage"), &AlarmGroup::ttsLastMessage},
    {QLatin1StringView("ttsVolume"), &AlarmGroup::ttsVolume},
    {QLatin1StringView("createdAt"), &AlarmGroup::createdAt},
}};

// Writing: one overload for each type of field that JSON does not have.

template <typename T> QJsonValue toJson(const T &value) {
    return value;
}

// The double nearest to the fewest digits that read back as the same float: a float of 0.8 is written as 0.8.
QJsonValue toJson(float value) {
    double shortest = value;
    int digits = std::numeric_limits<float>::digits10;
    do {
        shortest = QByteArray::number(static_cast<double>(value), 'g', digits++).toDouble();
    } while (static_cast<float>(shortest) != value);
    return shortest;
}

QJsonValue toJson(const std::optional<QString> &value) {
    return value ? QJsonValue(*value) : QJsonValue(QJsonValue::Undefined); // leaves the key out
}

QJsonValue toJson(const QUuid &value) {
    return value.toString(QUuid::WithoutBraces).toUpper();
}

QJsonValue toJson(const QList<qint64> &values) {
    QJsonArray array;
    for (const qint64 value : values) {
        array.append(value);
    }
    return array;
}

// Reading: a type of JSON value fits some types of field, and no others.
struct Reader {
    const QByteArray &source;

    bool read(const QJsonValue &json, bool &field) const {
        field = json.toBool();
        return json.isBool();
    }

    bool read(const QJsonValue &json, QString &field) const {
        field = json.toString();
        return json.isString();
    }

    bool read(const QJsonValue &json, std::optional<QString> &field) const {
        field.reset();
        return json.isNull() || json.isUndefined() || read(json, field.emplace());
    }

    bool read(const QJsonValue &json, QUuid &field) const {
        const QString text = json.toString();
        field = QUuid::fromString(text);
        return text.compare(field.toString(QUuid::WithoutBraces), Qt::CaseInsensitive) == 0;
    }

    bool read(const QJsonValue &json, double &field) const {
        field = json.toDouble();
        return json.isDouble();
    }

    bool read(const QJsonValue &json, float &field) const {
        // Half a step above the largest float: from here on a number no longer rounds to a finite float.
        constexpr double firstBeyond = 0x1.ffffffp+127;
        const double value = json.toDouble();
        const bool fits = json.isDouble() && std::abs(value) < firstBeyond;
        field = fits ? static_cast<float>(value) : 0.0F;
        return fits;
    }

    // A whole number may be written with a fraction or an exponent, as 7.0; anything else gives the default.
    // The parser rounds the next integers below the least to it.
    bool read(const QJsonValue &json, qint64 &field) const {
        constexpr qint64 least = std::numeric_limits<qint64>::min();
        field = json.toInteger(0);
        return field == json.toInteger(1) && (field != least || source.contains(QByteArray::number(least)));
    }

    bool read(const QJsonValue &json, QList<qint64> &field) const {
        bool isGood = json.isArray();
        for (const QJsonValue element : json.toArray()) {
            isGood = isGood && read(element, field.emplaceBack());
        }
        return isGood;
    }
};

bool isWritable(const AlarmGroup &group) {
    return std::isfinite(group.volume) && std::isfinite(group.ttsVolume) && std::isfinite(group.createdAt);
}

} // namespace

Result<QByteArray> encodeGroups(const QList<AlarmGroup> &groups) {
    QJsonArray list;
    for (const AlarmGroup &group : groups) {
        if (!isWritable(group)) {
            return Failure{QStringLiteral("group %1 holds a number that is not finite").arg(group.idText())};
        }
        QJsonObject object;
        for (const auto &[name, field] : codingKeys) {
            object.insert(name, std::visit([&](auto member) { return toJson(group.*member); }, field));
        }
        list.append(object);
    }
    return QJsonDocument(list).toJson(QJsonDocument::Compact);
}

Result<QList<AlarmGroup>> decodeGroups(const QByteArray &json) {
    // The parser takes a U+FEFF that begins a text for a mark of the encoding, unless it is escaped.
    QByteArray escaped = json;
    escaped.replace("\"\ufeff", "\"\\ufeff");
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(escaped, &error);
    if (document.isNull()) {
        return Failure{error.errorString()};
    }
    if (!document.isArray()) {
        return Failure{QStringLiteral("not a list of groups")};
    }
    const Reader reader{escaped};
    const QJsonArray list = document.array();
    QList<AlarmGroup> groups(list.size());
    for (qsizetype i = 0; i < list.size(); ++i) {
        const QJsonObject object = list.at(i).toObject();
        for (const auto &[name, field] : codingKeys) {
            const QJsonValue value = object.value(name);
            if (!std::visit([&](auto member) { return reader.read(value, groups[i].*member); }, field)) {
                return Failure{QStringLiteral("group %1 has no right \"%2\"").arg(i).arg(name)};
            }
        }
    }
    return groups;
}

} // namespace kova
