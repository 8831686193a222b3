"""A private sound server with a null sink, recordings of it, and their analysis."""

import subprocess
import time
from pathlib import Path

import numpy

from process import Process, wait_until

RATE = 44100


class SoundServer(Process):
    def __init__(self, runtime, env):
        socket = Path(runtime, "pulse/native")
        socket.parent.mkdir(mode=0o700, exist_ok=True)
        socket.unlink(missing_ok=True)
        super().__init__(
            ["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
             "-L", f"module-null-sink sink_name=kova rate={RATE} channels=2",
             "-L", f"module-native-protocol-unix auth-anonymous=1 socket={socket}"], env)
        wait_until(socket.exists, 20)


class Recording(Process):
    """Records the sink during a `with` statement, in mono, from -1 to 1."""

    def __init__(self, folder, env):
        self._file = Path(folder, f"recording-{time.monotonic_ns()}")
        with self._file.open("wb") as output:
            super().__init__(["parec", "--device=kova.monitor", "--format=s16le", f"--rate={RATE}",
                              "--channels=1", "--latency-msec=10"], env, stdout=output)
        wait_until(lambda: self._file.stat().st_size > 0)

    def samples(self):
        size = self._file.stat().st_size // 2
        return numpy.fromfile(self._file, dtype="<i2", count=size) / 32768

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.kill()


def sounding(samples, threshold=0.002, step=0.02, shortest_pause=0.5):
    """Returns the stretches (from, to) in seconds that are not silent; shorter pauses do not split them."""
    size = int(step * RATE)
    steps = samples[:len(samples) // size * size].reshape(-1, size)
    stretches = []
    for index in numpy.flatnonzero(numpy.sqrt((steps ** 2).mean(axis=1)) > threshold):
        begin, end = index * step, (index + 1) * step
        if stretches and begin - stretches[-1][1] < shortest_pause:
            stretches[-1][1] = end
        else:
            stretches.append([begin, end])
    return stretches


def find(sound, samples):
    """Returns where the samples correlate best with the sound, as (second, gain, likeness). The likeness is the
    normalised correlation: 1 for the sound alone, about 0 for an unrelated one."""
    size = 1 << (len(sound) + len(samples)).bit_length()
    spectrum = numpy.conj(numpy.fft.rfft(sound, size)) * numpy.fft.rfft(samples, size)
    correlation = numpy.fft.irfft(spectrum, size)[:len(samples) - len(sound) + 1]
    power = (sound ** 2).sum()
    energy = numpy.cumsum(numpy.concatenate([[0], samples ** 2]))
    there = energy[len(sound):] - energy[:-len(sound)]
    likeness = correlation / numpy.sqrt(power * numpy.maximum(there, 1e-6 * there.max() + 1e-12))
    at = int(likeness.argmax())
    return at / RATE, correlation[at] / power, likeness[at]


def heard(sound, samples, part=0.2):
    """Returns the median (gain, likeness) of the sound's parts in the samples. The median ignores dropouts on a
    busy machine."""
    parts = sound[:len(sound) // int(part * RATE) * int(part * RATE)].reshape(-1, int(part * RATE))
    found = [find(one, samples)[1:] for one in parts if one.std() > 0.1 * sound.std()]
    return numpy.median(found, axis=0)


def chirp():
    """A sound that differs from itself at every other position, 0.7 s long."""
    times = numpy.arange(0, 0.7, 1 / RATE)
    return 0.5 * numpy.sin(2 * numpy.pi * (300 + 2000 * times) * times)


def write(path, samples):
    """Writes a sound file in the format of its suffix. Returns its path."""
    subprocess.run(["ffmpeg", "-v", "error", "-y", "-f", "f32le", "-ar", str(RATE), "-ac", "1", "-i", "-", path],
                   input=samples.astype("<f4").tobytes(), check=True)
    return path


def read(path):
    """Reads a sound file as mono samples at RATE."""
    raw = subprocess.check_output(["ffmpeg", "-v", "error", "-i", path, "-f", "s16le", "-ac", "1", "-ar", str(RATE), "-"])
    return numpy.frombuffer(raw, "<i2") / 32768
