"""Custom sound files: formats, and files that are no sound or hold less than they announce."""

import shutil
import struct
import subprocess
import time

import numpy
import pytest

import sound
from groups import bookmark, custom, group
from session import PROGRAM

FORMATS = ("wav", "aiff", "flac", "ogg", "opus", "mp3", "m4a", "aac", "WMA")


def test_files_are_played_in_a_loop(session):
    files = [session.folder / f"目覚まし 1.{suffix}" for suffix in FORMATS]
    for file in files:
        sound.write(file, sound.chirp())
    session.start("sound")
    session.save(*(custom(file, time=f"7:{minute}", volume=0.5) for minute, file in enumerate(files)))
    for file in files:
        file.rename(file.with_stem("renamed"))
    program = session.run()
    for minute, suffix in enumerate(FORMATS):
        session.clock.set_before(minute)
        program.wait_for("[Scheduler] FIRE:  alarm #1")
        with session.record() as recording:
            time.sleep(3)
        samples = recording.samples()[sound.RATE // 2:]  # after the end of the previous alarm's sound
        begin = sound.sounding(samples)[0][0]
        for turn in range(3):
            played = samples[int((begin + turn * 0.7) * sound.RATE):]
            gain, likeness = sound.heard(sound.chirp(), played[:sound.RATE], 0.1)
            assert likeness > 0.95, suffix
            assert gain == pytest.approx(0.5, rel=0.05), suffix
    assert len(program.log_lines()) == 2 + len(FORMATS)


def wav(channels):
    header = struct.pack("<HHIIHH", 1, channels, 44100, 88200 * channels, 2 * channels, 16)
    chunks = [(b"fmt ", header), (b"data", bytes(i * 37 % 256 for i in range(88200)))]
    body = b"WAVE" + b"".join(name + struct.pack("<I", len(data)) + data for name, data in chunks)
    return b"RIFF" + struct.pack("<I", len(body)) + body


def cut(folder, suffix):
    """The beginning of a valid file."""
    return sound.write(folder / f"whole.{suffix}", numpy.tile(sound.chirp(), 4)).read_bytes()[:8000]


HEARD = []
REFUSED = ["[SoundPlayer] play error: …"]
NOT_FOUND = "[SoundPlayer] Sound not found: no such sound"
UNRESOLVED = ["[SoundPlayer] resolve bookmark error: …", NOT_FOUND]


def test_a_damaged_file_is_heard_or_gives_its_line(session):
    files = {
        "text.mp3": (b"this is no sound\n" * 1000, REFUSED),
        "empty.wav": (b"", REFUSED),
        "empty sound.wav": (wav(0), REFUSED),
        "cut.m4a": (cut(session.folder, "m4a"), REFUSED),
        "list.m4a": (b"#EXTM3U\n/etc/passwd\n", REFUSED),
        "lost.wav": (wav(1), UNRESOLVED),
        "cut.wma": (cut(session.folder, "wma"), HEARD),
        "cut.mp3": (cut(session.folder, "mp3"), HEARD),
    }
    expected = {"bm90IGEgYm9va21hcms=": UNRESOLVED, "#not base64#": [NOT_FOUND], "": [NOT_FOUND]}
    for name, (content, lines) in files.items():
        (session.folder / name).write_bytes(content)
        expected[bookmark(session.folder / name)] = lines
    (session.folder / "lost.wav").unlink()
    session.start("sound")
    session.save(*(group(f"7:{minute}", customSoundPath=path, customSoundName="x", soundName="no such sound")
                   for minute, path in enumerate(expected)))
    program = session.run()
    for minute, lines in enumerate(expected.values()):
        session.clock.set_before(minute)
        session.wait_for_alarm(program, minute)
        printed = [program.wait_for(line) for line in lines]
        assert all(len(line) > len("[SoundPlayer] resolve bookmark error: ") for line in printed), "no reason"
        if lines == HEARD:
            session.wait_for_sound(skipped=0.5)
    assert len(program.log_lines()) == 2 + sum(1 + len(lines) for lines in expected.values())


def test_alarms_ring_after_the_package_is_removed(session, monkeypatch):
    there, here = PROGRAM.parents[1], session.folder / "installed"
    here.mkdir()
    beside = PROGRAM.parent.name
    parts = (f"{beside}/kova-alarm*", f"{beside}/resources/Sounds", "libexec/kova-alarm", "share/kova-alarm")
    found = [part.relative_to(there) for name in parts for part in there.glob(name)]
    subprocess.run(["cp", "-rL", "--parents", *found, here], cwd=there, check=True)
    monkeypatch.setattr("session.PROGRAM", here / PROGRAM.relative_to(there))
    file = sound.write(session.folder / "own.m4a", sound.chirp())
    session.start("sound")
    session.save(group(), custom(file, time="7:01"))
    program = session.run()
    shutil.rmtree(here)
    for minute in range(2):
        session.clock.set_before(minute)
        program.wait_for("[Scheduler] FIRE…")
        session.wait_for_sound(skipped=0.5)
    assert len(program.log_lines()) == 2 + 2
