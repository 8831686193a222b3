"""The standard streams as the program may find them: the alarms ring all the same."""

import os
import pty
import termios

import pytest

from groups import group


def unread_pipe():
    reading, writing = os.pipe()
    os.set_blocking(writing, False)
    for size in (1 << 16, 1):
        try:
            while True:
                os.write(writing, bytes(size))
        except BlockingIOError:
            pass
    os.set_blocking(writing, True)
    return reading, writing


def stopped_terminal():
    ours, theirs = pty.openpty()
    termios.tcflow(theirs, termios.TCOOFF)  # as by Ctrl-S
    return ours, theirs


@pytest.mark.parametrize("open_stream", [unread_pipe, stopped_terminal])
def test_standard_error_holds_nothing_up(session, open_stream):
    reading, writing = open_stream()
    session.save(group("7:00", label="x", alarmCount=20, ttsEnabled=True, ttsMessage="no service, so a complaint"))
    program = session.run("06:59:58.2", stderr=writing)
    for minute in range(3):
        fired = program.wait_for(f"[Scheduler] FIRE: x alarm #{minute + 1}", 5)
        assert session.clock.text(fired.when).startswith(f"07:{minute:02d}:00")
        session.clock.set(f"07:{minute:02d}:59.2")
    assert os.get_blocking(writing)  # others may write there too
    program.end()
    os.close(reading)
    os.close(writing)


def test_closed_streams_end_nothing(session):
    session.start("system-bus", "logind")
    free = {"LD_PRELOAD": None}  # the test's clock would take the places of the streams
    program = session.launch("06:00:00", free, ["/bin/sh", "-c", 'exec "$@" <&- >&- 2>&-', "sh"])
    session["logind"].wait_for_call("Inhibit")
    second = session.launch("06:00:00", free)
    assert second.wait() == 0 and program.is_running()  # it was heard
    program.end()
