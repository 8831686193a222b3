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

// Half a step above the largest float: from here on a number no longer rounds to a finite float.
constexpr double firstBeyondFloat = 0x1.ffffffp+127;

// Writes the members of one object. By hand, since a document of a long list in memory would cost many times
// the list itself.
class Writer {
public:
    explicit Writer(QByteArray &json) : m_json(json) { m_json += '{'; }
    void end() { m_json += '}'; }

    void write(const char *key, bool value) { append(key, value ? "true" : "false"); }
    void write(const char *key, qint64 value) { append(key, QByteArray::number(value)); }
    void write(const char *key, double value) { append(key, shortestDecimal(value)); }
    void write(const char *key, float value) { append(key, shortestDecimal(value)); }
    void write(const char *key, const QString &value) { append(key, quoted(value)); }
    void write(const char *key, const std::optional<QString> &value) {
        if (value) {
            write(key, *value);
        }
    }
    void write(const char *key, const QList<qint64> &values) {
        QByteArray list;
        for (const qint64 value : values) {
            list += (list.isEmpty() ? "" : ",") + QByteArray::number(value);
        }
        append(key, '[' + list + ']');
    }

private:
    void append(const char *key, const QByteArray &value) {
        m_json += m_json.endsWith('{') ? "\"" : ",\"";
        m_json += key;
        m_json += "\":";
        m_json += value;
    }

    // The shortest decimal that reads back as the same number: a float of 0.8 is written as 0.8.
    template <typename Number> static QByteArray shortestDecimal(Number value) {
        std::array<char, 32> digits{};
        const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), value);
        return {digits.data(), static_cast<qsizetype>(written.ptr - digits.data())};
    }

    static QByteArray quoted(const QString &text) {
        QByteArray json = "\"";
        for (const char byte : text.toUtf8()) {
            if (byte == '"' || byte == '\\') {
                json += '\\';
                json += byte;
            } else if (static_cast<unsigned char>(byte) < 0x20) {
                json += "\\u00" + QByteArray(1, byte).toHex();
            } else {
                json += byte;
            }
        }
        return json + '"';
    }

    QByteArray &m_json;
};

void encodeGroup(const AlarmGroup &group, QByteArray &json) {
    Writer writer(json);
    writer.write("id", group.idText());
    writer.write("label", group.label);
    writer.write("targetHour", group.targetHour);
    writer.write("targetMinute", group.targetMinute);
    writer.write("alarmCount", group.alarmCount);
    writer.write("intervalMinutes", group.intervalMinutes);
    writer.write("startBefore", group.startBefore);
    writer.write("isEnabled", group.isEnabled);
    writer.write("repeatDays", group.repeatDays);
    writer.write("soundName", group.soundName);
    writer.write("customSoundPath", group.customSoundPath);
    writer.write("customSoundName", group.customSoundName);
    writer.write("volume", group.volume);
    writer.write("ttsEnabled", group.ttsEnabled);
    writer.write("ttsMessage", group.ttsMessage);
    writer.write("ttsLastEnabled", group.ttsLastEnabled);
    writer.write("ttsLastMessage", group.ttsLastMessage);
    writer.write("ttsVolume", group.ttsVolume);
    writer.write("createdAt", group.createdAt);
    writer.end();
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
        const bool fits = std::abs(value) < firstBeyondFloat;
        check(key, fits);
        field = fits ? static_cast<float>(value) : 0.0F;
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
    // A fraction or a number beyond 64 bits gives whichever default is asked for. A number just below the
    // smallest integer has been rounded up to it; only that it is no longer kept as an integer tells.
    qint64 integer(QLatin1StringView key, const QJsonValue &value) {
        const qint64 number = value.toInteger(0);
        const bool isRounded =
            number == std::numeric_limits<qint64>::min() && value.toVariant().typeId() != QMetaType::LongLong;
        check(key, value.isDouble() && (number != 0 || value.toInteger(1) == 0) && !isRounded);
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
    constexpr qsizetype usualSize = 512;
    QByteArray json = "[";
    json.reserve(groups.size() * usualSize);
    for (const AlarmGroup &group : groups) {
        if (!std::isfinite(group.volume) || !std::isfinite(group.ttsVolume) ||
            !std::isfinite(group.createdAt)) {
            return Failure{QStringLiteral("group %1 holds a number that is not finite").arg(group.idText())};
        }
        json += json.size() > 1 ? "," : "";
        encodeGroup(group, json);
    }
    return json + ']';
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
