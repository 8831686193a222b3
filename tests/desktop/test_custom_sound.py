"""Custom sound files: formats, damaged files, slow disks."""

import re
import shutil
import struct
import subprocess
import time
from pathlib import Path
from random import Random

import numpy
import pytest

import sound
from groups import bookmark, group
from session import PROGRAM, wait_until


FORMATS = ("wav", "aiff", "flac", "ogg", "opus", "mp3", "m4a", "aac", "WMA")


def encode(path, samples):
    wave = path.with_name("wave.wav")
    sound.write(wave, samples)
    if path.suffix in (".wav", ".mp3"):
        sound.write(path, samples)
    else:
        subprocess.run(["ffmpeg", "-v", "error", "-i", wave, path], check=True)


def custom(path, **fields):
    return group(customSoundPath=bookmark(path), customSoundName=path.name, **fields)


@pytest.mark.parametrize("suffix", FORMATS)
def test_a_file_is_played_in_a_loop(session, suffix):
    file = session.folder / f"目覚まし 1.{suffix}"
    encode(file, sound.chirp())
    session.start("sound")
    session.save(custom(file, volume=0.5))
    file.rename(file.with_name(f"renamed.{suffix}"))
    with session.record() as recording:
        program = session.run()
        program.wait_for("[Scheduler] FIRE…")
        time.sleep(2.5)
    begin = sound.sounding(recording.samples())[0][0]
    for turn in range(3):
        played = recording.samples()[int((begin + turn * 0.7) * sound.RATE):]
        gain, likeness = sound.heard(sound.chirp(), played[:sound.RATE], 0.1)
        assert likeness > 0.95
        assert gain == pytest.approx(0.5, rel=0.05)
    assert program.log_lines()[-1] == "[Scheduler] FIRE:  alarm #1"


def damaged(content, seed):
    """The content with some of its bytes overwritten, zeroed, removed or preceded by others."""
    random = Random(seed)
    begin, size = random.randrange(len(content)), random.choice((1, 16, 400))
    block = random.choice((random.randbytes(size), bytes(size), b"", random.randbytes(2 * size)))
    return content[:begin] + block + content[begin + size:]


@pytest.mark.slow
@pytest.mark.parametrize("suffix", FORMATS)
@pytest.mark.parametrize("count", [4, pytest.param(100, marks=pytest.mark.thorough)])
def test_a_damaged_file_is_repeated_or_rejected(session, suffix, count, record_property):
    encode(session.folder / f"good.{suffix}", numpy.tile(sound.chirp(), 2))
    files = [session.folder / f"{seed}.{suffix}" for seed in range(count)]
    for seed, file in enumerate(files):
        file.write_bytes(damaged(file.with_stem("good").read_bytes(), seed))
    session.start("sound")
    session.save(*(custom(file, label=file.stem, time=f"{7 + seed // 60}:{seed % 60}")
                   for seed, file in enumerate(files)))
    program = session.run("06:50:00")
    rejected, silent = [], []
    for seed in range(count):
        minutes = 419 + seed
        session.clock.set(f"{minutes // 60:02d}:{minutes % 60:02d}:57.5")
        program.wait_for(f"[Scheduler] FIRE: {seed} alarm #1")
        with session.record() as recording:
            time.sleep(2.5)
        if program.texts()[-1].startswith("[SoundPlayer]"):
            rejected.append(seed)
        elif not sound.sounding(recording.samples()[-int(1.6 * sound.RATE):]):
            silent.append(seed)
    assert not silent
    assert not [text for text in program.texts() if "The player" in text or "has ended" in text]
    record_property("rejected files", len(rejected))


def wav(channels, *chunks):
    header = struct.pack("<HHIIHH", 1, channels, 44100, 88200 * channels, 2 * channels, 16)
    chunks = [(b"fmt ", header), *chunks, (b"data", bytes(i * 37 % 256 for i in range(88200)))]
    body = b"WAVE" + b"".join(name + struct.pack("<I", len(data)) + data for name, data in chunks)
    return b"RIFF" + struct.pack("<I", len(body)) + body


def aiff(channels):
    common = struct.pack(">hIh", channels, 22050, 16) + b"\x40\x0e\xac\x44" + bytes(6)
    chunks = [(b"COMM", common), (b"SSND", bytes(8) + bytes(i * 37 % 256 for i in range(44100)))]
    body = b"AIFF" + b"".join(name + struct.pack(">I", len(data)) + data for name, data in chunks)
    return b"FORM" + struct.pack(">I", len(body)) + body


def cut(suffix, size=8000):
    """The beginning of a valid file."""
    def make(folder):
        encode(folder / f"whole{suffix}", numpy.tile(sound.chirp(), 4))
        return (folder / f"whole{suffix}").read_bytes()[:size]
    return make


# A track whose length exceeds the file, and one without notes.
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
    (file("empty sound.wav", wav(0)), [REFUSED]),
    (file("empty sound.aiff", aiff(0)), [REFUSED]),
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
        printed = [program.wait_for(line) for line in lines]
        assert all(len(line) > len("[SoundPlayer] resolve bookmark error: ") for line in printed), "no reason"
        session.clock.set("07:00:59.2")
    assert len(program.log_lines()) == 2 + 2 * (1 + len(lines))


@pytest.mark.parametrize("make", [
    file("false loop.wav", wav(1, FALSE_LOOP)),
    file("sound.aiff", aiff(1)),
    file("cut.wma", cut(".wma")),
    file("cut.mp3", cut(".mp3")),
])
def test_the_intact_part_of_a_file_is_heard(session, make):
    session.start("sound")
    session.save(group(customSoundPath=make(session.folder), customSoundName="x", alarmCount=2))
    check_two_alarms_sound(session, session.run())


def check_two_alarms_sound(session, program):
    for _ in range(2):
        program.wait_for("[Scheduler] FIRE…")
        with session.record() as recording:
            wait_until(lambda: sound.sounding(recording.samples()))
        session.clock.set("07:00:59.2")
    assert len(program.log_lines()) == 4


def test_alarms_ring_after_the_package_is_removed(session, monkeypatch):
    there, here = PROGRAM.parents[1], session.folder / "installed"
    here.mkdir()
    beside = PROGRAM.parent.name
    parts = (f"{beside}/kova-alarm*", f"{beside}/resources/Sounds", "libexec/kova-alarm", "share/kova-alarm")
    found = [part.relative_to(there) for name in parts for part in there.glob(name)]
    subprocess.run(["cp", "-rL", "--parents", *found, here], cwd=there, check=True)
    monkeypatch.setattr("session.PROGRAM", here / PROGRAM.relative_to(there))
    file = session.folder / "own.m4a"
    encode(file, sound.chirp())
    session.start("sound")
    session.save(group(), custom(file, time="7:01"))
    program = session.run()
    shutil.rmtree(here)
    check_two_alarms_sound(session, program)


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
    with session.record() as recording:
        if is_playing:
            wait_until(lambda: sound.sounding(recording.samples()))
            hangs.touch()
        time.sleep(4)
        hangs.unlink()
    assert program.wait_for("[SoundPlayer]…") == "[SoundPlayer] play error: The player does not respond"
    with session.record() as recording:
        wait_until(lambda: sound.sounding(recording.samples()), 5)


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
        session.clock.set(f"07:0{minute}:59.2")

    session.clock.set("06:59:54")  # tracing slows the start down
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
    # Only the main thread is traced.
    calls = trace.read_text()
    assert file.name not in calls
    record_property("longest wait of the main thread, s", max(map(float, re.findall(r"<([0-9.]+)>$", calls, re.M))))
