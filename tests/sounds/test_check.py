"""Tests resources/compose/check with sounds that violate each of its limits: test_check.py LOOP_PROBE"""

import runpy
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path
from types import SimpleNamespace

import numpy as np

COMPOSE = Path(__file__).resolve().parents[2] / "resources/compose"
checking = SimpleNamespace(**runpy.run_path(str(COMPOSE / "check")))
RATE = checking.RATE


def encode(audio, path, *options):
    subprocess.run(["ffmpeg", "-v", "error", "-y", "-f", "f32le", "-ar", str(RATE), "-ac", "2", "-i", "-",
                    "-c:a", "libmp3lame", "-q:a", "4", *options, path],
                   input=np.ascontiguousarray(audio, "<f4").tobytes(), check=True)


def defects(good):
    """Returns (violated limit, samples, encoder options) of each file; the limit is None for a good one."""
    silence = np.zeros((RATE, 2))
    ramp = np.zeros((len(good), 1))
    ramp[-RATE // 2:, 0] = np.linspace(0, 0.5, RATE // 2)
    return [
        (None, good, ()),
        ("format", good, ("-ac", "1")),
        ("format", good, ("-ar", "48000")),
        ("size", np.tile(good, (2, 1))[:59 * RATE], ("-q:a", "0")),
        ("duration", good[:15 * RATE], ()),
        ("duration", np.tile(good, (3, 1)), ()),
        ("loudness", good * 0.6, ()),
        ("loudness", good * 1.4, ()),
        ("true peak", good * 3.0, ()),
        ("leading silence", np.concatenate([silence[:RATE // 10], good]), ()),
        ("gap at the seam", np.concatenate([good, silence[:RATE // 5]]), ()),
        ("gap at the seam", np.concatenate([good, silence[:RATE // 25]]), ()),
        ("click at the seam", good * 0.8 + ramp, ()),
        ("second pass out of time", good, ("-write_xing", "0")),
    ]


def main(probe):
    source = checking.SOUNDS / "cosmic_alarm_run.mp3"
    values, _ = checking.examine(source, probe)
    twins = [(source, values, []), (source, values, [])]
    checking.find_similar(twins)
    assert "sounds like" in twins[1][2][0]
    with tempfile.TemporaryDirectory() as folder, ThreadPoolExecutor(2) as pool:
        text = Path(folder, "text.mp3")
        text.write_text("not a sound\n")
        assert checking.examine(text, probe)[1][0].startswith("unreadable")

        def failures(case):
            number, (_, audio, options) = case
            path = Path(folder, f"{number}.mp3")
            encode(audio, path, *options)
            return checking.examine(path, probe)[1]

        cases = defects(checking.decode(str(source)))
        for (limit, *_), found in zip(cases, pool.map(failures, enumerate(cases))):
            print(f"{limit or 'a good file'}: {', '.join(found) or 'passes'}")
            assert any(failure.startswith(limit) for failure in found) if limit else not found


main(sys.argv[1])
