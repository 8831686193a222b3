#include "AccessibleChanges.h"

#include <QAccessible>
#include <QMetaMethod>
#include <QQuickItem>

namespace kova {

void AccessibleChanges::tellOf(QQuickItem &item) {
    if (!item.findChild<AccessibleChanges *>({}, Qt::FindDirectChildrenOnly)) {
        new AccessibleChanges(item); // its child
    }
}

AccessibleChanges::AccessibleChanges(QQuickItem &item) : QObject(&item), m_item(item) {
    follow("enabled", "tellEnabled()");
    follow("highlighted", "tellHighlight()");
    follow(item.inherits("QQuickComboBox") ? "currentIndex" : "value", "tellValue()");
}

void AccessibleChanges::follow(const char *property, const char *slot) {
    const QMetaObject *type = m_item.metaObject();
    const QMetaProperty followed = type->property(type->indexOfProperty(property));
    if (followed.hasNotifySignal()) {
        connect(&m_item, followed.notifySignal(), this,
                staticMetaObject.method(staticMetaObject.indexOfSlot(slot)));
    }
}

void AccessibleChanges::tellValue() {
    QAccessibleInterface *told = QAccessible::queryAccessibleInterface(&m_item);
    if (told && told->valueInterface()) { // not while the item is being made
        QAccessibleValueChangeEvent event(&m_item, {});
        QAccessible::updateAccessibility(&event);
    }
}

void AccessibleChanges::tellEnabled() {
    QAccessible::State changed;
    changed.disabled = true;
    QAccessibleStateChangeEvent event(&m_item, changed);
    QAccessible::updateAccessibility(&event);
}

// An entry of an open list, while the focus stays at its picker.
void AccessibleChanges::tellHighlight() {
    if (m_item.property("highlighted").toBool()) {
        QAccessibleEvent event(&m_item, QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    }
}

} // namespace kova
