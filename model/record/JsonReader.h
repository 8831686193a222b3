#pragma once

#include <QString>
#include <string>

namespace kova {

/// Reads a JSON document (RFC 8259) from front to back. A function that reads returns false if the next value
/// is invalid or of another type; error() is the reason of the first failure. Accepts arbitrary input.
class JsonReader {
public:
    /// The text must outlive the reader.
    explicit JsonReader(QStringView text) : m_rest(text) {}

    const QString &error() const { return m_error; }

    bool isAtEnd();

    /// Reads null if that is the next value.
    bool acceptNull() { return acceptWord("null"); }

    bool read(bool &value);
    bool read(QString &value);
    bool read(double &value) { return readNumber(value); }
    bool read(float &value) { return readNumber(value); }
    bool read(qint64 &value); ///< a whole number, which may be written with a fraction or an exponent

    /// Calls readElement() for each element and returns false if one of the calls does.
    template <typename F> bool readArray(F readElement) {
        return expect(u'[') && (accept(u']') || (readElements(readElement) && expect(u']')));
    }

    /// Calls readValue(key) for each member and returns false if one of the calls does.
    template <typename F> bool readObject(F readValue) {
        QString key;
        const auto readMember = [&] { return read(key) && expect(u':') && readValue(key); };
        return expect(u'{') && (accept(u'}') || (readElements(readMember) && expect(u'}')));
    }

    /// Reads a value of any type.
    bool skip(int depth = 0);

    bool fail(const char *reason);

private:
    template <typename F> bool readElements(F readElement) {
        bool isGood = readElement();
        while (isGood && accept(u',')) {
            isGood = readElement();
        }
        return isGood;
    }

    char16_t next();
    bool accept(char16_t token);
    bool expect(char16_t token) { return accept(token) || fail("invalid JSON"); }
    bool acceptWord(const char *word);
    bool readEscape(QString &value);
    bool readNumber(std::string &number);
    template <typename T> bool readNumber(T &value);

    QStringView m_rest;
    QString m_error;
};

} // namespace kova
