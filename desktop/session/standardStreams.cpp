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
    standardError.print(qFormatLogMessage(type, context, text));
}

bool isOpen(int descriptor) {
    return fcntl(descriptor, F_GETFD) != -1 || errno != EBADF;
}

// Reopens the pipe or terminal: the mode of the inherited open file is shared with other processes.
void makeNonBlocking(int descriptor) {
    struct stat status {};
    if (fstat(descriptor, &status) != 0 || (!S_ISFIFO(status.st_mode) && !isatty(descriptor))) {
        return;
    }
    const std::string path = "/proc/self/fd/" + std::to_string(descriptor);
    const int reopened = open(path.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (reopened >= 0) {
        dup2(reopened, descriptor);
        close(reopened);
    }
}

} // namespace

void prepareStandardStreams() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (!isOpen(descriptor)) {
            [[maybe_unused]] const int lowest = open("/dev/null", O_RDWR); // becomes the descriptor
        }
    }
    makeNonBlocking(STDOUT_FILENO);
    makeNonBlocking(STDERR_FILENO);
    qInstallMessageHandler(&message);
}

} // namespace kova
