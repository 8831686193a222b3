#pragma once

#include "Resources.h"

#include <QHash>

namespace kova {

/// The files that are installed with the application. The sounds and the player stay open while it runs, so
/// that an upgrade or a removal of the package does not silence alarms.
class InstalledResources : public Resources {
public:
    InstalledResources();
    ~InstalledResources() override;
    Q_DISABLE_COPY_MOVE(InstalledResources)

    std::optional<QString> path(const QString &name) const override;

    /// These return open descriptors, above the numbers that a child process receives, or -1: of the sound
    /// with a path, of the player program and of its FFmpeg module.
    int sound(const QString &path) const { return m_sounds.value(path, -1); }
    int player() const { return m_player; }
    int ffmpegModule() const { return m_ffmpegModule; }

private:
    const QString m_folder;
    QHash<QString, int> m_sounds; ///< by path
    int m_player = -1;
    int m_ffmpegModule = -1;
};

} // namespace kova
