"""Sound and speech continue, or come back, when a service fails while an alarm rings."""

import signal
import subprocess
import time

import numpy
import pytest

import sound
import speech
from session import wait_until
from test_services import BUSES, RUN

FAULTS = {"dies": signal.SIGKILL, "hangs": signal.SIGSTOP}


@pytest.mark.parametrize("service, how", [("sound", "dies"), ("sound", "hangs"), ("speech", "is spawned")])
def test_sound_and_speech_come_back(session, service, how):
    spawned = how == "is spawned"
    session.start("sound", *([] if spawned else ["speech"]))
    session.save(RUN | ({"volume": 0} if service == "speech" else {"ttsEnabled": False}))
    program = session.run("06:59:58.2", {"PATH": "/usr/bin"} if spawned else None)
    if not spawned:
        session[service].signal(FAULTS[how])
        program.wait_for("[Scheduler] FIRE…")
        if how == "hangs":
            session[service].signal(signal.SIGCONT)
        else:
            session.start(service)
        session.clock.set("07:00:57.5")
    with session.record() as recording:
        program.wait_for("[Scheduler] FIRE…")
        wait_until(lambda: sound.sounding(recording.samples()[-sound.RATE:]), 15, 0.1)


@pytest.mark.parametrize("how", ["dies", "hangs"])
def test_speech_resumes_in_the_same_alarm(session, how):
    session.start("sound", "speech")
    session.save(RUN | {"volume": 0})
    program = session.run("06:59:56.2")
    if how == "hangs":
        session["speech"].signal(FAULTS[how])
    program.wait_for("[TTSPlayer] speaking…")
    if how == "dies":
        session.wait_for_sound()
    time.sleep(0.5)
    session["speech"].kill()
    session.start("speech")
    session.wait_for_sound(skipped=1)


@pytest.mark.parametrize("options, text", [("", ""), ("+generic", "会議です"), ("+generic+failing", "会議です"),
                                           ("+generic+configured", "")])
def test_japanese_is_spoken_by_another_module_than_espeak(session, options, text, record_property):
    """`text` is what the generic module receives. If its command fails, or eSpeak is configured for Japanese, eSpeak
    speaks."""
    session.start("sound", "speech" + options)
    session.save(RUN | {"volume": 0, "ttsMessage": "会議です"})
    program = session.run("06:59:56.2", {"PATH": "/usr/bin"})
    with session.record() as recording:
        started = program.wait_for("[TTSPlayer] speaking…").when
        wait_until(lambda: sound.sounding(recording.samples()))
    record_property("seconds to speech", recording.started + sound.sounding(recording.samples())[0][0] - started)
    assert session["speech" + options].received() == text
    tone = numpy.abs(numpy.fft.rfft(recording.samples()[-sound.RATE // 5:]))
    assert (abs(tone.argmax() * 5 - speech.TONE) <= 10) == (options == "+generic")


@pytest.mark.parametrize("services", [BUSES, ["speech", "notifications", "logind"]])
def test_the_ringing_outlives_other_services(session, services):
    session.start_all()
    session.save(RUN | {"ttsEnabled": False})
    program = session.run("06:59:58.2")
    program.wait_for("[Scheduler] FIRE…")
    with session.record() as recording:
        wait_until(lambda: sound.sounding(recording.samples()))
        for service in services:
            session[service].kill()
        killed = len(recording.samples())
        wait_until(lambda: len(recording.samples()) > killed + 3 * sound.RATE)
    [(begin, end)] = sound.sounding(recording.samples()[killed:], shortest_pause=1.5)
    assert begin < 1 and end > 2
    session.clock.set_before(1)
    program.wait_for("[Scheduler] FIRE: x alarm #2")


def test_a_sound_server_that_restarts_sounds_again_in_the_same_alarm(session, record_property):
    session.start("sound")
    session.save(RUN | {"ttsEnabled": False})
    program = session.run("06:59:58.2", stderr=subprocess.STDOUT)
    program.wait_for("[Scheduler] FIRE…")
    session.wait_for_sound()
    session["sound"].kill()
    program.wait_for("kova-alarm: no sound…")
    session.start("sound")
    back = time.monotonic()
    wait_until(lambda: subprocess.check_output(["pactl", "list", "short", "sink-inputs"], env=session.env))
    record_property("seconds from the server to the alarm's stream", time.monotonic() - back)
    session.wait_for_sound()
