"""Measures alarm clocks of Debian that are installed, as figures.py measures this application."""

import shutil
import time

import Xlib.display
import Xlib.X

from process import Process
from session import Session

PROGRAMS = ("gnome-clocks", "alarm-clock-applet")


def has_window(display):
    """Returns whether a window larger than an icon is shown."""
    def is_shown(window):
        geometry = window.get_geometry()
        return window.get_attributes().map_state == Xlib.X.IsViewable and geometry.width > 200 and geometry.height > 150

    return any(map(is_shown, display.screen().root.query_tree().children))


def measure(row, memory, activity, times):
    for name in filter(shutil.which, PROGRAMS):
        session, to_window = Session(), []
        try:
            session.start_all(without=["speech"])
            session.start("display")
            env = session.env | {"QT_QPA_PLATFORM": "xcb", "GSETTINGS_BACKEND": "memory", "XDG_DATA_DIRS": "/usr/share"}
            display = Xlib.display.Display(session.env["DISPLAY"])
            for turn in range(times + 1):
                program = Process([shutil.which(name)], env)
                deadline = time.monotonic() + 20
                while not has_window(display) and time.monotonic() < deadline:
                    time.sleep(0.001)
                if turn > 0:
                    to_window.append((time.monotonic() - program.started) * 1000)
                if turn < times:
                    program.kill()
            time.sleep(10)
            before = activity(program.pid)
            time.sleep(30)
            wake_ups = (activity(program.pid)[0] - before[0]) / 30
            row(f"{name}: exec to window", to_window)
            row(f"{name}: private memory, idle, window shown", [memory(program.pid, "Private_Dirty")], "MB")
            row(f"{name}: wake-ups, idle, window shown", [wake_ups], "per second")
            program.kill()
        finally:
            session.close()
