"""An alarm rings at its minute, with its sound, message and notification, and ends automatically."""

import os
import re
import shutil
import subprocess
import time

import numpy
import pytest

import sound
from groups import group
from session import wait_until


def test_alarms_of_a_run_ring_in_their_minutes(session):
    session.start_all()
    session.save(group("7:00", label="朝", alarmCount=2, ttsEnabled=True, ttsMessage="wake up", ttsVolume=0.8,
                       ttsLastEnabled=True, ttsLastMessage="last \"call\""))
    program = session.run()
    for minute in range(2):
        session.clock.set_before(minute)
        session.wait_for_alarm(program, minute)
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
        '[TTSPlayer] speaking: "last "call"" vol=0.8 loop=true',
    ]
    notified = session["notifications"].calls("Notify")
    assert [(call["summary"], call["body"], call["replaces"]) for call in notified] == [
        ("KOVA", "朝 — 7:00", 0), ("KOVA", "朝 — 7:01", 0)]
    # Otherwise it stays on the screen until it is dismissed.
    assert all(0 < call["timeout"] <= 60_000 and call["hints"]["urgency"] == chr(1) for call in notified)
    assert len({call["hints"]["x-kova-identifier"] for call in notified}) == 2


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
    session.run().wait_for(f"[Scheduler] FIRE: {line} alarm #1")
    assert session[service].wait_for_call("Notify")["body"] == body


def test_the_message_is_repeated_after_a_pause_at_its_volume(session):
    session.start("sound", "speech")
    session.save(*(group(f"7:{minute}", volume=0, ttsLastEnabled=True, ttsLastMessage="it is time to wake up",
                         ttsVolume=volume) for minute, volume in enumerate((1.0, 0.6))))
    program = session.run()
    strengths = []
    for minute in range(2):
        session.clock.set_before(minute)
        with session.record() as recording:
            program.wait_for("[TTSPlayer] speaking…")
            wait_until(lambda: len(sound.sounding(recording.samples())) == 4, 20, 0.1)
        # The first one may be of the previous alarm, and the last one is cut.
        _, first, second, _ = sound.sounding(recording.samples())
        # A reading ends with some silence of its own, and the next one is prepared.
        assert 1.5 <= second[0] - first[1] < 3
        # On a busy machine a dropout lengthens a reading.
        assert first[1] - first[0] == pytest.approx(second[1] - second[0], rel=0.4)
        begin, end = (int(moment * sound.RATE) for moment in second)
        strengths.append(numpy.linalg.norm(recording.samples()[begin:end]))
    assert 0.1 < strengths[1] / strengths[0] < 0.8


def mounting(command):
    """Returns a command that runs a program with a private mount. Skips the test if mounts are not permitted."""
    private = ["/usr/bin/unshare", "--mount", *([] if os.getuid() == 0 else ["--map-root-user"])]
    if subprocess.run([*private, "/bin/true"]).returncode != 0:
        pytest.skip("mounts are forbidden here")
    return [*private, "/bin/sh", "-c", f'/bin/mount {command} && exec "$@"', "sh"]


def test_an_alarm_follows_a_time_zone_that_is_set(session):
    zone = session.folder / "localtime"

    def travel(to):
        shutil.copyfile(f"/usr/share/zoneinfo/{to}", zone)
        os.utime(zone, (len(to), len(to)))  # another file to the C library, which looks at whole seconds

    travel("UTC")
    session.save(group("22:00", label="old"), group("22:01", label="old"), group("7:01", label="new"))
    program = session.run(env={"TZ": None}, under=mounting(f"--bind {zone} /etc/localtime"))
    program.wait_for("[Scheduler] FIRE: old alarm #1")
    travel("Asia/Tokyo")
    session.clock.set_before(1)
    session.wait_for_alarm(program, 1, "new alarm #1")


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
