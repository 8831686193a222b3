#include "shownText.h"

#include <QTextBoundaryFinder>
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

QString elided(const QString &text, int maxLength) {
    constexpr qsizetype maxCharacterSize = 16; // a base with any number of combining marks is one character
    const QString head = text.left(maxLength * maxCharacterSize);
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, head);
    qsizetype end = 0;
    for (int count = 0; count < maxLength && end < head.size(); ++count) {
        end = characters.toNextBoundary();
    }
    return end < text.size() ? text.first(end) + u'…' : text;
}

QString plainLine(QString text) {
    text.removeIf(isFormat);
    std::replace_if(text.begin(), text.end(), isControl, QChar(u' '));
    return text;
}

} // namespace kova
