#pragma once

#include <QAccessible>

class QQuickItem;

namespace kova {

/// The text of a control as assistive tools read it, and enter it where it is a text field. Main thread.
class AccessibleText final : public QAccessibleTextInterface, public QAccessibleEditableTextInterface {
public:
    /// The item must outlive the text, which is the item's property of that name.
    AccessibleText(QQuickItem &item, const char *property);

    QString text(int start, int end) const override;
    int characterCount() const override;
    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint &point) const override;
    void scrollToSubstring(int start, int end) override;
    QString attributes(int offset, int *start, int *end) const override;

    int cursorPosition() const override;
    void setCursorPosition(int position) override;
    int selectionCount() const override;
    void selection(int index, int *start, int *end) const override;
    void addSelection(int start, int end) override;
    void removeSelection(int index) override;
    void setSelection(int index, int start, int end) override;

    void insertText(int offset, const QString &text) override;
    void deleteText(int start, int end) override;
    void replaceText(int start, int end, const QString &text) override;

private:
    QQuickItem &m_item;
    const char *m_property;
};

} // namespace kova
