"""A file of the user's own as the alarm's sound."""

import re
import shutil
import struct
import subprocess
import time
from pathlib import Path

import numpy
import pytest

import sound
from groups import bookmark, group
from session import PROGRAM, wait_until


def chirp():
    """A sound that is like no other at any other place, 0.7 s long."""
    times = numpy.arange(0, 0.7, 1 / sound.RATE)
    return 0.5 * numpy.sin(2 * numpy.pi * (300 + 2000 * times) * times)


def encode(path, samples):
    wave = path.with_name("wave.wav")
    sound.write(wave, samples)
    if path.suffix in (".wav", ".mp3"):
        sound.write(path, samples)
    else:
        subprocess.run(["ffmpeg", "-v", "error", "-i", wave, path], check=True)


def custom(path, **fields):
    return group(customSoundPath=bookmark(path), customSoundName=path.name, **fields)


@pytest.mark.parametrize("form", ["wav", "aiff", "flac", "ogg", "opus", "mp3", "m4a", "aac", "WMA"])
def test_a_file_is_played_in_a_loop(session, form):
    file = session.folder / f"目覚まし 1.{form}"
    encode(file, chirp())
    session.start("sound")
    session.save(custom(file, volume=0.5))
    file.rename(file.with_name(f"renamed.{form}"))
    with session.record() as recording:
        program = session.run()
        program.wait_for("[Scheduler] FIRE…")
        time.sleep(2.5)
    begin = sound.sounding(recording.samples())[0][0]
    for turn in range(3):
        played = recording.samples()[int((begin + turn * 0.7) * sound.RATE):]
        gain, likeness = sound.heard(chirp(), played[:sound.RATE], 0.1)
        assert likeness > 0.95
        assert gain == pytest.approx(0.5, rel=0.05)
    assert program.log_lines()[-1] == "[Scheduler] FIRE:  alarm #1"


def wav(channels, *chunks):
    form = struct.pack("<HHIIHH", 1, channels, 44100, 88200 * channels, 2 * channels, 16)
    chunks = [(b"fmt ", form), *chunks, (b"data", bytes(i * 37 % 256 for i in range(88200)))]
    body = b"WAVE" + b"".join(name + struct.pack("<I", len(data)) + data for name, data in chunks)
    return b"RIFF" + struct.pack("<I", len(body)) + body


def aiff(channels):
    common = struct.pack(">hIh", channels, 22050, 16) + b"\x40\x0e\xac\x44" + bytes(6)
    chunks = [(b"COMM", common), (b"SSND", bytes(8) + bytes(i * 37 % 256 for i in range(44100)))]
    body = b"AIFF" + b"".join(name + struct.pack(">I", len(data)) + data for name, data in chunks)
    return b"FORM" + struct.pack(">I", len(body)) + body


def cut(suffix, size=8000):
    """The beginning of a good file."""
    def make(folder):
        encode(folder / f"whole{suffix}", numpy.tile(chirp(), 4))
        return (folder / f"whole{suffix}").read_bytes()[:size]
    return make


# A track that promises more than there is, and one without notes.
CUT_MIDI = b"MThd" + struct.pack(">IHHH", 6, 1, 1, 96) + b"MTrk" + struct.pack(">I", 4000) + b"\0\x90\x3c\x40" * 9
NO_NOTES = CUT_MIDI[:14] + b"MTrk" + struct.pack(">I", 4) + b"\0\xff\x2f\0"
FALSE_LOOP = (b"smpl", struct.pack("<15I", 0, 0, 22675, 60, 0, 0, 0, 0x7FFFFFFF, 0, 0, 0, 0, 19999, 0, 0))


def file(name, content):
    def make(folder):
        (folder / name).write_bytes(content(folder) if callable(content) else content)
        return bookmark(folder / name)
    return make


def lost_file(folder):
    folder.joinpath("lost.wav").touch()
    lost = bookmark(folder / "lost.wav")
    folder.joinpath("lost.wav").unlink()
    return lost


REFUSED = "[SoundPlayer] play error: …"
NOT_FOUND = "[SoundPlayer] Sound not found: no such sound"


@pytest.mark.parametrize("make, lines", [
    (file("text.mp3", b"this is no sound\n" * 1000), [REFUSED]),
    (file("empty.wav", b""), [REFUSED]),
    (file("nothing to hear.wav", wav(0)), [REFUSED]),
    (file("nothing to hear.aiff", aiff(0)), [REFUSED]),
    (file("cut.mid", CUT_MIDI), [REFUSED]),
    (file("cut midi.mp3", CUT_MIDI), [REFUSED]),
    (file("no notes.wav", NO_NOTES), [REFUSED]),
    (file("cut.m4a", cut(".m4a")), [REFUSED]),
    (file("list.m4a", b"#EXTM3U\n/etc/passwd\n"), [REFUSED]),
    (lost_file, ["[SoundPlayer] resolve bookmark error: …", NOT_FOUND]),
    (lambda folder: "bm90IGEgYm9va21hcms=", ["[SoundPlayer] resolve bookmark error: …", NOT_FOUND]),
    (lambda folder: "#not base64#", [NOT_FOUND]),
    (lambda folder: "", [NOT_FOUND]),
])
def test_a_file_that_cannot_be_played_gives_its_line(session, make, lines):
    session.start("sound")
    session.save(group(customSoundPath=make(session.folder), customSoundName="x", soundName="no such sound",
                       alarmCount=2))
    program = session.run()
    for minute in (0, 1):
        fired = program.wait_for(f"[Scheduler] FIRE:  alarm #{minute + 1}")
        assert session.clock.text(fired.when).startswith(f"07:0{minute}:00")
        told = [program.wait_for(line) for line in lines]
        assert all(len(line) > len("[SoundPlayer] resolve bookmark error: ") for line in told), "no reason"
        session.clock.set("07:00:59.2")
    assert len(program.log_lines()) == 2 + 2 * (1 + len(lines))


@pytest.mark.parametrize("make", [
    file("false loop.wav", wav(1, FALSE_LOOP)),
    file("sound.aiff", aiff(1)),
    file("cut.wma", cut(".wma")),
    file("cut.mp3", cut(".mp3")),
])
def test_what_there_is_of_a_broken_file_is_heard(session, make):
    session.start("sound")
    session.save(group(customSoundPath=make(session.folder), customSoundName="x", alarmCount=2))
    is_heard_twice(session, session.run())


def is_heard_twice(session, program):
    for _ in range(2):
        program.wait_for("[Scheduler] FIRE…")
        with session.record() as recording:
            wait_until(lambda: sound.sounding(recording.samples()))
        session.clock.set("07:00:59.2")
    assert len(program.log_lines()) == 4


def test_a_program_whose_package_is_removed_rings_on(session, monkeypatch):
    there, here = PROGRAM.parents[1], session.folder / "installed"
    here.mkdir()
    beside = PROGRAM.parent.name
    parts = (f"{beside}/kova-alarm*", f"{beside}/resources/Sounds", "libexec/kova-alarm", "share/kova-alarm")
    found = [part.relative_to(there) for name in parts for part in there.glob(name)]
    subprocess.run(["cp", "-rL", "--parents", *found, here], cwd=there, check=True)
    monkeypatch.setattr("session.PROGRAM", here / PROGRAM.relative_to(there))
    file = session.folder / "own.m4a"
    encode(file, chirp())
    session.start("sound")
    session.save(group(), custom(file, time="7:01"))
    program = session.run()
    shutil.rmtree(here)
    is_heard_twice(session, program)


@pytest.mark.parametrize("call", ["statx", "open"])
def test_a_disk_that_sleeps_holds_nothing_up(session, call, record_property):
    session.start("session-bus", "notifications", "sound")
    library, trace, file = session.folder / "stall.so", session.folder / "trace", session.folder / "sleepy.wav"
    subprocess.run(["gcc", "-shared", "-fPIC", "-o", library, Path(__file__).with_name("stall.c")], check=True)
    sound.write(file, chirp())
    session.save(custom(file, label="x", alarmCount=4))
    sleeps = file.with_name(f"{file.name}.{call}")
    sleeps.touch()
    program = session.run("06:59:00", {"LD_PRELOAD": f"{library}:{session.clock.env['LD_PRELOAD']}"},
                          ["/usr/bin/strace", "-D", "-q", "-T", "-e", "trace=!poll,ppoll", "-o", trace])

    def rings(minute):
        fired = program.wait_for(f"[Scheduler] FIRE: x alarm #{minute + 1}")
        assert session.clock.text(fired.when).startswith(f"07:0{minute}:00")
        session["notifications"].wait_for_call("Notify", body=f"x — 7:0{minute}")
        session.clock.set(f"07:0{minute}:59.2")

    session.clock.set("06:59:54")  # it starts slowly, as it is traced
    rings(0)
    rings(1)
    with session.record() as recording:
        program.wait_for("[Scheduler] FIRE: x alarm #3")
        sleeps.unlink()
        wait_until(lambda: sound.sounding(recording.samples()))
    sleeps.touch()
    session.clock.set("07:02:59.2")
    rings(3)
    program.end()
    assert not any(text.startswith("[SoundPlayer]") for text in program.texts())
    # The main thread alone is traced.
    calls = trace.read_text()
    assert file.name not in calls
    record_property("longest wait of the main thread, s", max(map(float, re.findall(r"<([0-9.]+)>$", calls, re.M))))
