#include "AlarmGroupJson.h"

#include "JsonReader.h"
#include "shownText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringDecoder>
#include <algorithm>
#include <array>
#include <bitset>
#include <charconv>
#include <cmath>
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

// Returns the double nearest to the shortest text that reads back as the same float, so that 0.8F is written
// as 0.8.
QJsonValue toJson(float value) {
    char text[32];
    const auto [end, error] = std::to_chars(std::begin(text), std::end(text), value);
    return QByteArrayView(text, end).toDouble();
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

// Reading: JsonReader has the other types.

template <typename T> bool read(JsonReader &json, T &field) {
    return json.read(field);
}

bool read(JsonReader &json, std::optional<QString> &field) {
    field.reset();
    return json.acceptNull() || json.read(field.emplace());
}

bool read(JsonReader &json, QUuid &field) {
    QString text;
    if (!json.read(text)) {
        return false;
    }
    field = QUuid::fromString(text);
    return text.compare(field.toString(QUuid::WithoutBraces), Qt::CaseInsensitive) == 0 ||
           json.fail("not a UUID");
}

bool read(JsonReader &json, QList<qint64> &field) {
    field.clear();
    return json.readArray([&] { return json.read(field.emplaceBack()); });
}

// Returns the reason of a failure.
std::optional<QString> readGroup(JsonReader &json, AlarmGroup &group) {
    QString failed;
    std::bitset<codingKeys.size()> found;
    const bool isGood = json.readObject([&](const QString &key) {
        const auto known = std::find_if(codingKeys.cbegin(), codingKeys.cend(),
                                        [&key](const CodingKey &codingKey) { return codingKey.name == key; });
        bool isRead = false;
        if (known == codingKeys.cend()) {
            isRead = json.skip();
        } else {
            found.set(known - codingKeys.cbegin());
            isRead = std::visit([&](auto member) { return read(json, group.*member); }, known->field);
        }
        failed = isRead ? QString() : u'"' + key.left(100) + QStringLiteral("\": ");
        return isRead;
    });
    if (!isGood) {
        return failed + json.error();
    }
    for (size_t i = 0; i < codingKeys.size(); ++i) {
        if (!found[i] && !std::holds_alternative<Member<std::optional<QString>>>(codingKeys[i].field)) {
            return QStringLiteral("\"%1\" is missing").arg(codingKeys[i].name);
        }
    }
    return std::nullopt;
}

} // namespace

bool canEncode(const QList<AlarmGroup> &groups) {
    return std::all_of(groups.cbegin(), groups.cend(), [](const AlarmGroup &group) {
        return std::isfinite(group.volume) && std::isfinite(group.ttsVolume) &&
               std::isfinite(group.createdAt);
    });
}

QByteArray encodeGroups(const QList<AlarmGroup> &groups) {
    QJsonArray list;
    for (const AlarmGroup &group : groups) {
        QJsonObject object;
        for (const auto &[name, field] : codingKeys) {
            object.insert(name, std::visit([&](auto member) { return toJson(group.*member); }, field));
        }
        list.append(object);
    }
    return QJsonDocument(list).toJson(QJsonDocument::Compact);
}

Result<QList<AlarmGroup>> decodeGroups(const QByteArray &json) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(json);
    if (decoder.hasError()) {
        return Failure{QStringLiteral("invalid UTF-8")};
    }
    JsonReader reader(text);
    QList<AlarmGroup> groups;
    std::optional<QString> reason;
    const bool isList = reader.readArray([&] {
        AlarmGroup group;
        reason = readGroup(reader, group);
        groups.append(group);
        return !reason;
    });
    if (reason) {
        return Failure{QStringLiteral("group %1: %2").arg(groups.size()).arg(plainLine(*reason))};
    }
    if (!isList || !reader.isAtEnd()) {
        return Failure{QStringLiteral("not a list of groups")};
    }
    return groups;
}

} // namespace kova
