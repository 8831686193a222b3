"""Mouse Chase Jive: a xylophone mouse, a plunger-trumpet cat, a walking bass and brushes at a gallop in F."""
from synth import effects
from synth.drums import brush, hat, kick, ride, snare, woodblock
from synth.score import Score, midi, notes
from synth.voices import piano, upright_bass, xylophone
from synth.winds import muted_brass, reed

TITLE = "Mouse Chase Jive"

A_CHORDS = "F6 Dm7 Gm7 C7 F6 Dm7 Gm7 C7 F7 F7 Bb6 Bdim F6 D7 Gm7 C7".split()
B_CHORDS = "A7 A7 A7 A7 D7 D7 D7 D7 G7 G7 G7 G7 C7 C7 C7 C7".split()
FORM = A_CHORDS + A_CHORDS + B_CHORDS + A_CHORDS  # one chord per two beats

TONES = {"F6": "F2 A2 C3 D3", "Dm7": "D2 F2 A2 C3", "Gm7": "G2 Bb2 D3 F3", "C7": "C2 E2 G2 Bb2", "F7": "F2 A2 C3 Eb3",
         "Bb6": "Bb1 D2 F2 G2", "Bdim": "B1 D2 F2 Ab2", "D7": "D2 F#2 A2 C3", "A7": "A1 C#2 E2 G2", "G7": "G1 B1 D2 F2"}
VOICINGS = {"F6": "A3 C4 D4 G4", "Dm7": "F3 A3 C4 E4", "Gm7": "F3 Bb3 D4 A4", "C7": "E3 Bb3 D4 A4", "F7": "Eb3 A3 D4 G4",
            "Bb6": "F3 Bb3 D4 G4", "Bdim": "F3 Ab3 D4 B4", "D7": "F#3 C4 E4 B4", "A7": "G3 C#4 F#4 B4", "G7": "F3 B3 E4 A4"}

# (beat, note) in straight eighths; playing swings them. One line per two bars.
A_TUNE = [
    (0, "C5"), (0.5, "D5"), (1, "F5"), (1.5, "G#5"), (2, "A5"), (3, "F5"), (3.5, "D5"),
    (4, "E5"), (4.5, "G5"), (5, "Bb5"), (6, "A5"), (6.5, "G5"), (7.5, "E5"),
    (8, "F5"), (8.5, "E5"), (9, "F5"), (9.5, "A5"), (10.5, "C6"), (11.5, "A5"),
    (12, "Bb5"), (12.5, "A5"), (13, "G5"), (13.5, "F#5"), (14, "G5"), (15, "E5"), (15.5, "C5"),
    (16, "Eb5"), (16.5, "F5"), (17, "A5"), (17.5, "C6"), (18.5, "Eb6"), (19.5, "C6"),
    (20, "D6"), (21, "Bb5"), (21.5, "G5"), (22, "Ab5"), (22.5, "B5"), (23, "D6"),
    (24, "C6"), (24.5, "A5"), (25, "F5"), (25.5, "D5"), (26, "F#5"), (26.5, "A5"), (27, "C6"), (27.5, "Eb6"),
    (28, "D6"), (28.5, "Bb5"), (29.5, "A5"), (30, "G5"),
]
B_TUNE = [
    (0, "E5"), (0.5, "F5"), (1, "E5"), (1.5, "C#5"), (2, "E5"), (2.5, "G5"), (3.5, "A5"), (6, "G5"), (6.5, "E5"), (7, "C#5"),
    (8, "A5"), (8.5, "Bb5"), (9, "A5"), (9.5, "F#5"), (10, "A5"), (10.5, "C6"), (11.5, "D6"), (14, "C6"), (14.5, "A5"), (15, "F#5"),
    (16, "B5"), (16.5, "C6"), (17, "B5"), (17.5, "G5"), (18, "B5"), (18.5, "D6"), (19.5, "F6"), (20.5, "E6"), (21, "D6"), (21.5, "B5"),
    (24, "C6"), (24.5, "Bb5"), (25, "A5"), (25.5, "G5"), (26, "F#5"), (26.5, "G5"), (27, "A5"), (27.5, "Bb5"),
    (28, "B5"), (28.5, "C6"), (29, "C#6"), (29.5, "D6"), (30, "D#6"), (30.5, "E6"), (31, "F6"), (31.5, "G6"),
]
# The cat: answers in the second A, growls through the bridge, shouts the riff at the end.
CAT_ANSWERS = [(5, "C5", 0.4), (5.5, "Eb5", 0.8), (7, "D5", 0.4), (13.5, "G4", 0.4), (14, "Bb4", 0.9), (22.5, "D5", 0.4), (23, "F5", 0.9), (30, "E5", 0.4), (31, "G5", 0.7)]
CAT_GROWLS = [(4, "C#5", 0.9), (5, "E5", 0.9), (12, "F#5", 0.9), (13, "A5", 0.9), (22, "G5", 0.4), (22.5, "B5", 0.9)]
CAT_RIFF = [(0, "F5", 0.35), (1, "A5", 0.35), (1.5, "C6", 0.9), (3.5, "D6", 0.4)]


def swing(beat):
    return int(beat) + (0.64 if beat % 1 == 0.5 else beat % 1)


def compose():
    score = Score("mouse_chase_jive", bpm=218, beats=2 * len(FORM))
    mouse = score.bus(gain=1.0, room=0.18)
    cat = score.bus(gain=0.62, room=0.22)
    keys = score.bus(gain=0.6, room=0.15, effects=[effects.high_pass(120)])
    low = score.bus(gain=1.0, room=0.06, effects=[effects.bell_curve(110, 3), effects.bell_curve(900, 3)])
    kit = score.bus(gain=0.7, room=0.14)

    walk(score, low)
    for half_bar, name in enumerate(FORM):
        comp(score, keys, half_bar, notes(VOICINGS[name]))
    play_tune(score, mouse)
    play_cat(score, cat)
    for bar in range(len(FORM) // 2):
        keep_time(score, kit, bar)
    return score.mix(effects.room(0.8, brightness=5000, predelay=0.006))


def walk(score, low):
    """Root, then a chord tone; a half step leads into each new root."""
    previous = None
    for half_bar, name in enumerate(FORM):
        tones = notes(TONES[name])
        following = notes(TONES[FORM[(half_bar + 1) % len(FORM)]])[0]
        first = tones[0] if name != previous else tones[2]
        if name == FORM[(half_bar + 1) % len(FORM)]:
            second = tones[1]
        else:
            second = following + score.rng.choice([-1, 1, 7 if following < 40 else -5])
        for beat, tone in ((0, first), (1, second)):
            while tone < 28:
                tone += 12
            score.play(low, 2 * half_bar + beat, upright_bass(score.rng, tone, 0.36, 0.85 if beat else 0.95), loose=0.003)
        previous = name


def comp(score, keys, half_bar, voicing):
    loud = 0.5 + 0.3 * score.progress(2 * half_bar)
    beat = (0.64, 1, 0, 1.64)[half_bar % 4]
    for index, tone in enumerate(voicing):
        score.play(keys, 2 * half_bar + beat, piano(score.rng, tone, 0.16, loud), pan=-0.45 + 0.1 * index, loose=0.003)


def play_tune(score, mouse):
    for section, tune in enumerate((A_TUNE, A_TUNE, B_TUNE, A_TUNE)):
        for beat, note in tune:
            at, tone = 32 * section + swing(beat), midi(note)
            loud = (0.62, 0.7, 0.75, 0.9)[section]
            score.play(mouse, at, xylophone(tone + (12 if section != 2 else 0), 0.5, loud), 0.9, 0.25)
            if section >= 1:
                score.play(mouse, at, reed(score.rng, tone, 0.17, loud, scoop=0.3), 0.75, 0.05)
            if section == 3:
                score.play(mouse, at, piano(score.rng, tone, 0.16, 0.75), 0.6, -0.3)
    for index, note in enumerate("C6 B5 Bb5 A5".split()):
        score.play(mouse, 127 + index / 4, xylophone(midi(note), 0.4, 0.55), 0.8, 0.25)


def play_cat(score, cat):
    lines = [(32, CAT_ANSWERS), (64, CAT_GROWLS)] + [(96 + 4 * bar, CAT_RIFF) for bar in range(7)]
    for start, line in lines:
        for beat, note, length in line:
            tone = midi(note)
            if start >= 96 and (start - 96) % 16 >= 12:
                tone -= 2
            sound = muted_brass(score.rng, tone, score.seconds(length) + 0.05, 0.7 + 0.25 * (start >= 96))
            score.play(cat, start + swing(beat), sound, pan=-0.35)
            if start >= 96:
                score.play(cat, start + swing(beat), muted_brass(score.rng, tone - 5, score.seconds(length) + 0.05, 0.75), 0.8, -0.6)


def keep_time(score, kit, bar):
    loud = 0.55 + 0.4 * bar / 31
    for beat in (0, 1, 1.64, 2, 3, 3.64):
        score.play(kit, 4 * bar + beat, ride(score.rng, loud * (0.8 if beat % 1 else 1), 0.5), 0.8, 0.35)
    for beat in (1, 3):
        score.play(kit, 4 * bar + beat, hat(score.rng, 0.5 * loud, 0.03), pan=-0.25)
        score.play(kit, 4 * bar + beat, brush(score.rng, 0.8 * loud), pan=-0.05)
    for beat in (0, 2):
        score.play(kit, 4 * bar + beat, brush(score.rng, 0.4 * loud, 0.3, swish=True), pan=-0.1)
        score.play(kit, 4 * bar + beat, kick(0.35 * loud, deep=55, snap=0.2))
    if bar >= 16:
        score.play(kit, 4 * bar + 3.64, snare(score.rng, 0.45 * loud), pan=-0.05)
    if bar >= 24:
        for beat in (1, 3):
            score.play(kit, 4 * bar + beat, snare(score.rng, 0.75), pan=-0.05)
        score.play(kit, 4 * bar, kick(0.8, deep=55))
    if bar % 8 == 7:
        for index in range(6):
            score.play(kit, 4 * bar + 2 + index / 3, snare(score.rng, 0.3 + 0.08 * index), pan=-0.05)
            score.play(kit, 4 * bar + 2 + index / 3, woodblock("C6" if index % 2 else "A5", 0.35), pan=0.3)
