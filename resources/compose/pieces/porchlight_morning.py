"""Porchlight Morning: fingerpicked steel-string guitar in G; a second guitar, boots and hands join in."""
from synth import effects
from synth.drums import clap, stomp, tambourine
from synth.score import Score, notes
from synth.voices import guitar

TITLE = "Porchlight Morning"

# Voicings from the lowest string up; the first two are the thumb's.
SHAPES = {"G": notes("G2 D3 G3 B3 D4 G4"), "C": notes("C3 G3 C4 E4 G4 C5"), "Em": notes("E2 B2 G3 B3 E4 G4"),
          "D": notes("D3 A3 D4 F#4 A4 D5"), "Am": notes("A2 E3 A3 C4 E4 A4"), "Bm": notes("B2 F#3 B3 D4 F#4 B4"),
          "D7": notes("D3 A3 C4 F#4 A4 D5")}
BARS = "G C G D Em C Am D G Bm C D7 Em C D G".split()

# The melody, one entry per bar: (beat, note).
MELODY = [
    [(0, "B4"), (2.5, "D5")], [(0, "E5"), (2.5, "D5")], [(0, "B4"), (1.5, "A4"), (2.5, "G4")], [(0, "A4"), (3, "D5")],
    [(0, "G5"), (1.5, "F#5"), (2.5, "E5")], [(0, "D5"), (1.5, "E5"), (3, "C5")],
    [(0, "C5"), (1, "B4"), (1.5, "C5"), (2.5, "E5")], [(0, "D5"), (2.5, "A4"), (3, "B4"), (3.5, "C5")],
    [(0, "D5"), (1.5, "G5"), (2.5, "B5")], [(0, "A5"), (1.5, "F#5"), (2.5, "D5")],
    [(0, "E5"), (1, "G5"), (1.5, "E5"), (2.5, "C5")], [(0, "D5"), (1.5, "F#5"), (2.5, "A5"), (3.5, "C6")],
    [(0, "B5"), (1, "G5"), (1.5, "B5"), (2.5, "G5")], [(0, "C6"), (1, "G5"), (1.5, "C6"), (2.5, "G5")],
    [(0, "D6"), (0.5, "C6"), (1, "A5"), (1.5, "C6"), (2, "D6"), (2.5, "A5"), (3, "F#5")], [(0, "G5"), (0.5, "B5"), (1, "D6"), (2, "G5"), (3, "D5"), (3.5, "B4")],
]


def compose():
    score = Score("porchlight_morning", bpm=106, beats=4 * len(BARS))
    body = [effects.bell_curve(110, 5, 0.9), effects.bell_curve(230, 4, 0.8), effects.bell_curve(2600, 3, 1.4),
            effects.low_pass(9500, 1)]
    first = score.bus(room=0.16, effects=body)
    second = score.bus(gain=0.6, room=0.22, effects=body)
    yard = score.bus(gain=0.6, room=0.25)

    for bar, name in enumerate(BARS):
        closing = bar == len(BARS) - 1
        pick(score, first, bar, SHAPES[name], closing)
        sing(score, first, bar)
        if bar >= 7:
            roll(score, second, bar, SHAPES[name], closing)
        if bar >= 11:
            strum(score, second, bar, SHAPES[name], closing)
        if bar >= 4:
            keep_time(score, yard, bar, closing)
    return score.mix(effects.room(0.9, brightness=4500, predelay=0.006))


def pick(score, bus, bar, shape, closing):
    """Alternating thumb on the beats, fingers between."""
    rise = bar / (len(BARS) - 1)
    thumb = [shape[0], shape[1], shape[0] if bar % 2 else shape[2], shape[1]]
    for beat, tone in enumerate(thumb[:2] if closing else thumb):
        score.play(bus, 4 * bar + beat, guitar(score.rng, tone, 1.6, 0.62 + 0.2 * rise), 0.9, -0.2, loose=0.004)
    for beat, string in ((0.5, 3), (1.5, 4), (2, 3), (2.5, 2), (3.5, 4)):
        if bar >= 2 or beat in (1.5, 2.5, 3.5):
            if not (closing and beat > 1.5):
                score.play(bus, 4 * bar + beat, guitar(score.rng, shape[string], 1.8, 0.42 + 0.25 * rise), 0.8, 0.05, loose=0.006)


def sing(score, bus, bar):
    rise = bar / (len(BARS) - 1)
    for beat, note in MELODY[bar]:
        tone = notes(note)[0]
        score.play(bus, 4 * bar + beat, guitar(score.rng, tone, 2.4, 0.66 + 0.25 * rise), 0.95, 0.2, loose=0.004)
        if bar >= 10:
            score.play(bus, 4 * bar + beat, guitar(score.rng, tone - 12, 2.0, 0.6), 0.7, 0.3, loose=0.008)


def roll(score, bus, bar, shape, closing):
    """Second guitar, capo high: sixteenth rolls."""
    tones = [tone + 12 for tone in shape[2:]]
    for index in range(7 if closing else 16):
        tone = tones[(0, 2, 1, 3)[index % 4]]
        level = (0.36 if bar < 11 else 0.5) * (1.2 if index % 4 == 0 else 0.9)
        score.play(bus, 4 * bar + index / 4, guitar(score.rng, tone, 1.0, level), 0.9, -0.65, loose=0.005)


def strum(score, bus, bar, shape, closing):
    for beat, down in ((0, True), (1, True), (1.5, False), (2.5, False), (3, True), (3.5, False)):
        if closing and beat > 1:
            break
        order = shape if down else shape[:1:-1]
        for index, tone in enumerate(order):
            score.play(bus, 4 * bar + beat + index * 0.02, guitar(score.rng, tone, 1.1, 0.75 if down else 0.55), 0.75, 0.6)


def keep_time(score, yard, bar, closing):
    rise = bar / (len(BARS) - 1)
    for beat in (0,) if closing else (0, 2):
        score.play(yard, 4 * bar + beat, stomp(score.rng, 0.55 + 0.4 * rise), 1, -0.1)
    if bar >= 8 and not closing:
        for beat in (1, 3):
            score.play(yard, 4 * bar + beat, clap(score.rng, 0.3 + 0.45 * rise), 0.8, 0.25, loose=0.004)
    if bar >= 11 and not closing:
        for index in range(8):
            score.play(yard, 4 * bar + index / 2, tambourine(score.rng, 0.75 if index % 2 else 0.5), 0.8, -0.4)
