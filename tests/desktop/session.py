"""A private desktop session: home, buses, services, sound, speech and clock for the program under test."""

import json
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

import bus
import sound
import speech
from clock import Clock
from display import Display
from process import Process, wait_until

ROOT = Path(__file__).resolve().parents[2]
PROGRAM = Path(os.environ.get("KOVA_PROGRAM", ROOT / "build/release/kova-alarm"))
ASSISTED = {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}  # the program's environment for assist()
SERVICES = ("session-bus", "system-bus", "sound", "speech", "notifications", "logind")


class Session:
    def __init__(self):
        self.folder = Path(tempfile.mkdtemp(prefix="kova-"))
        self.runtime = self.folder / "run"
        self.runtime.mkdir(mode=0o700)
        self.config = self.folder / "config/kova-alarm"
        self.list_file = self.config / "kova_alarm_groups.json"
        self.env = {
            "PATH": "/usr/sbin:/usr/bin:/sbin:/bin", "LANG": "C.UTF-8", "HOME": str(self.folder),
            "TMPDIR": str(self.folder), "XDG_RUNTIME_DIR": str(self.runtime),
            "XDG_CONFIG_HOME": str(self.folder / "config"), "XDG_CACHE_HOME": str(self.folder / "cache"),
            "XDG_DATA_HOME": str(self.folder / "data"), "XDG_STATE_HOME": str(self.folder / "state"),
            "DBUS_SESSION_BUS_ADDRESS": f"unix:path={self.folder}/session-bus",
            "DBUS_SYSTEM_BUS_ADDRESS": f"unix:path={self.folder}/system-bus",
            "QT_QPA_PLATFORM": "offscreen",
            "ALSA_CONFIG_PATH": "/dev/null",  # a test must not find the machine's own sound card
        }
        self.clock = Clock(self.folder)
        self.services = {}
        self._others = []

    def start(self, *services):
        for service in services:
            self.services[service] = self._start(service)

    def start_all(self, *others, without=()):
        self.start(*(service for service in SERVICES if service not in without), *others)

    def _start(self, service):
        name, *options = service.split("+")
        if name.endswith("-bus"):
            return bus.Bus(name.removesuffix("-bus"), self.folder, self.env)
        if name == "display":
            display = Display(self.folder, self.env, (1280, 1024))
            self.env |= {"DISPLAY": display.name, "QT_QPA_PLATFORM": "xcb"}
            return display
        if name == "accessibility":
            return Process(["/usr/libexec/at-spi-bus-launcher", "--launch-immediately"], self.env)
        if name == "sound":
            return sound.SoundServer(self.runtime, self.env)
        if name == "speech":
            return speech.SpeechService(self.folder, self.runtime, self.env, *options)
        return bus.StandIn(name, self.env, *options)

    def __getitem__(self, service):
        return self.services[service]

    def record(self):
        recording = sound.Recording(self.folder, self.env)
        self._others.append(recording)
        return recording

    def wait_for_sound(self, timeout=10, skipped=0):
        """Records until something is heard, after that many seconds."""
        with self.record() as recording:
            wait_until(lambda: sound.sounding(recording.samples()[int(skipped * sound.RATE):]), timeout)

    def save(self, *groups):
        """Writes the saved list."""
        self.config.mkdir(parents=True, exist_ok=True)
        self.list_file.write_text(json.dumps(groups))

    def run(self, at="06:59:58.5", env=None, under=(), stderr=None):
        """Starts the program, under another command if given, waits until it is idle, and sets its clock to that
        time, since a start may take longer than the rest of a minute. A variable that is None is unset."""
        program = self.launch("03:00:00.5", env, under, stderr)
        program.wait_for("[Scheduler] Started", 20)
        wait_until(program.is_at_rest)
        self.clock.set(at)
        return program

    def launch(self, at, env=None, under=(), stderr=None):
        self.clock.set(at)
        alone = {"PATH": "/nonexistent"}  # it cannot spawn a speech service
        # File permissions must apply to root too.
        plain = ["/usr/bin/setpriv", "--bounding-set=-all", "--inh-caps=-all"] if os.getuid() == 0 else []
        every = self.env | self.clock.env | alone | (env or {})
        env = {name: value for name, value in every.items() if value is not None}
        program = Program([*under, *plain, PROGRAM], env, stderr=stderr)
        self._others.append(program)
        return program

    def wait_for_alarm(self, program, minute=0, name="…"):
        """Waits for the next alarm, which must fire in the first second of that minute after 7:00."""
        fired = program.wait_for(f"[Scheduler] FIRE: {name}")
        assert self.clock.text(fired.when).startswith(f"07:{minute:02d}:00")

    def assist(self, *words):
        """Runs a command of assistive.py. Needs a session bus, a display and accessibility."""
        script = Path(__file__).with_name("assistive.py")
        done = subprocess.run([sys.executable, "-W", "ignore", script, *words], env=self.env, capture_output=True,
                              text=True, timeout=30)
        assert done.returncode == 0, done.stderr
        return done.stdout.splitlines()

    def close(self):
        for process in [*self._others, *self.services.values()]:
            if process.is_running():
                process.signal(signal.SIGCONT)
                process.kill()
        # Spawned processes that left their group are recognised by their environment.
        mark = f"XDG_RUNTIME_DIR={self.runtime}".encode()
        for entry in Path("/proc").glob("[0-9]*/environ"):
            try:
                if mark in entry.read_bytes().split(b"\0"):
                    os.kill(int(entry.parent.name), signal.SIGKILL)
            except OSError:
                pass
        shutil.rmtree(self.folder, ignore_errors=True)


class Program(Process):
    def log_lines(self):
        """Returns its lines without the result of the notification service, which may come at any time."""
        return [text for text in self.texts() if not text.startswith("[Scheduler] Notification")]

    def is_at_rest(self):
        """Returns whether all its threads stay asleep for a while: during the start one may wait for another."""
        for _ in range(10):
            threads = Path(f"/proc/{self.pid}/task").glob("*/stat")
            try:
                if any(thread.read_text().rpartition(") ")[2][0] != "S" for thread in threads):
                    return False
            except OSError:  # a thread has exited
                return False
            time.sleep(0.005)
        return True

    def end(self, number=signal.SIGTERM):
        """Terminates it and checks that it exits normally."""
        self.signal(number)
        assert self.wait(5) == 0
