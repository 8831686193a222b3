#include "JsonReader.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>

namespace kova {

namespace {

template <typename T> bool convert(const std::string &number, T &value) {
    const char *const end = number.data() + number.size();
    const auto [parsed, error] = std::from_chars(number.data(), end, value);
    return parsed == end && error == std::errc();
}

bool isHexadecimal(QChar character) {
    return std::isxdigit(static_cast<unsigned char>(character.toLatin1())) != 0; // a NUL if it is not Latin-1
}

// JSON does not permit everything that std::from_chars() parses.
bool isNumber(const std::string &text) {
    const auto isDigit = [&text](size_t i) { return i < text.size() && text[i] >= '0' && text[i] <= '9'; };
    const size_t first = text.starts_with('-') ? 1 : 0;
    const size_t point = std::min(text.find('.'), text.size());
    const char *const end = text.data() + text.size();
    double value = 0;
    return isDigit(first) && !(text[first] == '0' && isDigit(first + 1)) &&
           (point == text.size() || isDigit(point + 1)) &&
           std::from_chars(text.data(), end, value).ptr == end;
}

// A number that is written with a fraction or an exponent.
bool convertWhole(const std::string &number, qint64 &value) {
    constexpr double limit = 0x1p63;
    double whole = 0;
    const bool isWhole = convert(number, whole) && std::abs(whole) < limit && std::trunc(whole) == whole &&
                         number.find_first_of(".eE") != std::string::npos;
    value = isWhole ? qint64(whole) : 0;
    return isWhole;
}

} // namespace

bool JsonReader::fail(const char *reason) {
    if (m_error.isEmpty()) {
        m_error = QString::fromUtf8(reason);
    }
    return false;
}

bool JsonReader::isAtEnd() {
    next();
    return m_rest.isEmpty();
}

// Returns the first character of the next value, or U+0000 at the end of the text.
char16_t JsonReader::next() {
    const auto isSpace = [](QChar c) { return c == u' ' || c == u'\n' || c == u'\r' || c == u'\t'; };
    while (!m_rest.isEmpty() && isSpace(m_rest.front())) {
        m_rest = m_rest.sliced(1);
    }
    return m_rest.isEmpty() ? u'\0' : m_rest.front().unicode();
}

bool JsonReader::accept(char16_t token) {
    const bool isNext = next() == token;
    m_rest = m_rest.sliced(isNext ? 1 : 0);
    return isNext;
}

bool JsonReader::acceptWord(const char *word) {
    next();
    const bool isNext = m_rest.startsWith(QLatin1StringView(word));
    m_rest = m_rest.sliced(isNext ? qsizetype(qstrlen(word)) : 0);
    return isNext;
}

bool JsonReader::read(bool &value) {
    value = acceptWord("true");
    return value || acceptWord("false") || fail("not true or false");
}

bool JsonReader::read(QString &value) {
    if (!accept(u'"')) {
        return fail("not a text");
    }
    value.resize(0); // keeps the buffer of a key
    while (true) {
        const auto *const end = std::find_if(m_rest.cbegin(), m_rest.cend(),
                                             [](QChar c) { return c == u'"' || c == u'\\' || c < u' '; });
        const qsizetype length = end - m_rest.cbegin();
        value.append(m_rest.first(length));
        m_rest = m_rest.sliced(length);
        if (m_rest.startsWith(u'"')) {
            m_rest = m_rest.sliced(1);
            return true;
        }
        if (!readEscape(value)) {
            return fail("not a valid text");
        }
    }
}

bool JsonReader::readEscape(QString &value) {
    constexpr QLatin1StringView names{"\"\\/bfnrt"};
    constexpr QLatin1StringView characters{"\"\\/\b\f\n\r\t"};
    if (m_rest.size() < 2 || m_rest.front() != u'\\') {
        return false;
    }
    const QChar name = m_rest.at(1);
    if (const qsizetype index = names.indexOf(name); index >= 0) {
        value.append(characters.at(index));
        m_rest = m_rest.sliced(2);
        return true;
    }
    const QStringView digits = m_rest.mid(2, 4); // fewer at the end
    if (name != u'u' || digits.size() < 4 || !std::ranges::all_of(digits, isHexadecimal)) {
        return false;
    }
    value.append(QChar(digits.toUShort(nullptr, 16)));
    m_rest = m_rest.sliced(6);
    return true;
}

bool JsonReader::readNumber(std::string &number) {
    next();
    const auto *const end = std::find_if_not(m_rest.cbegin(), m_rest.cend(), [](QChar c) {
        return (c >= u'0' && c <= u'9') || c == u'-' || c == u'.' || c == u'e' || c == u'E' || c == u'+';
    });
    for (const auto *c = m_rest.cbegin(); c != end; ++c) {
        number.push_back(c->toLatin1());
    }
    m_rest = m_rest.sliced(end - m_rest.cbegin());
    return isNumber(number) || fail("not a number");
}

template <typename T> bool JsonReader::readNumber(T &value) {
    std::string number;
    return readNumber(number) && (convert(number, value) || fail("number out of range"));
}

template bool JsonReader::readNumber(double &value);
template bool JsonReader::readNumber(float &value);

bool JsonReader::read(qint64 &value) {
    std::string number;
    return readNumber(number) &&
           (convert(number, value) || convertWhole(number, value) || fail("not an integer of 64 bits"));
}

bool JsonReader::skip(int depth) {
    constexpr int maxDepth = 1000;
    if (depth > maxDepth) {
        return fail("nested too deeply");
    }
    switch (next()) {
    case u'[':
        return readArray([&] { return skip(depth + 1); });
    case u'{':
        return readObject([&](const QString &) { return skip(depth + 1); });
    case u'"': {
        QString text;
        return read(text);
    }
    default: {
        std::string number;
        return acceptWord("true") || acceptWord("false") || acceptWord("null") || readNumber(number);
    }
    }
}

} // namespace kova
