"""What the program answers to its arguments, where there is neither a display nor a bus."""

import re
import subprocess

import pytest

from session import PROGRAM, ROOT

VERSION = re.search(r"VERSION ([\d.]+) LANGUAGES", (ROOT / "CMakeLists.txt").read_text())[1]
REFUSED = "kova-alarm: there is no option '{}'; see kova-alarm --help\n"


def answer(tmp_path, *arguments, env=None):
    # Should it start after all, it ends for want of a display.
    env = env or {"HOME": str(tmp_path), "XDG_CONFIG_HOME": str(tmp_path / "config"), "XDG_RUNTIME_DIR": str(tmp_path)}
    done = subprocess.run([PROGRAM, *arguments], env=env, capture_output=True, text=True, timeout=20)
    return done.returncode, done.stdout, done.stderr


@pytest.mark.parametrize("arguments", [["--version"], ["-platform", "nowhere", "--version"]])
def test_tells_its_version(tmp_path, arguments):
    assert answer(tmp_path, *arguments) == (0, f"kova-alarm {VERSION}\n", "")


def test_tells_how_it_is_used(tmp_path):
    status, out, err = answer(tmp_path, "--help")
    assert status == 0 and err == "" and out.startswith("Usage: kova-alarm ") and "--version" in out


@pytest.mark.parametrize("arguments", [["--nonsense"], ["alarm"], ["-x"], [""], ["-reverse", "alarm"],
                                       ["-style=fusion", "fusion"], ["--platform", "nowhere", "--quiet=1"]])
def test_refuses_what_nobody_knows(tmp_path, arguments):
    assert answer(tmp_path, *arguments) == (2, "", REFUSED.format(arguments[-1]))


@pytest.mark.parametrize("arguments", [["-platform", "nowhere"], ["--platform", "nowhere", "-title", "--clock"]])
def test_passes_on_what_the_toolkit_knows(tmp_path, arguments):
    status, _, err = answer(tmp_path, *arguments)
    assert status != 2 and 'Could not find the Qt platform plugin "nowhere"' in err


@pytest.mark.parametrize("portal, told", [
    ("portal", (0, "", "")), ("portal+deny", (1, "", "kova-alarm: no start at login: it was not allowed\n"))])
def test_in_a_sandbox_the_portal_is_asked_for_the_start_at_login(session, portal, told):
    session.start("session-bus", portal)
    assert answer(session.folder, "--start-at-login", env=session.env | {"container": "flatpak"}) == told
    session[portal].wait_for_call("RequestBackground", autostart=True)


def test_starts_with_options_of_the_toolkit(session):
    session.start_all()
    session.run(arguments=["-platform", "offscreen", "-geometry", "900x700"]).end()
