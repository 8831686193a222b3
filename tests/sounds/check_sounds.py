#!/usr/bin/python3
"""Checks the built-in sounds against their technical bars; one line per file, status 1 if any fails.

    check_sounds.py --probe LOOP_PROBE [SOUND.mp3 ...]     default: all of resources/Sounds
    check_sounds.py --probe LOOP_PROBE --prove             breaks a good file in every way and expects it caught

Needs ffmpeg, ffprobe and numpy. LOOP_PROBE is the program built from loop_probe.cpp."""
import argparse
import json
import re
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import numpy as np

SOUNDS = Path(__file__).resolve().parents[2] / "resources" / "Sounds"
CATALOGUE = """morning_glass sunrise_quilt porchlight_morning dawn_bird_drift zen_garden_awake hazy_morning_pulse
               wakeup_pulse cosmic_alarm_run event_horizon mouse_chase_jive sashi_nomi""".split()
RATE = 44100
QUIET = 10 ** (-50 / 20)  # below this a listener hears nothing next to music at -16 LUFS
UNLIKE_DB = 2.0           # least difference of two pieces' average spectra


class Unreadable(Exception):
    pass


def run(*command):
    done = subprocess.run(command, capture_output=True)
    if done.returncode != 0:
        raise Unreadable((done.stderr.decode(errors="replace").strip().splitlines() or ["failed"])[-1])
    return done


def longest_quiet_run(audio):
    """In milliseconds, both channels together."""
    loud = np.flatnonzero(np.abs(audio).max(axis=1) >= QUIET)
    edges = np.concatenate([[-1], loud, [len(audio)]])
    return (np.diff(edges).max() - 1) * 1000 / RATE


def largest_step(audio):
    return np.abs(np.diff(audio, axis=0)).max()


def decode(path):
    raw = run("ffmpeg", "-v", "error", "-i", path, "-f", "f32le", "-ac", "2", "-ar", str(RATE), "-").stdout
    return np.frombuffer(raw, "<f4").reshape(-1, 2)


def measure(path, probe):
    """Everything the bars speak of, as a dictionary."""
    stream, = json.loads(run("ffprobe", "-v", "error", "-select_streams", "a", "-of", "json", "-show_entries",
                             "stream=codec_name,sample_rate,channels", path).stdout)["streams"]
    audio = decode(path)
    summary = run("ffmpeg", "-nostats", "-i", path, "-af", "ebur128=peak=true", "-f", "null", "-").stderr.decode()
    summary = summary[summary.rindex("Summary:"):]
    heard = np.flatnonzero(np.abs(audio).max(axis=1) >= QUIET)
    values = {
        "format": (stream["codec_name"], int(stream["sample_rate"]), stream["channels"]),
        "size": Path(path).stat().st_size,
        "seconds": len(audio) / RATE,
        "lufs": float(re.search(r"I:\s+(\S+) LUFS", summary)[1]),
        "peak": float(re.search(r"Peak:\s+(\S+) dBFS", summary)[1]),
        "lead": (heard[0] if len(heard) else len(audio)) * 1000 / RATE,
        "exact": has_exact_length(path),
        "spectrum": band_spectrum(audio),
        "centroid": centroid(audio),
        "tempo": tempo(audio),
    }
    values.update(measure_seam(path, probe, audio))
    return values


def has_exact_length(path):
    """Whether the file tells the player how much encoder delay and padding to leave out."""
    head = Path(path).read_bytes()[:4096]
    tag = max(head.find(b"Xing"), head.find(b"Info"))
    return tag >= 0 and any(head[tag + 141:tag + 144])


def measure_seam(path, probe, audio):
    """The end of the first pass and the start of the second, as the player sends them to the sound card."""
    with tempfile.NamedTemporaryFile(suffix=".raw") as recording:
        run(probe, path, "2", recording.name)
        played = np.fromfile(recording.name, "<i2").reshape(-1, 2) / 32768
    seam, near, around = len(audio), round(0.05 * RATE), round(0.2 * RATE)
    if len(played) < seam + around:
        raise Unreadable("the player stopped before the second pass")
    blur = 44  # the codec rings for about a millisecond on both sides of a jump
    at_seam = played[seam - blur:seam + 4]
    beside = max(largest_step(played[seam - near:seam - blur]), largest_step(played[seam + blur:seam + near]))
    return {"gap": longest_quiet_run(played[seam - around:seam + around]),
            "step": largest_step(at_seam), "step_beside": beside, "step_inside": largest_step(played[near:seam - near]),
            "slip": slip(played[:RATE], played[seam - RATE // 10:seam + RATE])}


def slip(first, second):
    """How many milliseconds late (or early) the second pass starts; second begins 100 ms before the seam."""
    size = 1 << (len(first) + len(second)).bit_length()
    likeness = np.fft.irfft(np.fft.rfft(second.sum(axis=1), size) * np.conj(np.fft.rfft(first.sum(axis=1), size)))
    return (int(np.argmax(likeness[:2 * RATE // 10])) - RATE // 10) * 1000 / RATE


def frames(audio, size, hop):
    mono = audio.mean(axis=1)
    windows = np.lib.stride_tricks.sliding_window_view(mono, size)[::hop]
    return np.abs(np.fft.rfft(windows * np.hanning(size), axis=1))


def band_spectrum(audio):
    """Average level in dB of third-octave bands, relative to the whole."""
    power = (frames(audio, 4096, 4096) ** 2).mean(axis=0)
    edges = (50 * 2 ** (np.arange(26) / 3) * 4096 / RATE).astype(int)
    bands = np.array([power[low:max(high, low + 1)].sum() for low, high in zip(edges, edges[1:])])
    return 10 * np.log10(bands / bands.sum() + 1e-6)


def centroid(audio):
    """Centre of gravity of the spectrum in Hz, frames weighted by their loudness."""
    magnitude = frames(audio, 4096, 4096).sum(axis=0)
    return float((np.fft.rfftfreq(4096, 1 / RATE) * magnitude).sum() / magnitude.sum())


def tempo(audio):
    """Strongest pulse between 50 and 240 a minute, from the regularity of the onsets."""
    hop = 256
    levels = np.log1p(100 * frames(audio, 1024, hop))
    onsets = np.maximum(np.diff(levels, axis=0), 0).sum(axis=1)
    onsets -= onsets.mean()
    size = 1 << (2 * len(onsets)).bit_length()
    regular = np.fft.irfft(np.abs(np.fft.rfft(onsets, size)) ** 2)[:len(onsets)]
    lags = np.arange(int(60 / 240 * RATE / hop), int(60 / 50 * RATE / hop))
    rates = 60 * RATE / hop / lags
    preference = np.exp(-0.5 * (np.log2(rates / 110) / 0.9) ** 2)
    return float(rates[np.argmax(regular[lags] * preference)])


BARS = {
    "format": lambda v: v["format"] == ("mp3", RATE, 2),
    "size": lambda v: v["size"] <= 1_200_000,
    "duration": lambda v: 20 <= v["seconds"] <= 60,
    "loudness": lambda v: abs(v["lufs"] + 16) <= 2,
    "true peak": lambda v: v["peak"] <= -1,
    "leading silence": lambda v: v["lead"] <= 50,
    "gap at the seam": lambda v: v["gap"] <= 30,
    "click at the seam": lambda v: v["step"] <= min(v["step_beside"], v["step_inside"]),
    "second pass off the beat": lambda v: v["exact"] and abs(v["slip"]) <= 1,
}


def examine(path, probe):
    """(values or None, list of failed bars)"""
    try:
        values = measure(str(path), probe)
    except (Unreadable, ValueError, OSError) as error:
        return None, [f"unreadable ({error})"]
    return values, [name for name, holds in BARS.items() if not holds(values)]


def find_twins(results):
    """Adds a failure to every piece whose average spectrum nearly equals another's."""
    measured = [(path, values, failures) for path, values, failures in results if values]
    for index, (path, values, failures) in enumerate(measured):
        for other, other_values, _ in measured[:index]:
            distance = np.sqrt(np.mean((values["spectrum"] - other_values["spectrum"]) ** 2))
            if distance < UNLIKE_DB:
                failures.append(f"sounds like {other.stem} ({distance:.1f} dB)")


def report(path, values, failures):
    verdict = "FAIL: " + ", ".join(failures) if failures else "ok"
    if values is None:
        return f"{path.stem:19} {verdict}"
    return (f"{path.stem:19} {values['seconds']:5.1f} s {values['size'] / 1e6:5.2f} MB {values['lufs']:6.1f} LUFS "
            f"{values['peak']:5.1f} dBTP  lead {values['lead']:4.1f} ms  gap {values['gap']:5.1f} ms  "
            f"step {values['step']:.3f} (beside {values['step_beside']:.3f}, inside {values['step_inside']:.3f})  "
            f"slip {values['slip']:4.1f} ms  centroid {values['centroid']:4.0f} Hz  tempo {values['tempo']:3.0f}  {verdict}")


def check(paths, probe):
    with ThreadPoolExecutor(2) as pool:
        results = [(path, *found) for path, found in zip(paths, pool.map(lambda path: examine(path, probe), paths))]
    find_twins(results)
    for result in results:
        print(report(*result))
    failed = sum(bool(failures) for _, _, failures in results)
    print(f"{len(results) - failed} passed, {failed} failed")
    return failed


def encode(audio, path, *options):
    subprocess.run(["ffmpeg", "-v", "error", "-y", "-f", "f32le", "-ar", str(RATE), "-ac", "2", "-i", "-",
                    "-c:a", "libmp3lame", "-q:a", "4", *options, path],
                   input=np.ascontiguousarray(audio, "<f4").tobytes(), check=True)


def prove(source, probe):
    """Every bar must fail on a file made to break it, and none on a fresh copy of the good one."""
    good = decode(str(source))
    silence = np.zeros((RATE, 2))
    ramp = np.zeros((len(good), 1))
    ramp[-RATE // 2:, 0] = np.linspace(0, 0.5, RATE // 2)
    broken = [
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
        ("second pass off the beat", good, ("-write_xing", "0")),
    ]
    missed = 0
    with tempfile.TemporaryDirectory() as folder:
        def spoil(number):
            path = Path(folder) / f"broken{number}.mp3"
            encode(broken[number][1], str(path), *broken[number][2])
            return examine(path, probe)[1]

        with ThreadPoolExecutor(2) as pool:
            outcomes = list(pool.map(spoil, range(len(broken))))
        for (bar, _, _), failures in zip(broken, outcomes):
            caught = bar in failures if bar else not failures
            missed += not caught
            print(f"{'ok  ' if caught else 'MISS'} {bar or 'a good file'}: {', '.join(failures) or 'passes'}")
        path = Path(folder) / "broken.mp3"
        path.write_text("not a sound\n")
        cases = [("unreadable", examine(path, probe)[1])]
        values, _ = examine(source, probe)
        twins = [(source, values, []), (source, values, [])]
        find_twins(twins)
        cases.append(("sounds like", twins[1][2]))
    for bar, failures in cases:
        caught = any(failure.startswith(bar) for failure in failures)
        missed += not caught
        print(f"{'ok  ' if caught else 'MISS'} {bar}: {', '.join(failures)}")
    count = len(broken) + len(cases)
    print(f"{count - missed} passed, {missed} failed")
    return missed


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--probe", required=True)
    parser.add_argument("--prove", action="store_true")
    parser.add_argument("sounds", nargs="*", type=Path)
    options = parser.parse_args()
    if options.prove:
        source = (options.sounds or [SOUNDS / "cosmic_alarm_run.mp3"])[0]
        return 1 if prove(source, options.probe) else 0
    paths = options.sounds or [SOUNDS / (name + ".mp3") for name in CATALOGUE]
    return 1 if check(paths, options.probe) else 0


if __name__ == "__main__":
    sys.exit(main())
