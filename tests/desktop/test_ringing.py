"""An alarm rings at its minute, with its sound, message and notification, and ends automatically."""

import re
import subprocess
import time
import uuid

import numpy
import pytest

import sound
from groups import group
from session import wait_until


def test_alarms_of_a_run_ring_in_their_minutes(session):
    session.start_all()
    session.save(group("7:00", label="朝", alarmCount=2, ttsEnabled=True, ttsMessage="wake up", ttsVolume=0.8,
                       ttsLastEnabled=True, ttsLastMessage="last \"call\""))
    program = session.run("06:59:58.5")
    first = program.wait_for("[Scheduler] FIRE…")
    assert session.clock.text(first.when).startswith("07:00:00")
    session["notifications"].wait_for_call("Notify")
    session.clock.set_before(1)
    second = program.wait_for("[Scheduler] FIRE…")
    assert session.clock.text(second.when).startswith("07:01:00")
    session["notifications"].wait_for_call("Notify")
    program.wait_for("[TTSPlayer] speaking…")

    lines = [re.sub(r"\(id: [1-9]\d*\)", "(id: N)", text) for text in program.texts()]
    lines.remove("[Scheduler] Notifications granted")  # the service may reply at any time
    assert lines == [
        "[PowerManager] Sleep prevention ON (id: N)",
        "[Scheduler] Started",
        "[Scheduler] FIRE: 朝 alarm #1",
        '[TTSPlayer] speaking: "wake up" vol=0.8 loop=true',
        "[Scheduler] FIRE: 朝 alarm #2",
        '[TTSPlayer] speaking: "last "call"" vol=1.0 loop=true'.replace("1.0", "0.8"),
    ]
    notified = session["notifications"].calls("Notify")
    assert [(call["summary"], call["body"], call["replaces"]) for call in notified] == [
        ("KOVA", "朝 — 7:00", 0), ("KOVA", "朝 — 7:01", 0)]
    # Otherwise it stays on the screen until it is dismissed.
    assert all(0 < call["timeout"] <= 60_000 and call["hints"]["urgency"] == chr(1) for call in notified)
    identifiers = {call["hints"]["x-kova-identifier"] for call in notified}
    assert len(identifiers) == 2 and all(str(uuid.UUID(text)).upper() == text for text in identifiers)


@pytest.mark.parametrize("service, label, line, body", [
    ("notifications", "朝 <b>&", "朝 <b>&", "朝 <b>& — 7:00"),
    ("notifications+markup", "朝 <b>&", "朝 <b>&", "朝 &lt;b&gt;&amp; — 7:00"),
    ("notifications+markup", "", "", "アラーム 7:00"),
    ("notifications", "a\0b\x1b[31m\x7f\x85\n\u2028c", "a b [31m    c", "a b [31m    c — 7:00"),
    ("notifications", "\u202e\u2067b\u200f\ufeff👨\u200d👩", "b👨\u200d👩", "b👨\u200d👩 — 7:00"),
])
def test_a_notification_shows_the_label_as_plain_text(session, service, label, line, body):
    session.start("session-bus", service)
    session.save(group(label=label))
    program = session.run()
    program.wait_for(f"[Scheduler] FIRE: {line} alarm #1")
    assert session[service].wait_for_call("Notify")["body"] == body


def test_the_message_is_read_again_and_again_after_a_pause(session):
    session.start("sound", "speech")
    session.save(group("7:00", volume=0, ttsLastEnabled=True, ttsLastMessage="wake up"),
                 group("7:01", volume=0, ttsLastEnabled=True, ttsLastMessage="wake up", ttsVolume=0.6))

    def listen(program):
        with session.record() as recording:
            program.wait_for("[TTSPlayer] speaking…")
            wait_until(lambda: len(sound.sounding(recording.samples())) == 4, 20, 0.1)
        return recording.samples(), sound.sounding(recording.samples())[:3]

    program = session.run("06:59:57.5")
    loud, readings = listen(program)
    pauses = [after[0] - before[1] for before, after in zip(readings, readings[1:])]
    # A reading ends with some silence of its own, and the next one is prepared.
    assert all(1.5 <= pause < 2.5 for pause in pauses), readings
    lengths = [end - begin for begin, end in readings]
    assert min(lengths) > 0.3 and max(lengths) - min(lengths) < 0.1
    session.clock.set("07:00:58.2")
    quiet, quiet_readings = listen(program)

    def strength(samples, reading):
        begin, end = (int(second * sound.RATE) for second in reading)
        return numpy.linalg.norm(samples[begin:end])

    # The first ones may still be of the louder alarm.
    assert 0.1 < strength(quiet, quiet_readings[-1]) / strength(loud, readings[-1]) < 0.8


def test_a_japanese_message_is_read_as_it_sounds(session):
    session.start("sound", "speech")
    message = "起きる時間です。7:05に病院の予約があります"
    session.save(group("7:00", volume=0, ttsLastEnabled=True, ttsLastMessage=message))
    own = ["spd-say", "--wait", "--language=ja", "オキル ジカンデス。 シチジゴフンニ ビョーインノ ヨヤクガ アリマス"]
    with session.record() as recording:
        subprocess.run(own, env=session.env, check=True, timeout=30)
    [(begin, end)] = sound.sounding(recording.samples(), shortest_pause=1)
    program = session.run("06:59:58.5", {"PATH": "/usr/bin"})
    with session.record() as recording:
        program.wait_for(f'[TTSPlayer] speaking: "{message}" vol=1.0 loop=true')
        wait_until(lambda: len(sound.sounding(recording.samples(), shortest_pause=1)) > 1, 30, 0.1)
    first, *_ = sound.sounding(recording.samples(), shortest_pause=1)
    assert first[1] - first[0] == pytest.approx(end - begin, rel=1 / 3)


@pytest.mark.slow
def test_the_ringing_ends_automatically(session):
    session.start("sound", "speech")
    session.save(group(soundName="wakeup_pulse", ttsLastEnabled=True, ttsLastMessage="wake up"))
    with session.record() as recording:
        program = session.run()
        program.wait_for("[Scheduler] FIRE…")
        time.sleep(59)
    [(begin, end)] = sound.sounding(recording.samples(), shortest_pause=3)
    assert end - begin == pytest.approx(55, abs=0.5)
    assert program.is_running()
