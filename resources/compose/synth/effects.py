"""Circular effects on stereo loops: the end of the loop continues at its start."""
import numpy as np
from scipy import signal

from .score import RATE


def convolve_loop(loop, response):
    """Circular convolution with a stereo impulse response."""
    length = len(loop)
    folded = np.zeros((length, 2))
    for first in range(0, len(response), length):
        part = response[first:first + length]
        folded[:len(part)] += part
    spectrum = np.fft.rfft(loop, axis=0) * np.fft.rfft(folded, axis=0)
    return np.fft.irfft(spectrum, length, axis=0)


def shape_spectrum(loop, gain_of_frequency):
    """Zero-phase equaliser: gain_of_frequency maps an array of frequencies in Hz to linear gains."""
    spectrum = np.fft.rfft(loop, axis=0)
    frequencies = np.fft.rfftfreq(len(loop), 1 / RATE)
    return np.fft.irfft(spectrum * gain_of_frequency(frequencies)[:, None], len(loop), axis=0)


def low_pass(cutoff, order=2):
    return lambda loop: shape_spectrum(loop, lambda f: 1 / np.sqrt(1 + (f / cutoff) ** (2 * order)))


def high_pass(cutoff, order=2):
    return lambda loop: shape_spectrum(
        loop, lambda f: 1 / np.sqrt(1 + (cutoff / np.maximum(f, 1e-3)) ** (2 * order)))


def bell_curve(centre, gain_db, octaves=1.0):
    """A peaking equaliser band."""
    def curve(f):
        distance = np.log2(np.maximum(f, 1) / centre) / octaves
        return 10 ** (gain_db / 20 * np.exp(-0.5 * (2 * distance) ** 2))
    return lambda loop: shape_spectrum(loop, curve)


def sweep_low_pass(cutoffs, resonance=0.0, order=2):
    """Low-pass filter whose cutoff passes through the given values in Hz, evenly spaced over the loop."""
    size, hop = 2048, 512

    def effect(loop):
        padded = np.concatenate([loop[-size:], loop, loop[:2 * size]])
        frequencies = np.fft.rfftfreq(size, 1 / RATE)
        window = signal.windows.hann(size, sym=False)
        out = np.zeros_like(padded)
        for first in range(0, len(padded) - size + 1, hop):
            place = ((first - size + size / 2) / len(loop)) % 1.0
            cutoff = np.exp(np.interp(place, np.linspace(0, 1, len(cutoffs)), np.log(cutoffs)))
            gain = 1 / np.sqrt(1 + (frequencies / cutoff) ** (2 * order))
            gain *= 1 + resonance * np.exp(-(np.log2(np.maximum(frequencies, 1) / cutoff) * 4) ** 2)
            frame = np.fft.rfft(padded[first:first + size] * window[:, None], axis=0)
            frame = np.fft.irfft(frame * gain[:, None], size, axis=0)
            out[first:first + size] += frame * window[:, None] / 1.5
        return out[size:size + len(loop)]
    return effect


def echo(seconds, feedback=0.4, wet=0.35, damping=4000, cross=True):
    """Echoes; with cross they alternate between the sides."""
    def effect(loop):
        repeat, out = low_pass(damping, 1)(loop), loop.copy()
        delay, level = round(seconds * RATE), wet
        for count in range(1, 12):
            shifted = np.roll(repeat, count * delay, axis=0)
            out += level * (shifted[:, ::-1] if cross and count % 2 else shifted)
            level *= feedback
        return out
    return effect


def chorus(depth=0.003, rate=0.5, wet=0.5):
    """Slowly modulated copies. rate is rounded to whole periods per loop."""
    def effect(loop):
        length = len(loop)
        turns = max(1, round(rate * length / RATE))
        time = np.arange(length)
        out = loop.copy()
        for side in (0, 1):
            for phase in (0.0, 0.37):
                lfo = np.sin(2 * np.pi * (turns * time / length + phase + side * 0.25))
                place = time - (0.012 + depth * lfo) * RATE
                out[:, side] += wet * np.interp(place % length, np.arange(length + 1),
                                                np.append(loop[:, side], loop[0, side]))
        return out / (1 + wet)
    return effect


def tremolo(rate, depth, spread=0.5):
    """Periodic level change. spread: phase offset of the right side."""
    def effect(loop):
        turns = max(1, round(rate * len(loop) / RATE))
        phase = turns * np.arange(len(loop)) / len(loop)
        swing = np.stack([np.sin(2 * np.pi * phase), np.sin(2 * np.pi * (phase + spread))], axis=1)
        return loop * (1 - depth / 2 + depth / 2 * swing)
    return effect


def wow(depth, rate):
    """Tape flutter: a periodic delay of up to depth seconds."""
    def effect(loop):
        length = len(loop)
        turns = max(1, round(rate * length / RATE))
        time = np.arange(length)
        place = time + depth * RATE * (np.sin(2 * np.pi * turns * time / length)
                                       + 0.4 * np.sin(2 * np.pi * (3 * turns + 1) * time / length))
        grid = np.arange(length + 1)
        return np.stack([np.interp(place % length, grid, np.append(loop[:, side], loop[0, side]))
                         for side in (0, 1)], axis=1)
    return effect


def duck(score, beats, depth=0.5, release=0.25):
    """Ducking: lowers the level at the beats and restores it within release seconds."""
    def effect(loop):
        gain = np.ones(len(loop))
        ramp = 1 - depth * np.exp(-np.arange(round(4 * release * RATE)) / (release * RATE) * 2)
        for beat in beats:
            first = round(score.seconds(beat) * RATE)
            place = (first + np.arange(len(ramp))) % len(loop)
            gain[place] = np.minimum(gain[place], ramp)
        return loop * gain[:, None]
    return effect


def drive(amount):
    """Soft saturation."""
    return lambda loop: np.tanh(loop * amount) / amount


def room(seconds, brightness=6000, predelay=0.012, seed=7):
    """Impulse response of a room: early reflections, then noise whose high frequencies decay first."""
    rng = np.random.default_rng(seed)
    length = round(1.3 * seconds * RATE)
    time = np.arange(length) / RATE
    response = np.zeros((length, 2))
    for low, high, share in ((80, 400, 1.05), (400, 1500, 1.0), (1500, 4000, 0.8),
                             (4000, 9000, 0.55), (9000, 16000, 0.35)):
        band = signal.butter(2, [low, high], "band", fs=RATE, output="sos")
        noise = signal.sosfilt(band, rng.normal(size=(length, 2)), axis=0)
        level = 1 / np.sqrt(1 + (np.sqrt(low * high) / brightness) ** 2)
        response += level * noise * (10 ** (-3 * time / (seconds * share)))[:, None]
    response *= np.minimum(1, time / 0.02)[:, None]
    for side in (0, 1):
        for _ in range(9):
            response[round(rng.uniform(0.004, 0.05) * RATE), side] += rng.choice([-1, 1]) * 1.5
    response /= np.sqrt(np.sum(response ** 2) / 2)
    return np.concatenate([np.zeros((round(predelay * RATE), 2)), response])
