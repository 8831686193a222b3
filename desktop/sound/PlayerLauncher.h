#pragma once

#include "AudioPlayer.h"

#include <QProcessEnvironment>

namespace kova {

class InstalledResources;

/// Plays each sound in a player process of its own.
class PlayerLauncher : public AudioPlayers {
public:
    /// The resources must outlive it.
    explicit PlayerLauncher(const InstalledResources &resources);

    Result<std::unique_ptr<AudioPlayer>> play(const AudioRequest &request, ErrorCallback onError) override;

private:
    const InstalledResources &m_resources;
    const QProcessEnvironment m_environment;
};

} // namespace kova
