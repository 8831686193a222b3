"""A private sound server with a null sink, recordings of it, and their analysis."""

import ctypes
import time
from pathlib import Path

import numpy

from process import Process

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
        deadline = time.monotonic() + 20
        while not socket.exists():
            if time.monotonic() > deadline or not self.is_running():
                raise AssertionError("the sound server does not start")
            time.sleep(0.02)


class Recording:
    """Records the sink during a `with` statement, in mono, from -1 to 1."""

    def __init__(self, folder, env):
        self._file = Path(folder, f"recording-{time.monotonic_ns()}")
        with self._file.open("wb") as output:
            self._process = Process(["parec", "--device=kova.monitor", "--format=s16le", f"--rate={RATE}",
                                     "--channels=1", "--latency-msec=10"], env, stdout=output)
        while self._file.stat().st_size == 0:
            if not self._process.is_running():
                raise AssertionError("the recording does not start")
            time.sleep(0.005)
        self.started = time.monotonic()

    def samples(self):
        size = self._file.stat().st_size // 2
        return numpy.fromfile(self._file, dtype="<i2", count=size) / 32768

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._process.kill()


def loudness(samples, step=0.05):
    """Returns the root mean square of each step of that many seconds."""
    size = int(step * RATE)
    whole = samples[:len(samples) // size * size].reshape(-1, size)
    return numpy.sqrt((whole ** 2).mean(axis=1))


def sounding(samples, threshold=0.002, step=0.02, shortest_pause=0.5):
    """Returns the stretches (from, to) in seconds that are not silent; shorter pauses do not split them."""
    stretches = []
    for index in numpy.flatnonzero(loudness(samples, step) > threshold):
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


class _Info(ctypes.Structure):
    _fields_ = [("frames", ctypes.c_int64), ("rate", ctypes.c_int), ("channels", ctypes.c_int),
                ("format", ctypes.c_int), ("sections", ctypes.c_int), ("seekable", ctypes.c_int)]


_FORMATS = {".wav": 0x010002, ".aiff": 0x020002, ".flac": 0x170002, ".ogg": 0x200060, ".mp3": 0x230082}


def _transfer(path, mode, info, data=None):
    """Reads or writes a whole file with libsndfile, a dependency of the sound server."""
    library = ctypes.CDLL("libsndfile.so.1")
    library.sf_open.restype = ctypes.c_void_p
    library.sf_readf_float.restype = library.sf_writef_float.restype = ctypes.c_int64
    file = ctypes.c_void_p(library.sf_open(str(path).encode(), mode, ctypes.byref(info)))
    assert file, f"{path} cannot be opened"
    if data is None:
        data = numpy.zeros(info.frames * info.channels, dtype=numpy.float32)
    transfer = library.sf_readf_float if mode == 0x10 else library.sf_writef_float
    frames = transfer(file, data.ctypes.data_as(ctypes.c_void_p), ctypes.c_int64(len(data) // info.channels))
    library.sf_close(file)
    return data, frames


def write(path, samples):
    """Writes a sound file in the format of its suffix."""
    info = _Info(0, RATE, 1, _FORMATS[path.suffix])
    _transfer(path, 0x20, info, samples.astype(numpy.float32))


def read(path):
    """Reads a sound file as mono samples at RATE."""
    info = _Info()
    data, frames = _transfer(path, 0x10, info)
    mono = data.reshape(-1, info.channels)[:frames].mean(axis=1)
    if info.rate != RATE:
        times = numpy.arange(int(len(mono) * RATE / info.rate)) * info.rate / RATE
        mono = numpy.interp(times, numpy.arange(len(mono)), mono)
    return mono
