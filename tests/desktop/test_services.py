"""Services of the desktop may be missing, exit or hang. Alarms ring in their second nevertheless, and a service
that is available again is used again."""

import signal
import subprocess
import time

import numpy
import pytest

import sound
import speech
from groups import group
from session import SERVICES, wait_until

RUN = group("7:00", label="x", alarmCount=20, volume=0.5, ttsEnabled=True, ttsMessage="wake up",
            soundName="wakeup_pulse")


def rings(program, session, minute):
    """Waits for the alarm of that minute, which a blocked main thread would miss."""
    fired = program.wait_for(f"[Scheduler] FIRE: x alarm #{minute + 1}", 5)
    assert session.clock.text(fired.when).startswith(f"07:{minute:02d}:00")
    program.wait_for("[TTSPlayer] speaking…", 5)


def fail(session, service, how):
    if how == "dies":
        session[service].kill()
    elif how == "hangs":
        session[service].signal(signal.SIGSTOP)


@pytest.mark.parametrize("service, how", [
    (service, how) for service in SERVICES for how in ("is missing", "dies", "hangs", "hangs from the start")
    if not (service.endswith("-bus") and how == "hangs from the start")])
def test_a_failing_service_delays_no_alarm(session, service, how):
    notifies = service not in ("notifications", "session-bus")
    clients = {"session-bus": ["notifications"], "system-bus": ["logind"]}.get(service, [])
    session.start_all(without=[service, *clients] if how == "is missing" else [])
    if how == "hangs from the start":
        session[service].signal(signal.SIGSTOP)
    session.save(RUN)
    program = session.run("06:59:58.2")
    if how in ("dies", "hangs"):
        fail(session, service, how)
    for minute in range(3):
        rings(program, session, minute)
        if notifies:
            assert session["notifications"].wait_for_call("Notify")["body"] == f"x — 7:{minute:02d}"
        session.clock.set(f"07:{minute:02d}:59.2")
    program.end()


@pytest.mark.parametrize("bus", ["session-bus", "system-bus"])
def test_a_late_bus_is_used(session, bus):
    session.start_all()
    session.start("display")
    session.save(RUN)
    session[bus].signal(signal.SIGSTOP)
    program = session.launch("06:59:54")
    time.sleep(2)
    session[bus].signal(signal.SIGCONT)
    program.wait_for("[Scheduler] Started")
    rings(program, session, 0)
    session["notifications"].wait_for_call("Notify", body="x — 7:00")
    session["logind"].wait_for_call("Inhibit", why="KOVA Alarm active — preventing sleep")


@pytest.mark.parametrize("how", ["dies", "hangs"])
@pytest.mark.parametrize("service", ["session-bus", "notifications"])
def test_notifications_resume(session, service, how):
    session.start("session-bus", "notifications+markup")
    session.save(RUN | {"label": "x"})
    program = session.run("06:59:58.2")
    broken = service if service in session.services else "notifications+markup"
    fail(session, broken, how)
    rings(program, session, 0)
    if how == "hangs":
        session[broken].signal(signal.SIGCONT)
    else:
        session["notifications+markup"].kill()
        session.start(*(["session-bus"] if service == "session-bus" else []), "notifications+markup")
    session.clock.set("07:00:58.2")
    rings(program, session, 1)
    call = session["notifications+markup"].wait_for_call("Notify", body="x — 7:01")
    assert call["replaces"] == 0


@pytest.mark.parametrize("service, how", [("sound", "dies"), ("sound", "hangs"), ("speech", "is spawned")])
def test_sound_and_speech_come_back(session, service, how):
    spawned = how == "is spawned"
    session.start("sound", *([] if spawned else ["speech"]))
    session.save(RUN | ({"volume": 0} if service == "speech" else {"ttsEnabled": False}))
    program = session.run("06:59:58.2", {"PATH": "/usr/bin"} if spawned else None)
    if not spawned:
        fail(session, service, how)
        program.wait_for("[Scheduler] FIRE…")
        if how == "hangs":
            session[service].signal(signal.SIGCONT)
        else:
            session.start(service)
        session.clock.set("07:00:57.5")
    with session.record() as recording:
        program.wait_for("[Scheduler] FIRE…")
        wait_until(lambda: sound.sounding(recording.samples()[-sound.RATE:]), 15, 0.1)


@pytest.mark.parametrize("how", ["dies", "hangs"])
def test_speech_resumes_in_the_same_alarm(session, how):
    session.start("sound", "speech")
    session.save(RUN | {"volume": 0})
    program = session.run("06:59:56.2")
    if how == "hangs":
        fail(session, "speech", how)
    program.wait_for("[TTSPlayer] speaking…")
    if how == "dies":
        with session.record() as recording:
            wait_until(lambda: sound.sounding(recording.samples()))
    time.sleep(0.5)
    fail(session, "speech", "dies")
    session.start("speech")
    with session.record() as recording:
        wait_until(lambda: sound.sounding(recording.samples()[sound.RATE:]))


@pytest.mark.parametrize("options, text", [("", ""), ("+generic", "会議です"), ("+generic+failing", "会議です"),
                                           ("+generic+configured", "")])
def test_japanese_is_spoken_by_another_module_than_espeak(session, options, text, record_property):
    """`text` is what the generic module receives. If its command fails, or eSpeak is configured for Japanese, eSpeak
    speaks."""
    session.start("sound", "speech" + options)
    session.save(RUN | {"volume": 0, "ttsMessage": "会議です"})
    program = session.run("06:59:56.2", {"PATH": "/usr/bin"})
    with session.record() as recording:
        started = program.wait_for("[TTSPlayer] speaking…").when
        wait_until(lambda: sound.sounding(recording.samples()))
    record_property("seconds to speech", recording.started + sound.sounding(recording.samples())[0][0] - started)
    assert session["speech" + options].received() == text
    tone = numpy.abs(numpy.fft.rfft(recording.samples()[-sound.RATE // 5:]))
    assert (abs(tone.argmax() * 5 - speech.TONE) <= 10) == (options == "+generic")


@pytest.mark.parametrize("service", [service for service in SERVICES if service != "sound"])
def test_the_ringing_outlives_a_service(session, service):
    session.start_all()
    session.save(RUN | {"ttsEnabled": False})
    program = session.run("06:59:58.2")
    program.wait_for("[Scheduler] FIRE…")
    with session.record() as recording:
        wait_until(lambda: sound.sounding(recording.samples()))
        session[service].kill()
        killed = len(recording.samples())
        wait_until(lambda: len(recording.samples()) > killed + 3 * sound.RATE)
    [(begin, end)] = sound.sounding(recording.samples()[killed:], shortest_pause=1.5)
    assert begin < 1 and end > 2
    session.clock.set("07:00:59.2")
    program.wait_for("[Scheduler] FIRE: x alarm #2")


def test_a_sound_server_that_restarts_sounds_again_in_the_same_alarm(session, record_property):
    session.start("sound")
    session.save(RUN | {"ttsEnabled": False})
    program = session.run("06:59:58.2", stderr=subprocess.STDOUT)
    program.wait_for("[Scheduler] FIRE…")
    with session.record() as recording:
        wait_until(lambda: sound.sounding(recording.samples()))
    session["sound"].kill()
    program.wait_for("kova-alarm: no sound…")
    session.start("sound")
    back = time.monotonic()
    wait_until(lambda: subprocess.check_output(["pactl", "list", "short", "sink-inputs"], env=session.env))
    record_property("seconds from the server to the alarm's stream", time.monotonic() - back)
    with session.record() as recording:
        wait_until(lambda: sound.sounding(recording.samples()))


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
