#include "elided.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace kova {

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

} // namespace kova
