"""Each built-in sound rings and can be previewed in the editor."""

import functools
import re

import pytest

import sound
from groups import group
from session import ASSISTED, ROOT, wait_until

TITLES = dict(re.findall(r'QStringLiteral\("(\w+)"\), QStringLiteral\("(.+)"\)',
                         (ROOT / "audio/builtInSounds.cpp").read_text()))
assert len(TITLES) == 11


@functools.cache
def file(name):
    """The beginning of the sound, as long as a test records it."""
    return sound.read(ROOT / f"resources/Sounds/{name}.mp3")[:11 * sound.RATE]


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
    others = max(likeness(other) for other in TITLES if other != name)
    print(f"{name}: likeness {likeness(name):.4f}, the others' at most {others:.2f}")
    assert others < 0.8
    assert 1 / sound.find(second, file(name))[1] == pytest.approx(volume, rel=0.03)


@pytest.mark.parametrize("name, volume", [*((name, 0.8) for name in TITLES), ("wakeup_pulse", 0.25)])
def test_an_alarm_plays_at_the_volume_of_its_group(session, name, volume):
    session.start("sound")
    session.save(group(soundName=name, volume=volume))
    with session.record() as recording:
        session.run().wait_for("[Scheduler] FIRE…")
        hears(recording, name, volume)


@pytest.mark.slow
def test_the_editor_previews_each_sound(session):
    session.start("session-bus", "display", "accessibility", "sound")
    session.run("06:50:00", ASSISTED)
    session.assist("press", "アラーム追加")
    with session.record() as recording:
        for name, title in TITLES.items():
            session.assist("press", f"{title} 試聴")
            hears(recording, name, 0.8)
