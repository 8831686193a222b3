#pragma once

#include "AlarmGroup.h"
#include "SoundListModel.h"
#include "TimelineModel.h"

#include <QObject>
#include <QStringList>
#include <memory>
#include <qqmlregistration.h>

namespace kova {

class AlarmViewModel;
class Bookmarks;
class FileChooser;
class Log;
class SoundPlayer;
class TTSPlayer;

/// The editor's two-way binding to the store's editing group: shows its fields and writes each change back at
/// once. A stored value that no control offers is shown as it is and stays until the user changes it. Main
/// thread.
class AlarmEditor : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(bool isNew READ isNew NOTIFY isNewChanged)
    Q_PROPERTY(QStringList hourTexts READ hourTexts CONSTANT)
    Q_PROPERTY(QStringList minuteTexts READ minuteTexts CONSTANT)
    Q_PROPERTY(int hourIndex READ hourIndex WRITE setHourIndex NOTIFY targetHourChanged)
    Q_PROPERTY(QString hourText READ hourText NOTIFY targetHourChanged)
    Q_PROPERTY(int minuteIndex READ minuteIndex WRITE setMinuteIndex NOTIFY targetMinuteChanged)
    Q_PROPERTY(QString minuteText READ minuteText NOTIFY targetMinuteChanged)
    Q_PROPERTY(bool startBefore READ startBefore WRITE setStartBefore NOTIFY startBeforeChanged)
    Q_PROPERTY(QString label READ label WRITE setLabel NOTIFY labelChanged)
    Q_PROPERTY(QStringList dayLabels READ dayLabels CONSTANT)
    Q_PROPERTY(QList<bool> selectedDays READ selectedDays NOTIFY repeatDaysChanged)
    Q_PROPERTY(int alarmCount READ alarmCount WRITE setAlarmCount NOTIFY alarmCountChanged)
    Q_PROPERTY(QString alarmCountText READ alarmCountText NOTIFY alarmCountChanged)
    Q_PROPERTY(bool hasSequence READ hasSequence NOTIFY alarmCountChanged)
    Q_PROPERTY(
        int intervalMinutes READ intervalMinutes WRITE setIntervalMinutes NOTIFY intervalMinutesChanged)
    Q_PROPERTY(QString intervalText READ intervalText NOTIFY intervalMinutesChanged)
    Q_PROPERTY(kova::TimelineModel *timeline READ timeline CONSTANT)
    Q_PROPERTY(kova::SoundListModel *sounds READ sounds CONSTANT)
    Q_PROPERTY(bool hasCustomSound READ hasCustomSound NOTIFY customSoundNameChanged)
    Q_PROPERTY(QString customSoundName READ customSoundName NOTIFY customSoundNameChanged)
    Q_PROPERTY(float volume READ volume WRITE setVolume NOTIFY volumeChanged)
    Q_PROPERTY(QString volumeText READ volumeText NOTIFY volumeChanged)
    Q_PROPERTY(bool ttsEnabled READ ttsEnabled WRITE setTtsEnabled NOTIFY ttsEnabledChanged)
    Q_PROPERTY(QString ttsMessage READ ttsMessage WRITE setTtsMessage NOTIFY ttsMessageChanged)
    Q_PROPERTY(bool ttsLastEnabled READ ttsLastEnabled WRITE setTtsLastEnabled NOTIFY ttsLastEnabledChanged)
    Q_PROPERTY(
        QString ttsLastMessage READ ttsLastMessage WRITE setTtsLastMessage NOTIFY ttsLastMessageChanged)
    Q_PROPERTY(float ttsVolume READ ttsVolume WRITE setTtsVolume NOTIFY ttsVolumeChanged)
    Q_PROPERTY(QString ttsVolumeText READ ttsVolumeText NOTIFY ttsVolumeChanged)

public:
    /// What the editor works with.
    struct Ports {
        AlarmViewModel &store;
        SoundPlayer &soundPlayer;
        TTSPlayer &ttsPlayer;
        FileChooser &fileChooser;
        Bookmarks &bookmarks;
        Log &log;
    };

    static constexpr int maximumAlarmCount = 20;
    static constexpr int maximumIntervalMinutes = 30;

    explicit AlarmEditor(const Ports &ports, QObject *parent = nullptr);

    /// True when the store's list doesn't hold the group.
    bool isNew() const { return m_isNew; }

    QStringList hourTexts() const;
    QStringList minuteTexts() const;
    /// -1 for a stored hour that is none; the same for the minute.
    int hourIndex() const;
    QString hourText() const;
    int minuteIndex() const;
    QString minuteText() const;
    bool startBefore() const { return m_group.startBefore; }
    QString label() const { return m_group.label; }
    QStringList dayLabels() const;
    /// For each day from Sunday on.
    QList<bool> selectedDays() const;
    /// As near as an int comes to the stored value; the same for the interval.
    int alarmCount() const;
    QString alarmCountText() const;
    bool hasSequence() const { return m_group.alarmCount > 1; }
    int intervalMinutes() const;
    QString intervalText() const;
    TimelineModel *timeline() { return &m_timeline; }
    SoundListModel *sounds() { return &m_sounds; }
    bool hasCustomSound() const { return m_group.customSoundName.has_value(); }
    QString customSoundName() const { return m_group.customSoundName.value_or(QString()); }
    float volume() const { return m_group.volume; }
    QString volumeText() const;
    bool ttsEnabled() const { return m_group.ttsEnabled; }
    QString ttsMessage() const { return m_group.ttsMessage; }
    bool ttsLastEnabled() const { return m_group.ttsLastEnabled; }
    QString ttsLastMessage() const { return m_group.ttsLastMessage; }
    float ttsVolume() const { return m_group.ttsVolume; }
    QString ttsVolumeText() const;

    void setHourIndex(int index);
    void setMinuteIndex(int index);
    void setStartBefore(bool startBefore);
    void setLabel(const QString &label);
    /// Brings the count into 1 to 20.
    void setAlarmCount(int count);
    /// Brings the interval into 1 to 30.
    void setIntervalMinutes(int minutes);
    /// Takes the nearest of the 21 steps from 0 to 1; the same for the speech.
    void setVolume(float volume);
    void setTtsEnabled(bool enabled);
    void setTtsMessage(const QString &message);
    void setTtsLastEnabled(bool enabled);
    void setTtsLastMessage(const QString &message);
    void setTtsVolume(float volume);

    /// Takes the day out wherever it stands, or puts it last.
    Q_INVOKABLE void toggleDay(int day);

    /// Asks for a file and waits for the user; alarms ring on meanwhile. On a slow disk the group gets the
    /// file later, unless its sound was chosen anew or the editor left it meanwhile.
    Q_INVOKABLE void chooseSoundFile();
    Q_INVOKABLE void clearCustomSound();
    Q_INVOKABLE void selectBuiltInSound(const QString &soundId);

    /// Plays a built-in sound once, at the group's volume, without choosing it.
    Q_INVOKABLE void preview(const QString &soundId);
    Q_INVOKABLE void trySpeech();
    Q_INVOKABLE void tryLastSpeech();

    Q_INVOKABLE void save();
    Q_INVOKABLE void cancel();
    /// Cancels when nothing would be lost.
    Q_INVOKABLE void cancelUnchanged();

    /// Ends what is being tried out; to be called when the editor leaves the screen.
    Q_INVOKABLE void leave();

Q_SIGNALS:
    void isNewChanged();
    void targetHourChanged();
    void targetMinuteChanged();
    void startBeforeChanged();
    void labelChanged();
    void repeatDaysChanged();
    void alarmCountChanged();
    void intervalMinutesChanged();
    void customSoundNameChanged();
    void volumeChanged();
    void ttsEnabledChanged();
    void ttsMessageChanged();
    void ttsLastEnabledChanged();
    void ttsLastMessageChanged();
    void ttsVolumeChanged();

private:
    void enter();
    void read();
    void show(const AlarmGroup &group);
    void updateIsNew();
    template <typename Field, typename Value> void write(Field AlarmGroup::*field, const Value &value);

    Ports m_ports;
    AlarmGroup m_group;
    AlarmGroup m_entered; // as it was when the editor opened
    bool m_isNew = true;
    std::unique_ptr<QObject> m_choice; ///< of a file for this group; owns the answer
    TimelineModel m_timeline;
    SoundListModel m_sounds;
};

} // namespace kova
