// Plays one sound for the application, which starts this program with one end of a socket pair; see
// PlayerProtocol.h. Files of unknown origin are decoded here, so that one that crashes or hangs its decoder
// costs only its sound.

#include "ApplicationLink.h"
#include "Confinement.h"
#include "Playback.h"

#include <csignal>
#include <sys/prctl.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace kova;
using Kind = protocol::Request::Kind;

// Ends the process without joining its other threads, which the sound server or the decoder may block.
void exitEarly() {
    protocol::send(protocol::Event::Kind::Ended);
    _exit(0);
}

} // namespace

int main() {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);         // a write beyond the limit then fails instead
    prctl(PR_SET_NAME, "kova-alarm-play"); // instead of the number of the descriptor it was started from
    confine();
    auto request = protocol::receive();
    if (!request || request->kind != Kind::Play) {
        return 1;
    }
    const std::chrono::milliseconds maxDuration(request->maxDuration);
    std::thread([maxDuration] {
        std::this_thread::sleep_for(maxDuration);
        exitEarly();
    }).detach();
    Playback playback(*request);
    std::thread([&playback] { playback.sendHeartbeats(); }).detach();
    std::thread([&playback] {
        playback.play();
        _exit(0);
    }).detach();
    while ((request = protocol::receive()) && request->kind == Kind::SetVolume) {
        playback.setVolume(request->volume);
    }
    exitEarly(); // after a stop, or the end of the application
}
