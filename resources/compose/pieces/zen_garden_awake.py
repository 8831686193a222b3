"""Zen Garden Awake: koto and bamboo flute in the miyako-bushi scale on D; a wooden fish gathers speed."""
from synth import effects
from synth.drums import woodblock
from synth.score import Score, notes
from synth.voices import bowl, koto
from synth.winds import shakuhachi

TITLE = "Zen Garden Awake"
BEATS = 44
SCALE = notes("D4 Eb4 G4 A4 Bb4 D5 Eb5 G5 A5 Bb5 D6")

# Koto phrases: (beat, note, bend in semitones).
KOTO = [
    (0, "D4", 0), (1, "A4", 0), (1.5, "Bb4", 0), (2, "A4", 1), (4, "G4", 0), (4.5, "Eb4", 0), (5, "D4", 0),
    (8, "D5", 0), (8.5, "Bb4", 0), (9, "A4", 1), (10.5, "G4", 0), (11, "A4", 0), (12, "D5", 0), (12.5, "Eb5", 0),
    (13, "D5", 0), (13.5, "Bb4", 0), (14, "A4", 0), (14.5, "G4", 0), (15, "A4", 0),
    (16, "D4", 0), (16, "D5", 0), (17, "Eb5", 0), (17.5, "G5", 0), (18, "A5", 1), (19, "G5", 0), (19.5, "Eb5", 0),
    (20, "D5", 0), (20.5, "A4", 0), (21, "Bb4", 0), (21.5, "A4", 0), (22, "G4", 0), (22.5, "A4", 0), (23, "D5", 0),
]

# Flute phrases: (beat, note, length in beats, fall at the end in semitones).
FLUTE = [
    (5.5, "A4", 2.5, 0), (10, "D5", 1.5, 0), (11.5, "Eb5", 0.8, 0), (12.3, "D5", 2.7, 1),
    (18.5, "A5", 2.2, 0), (20.7, "Bb5", 0.8, 0), (21.5, "A5", 2.5, 1),
    (26, "G5", 1, 0), (27, "A5", 1, 0), (28, "D6", 3, 0), (31, "Eb6", 0.9, 0), (32, "D6", 2.5, 0.5),
    (35, "Bb5", 1, 0), (36, "A5", 1, 0), (37, "D6", 4, 0),
]


def compose():
    score = Score("zen_garden_awake", bpm=66, beats=BEATS)
    strings = score.bus(gain=1.0, room=0.25, effects=[effects.bell_curve(420, 4, 1.0), effects.bell_curve(3000, 3, 1.2)])
    flute = score.bus(gain=0.62, room=0.5)
    bronze = score.bus(gain=0.5, room=0.4)
    wood = score.bus(gain=0.8, room=0.3)

    for beat, note, bend in KOTO:
        score.play(strings, beat, koto(score.rng, notes(note)[0], 3.2, 0.72 + 0.2 * score.progress(beat), bend), pan=-0.25, loose=0.006)
    for beat, note, length, fall in FLUTE:
        loud = 0.65 + 0.3 * score.progress(beat)
        sound = shakuhachi(score.rng, notes(note)[0], score.seconds(length) + 0.25, loud, scoop=0.8, fall=fall)
        score.play(flute, beat, sound, pan=0.35)
    for beat, note, loud in ((0, "D3", 0.9), (8, "A3", 0.5), (16, "D3", 0.9), (24, "D3", 0.9), (28, "A3", 0.7), (32, "D3", 0.95),
                             (34, "A3", 0.8), (36, "D4", 0.9), (37, "D4", 0.9), (38, "D4", 0.95), (39, "D4", 1.0), (40, "D4", 1.0)):
        score.play(bronze, beat, bowl(notes(note)[0], 9.0, loud), pan=0.1)
    gather_speed(score, wood)
    run_strings(score, strings)
    return score.mix(effects.room(2.8, brightness=4500, predelay=0.02))


def gather_speed(score, wood):
    """The wooden fish: each wait a little shorter than the last, then a steady roll of knocks."""
    beat, wait = 17.0, 1.0
    while beat < BEATS - 3:
        loud = 0.35 + 0.65 * score.progress(beat)
        score.play(wood, beat, woodblock("F#4", loud), pan=-0.1)
        score.play(wood, beat, woodblock("F#5", 0.3 * loud), pan=-0.1)
        beat += wait
        wait = max(0.25, wait * 0.955)


def run_strings(score, strings):
    """From beat 24 the koto runs: scale waves in half beats, then quarter beats; last a sweep over all strings."""
    beat, place, step = 24.0, 0, 1
    while beat < BEATS - 4:
        loud = 0.5 + 0.45 * score.progress(beat)
        score.play(strings, beat, koto(score.rng, SCALE[place], 1.6, loud), pan=-0.25, loose=0.004)
        if beat >= 32:
            score.play(strings, beat, koto(score.rng, SCALE[place] - 12, 1.6, 0.7 * loud), pan=-0.5, loose=0.008)
        place += step
        if place in (0, len(SCALE) - 1) or (place > 4 and score.rng.random() < 0.12):
            step = -step
        place = min(max(place, 0), len(SCALE) - 1)
        step = 1 if place == 0 else -1 if place == len(SCALE) - 1 else step
        beat += 0.5 if beat < 30 else 0.25
    for index, tone in enumerate(SCALE[::-1] + [SCALE[0] - 7, SCALE[0] - 12]):
        score.play(strings, BEATS - 4 + 0.05 * index + 0.004 * index ** 2, koto(score.rng, tone, 3.0, 0.8), pan=-0.6 + 0.1 * index)
    score.play(strings, BEATS - 2, koto(score.rng, notes("A4")[0], 3.0, 0.55, bend=1), pan=-0.25)
    score.play(strings, BEATS - 1, koto(score.rng, notes("G4")[0], 2.0, 0.45), pan=-0.25)
