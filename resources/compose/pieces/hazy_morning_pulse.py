"""Hazy Morning Pulse: dusty electric piano over a slow beat; the haze lifts and the pulse takes over."""
from synth import effects
from synth.drums import crackle, hat, kick, rim, snare
from synth.score import Score, notes
from synth.voices import electric_piano, upright_bass, vibraphone

TITLE = "Hazy Morning Pulse"

CHORDS = [notes(text) for text in (
    "Db2 F3 Ab3 C4 Eb4", "Bb1 F3 Ab3 C4 Db4", "Eb2 Gb3 Bb3 Db4 F4", "Ab1 Gb3 Bb3 C4 F4",
    "Db2 F3 Ab3 C4 Eb4", "Gb2 F3 Bb3 Db4 Ab4", "F2 Eb3 Ab3 C4 G4", "Bb1 D4 Ab3 Db4 F4",
    "Eb2 Gb3 Bb3 Db4 F4", "Ab1 Gb3 C4 F4 Bb4", "Db2 F3 C4 Eb4 Ab4", "Ab1 Gb3 C4 F4 A4")]

# Vibraphone line: (beat, note).
LINE = [(12.5, "Eb5"), (13, "F5"), (14, "C5"), (16.5, "Ab5"), (17.5, "F5"), (18, "Eb5"), (19.5, "C5"),
        (20.5, "Db5"), (21, "F5"), (22, "Bb5"), (23.5, "Ab5"), (24.5, "G5"), (25, "Eb5"), (26, "C5"), (27.5, "D5"),
        (28, "F5"), (29, "Ab5"), (30, "Bb5"), (31, "D6")]


def compose():
    score = Score("hazy_morning_pulse", bpm=78, beats=4 * len(CHORDS))
    haze = [1500, 1700, 2000, 2400, 3000, 4000, 6000, 9000, 12000, 14000, 14000, 9000, 1500]
    kicks = [4 * bar + at for bar in range(1, len(CHORDS)) for at in (0, 1.66, 2.5)]
    keys = score.bus(gain=1.0, room=0.25, effects=[effects.drive(1.6), effects.tremolo(3.9, 0.35), effects.wow(0.0011, 0.55),
                                                   effects.sweep_low_pass(haze), effects.duck(score, kicks, 0.35)])
    lead = score.bus(gain=0.7, room=0.4, effects=[effects.echo(score.seconds(0.75), 0.4, 0.3), effects.wow(0.0008, 0.55),
                                                  effects.sweep_low_pass(haze)])
    low = score.bus(gain=0.95, room=0.0, effects=[effects.low_pass(1200, 1)])
    drums = score.bus(gain=0.75, room=0.12, effects=[effects.drive(1.5), effects.sweep_low_pass([4 * cutoff for cutoff in haze])])
    dust = score.bus(gain=1.0, room=0.0)

    for bar, chord in enumerate(CHORDS):
        comp(score, keys, bar, chord)
        if bar >= 1:
            drum(score, drums, bar)
            for at, tone in ((0, chord[0]), (1.66, chord[0] + 12), (2.5, chord[0] + 7)):
                score.play(low, 4 * bar + at, upright_bass(score.rng, tone, 0.9, 0.75))
        if bar >= 7:
            pulse(score, lead, bar, chord)
    for at, note in LINE:
        score.play(lead, at, vibraphone(notes(note)[0], 2.2, 0.5 + 0.3 * score.progress(at)), pan=0.25, loose=0.012)
    score.play(dust, 0, crackle(score.rng, score.length / 44100, 10, 0.07))
    return score.mix(effects.room(1.4, brightness=3500))


def comp(score, keys, bar, chord):
    """Rolled chord on one, a lazy answer after two."""
    rise = bar / (len(CHORDS) - 1)
    hits = ((0, 1.5), (1.66, 0.7), (2.66, 1.1)) if bar % 2 or bar == 0 else ((0, 2.3), (2.66, 1.2))
    for at, length in hits:
        for index, tone in enumerate(chord[1:]):
            sound = electric_piano(tone, score.seconds(length), 0.5 + 0.25 * rise + (0.1 if at == 0 else 0))
            score.play(keys, 4 * bar + at + 0.02 * index, sound, 0.8, -0.3 + 0.2 * index, loose=0.006)


def drum(score, drums, bar):
    rise = bar / (len(CHORDS) - 1)
    for at in (0, 1.66, 2.5):
        score.play(drums, 4 * bar + at, kick(0.85, deep=52, snap=0.3), 0.9)
    for at in (1, 3):
        score.play(drums, 4 * bar + at, snare(score.rng, 0.45 + 0.3 * rise), 0.9, 0.05, loose=0.008)
        score.play(drums, 4 * bar + at, rim(0.3), pan=0.05)
    steps = 8 if bar < 7 else 16
    for index in range(steps):
        at = 4 * index / steps + (0.16 * 4 / steps if index % 2 else 0)
        score.play(drums, 4 * bar + at, hat(score.rng, (0.35, 0.5)[index % 2] * (0.6 + 0.6 * rise), 0.03), 0.8, 0.3, loose=0.005)


def pulse(score, lead, bar, chord):
    """The alarm inside the haze: repeated high chord tones, eighths and then sixteenths."""
    rise = (bar - 6) / (len(CHORDS) - 7)
    steps = 8 if bar < 9 else 16
    for index in range(steps if bar < len(CHORDS) - 1 else steps - 3):
        tone = chord[4 - (index // 2) % 2] + 24
        accent = 1.2 if index % (steps // 4) == 0 else 0.85
        score.play(lead, 4 * bar + 4 * index / steps, electric_piano(tone, 0.22, (0.4 + 0.45 * rise) * accent), 1.1, -0.45 + 0.9 * (index % 2))
