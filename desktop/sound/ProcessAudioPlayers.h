#pragma once

#include "AudioPlayer.h"
#include "HeldFiles.h"

namespace kova {

class InstalledResources;

/// Players in processes of their own, so that a file that breaks its decoder costs one sound and not the
/// clock.
class ProcessAudioPlayers : public AudioPlayers {
public:
    /// The player's program is found from where ours lies.
    explicit ProcessAudioPlayers(const InstalledResources &resources);

    Result<std::unique_ptr<AudioPlayer>> open(const QString &path, Refusal refused) override;

private:
    const InstalledResources &m_resources;
    const QString m_folder; ///< of the player and its module
    HeldFiles m_files;
};

} // namespace kova
