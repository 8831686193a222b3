"""Alarms ring although the standard streams are blocked or closed, or the process has run into a limit."""

import fcntl
import os
import pty
import termios

import pytest

from groups import group


def unread_pipe():
    reading, writing = os.pipe()
    os.write(writing, bytes(fcntl.fcntl(writing, fcntl.F_GETPIPE_SZ)))  # fills it
    return reading, writing


def stopped_terminal():
    ours, theirs = pty.openpty()
    termios.tcflow(theirs, termios.TCOOFF)  # as by Ctrl-S
    return ours, theirs


@pytest.mark.parametrize("open_stream", [unread_pipe, stopped_terminal])
def test_a_blocked_standard_error_delays_no_alarm(session, open_stream):
    reading, writing = open_stream()
    session.save(group("7:00", label="x", alarmCount=20, ttsEnabled=True, ttsMessage="no service, so a warning"))
    program = session.run("06:59:58.2", stderr=writing)
    for minute in range(3):
        session.wait_for_alarm(program, minute)
        session.clock.set_before(minute + 1)
    assert os.get_blocking(writing)  # other processes may share it
    program.end()
    os.close(reading)
    os.close(writing)


def test_closed_streams_are_tolerated(session):
    session.start("system-bus", "logind")
    free = {"LD_PRELOAD": None}  # the library of the test's clock would open files in their place
    program = session.launch("06:00:00", free, ["/bin/sh", "-c", 'exec "$@" <&- >&- 2>&-', "sh"])
    session["logind"].wait_for_call("Inhibit")
    second = session.launch("06:00:00", free)
    assert second.wait() == 0 and program.is_running()
    program.end()


def test_a_low_descriptor_limit_is_raised(session):
    session.start("sound")
    session.save(group())
    session.run(under=["/usr/bin/prlimit", "--nofile=32:"]).wait_for("[Scheduler] FIRE…")
    session.wait_for_sound()
