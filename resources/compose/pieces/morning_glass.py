"""Morning Glass: glass bells climb a D major ladder, ever closer together."""
from synth import effects
from synth.drums import shaker
from synth.score import Score, notes
from synth.voices import bowed_glass, glass_bell

TITLE = "Morning Glass"

# One rising ladder per bar; the fourth bar of each phrase stretches furthest.
LADDERS = [notes(text) for text in (
    "D4 A4 D5 E5 F#5 A5 C#6 E6",
    "B3 F#4 B4 D5 F#5 A5 B5 D6",
    "G3 D4 B4 D5 E5 G5 B5 F#6",
    "A3 E4 A4 C#5 E5 B5 C#6 A6",
)]
BARS = 14


def compose():
    score = Score("morning_glass", bpm=96, beats=4 * BARS)
    bells = score.bus(room=0.35, effects=[effects.echo(score.seconds(0.75), 0.35, 0.22)])
    sparks = score.bus(gain=0.55, room=0.5)
    glass = score.bus(gain=0.8, room=0.5)
    air = score.bus(gain=0.3, room=0.2)

    for bar in range(BARS - 1):
        ladder = LADDERS[bar % 4]
        rise = bar / (BARS - 2)
        for index, tone in enumerate((ladder[0] + 12, ladder[1] + 12, ladder[4])):
            score.play(glass, 4 * bar, bowed_glass(tone, score.seconds(4.6), 0.45 + 0.25 * rise), pan=0.5 * (index - 1))
        climb(score, bells, bar, ladder, rise)
        if bar >= 5:
            answer(score, sparks, bar, ladder, rise)
        if bar >= 8:
            for eighth in range(8):
                score.play(air, 4 * bar + eighth / 2, shaker(score.rng, 0.3 + 0.3 * rise), 1 if eighth % 2 else 0.5, 0.3)
    last_call(score, bells, sparks)
    return score.mix(effects.room(2.6, brightness=7000))


def climb(score, bells, bar, ladder, rise):
    """Quarters at first, then eighths, then eighths in octaves."""
    if bar < 3:
        steps = [(0, 0), (1, 2), (2, 4), (3, 6)] if bar else [(0, 0), (0.5, 1), (1, 2), (2, 4), (3, 6)]
    else:
        steps = [(index / 2, index) for index in range(8)]
    for beat, index in steps:
        level = 0.42 + 0.4 * rise + 0.02 * index
        place = -0.6 + 1.2 * index / 7
        score.play(bells, 4 * bar + beat, glass_bell(ladder[index], 3.2 - rise, level), pan=place, loose=0.004)
        if bar >= 9:
            score.play(bells, 4 * bar + beat, glass_bell(ladder[index] + 12, 2.0, 0.45 * level), pan=-place)


def answer(score, sparks, bar, ladder, rise):
    """High echoes between the steps, twice as dense in the last third."""
    grid = 0.5 if bar < 9 else 0.25
    beat, index = grid / 2 if bar >= 9 else 0.25, 0
    while beat < 4:
        tone = ladder[4 + (index * 3 + bar) % 4] + 12
        score.play(sparks, 4 * bar + beat, glass_bell(tone, 1.2, 0.3 + 0.4 * rise), pan=0.8 * (-1) ** index)
        beat += grid
        index += 1


def last_call(score, bells, sparks):
    """The closing bar: three bright double strikes, then the ring leads back to the top."""
    first = 4 * (BARS - 1)
    for strike in (0, 0.25, 1, 1.25, 2, 2.25):
        for tone, place in zip(notes("A4 E5 A5 C#6 E6 A6"), (-0.7, -0.4, -0.1, 0.2, 0.5, 0.8)):
            score.play(bells, first + strike, glass_bell(tone, 1.8, 0.8), 0.8, place)
    score.play(sparks, first + 3, glass_bell("E6", 1.2, 0.4))
    score.play(bells, first + 3.5, glass_bell("A5", 1.0, 0.3), pan=0.3)
