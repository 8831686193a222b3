"""Custom sound files on disks that sleep or hang."""

import re
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
    file, hangs = session.folder / "own.wav", session.folder / "own.wav.player"
    sound.write(file, sound.chirp())
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
def test_a_disk_that_sleeps_does_not_block(session, call, record_property):
    session.start("session-bus", "notifications", "sound")
    trace, file = session.folder / "trace", session.folder / "sleepy.wav"
    sound.write(file, sound.chirp())
    session.save(custom(file, label="x", alarmCount=4))
    sleeps = file.with_name(f"{file.name}.{call}")
    sleeps.touch()
    program = session.run("06:59:00", stalling(session),
                          ["/usr/bin/strace", "-D", "-q", "-T", "-e", "trace=!poll,ppoll", "-o", trace])

    def rings(minute):
        fired = program.wait_for(f"[Scheduler] FIRE: x alarm #{minute + 1}")
        assert session.clock.text(fired.when).startswith(f"07:0{minute}:00")
        session["notifications"].wait_for_call("Notify", body=f"x — 7:0{minute}")
        session.clock.set_before(minute + 1)

    session.clock.set("06:59:54")  # tracing slows the start down
    rings(0)
    rings(1)
    program.wait_for("[Scheduler] FIRE: x alarm #3")
    sleeps.unlink()
    session.wait_for_sound()
    sleeps.touch()
    session.clock.set_before(3)
    rings(3)
    program.end()
    assert not any(text.startswith("[SoundPlayer]") for text in program.texts())
    # Only the main thread is traced.
    calls = trace.read_text()
    assert file.name not in calls
    record_property("longest wait of the main thread, s", max(map(float, re.findall(r"<([0-9.]+)>$", calls, re.M))))
