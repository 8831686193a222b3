#pragma once

#include <QHash>
#include <QString>

namespace kova {

/// Installed files that stay open while the application runs, so that an upgrade or a removal of the package
/// does not silence alarms.
class PreopenedFiles {
public:
    PreopenedFiles() = default;
    ~PreopenedFiles();
    Q_DISABLE_COPY_MOVE(PreopenedFiles)

    /// Opens a file or a folder; one that cannot be opened is ignored.
    void add(const QString &path);

    bool contains(const QString &path) const { return m_descriptors.contains(path); }

    /// Returns -1 if the file is not open. Descriptors are above the numbers that a child process receives.
    int descriptor(const QString &path) const { return m_descriptors.value(path, -1); }

private:
    QHash<QString, int> m_descriptors;
};

} // namespace kova
