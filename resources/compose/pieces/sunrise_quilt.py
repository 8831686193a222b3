"""Sunrise Quilt: a warm F major pad slowly uncovered, soft plucks stitched over it."""
from synth import effects
from synth.drums import clap, kick, shaker
from synth.score import Score, notes
from synth.voices import electric_piano, glass_bell, soft_pluck, upright_bass, warm_pad

TITLE = "Sunrise Quilt"

CHORDS = [notes(text) for text in (
    "F2 C4 E4 G4 A4", "A2 C4 E4 G4 B4", "D2 C4 E4 F4 A4", "Bb2 D4 F4 A4 C5",
    "F2 C4 E4 G4 A4", "G2 D4 F4 Bb4 A4", "D2 C4 F4 A4 E5", "C2 D4 F4 Bb4 G4",
    "Bb2 D4 F4 A4 C5", "C2 E4 G4 Bb4 D5", "D2 F4 A4 C5 E5", "C2 D4 F4 G4 Bb4")]

# The tune of bars 5 to 11: (beat from the start of bar 5, note, length in beats).
TUNE = [(0, "A5", 1.5), (1.5, "G5", 0.5), (2, "E5", 2), (4, "F5", 1), (5, "G5", 1), (6, "D5", 2),
        (8, "A5", 1.5), (9.5, "C6", 0.5), (10, "E6", 2), (12, "D6", 1), (13, "Bb5", 1), (14, "G5", 2),
        (16, "A5", 1), (17, "C6", 1), (18, "D6", 1), (19, "F6", 1), (20, "E6", 1.5), (21.5, "D6", 0.5),
        (22, "C6", 2), (24, "E6", 1), (25, "F6", 1), (26, "A6", 2)]


def compose():
    score = Score("sunrise_quilt", bpm=84, beats=4 * len(CHORDS))
    brightening = [500, 700, 1000, 1500, 2200, 3200, 4500, 6000, 7500, 9000, 9000, 3000, 500]
    pads = score.bus(gain=0.9, room=0.45, effects=[effects.sweep_low_pass(brightening), effects.chorus()])
    plucks = score.bus(gain=0.9, room=0.35, effects=[effects.echo(score.seconds(0.75), 0.35, 0.25)])
    tune = score.bus(gain=0.75, room=0.45, effects=[effects.tremolo(4.2, 0.25)])
    low = score.bus(gain=0.7, room=0.05)
    beat = score.bus(gain=0.5, room=0.15)

    for bar, chord in enumerate(CHORDS):
        lay_pad(score, pads, bar, chord)
        stitch(score, plucks, bar, chord)
        if bar >= 2:
            ground(score, low, beat, bar, chord)
    for at, note, length in TUNE:
        rise = at / 28
        score.play(tune, 16 + at, electric_piano(notes(note)[0], score.seconds(length + 0.6), 0.55 + 0.3 * rise), 0.8)
        if at >= 12:
            score.play(tune, 16 + at, glass_bell(notes(note)[0], 2, 0.4 + 0.3 * rise), 0.6, 0.3)
    return score.mix(effects.room(2.4, brightness=5000))


def lay_pad(score, pads, bar, chord):
    for index, tone in enumerate(chord[1:]):
        sound = warm_pad(score.rng, tone, score.seconds(4.8), 0.75, attack=0.05 if bar == 0 else 0.6, cutoff=3500)
        score.play(pads, 4 * bar, sound, pan=-0.75 + 0.5 * index)
    score.play(pads, 4 * bar, warm_pad(score.rng, chord[0] + 12, score.seconds(4.6), 0.8, cutoff=900, attack=0.1))


def stitch(score, plucks, bar, chord):
    """Eighths, from bar 8 sixteenths, reaching higher and brighter."""
    rise = bar / (len(CHORDS) - 1)
    tones = chord[1:] + [chord[2] + 12, chord[3] + 12]
    order = [0, 2, 1, 3, 2, 4, 3, 5] if bar % 2 else [0, 1, 3, 2, 4, 3, 2, 1]
    if bar >= 7:
        order = [0, 2, 4, 5, 3, 5, 4, 2] * 2
    step = 4 / len(order)
    for index, choice in enumerate(order):
        if bar == len(CHORDS) - 1 and index * step >= 3.25:
            break
        accent = 1.15 if index * step % 1 == 0 else 0.85
        tone = tones[choice] + (12 if bar >= 4 else 0)
        sound = soft_pluck(score.rng, tone, 1.6, (0.5 + 0.35 * rise) * accent, 0.2 + 0.5 * rise)
        score.play(plucks, 4 * bar + index * step, sound, pan=0.7 * (-1) ** index, loose=0.004)


def ground(score, low, beat, bar, chord):
    rise = bar / (len(CHORDS) - 1)
    for at in (0, 2.5) if bar < 7 else (0, 1.5, 2.5, 3):
        score.play(low, 4 * bar + at, upright_bass(score.rng, chord[0] + 12, 0.9, 0.7))
    for at in (0, 2) if bar < 7 else (0, 1, 2, 3):
        score.play(beat, 4 * bar + at, kick(0.5 + 0.3 * rise, snap=0.2))
    if bar >= 5:
        for index in range(8 if bar < 8 else 16):
            at = index * (0.5 if bar < 8 else 0.25)
            score.play(beat, 4 * bar + at, shaker(score.rng, 0.35 + 0.35 * rise), 1 if index % 2 else 0.6, 0.35)
    if bar >= 8:
        for at in (1, 3):
            score.play(beat, 4 * bar + at, clap(score.rng, 0.7 * rise), 0.9, -0.15)
