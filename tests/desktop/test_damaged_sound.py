"""Damaged sound files are repeated or rejected; none hangs or crashes its player."""

import os
import time
from random import Random

import numpy
import pytest

import sound
from groups import custom
from test_custom_sound import FORMATS

THOROUGH = pytest.mark.skipif("KOVA_THOROUGH" not in os.environ, reason="takes minutes")


def damaged(content, seed):
    """The content with some of its bytes overwritten, zeroed, removed or preceded by others."""
    random = Random(seed)
    begin, size = random.randrange(len(content)), random.choice((1, 16, 400))
    block = random.choice((random.randbytes(size), bytes(size), b"", random.randbytes(2 * size)))
    return content[:begin] + block + content[begin + size:]


@pytest.mark.parametrize("files", [
    pytest.param([(suffix, 1) for suffix in FORMATS], id="one of each format"),
    *(pytest.param([(suffix, seed) for seed in range(first, first + 50)], id=f"{suffix}-{first}",
                   marks=THOROUGH) for suffix in FORMATS for first in (0, 50))])
def test_damaged_files_are_repeated_or_rejected(session, files):
    groups = []
    for minute, (suffix, seed) in enumerate(files):
        good, file = session.folder / f"good.{suffix}", session.folder / f"{seed}.{suffix}"
        if not good.exists():
            sound.write(good, numpy.tile(sound.chirp(), 2))
        file.write_bytes(damaged(good.read_bytes(), seed))
        groups.append(custom(file, label=file.name, time=f"7:{minute}"))
    session.start("sound")
    session.save(*groups)
    program = session.run()
    for minute, name in enumerate(saved["label"] for saved in groups):
        session.clock.set_before(minute)
        program.wait_for(f"[Scheduler] FIRE: {name} alarm #1")
        with session.record() as recording:
            time.sleep(2.5)
        is_rejected = program.texts()[-1].startswith("[SoundPlayer]")
        assert is_rejected or sound.sounding(recording.samples()[-int(1.6 * sound.RATE):]), name
    assert not [text for text in program.texts() if "The player" in text or "has ended" in text]
