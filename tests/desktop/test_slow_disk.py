"""Custom sound files on disks that sleep or hang."""

import subprocess
import time
from pathlib import Path

import pytest

import sound
from groups import custom


def stalling(session):
    """The environment in which stall.c stalls the calls for a file."""
    library = session.folder / "stall.so"
    subprocess.run(["gcc", "-shared", "-fPIC", "-o", library, Path(__file__).with_name("stall.c")], check=True)
    return {"LD_PRELOAD": f"{library}:{session.clock.env['LD_PRELOAD']}"}


@pytest.mark.parametrize("is_playing", [False, True])
def test_a_disk_that_hangs_for_4_s_interrupts_the_sound(session, is_playing):
    file = sound.write(session.folder / "own.wav", sound.chirp())
    hangs = session.folder / "own.wav.player"
    session.start("sound")
    session.save(custom(file))
    if not is_playing:
        hangs.touch()
    program = session.run(env=stalling(session))
    program.wait_for("[Scheduler] FIRE…")
    if is_playing:
        session.wait_for_sound()
        hangs.touch()
    time.sleep(4)
    hangs.unlink()
    assert program.wait_for("[SoundPlayer]…") == "[SoundPlayer] play error: The player does not respond"
    session.wait_for_sound(5)


@pytest.mark.parametrize("call", ["statx", "open"])
def test_a_disk_that_sleeps_does_not_block(session, call):
    session.start("session-bus", "notifications", "sound")
    trace = session.folder / "trace"
    file = sound.write(session.folder / "sleepy.wav", sound.chirp())
    session.save(custom(file, label="x", alarmCount=4))
    sleeps = file.with_name(f"{file.name}.{call}")
    sleeps.touch()
    program = session.run("06:59:54", stalling(session),
                          ["/usr/bin/strace", "-D", "-q", "-e", "trace=%file", "-o", trace])
    for minute in range(4):
        session.wait_for_alarm(program, minute)
        session["notifications"].wait_for_call("Notify", body=f"x — 7:0{minute}")
        if minute == 2:
            sleeps.unlink()
            session.wait_for_sound()
            sleeps.touch()
        session.clock.set_before(minute + 1)
    program.end()
    assert not any(text.startswith("[SoundPlayer]") for text in program.texts())
    assert file.name not in trace.read_text()  # only the main thread is traced
