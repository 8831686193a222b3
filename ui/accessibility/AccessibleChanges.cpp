#include "AccessibleChanges.h"

#include "window/ViewWindow.h"

#include <QMetaMethod>
#include <QQuickItem>
#include <algorithm>
#include <utility>

namespace kova {

void AccessibleChanges::observe(QQuickItem &item) {
    if (!item.findChild<AccessibleChanges *>({}, Qt::FindDirectChildrenOnly)) {
        new AccessibleChanges(item); // owned by the item
    }
}

AccessibleChanges::AccessibleChanges(QQuickItem &item) : QObject(&item), m_item(item) {
    reportOnChange("enabled", "reportEnabled()");
    reportOnChange("highlighted", "reportHighlight()");
    reportOnChange(item.inherits("QQuickComboBox") ? "currentIndex" : "value", "reportValue()");
    if (item.inherits("QQuickTextInput")) {
        m_text = item.property("text").toString();
        reportOnChange("text", "reportText()");
    }
    QMetaObject::invokeMethod(this, &AccessibleChanges::onItemCompleted, Qt::QueuedConnection);
}

// An item behind a panel is disabled while the panel is open.
void AccessibleChanges::onItemCompleted() {
    if (const QQuickItem *overlay = ViewWindow::overlayOf(m_item)) {
        connect(overlay, &QQuickItem::visibleChildrenChanged, this, &AccessibleChanges::reportEnabled,
                Qt::QueuedConnection);
    }
    reportEnabled();
    QAccessible::installActivationObserver(this);
    accessibilityActiveChanged(QAccessible::isActive());
}

// The entries outside the viewport take memory, so they are created for assistive tools only.
void AccessibleChanges::accessibilityActiveChanged(bool active) {
    constexpr int exposedMargin = 20000; // outside the viewport, in logical pixels
    if (!active) {
        return;
    }
    for (QQuickItem *list : {&m_item, m_item.property("contentItem").value<QQuickItem *>()}) {
        if (list && list->inherits("QQuickItemView")) {
            list->setProperty("cacheBuffer", exposedMargin);
        }
    }
}

void AccessibleChanges::reportOnChange(const char *property, const char *slot) {
    const QMetaObject *type = m_item.metaObject();
    const QMetaProperty followed = type->property(type->indexOfProperty(property));
    if (followed.hasNotifySignal()) {
        connect(&m_item, followed.notifySignal(), this,
                staticMetaObject.method(staticMetaObject.indexOfSlot(slot)));
    }
}

void AccessibleChanges::reportValue() {
    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(&m_item);
    if (iface && iface->valueInterface()) { // not while the item is being created
        QAccessibleValueChangeEvent event(&m_item, {});
        QAccessible::updateAccessibility(&event);
    }
}

void AccessibleChanges::reportEnabled() {
    const QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(&m_item);
    if (!iface || iface->state().disabled == m_isDisabled) {
        return;
    }
    m_isDisabled = !m_isDisabled;
    QAccessible::State changed;
    changed.disabled = true;
    QAccessibleStateChangeEvent event(&m_item, changed);
    QAccessible::updateAccessibility(&event);
}

// Reports the highlighted entry of an open list as focused; Qt's focus stays at the picker.
void AccessibleChanges::reportHighlight() {
    if (m_item.property("highlighted").toBool()) {
        QAccessibleEvent event(&m_item, QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    }
}

// Reports the changed part of the text only.
void AccessibleChanges::reportText() {
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
