"""Idle sleep is held off for the whole run, once more while a group is on, and let go at the end."""

import signal
import time

import pytest

import sound
from groups import group

REASON = "KOVA Alarm active — preventing sleep"
ACTIVITY = "KOVA alarm scheduling must remain active"


@pytest.mark.parametrize("inhibitor, lock", [
    ("logind", {"what": "idle", "mode": "block", "who": "KOVA Alarm"}),
    ("portal", {"flags": 4}),
    ("session-manager", {"flags": 4}),
])
@pytest.mark.parametrize("end", [signal.SIGTERM, signal.SIGINT, signal.SIGKILL])
def test_sleep_is_held_off_until_the_end(session, inhibitor, lock, end):
    session.start("session-bus", "system-bus", inhibitor)
    session.save(group(isEnabled=False), group("12:00"))
    program = session.run()
    for reason in (ACTIVITY, REASON):
        session[inhibitor].wait_for_call("Inhibit", why=reason, **lock)
    assert program.told()[0].startswith("[PowerManager] Sleep prevention ON (id: ")
    program.signal(end)
    assert program.wait() == (0 if end != signal.SIGKILL else -end)
    assert ("[PowerManager] Sleep prevention OFF" in program.texts()) == (end != signal.SIGKILL)
    released = {session[inhibitor].wait_for_call("released")["why"] for _ in range(2)}
    assert released == {REASON, ACTIVITY}


@pytest.mark.parametrize("inhibitor", ["logind", "portal", "session-manager", "power-management"])
def test_sleep_is_held_off_again_by_a_service_that_restarts(session, inhibitor):
    session.start("session-bus", "system-bus", inhibitor)
    session.save(group("12:00"))
    program = session.run()
    for _ in range(2):
        assert {session[inhibitor].wait_for_call("Inhibit")["why"] for _ in range(2)} == {ACTIVITY, REASON}
        session[inhibitor].kill()
        session.start(inhibitor)
    for event in ("Inhibit", "released"):
        assert {session[inhibitor].wait_for_call(event)["why"] for _ in range(2)} == {ACTIVITY, REASON}
        program.signal(signal.SIGTERM)
    assert len(session[inhibitor].calls("Inhibit")) == 2


def test_the_running_program_holds_sleep_off_though_every_group_is_off(session):
    session.start("session-bus", "system-bus", "logind")
    session.save(group(isEnabled=False))
    program = session.run()
    session["logind"].wait_for_call("Inhibit", why=ACTIVITY)
    program.end()
    assert not [text for text in program.texts() if text.startswith("[PowerManager]")]
    assert [call["why"] for call in session["logind"].calls("Inhibit")] == [ACTIVITY]


def test_nothing_that_holds_sleep_off_is_a_failure(session):
    session.start("session-bus", "system-bus")
    session.save(group())
    program = session.run()
    assert int(program.told()[0].removeprefix("[PowerManager] Failed to create assertion: ")) != 0
    program.end()
    assert "[PowerManager] Sleep prevention OFF" not in program.texts()


@pytest.mark.parametrize("end", [signal.SIGTERM, signal.SIGINT])
def test_the_end_of_the_program_ends_the_ringing(session, end):
    session.start_all()
    session.save(group(ttsLastEnabled=True, ttsLastMessage="wake up " * 20))
    with session.record() as recording:
        program = session.run()
        program.wait_for("[TTSPlayer] speaking…")
        time.sleep(2)
        program.end(end)
        ended = len(recording.samples())
        time.sleep(2)
    assert sound.sounding(recording.samples()[:ended])
    assert not sound.sounding(recording.samples()[ended + sound.RATE // 2:])
    session["logind"].wait_for_call("released", why=REASON)
    assert program.texts()[-1] == "[PowerManager] Sleep prevention OFF"
