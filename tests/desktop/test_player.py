"""An alarm continues to sound whatever happens to its player process, and to the services beside it."""

import os
import re
import signal
import subprocess
from pathlib import Path

import pytest

import sound
from groups import custom, group
from session import wait_until

RUN = group("7:00", alarmCount=3, soundName="wakeup_pulse", ttsEnabled=True, ttsMessage="wake up",
            ttsVolume=0)


def players(program):
    return [int(child) for child in Path(f"/proc/{program.pid}/task/{program.pid}/children").read_text().split()
            if name(child).startswith("kova-alarm-play")]


def name(pid):
    try:
        return Path(f"/proc/{pid}/comm").read_text()
    except OSError:
        return ""  # it has exited


def rings(session, program):
    program.wait_for("[Scheduler] FIRE…")
    session.wait_for_sound()
    wait_until(lambda: len(players(program)) == 1)  # the previous one may still be exiting
    return players(program)[0]


@pytest.mark.parametrize("is_custom", [False, True])
@pytest.mark.parametrize("how, reason", [
    (signal.SIGSTOP, "The player does not respond"),
    (signal.SIGFPE, "The player crashed: Floating point exception")])
def test_a_failed_player_is_replaced(session, is_custom, how, reason):
    session.start("sound", "speech")
    file = session.folder / "own.wav"
    sound.write(file, sound.chirp())
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
    assert len(program.log_lines()) == 2 + 2 * 2 + 1


@pytest.mark.parametrize("service", ["session-bus", "system-bus"])
def test_an_unresponsive_bus_does_not_silence_an_alarm(session, service):
    session.start("session-bus", "system-bus", "sound")
    session.save(RUN | {"ttsEnabled": False})
    program = session.run()
    session[service].signal(signal.SIGSTOP)
    program.wait_for("[Scheduler] FIRE…")
    session.wait_for_sound()


@pytest.mark.parametrize("end", [signal.SIGTERM, signal.SIGKILL, signal.SIGSEGV])
def test_a_player_exits_with_the_program(session, end):
    session.start("sound", "speech")
    session.save(RUN)
    program = session.run()
    player = rings(session, program)
    program.signal(end)
    wait_until(lambda: not Path(f"/proc/{player}").exists())


def test_the_sound_server_knows_the_alarm(session):
    session.start("sound", "speech")
    session.save(RUN)
    rings(session, session.run())
    inputs = subprocess.check_output(["pactl", "list", "sink-inputs"], env=session.env, text=True)
    for key, value in (("media.role", "alarm"), ("application.name", "KOVA Alarm"), ("application.id", "jp.kova.Alarm"),
                       ("application.icon_name", "jp.kova.Alarm")):
        assert f'{key} = "{value}"' in inputs


def test_a_player_is_confined(session):
    session.start("sound", "speech")
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


@pytest.mark.parametrize("configuration, reason", [
    ("pcm.!default { type null }", None),
    ("pcm.!default { type hw card 7 }", "No such file or directory"),
])
def test_alsa_without_a_sound_server(session, configuration, reason):
    file = session.folder / "alsa.conf"
    file.write_text(configuration)
    session.save(RUN | {"ttsEnabled": False})
    program = session.run("06:59:56", {"ALSA_CONFIG_PATH": str(file), "SDL_AUDIODRIVER": "alsa"}, stderr=subprocess.STDOUT)
    program.wait_for("[Scheduler] FIRE…")
    if reason:
        assert reason in program.wait_for("kova-alarm: no sound…")
    else:
        wait_until(lambda: players(program))
        opened = Path(f"/proc/{players(program)[0]}/fd")
        wait_until(lambda: any(os.readlink(entry) == "/dev/null" for entry in opened.iterdir() if int(entry.name) > 2))
        assert not any("no sound" in text for text in program.texts())
