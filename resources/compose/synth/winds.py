"""Wind instruments and whistles; for the parameters see voices."""
import numpy as np

from .score import RATE, hertz
from .voices import band, clock, envelope, harmonics


def shakuhachi(rng, note, seconds, velocity=0.6, scoop=0.8, fall=0.0):
    """Bamboo flute: breath noise, slow-growing vibrato, scooped attack, optional falling end."""
    time = clock(seconds)
    freq = hertz(note)
    vibrato = 0.22 * np.clip((time - 0.5) / 1.2, 0, 1) * np.sin(2 * np.pi * (4.6 * time + 0.3 * np.sin(1.1 * time)))
    bend = -scoop * np.exp(-time / 0.09) - fall * np.clip((time - seconds + 0.5) / 0.5, 0, 1) ** 2
    curve = freq * 2 ** ((vibrato + bend) / 12)
    swell = envelope(seconds, 0.13, min(0.6, seconds / 2)) * (0.75 + 0.25 * np.sin(np.pi * time / seconds))
    tone = harmonics(curve, {1: 1.0, 2: 0.32, 3: 0.16, 4: 0.05}.get)
    noise = rng.normal(size=len(time))
    breath = band(noise, 0.85 * freq, 1.2 * freq) * 2.2 + 0.5 * band(noise, 1.8 * freq, 5.5 * freq)
    chiff = band(noise, 1500, 6000) * np.exp(-time / 0.05) * np.clip(time / 0.01, 0, 1)
    flutter = 1 + 0.35 * vibrato
    return 0.35 * velocity * (swell * (tone * flutter + 0.22 * breath) + 0.25 * chiff)


def reed(rng, note, seconds, velocity=0.6, scoop=0.6, vibrato=0.25):
    """Smoky clarinet-saxophone lead with late vibrato."""
    time = clock(seconds)
    freq = hertz(note)
    waver = vibrato * np.clip((time - 0.25) / 0.6, 0, 1) * np.sin(2 * np.pi * 5.3 * time)
    curve = freq * 2 ** ((waver - scoop * np.exp(-time / 0.05)) / 12)
    open_up = 1100 + 2200 * velocity * envelope(seconds, 0.09, min(0.4, seconds / 2))

    def level(k):
        if k > 22:
            return None
        formant = 1 + 1.1 * np.exp(-((k * freq - 1250) / 450) ** 2)
        return (1.0 if k % 2 else 0.55) / k ** 0.8 * formant / (1 + (k * freq / open_up) ** 2)

    tone = harmonics(curve, level)
    air = 0.06 * band(rng.normal(size=len(time)), 900, 5000)
    return 0.4 * velocity * (tone + air) * envelope(seconds, 0.045, min(0.18, seconds / 2))


def muted_brass(rng, note, seconds, velocity=0.7):
    """Trumpet with a plunger mute: nasal peak, short attack."""
    time = clock(seconds)
    freq = hertz(note)
    curve = freq * 2 ** ((-0.5 * np.exp(-time / 0.03) + 0.12 * np.sin(2 * np.pi * 5.8 * time)
                          * np.clip((time - 0.2) * 3, 0, 1)) / 12)
    wah = 1300 + 900 * np.clip(time / 0.1, 0, 1)

    def level(k):
        if k > 24:
            return None
        return k ** -0.55 * np.exp(-((k * freq - wah) / 1500) ** 2) + 0.12 / k

    return 0.32 * velocity * harmonics(curve, level) * envelope(seconds, 0.018, min(0.07, seconds / 2))


def whistle(contour, seconds, level=0.5, trill=0.0, trill_rate=30.0):
    """Bird syllable. contour: frequencies in Hz, evenly spaced over the duration; trill: depth of a fast vibrato."""
    time = clock(seconds)
    curve = np.interp(time / seconds, np.linspace(0, 1, len(contour)), contour)
    curve = curve * (1 + trill * np.sin(2 * np.pi * trill_rate * time))
    phase = 2 * np.pi * np.cumsum(curve) / RATE
    shape = np.sin(np.pi * np.clip(time / seconds, 0, 1)) ** 0.7
    return level * shape * (np.sin(phase) + 0.10 * np.sin(2 * phase))
