"""Each built-in sound rings."""

import functools

import pytest

import sound
from groups import group
from session import ROOT, wait_until

SOUNDS = {file.stem: file for file in (ROOT / "resources/Sounds").glob("*.mp3")}
assert len(SOUNDS) == 11


@functools.cache
def file(name):
    """The beginning of the sound, as long as a test records it."""
    return sound.read(SOUNDS[name])[:11 * sound.RATE]


def hears(recording, name, volume):
    """Waits for a second of the recording that occurs in the sound's file without a dropout."""
    def likeness(other):
        return sound.find(second, file(other))[2]

    def is_undisturbed():
        nonlocal second
        second = recording.samples()[-sound.RATE:]
        return len(second) == sound.RATE and second.any() and likeness(name) > 0.98

    second = None
    wait_until(is_undisturbed, 10, 0.2)
    assert max(likeness(other) for other in SOUNDS if other != name) < 0.8
    assert 1 / sound.find(second, file(name))[1] == pytest.approx(volume, rel=0.03)


def test_an_alarm_plays_at_the_volume_of_its_group(session):
    volumes = dict.fromkeys(SOUNDS, 0.8) | {"wakeup_pulse": 0.25}
    session.start("sound")
    session.save(*(group(f"7:{minute}", soundName=name, volume=volume)
                   for minute, (name, volume) in enumerate(volumes.items())))
    program = session.run()
    with session.record() as recording:
        for minute, (name, volume) in enumerate(volumes.items()):
            session.clock.set_before(minute)
            program.wait_for("[Scheduler] FIRE…")
            hears(recording, name, volume)
