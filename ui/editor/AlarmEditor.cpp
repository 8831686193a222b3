#include "AlarmEditor.h"

#include "builtInSounds.h"

#include <QFileInfo>
#include <QPointer>

namespace kova {

namespace {

QStringList numbers(int count, int digits) {
    QStringList texts;
    for (int number = 0; number < count; ++number) {
        texts.append(QString::number(number).rightJustified(digits, u'0'));
    }
    return texts;
}

QStringList fieldOfSounds(QString SoundEntry::*field) {
    QStringList texts;
    for (const SoundEntry &sound : builtInSounds()) {
        texts.append(sound.*field);
    }
    return texts;
}

QStringList alarmTimes(const AlarmGroup &group) {
    QStringList times;
    for (qint64 index = 0; hasAlarms(group) && index < group.alarmCount; ++index) {
        times.append(timeText(alarmTime(group, index)));
    }
    return times;
}

} // namespace

AlarmEditor::AlarmEditor(const Ports &ports, QObject *parent)
    : QObject(parent),
      m_ports(ports),
      m_hourTexts(numbers(24, 1)),
      m_minuteTexts(numbers(60, 2)),
      m_dayLabels(dayLabels()),
      m_soundIds(fieldOfSounds(&SoundEntry::id)),
      m_soundLabels(fieldOfSounds(&SoundEntry::label)) {
    connect(&ports.store, &AlarmViewModel::editingGroupChanged, this, &AlarmEditor::publishGroup);
    connect(&ports.store, &AlarmViewModel::isEditingChanged, this, [this] {
        if (!m_ports.store.isEditing()) {
            leave();
        }
    });
    publishGroup();
}

void AlarmEditor::publishGroup() {
    if (!m_ports.store.editingGroup()) {
        return;
    }
    if (QStringList times = alarmTimes(group()); times != m_timeline) {
        m_timeline = std::move(times);
        Q_EMIT timelineChanged();
    }
    Q_EMIT groupChanged();
}

void AlarmEditor::setGroup(const EditedGroup &group) {
    if (m_ports.store.isEditing()) {
        m_ports.store.setEditingGroup(group);
    }
}

void AlarmEditor::toggleDay(int day) {
    EditedGroup changed = group();
    if (changed.repeatDays.removeAll(day) == 0) {
        changed.repeatDays.append(day);
    }
    if (changed.repeatDays.isEmpty()) {
        changed.repeatDays = {}; // QML also compares the buffers of empty lists
    }
    setGroup(changed);
}

void AlarmEditor::chooseSoundFile() {
    if (!m_fileChoice) {
        m_fileChoice = std::make_unique<QObject>();
    }
    const QPointer<QObject> choice = m_fileChoice.get();
    const QUuid id = group().id;
    const std::optional<QString> path =
        m_ports.fileChooser.chooseFile({QStringLiteral("アラーム用のサウンドファイルを選択"),
                                        {QStringLiteral("audio/*"), QStringLiteral("audio/mpeg"),
                                         QStringLiteral("audio/x-wav"), QStringLiteral("audio/x-aiff")}});
    // The dialog ran the event loop, so the choice may have been discarded.
    if (!choice || !path || path->isEmpty()) {
        return;
    }
    m_fileChoice = std::make_unique<QObject>(); // discards the pending result of an earlier file
    m_ports.bookmarks.create(*path, m_fileChoice.get(), [this, id, path](const Result<QByteArray> &bookmark) {
        if (!bookmark) {
            m_ports.log.print(QStringLiteral("[SoundPlayer] bookmark error: ") + bookmark.error());
        } else if (EditedGroup changed = group(); changed.id == id) {
            changed.customSoundPath = QString::fromLatin1(bookmark.value().toBase64());
            changed.customSoundName = QFileInfo(*path).fileName();
            setGroup(changed);
        }
    });
}

void AlarmEditor::selectBuiltInSound(const QString &soundId) {
    m_fileChoice.reset();
    EditedGroup changed = group();
    changed.soundName = soundId;
    changed.customSoundPath.reset();
    changed.customSoundName.reset();
    setGroup(changed);
}

void AlarmEditor::trySpeech(const QString &message) {
    m_ports.ttsPlayer.speak(message, group().ttsVolume, false);
}

void AlarmEditor::cancelUnchanged() {
    const AlarmGroup edited = group();
    AlarmGroup before;
    before.id = edited.id;
    before.createdAt = edited.createdAt;
    if (const AlarmGroup *saved = m_ports.store.find(edited.id)) {
        before = *saved;
    }
    if (edited == before) {
        cancel();
    }
}

void AlarmEditor::leave() {
    m_fileChoice.reset();
    m_ports.soundPlayer.stop();
    m_ports.ttsPlayer.stop();
}

} // namespace kova
