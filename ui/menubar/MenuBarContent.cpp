#include "MenuBarContent.h"

#include "AlarmTimes.h"
#include "shownText.h"

#include <algorithm>

namespace kova {

namespace {

constexpr qsizetype shownGroups = 5;
constexpr int maxLabelLength = 30; // characters

// The time comes first, so a right-to-left label would set the direction of the whole line. Some desktops
// apply the mark, some the isolate.
QString line(const QString &time, const QString &label) {
    constexpr QChar leftToRight(0x200E);
    constexpr QChar isolate(0x2068);
    constexpr QChar endIsolate(0x2069);
    const QString gap = QStringLiteral("  ");
    return label.isRightToLeft() ? leftToRight + time + gap + isolate + label + endIsolate
                                 : time + gap + label;
}

MenuBarEntry groupLine(const AlarmGroup &group) {
    const QString time = timeText(group.targetHour, group.targetMinute);
    return {.kind = MenuBarEntry::Group,
            .text = group.label.isEmpty() ? time : line(time, plainLine(elided(group.label, maxLabelLength))),
            .isEnabled = group.isEnabled};
}

QList<MenuBarEntry> summary(const QList<AlarmGroup> &groups) {
    if (groups.isEmpty()) {
        return {{MenuBarEntry::Empty, QStringLiteral("アラームなし")}};
    }
    const auto enabled = std::ranges::count_if(groups, &AlarmGroup::isEnabled);
    QList<MenuBarEntry> lines{
        {MenuBarEntry::Summary, QStringLiteral("有効: %1 / %2").arg(enabled).arg(groups.size())},
        {MenuBarEntry::Separator, {}},
    };
    for (const AlarmGroup &group : groups.first(std::min(groups.size(), shownGroups))) {
        lines << groupLine(group);
    }
    if (groups.size() > shownGroups) {
        lines << MenuBarEntry{MenuBarEntry::More,
                              QStringLiteral("他 %1件...").arg(groups.size() - shownGroups)};
    }
    return lines;
}

} // namespace

QList<MenuBarEntry> menuBarContent(const QList<AlarmGroup> &groups, bool isPreventingSleep) {
    QList<MenuBarEntry> lines{
        {MenuBarEntry::Heading, QStringLiteral("KOVA アラーム")},
        {MenuBarEntry::Separator, {}},
    };
    lines << summary(groups) << MenuBarEntry{MenuBarEntry::Separator, {}};
    if (isPreventingSleep) {
        lines << MenuBarEntry{MenuBarEntry::SleepPrevention, QStringLiteral("スリープ防止中")};
    }
    lines << MenuBarEntry{MenuBarEntry::Separator, {}}
          << MenuBarEntry{MenuBarEntry::ShowWindow, QStringLiteral("ウィンドウを表示")}
          << MenuBarEntry{MenuBarEntry::Quit, QStringLiteral("終了")};
    return lines;
}

} // namespace kova
