"""Idle sleep is inhibited for the whole run, and once more while a group is on."""

import pytest

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


def reasons(inhibitor, event, count):
    return {inhibitor.wait_for_call(event)["why"] for _ in range(count)}


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
    # A service that replies after half a second, as on a busy machine, is a failure, which is not retried.
    result = program.wait_for(lambda text: "prevention ON" in text or "Failed" in text)
    held = {ACTIVITY, REASON} if "ON" in result else {ACTIVITY}
    for _ in range(2):  # a restarted service is asked again
        session[inhibitor].kill()
        session.start(inhibitor)
        assert reasons(session[inhibitor], "Inhibit", len(held)) == held
    program.end()
    assert reasons(session[inhibitor], "released", len(held)) == held
    assert len(session[inhibitor].calls("Inhibit")) == len(held)
