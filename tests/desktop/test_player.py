"""The process that plays an alarm's sound may do what it likes: the alarm goes on, and so does the sound."""

import os
import signal
import subprocess
from pathlib import Path

import pytest

import sound
from groups import group
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
        return ""  # it has just ended


def rings(session, program):
    program.wait_for("[Scheduler] FIRE…")
    program.wait_for("[TTSPlayer] speaking…")
    with session.record() as recording:
        wait_until(lambda: sound.sounding(recording.samples()))
    wait_until(lambda: len(players(program)) == 1)  # the one before may still be leaving
    return players(program)[0]


@pytest.mark.parametrize("how, reason", [
    (signal.SIGSTOP, "The player does not answer"), (signal.SIGFPE, "The player crashed: Floating point exception")])
def test_a_player_that_fails_is_replaced(session, how, reason):
    session.start("sound", "speech")
    session.save(RUN)
    program = session.run()
    first = rings(session, program)
    for player in (first, None):
        os.kill(player or players(program)[0], how)
        wait_until(lambda: players(program) not in ([], [player or first]), 10)
        with session.record() as recording:
            wait_until(lambda: sound.sounding(recording.samples()))
    assert program.log_lines()[-1] == f"[SoundPlayer] play error: {reason}"
    session.clock.set("07:00:59.2")
    rings(session, program)
    assert len(program.log_lines()) == 2 + 2 * 2 + 1


@pytest.mark.parametrize("end", [signal.SIGTERM, signal.SIGKILL, signal.SIGSEGV])
def test_a_player_ends_with_the_program(session, end):
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
    told = subprocess.check_output(["pactl", "list", "sink-inputs"], env=session.env, text=True)
    for key, value in (("media.role", "alarm"), ("application.name", "KOVA Alarm"), ("application.id", "jp.kova.Alarm"),
                       ("application.icon_name", "jp.kova.Alarm")):
        assert f'{key} = "{value}"' in told


def test_a_player_is_confined(session):
    session.start("sound", "speech")
    session.save(RUN)
    player = rings(session, session.run())
    status, limits = Path(f"/proc/{player}/status").read_text(), Path(f"/proc/{player}/limits").read_text()
    assert "NoNewPrivs:\t1" in status
    for limit in ("Max core file size        0 ", "Max data size             268435456 "):
        assert limit in limits
    assert len(os.listdir(f"/proc/{player}/fd")) < 20
