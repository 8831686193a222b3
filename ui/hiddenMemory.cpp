#include "hiddenMemory.h"

#include <QByteArray>
#include <QFile>

#include <malloc.h>
#include <sys/mman.h>

namespace kova {

namespace {

// Only code that was read from a file that is still there: compiled scripts lie in memory files, and nothing
// would bring them back.
void releaseCode(const QByteArray &mapping) {
    const QList<QByteArray> fields = mapping.simplified().split(' ');
    if (fields.size() != 6 || fields.at(1) != "r-xp" || !fields.at(5).startsWith('/')) {
        return;
    }
    const QList<QByteArray> range = fields.at(0).split('-');
    const quintptr begin = range.constFirst().toULongLong(nullptr, 16);
    const quintptr end = range.constLast().toULongLong(nullptr, 16);
    ::madvise(reinterpret_cast<void *>(begin), end - begin, MADV_DONTNEED);
}

} // namespace

void releaseHiddenMemory() {
    ::malloc_trim(0);
    QFile maps(QStringLiteral("/proc/self/maps"));
    if (maps.open(QIODevice::ReadOnly)) {
        for (const QByteArray &mapping : maps.readAll().split('\n')) {
            releaseCode(mapping);
        }
    }
}

} // namespace kova
