#include "AccessibleItem.h"

#include "AccessibleChanges.h"
#include "controls/press.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <algorithm>

namespace kova {

namespace {

// Of a list's entries out of sight, so far from its edges, in logical pixels, tools are told too.
constexpr int reach = 20000;

// What holds the role that a view gave an item, its name and so on; the last one, if the toolkit made two.
const QObject *accessible(const QQuickItem &item) {
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

bool isTold(const QQuickItem &item) {
    const QObject *properties = accessible(item);
    // Not every release of the toolkit marks popups for tools that come later.
    const bool isIgnored = properties ? properties->property("ignored").toBool() : !isPopup(item);
    return !isIgnored && popupContent(item.parentItem()) != &item;
}

void gatherTold(const QQuickItem &item, QList<QQuickItem *> &found) {
    const QList<QQuickItem *> children = item.childItems();
    for (QQuickItem *child : children) {
        if (child->isVisible() && isTold(*child)) {
            found.append(child);
        } else if (child->isVisible()) {
            gatherTold(*child, found);
        }
    }
}

bool isPanel(QAccessible::Role role) {
    return role == QAccessible::Dialog || role == QAccessible::AlertMessage || role == QAccessible::PopupMenu;
}

// With a panel open, only it and the popups in front of it can be used.
bool isBehindPanel(const QQuickItem &item) {
    QList<QQuickItem *> popups;
    const QList<QQuickItem *> layers = item.window()->contentItem()->childItems();
    for (const QQuickItem *layer : layers) {
        if (layer->inherits("QQuickOverlay")) {
            gatherTold(*layer, popups);
        }
    }
    for (auto popup = popups.crbegin(); popup != popups.crend(); ++popup) {
        const QAccessibleInterface *told = QAccessible::queryAccessibleInterface(*popup);
        if (*popup == &item || (*popup)->isAncestorOf(&item)) {
            return false;
        }
        if (told && isPanel(told->role())) {
            return true;
        }
    }
    return false;
}

bool isPicker(QAccessible::Role role) {
    return role == QAccessible::ComboBox;
}

QAccessibleInterface *make(const QString & /*className*/, QObject *object) {
    auto *item = qobject_cast<QQuickItem *>(object);
    return item && (accessible(*item) || isPopup(*item)) ? new AccessibleItem(*item) : nullptr;
}

} // namespace

void AccessibleItem::install() {
    QAccessible::installFactory(&make);
}

AccessibleItem::AccessibleItem(QQuickItem &item)
    : QAccessibleObject(&item),
      m_item(item),
      m_text(item, item.inherits("QQuickComboBox") ? "displayText" : "text") {
    AccessibleChanges::tellOf(item);
}

QWindow *AccessibleItem::window() const {
    return m_item.window();
}

QAccessibleInterface *AccessibleItem::parent() const {
    QQuickItem *parent = m_item.parentItem();
    while (parent && !isTold(*parent)) {
        parent = parent->parentItem();
    }
    QObject *told = parent;
    return QAccessible::queryAccessibleInterface(told ? told : m_item.window());
}

// The entries of a list stand in the order in which they are shown.
QList<QQuickItem *> AccessibleItem::children() const {
    QList<QQuickItem *> found;
    gatherTold(m_item, found);
    if (role() == QAccessible::List) {
        QQuickItem *content = popupContent(&m_item);
        (content ? content : &m_item)->setProperty("cacheBuffer", reach);
        std::stable_sort(found.begin(), found.end(), [](const QQuickItem *a, const QQuickItem *b) {
            return a->y() != b->y() ? a->y() < b->y() : a->x() < b->x();
        });
    }
    return found;
}

QAccessibleInterface *AccessibleItem::child(int index) const {
    return QAccessible::queryAccessibleInterface(children().value(index));
}

int AccessibleItem::childCount() const {
    return static_cast<int>(children().size());
}

int AccessibleItem::indexOfChild(const QAccessibleInterface *child) const {
    return static_cast<int>(children().indexOf(qobject_cast<QQuickItem *>(child->object())));
}

QAccessibleInterface *AccessibleItem::childAt(int x, int y) const {
    const QList<QQuickItem *> items = children();
    for (auto item = items.crbegin(); item != items.crend(); ++item) {
        QAccessibleInterface *told = QAccessible::queryAccessibleInterface(*item);
        if (told && told->rect().contains(x, y)) {
            QAccessibleInterface *inner = told->childAt(x, y);
            return inner ? inner : told;
        }
    }
    return nullptr;
}

QRect AccessibleItem::rect() const {
    return QRectF(m_item.mapToGlobal(QPointF()), m_item.size()).toRect();
}

QVariant AccessibleItem::told(const char *property) const {
    const QQuickItem *content = popupContent(&m_item);
    const QObject *properties = content ? accessible(*content) : nullptr;
    if (!properties) {
        properties = accessible(m_item);
    }
    return properties ? properties->property(property) : QVariant();
}

QString AccessibleItem::text(QAccessible::Text kind) const {
    switch (kind) {
    case QAccessible::Name:
        return told("name").toString();
    case QAccessible::Description:
        return told("description").toString();
    case QAccessible::Value:
        return m_text.text(0, m_text.characterCount());
    default:
        return {};
    }
}

QAccessible::Role AccessibleItem::role() const {
    const auto given = static_cast<QAccessible::Role>(told("role").toInt());
    return given == QAccessible::NoRole && m_item.inherits("QQuickText") ? QAccessible::StaticText : given;
}

bool AccessibleItem::isDisabled() const {
    return !m_item.isEnabled() || (m_item.window() && isBehindPanel(m_item));
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
    state.selectable = told("selectable").toBool();
    state.selected = told("selected").toBool();
    state.editable = kind == QAccessible::EditableText;
    state.expandable = isPicker(kind);
    state.expanded = isPicker(kind) && m_item.property("down").toBool();
    state.collapsed = isPicker(kind) && !state.expanded;
    return state;
}

void *AccessibleItem::interface_cast(QAccessible::InterfaceType type) {
    const bool isText = role() == QAccessible::EditableText;
    if (type == QAccessible::ActionInterface) {
        return static_cast<QAccessibleActionInterface *>(this);
    }
    if (type == QAccessible::ValueInterface && (isRange() || isPicker(role()))) {
        return static_cast<QAccessibleValueInterface *>(this);
    }
    if (type == QAccessible::TextInterface &&
        (isText || isPicker(role()) || role() == QAccessible::SpinBox)) {
        return static_cast<QAccessibleTextInterface *>(&m_text);
    }
    if (type == QAccessible::EditableTextInterface && isText) {
        return static_cast<QAccessibleEditableTextInterface *>(&m_text);
    }
    return nullptr;
}

QStringList AccessibleItem::actionNames() const {
    QStringList names;
    if (isPressable(m_item)) {
        names << pressAction();
    }
    if (state().checkable) {
        names << toggleAction();
    }
    if (isRange()) {
        names << increaseAction() << decreaseAction();
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
        m_item.forceActiveFocus(Qt::TabFocusReason);
    } else if (name == increaseAction()) {
        setCurrentValue(currentValue().toDouble() + minimumStepSize().toDouble());
    } else if (name == decreaseAction()) {
        setCurrentValue(currentValue().toDouble() - minimumStepSize().toDouble());
    } else {
        // The tool waits for the answer, and what is pressed may open a dialog that lasts.
        QMetaObject::invokeMethod(
            &m_item, [item = &m_item] { press(*item); }, Qt::QueuedConnection);
    }
}

QStringList AccessibleItem::keyBindingsForAction(const QString & /*name*/) const {
    return {};
}

// A slider or a stepper, by the control's kind: it tells of its value before it knows its role.
bool AccessibleItem::isRange() const {
    return m_item.property("stepSize").isValid();
}

// The value of a picker is the place of the chosen entry.
QVariant AccessibleItem::currentValue() const {
    return m_item.property(isRange() ? "value" : "currentIndex");
}

// Tells the view, as if the user had done it at the control.
void AccessibleItem::setCurrentValue(const QVariant &value) {
    const double wanted = std::clamp(value.toDouble(), minimumValue().toDouble(), maximumValue().toDouble());
    if (isDisabled() || wanted == currentValue().toDouble()) {
        return;
    }
    if (isPicker(role())) {
        QMetaObject::invokeMethod(&m_item, "activated", Q_ARG(int, static_cast<int>(wanted)));
    } else {
        m_item.setProperty("value", wanted);
        QMetaObject::invokeMethod(&m_item, role() == QAccessible::Slider ? "moved" : "valueModified");
    }
}

QVariant AccessibleItem::minimumValue() const {
    return isRange() ? m_item.property("from") : 0;
}

QVariant AccessibleItem::maximumValue() const {
    return isRange() ? m_item.property("to") : m_item.property("count").toInt() - 1;
}

QVariant AccessibleItem::minimumStepSize() const {
    return isRange() ? m_item.property("stepSize") : 1;
}

} // namespace kova
