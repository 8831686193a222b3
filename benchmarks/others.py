"""Measures alarm clocks of Debian that are installed, as figures.py measures this application."""

import shutil
import time

import Xlib.display
import Xlib.error
import Xlib.X

from process import Process
from session import Session, wait_until
from witnesses import Witnesses

# The settings of an alarm at 7:00 on the clock's Monday, as GLib's keyfile.
ALARMS = {
    "gnome-clocks": """
[org/gnome/clocks]
alarms=[{'name': <'A'>, 'id': <'a'>, 'active': <true>, 'hour': <7>, 'minute': <0>, 'days': <[1, 2, 3, 4, 5, 6, 7]>,\
 'snooze_minutes': <10>, 'ring_minutes': <5>}]
""",
    "alarm-clock-applet": """
[io/github/alarm-clock-applet]
alarms=[uint32 1]
gconf-migrated=true
[io/github/alarm-clock-applet/alarm-1]
type='clock'
time=int64 25200
timestamp=int64 1767564000
active=true
notify-type='sound'
sound-file='file:///usr/share/sounds/freedesktop/stereo/alarm-clock-elapsed.oga'
""",
}


def wait_for_window(display):
    """Waits until a window larger than an icon is shown."""
    def is_shown(window):
        try:
            geometry = window.get_geometry()
            is_large = geometry.width > 200 and geometry.height > 150
            return is_large and window.get_attributes().map_state == Xlib.X.IsViewable
        except (Xlib.error.BadDrawable, Xlib.error.BadWindow):  # destroyed meanwhile
            return False

    wait_until(lambda: any(map(is_shown, display.screen().root.query_tree().children)), 20, 0.001)


def environment(session):
    return session.env | {"QT_QPA_PLATFORM": "xcb", "GSETTINGS_BACKEND": "keyfile", "XDG_DATA_DIRS": "/usr/share"}


def start_and_idle(row, name, memory, activity, times):
    session, to_window = Session(), []
    try:
        session.start_all(without=["speech"])
        session.start("display")
        display = Xlib.display.Display(session.env["DISPLAY"])
        for turn in range(times + 1):
            program = Process([shutil.which(name)], environment(session))
            wait_for_window(display)
            if turn > 0:
                to_window.append((time.monotonic() - program.started) * 1000)
            if turn < times:
                program.kill()
        time.sleep(10)
        wake_ups, _ = activity(program.pid)
        row(f"{name}: exec to window", to_window)
        row(f"{name}: private memory, idle", [memory(program.pid, "Private_Dirty")], "MB")
        row(f"{name}: wake-ups, idle", [wake_ups], "per second")
    finally:
        session.close()


def minute_to_sound(row, name, times):
    session, values = Session(), []
    settings = session.config.parent / "glib-2.0/settings/keyfile"
    settings.parent.mkdir(parents=True)
    try:
        session.start_all(without=["speech"])
        session.start("display")
        for _ in range(times):
            session.clock.set("06:59:52")
            settings.write_text(ALARMS[name])
            witnesses = Witnesses(session)
            program = Process([shutil.which(name)], environment(session) | session.clock.env)
            boundary = time.monotonic() + session.clock.seconds_to("07:00:00")
            witnesses.listen(boundary + 3 - time.monotonic())
            values.append((witnesses.first_sample(boundary) - boundary) * 1000)
            program.kill()
            witnesses.close()
    finally:
        session.close()
    row(f"{name}: minute boundary to the first audible sample", values)


def measure(row, memory, activity, times):
    for name in filter(shutil.which, ALARMS):
        start_and_idle(row, name, memory, activity, times)
        minute_to_sound(row, name, min(times, 5))
