#pragma once

#include "AlarmViewModel.h"
#include "FakeServices.h"
#include "editor/AlarmEditor.h"
#include "groups.h"
#include "home/HomeScreen.h"

namespace kova {

/// The home screen and the editor on fake ports.
struct Fixture {
    FakeServices services;
    FakeFileChooser fileChooser;
    AlarmViewModel store{services.listStorage, services.clock, services.scheduler, services.powerManager};
    HomeScreen home{store, services.soundPlayer, services.scheduler, services.powerManager};
    AlarmEditor editor{
        {store, services.soundPlayer, services.ttsPlayer, fileChooser, services.bookmarks, services.log}};

    AlarmGroup add(const AlarmGroup &group) {
        store.saveEditedGroup(group);
        return group;
    }
    void add(int count) {
        for (int i = 0; i < count; ++i) {
            store.saveEditedGroup(groupAt(i % 24));
        }
    }
    void ring(const AlarmGroup &group, qint64 index) {
        services.scheduler.setActiveAlarm(std::nullopt);
        services.scheduler.setActiveAlarm(FiringAlarm{group, index, services.clock.now()});
    }

    const AlarmGroup &edited() const { return *store.editingGroup(); }
    /// Changes the edited group as a view does it.
    template <typename Value> void set(void (EditedGroup::*setter)(Value), Value value) {
        EditedGroup group = editor.group();
        (group.*setter)(value);
        editor.setGroup(group);
    }
};

} // namespace kova
