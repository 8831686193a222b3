#pragma once

#include "AlarmGroup.h"

namespace kova {

/// One line of the menu-bar item's menu, from top to bottom.
struct MenuBarEntry {
    enum Kind { Heading, Separator, Empty, Summary, Group, More, SleepPrevention, ShowWindow, Quit };

    Kind kind;
    QString text;
    bool isEnabled = false; ///< of the group, for a group's line

    friend bool operator==(const MenuBarEntry &, const MenuBarEntry &) = default;
};

QList<MenuBarEntry> menuBarContent(const QList<AlarmGroup> &groups, bool isPreventingSleep);

} // namespace kova
