#pragma once

#include <QAccessible>
#include <QQuickItem>

namespace kova {

/// Lets assistive tools read the text of a control and edit that of a text field. Main thread.
class AccessibleText final : public QAccessibleTextInterface, public QAccessibleEditableTextInterface {
public:
    /// Accesses the named property of the item, which must outlive this object.
    AccessibleText(QQuickItem &item, const char *property) : m_item(item), m_property(property) {}

    QString text() const { return m_item.property(m_property).toString(); }
    QString text(int start, int end) const override { return text().mid(start, end - start); }
    int characterCount() const override { return static_cast<int>(text().size()); }
    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint & /*point*/) const override { return -1; } // unknown
    void scrollToSubstring(int start, int /*end*/) override { setCursorPosition(start); }
    QString attributes(int offset, int *start, int *end) const override;

    int cursorPosition() const override { return m_item.property("cursorPosition").toInt(); }
    void setCursorPosition(int position) override { m_item.setProperty("cursorPosition", position); }
    int selectionCount() const override {
        return m_item.property("selectedText").toString().isEmpty() ? 0 : 1;
    }
    void selection(int index, int *start, int *end) const override;
    void addSelection(int start, int end) override { setSelection(0, start, end); }
    void removeSelection(int /*index*/) override { QMetaObject::invokeMethod(&m_item, "deselect"); }
    void setSelection(int index, int start, int end) override;

    void insertText(int offset, const QString &text) override { replaceText(offset, offset, text); }
    void deleteText(int start, int end) override { replaceText(start, end, {}); }
    void replaceText(int start, int end, const QString &text) override;

private:
    QQuickItem &m_item;
    const char *m_property;
};

} // namespace kova
