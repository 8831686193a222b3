#pragma once

#include "AccessibleText.h"

#include <QAccessibleObject>

class QQuickItem;

namespace kova {

/// What assistive tools see of an item that has a role, and do with it. The toolkit's own interface for items
/// doesn't tell what is disabled or lies behind a panel, and what it enters the views never learn. A popup is
/// told as its content, by whose name, description and role it goes. Owned by the toolkit. Main thread.
class AccessibleItem final : public QAccessibleObject,
                             public QAccessibleActionInterface,
                             public QAccessibleValueInterface {
public:
    /// From now on the toolkit makes its interfaces of items by this class.
    static void install();

    explicit AccessibleItem(QQuickItem &item);

    QWindow *window() const override;
    QAccessibleInterface *parent() const override;
    QAccessibleInterface *child(int index) const override;
    int childCount() const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    QRect rect() const override;
    QString text(QAccessible::Text kind) const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    void doAction(const QString &name) override;
    QStringList keyBindingsForAction(const QString &name) const override;

    QVariant currentValue() const override;
    void setCurrentValue(const QVariant &value) override;
    QVariant minimumValue() const override;
    QVariant maximumValue() const override;
    QVariant minimumStepSize() const override;

private:
    QList<QQuickItem *> children() const;
    bool isDisabled() const;
    bool isRange() const;
    QVariant told(const char *property) const;

    QQuickItem &m_item; // asked only while it lives
    AccessibleText m_text;
};

} // namespace kova
