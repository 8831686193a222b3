#pragma once

#include "EditedGroup.h"
#include "editor/schedule/TimelineModel.h"

#include <QObject>
#include <QStringList>
#include <memory>

namespace kova {

class AlarmViewModel;
class Bookmarks;
class FileChooser;
class Log;
class SoundPlayer;
class TTSPlayer;

/// The editor's two-way binding to the store's editing group: each change is written back at once. Main
/// thread.
class AlarmEditor : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(kova::EditedGroup group READ group WRITE setGroup NOTIFY groupChanged)
    Q_PROPERTY(bool isNew READ isNew NOTIFY groupChanged)
    Q_PROPERTY(kova::TimelineModel *timeline READ timeline CONSTANT)
    Q_PROPERTY(QStringList hourTexts READ hourTexts CONSTANT)
    Q_PROPERTY(QStringList minuteTexts READ minuteTexts CONSTANT)
    Q_PROPERTY(QStringList dayLabels READ dayLabels CONSTANT)
    Q_PROPERTY(QStringList soundIds READ soundIds CONSTANT)
    Q_PROPERTY(QStringList soundLabels READ soundLabels CONSTANT)
    Q_PROPERTY(int maximumAlarmCount READ maximumAlarmCount CONSTANT)
    Q_PROPERTY(int maximumIntervalMinutes READ maximumIntervalMinutes CONSTANT)
    Q_PROPERTY(qreal volumeStep READ volumeStep CONSTANT)

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

    explicit AlarmEditor(const Ports &ports, QObject *parent = nullptr);

    /// The store's editing group, or the defaults. That a group is gone is not told: the views keep what they
    /// show while they fade out.
    EditedGroup group() const;
    /// Does nothing once the editor is closed, as when a text is completed while it fades out.
    void setGroup(const EditedGroup &group);

    /// True when the store's list doesn't hold the group.
    bool isNew() const;
    TimelineModel *timeline() { return &m_timeline; }

    static QStringList hourTexts();
    static QStringList minuteTexts();
    static QStringList dayLabels();
    static QStringList soundIds();
    static QStringList soundLabels();
    static int maximumAlarmCount() { return EditedGroup::maximumAlarmCount; }
    static int maximumIntervalMinutes() { return EditedGroup::maximumIntervalMinutes; }
    static qreal volumeStep() { return 1.0 / EditedGroup::volumeSteps; }

    Q_INVOKABLE void toggleDay(int day);

    /// Asks for a file and waits for the user; alarms ring on meanwhile. On a slow disk the group gets the
    /// file later, unless its sound was chosen anew or the editor left it meanwhile.
    Q_INVOKABLE void chooseSoundFile();
    Q_INVOKABLE void clearCustomSound() { selectBuiltInSound(group().soundName); }
    Q_INVOKABLE void selectBuiltInSound(const QString &soundId);

    /// Plays a built-in sound once, at the group's volume, without choosing it.
    Q_INVOKABLE void preview(const QString &soundId);
    Q_INVOKABLE void trySpeech(const QString &message);

    Q_INVOKABLE void save();
    Q_INVOKABLE void cancel();
    /// Cancels when nothing would be lost.
    Q_INVOKABLE void cancelUnchanged();

    /// Ends what is being tried out; to be called when the editor leaves the screen.
    Q_INVOKABLE void leave();

Q_SIGNALS:
    void groupChanged();

private:
    void follow();

    Ports m_ports;
    std::unique_ptr<QObject> m_choice; ///< of a file for this group; owns the answer
    TimelineModel m_timeline;
};

} // namespace kova
