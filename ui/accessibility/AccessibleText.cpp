#include "AccessibleText.h"

#include <QQuickItem>

namespace kova {

AccessibleText::AccessibleText(QQuickItem &item, const char *property) : m_item(item), m_property(property) {}

QString AccessibleText::text(int start, int end) const {
    return m_item.property(m_property).toString().mid(start, end - start);
}

int AccessibleText::characterCount() const {
    return static_cast<int>(m_item.property(m_property).toString().size());
}

QRect AccessibleText::characterRect(int offset) const {
    QRectF rect = m_item.boundingRect();
    if (QMetaObject::invokeMethod(&m_item, "positionToRectangle", Q_RETURN_ARG(QRectF, rect),
                                  Q_ARG(int, offset))) {
        rect.translate(m_item.property("leftPadding").toReal(), 0);
    }
    return QRectF(m_item.mapToGlobal(rect.topLeft()), rect.size()).toRect();
}

int AccessibleText::offsetAtPoint(const QPoint & /*point*/) const {
    return -1; // unknown
}

void AccessibleText::scrollToSubstring(int start, int /*end*/) {
    setCursorPosition(start);
}

QString AccessibleText::attributes(int /*offset*/, int *start, int *end) const {
    *start = 0;
    *end = characterCount();
    return {};
}

int AccessibleText::cursorPosition() const {
    return m_item.property("cursorPosition").toInt();
}

void AccessibleText::setCursorPosition(int position) {
    m_item.setProperty("cursorPosition", position);
}

int AccessibleText::selectionCount() const {
    return m_item.property("selectedText").toString().isEmpty() ? 0 : 1;
}

void AccessibleText::selection(int /*index*/, int *start, int *end) const {
    *start = m_item.property("selectionStart").toInt();
    *end = m_item.property("selectionEnd").toInt();
}

void AccessibleText::addSelection(int start, int end) {
    setSelection(0, start, end);
}

void AccessibleText::removeSelection(int /*index*/) {
    QMetaObject::invokeMethod(&m_item, "deselect");
}

void AccessibleText::setSelection(int /*index*/, int start, int end) {
    QMetaObject::invokeMethod(&m_item, "select", Q_ARG(int, start), Q_ARG(int, end));
}

void AccessibleText::insertText(int offset, const QString &text) {
    replaceText(offset, offset, text);
}

void AccessibleText::deleteText(int start, int end) {
    replaceText(start, end, {});
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
