"""Dawn Bird Drift: birds wake one by one over a slow D drone until the whole hedge calls."""
import numpy as np

from synth import effects
from synth.score import Score, notes
from synth.voices import band, bowed_glass, soft_pluck, warm_pad
from synth.winds import whistle

TITLE = "Dawn Bird Drift"
BEATS = 40

# Each bird: syllables as (wait in seconds, contour in Hz, length, level, trill depth), and its perch.
BIRDS = {
    "robin": ([(0, [2350, 2900, 2640], 0.22, 0.5, 0), (0.26, [3520, 3140], 0.12, 0.4, 0),
               (0.40, [2640, 3520, 4200], 0.16, 0.45, 0.03), (0.62, [2940, 2350], 0.30, 0.5, 0.015)], -0.6),
    "thrush": ([(0, [1760, 1980], 0.18, 0.6, 0), (0.24, [2350, 2350], 0.20, 0.6, 0.02),
                (0.50, [1760, 2100, 1980], 0.28, 0.6, 0)], 0.45),
    "wren": ([(0.055 * index, [4700 + 90 * index, 3900 + 60 * index], 0.045, 0.32, 0) for index in range(12)], 0.8),
    "finch": ([(0, [3140, 4700], 0.07, 0.4, 0), (0.1, [3140, 4700], 0.07, 0.4, 0), (0.2, [3140, 4700], 0.07, 0.42, 0),
               (0.32, [5300, 2800], 0.22, 0.45, 0.05)], -0.85),
    "tit": ([(0, [4180, 4180], 0.13, 0.5, 0), (0.17, [3140, 3140], 0.17, 0.5, 0),
             (0.42, [4180, 4180], 0.13, 0.5, 0), (0.59, [3140, 3140], 0.17, 0.5, 0)], 0.15),
    "dove": ([(0, [587, 620, 587], 0.32, 0.55, 0), (0.42, [700, 660], 0.55, 0.6, 0.004),
              (1.1, [587, 580], 0.40, 0.5, 0)], -0.25),
}

# Who sings when: the beats at which each bird's phrase starts.
CALLS = {
    "thrush": [0, 5, 9.5, 14, 18, 21.5, 25, 28, 30.5, 33, 35, 37],
    "robin": [2.5, 8, 12, 16, 19.5, 23, 26, 28.5, 31, 32.5, 34, 35.5, 37],
    "dove": [6.5, 13, 20, 24, 29],
    "wren": [11, 15.5, 20.5, 24, 27, 29.5, 31.5, 33.5, 35, 36.5],
    "finch": [17, 22, 25.5, 28, 30, 31.5, 33, 34, 35, 36, 37],
    "tit": [23.5, 26.5, 29, 31, 32, 33, 34, 35, 36, 37],
}


def compose():
    score = Score("dawn_bird_drift", bpm=60, beats=BEATS)
    hedge = score.bus(gain=1.0, room=0.3, effects=[effects.echo(0.31, 0.3, 0.12, damping=5000)])
    drone = score.bus(gain=0.65, room=0.4,
                      effects=[effects.sweep_low_pass([700, 900, 1200, 1700, 2400, 3400, 3600, 700]), effects.chorus(0.004, 0.2)])
    harp = score.bus(gain=0.8, room=0.5)
    brook = score.bus(gain=0.5, room=0.0, effects=[effects.high_pass(300)])

    for bird, beats in CALLS.items():
        for beat in beats:
            call(score, hedge, bird, beat)
    for start, chord in ((0, "D2 A2 D3 F#3 A3"), (10, "D2 B2 D3 G3 B3"), (20, "D2 A2 E3 F#3 C#4"), (30, "D2 A2 D3 G3 B3")):
        lay_drone(score, drone, start, notes(chord))
    pick_harp(score, harp)
    run_water(score, brook)
    return score.mix(effects.room(2.8, brightness=6000, predelay=0.02))


def call(score, hedge, bird, beat):
    """One phrase, never twice the same: pitch, pace and loudness vary a little; all rise towards day."""
    syllables, perch = BIRDS[bird]
    pitch = 2 ** (score.rng.uniform(-0.6, 0.6) / 12)
    pace = score.rng.uniform(0.92, 1.08)
    loud = (0.45 + 0.55 * score.progress(beat)) * score.rng.uniform(0.85, 1.1)
    for wait, contour, length, level, trill in syllables:
        sound = whistle([pitch * freq for freq in contour], length * pace, level * loud, trill)
        score.play(hedge, beat + wait * pace, sound, pan=perch + score.rng.uniform(-0.1, 0.1))


def lay_drone(score, drone, start, chord):
    for index, tone in enumerate(chord):
        sound = warm_pad(score.rng, tone, 11.6, 0.65, attack=0.05 if start == 0 else 1.6, release=1.8, cutoff=1800)
        score.play(drone, start, sound, pan=0.3 * (index - 2))
    score.play(drone, start, bowed_glass(chord[-1] + 12, 10, 0.5), pan=0.4)


def pick_harp(score, harp):
    """Single drops at first, a steady pulse once the sun is up."""
    tones = notes("D4 A4 E5 F#5 B4 A4 D5 F#5")
    beat, index = 1.0, 0
    while beat < BEATS - 2.5:
        tone = tones[index % len(tones)] + (12 if beat > 26 else 0)
        score.play(harp, beat, soft_pluck(score.rng, tone, 2.5, 0.4 + 0.5 * score.progress(beat), 0.4), pan=0.5 * (-1) ** index)
        beat += 3 if beat < 12 else 1 if beat < 22 else 0.5 if beat < 30 else 0.25
        index += 1


def run_water(score, brook):
    """Soft brook: noise in narrow, wandering bands."""
    length = score.length
    for centre in (420, 700, 1100, 1800, 2700):
        noise = band(score.rng.normal(size=length), centre * 0.85, centre * 1.2, 1)
        turns = score.rng.integers(3, 40, 4)
        place = np.arange(length) / length
        swell = np.exp(0.5 * sum(np.sin(2 * np.pi * (turn * place + score.rng.uniform())) for turn in turns))
        score.play(brook, 0, 0.02 * noise * swell * (500 / centre) ** 0.5, pan=score.rng.uniform(-0.7, 0.7))
