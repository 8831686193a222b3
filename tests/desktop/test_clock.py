"""The clock is set, or the machine is suspended, while the application runs."""

import os
import shutil
import signal
import time

import pytest

from groups import group
from session import mounting


@pytest.mark.parametrize("at", ["06:00:30", "18:00:30", "07:00:30"])
def test_an_alarm_follows_a_clock_that_is_set(session, at):
    session.save(group())
    program = session.run(at)
    session.clock.set("06:59:57.5")  # leaves time for the tick under way, and for the alarm the whole of its second
    program.wait_for("[Scheduler] FIRE…")


@pytest.mark.parametrize("awake", ["07:00:01.1", "07:00:30"])
def test_an_alarm_slept_through_does_not_ring_late(session, awake):
    session.save(group("7:00", label="missed"), group("7:01", label="next"))
    program = session.run("06:59:57.5")
    program.signal(signal.SIGSTOP)
    time.sleep(0.1)
    session.clock.set(awake)
    program.signal(signal.SIGCONT)
    time.sleep(1.5)
    session.clock.set_before(1)
    program.wait_for("[Scheduler] FIRE: next alarm #1")
    assert not any("missed" in text for text in program.texts())


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
    fired = program.wait_for("[Scheduler] FIRE…")
    assert fired.endswith("new alarm #1") and session.clock.text(fired.when).startswith("07:01:00")
