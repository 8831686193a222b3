#include "prepareProcess.h"

#include "standardStreams.h"

#include <QByteArray>

#include <malloc.h>

namespace kova {

void prepareProcess() {
    prepareStandardStreams();
    mallopt(M_ARENA_MAX, 1);                 // a heap for each thread would keep what only the start needs
    qputenv("QT_QUICK_BACKEND", "software"); // a clock in the background must not hold a GPU context
    // Else a desktop in another language lends our texts its own forms of the characters.
    qputenv("FC_LANG", "ja");
}

} // namespace kova
