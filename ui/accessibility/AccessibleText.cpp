#include "AccessibleText.h"

namespace kova {

QRect AccessibleText::characterRect(int offset) const {
    QRectF rect = m_item.boundingRect();
    if (QMetaObject::invokeMethod(&m_item, "positionToRectangle", Q_RETURN_ARG(QRectF, rect),
                                  Q_ARG(int, offset))) {
        rect.translate(m_item.property("leftPadding").toReal(), 0);
    }
    return QRectF(m_item.mapToGlobal(rect.topLeft()), rect.size()).toRect();
}

QString AccessibleText::attributes(int /*offset*/, int *start, int *end) const {
    *start = 0;
    *end = characterCount();
    return {};
}

void AccessibleText::selection(int /*index*/, int *start, int *end) const {
    *start = m_item.property("selectionStart").toInt();
    *end = m_item.property("selectionEnd").toInt();
}

void AccessibleText::setSelection(int /*index*/, int start, int end) {
    QMetaObject::invokeMethod(&m_item, "select", Q_ARG(int, start), Q_ARG(int, end));
}

// Emits the signal of a change by the user, so that the view takes the text over.
void AccessibleText::replaceText(int start, int end, const QString &text) {
    const QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(&m_item);
    if (!iface || iface->state().disabled) {
        return;
    }
    QMetaObject::invokeMethod(&m_item, "remove", Q_ARG(int, start), Q_ARG(int, end));
    QMetaObject::invokeMethod(&m_item, "insert", Q_ARG(int, start), Q_ARG(QString, text));
    QMetaObject::invokeMethod(&m_item, "textEdited");
}

} // namespace kova
