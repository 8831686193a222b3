#include "AlarmEditor.h"

#include "AlarmTimes.h"
#include "AlarmViewModel.h"
#include "Bookmarks.h"
#include "FileChooser.h"
#include "Log.h"
#include "SoundPlayer.h"
#include "TTSPlayer.h"

#include <QFileInfo>
#include <QPointer>
#include <algorithm>
#include <cmath>
#include <limits>

namespace kova {

namespace {

QStringList numbers(int count, int digits) {
    QStringList texts;
    for (int number = 0; number < count; ++number) {
        texts.append(QString::number(number).rightJustified(digits, u'0'));
    }
    return texts;
}

int indexBelow(int count, qint64 value) {
    return value >= 0 && value < count ? static_cast<int>(value) : -1;
}

int nearestInt(qint64 value) {
    return static_cast<int>(
        std::clamp<qint64>(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

// The whole part of the product as a 32-bit float, which names the steps right: 0.7 gives 70, not 69.
QString percentText(float volume) {
    return QString::number(std::trunc(static_cast<double>(volume * 100.0F)), 'f', 0) + u'%';
}

constexpr float volumeSteps = 20;

float nearestStep(float volume) {
    return std::round(std::clamp(volume, 0.0F, 1.0F) * volumeSteps) / volumeSteps;
}

QString chosenSound(const AlarmGroup &group) {
    return group.customSoundPath ? QString() : group.soundName;
}

} // namespace

AlarmEditor::AlarmEditor(const Ports &ports, QObject *parent) : QObject(parent), m_ports(ports) {
    connect(&ports.store, &AlarmViewModel::editingGroupChanged, this, &AlarmEditor::read);
    connect(&ports.store, &AlarmViewModel::isEditingChanged, this,
            [this] { m_ports.store.isEditing() ? enter() : leave(); });
    m_timeline.setGroup(m_group);
    m_sounds.setChosenId(chosenSound(m_group));
    read();
}

void AlarmEditor::enter() {
    show(m_ports.store.editingGroup().value_or(AlarmGroup()));
    m_entered = m_group;
    updateIsNew();
}

// An editor whose group is gone keeps what it shows, since it takes a moment to fade out.
void AlarmEditor::read() {
    if (const std::optional<AlarmGroup> &group = m_ports.store.editingGroup()) {
        show(*group);
        updateIsNew();
    }
}

void AlarmEditor::show(const AlarmGroup &group) {
    const AlarmGroup old = std::exchange(m_group, group);
    if (old.id != group.id) {
        m_choice.reset();
    }
    m_timeline.setGroup(group);
    m_sounds.setChosenId(chosenSound(group));
    const auto tell = [&](auto field, void (AlarmEditor::*changed)()) {
        if (old.*field != group.*field) {
            Q_EMIT(this->*changed)();
        }
    };
    tell(&AlarmGroup::targetHour, &AlarmEditor::targetHourChanged);
    tell(&AlarmGroup::targetMinute, &AlarmEditor::targetMinuteChanged);
    tell(&AlarmGroup::startBefore, &AlarmEditor::startBeforeChanged);
    tell(&AlarmGroup::label, &AlarmEditor::labelChanged);
    tell(&AlarmGroup::repeatDays, &AlarmEditor::repeatDaysChanged);
    tell(&AlarmGroup::alarmCount, &AlarmEditor::alarmCountChanged);
    tell(&AlarmGroup::intervalMinutes, &AlarmEditor::intervalMinutesChanged);
    tell(&AlarmGroup::customSoundName, &AlarmEditor::customSoundNameChanged);
    tell(&AlarmGroup::volume, &AlarmEditor::volumeChanged);
    tell(&AlarmGroup::ttsEnabled, &AlarmEditor::ttsEnabledChanged);
    tell(&AlarmGroup::ttsMessage, &AlarmEditor::ttsMessageChanged);
    tell(&AlarmGroup::ttsLastEnabled, &AlarmEditor::ttsLastEnabledChanged);
    tell(&AlarmGroup::ttsLastMessage, &AlarmEditor::ttsLastMessageChanged);
    tell(&AlarmGroup::ttsVolume, &AlarmEditor::ttsVolumeChanged);
}

void AlarmEditor::updateIsNew() {
    const bool isNew = !m_ports.store.find(m_group.id);
    if (std::exchange(m_isNew, isNew) != isNew) {
        Q_EMIT isNewChanged();
    }
}

// A late change, as when a text is completed while the editor closes, doesn't open it again.
template <typename Field, typename Value>
void AlarmEditor::write(Field AlarmGroup::*field, const Value &value) {
    if (!m_ports.store.isEditing() || m_group.*field == value) {
        return;
    }
    AlarmGroup group = m_group;
    group.*field = value;
    m_ports.store.setEditingGroup(group);
}

QStringList AlarmEditor::hourTexts() const {
    return numbers(24, 1);
}

QStringList AlarmEditor::minuteTexts() const {
    return numbers(60, 2);
}

int AlarmEditor::hourIndex() const {
    return indexBelow(24, m_group.targetHour);
}

QString AlarmEditor::hourText() const {
    return QString::number(m_group.targetHour);
}

int AlarmEditor::minuteIndex() const {
    return indexBelow(60, m_group.targetMinute);
}

QString AlarmEditor::minuteText() const {
    return QString::asprintf("%02lld", m_group.targetMinute);
}

QStringList AlarmEditor::dayLabels() const {
    return kova::dayLabels();
}

QList<bool> AlarmEditor::selectedDays() const {
    QList<bool> days;
    for (qsizetype day = 0; day < kova::dayLabels().size(); ++day) {
        days.append(m_group.repeatDays.contains(day));
    }
    return days;
}

int AlarmEditor::alarmCount() const {
    return nearestInt(m_group.alarmCount);
}

QString AlarmEditor::alarmCountText() const {
    return QStringLiteral("%1回").arg(m_group.alarmCount);
}

int AlarmEditor::intervalMinutes() const {
    return nearestInt(m_group.intervalMinutes);
}

QString AlarmEditor::intervalText() const {
    return QStringLiteral("%1分").arg(m_group.intervalMinutes);
}

QString AlarmEditor::volumeText() const {
    return percentText(m_group.volume);
}

QString AlarmEditor::ttsVolumeText() const {
    return percentText(m_group.ttsVolume);
}

void AlarmEditor::setHourIndex(int index) {
    write(&AlarmGroup::targetHour, index);
}

void AlarmEditor::setMinuteIndex(int index) {
    write(&AlarmGroup::targetMinute, index);
}

void AlarmEditor::setStartBefore(bool startBefore) {
    write(&AlarmGroup::startBefore, startBefore);
}

void AlarmEditor::setLabel(const QString &label) {
    write(&AlarmGroup::label, label);
}

void AlarmEditor::setAlarmCount(int count) {
    write(&AlarmGroup::alarmCount, std::clamp(count, 1, maximumAlarmCount));
}

void AlarmEditor::setIntervalMinutes(int minutes) {
    write(&AlarmGroup::intervalMinutes, std::clamp(minutes, 1, maximumIntervalMinutes));
}

void AlarmEditor::setVolume(float volume) {
    write(&AlarmGroup::volume, nearestStep(volume));
}

void AlarmEditor::setTtsEnabled(bool enabled) {
    write(&AlarmGroup::ttsEnabled, enabled);
}

void AlarmEditor::setTtsMessage(const QString &message) {
    write(&AlarmGroup::ttsMessage, message);
}

void AlarmEditor::setTtsLastEnabled(bool enabled) {
    write(&AlarmGroup::ttsLastEnabled, enabled);
}

void AlarmEditor::setTtsLastMessage(const QString &message) {
    write(&AlarmGroup::ttsLastMessage, message);
}

void AlarmEditor::setTtsVolume(float volume) {
    write(&AlarmGroup::ttsVolume, nearestStep(volume));
}

void AlarmEditor::toggleDay(int day) {
    QList<qint64> days = m_group.repeatDays;
    if (days.removeAll(day) == 0) {
        days.append(day);
    }
    if (days.isEmpty()) {
        days = {}; // without memory, as the toolkit compares that of an empty list too
    }
    write(&AlarmGroup::repeatDays, days);
}

void AlarmEditor::chooseSoundFile() {
    if (!m_choice) {
        m_choice = std::make_unique<QObject>();
    }
    const QPointer<QObject> choice = m_choice.get();
    const std::optional<QString> path =
        m_ports.fileChooser.chooseFile({QStringLiteral("アラーム用のサウンドファイルを選択"),
                                        {QStringLiteral("audio/*"), QStringLiteral("audio/mpeg"),
                                         QStringLiteral("audio/x-wav"), QStringLiteral("audio/x-aiff")}});
    // The event loop ran meanwhile: the choice may be dropped.
    if (!choice || !path || path->isEmpty()) {
        return;
    }
    m_choice = std::make_unique<QObject>(); // and with the old one what an earlier file would still answer
    m_ports.bookmarks.create(*path, m_choice.get(), [this, path](const Result<QByteArray> &bookmark) {
        if (!bookmark) {
            m_ports.log.print(QStringLiteral("[SoundPlayer] bookmark error: ") + bookmark.error());
            return;
        }
        write(&AlarmGroup::customSoundPath, QString::fromLatin1(bookmark.value().toBase64()));
        write(&AlarmGroup::customSoundName, QFileInfo(*path).fileName());
    });
}

void AlarmEditor::clearCustomSound() {
    m_choice.reset();
    write(&AlarmGroup::customSoundPath, std::nullopt);
    write(&AlarmGroup::customSoundName, std::nullopt);
}

void AlarmEditor::selectBuiltInSound(const QString &soundId) {
    write(&AlarmGroup::soundName, soundId);
    clearCustomSound();
}

void AlarmEditor::preview(const QString &soundId) {
    m_ports.soundPlayer.preview(soundId, m_group.volume);
}

void AlarmEditor::trySpeech() {
    m_ports.ttsPlayer.speak(m_group.ttsMessage, m_group.ttsVolume, false);
}

void AlarmEditor::tryLastSpeech() {
    m_ports.ttsPlayer.speak(m_group.ttsLastMessage, m_group.ttsVolume, false);
}

void AlarmEditor::save() {
    m_ports.store.saveEditedGroup(AlarmGroup(m_group));
}

void AlarmEditor::cancel() {
    m_ports.store.cancelEditing();
}

void AlarmEditor::cancelUnchanged() {
    if (m_group == m_entered) {
        cancel();
    }
}

void AlarmEditor::leave() {
    m_choice.reset();
    m_ports.soundPlayer.stop();
    m_ports.ttsPlayer.stop();
}

} // namespace kova
