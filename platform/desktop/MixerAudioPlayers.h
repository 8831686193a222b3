#pragma once

#include "AudioPlayer.h"
#include "MixerThread.h"

#include <QHash>
#include <QObject>

namespace kova {

/// Players on the mixer. One sound is heard at a time: the one started last.
class MixerAudioPlayers : public AudioPlayers {
public:
    /// Loads the mixer a little after the event loop has started.
    MixerAudioPlayers();

    Result<std::unique_ptr<AudioPlayer>> open(const QString &path, Refusal refused) override;

    /// Goes silent for good; false when the sound server holds it up.
    bool close(std::chrono::milliseconds timeout) { return m_thread.close(timeout); }

private:
    class Player;

    void refuse(quint64 sound, const QString &reason);

    quint64 m_lastSound = 0;
    QHash<quint64, Refusal> m_refusals; ///< of the sounds that were started, by their ids
    QObject m_mainThread;               ///< what the mixer tells arrives here
    MixerThread m_thread;
};

} // namespace kova
