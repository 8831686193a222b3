#pragma once

#include "AlarmViewModel.h"
#include "FakeServices.h"
#include "home/HomeScreen.h"

namespace kova {

inline AlarmGroup groupAt(qint64 hour, const QString &label = {}) {
    AlarmGroup group;
    group.id = QUuid::createUuid();
    group.targetHour = hour;
    group.label = label;
    return group;
}

/// The home screen on fake ports.
struct HomeFixture {
    FakeServices services;
    AlarmViewModel store{services.listStorage, services.clock, services.scheduler, services.powerManager};
    HomeScreen home{store, services.soundPlayer, services.scheduler, services.powerManager};

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
};

} // namespace kova
