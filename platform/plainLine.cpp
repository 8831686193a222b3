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

} // namespace

QString plainLine(QString text) {
    std::replace_if(text.begin(), text.end(), isControl, QChar(u' '));
    return text;
}

} // namespace kova
