#include "HomeScreen.h"

namespace kova {

HomeScreen::HomeScreen(AlarmViewModel &store, SoundPlayer &soundPlayer, AlarmScheduler &scheduler,
                       PowerManager &powerManager)
    : m_store(store),
      m_soundPlayer(soundPlayer),
      m_scheduler(scheduler),
      m_powerManager(powerManager),
      m_selection(store, soundPlayer) {
    connect(&powerManager, &PowerManager::isPreventingSleepChanged, this, &HomeScreen::changed);
    connect(&soundPlayer, &SoundPlayer::currentPreviewIdChanged, this, &HomeScreen::changed);
    connect(&store, &AlarmViewModel::isEditingChanged, this, &HomeScreen::changed);
    connect(&scheduler, &AlarmScheduler::activeAlarmChanged, this, &HomeScreen::onActiveAlarmChanged);
    present();
}

// Removes an alert synchronously. Presents a new one from the event loop, after the sound, the speech and the
// notification have been started.
void HomeScreen::onActiveAlarmChanged() {
    if (m_scheduler.activeAlarm()) {
        QMetaObject::invokeMethod(this, &HomeScreen::present, Qt::QueuedConnection);
    } else {
        present();
    }
}

void HomeScreen::present() {
    const std::optional<FiringAlarm> &alarm = m_scheduler.activeAlarm();
    if (m_alert && alarm && m_alert->id() == AlarmAlertItem{*alarm}.id()) {
        return;
    }
    if (m_alert) {
        m_alert.reset();
        Q_EMIT changed();
    }
    if (alarm) {
        m_alert = AlarmAlertItem{*alarm};
        Q_EMIT changed();
    }
}

void HomeScreen::toggle(const QString &groupId) {
    if (!m_selection.editMode()) {
        m_store.toggleGroup(QUuid::fromString(groupId));
    }
}

void HomeScreen::preview(const QString &groupId) {
    if (const AlarmGroup *group = find(groupId); group && !m_selection.editMode()) {
        m_soundPlayer.togglePreview(*group);
    }
}

void HomeScreen::duplicate(const QString &groupId) {
    if (const AlarmGroup *group = find(groupId); group && !m_selection.editMode()) {
        m_store.duplicateGroup(*group);
    }
}

void HomeScreen::click(const QString &groupId) {
    if (!m_selection.editMode()) {
        m_soundPlayer.stop();
    }
    edit(groupId);
}

void HomeScreen::edit(const QString &groupId) {
    if (const AlarmGroup *group = find(groupId)) {
        m_store.startEditing(*group);
    }
}

} // namespace kova
