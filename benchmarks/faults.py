"""How long the main thread stays away from its event loop while what surrounds the program fails. Each fault is
lived through by a program with a window, whose alarm rings in three minutes, one after the other."""

import os
import re
import signal
import socket
import subprocess
import threading
import time

import sound
from groups import bookmark, group
from session import ROOT, Session, wait_until
from test_custom_sound import chirp, wav
from test_player import players
from test_streams import stopped_terminal, unread_pipe

POLL = re.compile(r"^ *([0-9.]+) poll\(.*\], ([0-9]+), .*<([0-9.]+)>$")


class Watched:
    """A session with a program whose main thread's waits are traced."""

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
        time.sleep(2)  # until the window stands
        self._ready = len(self._trace.read_text())

    def rings(self, during=lambda: None):
        for minute in range(3):
            fired = self.program.wait_for(f"[Scheduler] FIRE: x alarm #{minute + 1}")
            assert self.session.clock.text(fired.when).startswith(f"07:0{minute}:00")
            during()
            time.sleep(1)
            self.session.clock.set(f"07:0{minute}:59.2")

    def longest_turn(self):
        """In ms, from one wait of the event loop to the next. A wait for a single descriptor is that of a call for
        its answer, and belongs to the turn."""
        calls = list(filter(None, map(POLL.match, self._trace.read_text()[self._ready:].splitlines())))
        longest, turn, waited = 0.0, 0.0, float(calls[0][1])
        for line in calls:
            since_last, descriptors, lasts = float(line[1]), int(line[2]), float(line[3])
            turn += since_last - waited
            waited = 0.0
            if descriptors > 1:
                longest, turn, waited = max(longest, turn), 0.0, lasts
        return longest * 1000


def nothing(watched):
    watched.run()
    watched.rings()


def unread_errors(watched, open_stream=unread_pipe):
    reading, writing = open_stream()
    watched.session["speech"].kill()  # each alarm complains
    watched.run(stderr=writing)
    watched.rings()
    os.close(reading)
    os.close(writing)


def stopped_errors(watched):
    unread_errors(watched, stopped_terminal)


def sleeping_file(watched):
    library, file = watched.session.folder / "stall.so", watched.session.folder / "sleepy.wav"
    subprocess.run(["gcc", "-shared", "-fPIC", "-o", library, ROOT / "tests/desktop/stall.c"], check=True)
    sound.write(file, chirp())
    file.with_name("sleepy.wav.statx").touch()
    preload = f"{library}:{watched.session.clock.env['LD_PRELOAD']}"
    watched.run({"LD_PRELOAD": preload}, customSoundPath=bookmark(file), customSoundName=file.name)
    watched.rings()


def broken_file(watched):
    file = watched.session.folder / "broken.wav"
    file.write_bytes(wav(0))
    watched.run(customSoundPath=bookmark(file), customSoundName=file.name)
    watched.rings()


def player(how):
    def strike(program):
        wait_until(lambda: players(program))
        os.kill(players(program)[-1], how)

    def fault(watched):
        watched.run()
        watched.rings(lambda: strike(watched.program))

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


def unwritable_folder(watched):
    watched.run(repeatDays=[])
    watched.session.config.chmod(0o500)  # the last alarm of the run turns the group off and saves
    watched.rings()


FAULTS = {
    "no fault": nothing,
    "unread standard error": unread_errors,
    "a stopped terminal": stopped_errors,
    "a sound on a disk that sleeps": sleeping_file,
    "a broken sound file": broken_file,
    "a player that hangs": player(signal.SIGSTOP),
    "a player that crashes": player(signal.SIGSEGV),
    "a speech service that floods": flooding_speech,
    "a speech service that hangs": hanging("speech"),
    "a sound server that hangs": hanging("sound"),
    "a session bus that hangs": hanging("session-bus"),
    "inhibitors that restart": restarting_inhibitors,
    "a folder that can't be written": unwritable_folder,
}


def measure(row):
    for name, fault in FAULTS.items():
        watched = Watched()
        try:
            fault(watched)
            row(f"the main thread's longest turn, {name}", [watched.longest_turn()])
        finally:
            watched.session.close()
