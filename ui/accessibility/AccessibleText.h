#pragma once

#include <QAccessible>

class QQuickItem;

namespace kova {

/// Lets assistive tools read the text of a control and edit that of a text field. Main thread.
class AccessibleText final : public QAccessibleTextInterface, public QAccessibleEditableTextInterface {
public:
    /// Accesses the named property of the item, which must outlive this object.
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
