#include "MenuBarExtra.h"

#include "AlarmScheduler.h"
#include "AlarmViewModel.h"
#include "PowerManager.h"
#include "plainLine.h"
#include "symbolImage.h"

#include <QTimer>

#include <algorithm>

namespace kova {

namespace {

constexpr QColor systemGreen(0x34, 0xC7, 0x59);
constexpr QColor systemOrange(0xFF, 0x95, 0x00);
constexpr QColor secondary(0x8E, 0x8E, 0x93);
constexpr QColor bell(0xFF, 0x6B, 0x36); // seen on light and on dark panels

QIcon symbolIcon(const QString &name, qreal size, const QColor &color) {
    QIcon icon;
    for (const qreal ratio : {1.0, 2.0}) {
        QImage image = symbolImage(name, size, color, ratio);
        image.setDevicePixelRatio(1); // a picture of its own size: menus pick the one that fits
        icon.addPixmap(QPixmap::fromImage(std::move(image)));
    }
    return icon;
}

QIcon icon(const MenuBarEntry &entry) {
    constexpr qreal size = 13;
    switch (entry.kind) {
    case MenuBarEntry::Group:
        return entry.isEnabled ? symbolIcon(QStringLiteral("checkmark.circle.fill"), size, systemGreen)
                               : symbolIcon(QStringLiteral("circle"), size, secondary);
    case MenuBarEntry::SleepPrevention:
        return symbolIcon(QStringLiteral("bolt.fill"), size, systemOrange);
    default:
        return {};
    }
}

// A label is the user's text: no letter of it is a mnemonic, and it stays on its line.
QString menuText(const QString &text) {
    return plainLine(text).replace(u'&', QStringLiteral("&&"));
}

void fill(QAction *action, const MenuBarEntry &entry) {
    action->setText(menuText(entry.text));
    action->setIcon(icon(entry));
}

bool haveSameKinds(const QList<MenuBarEntry> &a, const QList<MenuBarEntry> &b) {
    return std::equal(a.cbegin(), a.cend(), b.cbegin(), b.cend(),
                      [](const MenuBarEntry &x, const MenuBarEntry &y) { return x.kind == y.kind; });
}

} // namespace

MenuBarExtra::MenuBarExtra(const AlarmViewModel &store, const AlarmScheduler &scheduler,
                           const PowerManager &powerManager)
    : m_store(store),
      m_powerManager(powerManager) {
    m_menu.setSeparatorsCollapsible(true);
    connect(&store, &AlarmViewModel::groupsChanged, this, &MenuBarExtra::scheduleRebuild);
    connect(&scheduler, &AlarmScheduler::activeAlarmChanged, this, &MenuBarExtra::scheduleRebuild);
    connect(&scheduler, &AlarmScheduler::firedTodayChanged, this, &MenuBarExtra::scheduleRebuild);
    rebuild();
}

MenuBarExtra::~MenuBarExtra() = default;

void MenuBarExtra::show() {
    if (m_icon) {
        return;
    }
    const QIcon drawn = symbolIcon(QStringLiteral("bell.fill"), 22, bell);
    m_icon =
        std::make_unique<QSystemTrayIcon>(QIcon::fromTheme(QStringLiteral("kova-alarm-symbolic"), drawn));
    m_icon->setToolTip(QStringLiteral("KOVA"));
    m_icon->setContextMenu(&m_menu);
    connect(m_icon.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger) {
                    m_menu.popup(QCursor::pos());
                }
            });
    m_icon->show();
}

void MenuBarExtra::scheduleRebuild() {
    if (!m_isRebuildScheduled) {
        m_isRebuildScheduled = true;
        QTimer::singleShot(0, this, [this] {
            m_isRebuildScheduled = false;
            rebuild();
        });
    }
}

// Lines that stay are refilled in place, so that an open menu does not collapse.
void MenuBarExtra::rebuild() {
    const QList<MenuBarEntry> before =
        std::exchange(m_content, menuBarContent(m_store.groups(), m_powerManager.isPreventingSleep()));
    if (haveSameKinds(before, m_content)) {
        const QList<QAction *> actions = m_menu.actions();
        for (qsizetype line = 0; line < actions.size(); ++line) {
            if (before.at(line) != m_content.at(line)) {
                fill(actions.at(line), m_content.at(line));
            }
        }
        return;
    }
    m_menu.clear();
    for (const MenuBarEntry &entry : std::as_const(m_content)) {
        m_menu.addAction(makeAction(entry));
    }
}

QAction *MenuBarExtra::makeAction(const MenuBarEntry &entry) {
    auto *const action = new QAction(&m_menu);
    action->setSeparator(entry.kind == MenuBarEntry::Separator);
    fill(action, entry);
    switch (entry.kind) {
    case MenuBarEntry::ShowWindow:
        connect(action, &QAction::triggered, this, &MenuBarExtra::showWindow);
        break;
    case MenuBarEntry::Quit:
        action->setShortcut(Qt::CTRL | Qt::Key_Q);
        connect(action, &QAction::triggered, this, &MenuBarExtra::quit);
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
