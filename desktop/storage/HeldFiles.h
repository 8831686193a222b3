#pragma once

#include <QHash>
#include <QString>

namespace kova {

/// Files that came with the program, kept open while it runs: a package that is replaced or removed meanwhile
/// takes them from their folders, but not from the alarms.
class HeldFiles {
public:
    HeldFiles() = default;
    ~HeldFiles();
    Q_DISABLE_COPY_MOVE(HeldFiles)

    /// A file or a folder; one that can't be opened is not held.
    void hold(const QString &path);

    bool contains(const QString &path) const { return m_descriptors.contains(path); }

    /// -1 when it is not held. Above the numbers that a child's descriptors get.
    int descriptor(const QString &path) const { return m_descriptors.value(path, -1); }

private:
    QHash<QString, int> m_descriptors;
};

} // namespace kova
