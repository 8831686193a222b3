"""Services of the desktop may be missing, exit or hang, and the display may hang. Alarms ring in their second
nevertheless, and a service that is available again is used again."""

import re
import signal
import subprocess
import time

import pytest

from groups import group
from session import SERVICES, wait_until

RUN = group("7:00", label="x", alarmCount=20, volume=0.5, ttsEnabled=True, ttsMessage="wake up", ttsVolume=0,
            soundName="wakeup_pulse")
BUSES, OTHERS = SERVICES[:2], SERVICES[2:]


def rings(program, session, minute):
    """Waits for the alarm of that minute, which a blocked main thread would miss."""
    session.wait_for_alarm(program, minute)
    program.wait_for("[TTSPlayer] speaking…", 5)


def fail(session, services, how):
    for service in services:
        session[service].signal(signal.SIGKILL if how == "die" else signal.SIGSTOP)


@pytest.mark.parametrize("how, services", [
    ("are missing", SERVICES), ("are missing", OTHERS), ("die", BUSES), ("die", OTHERS), ("hang", ["session-bus"]),
    ("hang", ["system-bus"]), ("hang", ["sound", "speech", "logind"]), ("hang", ["notifications"]),
    ("hang from the start", ["sound", "speech", "logind"]), ("hang from the start", ["notifications"])])
def test_failing_services_delay_no_alarm(session, how, services):
    session.start_all(without=services if how == "are missing" else [])
    if how == "hang from the start":
        fail(session, services, how)
    session.save(RUN)
    program = session.run("06:59:58.2")
    if how == "hang":
        fail(session, services, how)
    for minute in range(3):
        rings(program, session, minute)
        if not {"notifications", "session-bus"} & set(services):
            assert session["notifications"].wait_for_call("Notify")["body"] == f"x — 7:{minute:02d}"
        if how == "die" and minute == 0:
            fail(session, services, how)
        if "sound" not in services:
            session.wait_for_sound(skipped=0.5)
        session.clock.set_before(minute + 1)
    program.end()
    if how == "are missing":
        assert int(program.log_lines()[0].removeprefix("[PowerManager] Failed to create assertion: ")) != 0
        assert "[PowerManager] Sleep prevention OFF" not in program.texts()


@pytest.mark.parametrize("bus", ["session-bus", "system-bus"])
def test_a_late_bus_is_used(session, bus):
    session.start_all("display")
    session.save(RUN)
    session[bus].signal(signal.SIGSTOP)
    program = session.launch("06:59:54")
    time.sleep(2)
    session[bus].signal(signal.SIGCONT)
    program.wait_for("[Scheduler] Started")
    rings(program, session, 0)
    session["notifications"].wait_for_call("Notify", body="x — 7:00")
    session["logind"].wait_for_call("Inhibit", why="KOVA Alarm active — preventing sleep")


@pytest.mark.parametrize("how", ["die", "hang"])
@pytest.mark.parametrize("service", ["session-bus", "notifications+markup"])
def test_notifications_resume(session, service, how):
    session.start("session-bus", "notifications+markup")
    session.save(RUN)
    program = session.run("06:59:58.2")
    fail(session, [service], how)
    rings(program, session, 0)
    if how == "hang":
        session[service].signal(signal.SIGCONT)
    else:
        session["notifications+markup"].kill()
        session.start(*(["session-bus"] if service == "session-bus" else []), "notifications+markup")
    session.clock.set("07:00:58.2")
    rings(program, session, 1)
    session["notifications+markup"].wait_for_call("Notify", body="x — 7:01", replaces=0)


def test_portals_are_used_in_a_sandbox(session):
    session.start("session-bus", "notifications", "portal")
    session.save(group("7:00", label="x <b>&", alarmCount=2))
    shared = session.runtime / "app/jp.kova.Alarm"  # shared by all sandboxes of the application
    shared.mkdir(parents=True)
    program = session.run("06:59:58.5", {"container": "flatpak", "FLATPAK_ID": shared.name})
    session["portal"].wait_for_call("Inhibit", flags=4)
    shown = [session["portal"].wait_for_call("AddNotification", title="KOVA", body="x <b>& — 7:00")]
    assert list(shared.glob("kova-alarm-*"))
    session.clock.set("07:00:59.2")
    shown.append(session["portal"].wait_for_call("AddNotification", body="x <b>& — 7:01"))
    assert shown[0]["id"] != shown[1]["id"]
    program.end()
    assert "[Scheduler] Notifications granted" in program.texts()
    session["portal"].wait_for_call("Close", why="KOVA Alarm active — preventing sleep")
    assert not session["notifications"].calls("Notify")


@pytest.mark.parametrize("fail", [lambda display: display.signal(signal.SIGSTOP), lambda display: display.grab()],
                         ids=["hangs", "is grabbed"])
def test_an_alarm_rings_without_its_display(session, fail):
    session.start_all("display")
    session.save(group(ttsLastEnabled=True, ttsLastMessage="wake up"))
    program = session.run("06:58:30")
    display = session["display"]
    screen = display.watch(0, 0, 1280, 1024)
    wait_until(lambda: any(map(any, screen())))
    display.wait_until_still(1)
    fail(display)
    session.clock.set("06:59:58.5")
    session.wait_for_alarm(program)
    session["notifications"].wait_for_call("Notify")
    sounding = ["pactl", "list", "short", "sink-inputs"]
    both = {"float32le 2ch 44100Hz", "s16le 1ch 22050Hz"}  # sound and speech
    wait_until(lambda: both <= set(re.split("[\t\n]", subprocess.check_output(sounding, env=session.env, text=True))))
