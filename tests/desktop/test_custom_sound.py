"""A file of the user's own as the alarm's sound."""

import time

import numpy
import pytest

import sound
from groups import bookmark, group


def noise():
    """A sound that is like nothing else, 0.7 s long."""
    return numpy.random.default_rng(7).uniform(-0.4, 0.4, int(0.7 * sound.RATE))


def custom(path, **fields):
    return group(customSoundPath=bookmark(path), customSoundName=path.name, **fields)


@pytest.mark.parametrize("form", ["wav", "aiff", "flac", "ogg", "mp3"])
def test_a_file_is_played_in_a_loop(session, form):
    file = session.folder / f"目覚まし 1.{form}"
    sound.write(file, noise())
    session.start("sound")
    session.save(custom(file, volume=0.5))
    file.rename(file.with_name(f"renamed.{form}"))
    with session.record() as recording:
        program = session.run()
        program.wait_for("[Scheduler] FIRE…")
        time.sleep(2.5)
    first, gain, likeness = sound.find(noise(), recording.samples())
    assert likeness > 0.9
    assert gain == pytest.approx(0.5, rel=0.05)
    again = recording.samples()[int((first + 0.72) * sound.RATE):] if first < 1.4 else recording.samples()[
        :int((first + 0.65) * sound.RATE)]
    assert sound.find(noise()[:sound.RATE // 2], again)[2] > 0.9
    assert program.texts()[-1] == "[Scheduler] FIRE:  alarm #1"


def text_file(folder):
    folder.joinpath("text.mp3").write_text("this is no sound\n" * 1000)
    return bookmark(folder / "text.mp3")


def empty_file(folder):
    folder.joinpath("empty.wav").touch()
    return bookmark(folder / "empty.wav")


def lost_file(folder):
    folder.joinpath("lost.wav").touch()
    lost = bookmark(folder / "lost.wav")
    folder.joinpath("lost.wav").unlink()
    return lost


NOT_FOUND = "[SoundPlayer] Sound not found: morning_glass"


@pytest.mark.parametrize("make, lines", [
    (text_file, ["[SoundPlayer] play error: …"]),
    (empty_file, ["[SoundPlayer] play error: …"]),
    (lost_file, ["[SoundPlayer] resolve bookmark error: …", NOT_FOUND]),
    (lambda folder: "bm90IGEgYm9va21hcms=", ["[SoundPlayer] resolve bookmark error: …", NOT_FOUND]),
    (lambda folder: "#not base64#", [NOT_FOUND]),
])
def test_a_file_that_cannot_be_played_gives_its_line(session, make, lines):
    session.start("sound")
    session.save(group("7:00", customSoundPath=make(session.folder), customSoundName="x", alarmCount=2))
    program = session.run()
    for minute in ("07:00", "07:01"):
        fired = program.wait_for("[Scheduler] FIRE…")
        assert session.clock.text(fired.when).startswith(minute + ":00")
        for line in lines:
            told = program.wait_for(line)
            assert len(told) > len(line.removesuffix("…"))
        session.clock.set("07:00:59.2")
    assert len(program.texts()) == len([t for t in program.texts() if t.startswith("[SoundPlayer]")]) + 2 + \
        len([t for t in program.texts() if t.startswith(("[Scheduler] N", "[Scheduler] S", "[P"))])


def test_a_sound_that_does_not_exist_gives_its_line(session):
    session.save(group(soundName="no such sound"))
    program = session.run()
    program.wait_for("[Scheduler] FIRE…")
    program.wait_for("[SoundPlayer] Sound not found: no such sound")
