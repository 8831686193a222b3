#include "AccessibleChanges.h"

#include <QAccessible>
#include <QMetaMethod>
#include <QQuickItem>
#include <QQuickWindow>
#include <algorithm>
#include <utility>

namespace kova {

void AccessibleChanges::tellOf(QQuickItem &item) {
    if (!item.findChild<AccessibleChanges *>({}, Qt::FindDirectChildrenOnly)) {
        new AccessibleChanges(item); // its child
    }
}

AccessibleChanges::AccessibleChanges(QQuickItem &item) : QObject(&item), m_item(item) {
    follow("enabled", "tellUse()");
    followPanels();
    follow("highlighted", "tellHighlight()");
    follow(item.inherits("QQuickComboBox") ? "currentIndex" : "value", "tellValue()");
    if (item.inherits("QQuickTextInput")) {
        m_text = item.property("text").toString();
        follow("text", "tellText()");
    }
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

// What lies behind a panel can't be used while that is open.
void AccessibleChanges::followPanels() {
    const QQuickWindow *window = m_item.window();
    const QList<QQuickItem *> layers = window ? window->contentItem()->childItems() : QList<QQuickItem *>();
    for (const QQuickItem *layer : layers) {
        if (layer->inherits("QQuickOverlay")) {
            connect(layer, &QQuickItem::visibleChildrenChanged, this, &AccessibleChanges::tellUse);
        }
    }
    QMetaObject::invokeMethod(this, &AccessibleChanges::tellUse, Qt::QueuedConnection);
}

void AccessibleChanges::tellUse() {
    const QAccessibleInterface *told = QAccessible::queryAccessibleInterface(&m_item);
    if (!told || told->state().disabled == m_isDisabled) {
        return;
    }
    m_isDisabled = !m_isDisabled;
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

// Only what lies between the parts that stayed.
void AccessibleChanges::tellText() {
    const QString before = std::exchange(m_text, m_item.property("text").toString());
    const auto begin = std::mismatch(before.cbegin(), before.cend(), m_text.cbegin(), m_text.cend());
    const auto end = std::mismatch(before.crbegin(), std::make_reverse_iterator(begin.first),
                                   m_text.crbegin(), std::make_reverse_iterator(begin.second));
    QAccessibleTextUpdateEvent event(&m_item, static_cast<int>(begin.first - before.cbegin()),
                                     QString(begin.first, end.first.base() - begin.first),
                                     QString(begin.second, end.second.base() - begin.second));
    QAccessible::updateAccessibility(&event);
}

} // namespace kova
