#include "TerminationSignals.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace kova {

namespace {

constexpr std::array terminations{SIGTERM, SIGINT, SIGHUP};

// A handler can reach nothing but a global: the pipe that carries the news to the event loop.
std::array<int, 2> thePipe{-1, -1};

extern "C" void tellEventLoop(int) {
    const int error = errno;
    const char news = 0;
    [[maybe_unused]] const ssize_t written = write(thePipe[1], &news, 1);
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
    if (pipe2(thePipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        return;
    }
    for (const int signal : terminations) {
        if (!isIgnored(signal)) { // as nohup asks for
            handle(signal, &tellEventLoop);
        }
    }
}

void TerminationSignals::listen(std::function<void()> action) {
    m_notifier = std::make_unique<QSocketNotifier>(thePipe[0], QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [action = std::move(action)] {
                         std::array<char, 16> news{};
                         while (read(thePipe[0], news.data(), news.size()) > 0) {
                         }
                         action();
                     });
}

} // namespace kova
