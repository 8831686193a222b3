"""An alarm continues to sound whatever happens to its player process, and to the services beside it."""

import os
import re
import signal
import subprocess
import time
from pathlib import Path

import pytest

import sound
from groups import custom, group
from session import wait_until

RUN = group("7:00", alarmCount=3, soundName="wakeup_pulse")


def players(program):
    found = subprocess.run(["pgrep", "-P", str(program.pid), "kova-alarm-play"], capture_output=True, text=True)
    return [int(player) for player in found.stdout.split()]


def sounding_player(session, program):
    session.wait_for_sound()
    wait_until(lambda: len(players(program)) == 1)  # the previous one may still be exiting
    return players(program)[0]


def rings(session, program):
    program.wait_for("[Scheduler] FIRE…")
    return sounding_player(session, program)


@pytest.mark.parametrize("is_custom", [False, True])
@pytest.mark.parametrize("how, reason", [
    (signal.SIGSTOP, "The player does not respond"),
    (signal.SIGFPE, "The player crashed: Floating point exception")])
def test_a_failed_player_is_replaced(session, is_custom, how, reason):
    session.start("sound")
    file = sound.write(session.folder / "own.wav", sound.chirp())
    session.save(custom(file, **RUN) if is_custom else RUN)
    program = session.run()
    first = rings(session, program)
    for player in (first, None):
        os.kill(player or players(program)[0], how)
        wait_until(lambda: players(program) not in ([], [player or first]), 10)
        session.wait_for_sound()
    assert program.log_lines()[-1] == f"[SoundPlayer] play error: {reason}"
    session.clock.set_before(1)
    rings(session, program)
    assert len(program.log_lines()) == 2 + 2 + 1


@pytest.mark.parametrize("end", [signal.SIGTERM, signal.SIGINT, signal.SIGKILL, signal.SIGSEGV])
def test_nothing_outlives_the_program(session, end):
    session.start("sound", "speech", "system-bus", "logind")
    is_regular = end in (signal.SIGTERM, signal.SIGINT)
    # A program that is killed cannot cancel its speech.
    spoken = {"volume": 0, "ttsEnabled": True, "ttsMessage": "wake up " * 20}
    session.save(RUN | (spoken if is_regular else {}))
    program = session.run()
    player = rings(session, program)
    program.signal(end)
    assert program.wait() == (0 if is_regular else -end)
    assert ("[PowerManager] Sleep prevention OFF" in program.texts()) == is_regular
    released = {session["logind"].wait_for_call("released")["why"] for _ in range(2)}
    assert released == {"KOVA Alarm active — preventing sleep", "KOVA alarm scheduling must remain active"}
    wait_until(lambda: not Path(f"/proc/{player}").exists())
    with session.record() as recording:
        time.sleep(2)
    assert not sound.sounding(recording.samples()[sound.RATE // 2:])


def test_a_player_is_confined_and_named_as_an_alarm(session):
    session.start("sound")
    session.save(RUN)
    player = rings(session, session.run(env={"DISPLAY": ":unresponsive", "WAYLAND_DISPLAY": "unresponsive"}))
    status, limits = Path(f"/proc/{player}/status").read_text(), Path(f"/proc/{player}/limits").read_text()
    assert "NoNewPrivs:\t1" in status
    ignored = int(re.search("SigIgn:\t(.*)", status)[1], 16)
    assert ignored >> (signal.SIGXFSZ - 1) & 1  # a write beyond the file size limit fails instead
    for limit in ("Max core file size        0 ", "Max data size             268435456 "):
        assert limit in limits
    assert len(os.listdir(f"/proc/{player}/fd")) < 20
    variables = Path(f"/proc/{player}/environ").read_text().split("\0")
    assert [text for text in variables if "DBUS" in text or "DISPLAY" in text] == [
        "DBUS_SESSION_BUS_ADDRESS=disabled:", "DBUS_SYSTEM_BUS_ADDRESS=disabled:"]
    inputs = subprocess.check_output(["pactl", "list", "sink-inputs"], env=session.env, text=True)
    for key, value in (("media.role", "alarm"), ("application.name", "KOVA Alarm"), ("application.id", "jp.kova.Alarm"),
                       ("application.icon_name", "jp.kova.Alarm")):
        assert f'{key} = "{value}"' in inputs


@pytest.mark.parametrize("configuration, reason", [
    ("pcm.!default { type null }", None),
    ("pcm.!default { type hw card 7 }", "No such file or directory"),
])
def test_alsa_without_a_sound_server(session, configuration, reason):
    file = session.folder / "alsa.conf"
    file.write_text(configuration)
    session.save(RUN)
    program = session.run("06:59:56", {"ALSA_CONFIG_PATH": str(file), "SDL_AUDIODRIVER": "alsa"}, stderr=subprocess.STDOUT)
    program.wait_for("[Scheduler] FIRE…")
    if reason:
        assert reason in program.wait_for("kova-alarm: no sound…")
    else:
        wait_until(lambda: players(program))
        opened = Path(f"/proc/{players(program)[0]}/fd")
        wait_until(lambda: any(os.readlink(entry) == "/dev/null" for entry in opened.iterdir() if int(entry.name) > 2))
        assert not any("no sound" in text for text in program.texts())
