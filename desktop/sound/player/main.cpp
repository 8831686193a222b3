// Plays one sound for the program that has started it, to which it is bound by a socket; see Messages.h.
// Other people's files are read here, so that what they break is a sound and not the clock.

#include "Confinement.h"
#include "Player.h"

#include <csignal>
#include <sys/prctl.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace kova;

// Until the program has had enough, is gone or has been away for too long.
void obey(const ProgramLink &program, Player &player, ProgramLink::Deadline deadline) {
    while (const auto request = program.receive(deadline)) {
        const auto *const volume = std::get_if<message::Volume>(&*request);
        if (volume == nullptr) {
            return;
        }
        player.setVolume(volume->volume);
    }
}

} // namespace

int main() {
    std::signal(SIGPIPE, SIG_IGN);
    prctl(PR_SET_NAME, "kova-alarm-play"); // not the number of the descriptor that it was started from
    confine();
    const ProgramLink program;
    const auto request = program.receive();
    const auto *const play = request ? std::get_if<message::Play>(&*request) : nullptr;
    if (play == nullptr) {
        return 1;
    }
    Player player(program, *play);
    const auto deadline = std::chrono::steady_clock::now() + play->longest;
    std::thread([&player] { player.beat(); }).detach();
    std::thread([&player] {
        player.play();
        _exit(0);
    }).detach();
    obey(program, player, deadline);
    program.tell(message::Answer::Kind::Ended);
    // At once: the sound server, or the sound, may hold up the other threads.
    _exit(0);
}
