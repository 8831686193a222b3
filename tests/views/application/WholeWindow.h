#pragma once

#include "WindowFixture.h"

namespace kova {

/// A window that is tall enough for the whole editor, with two groups, and functions that open its popups.
struct WholeWindow : Window {
    WholeWindow() {
        window.resize(460, 1500);
        AlarmGroup first = groupAt(7, QStringLiteral("朝"));
        first.intervalMinutes = 5;
        first.repeatDays = {5, 1};
        first.ttsEnabled = first.ttsLastEnabled = true;
        first.ttsMessage = QStringLiteral("一");
        first.ttsLastMessage = QStringLiteral("二");
        first.ttsVolume = 0.6F;
        add(first);
        AlarmGroup second = groupAt(18);
        second.alarmCount = 1;
        second.isEnabled = false;
        add(second);
        QTRY_COMPARE(all("cardSurface").size(), 2);
    }

    void selectFirst() {
        click("editButton");
        click("selectionMark");
    }
    void selectAll() {
        selectFirst();
        click("selectAllButton");
    }
    void askToDelete() {
        selectFirst();
        click("deleteButton");
        QTRY_VERIFY(shows("destructiveButton"));
    }
    void openMenu() {
        click(frame("cardTime").center(), Qt::RightButton);
        QTRY_COMPARE(all("menuItem").size(), 3);
    }
    void openEditor(const std::function<void(AlarmGroup &)> &change = [](AlarmGroup &) {}) {
        AlarmGroup group = store.groups().constFirst();
        change(group);
        edit(group);
    }
    void ringFirst() {
        services.clock.set({2026, 3, 2}, {6, 49, 59});
        services.runLoop.advance(std::chrono::seconds(1));
        QTRY_VERIFY(shows("stopButton"));
    }
};

} // namespace kova
