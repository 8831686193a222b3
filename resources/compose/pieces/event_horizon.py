"""Event Horizon: a swell from the deep, and far above it a signal that pulses faster as we fall."""
import numpy as np

from synth import effects
from synth.drums import kick
from synth.score import RATE, Score, notes
from synth.voices import band, beep, bowed_glass, clock, envelope, warm_pad

TITLE = "Event Horizon"
BEATS = 48


def compose():
    score = Score("event_horizon", bpm=80, beats=BEATS)
    opening = [160, 220, 320, 480, 750, 1200, 2000, 3300, 5200, 7000, 5000, 160]
    deep = score.bus(gain=0.9, room=0.35, effects=[effects.sweep_low_pass(opening, 0.8), effects.chorus(0.004, 0.25), effects.drive(1.3)])
    signal = score.bus(gain=0.75, room=0.5, effects=[effects.echo(score.seconds(0.75), 0.45, 0.35, damping=7000)])
    boom = score.bus(gain=0.8, room=0.5)
    wind = score.bus(gain=0.6, room=0.3)

    for start, chord in ((0, "C2 G2 C3 Eb3 G3"), (12, "Ab1 Ab2 C3 Eb3 G3"), (24, "F2 C3 F3 Ab3 C4"), (36, "G2 D3 G3 Ab3 D4")):
        swell(score, deep, start, notes(chord))
    sink(score, deep)
    for start, length in ((8, 16), (24, 20.5)):
        suck_in(score, wind, start, length)
    for beat in (0, 12, 20, 24, 28, 32, 34, 36, 38, 40, 41, 42, 43, 44):
        score.play(boom, beat, strike(score, 0.6 + 0.4 * score.progress(beat)))
    send_signal(score, signal)
    for beat, note in ((4, "G5"), (14, "Eb6"), (22, "C6"), (30, "Ab5"), (36, "D6")):
        score.play(signal, beat, bowed_glass(notes(note)[0], 6.0, 0.5), 0.7, 0.4)
    return score.mix(effects.room(3.6, brightness=5500, predelay=0.03))


def swell(score, deep, start, chord):
    for index, tone in enumerate(chord):
        sound = warm_pad(score.rng, tone, score.seconds(13.2), 0.85, voices=5, cutoff=5000, attack=0.06 if start == 0 else 1.2, release=1.0)
        score.play(deep, start, sound, 0.8 + 0.5 * score.progress(start), 0.35 * (index - 2))


def sink(score, deep):
    """A tone that climbs without end: octaves glide up through a fixed window of loudness."""
    seconds = score.seconds(BEATS)
    time = clock(seconds)
    for voice in range(6):
        octave = (voice + 2 * time / seconds) % 6
        curve = 55.0 * 2 ** octave
        level = np.exp(-((octave - 3) / 1.3) ** 2)
        phase = 2 * np.pi * np.cumsum(curve) / RATE
        score.play(deep, 0, 0.16 * level * (np.sin(phase) + 0.3 * np.sin(2 * phase)) * (0.3 + 0.7 * time / seconds)
                   * envelope(seconds, 0.02, 2.0), pan=0.6 * (-1) ** voice)


def suck_in(score, wind, start, beats):
    seconds = score.seconds(beats)
    place = clock(seconds) / seconds
    out = np.zeros(len(place))
    for step in range(9):
        centre = 200 * 1.6 ** step
        near = np.exp(-((place * 9 - step - 0.5) / 1.6) ** 2)
        out += band(score.rng.normal(size=len(place)), centre * 0.75, centre * 1.3, 1) * near
    score.play(wind, start, 0.5 * out * place ** 2 * np.clip((1 - place) * 30, 0, 1), pan=-0.3)
    score.play(wind, start + 0.03, 0.4 * out * place ** 2 * np.clip((1 - place) * 30, 0, 1), pan=0.5)


def strike(score, velocity):
    """A body falling past: low drum with a long dark tail."""
    time = clock(2.4)
    tail = np.sin(2 * np.pi * np.cumsum(34 + 30 * np.exp(-time / 0.5)) / RATE) * np.exp(-time / 0.7)
    rumble = band(score.rng.normal(size=len(time)), 40, 160) * np.exp(-time / 0.5)
    sound = 0.5 * tail + 0.4 * rumble
    head = kick(1.0, deep=44, snap=0.4)
    sound[:len(head)] += 0.6 * head
    return velocity * sound * np.clip((2.4 - time) / 0.3, 0, 1)


def send_signal(score, signal):
    """Double pulse on high C and G; the wait halves in each quarter, the last one never rests."""
    beat = 0.0
    while beat < 45:
        loud = 0.35 + 0.6 * score.progress(beat)
        quarter = int(beat // 12)
        tone = (84, 84, 87, 91)[quarter]
        for at, interval in ((0, 0), (0.125, 7)):
            side = 0.5 * (-1) ** int(2 * beat)
            score.play(signal, beat + at, beep(tone + interval, 0.09, loud, 0.3 + 0.5 * score.progress(beat)), pan=side)
        if quarter == 3:
            score.play(signal, beat, beep(tone - 12, 0.14, 0.7 * loud, 0.8), pan=-0.2)
        beat += (2, 1, 0.5, 0.25)[quarter]
    score.play(signal, 46, beep(84, 0.09, 0.4, 0.3), pan=0.5)
    score.play(signal, 46.125, beep(91, 0.09, 0.4, 0.3), pan=0.5)
