"""Cosmic Alarm Run: a sixteenth-note arpeggio sprints through space while its filter opens."""
import numpy as np

from synth import effects
from synth.drums import clap, hat, kick
from synth.score import Score, notes
from synth.voices import band, clock, synth_pluck, warm_pad

TITLE = "Cosmic Alarm Run"

CHORDS = [notes(text) for text in ("F#3 A3 C#4 E4", "D3 F#3 A3 C#4", "A3 C#4 E4 G#4", "E3 G#3 B3 F#4")]
BARS = 16

# Order of the run through three octaves of chord tones: up, over the top, a look back, up again.
RUNS = ([0, 1, 2, 3, 4, 5, 6, 7, 8, 7, 6, 5, 4, 3, 2, 1], [0, 2, 1, 3, 2, 4, 3, 5, 4, 6, 5, 7, 6, 8, 7, 9])


def compose():
    score = Score("cosmic_alarm_run", bpm=134, beats=4 * BARS)
    arp = score.bus(gain=0.9, room=0.2, effects=[effects.echo(score.seconds(0.75), 0.45, 0.3, damping=6000)])
    lead = score.bus(gain=0.6, room=0.35, effects=[effects.echo(score.seconds(0.5), 0.4, 0.3), effects.chorus(0.002, 0.8)])
    kicks = [4 * bar + beat for bar in range(4, BARS) for beat in range(4)]
    sky = score.bus(gain=0.6, room=0.5, effects=[effects.sweep_low_pass([500, 800, 1200, 2000, 3500, 6000, 8000, 700], 0.6),
                                                 effects.chorus(), effects.duck(score, kicks, 0.5)])
    low = score.bus(gain=0.75, room=0.0, effects=[effects.duck(score, kicks, 0.4)])
    drums = score.bus(gain=0.6, room=0.08)

    for bar in range(BARS):
        chord = CHORDS[bar // 2 % 4] if bar < 8 else CHORDS[bar % 4]
        run(score, arp, bar, chord)
        float_above(score, sky, bar, chord)
        drive(score, low, drums, bar, chord)
        if bar >= 8:
            signal(score, lead, bar, chord)
    for start, length in ((12, 16), (44, 18)):
        rise_wind(score, sky, start, length)
    return score.mix(effects.room(2.2, brightness=7000))


def run(score, arp, bar, chord):
    rise = bar / (BARS - 1)
    tones = [tone + octave for octave in (0, 12, 24) for tone in chord]
    order = RUNS[bar % 2]
    for index, choice in enumerate(order):
        if bar == BARS - 1 and index > 13:
            break
        loud = (0.5 + 0.4 * rise) * (1.15 if index % 4 == 0 else 0.9)
        cutoff = 900 * 11 ** rise
        sound = synth_pluck(tones[choice] + 12, 0.22 + 0.1 * rise, loud, cutoff, 0.2)
        score.play(arp, 4 * bar + index / 4, sound, pan=0.55 * np.sin(2 * np.pi * (index + 4 * bar) / 24))


def float_above(score, sky, bar, chord):
    held = 2 if bar < 8 else 1
    if bar % held == 0:
        for index, tone in enumerate(chord):
            sound = warm_pad(score.rng, tone, score.seconds(4 * held + 0.8), 0.8, cutoff=6000, attack=0.05 if bar == 0 else 0.3, release=0.6)
            score.play(sky, 4 * bar, sound, pan=-0.75 + 0.5 * index)


def drive(score, low, drums, bar, chord):
    rise = bar / (BARS - 1)
    root = chord[0] - 12 if chord[0] - 12 >= 38 else chord[0]
    for index in range(16):
        if bar >= 2 and (index % 4 or bar < 4):
            loud = 0.45 + 0.35 * rise
            score.play(low, 4 * bar + index / 4, synth_pluck(root - 12 + (12 if index % 4 == 2 else 0), 0.2, loud, 500 + 900 * rise, 0.3))
    if bar >= 4:
        for beat in range(4):
            score.play(drums, 4 * bar + beat, kick(0.85, deep=50))
    if bar >= 6:
        for index in range(16 if bar >= 10 else 8):
            at = index / (4 if bar >= 10 else 2)
            score.play(drums, 4 * bar + at, hat(score.rng, 0.55 if at % 1 == 0.5 else 0.3, 0.03), 0.9, 0.3)
    if bar >= 8:
        for beat in (1, 3):
            score.play(drums, 4 * bar + beat, clap(score.rng, 0.65), pan=-0.15)


def signal(score, lead, bar, chord):
    """Dotted call two octaves up; in the last four bars it no longer stops."""
    pattern = (0, 0.75, 1.5, 2.25, 3, 3.5) if bar < 12 else [index / 2 for index in range(8)]
    for index, at in enumerate(pattern):
        if bar == BARS - 1 and at > 3:
            break
        tone = chord[(3, 2, 3, 1, 3, 2, 3, 2)[index]] + 24
        score.play(lead, 4 * bar + at, synth_pluck(tone, 0.3, 0.7 + 0.02 * bar, 9000, 1.0), pan=0.35 * (-1) ** index)
        if bar >= 12:
            score.play(lead, 4 * bar + at + 0.25, synth_pluck(tone + 12, 0.16, 0.7, 9000, 1.0), 0.7, -0.6 * (-1) ** index)


def rise_wind(score, sky, start, beats):
    """Noise whose band climbs until the next section falls in."""
    seconds = score.seconds(beats)
    time = clock(seconds) / seconds
    out = np.zeros(len(time))
    for step in range(8):
        centre = 400 * 1.5 ** step
        near = np.exp(-((time * 8 - step - 0.5) / 1.2) ** 2)
        out += band(score.rng.normal(size=len(time)), centre * 0.8, centre * 1.25) * near
    score.play(sky, start, 0.35 * out * time ** 1.5 * np.clip((1 - time) * 40, 0, 1))
