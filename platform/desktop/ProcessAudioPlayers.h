#pragma once

#include "AudioPlayer.h"

#include <QByteArray>

namespace kova {

/// Players in processes of their own, so that a file that breaks its decoder costs one sound and not the
/// clock.
class ProcessAudioPlayers : public AudioPlayers {
public:
    /// The player's program is found from where ours lies.
    ProcessAudioPlayers();
    explicit ProcessAudioPlayers(QByteArray program) : m_program(std::move(program)) {}

    Result<std::unique_ptr<AudioPlayer>> open(const QString &path, Refusal refused) override;

private:
    const QByteArray m_program;
};

} // namespace kova
