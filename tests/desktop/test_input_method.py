"""Text composed with ibus is entered, unless its composition was cancelled."""

import os
import sys
from pathlib import Path

from groups import group
from process import Process
from session import ASSISTED, wait_until


def test_cancelled_composition_is_not_entered(session):
    session.start("session-bus", "display", "accessibility")
    daemon = Process(["ibus-daemon", "--panel", "disable", "--config", "disable"], session.env)
    wait_until(lambda: list(session.folder.glob("config/ibus/bus/*")))
    composer = Process([sys.executable, Path(__file__).with_name("composer.py")], session.env)
    composer.wait_for("ready")
    session.save(group(ttsEnabled=True, ttsMessage="m"))
    program = session.run("03:00:00", env=ASSISTED | {"PATH": os.environ["PATH"], "QT_IM_MODULE": "ibus"})
    session.assist("press", "7:00")
    display = session["display"]

    def click(field, x):
        left, top, width, height = map(int, session.assist("where", field)[0].split())
        display.click(left + (x + width) % width, top + height / 2)

    def texts():
        entries = (line.split("\t") for line in session.assist("list") if line.startswith("text\t"))
        return {name: text for _, name, _, text, *_ in entries}

    expected = ""
    click("ラベル", -20)
    composer.wait_for("focus")
    for keys, added in [(["Escape", "Tab"], ""), (["Return", "Tab"], "ai")]:
        click("ラベル", -20)
        display.type("a", "i")
        composer.wait_for("ai")
        display.type(*keys)
        expected += added
        wait_until(lambda: texts()["ラベル"] == expected)  # what arrives later fails the next round
    for process in (program, composer, daemon):
        process.kill()
