#pragma once

#include "AlarmViewModel.h"
#include "Bookmarks.h"
#include "EditedGroup.h"
#include "FileChooser.h"

namespace kova {

/// The editor's two-way binding to the store's editing group. Each change is written back immediately. Main
/// thread.
class AlarmEditor : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("created by the application")
    Q_PROPERTY(kova::EditedGroup group READ group WRITE setGroup NOTIFY groupChanged)
    Q_PROPERTY(bool isNew READ isNew NOTIFY groupChanged)
    Q_PROPERTY(QStringList timeline READ timeline NOTIFY timelineChanged)
    Q_PROPERTY(QStringList hourTexts MEMBER m_hourTexts CONSTANT)
    Q_PROPERTY(QStringList minuteTexts MEMBER m_minuteTexts CONSTANT)
    Q_PROPERTY(QStringList dayLabels MEMBER m_dayLabels CONSTANT)
    Q_PROPERTY(QStringList soundIds MEMBER m_soundIds CONSTANT)
    Q_PROPERTY(QStringList soundLabels MEMBER m_soundLabels CONSTANT)
    Q_PROPERTY(int maximumAlarmCount READ maximumAlarmCount CONSTANT)
    Q_PROPERTY(int maximumIntervalMinutes READ maximumIntervalMinutes CONSTANT)
    Q_PROPERTY(qreal volumeStep READ volumeStep CONSTANT)

public:
    /// The objects that the editor uses. All must outlive it.
    struct Ports {
        AlarmViewModel &store;
        SoundPlayer &soundPlayer;
        TTSPlayer &ttsPlayer;
        FileChooser &fileChooser;
        Bookmarks &bookmarks;
        Log &log;
    };

    explicit AlarmEditor(const Ports &ports, QObject *parent = nullptr);

    /// Returns the store's editing group, or the defaults if there is none. groupChanged() is not emitted
    /// when the group is reset, so that the views keep their content while they fade out.
    EditedGroup group() const { return {m_ports.store.editingGroup().value_or(AlarmGroup())}; }
    /// Does nothing after the editor has closed; a text field may commit its text while the editor fades out.
    void setGroup(const EditedGroup &group);

    bool isNew() const { return !m_ports.store.find(group().id); }

    QStringList timeline() const { return m_timeline; }

    static int maximumAlarmCount() { return EditedGroup::maximumAlarmCount; }
    static int maximumIntervalMinutes() { return EditedGroup::maximumIntervalMinutes; }
    static qreal volumeStep() { return 1.0 / EditedGroup::volumeSteps; }

    /// Removes all entries of the day, or appends it.
    Q_INVOKABLE void toggleDay(int day);

    /// Shows the file dialog and returns when it is closed; alarms ring meanwhile. On a slow disk the file is
    /// assigned later, unless another sound has been chosen or the editor has been closed.
    Q_INVOKABLE void chooseSoundFile();
    Q_INVOKABLE void clearCustomSound() { selectBuiltInSound(group().soundName); }
    Q_INVOKABLE void selectBuiltInSound(const QString &soundId);

    /// Plays a built-in sound once, at the group's volume, without choosing it.
    Q_INVOKABLE void preview(const QString &soundId) { m_ports.soundPlayer.preview(soundId, group().volume); }
    Q_INVOKABLE void trySpeech(const QString &message);

    Q_INVOKABLE void save() { m_ports.store.saveEditedGroup(group()); }
    Q_INVOKABLE void cancel() { m_ports.store.cancelEditing(); }
    /// Cancels unless there are changes, which would be lost.
    Q_INVOKABLE void cancelUnchanged();

    /// Stops the sound and the speech. Call when the editor leaves the screen.
    Q_INVOKABLE void leave();

Q_SIGNALS:
    void groupChanged();
    void timelineChanged();

private:
    void publishGroup();

    Ports m_ports;
    std::unique_ptr<QObject> m_fileChoice; ///< context of the pending choice; deleting it discards the result
    QStringList m_timeline;
    const QStringList m_hourTexts;
    const QStringList m_minuteTexts;
    const QStringList m_dayLabels;
    const QStringList m_soundIds;
    const QStringList m_soundLabels;
};

} // namespace kova
