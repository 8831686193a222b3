#include "MenuBarMenu.h"

#include "drawing/Symbol.h"

#include <QStyleOptionMenuItem>

#include <algorithm>
#include <utility>

namespace kova {

namespace {

constexpr QColor systemGreen(0x34, 0xC7, 0x59);
constexpr QColor systemOrange(0xFF, 0x95, 0x00);
constexpr QColor secondary(0x8E, 0x8E, 0x93);

// Disabled lines keep their colours.
QIcon symbolIcon(const QString &name, const QColor &color) {
    constexpr qreal fontSize = 13;
    QIcon icon;
    for (const qreal ratio : {1.0, 2.0}) {
        QImage image = symbolImage(name, fontSize, color, ratio);
        image.setDevicePixelRatio(1); // menus choose by size in pixels
        const QPixmap pixmap = QPixmap::fromImage(std::move(image));
        icon.addPixmap(pixmap);
        icon.addPixmap(pixmap, QIcon::Disabled);
    }
    return icon;
}

QIcon symbol(const MenuBarEntry &entry) {
    switch (entry.kind) {
    case MenuBarEntry::Group:
        return entry.isEnabled ? symbolIcon(QStringLiteral("checkmark.circle.fill"), systemGreen)
                               : symbolIcon(QStringLiteral("circle"), secondary);
    case MenuBarEntry::SleepPrevention:
        return symbolIcon(QStringLiteral("bolt.fill"), systemOrange);
    default:
        return {};
    }
}

// The user's text contains no mnemonics.
QString drawnText(QString text) {
    return text.replace(u'&', QStringLiteral("&&"));
}

// On the bus "_" marks a mnemonic and "__" is an underscore; Qt converts the first "&" to "_", so a mark in
// front protects the text's own. GNOME removes only the first "_", so a text that needs more than one escape
// gets look-alikes instead.
QString exportedText(const QString &text) {
    QString exported = text;
    if (exported.count(u'_') > 1) {
        exported.replace(u'_', u'ˍ');
    }
    if (exported.contains(u'_')) {
        return exported.replace(u'&', u'＆').replace(u'_', QStringLiteral("__"));
    }
    return exported.contains(u'&') ? u'&' + exported : exported;
}

} // namespace

// Updates lines in place where possible, so that an open menu does not close.
void MenuBarMenu::setContent(const QList<MenuBarEntry> &content) {
    const QList<MenuBarEntry> before = std::exchange(m_content, content);
    if (std::ranges::equal(before, m_content, {}, &MenuBarEntry::kind, &MenuBarEntry::kind)) {
        const QList<QAction *> lines = actions();
        for (qsizetype line = 0; line < lines.size(); ++line) {
            if (before.at(line) != m_content.at(line)) {
                fill(lines.at(line), m_content.at(line));
            }
        }
        return;
    }
    clear();
    for (const MenuBarEntry &entry : std::as_const(m_content)) {
        addAction(makeAction(entry));
    }
}

// The symbol shows the state. The check state is for assistive tools only.
void MenuBarMenu::initStyleOption(QStyleOptionMenuItem *option, const QAction *action) const {
    QMenu::initStyleOption(option, action);
    option->checkType = QStyleOptionMenuItem::NotCheckable;
    option->checked = false;
}

void MenuBarMenu::fill(QAction *action, const MenuBarEntry &entry) const {
    action->setText(m_use == Drawn ? drawnText(entry.text) : exportedText(entry.text));
    action->setIcon(symbol(entry));
    // Panels would show a check mark beside the symbol.
    action->setCheckable(entry.kind == MenuBarEntry::Group && m_use == Drawn);
    action->setChecked(entry.isEnabled);
}

QAction *MenuBarMenu::makeAction(const MenuBarEntry &entry) {
    auto *const action = new QAction(this);
    action->setSeparator(entry.kind == MenuBarEntry::Separator);
    fill(action, entry);
    switch (entry.kind) {
    case MenuBarEntry::ShowWindow:
        connect(action, &QAction::triggered, this, &MenuBarMenu::showWindow);
        break;
    case MenuBarEntry::Quit:
        action->setShortcut(Qt::CTRL | Qt::Key_Q);
        connect(action, &QAction::triggered, this, &MenuBarMenu::quit);
        break;
    case MenuBarEntry::Heading: {
        QFont headline = action->font();
        headline.setBold(true);
        action->setFont(headline);
        [[fallthrough]];
    }
    default:
        action->setEnabled(false);
    }
    return action;
}

} // namespace kova
