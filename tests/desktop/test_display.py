"""An alarm rings although the display hangs or is grabbed by another client."""

import re
import signal
import subprocess

import pytest

from groups import group
from session import wait_until


@pytest.mark.parametrize("fail", [lambda display: display.signal(signal.SIGSTOP), lambda display: display.grab()],
                         ids=["hangs", "is grabbed"])
def test_an_alarm_rings_without_its_display(session, fail):
    session.start_all()
    session.start("display")
    session.save(group(ttsLastEnabled=True, ttsLastMessage="wake up"))
    program = session.run("06:58:30")
    display = session["display"]
    screen = display.watch(0, 0, 1280, 1024)
    wait_until(lambda: any(map(any, screen())))
    display.wait_until_still(1)
    fail(display)
    session.clock.set("06:59:58.5")
    fired = program.wait_for("[Scheduler] FIRE…")
    assert session.clock.text(fired.when).startswith("07:00:00")
    session["notifications"].wait_for_call("Notify")
    sounding = ["pactl", "list", "short", "sink-inputs"]
    both = {"float32le 2ch 44100Hz", "s16le 1ch 22050Hz"}  # sound and speech
    wait_until(lambda: both <= set(re.split("[\t\n]", subprocess.check_output(sounding, env=session.env, text=True))))
