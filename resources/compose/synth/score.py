"""A score is a loop of whole beats on which sounds are placed. A sound that extends past the end
continues at the beginning, so that the loop is seamless."""
import re
import zlib

import numpy as np

RATE = 44100
STEPS = {"C": 0, "D": 2, "E": 4, "F": 5, "G": 7, "A": 9, "B": 11}


def midi(name):
    """Returns the MIDI number of a note such as 'A4', 'Bb3', 'F#5'."""
    letter, accidental, octave = re.fullmatch(r"([A-G])([#b]?)(-?\d)", name).groups()
    return STEPS[letter] + {"#": 1, "b": -1, "": 0}[accidental] + 12 * (int(octave) + 1)


def hertz(note):
    """Returns the frequency of a note name or of a (possibly fractional) MIDI number."""
    number = midi(note) if isinstance(note, str) else note
    return 440.0 * 2.0 ** ((number - 69) / 12)


def notes(text):
    """Returns the MIDI numbers of notes such as 'D4 F#4 A4'."""
    return [midi(word) for word in text.split()]


class Bus:
    """One stereo track of the mix, as long as the loop."""

    def __init__(self, length, gain, room, effects):
        self.audio = np.zeros((length, 2))
        self.gain, self.room, self.effects = gain, room, effects


class Score:
    """A loop of beats at bpm. The name seeds the random generator."""

    def __init__(self, name, bpm, beats):
        self.bpm, self.beats = bpm, beats
        self.length = round(beats * 60 / bpm * RATE)
        self.rng = np.random.default_rng(zlib.crc32(name.encode()))
        self.buses = []

    def seconds(self, beats):
        return beats * 60 / self.bpm

    def bus(self, gain=1.0, room=0.2, effects=()):
        """effects: functions from a stereo loop to a stereo loop."""
        self.buses.append(Bus(self.length, gain, room, effects))
        return self.buses[-1]

    def progress(self, beat):
        """0 at the start of the loop, 1 at its end."""
        return min(max(beat / self.beats, 0.0), 1.0)

    def play(self, bus, beat, sound, gain=1.0, pan=0.0, loose=0.0):
        """Adds a mono or stereo sound. pan: −1 (left) to 1 (right); loose: random delay in seconds."""
        if sound.ndim == 1:
            angle = (np.clip(pan, -1, 1) + 1) * np.pi / 4
            sound = np.outer(sound, [np.cos(angle), np.sin(angle)])
        start = round((self.seconds(beat) + loose * abs(self.rng.normal())) * RATE)
        for offset in range(0, len(sound), self.length):
            part = sound[offset:offset + self.length] * gain
            first = (start + offset) % self.length
            head = min(len(part), self.length - first)
            bus.audio[first:first + head] += part[:head]
            bus.audio[:len(part) - head] += part[head:]

    def mix(self, room):
        """Returns the stereo loop. room: the impulse response of the shared reverb."""
        from .effects import convolve_loop
        dry = np.zeros((self.length, 2))
        send = np.zeros((self.length, 2))
        for bus in self.buses:
            audio = bus.audio
            for effect in bus.effects:
                audio = effect(audio)
            dry += bus.gain * audio
            send += bus.gain * bus.room * audio
        return dry + convolve_loop(send, room)
