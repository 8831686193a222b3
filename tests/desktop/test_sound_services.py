"""Sound and speech continue, or come back, when a service fails while an alarm rings."""

import signal
import time

import numpy
import pytest

import sound
import speech
from session import wait_until
from test_services import RUN


@pytest.mark.parametrize("how", ["dies", "hangs"])
@pytest.mark.parametrize("service", ["sound", "speech"])
def test_a_service_that_comes_back_is_heard_in_the_same_alarm(session, service, how):
    session.start("sound", "speech")
    session.save(RUN | ({"volume": 0, "ttsVolume": 1} if service == "speech" else {"ttsEnabled": False}))
    program = session.run("06:59:56.2")
    if how == "hangs":
        session[service].signal(signal.SIGSTOP)
    program.wait_for("[Scheduler] FIRE…")
    if how == "dies":
        session.wait_for_sound()
    time.sleep(0.5)
    if (service, how) == ("sound", "hangs"):
        session[service].signal(signal.SIGCONT)
    else:
        session[service].kill()
        session.start(service)
    session.wait_for_sound(skipped=1)


def test_the_speech_service_is_started(session):
    session.start("sound")
    session.save(RUN | {"volume": 0, "ttsVolume": 1})
    session.run(env={"PATH": "/usr/bin"})
    session.wait_for_sound(20)


@pytest.mark.parametrize("options, text", [("", ""), ("+generic", "会議です"), ("+generic+failing", "会議です"),
                                           ("+generic+configured", "")])
def test_japanese_is_spoken_by_another_module_than_espeak(session, options, text):
    """`text` is what the generic module receives. If its command fails, or eSpeak is configured for Japanese, eSpeak
    speaks."""
    session.start("sound", "speech" + options)
    session.save(RUN | {"volume": 0, "ttsVolume": 1, "ttsMessage": "会議です"})
    program = session.run("06:59:56.2", {"PATH": "/usr/bin"})
    with session.record() as recording:
        program.wait_for("[TTSPlayer] speaking…")
        # The generic module of speech-dispatcher 0.12 dies of a failing command, which is noticed after 14 s.
        wait_until(lambda: sound.sounding(recording.samples()), 25)
    assert session["speech" + options].received() == text
    tone = numpy.abs(numpy.fft.rfft(recording.samples()[-sound.RATE // 5:]))
    assert (abs(tone.argmax() * 5 - speech.TONE) <= 10) == (options == "+generic")
