"""差し飲み: two old friends at a small bar; a smoky reed sings in the yonanuki minor, cups touch ever more often."""
from synth import effects
from synth.drums import brush, clink, kick, ride, snare
from synth.score import Score, midi, notes
from synth.voices import guitar, piano, upright_bass, warm_pad
from synth.winds import reed

TITLE = "差し飲み"

# One bar each: bass notes on one and three, and the piano's voicing.
BARS = [("A1 E2", "G3 B3 C4 E4"), ("D2 A2", "F3 A3 C4 E4"), ("B1 F2", "A3 D4 F4 A4"), ("E2 B1", "G#3 D4 F4 C5"),
        ("A1 E2", "G3 C4 E4 B4"), ("F2 C2", "A3 C4 E4 G4"), ("D2 G1", "F3 B3 C4 E4"), ("C2 F2", "E3 A3 B3 E4"),
        ("B1 E2", "A3 D4 F4 G#4"), ("A1 A2", "G3 C4 E4 B4")]

# The song: (beat, note, length in beats).
SONG = [(0.5, "E4", 0.5), (1, "A4", 1), (2, "B4", 0.66), (2.66, "C5", 1.34),
        (4, "B4", 0.66), (4.66, "A4", 0.34), (5, "F4", 2.5), (7.66, "E4", 0.34),
        (8, "F4", 1), (9, "A4", 0.66), (9.66, "B4", 0.34), (10, "A4", 1.66), (11.66, "F4", 0.34), (12, "E4", 3),
        (15, "E4", 0.66), (15.66, "A4", 0.34),
        (16, "C5", 1.66), (17.66, "B4", 0.34), (18, "C5", 1), (19, "E5", 1), (20, "F5", 1.66), (21.66, "E5", 0.34),
        (22, "C5", 1.5), (23.66, "B4", 0.34), (24, "C5", 0.66), (24.66, "B4", 0.34), (25, "A4", 1), (26, "B4", 1.5),
        (27.66, "E5", 0.34), (28, "E5", 1), (29, "A5", 1.66), (30.66, "E5", 0.34), (31, "C5", 1),
        (32, "F5", 1), (33, "E5", 0.66), (33.66, "C5", 0.34), (34, "B4", 1), (35, "G#4", 1), (36, "A4", 3)]


def compose():
    score = Score("sashi_nomi", bpm=66, beats=4 * len(BARS))
    voice = score.bus(gain=0.85, room=0.4, effects=[effects.echo(score.seconds(0.66), 0.3, 0.12, damping=2500)])
    keys = score.bus(gain=0.8, room=0.25)
    low = score.bus(gain=0.9, room=0.06)
    kit = score.bus(gain=0.75, room=0.2)
    strings = score.bus(gain=0.7, room=0.45, effects=[effects.chorus(0.003, 0.4), effects.low_pass(5000)])
    cups = score.bus(gain=0.9, room=0.3)

    for beat, note, length in SONG:
        sing(score, voice, strings, beat, midi(note), length)
    for bar, (bass, voicing) in enumerate(BARS):
        comp(score, keys, bar, notes(voicing))
        walk(score, low, bar, notes(bass))
        keep_time(score, kit, bar)
        if bar >= 4:
            lay_strings(score, strings, bar, notes(voicing))
    toast(score, cups)
    return score.mix(effects.room(1.7, brightness=4000))


def sing(score, voice, strings, beat, tone, length):
    """Reed with a deep late vibrato; from the refrain on a trembling guitar doubles it an octave up."""
    loud = 0.6 + 0.35 * score.progress(beat)
    sound = reed(score.rng, tone, score.seconds(length) + 0.12, loud, scoop=0.9, vibrato=0.35)
    score.play(voice, beat, sound, pan=0.12, loose=0.01)
    if beat >= 15 and length >= 0.6:
        step, at = (0.166 if beat >= 24 else 0.25), beat
        while at < beat + length - 0.1:
            score.play(strings, at, guitar(score.rng, tone + 12, 0.7, 0.5 + 0.35 * score.progress(at)), 0.75, 0.55, loose=0.004)
            at += step


def comp(score, keys, bar, voicing):
    rise = bar / (len(BARS) - 1)
    for at, length, loud in ((0, 1.5, 0.5), (1.66, 0.8, 0.4), (2.66, 1.2, 0.46)):
        for index, tone in enumerate(voicing):
            sound = piano(score.rng, tone, score.seconds(length), loud + 0.25 * rise)
            score.play(keys, 4 * bar + at + 0.012 * index, sound, 0.8, -0.5 + 0.12 * index, loose=0.005)
    fill = [voicing[index % 4] + 12 for index in (0, 2, 3, 1)]
    if bar % 2 == 1:
        for index, tone in enumerate(fill):
            score.play(keys, 4 * bar + 2.66 + index / 3, piano(score.rng, tone, 0.8, 0.45 + 0.3 * rise), pan=-0.25, loose=0.006)


def walk(score, low, bar, bass):
    """In two at first; four to the bar, with a leading tone, once the strings are in."""
    following = notes(BARS[(bar + 1) % len(BARS)][0])[0]
    line = [(0, bass[0], 1.6), (2, bass[1], 1.3)]
    if bar >= 4:
        line = [(0, bass[0], 0.9), (1, bass[0] + 7, 0.8), (2, bass[1], 0.9), (3, following + 1, 0.6), (3.66, following - 1, 0.3)]
    for at, tone, length in line:
        score.play(low, 4 * bar + at, upright_bass(score.rng, tone if tone > 30 else tone + 12, score.seconds(length), 0.85), loose=0.004)


def keep_time(score, kit, bar):
    rise = bar / (len(BARS) - 1)
    for beat in range(4):
        score.play(kit, 4 * bar + beat, brush(score.rng, 0.32 + 0.25 * rise, 0.8, swish=True), pan=-0.15 + 0.1 * (beat % 2))
        if beat % 2:
            score.play(kit, 4 * bar + beat, brush(score.rng, 0.5 + 0.4 * rise), pan=0.05)
        if bar >= 2:
            score.play(kit, 4 * bar + beat, ride(score.rng, 0.35 + 0.4 * rise), 0.7, 0.4)
            if beat % 2:
                score.play(kit, 4 * bar + beat + 0.66, ride(score.rng, 0.25 + 0.35 * rise), 0.7, 0.4)
    if bar >= 6:
        for beat in (0, 1.66, 2):
            score.play(kit, 4 * bar + beat, kick(0.5, deep=52, snap=0.2))
        for third in range(12):
            score.play(kit, 4 * bar + third / 3, snare(score.rng, (0.22, 0.1, 0.14)[third % 3] * 2 * rise, seconds=0.2), pan=0.05)


def lay_strings(score, strings, bar, voicing):
    rise = bar / (len(BARS) - 1)
    for index, tone in enumerate(voicing[1:]):
        sound = warm_pad(score.rng, tone + 12, score.seconds(4.4), 0.35 + 0.45 * rise, cutoff=3000, attack=0.4, release=0.5)
        score.play(strings, 4 * bar, sound, pan=-0.5 + 0.5 * index)


def toast(score, cups):
    """Cups: one for hello, one for each line, and at the end a round that will not stop."""
    beats = [0, 12, 16, 20, 23, 24, 26, 27, 28, 29, 30, 31] + [32 + third / 3 for third in range(15)]
    for index, beat in enumerate(beats):
        loud = 0.35 + 0.6 * score.progress(beat)
        score.play(cups, beat, clink(score.rng, loud, ("E7", "A7", "C7")[index % 3]), pan=0.6 * (-1) ** index)
    for beat in (38, 39):
        score.play(cups, beat, clink(score.rng, 0.5, "E7"), pan=-0.5)
