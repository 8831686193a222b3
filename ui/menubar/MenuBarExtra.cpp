#include "MenuBarExtra.h"

#include "drawing/Symbol.h"

#include <QGuiApplication>

namespace kova {

namespace {

// Fallback for icon themes without the application's icon; visible on light and dark panels.
QIcon bell() {
    constexpr QColor color(0xFF, 0x6B, 0x36);
    QIcon icon;
    for (const qreal fontSize : {22.0, 44.0}) {
        icon.addPixmap(QPixmap::fromImage(symbolImage(QStringLiteral("bell.fill"), fontSize, color, 1)));
    }
    return icon;
}

} // namespace

MenuBarExtra::MenuBarExtra(const AlarmViewModel &store, const PowerManager &powerManager)
    : m_store(store),
      m_powerManager(powerManager) {
    m_rebuildTimer.setSingleShot(true);
    connect(&m_rebuildTimer, &QTimer::timeout, this, &MenuBarExtra::rebuild);
    connect(&store, &AlarmViewModel::groupsChanged, &m_rebuildTimer, qOverload<>(&QTimer::start));
    for (const MenuBarMenu *menu : {&m_menu, &m_exportedMenu}) {
        connect(menu, &MenuBarMenu::showWindow, this, &MenuBarExtra::showWindow);
        connect(menu, &MenuBarMenu::quit, this, &MenuBarExtra::quit);
    }
    connect(&m_icon, &QSystemTrayIcon::activated, this, &MenuBarExtra::activate);
    rebuild();
}

void MenuBarExtra::show(MenuBarMenu::Use menu) {
    m_icon.setIcon(QIcon::fromTheme(QStringLiteral("jp.kova.Alarm-symbolic"), bell()));
    m_icon.setToolTip(QStringLiteral("KOVA"));
    m_icon.setContextMenu(menu == MenuBarMenu::Drawn ? &m_menu : &m_exportedMenu);
    m_icon.show();
}

// Called on a plain click if the desktop does not open the menu itself. A Wayland client cannot open a menu
// at the pointer.
void MenuBarExtra::activate(QSystemTrayIcon::ActivationReason reason) {
    if (reason != QSystemTrayIcon::Trigger) {
        return;
    }
    if (QGuiApplication::platformName().startsWith(QLatin1String("wayland"))) {
        Q_EMIT showWindow();
    } else {
        m_menu.popup(QCursor::pos());
    }
}

void MenuBarExtra::rebuild() {
    const QList<MenuBarEntry> content = menuBarContent(m_store.groups(), m_powerManager.isPreventingSleep());
    m_menu.setContent(content);
    m_exportedMenu.setContent(content);
}

} // namespace kova
