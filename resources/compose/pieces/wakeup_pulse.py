"""Wake-up Pulse: clear beeps in groups that grow from one to a stream, a step higher each time."""
from synth import effects
from synth.drums import clap, hat, kick
from synth.score import Score, midi
from synth.voices import beep, synth_pluck, warm_pad

TITLE = "Wake-up Pulse"

# Beeps per bar in sixteenths, and their pitch; every size is heard in two bars.
GROUPS = [(1, "A5"), (2, "A5"), (3, "B5"), (4, "B5"), (5, "C#6"), (6, "C#6"), (7, "D6"), (8, "E6")]
BARS = 2 * len(GROUPS)


def compose():
    score = Score("wakeup_pulse", bpm=124, beats=4 * BARS)
    signal = score.bus(gain=1.0, room=0.12, effects=[effects.echo(score.seconds(0.75), 0.3, 0.12)])
    hum = score.bus(gain=0.8, room=0.3, effects=[effects.sweep_low_pass([500, 700, 1000, 1500, 2200, 3000, 3500, 500])])
    low = score.bus(gain=0.6, room=0.05)
    drums = score.bus(gain=0.55, room=0.1)

    for bar in range(BARS):
        count, note = GROUPS[bar // 2]
        ring(score, signal, bar, count, midi(note))
        hold(score, hum, low, bar)
        drum(score, drums, bar)
    return score.mix(effects.room(1.1, brightness=6500))


def ring(score, signal, bar, count, tone):
    """One group, beginning on the bar. Every second bar repeats it or, for long groups, doubles its speed."""
    loud = 0.5 + 0.45 * bar / (BARS - 1)
    bite = 0.35 + 0.6 * bar / (BARS - 1)
    answering = bar % 2 == 1
    if count <= 6:
        starts, step = ([0, 2 if count <= 4 else 2.5] if answering else [0]), 0.25
    else:
        starts, step = [0], (0.25 if answering else 0.5)
        count = 2 * count - 1 if answering else count
    for start in starts:
        for index in range(count):
            at = start + index * step
            if at > 3.5:
                break
            lift = 5 if index == count - 1 and count > 1 else 0
            score.play(signal, 4 * bar + at, beep(tone + lift, 0.105, loud, bite), pan=-0.12)
            score.play(signal, 4 * bar + at, beep(tone - 12, 0.105, 0.5 * loud, bite), pan=0.12)
    if bar >= 12:
        for index in range(15):
            score.play(signal, 4 * bar + index / 4, beep(tone + (12 if index % 4 == 0 else 0), 0.06, 0.5 * loud, 0.4), pan=0.6 * (-1) ** index)


def hold(score, hum, low, bar):
    """A sustained pad below the beeps, so that the rests are never silent."""
    root = midi(("A2", "A2", "F#2", "F#2", "D2", "D2", "E2", "E2")[bar // 2])
    if bar % 2 == 0:
        for index, interval in enumerate((12, 19, 24, 28 if bar < 4 or bar >= 8 else 27)):
            score.play(hum, 4 * bar, warm_pad(score.rng, root + interval, score.seconds(9), 0.6, attack=0.08, release=0.7), pan=-0.6 + 0.4 * index)
    for index in range(8):
        loud = 0.35 + 0.4 * bar / (BARS - 1)
        score.play(low, 4 * bar + index / 2, synth_pluck(root + (12 if index % 2 else 0), 0.24, loud, 700 + 90 * bar))


def drum(score, drums, bar):
    for beat in range(4) if bar >= 4 else (0, 2):
        score.play(drums, 4 * bar + beat, kick(0.5 + 0.03 * bar))
    if bar >= 8:
        for index in range(8):
            score.play(drums, 4 * bar + index / 2, hat(score.rng, 0.5 if index % 2 else 0.3, 0.04), 0.8, 0.25)
    if bar >= 12:
        for beat in (1, 3):
            score.play(drums, 4 * bar + beat, clap(score.rng, 0.7), pan=-0.1)
