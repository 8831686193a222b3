#pragma once

#include "AlarmListModel.h"
#include "AlarmViewModel.h"
#include "HomeSelection.h"
#include "PowerManager.h"
#include "SoundPlayer.h"
#include "alert/AlarmAlertItem.h"

namespace kova {

/// What the main window shows and does: the list, its edit mode, the cards' actions and the ringing alert.
/// Main thread.
class HomeScreen : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(kova::AlarmListModel *groups READ groups CONSTANT)
    Q_PROPERTY(kova::HomeSelection *selection READ selection CONSTANT)
    Q_PROPERTY(bool isPreventingSleep READ isPreventingSleep NOTIFY isPreventingSleepChanged)
    Q_PROPERTY(QString currentPreviewId READ currentPreviewId NOTIFY currentPreviewIdChanged)
    Q_PROPERTY(bool isEditing READ isEditing NOTIFY isEditingChanged)
    Q_PROPERTY(bool isRinging READ isRinging NOTIFY alertChanged)
    Q_PROPERTY(kova::AlarmAlertItem alert READ alert NOTIFY alertChanged)

public:
    /// All must outlive the screen.
    HomeScreen(AlarmViewModel &store, SoundPlayer &soundPlayer, AlarmScheduler &scheduler,
               PowerManager &powerManager);

    AlarmListModel *groups() { return &m_groups; }
    HomeSelection *selection() { return &m_selection; }
    bool isPreventingSleep() const { return m_powerManager.isPreventingSleep(); }

    /// Which card previews its sound: a group's id text, or something that is none.
    QString currentPreviewId() const { return m_soundPlayer.currentPreviewId(); }

    /// Whether the editor is shown.
    bool isEditing() const { return m_store.isEditing() && m_store.editingGroup(); }

    /// The alert that is presented. A newer alarm's takes its place only after isRinging has been false.
    bool isRinging() const { return m_alert.has_value(); }
    AlarmAlertItem alert() const { return m_alert.value_or(AlarmAlertItem()); }

    /// Opens the editor on a new group.
    Q_INVOKABLE void add() { m_store.startAdding(); }

    /// A card's controls; they do nothing in edit mode.
    Q_INVOKABLE void toggle(const QString &groupId);
    Q_INVOKABLE void preview(const QString &groupId);
    Q_INVOKABLE void duplicate(const QString &groupId);

    /// A click on a card: opens the editor, and ends a preview unless in edit mode.
    Q_INVOKABLE void click(const QString &groupId);

    /// A card's menu: opens the editor and leaves a preview playing, or deletes without asking.
    Q_INVOKABLE void edit(const QString &groupId);
    Q_INVOKABLE void remove(const QString &groupId) { m_store.deleteGroup(QUuid::fromString(groupId)); }

    /// Any way of closing the alert.
    Q_INVOKABLE void endRinging() { m_scheduler.endRinging(); }

Q_SIGNALS:
    void isPreventingSleepChanged();
    void currentPreviewIdChanged();
    void isEditingChanged();
    void alertChanged();

private:
    void followAlarm();
    void present();
    const AlarmGroup *find(const QString &groupId) const;

    AlarmViewModel &m_store;
    SoundPlayer &m_soundPlayer;
    AlarmScheduler &m_scheduler;
    PowerManager &m_powerManager;
    HomeSelection m_selection;
    AlarmListModel m_groups;
    std::optional<AlarmAlertItem> m_alert;
};

} // namespace kova
