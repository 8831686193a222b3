"""Text composed with ibus is entered once, unless its composition was cancelled."""

import json
import os
import sys
from pathlib import Path

import pytest

from groups import group
from process import Process
from session import ASSISTED, wait_until


@pytest.mark.parametrize("clicks, key, label", [([], "Escape", ""), ([], "Return", "ai"), ([12, -20], "Return", "ai")],
                         ids=["cancelled", "committed", "clicked"])
def test_composition_is_entered_once_or_not_at_all(session, clicks, key, label):
    session.start("session-bus", "display", "accessibility")
    daemon = Process(["ibus-daemon", "--panel", "disable", "--config", "disable"], session.env)
    wait_until(lambda: list(session.folder.glob("config/ibus/bus/*")))
    composer = Process([sys.executable, Path(__file__).with_name("composer.py")], session.env)
    composer.wait_for("ready")
    session.save(group(label=""))
    loaded = session.list_file.stat().st_ino
    program = session.run("03:00:00", env=ASSISTED | {"PATH": os.environ["PATH"], "QT_IM_MODULE": "ibus"})
    session.assist("press", "7:00")
    session["display"].wait_until_still()  # the editor appears at its size and place gradually
    left, top, width, height = map(int, session.assist("where", "ラベル")[0].split())

    def click(x):
        session["display"].click(left + (x + width) % width, top + height / 2)

    # The editor ignores clicks at first, and keys reach the input method later than the field.
    wait_until(lambda: click(-20) or session["display"].type("F9") or "F9" in composer.texts())
    session["display"].type("a", "i")
    composer.wait_for("ai")
    session["display"].wait_until_still()  # the field shows the composition
    for x in clicks:
        click(x)
    session["display"].type(key, "Tab")
    wait_until(lambda: composer.texts()[-1] == "")
    session.assist("press", "保存")
    wait_until(lambda: session.list_file.stat().st_ino != loaded)  # a saved list is a new file
    assert json.loads(session.list_file.read_text())[0]["label"] == label
    for process in (program, composer, daemon):
        process.kill()
