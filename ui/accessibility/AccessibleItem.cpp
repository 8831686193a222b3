#include "AccessibleItem.h"

#include "AccessibleChanges.h"
#include "window/ViewWindow.h"

#include <algorithm>

namespace kova {

namespace {

// Returns the attached object with the item's accessible properties; the last one if Qt has created two.
const QObject *accessibleProperties(const QQuickItem &item) {
    const QObjectList &children = item.children();
    const auto found = std::find_if(children.crbegin(), children.crend(), [](const QObject *child) {
        return child->inherits("QQuickAccessibleAttached");
    });
    return found == children.crend() ? nullptr : *found;
}

bool isPopup(const QQuickItem &item) {
    return item.inherits("QQuickPopupItem");
}

QQuickItem *popupContent(const QQuickItem *item) {
    return item && isPopup(*item) ? item->property("contentItem").value<QQuickItem *>() : nullptr;
}

bool isListEntry(const QQuickItem &item) {
    const QQuickItem *content = item.parentItem();
    return content && content->parentItem() && content->parentItem()->inherits("QQuickItemView");
}

// Later versions of Qt set `ignored` for the entries of a list outside its viewport. Not every version
// attaches properties to popups created before accessibility is activated.
bool isExposed(const QQuickItem &item) {
    const QObject *properties = accessibleProperties(item);
    const bool isIgnored =
        properties ? properties->property("ignored").toBool() && !isListEntry(item) : !isPopup(item);
    return !isIgnored && popupContent(item.parentItem()) != &item;
}

void collectExposed(const QQuickItem &item, QList<QQuickItem *> &found) {
    const QList<QQuickItem *> children = item.childItems();
    for (QQuickItem *child : children) {
        if (child->isVisible() && isExposed(*child)) {
            found.append(child);
        } else if (child->isVisible()) {
            collectExposed(*child, found);
        }
    }
}

bool isPanel(QAccessible::Role role) {
    return role == QAccessible::Dialog || role == QAccessible::AlertMessage || role == QAccessible::PopupMenu;
}

// While a panel is open, only the panel and the popups in front of it can be used.
bool isBehindPanel(const QQuickItem &item) {
    const QList<QQuickItem *> popups = ViewWindow::popupsInFrontOf(item);
    return std::ranges::any_of(popups, [](QQuickItem *popup) {
        const QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(popup);
        return iface && isPanel(iface->role());
    });
}

QAccessibleInterface *make(const QString & /*className*/, QObject *object) {
    auto *item = qobject_cast<QQuickItem *>(object);
    return item && (accessibleProperties(*item) || isPopup(*item)) ? new AccessibleItem(*item) : nullptr;
}

} // namespace

void AccessibleItem::install() {
    QAccessible::installFactory(&make);
}

AccessibleItem::AccessibleItem(QQuickItem &item)
    : QAccessibleObject(&item),
      m_item(item),
      m_text(item, item.inherits("QQuickComboBox") ? "displayText" : "text") {
    AccessibleChanges::observe(item);
}

QAccessibleInterface *AccessibleItem::parent() const {
    QQuickItem *parent = m_item.parentItem();
    while (parent && !isExposed(*parent)) {
        parent = parent->parentItem();
    }
    return QAccessible::queryAccessibleInterface(parent ? static_cast<QObject *>(parent) : m_item.window());
}

// Returns the entries of a list in visual order.
QList<QQuickItem *> AccessibleItem::children() const {
    QList<QQuickItem *> found;
    collectExposed(m_item, found);
    if (role() == QAccessible::List) {
        std::ranges::stable_sort(found, {},
                                 [](const QQuickItem *item) { return std::pair(item->y(), item->x()); });
    }
    return found;
}

QAccessibleInterface *AccessibleItem::child(int index) const {
    return QAccessible::queryAccessibleInterface(children().value(index));
}

int AccessibleItem::indexOfChild(const QAccessibleInterface *child) const {
    return static_cast<int>(children().indexOf(qobject_cast<QQuickItem *>(child->object())));
}

QAccessibleInterface *AccessibleItem::childAt(int x, int y) const {
    const QList<QQuickItem *> items = children();
    for (auto item = items.crbegin(); item != items.crend(); ++item) {
        QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(*item);
        if (iface && iface->rect().contains(x, y)) {
            QAccessibleInterface *inner = iface->childAt(x, y);
            return inner ? inner : iface;
        }
    }
    return nullptr;
}

QRect AccessibleItem::rect() const {
    return QRectF(m_item.mapToGlobal(QPointF()), m_item.size()).toRect();
}

QVariant AccessibleItem::attachedProperty(const char *property) const {
    const QQuickItem *content = popupContent(&m_item);
    const QObject *properties = content ? accessibleProperties(*content) : nullptr;
    if (!properties) {
        properties = accessibleProperties(m_item);
    }
    return properties ? properties->property(property) : QVariant();
}

QString AccessibleItem::text(QAccessible::Text kind) const {
    switch (kind) {
    case QAccessible::Name:
        return attachedProperty("name").toString();
    case QAccessible::Description: {
        const QString description = attachedProperty("description").toString();
        return description == text(QAccessible::Name) ? QString() : description; // Qt's: the placeholder
    }
    case QAccessible::Value:
        return m_text.text();
    default:
        return {};
    }
}

QAccessible::Role AccessibleItem::role() const {
    const auto given = static_cast<QAccessible::Role>(attachedProperty("role").toInt());
    return given == QAccessible::NoRole && m_item.inherits("QQuickText") ? QAccessible::StaticText : given;
}

bool AccessibleItem::isDisabled() const {
    return !m_item.isEnabled() || isBehindPanel(m_item);
}

QAccessible::State AccessibleItem::state() const {
    const QAccessible::Role kind = role();
    const QQuickWindow *window = m_item.window();
    QAccessible::State state;
    state.disabled = isDisabled();
    state.modal = isPanel(kind);
    state.invisible = !window || !window->isVisible() || !m_item.isVisible();
    state.offscreen = window && !window->geometry().intersects(rect());
    state.focusable = m_item.activeFocusOnTab() || m_item.property("focusPolicy").toInt() != Qt::NoFocus;
    state.focused = window && window->activeFocusItem() == &m_item;
    state.checkable = kind == QAccessible::CheckBox || kind == QAccessible::RadioButton;
    state.checked = state.checkable && m_item.property("checked").toBool();
    state.selectable = attachedProperty("selectable").toBool();
    state.selected = attachedProperty("selected").toBool();
    state.editable = kind == QAccessible::EditableText;
    state.expandable = isPicker();
    state.expanded = isPicker() && m_item.property("down").toBool();
    state.collapsed = isPicker() && !state.expanded;
    return state;
}

void *AccessibleItem::interface_cast(QAccessible::InterfaceType type) {
    const bool isText = role() == QAccessible::EditableText;
    if (type == QAccessible::ActionInterface) {
        return static_cast<QAccessibleActionInterface *>(this);
    }
    if (type == QAccessible::ValueInterface && (isRange() || isPicker())) {
        return static_cast<QAccessibleValueInterface *>(this);
    }
    if (type == QAccessible::TextInterface && (isText || isPicker() || role() == QAccessible::SpinBox)) {
        return static_cast<QAccessibleTextInterface *>(&m_text);
    }
    if (type == QAccessible::EditableTextInterface && isText) {
        return static_cast<QAccessibleEditableTextInterface *>(&m_text);
    }
    return nullptr;
}

QStringList AccessibleItem::actionNames() const {
    QStringList names;
    if (ViewWindow::isPressable(m_item)) {
        names << pressAction();
    }
    if (state().checkable) {
        names << toggleAction();
    }
    if (state().focusable) {
        names << setFocusAction();
    }
    return names;
}

void AccessibleItem::doAction(const QString &name) {
    if (isDisabled() || !actionNames().contains(name)) {
        return;
    }
    if (name == setFocusAction()) {
        if (auto *window = qobject_cast<ViewWindow *>(m_item.window())) {
            window->setShowsFocus(true);
        }
        m_item.forceActiveFocus();
    } else {
        // Queued, since the tool waits for the reply and the press may open a modal dialog.
        QMetaObject::invokeMethod(
            &m_item, [item = &m_item] { ViewWindow::press(*item); }, Qt::QueuedConnection);
    }
}

// Emits the signal of a change by the user, so that the view takes the value over.
void AccessibleItem::setCurrentValue(const QVariant &value) {
    const double clamped = std::clamp(value.toDouble(), minimumValue().toDouble(), maximumValue().toDouble());
    if (isDisabled() || clamped == currentValue().toDouble()) {
        return;
    }
    if (isPicker()) {
        QMetaObject::invokeMethod(&m_item, "activated", Q_ARG(int, static_cast<int>(clamped)));
    } else {
        m_item.setProperty("value", clamped);
        QMetaObject::invokeMethod(&m_item, role() == QAccessible::Slider ? "moved" : "valueModified");
    }
}

QVariant AccessibleItem::maximumValue() const {
    return isRange() ? m_item.property("to") : m_item.property("count").toInt() - 1;
}

} // namespace kova
