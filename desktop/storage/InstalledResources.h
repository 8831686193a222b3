#pragma once

#include "HeldFiles.h"
#include "Resources.h"

namespace kova {

/// The files that lie with the running program, and its sounds even when they lie there no more.
class InstalledResources : public Resources {
public:
    InstalledResources();

    std::optional<QString> path(const QString &name, const QString &extension) const override;
    bool fileExists(const QString &path) const override;

    /// -1 for what is none of the sounds.
    int descriptor(const QString &path) const { return m_sounds.descriptor(path); }

private:
    const QString m_folder;
    HeldFiles m_sounds; ///< and their folder
};

} // namespace kova
