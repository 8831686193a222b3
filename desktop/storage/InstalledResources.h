#pragma once

#include "PreopenedFiles.h"
#include "Resources.h"

namespace kova {

/// The files installed with the application; its sounds remain available after they are deleted.
class InstalledResources : public Resources {
public:
    InstalledResources();

    std::optional<QString> path(const QString &name, const QString &extension) const override;
    bool fileExists(const QString &path) const override;

    /// Returns -1 unless the path is one of the sounds or their folder.
    int descriptor(const QString &path) const { return m_sounds.descriptor(path); }

private:
    const QString m_folder;
    PreopenedFiles m_sounds; ///< and their folder
};

} // namespace kova
