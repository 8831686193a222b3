"""Measures the longest event-loop iteration of the main thread while services, files, streams or the player fail.
For each fault an application with a window rings in three consecutive minutes."""

import os
import re
import signal
import socket
import threading
import time

import sound
from groups import bookmark, group
from session import Session
from test_custom_sound import wav
from test_player import sounding_player
from test_slow_disk import stalling
from test_streams import stopped_terminal, unread_pipe

POLL = re.compile(r"^ *([0-9.]+) poll\(.*\], ([0-9]+), .*<([0-9.]+)>$")


class Watched:
    """A session whose application's main thread is traced while it waits."""

    def __init__(self):
        self.session = Session()
        self.session.start_all()
        self.session.start("display")

    def run(self, env=None, stderr=None, **fields):
        self.session.save(group(label="x", alarmCount=3, ttsEnabled=True, ttsMessage="wake up") | fields)
        trace = self.session.folder / "trace"
        strace = ["/usr/bin/strace", "-D", "-ff", "-qq", "-r", "-T", "--seccomp-bpf", "-e", "trace=poll", "-o", trace]
        self.program = self.session.run("06:59:55", env, strace, stderr)
        self._trace = trace.with_suffix(f".{self.program.pid}")
        time.sleep(2)  # until the window is shown
        self._ready = len(self._trace.read_text())

    def rings(self, during=lambda: None):
        for minute in range(3):
            self.session.wait_for_alarm(self.program, minute)
            during()
            time.sleep(1)
            self.session.clock.set(f"07:0{minute}:59.2")

    def longest_iteration(self):
        """Returns the longest time in ms between two waits of the event loop. A wait for a single descriptor is a
        blocking call that waits for its reply, so it counts as part of the iteration."""
        calls = list(filter(None, map(POLL.match, self._trace.read_text()[self._ready:].splitlines())))
        longest, iteration, waited = 0.0, 0.0, float(calls[0][1])
        for line in calls:
            since_last, descriptors, lasts = float(line[1]), int(line[2]), float(line[3])
            iteration += since_last - waited
            waited = 0.0
            if descriptors > 1:
                longest, iteration, waited = max(longest, iteration), 0.0, lasts
        return longest * 1000


def nothing(watched):
    watched.run()
    watched.rings()


def unread_errors(watched, open_stream=unread_pipe):
    reading, writing = open_stream()
    watched.session["speech"].kill()  # every alarm then logs a warning
    watched.run(stderr=writing)
    watched.rings()
    os.close(reading)
    os.close(writing)


def stopped_errors(watched):
    unread_errors(watched, stopped_terminal)


def sleeping_file(watched):
    file = watched.session.folder / "sleepy.wav"
    sound.write(file, sound.chirp())
    file.with_name("sleepy.wav.statx").touch()
    watched.run(stalling(watched.session), customSoundPath=bookmark(file), customSoundName=file.name)
    watched.rings()


def broken_file(watched):
    file = watched.session.folder / "broken.wav"
    file.write_bytes(wav(0))
    watched.run(customSoundPath=bookmark(file), customSoundName=file.name)
    watched.rings()


def player(how):
    def fault(watched):
        watched.run()
        watched.rings(lambda: os.kill(sounding_player(watched.session, watched.program), how))

    return fault


def flooding_speech(watched):
    watched.session["speech"].kill()
    path = watched.session.runtime / "speech-dispatcher/speechd.sock"
    path.unlink()
    with socket.socket(socket.AF_UNIX) as service:
        service.bind(str(path))
        service.listen()

        def flood():
            try:
                while True:
                    client = service.accept()[0]
                    threading.Thread(target=pour, args=(client,), daemon=True).start()
            except OSError:
                pass

        def pour(client):
            try:
                while True:
                    client.sendall(b"2" * (1 << 20))
            except OSError:
                pass

        threading.Thread(target=flood, daemon=True).start()
        watched.run()
        watched.rings()


def restarting_inhibitors(watched):
    def restart():
        watched.session["logind"].kill()
        watched.session.start("logind")

    watched.run()
    watched.rings(restart)


def hanging(service):
    def fault(watched):
        watched.run()
        watched.session[service].signal(signal.SIGSTOP)
        watched.rings()

    return fault


def failing_saves(watched):
    watched.run()
    config = watched.session.config
    config.rename(config.with_name("moved"))
    config.touch()  # not a folder, so that every save fails
    for _ in range(2):
        watched.session["display"].click(395, 110)  # the switch of the card: off and on again
        time.sleep(0.3)
    watched.rings()


FAULTS = {
    "no fault": nothing,
    "unread standard error": unread_errors,
    "a stopped terminal": stopped_errors,
    "a sound file on a sleeping disk": sleeping_file,
    "a damaged sound file": broken_file,
    "a hung player": player(signal.SIGSTOP),
    "a crashing player": player(signal.SIGSEGV),
    "a flooding speech service": flooding_speech,
    "a hung speech service": hanging("speech"),
    "a hung sound server": hanging("sound"),
    "a hung session bus": hanging("session-bus"),
    "restarting inhibitors": restarting_inhibitors,
    "failing saves": failing_saves,
}


def measure(row):
    for name, fault in FAULTS.items():
        watched = Watched()
        try:
            fault(watched)
            row(f"longest event-loop iteration, {name}", [watched.longest_iteration()])
        finally:
            watched.session.close()
