#pragma once

#include "AudioPlayer.h"
#include "PreopenedFiles.h"

#include <QProcessEnvironment>

namespace kova {

class InstalledResources;

/// Plays each sound in a player process of its own, so that a file that crashes its decoder costs only its
/// sound.
class PlayerLauncher : public AudioPlayers {
public:
    /// Locates the player program relative to this one.
    explicit PlayerLauncher(const InstalledResources &resources);

    Result<std::unique_ptr<AudioPlayer>> open(const QString &path, ErrorCallback onError) override;

private:
    const InstalledResources &m_resources;
    const QString m_folder; ///< with the player and its FFmpeg module
    const QProcessEnvironment m_environment;
    PreopenedFiles m_files;
};

} // namespace kova
