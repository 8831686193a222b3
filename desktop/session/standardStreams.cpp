#include "standardStreams.h"

#include "LineWriter.h"

#include <QtGlobal>

#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace kova {

namespace {

void message(QtMsgType type, const QMessageLogContext &context, const QString &text) {
    static LineWriter standardError(STDERR_FILENO);
    standardError.write(qFormatLogMessage(type, context, text));
}

bool isOpen(int descriptor) {
    return fcntl(descriptor, F_GETFD) != -1 || errno != EBADF;
}

// Opened anew, a pipe or a terminal has a mode of its own: the one that is shared with other programs stays
// as it is for them.
void neverWait(int descriptor) {
    struct stat status {};
    if (fstat(descriptor, &status) != 0 || (!S_ISFIFO(status.st_mode) && !isatty(descriptor))) {
        return;
    }
    const std::string path = "/proc/self/fd/" + std::to_string(descriptor);
    const int anew = open(path.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (anew >= 0) {
        dup2(anew, descriptor);
        close(anew);
    }
}

} // namespace

void prepareStandardStreams() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (!isOpen(descriptor)) {
            [[maybe_unused]] const int lowest = open("/dev/null", O_RDWR); // this descriptor
        }
    }
    neverWait(STDOUT_FILENO);
    neverWait(STDERR_FILENO);
    qInstallMessageHandler(&message);
}

} // namespace kova
