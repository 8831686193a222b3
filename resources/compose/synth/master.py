"""Mastering and encoding, with the same loudness and headroom for every piece."""
import subprocess

import numpy as np
from scipy import ndimage, signal

from .score import RATE

LOUDNESS = -16.0  # LUFS, integrated
CEILING = -2.0    # dBTP before encoding; the codec may exceed it slightly


def loudness(stereo):
    """Returns the integrated loudness in LUFS (ITU-R BS.1770, gated)."""
    def biquad(b, a, audio):
        return signal.lfilter(b, a, audio, axis=0)

    k = np.tan(np.pi * 1681.974450955533 / RATE)
    q, high = 0.7071752369554196, 10 ** (3.999843853973347 / 20)
    mid, a0 = high ** 0.4996667741545416, 1 + k / q + k * k
    weighted = biquad([(high + mid * k / q + k * k) / a0, 2 * (k * k - high) / a0, (high - mid * k / q + k * k) / a0],
                      [1, 2 * (k * k - 1) / a0, (1 - k / q + k * k) / a0], stereo)
    k, q = np.tan(np.pi * 38.13547087602444 / RATE), 0.5003270373238773
    a0 = 1 + k / q + k * k
    weighted = biquad([1, -2, 1], [1, 2 * (k * k - 1) / a0, (1 - k / q + k * k) / a0], weighted)

    hop = RATE // 10
    power = (weighted ** 2).sum(axis=1)
    steps = np.add.reduceat(power, np.arange(0, len(power) - hop + 1, hop))[:len(power) // hop]
    blocks = np.convolve(steps, np.ones(4), "valid") / (4 * hop)
    level = lambda mean: -0.691 + 10 * np.log10(mean + 1e-12)
    loud = blocks[level(blocks) > -70]
    return level(loud[level(loud) > level(loud.mean()) - 10].mean())


def limit(loop, ceiling_db):
    """Look-ahead limiter for the true peak, measured at four times the sample rate."""
    pad = 4096
    around = np.concatenate([loop[-pad:], loop, loop[:pad]])
    peaks = np.abs(signal.resample_poly(around, 4, 1, axis=0)).max(axis=1)
    peaks = peaks.reshape(-1, 4).max(axis=1)[pad:-pad]
    wanted = np.minimum(1, 10 ** (ceiling_db / 20) / np.maximum(peaks, 1e-9))
    window = round(0.05 * RATE) | 1
    held = ndimage.minimum_filter1d(wanted, window, mode="wrap")
    smooth = signal.windows.hann(window)
    gain = ndimage.convolve1d(held, smooth / smooth.sum(), mode="wrap")
    return loop * gain[:, None]


def master(loop):
    """Removes rumble, then adjusts gain and limiter in turn until the loudness is reached."""
    from .effects import high_pass
    loop = high_pass(28, 3)(loop)
    loop = loop - loop.mean(axis=0)
    gain = 10 ** ((LOUDNESS - loudness(loop)) / 20)
    for _ in range(5):
        out = limit(loop * gain, CEILING)
        gain *= 10 ** ((LOUDNESS - loudness(out)) / 20)
    return out


def encode(loop, path, title):
    """Writes a variable-rate MP3 that decodes to exactly the loop's length.

    The codec distorts samples beside silence, so the loop's end is prepended and its start appended. The LAME
    tag declares these margins as encoder delay and padding, which players skip."""
    before, after = 2304, 1152
    wrapped = np.concatenate([loop[-before:], loop, loop[:after]])
    samples = np.round(np.clip(wrapped, -1, 1) * (2 ** 31 - 1)).astype("<i4")
    subprocess.run(["lame", "--silent", "-r", "-s", "44.1", "--bitwidth", "32", "--signed", "--little-endian",
                    "-m", "j", "-q", "0", "-V", "3", "--noreplaygain", "--id3v2-only", "--id3v2-utf16",
                    "--tt", title, "-", str(path)], input=samples.tobytes(), stderr=subprocess.DEVNULL, check=True)
    widen_margins(path, before, after)


def widen_margins(path, before, after):
    """Increases the encoder delay and padding in the LAME tag (12 bits each) and updates the tag's checksum."""
    data = bytearray(path.read_bytes())
    frame = data.index(b"Xing") - 36
    fields = frame + 177
    packed = int.from_bytes(data[fields:fields + 3], "big")
    delay, padding = (packed >> 12) + before, (packed & 0xFFF) + after
    assert max(delay, padding) < 4096 and tag_checksum(data[frame:frame + 190]) == data[frame + 190:frame + 192]
    data[fields:fields + 3] = (delay << 12 | padding).to_bytes(3, "big")
    data[frame + 190:frame + 192] = tag_checksum(data[frame:frame + 190])
    path.write_bytes(data)


def tag_checksum(data):
    """CRC-16 (polynomial 0x8005, reflected)."""
    value = 0
    for byte in data:
        value ^= byte
        for _ in range(8):
            value = value >> 1 ^ (0xA001 if value & 1 else 0)
    return value.to_bytes(2, "big")
