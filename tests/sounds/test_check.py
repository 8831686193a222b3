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
RATE, decode, examine, find_similar = checking.RATE, checking.decode, checking.examine, checking.find_similar


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


def test_check(source, probe):
    values, _ = examine(source, probe)
    twins = [(source, values, []), (source, values, [])]
    find_similar(twins)
    with tempfile.TemporaryDirectory() as folder:
        def outcome(case):
            number, (limit, audio, options) = case
            path = Path(folder) / f"broken{number}.mp3"
            if options is None:
                path.write_text("not a sound\n")
            else:
                encode(audio, str(path), *options)
            return limit, examine(path, probe)[1]

        broken = [*defects(decode(str(source))), ("unreadable", None, None)]
        with ThreadPoolExecutor(2) as pool:
            outcomes = [*pool.map(outcome, enumerate(broken)), ("sounds like", twins[1][2])]
    missed = 0
    for limit, failures in outcomes:
        caught = any(failure.startswith(limit) for failure in failures) if limit else not failures
        missed += not caught
        print(f"{'ok  ' if caught else 'MISS'} {limit or 'a good file'}: {', '.join(failures) or 'passes'}")
    print(f"{len(outcomes) - missed} passed, {missed} failed")
    return missed


if __name__ == "__main__":
    sys.exit(1 if test_check(checking.SOUNDS / "cosmic_alarm_run.mp3", sys.argv[1]) else 0)
