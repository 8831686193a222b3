"""The application starts with any saved list, and does not modify one that it cannot read."""

import json
import resource
import subprocess

from groups import group
from session import ASSISTED, wait_until


def test_a_bad_list_is_reported_and_kept(session):
    session.save(group(), group() | {"label": 7})
    content = session.list_file.read_bytes()
    program = session.run(stderr=subprocess.STDOUT)
    assert f'kova-alarm: cannot read {session.list_file}: group 2: "label": not a text' in program.texts()
    program.end()
    assert session.list_file.read_bytes() == content
    kept = {path.name for path in session.config.iterdir()} - {"instance"}  # the running program's lock
    assert kept == {session.list_file.name}


def test_a_million_weekdays_are_shown_and_ring(session):
    session.start("session-bus", "display", "accessibility")
    session.save(group("7:00", label="x", repeatDays=[*range(7)] * 150_000))
    program = session.run("06:59:50.0", ASSISTED)
    for _ in range(2):
        session.assist("toggle", "7:00 x")
    program.wait_for("[Scheduler] FIRE: x alarm #1", 20)
    program.end()


def test_a_full_disk_costs_no_change(session):
    session.start("session-bus", "display", "accessibility")
    session.save(group("7:00", label="x", isEnabled=False), group("8:00", label="y", isEnabled=False))
    before = session.list_file.read_bytes()
    program = session.run("06:50:00", ASSISTED, stderr=subprocess.STDOUT)

    def limit_files(size):
        resource.prlimit(program.pid, resource.RLIMIT_FSIZE, (size, resource.RLIM_INFINITY))

    limit_files(0)  # as if the disk was full
    session.assist("toggle", "7:00 x")
    assert "File too large" in program.wait_for("kova-alarm: cannot save…")
    assert session.list_file.read_bytes() == before
    limit_files(resource.RLIM_INFINITY)
    session.assist("toggle", "8:00 y")
    wait_until(lambda: [saved["isEnabled"] for saved in json.loads(session.list_file.read_bytes())] == [True] * 2)
    session.clock.set("06:59:59.2")
    program.wait_for("[Scheduler] FIRE: x alarm #1")
    limit_files(0)
    session.assist("press", "停止")
    session.assist("toggle", "8:00 y")
    program.wait_for("kova-alarm: cannot save…")
    program.end()
    assert "File too large" in program.wait_for("kova-alarm: exiting with unsaved changes…")
    assert sum(text.startswith("kova-alarm:") and "save" in text for text in program.texts()) == 3
    assert not list(session.runtime.glob("kova-alarm-*"))
