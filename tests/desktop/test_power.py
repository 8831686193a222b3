"""Idle sleep is inhibited for the whole run, and once more while a group is on."""

import signal
import time

import pytest

import sound
from groups import group
from session import ASSISTED

REASON = "KOVA Alarm active — preventing sleep"
ACTIVITY = "KOVA alarm scheduling must remain active"

LOCKS = {
    "logind": {"what": "idle", "mode": "block", "who": "KOVA Alarm"},
    "portal": {"flags": 4},
    "session-manager": {"flags": 4},
    "power-management": {},
}


@pytest.mark.parametrize("inhibitor", LOCKS)
def test_idle_sleep_is_inhibited_while_a_group_is_on(session, inhibitor):
    session.start("session-bus", "system-bus", "display", "accessibility", inhibitor)
    session.save(group("12:00", label="x"))
    program = session.run(env=ASSISTED)
    for reason in (ACTIVITY, REASON):
        session[inhibitor].wait_for_call("Inhibit", why=reason, **LOCKS[inhibitor])
    for event in ("released", "Inhibit"):
        session.assist("toggle", "12:00 x")
        session[inhibitor].wait_for_call(event, why=REASON)
    assert [call["why"] for call in session[inhibitor].calls("released")] == [REASON]
    assert program.is_running()


@pytest.mark.parametrize("end", [signal.SIGTERM, signal.SIGINT, signal.SIGKILL])
def test_every_inhibitor_is_released_at_the_end(session, end):
    session.start("session-bus", "system-bus", "logind")
    session.save(group(isEnabled=False), group("12:00"))
    program = session.run()
    assert program.log_lines()[0].startswith("[PowerManager] Sleep prevention ON (id: ")
    program.signal(end)
    assert program.wait() == (0 if end != signal.SIGKILL else -end)
    assert ("[PowerManager] Sleep prevention OFF" in program.texts()) == (end != signal.SIGKILL)
    assert reasons(session["logind"], "released", 2) == {REASON, ACTIVITY}


@pytest.mark.parametrize("inhibitor", LOCKS)
def test_a_restarted_service_is_asked_again(session, inhibitor):
    session.start("session-bus", "system-bus", inhibitor)
    session.save(group("12:00"))
    program = session.run()
    # A service that replies after half a second, as on a busy machine, is a failure, which is not retried.
    is_prevented = program.log_lines()[0].startswith("[PowerManager] Sleep prevention ON")
    held = {ACTIVITY, REASON} if is_prevented else {ACTIVITY}
    assert reasons(session[inhibitor], "Inhibit", 2) == {ACTIVITY, REASON}
    for _ in range(2):
        session[inhibitor].kill()
        session.start(inhibitor)
        assert reasons(session[inhibitor], "Inhibit", len(held)) == held
    program.signal(signal.SIGTERM)
    assert reasons(session[inhibitor], "released", len(held)) == held
    assert len(session[inhibitor].calls("Inhibit")) == len(held)


def reasons(inhibitor, event, count):
    return {inhibitor.wait_for_call(event)["why"] for _ in range(count)}


def test_without_a_service_the_inhibition_fails(session):
    session.start("session-bus", "system-bus")
    session.save(group())
    program = session.run()
    assert int(program.log_lines()[0].removeprefix("[PowerManager] Failed to create assertion: ")) != 0
    program.end()
    assert "[PowerManager] Sleep prevention OFF" not in program.texts()


def test_the_end_of_the_program_ends_the_ringing(session):
    session.start_all()
    session.save(group(ttsLastEnabled=True, ttsLastMessage="wake up " * 20))
    with session.record() as recording:
        program = session.run()
        program.wait_for("[TTSPlayer] speaking…")
        time.sleep(2)
        program.end()
        ended = len(recording.samples())
        time.sleep(2)
    assert sound.sounding(recording.samples()[:ended])
    assert not sound.sounding(recording.samples()[ended + sound.RATE // 2:])
    session["logind"].wait_for_call("released", why=REASON)
    assert program.texts()[-1] == "[PowerManager] Sleep prevention OFF"
