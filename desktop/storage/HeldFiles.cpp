#include "HeldFiles.h"

#include <QFile>
#include <fcntl.h>
#include <unistd.h>

namespace kova {

HeldFiles::~HeldFiles() {
    for (const int descriptor : std::as_const(m_descriptors)) {
        close(descriptor);
    }
}

void HeldFiles::hold(const QString &path) {
    constexpr int lowest = 16;
    const int opened = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    const int descriptor = fcntl(opened, F_DUPFD_CLOEXEC, lowest);
    close(opened);
    if (descriptor >= 0) {
        m_descriptors.insert(path, descriptor);
    }
}

} // namespace kova
