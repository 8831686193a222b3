#pragma once

#include "AccessibleText.h"

#include <QAccessibleObject>
#include <QQuickWindow>

namespace kova {

/// The accessible interface of an item with a role. Unlike Qt's own, it reports disabled items and items
/// behind a panel, and passes values set by assistive tools on to the view. Exposes a popup with the name,
/// description and role of its content. Owned by Qt. Main thread.
class AccessibleItem final : public QAccessibleObject,
                             public QAccessibleActionInterface,
                             public QAccessibleValueInterface {
public:
    /// Makes Qt create the interfaces of items from this class.
    static void install();

    explicit AccessibleItem(QQuickItem &item);

    QWindow *window() const override { return m_item.window(); }
    QAccessibleInterface *parent() const override;
    QAccessibleInterface *child(int index) const override;
    int childCount() const override { return static_cast<int>(children().size()); }
    int indexOfChild(const QAccessibleInterface *child) const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    QRect rect() const override;
    QString text(QAccessible::Text kind) const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    void doAction(const QString &name) override;
    QStringList keyBindingsForAction(const QString & /*name*/) const override { return {}; }

    QVariant currentValue() const override { return m_item.property(isRange() ? "value" : "currentIndex"); }
    void setCurrentValue(const QVariant &value) override;
    QVariant minimumValue() const override { return isRange() ? m_item.property("from") : 0; }
    QVariant maximumValue() const override;
    QVariant minimumStepSize() const override { return isRange() ? m_item.property("stepSize") : 1; }

private:
    QList<QQuickItem *> children() const;
    bool isDisabled() const;
    // Whether the item is a slider or a stepper. Not by its role, which is set after its value.
    bool isRange() const { return m_item.property("stepSize").isValid(); }
    bool isPicker() const { return role() == QAccessible::ComboBox; }
    QVariant attachedProperty(const char *property) const;

    QQuickItem &m_item; // outlives the interface
    AccessibleText m_text;
};

} // namespace kova
