#pragma once

#include "AlarmViewModel.h"
#include "FakeFileChooser.h"
#include "FakeServices.h"
#include "editor/AlarmEditor.h"

namespace kova {

/// A real store and editor on fake ports.
struct EditorFixture {
    explicit EditorFixture(const AlarmGroup &group = {}) { store.startEditing(group); }

    FakeServices services;
    FakeFileChooser fileChooser;
    AlarmViewModel store{services.listStorage, services.clock, services.scheduler, services.powerManager};
    AlarmEditor editor{
        {store, services.soundPlayer, services.ttsPlayer, fileChooser, services.bookmarks, services.log}};

    const AlarmGroup &edited() const { return *store.editingGroup(); }

    /// As a view does it.
    template <typename Value> void set(void (EditedGroup::*setter)(Value), Value value) {
        EditedGroup group = editor.group();
        (group.*setter)(value);
        editor.setGroup(group);
    }
};

} // namespace kova
