#pragma once

#include "HomeEditMode.h"
#include "shownText.h"

namespace kova {

/// A ringing alarm as the alert shows it.
struct AlarmAlertItem {
    Q_GADGET
    QML_VALUE_TYPE(alarmAlertItem)
    Q_PROPERTY(QString timeText READ alertTimeText)
    Q_PROPERTY(QString label READ label)
    Q_PROPERTY(QString positionText READ positionText)

public:
    FiringAlarm alarm{};

    /// Items with the same id are the same presentation.
    QString id() const { return alarmKey(alarm.group, alarm.index); }

    /// The planned time of the alarm, not the moment of firing.
    QString alertTimeText() const { return timeText(alarmTime(alarm.group, alarm.index)); }

    QString label() const { return elided(alarm.group.label); }

    QString positionText() const {
        return QStringLiteral("アラーム %1 / %2").arg(alarm.index + 1).arg(alarm.group.alarmCount);
    }
};

/// The state and the actions of the main window: the list, its edit mode, the cards and the ringing alert.
/// Main thread.
class HomeScreen : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("created by the application")
    Q_PROPERTY(QAbstractItemModel *groups READ groups CONSTANT)
    Q_PROPERTY(kova::HomeEditMode *selection READ selection CONSTANT)
    Q_PROPERTY(bool isPreventingSleep READ isPreventingSleep NOTIFY changed)
    Q_PROPERTY(QString currentPreviewId READ currentPreviewId NOTIFY changed)
    Q_PROPERTY(bool isEditing READ isEditing NOTIFY changed)
    Q_PROPERTY(bool isRinging READ isRinging NOTIFY changed)
    Q_PROPERTY(kova::AlarmAlertItem alert READ alert NOTIFY changed)

public:
    /// All must outlive the screen.
    HomeScreen(AlarmViewModel &store, SoundPlayer &soundPlayer, AlarmScheduler &scheduler,
               PowerManager &powerManager);

    QAbstractItemModel *groups() { return &m_store; }
    HomeEditMode *selection() { return &m_selection; }
    bool isPreventingSleep() const { return m_powerManager.isPreventingSleep(); }

    /// The id text of the group whose sound is previewed; any other text if there is none.
    QString currentPreviewId() const { return m_soundPlayer.currentPreviewId(); }

    bool isEditing() const { return m_store.isEditing() && m_store.editingGroup(); }

    /// The presented alert. isRinging becomes false before the alert of a newer alarm replaces it.
    bool isRinging() const { return m_alert.has_value(); }
    AlarmAlertItem alert() const { return m_alert.value_or(AlarmAlertItem()); }

    Q_INVOKABLE void add() { m_store.startAdding(); }

    /// The controls of a card; without effect in edit mode.
    Q_INVOKABLE void toggle(const QString &groupId);
    Q_INVOKABLE void preview(const QString &groupId);
    Q_INVOKABLE void duplicate(const QString &groupId);

    /// A click on a card: opens the editor and, unless in edit mode, stops a preview.
    Q_INVOKABLE void click(const QString &groupId);

    /// The menu of a card: opens the editor without stopping a preview, or deletes without confirmation.
    Q_INVOKABLE void edit(const QString &groupId);
    Q_INVOKABLE void remove(const QString &groupId) { m_store.deleteGroup(QUuid::fromString(groupId)); }

    /// Called however the alert is closed.
    Q_INVOKABLE void endRinging() { m_scheduler.endRinging(); }

Q_SIGNALS:
    void changed(); ///< any property

private:
    void onActiveAlarmChanged();
    void present();
    const AlarmGroup *find(const QString &groupId) const { return m_store.find(QUuid::fromString(groupId)); }

    AlarmViewModel &m_store;
    SoundPlayer &m_soundPlayer;
    AlarmScheduler &m_scheduler;
    PowerManager &m_powerManager;
    HomeEditMode m_selection;
    std::optional<AlarmAlertItem> m_alert;
};

} // namespace kova
