"""Unpitched and percussive sounds, mono."""
import numpy as np

from .score import RATE, hertz
from .voices import band, clock, fade_out, modes


def kick(velocity=0.8, deep=48, snap=0.5, seconds=0.4):
    time = clock(seconds)
    phase = 2 * np.pi * np.cumsum(deep * (1 + 3.2 * np.exp(-time / 0.022))) / RATE
    click = snap * np.exp(-time / 0.004) * np.sin(2 * np.pi * 1800 * time)
    return fade_out(velocity * (np.sin(phase) * np.exp(-time / 0.13) + 0.2 * click))


def snare(rng, velocity=0.6, tone=190, seconds=0.3):
    time = clock(seconds)
    noise = band(rng.normal(size=len(time)), 900, 9000)
    return fade_out(velocity * (0.5 * noise * np.exp(-time / 0.07)
                                + 0.5 * np.sin(2 * np.pi * tone * time) * np.exp(-time / 0.05)))


def clap(rng, velocity=0.6):
    time = clock(0.3)
    noise = band(rng.normal(size=len(time)), 900, 4500)
    hands = sum(np.exp(-np.clip(time - at, 0, 1) / 0.009) * (time >= at) for at in (0, 0.011, 0.021))
    return fade_out(velocity * noise * (0.4 * hands + 0.5 * np.exp(-time / 0.09)))


def hat(rng, velocity=0.4, seconds=0.07, low=6500):
    time = clock(max(0.05, 4 * seconds))
    return fade_out(velocity * 0.6 * band(rng.normal(size=len(time)), low, 15000) * np.exp(-time / seconds))


def shaker(rng, velocity=0.4, seconds=0.09):
    time = clock(2 * seconds)
    shape = np.sin(np.pi * np.clip(time / seconds / 1.4, 0, 1)) ** 2
    return velocity * 0.5 * band(rng.normal(size=len(time)), 4000, 11000) * shape


def tambourine(rng, velocity=0.5):
    time = clock(0.3)
    jingles = sum(np.sin(2 * np.pi * freq * time + rng.uniform(0, 6)) for freq in
                  (5230, 6120, 7370, 8410, 9650, 10900))
    noise = band(rng.normal(size=len(time)), 5000, 14000)
    return fade_out(velocity * (0.08 * jingles + 0.35 * noise) * np.exp(-time / 0.06))


def ride(rng, velocity=0.4, seconds=1.2):
    time = clock(seconds)
    metal = sum(np.sin(2 * np.pi * freq * time + rng.uniform(0, 6)) * np.exp(-time / fall) for freq, fall in
                ((2870, 0.25), (3640, 0.3), (4510, 0.35), (5480, 0.3), (6890, 0.25), (8230, 0.2), (9710, 0.15)))
    wash = band(rng.normal(size=len(time)), 5000, 14000) * (0.25 * np.exp(-time / 0.3) + np.exp(-time / 0.012))
    return fade_out(velocity * (0.06 * metal + 0.3 * wash), 0.2)


def brush(rng, velocity=0.4, seconds=0.25, swish=False):
    """Wire brush on a snare: a tap, or a circular swish."""
    time = clock(seconds)
    noise = band(rng.normal(size=len(time)), 1200, 9000)
    shape = np.sin(np.pi * time / seconds) ** 1.5 if swish else np.exp(-time / 0.05) * np.clip(time / 0.003, 0, 1)
    return fade_out(velocity * 0.45 * noise * shape)


def woodblock(note="A4", velocity=0.6):
    return velocity * 0.8 * modes(hertz(note), 0.3, [(1, 1, 0.16), (2.6, 0.35, 0.08), (4.3, 0.15, 0.04)], 0.0008)


def rim(velocity=0.5):
    return velocity * modes(820, 0.15, [(1, 0.7, 0.07), (2.1, 0.6, 0.05), (3.7, 0.3, 0.03)], 0.0005)


def stomp(rng, velocity=0.6):
    """Boot on porch boards."""
    time = clock(0.35)
    wood = band(rng.normal(size=len(time)), 70, 420) * np.exp(-time / 0.035)
    return fade_out(velocity * (0.9 * wood + 0.7 * np.sin(2 * np.pi * 72 * time) * np.exp(-time / 0.07)))


def clink(rng, velocity=0.5, note="E7"):
    """Two small cups touching."""
    freq = hertz(note) * 2 ** (rng.uniform(-0.3, 0.3) / 12)
    partials = [(1, 1, 0.7), (1.53, 0.7, 0.5), (2.37, 0.5, 0.35), (3.9, 0.3, 0.15)]
    return 0.4 * velocity * modes(freq, 1.0, partials, 0.0006, beating=5)


def crackle(rng, seconds, density=9, level=0.05):
    """Stereo crackle of a dusty record."""
    length = round(seconds * RATE)
    out = 0.006 * level / 0.05 * rng.normal(size=(length, 2))
    for _ in range(round(density * seconds)):
        first = rng.integers(0, length - 60)
        tick = rng.normal() * np.exp(-np.arange(60) / rng.uniform(3, 14))
        out[first:first + 60] += level * tick[:, None] * rng.uniform(0.2, 1, 2)
    return out
