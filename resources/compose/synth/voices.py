"""Pitched instruments. Each returns one mono note. velocity: 0 to 1, louder and brighter."""
import numpy as np
from scipy import signal

from .score import RATE, hertz


def clock(seconds):
    return np.arange(round(seconds * RATE)) / RATE


def envelope(seconds, attack, release):
    """Envelope with a smooth attack and release (in seconds)."""
    time = clock(seconds)
    rise = np.clip(time / attack, 0, 1)
    fall = np.clip((seconds - time) / release, 0, 1)
    return np.sin(rise * np.pi / 2) ** 2 * np.sin(fall * np.pi / 2) ** 2


def fade_out(sound, seconds=0.03):
    count = min(len(sound), round(seconds * RATE))
    sound[-count:] *= np.cos(np.linspace(0, np.pi / 2, count)) ** 2
    return sound


def band(noise, low, high, order=2):
    return signal.sosfilt(signal.butter(order, [low, min(high, 20000)], "band", fs=RATE,
                                        output="sos"), noise)


def modes(freq, seconds, partials, attack=0.002, beating=0.0):
    """Struck body. partials: (ratio, level, decay time to −60 dB); beating: detuning in Hz of a copy of each."""
    time = clock(seconds)
    out = np.zeros(len(time))
    for index, (ratio, level, decay) in enumerate(partials):
        if freq * ratio > 18000:
            continue
        fall = level * 10 ** (-3 * time / decay)
        phase = 2.4 * index
        out += fall * np.sin(2 * np.pi * (freq * ratio - beating / 2) * time + phase)
        if beating:
            out += 0.7 * fall * np.sin(2 * np.pi * (freq * ratio + beating / 2) * time + 2 * phase)
    return fade_out(out * np.clip(time / attack, 0, 1), 0.05)


def glass_bell(note, seconds=3.5, velocity=0.7):
    freq = hertz(note)
    reach = (900 / freq) ** 0.4
    partials = [(1, 1.0, 3.2), (2.0, 0.25, 2.0), (2.756, 0.45 * velocity, 1.3), (4.07, 0.12, 0.9),
                (5.404, 0.28 * velocity ** 2, 0.5), (8.93, 0.12 * velocity ** 2, 0.25)]
    sound = modes(freq, seconds, [(r, a, d * reach) for r, a, d in partials], beating=0.9)
    return 0.5 * velocity * sound


def bowed_glass(note, seconds, velocity=0.5):
    """Rubbed wine glass: nearly a sine, with a slow attack."""
    time = clock(seconds)
    freq = hertz(note)
    waver = 0.0015 * np.sin(2 * np.pi * 4.3 * time) * np.clip(time, 0, 1)
    phase = 2 * np.pi * np.cumsum(freq * (1 + waver)) / RATE
    tone = np.sin(phase) + 0.18 * np.sin(2 * phase + 0.5) + 0.06 * np.sin(3 * phase)
    return 0.3 * velocity * tone * envelope(seconds, min(0.9, seconds / 3), min(1.2, seconds / 3))


def bowl(note, seconds=10.0, velocity=0.7):
    """Singing bowl: slow beating, long ring."""
    partials = [(1, 1.0, 11), (2.71, 0.7 * velocity, 7), (5.15, 0.4 * velocity, 3.5),
                (8.12, 0.2 * velocity ** 2, 1.6), (11.6, 0.1 * velocity ** 2, 0.8)]
    return 0.5 * velocity * modes(hertz(note), seconds, partials, attack=0.004, beating=1.3)


def string(freq, seconds, decay, damping, excitation):
    """Karplus-Strong: a damped delay line of one period. decay: time to −60 dB at the fundamental;
    damping: 0 (bright) to 1."""
    delay = RATE / freq - 1  # the symmetric damping filter delays by one sample
    whole = int(delay) - 1
    part = delay - whole
    interpolate = np.array([-(part - 1) * (part - 2) * (part - 3) / 6,
                            part * (part - 2) * (part - 3) / 2,
                            -part * (part - 1) * (part - 3) / 2,
                            part * (part - 1) * (part - 2) / 6])
    edge = damping / 4
    taps = np.convolve(interpolate, [edge, 1 - 2 * edge, edge]) * 10 ** (-3 / (freq * decay))
    length = round(seconds * RATE)
    pad = whole + len(taps)
    out = np.zeros(pad + length)
    drive = np.zeros(length)
    drive[:min(length, len(excitation))] = excitation[:length]
    for first in range(0, length, whole):
        count = min(whole, length - first)
        block = drive[first:first + count].copy()
        for tap, weight in enumerate(taps):
            source = pad + first - whole - tap
            block += weight * out[source:source + count]
        out[pad + first:pad + first + count] = block
    return fade_out(out[pad:], 0.06)


def pluck_noise(rng, freq, brightness, position):
    """One period of noise, filtered for the softness and the position of the finger."""
    period = int(RATE / freq)
    noise = rng.uniform(-1, 1, period)
    noise = signal.lfilter([brightness], [1, brightness - 1], np.tile(noise, 2))[period:]
    noise -= noise.mean()
    comb = noise - np.roll(noise, max(1, int(position * period)))
    return comb / (np.abs(comb).max() + 1e-9)


def guitar(rng, note, seconds=2.5, velocity=0.7):
    """Steel-string guitar, fingers."""
    freq = hertz(note)
    pick = pluck_noise(rng, freq, 0.18 + 0.45 * velocity, 0.17)
    sound = string(freq, seconds, 4.5 * (196 / freq) ** 0.45, 0.32, pick)
    return 0.5 * velocity * sound


def soft_pluck(rng, note, seconds=2.0, velocity=0.6, brightness=0.3):
    """Muted, harp-like string with a sine at the fundamental."""
    freq = hertz(note)
    sound = string(freq, seconds, 2.6 * (330 / freq) ** 0.4, 0.55,
                   pluck_noise(rng, freq, brightness, 0.35))
    time = clock(seconds)
    core = np.sin(2 * np.pi * freq * time) * 10 ** (-3 * time / 1.8) * np.clip(time / 0.003, 0, 1)
    return velocity * (0.4 * sound + 0.25 * fade_out(core))


def koto(rng, note, seconds=3.0, velocity=0.7, bend=0.0):
    """Silk string, ivory pick; bend: semitones by which the pitch rises after the attack."""
    freq = hertz(note)
    sound = string(freq, seconds * 1.2, 3.6 * (300 / freq) ** 0.35, 0.22,
                   pluck_noise(rng, freq, 0.35 + 0.5 * velocity, 0.09))
    time = clock(seconds)
    press = bend * np.clip((time - 0.22) / 0.16, 0, 1) + 0.10 * np.exp(-time / 0.03)
    waver = (0.06 if bend else 0.015) * np.sin(2 * np.pi * 5.2 * time) * np.clip(time - 0.4, 0, 1)
    place = np.cumsum(2 ** ((press + waver) / 12))
    return fade_out(0.5 * velocity * np.interp(place, np.arange(len(sound)), sound), 0.08)


def upright_bass(rng, note, seconds=0.6, velocity=0.8):
    freq = hertz(note)
    sound = string(freq, seconds, 2.4, 0.75, pluck_noise(rng, freq, 0.10 + 0.12 * velocity, 0.28))
    time = clock(seconds)
    core = np.sin(2 * np.pi * freq * time + 0.3 * np.sin(2 * np.pi * freq * time))
    finger = band(rng.normal(size=len(time)), 500, 2200) * np.exp(-time / 0.008)
    body = core * 10 ** (-3 * time / 1.7) * np.clip(time / 0.006, 0, 1)
    return fade_out(velocity * (0.55 * sound + 0.4 * body + 0.10 * finger), 0.05)


def electric_piano(note, seconds=2.0, velocity=0.6):
    """Electric piano by frequency modulation; velocity increases the distortion."""
    freq = hertz(note)
    time = clock(seconds + 0.15)
    decay = 10 ** (-3 * time / (5.5 * (220 / freq) ** 0.3))
    bark = 1.7 * velocity * np.exp(-time / 0.5) + 0.25
    tine = 0.22 * velocity * np.exp(-time / 0.09) * np.sin(2 * np.pi * 14 * freq * time)
    body = np.sin(2 * np.pi * freq * time + bark * np.sin(2 * np.pi * freq * time))
    bell = np.sin(2 * np.pi * freq * time + tine)
    level = np.clip(time / 0.003, 0, 1) * np.clip((seconds + 0.15 - time) / 0.15, 0, 1)
    return 0.35 * velocity * (0.6 * body + 0.5 * bell) * decay * level


def piano(rng, note, seconds=2.0, velocity=0.6):
    """Additive grand piano: inharmonic partials, two-stage decay, hammer noise."""
    freq = hertz(note)
    time = clock(seconds + 0.2)
    out = np.zeros(len(time))
    stretch = 3e-4 * (freq / 260) ** 1.3
    for k in range(1, 26):
        partial = freq * k * np.sqrt(1 + stretch * k * k)
        if partial > 14000:
            break
        level = k ** -0.9 * np.exp(-k * freq / (900 + 3200 * velocity)) * (0.35 + abs(np.sin(np.pi * k / 8)))
        decay = 7.0 * (220 / freq) ** 0.55 / (1 + 0.16 * k)
        fall = 0.75 * 10 ** (-3 * time / (0.35 * decay)) + 0.25 * 10 ** (-3 * time / decay)
        drift = 0.25 * rng.uniform(-1, 1)
        out += level * fall * (np.sin(2 * np.pi * partial * time + rng.uniform(0, 6.28))
                               + 0.6 * np.sin(2 * np.pi * (partial + drift) * time))
    hammer = band(rng.normal(size=len(time)), 180, 1800) * np.exp(-time / 0.012)
    level = np.clip(time / 0.002, 0, 1) * np.clip((seconds + 0.2 - time) / 0.2, 0, 1)
    return 0.4 * velocity * (out + 0.12 * hammer) * level


def vibraphone(note, seconds=2.5, velocity=0.6):
    partials = [(1, 1.0, 3.5), (4.0, 0.28 * velocity, 1.2), (10.1, 0.12 * velocity ** 2, 0.25)]
    sound = modes(hertz(note), seconds, partials, attack=0.002)
    return 0.5 * velocity * sound * (0.85 + 0.15 * np.sin(2 * np.pi * 5.5 * clock(seconds)))


def xylophone(note, seconds=0.5, velocity=0.7):
    partials = [(1, 1.0, 0.45), (3.0, 0.5 * velocity, 0.22), (6.2, 0.3 * velocity, 0.09),
                (9.4, 0.15 * velocity, 0.05)]
    return 0.55 * velocity * modes(hertz(note), seconds, partials, attack=0.0008)


def harmonics(freq, levels):
    """Sum of the harmonics of a frequency curve. levels(k) returns a number or a curve, or None after the last."""
    phase = 2 * np.pi * np.cumsum(freq) / RATE
    out = np.zeros(len(phase))
    k = 1
    while k * np.min(freq) < 17000 and (level := levels(k)) is not None:
        out += level * np.sin(k * phase)
        k += 1
    return out


def warm_pad(rng, note, seconds, velocity=0.5, voices=3, cutoff=2500, attack=1.0, release=1.2):
    """Detuned, filtered sawtooth oscillators."""
    time = clock(seconds)
    out = np.zeros(len(time))
    for voice in range(voices):
        cents = (voice - (voices - 1) / 2) * 9 + rng.uniform(-2, 2)
        freq = hertz(note) * 2 ** (cents / 1200) * np.ones(len(time))
        top = int(min(2.5 * cutoff, 15000) / hertz(note)) + 1
        start = rng.uniform(0, 1)
        freq[0] += start * RATE
        out += harmonics(freq, lambda k: None if k > top else
                         1 / k / (1 + (k * hertz(note) / cutoff) ** 4) ** 0.5)
    return 0.25 * velocity * out / voices * envelope(seconds, min(attack, seconds / 2), min(release, seconds / 2))


def synth_pluck(note, seconds=0.3, velocity=0.7, cutoff=3000, colour=0.0):
    """Synthesiser note through a closing filter. colour: 0 (sawtooth) to 1 (square)."""
    time = clock(seconds)
    freq = hertz(note)
    sweep = cutoff * (0.25 + 0.75 * np.exp(-time / (0.4 * seconds))) * (0.4 + 0.6 * velocity)
    top = int(14000 / freq)

    def level(k):
        if k > top:
            return None
        shape = (1 - colour) / k + colour * (k % 2) * 1.3 / k
        corner = (k * freq / sweep) ** 2
        return shape * (1 + 1.2 * np.exp(-(np.log2(k * freq / sweep) * 3) ** 2)) / (1 + corner)

    sound = harmonics(np.full(len(time), freq), level)
    return 0.35 * velocity * sound * np.clip(time / 0.002, 0, 1) * np.exp(-time / (0.7 * seconds)) \
        * np.clip((seconds - time) / 0.02, 0, 1)


def beep(note, seconds=0.1, velocity=0.8, bite=0.5):
    """Signal tone with a smooth attack and release."""
    time = clock(seconds)
    levels = {1: 1.0, 2: 0.35 * bite, 3: 0.45 * bite, 4: 0.1 * bite, 5: 0.22 * bite}
    sound = harmonics(np.full(len(time), hertz(note)), lambda k: levels.get(k))
    return 0.45 * velocity * sound * envelope(seconds, 0.004, 0.02)
