#pragma once

#include "Resources.h"

namespace kova {

/// The files that lie with the running program.
class InstalledResources : public Resources {
public:
    InstalledResources();

    std::optional<QString> path(const QString &name, const QString &extension) const override;
    bool fileExists(const QString &path) const override;

private:
    const QString m_folder;
};

} // namespace kova
