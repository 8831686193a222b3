"""Observes when an alarm arrives on the bus, at the sound server and at its sink."""

import time

import numpy

import sound
from process import Process


class Witnesses:
    def __init__(self, session):
        self.bus = Process(["dbus-monitor", "--profile", "member='Notify'"], session.env)
        self.server = Process(["pactl", "subscribe"], session.env)
        self.recording = session.record()
        self._offsets = []

    def listen(self, seconds):
        """Records the time offset of the recording, whose blocks may arrive late but never early."""
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            self._offsets.append(time.monotonic() - len(self.recording.samples()) / sound.RATE)
            time.sleep(0.005)

    def first_sample(self, after):
        offset = min(self._offsets)
        samples = self.recording.samples()
        begin = max(0, int((after - offset) * sound.RATE))
        loud = numpy.flatnonzero(abs(samples[begin:]) > 0.002)
        return offset + (begin + loud[0]) / sound.RATE

    def notify(self):
        """Returns the time at which the bus received the call."""
        line = self.bus.wait_for(lambda text: text.startswith("mc\t") and text.endswith("\tNotify"))
        return float(line.split("\t")[1]) - time.time() + time.monotonic()

    def close(self):
        for process in (self.bus, self.server, self.recording):
            process.kill()
