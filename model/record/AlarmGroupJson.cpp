#include "AlarmGroupJson.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace kova {

namespace {

// The shortest decimal that names the float, so that 0.8 is stored as 0.8 and reads back as the same float.
double shortestDecimal(float value) {
    std::array<char, 32> digits{};
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    double decimal = 0;
    std::from_chars(digits.data(), written.ptr, decimal);
    return decimal;
}

QJsonObject encodeGroup(const AlarmGroup &group) {
    QJsonArray repeatDays;
    for (const qint64 day : group.repeatDays) {
        repeatDays.append(day);
    }
    QJsonObject object{
        {QStringLiteral("id"), group.idText()},
        {QStringLiteral("label"), group.label},
        {QStringLiteral("targetHour"), group.targetHour},
        {QStringLiteral("targetMinute"), group.targetMinute},
        {QStringLiteral("alarmCount"), group.alarmCount},
        {QStringLiteral("intervalMinutes"), group.intervalMinutes},
        {QStringLiteral("startBefore"), group.startBefore},
        {QStringLiteral("isEnabled"), group.isEnabled},
        {QStringLiteral("repeatDays"), repeatDays},
        {QStringLiteral("soundName"), group.soundName},
        {QStringLiteral("volume"), shortestDecimal(group.volume)},
        {QStringLiteral("ttsEnabled"), group.ttsEnabled},
        {QStringLiteral("ttsMessage"), group.ttsMessage},
        {QStringLiteral("ttsLastEnabled"), group.ttsLastEnabled},
        {QStringLiteral("ttsLastMessage"), group.ttsLastMessage},
        {QStringLiteral("ttsVolume"), shortestDecimal(group.ttsVolume)},
        {QStringLiteral("createdAt"), group.createdAt},
    };
    if (group.customSoundPath) {
        object.insert(QStringLiteral("customSoundPath"), *group.customSoundPath);
    }
    if (group.customSoundName) {
        object.insert(QStringLiteral("customSoundName"), *group.customSoundName);
    }
    return object;
}

// Reads the members of one object and remembers the first that is not what it must be.
class Reader {
public:
    explicit Reader(QJsonObject object) : m_object(std::move(object)) {}

    void read(QLatin1StringView key, bool &field) {
        const QJsonValue value = m_object.value(key);
        check(key, value.isBool());
        field = value.toBool();
    }
    void read(QLatin1StringView key, qint64 &field) { field = integer(key, m_object.value(key)); }
    void read(QLatin1StringView key, double &field) {
        const QJsonValue value = m_object.value(key);
        check(key, value.isDouble() && std::isfinite(value.toDouble()));
        field = value.toDouble();
    }
    void read(QLatin1StringView key, float &field) {
        double value = 0;
        read(key, value);
        check(key, std::abs(value) <= static_cast<double>(std::numeric_limits<float>::max()));
        field = m_failedKey.isEmpty() ? static_cast<float>(value) : 0.0F;
    }
    void read(QLatin1StringView key, QString &field) {
        const QJsonValue value = m_object.value(key);
        check(key, value.isString());
        field = value.toString();
    }
    void read(QLatin1StringView key, std::optional<QString> &field) {
        const QJsonValue value = m_object.value(key);
        check(key, value.isString() || value.isNull() || value.isUndefined());
        field = value.isString() ? std::optional(value.toString()) : std::nullopt;
    }
    void read(QLatin1StringView key, QUuid &field) {
        const QString text = m_object.value(key).toString();
        field = QUuid::fromString(text);
        check(key, text.compare(field.toString(QUuid::WithoutBraces), Qt::CaseInsensitive) == 0);
    }
    void read(QLatin1StringView key, QList<qint64> &field) {
        const QJsonValue value = m_object.value(key);
        check(key, value.isArray());
        field.clear();
        for (const QJsonValue &element : value.toArray()) {
            field.append(integer(key, element));
        }
    }

    const QString &failedKey() const { return m_failedKey; }

private:
    void check(QLatin1StringView key, bool isRight) {
        if (!isRight && m_failedKey.isEmpty()) {
            m_failedKey = key;
        }
    }
    // A fraction or a number beyond 64 bits gives whichever default is asked for.
    qint64 integer(QLatin1StringView key, const QJsonValue &value) {
        const qint64 number = value.toInteger(0);
        check(key, value.isDouble() && (number != 0 || value.toInteger(1) == 0));
        return number;
    }

    QJsonObject m_object;
    QString m_failedKey;
};

QString decodeGroup(const QJsonObject &object, AlarmGroup &group) {
    Reader reader(object);
    reader.read(QLatin1StringView("id"), group.id);
    reader.read(QLatin1StringView("label"), group.label);
    reader.read(QLatin1StringView("targetHour"), group.targetHour);
    reader.read(QLatin1StringView("targetMinute"), group.targetMinute);
    reader.read(QLatin1StringView("alarmCount"), group.alarmCount);
    reader.read(QLatin1StringView("intervalMinutes"), group.intervalMinutes);
    reader.read(QLatin1StringView("startBefore"), group.startBefore);
    reader.read(QLatin1StringView("isEnabled"), group.isEnabled);
    reader.read(QLatin1StringView("repeatDays"), group.repeatDays);
    reader.read(QLatin1StringView("soundName"), group.soundName);
    reader.read(QLatin1StringView("customSoundPath"), group.customSoundPath);
    reader.read(QLatin1StringView("customSoundName"), group.customSoundName);
    reader.read(QLatin1StringView("volume"), group.volume);
    reader.read(QLatin1StringView("ttsEnabled"), group.ttsEnabled);
    reader.read(QLatin1StringView("ttsMessage"), group.ttsMessage);
    reader.read(QLatin1StringView("ttsLastEnabled"), group.ttsLastEnabled);
    reader.read(QLatin1StringView("ttsLastMessage"), group.ttsLastMessage);
    reader.read(QLatin1StringView("ttsVolume"), group.ttsVolume);
    reader.read(QLatin1StringView("createdAt"), group.createdAt);
    return reader.failedKey();
}

} // namespace

Result<QByteArray> encodeGroups(const QList<AlarmGroup> &groups) {
    QJsonArray array;
    for (const AlarmGroup &group : groups) {
        if (!std::isfinite(group.volume) || !std::isfinite(group.ttsVolume)) {
            return Failure{QStringLiteral("the volume of group %1 is not a number").arg(group.idText())};
        }
        array.append(encodeGroup(group));
    }
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

Result<QList<AlarmGroup>> decodeGroups(const QByteArray &json) {
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError) {
        return Failure{error.errorString()};
    }
    if (!document.isArray()) {
        return Failure{QStringLiteral("not an array")};
    }
    const QJsonArray array = document.array();
    QList<AlarmGroup> groups;
    groups.reserve(array.size());
    for (const QJsonValue &element : array) {
        if (!element.isObject()) {
            return Failure{QStringLiteral("element %1 is not an object").arg(groups.size())};
        }
        AlarmGroup &group = groups.emplaceBack();
        if (const QString key = decodeGroup(element.toObject(), group); !key.isEmpty()) {
            return Failure{QStringLiteral("element %1 has no right \"%2\"").arg(groups.size() - 1).arg(key)};
        }
    }
    return groups;
}

} // namespace kova
