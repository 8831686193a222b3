#include "TerminationSignals.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace kova {

namespace {

constexpr std::array terminations{SIGTERM, SIGINT, SIGHUP};

// Self-pipe: a signal handler gets no context pointer, so the pipe that wakes the event loop is global.
std::array<int, 2> thePipe{-1, -1};

extern "C" void wakeEventLoop(int) {
    const int error = errno;
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = write(thePipe[1], &byte, 1);
    errno = error;
}

extern "C" void doNothing(int) {}

void handle(int signal, void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigaction(signal, &action, nullptr);
}

bool isIgnored(int signal) {
    struct sigaction action {};
    return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

} // namespace

TerminationSignals::TerminationSignals() {
    handle(SIGPIPE, &doNothing);
    handle(SIGXFSZ, &doNothing);
    if (pipe2(thePipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        return;
    }
    for (const int signal : terminations) {
        if (!isIgnored(signal)) {
            handle(signal, &wakeEventLoop);
        }
    }
}

void TerminationSignals::listen(std::function<void()> action) {
    m_notifier = std::make_unique<QSocketNotifier>(thePipe[0], QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [action = std::move(action)] {
                         std::array<char, 16> bytes{};
                         while (read(thePipe[0], bytes.data(), bytes.size()) > 0) {
                         }
                         action();
                     });
}

} // namespace kova
