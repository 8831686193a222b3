#include "PreopenedFiles.h"

#include <QFile>
#include <fcntl.h>
#include <unistd.h>

namespace kova {

PreopenedFiles::~PreopenedFiles() {
    for (const int descriptor : std::as_const(m_descriptors)) {
        close(descriptor);
    }
}

void PreopenedFiles::add(const QString &path) {
    constexpr int lowest = 16;
    const int opened = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    const int descriptor = fcntl(opened, F_DUPFD_CLOEXEC, lowest);
    close(opened);
    if (descriptor >= 0) {
        m_descriptors.insert(path, descriptor);
    }
}

} // namespace kova
