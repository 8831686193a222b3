"""Each built-in sound rings, and can be listened to beforehand."""

import re
import time

import pytest

import sound
from groups import group
from session import ASSISTED, ROOT, until

TITLES = dict(re.findall(r'QStringLiteral\("(\w+)"\), QStringLiteral\("(.+)"\)',
                         (ROOT / "audio/builtInSounds.cpp").read_text()))
assert len(TITLES) == 11


def likenesses(samples):
    """How much each of the sounds is like what is heard, by the first two seconds of its file."""
    return {name: sound.heard(sound.read(ROOT / f"resources/Sounds/{name}.mp3")[:2 * sound.RATE], samples)
            for name in TITLES}


def is_that(name, samples, volume):
    found = likenesses(samples)
    gain, likeness = found.pop(name)
    others = max(other for _, other in found.values())
    print(f"{name}: likeness {likeness:.4f}, gain {gain:.3f}, the others' {others:.2f}")
    assert likeness > 0.98 > 0.8 > others
    assert gain == pytest.approx(volume, rel=0.03)


@pytest.mark.parametrize("name, volume", [*((name, 0.8) for name in TITLES), ("wakeup_pulse", 0.25)])
def test_it_rings_with_the_groups_volume(session, name, volume):
    session.start("sound")
    session.save(group(soundName=name, volume=volume))
    with session.record() as recording:
        program = session.run()
        program.wait_for("[Scheduler] FIRE…")
        time.sleep(3)
    is_that(name, recording.samples(), volume)


@pytest.mark.slow
def test_it_can_be_listened_to_in_the_editor(session):
    session.start("session-bus", "display", "accessibility", "sound")
    session.run("06:50:00", ASSISTED)
    session.assist("press", "アラーム追加")
    for name, title in TITLES.items():
        with session.record() as recording:
            session.assist("press", f"{title} 試聴")
            heard = len(recording.samples()) + 3 * sound.RATE
            until(lambda: len(recording.samples()) > heard)
        is_that(name, recording.samples(), 0.8)
