#include "plainLine.h"

#include <algorithm>

namespace kova {

namespace {

bool isControl(QChar character) {
    switch (character.category()) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

// Joiners are kept, as parts of emoji sequences and of some scripts.
bool isFormat(QChar character) {
    constexpr QChar zeroWidthNonJoiner(0x200C);
    constexpr QChar zeroWidthJoiner(0x200D);
    return character.category() == QChar::Other_Format && character != zeroWidthNonJoiner &&
           character != zeroWidthJoiner;
}

} // namespace

QString plainLine(QString text) {
    text.removeIf(isFormat);
    std::replace_if(text.begin(), text.end(), isControl, QChar(u' '));
    return text;
}

} // namespace kova
