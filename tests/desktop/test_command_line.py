"""The command line, which needs neither a display nor a bus."""

import re
import subprocess

import pytest

from session import PROGRAM, ROOT

VERSION = re.search(r"VERSION ([\d.]+) LANGUAGES", (ROOT / "CMakeLists.txt").read_text())[1]


def run(tmp_path, *arguments, env=None, **variables):
    # If the application starts by mistake, it exits because there is no display.
    env = env or {"HOME": str(tmp_path), "XDG_CONFIG_HOME": str(tmp_path / "config"), "XDG_RUNTIME_DIR": str(tmp_path)}
    done = subprocess.run([PROGRAM, *arguments], env=env | variables, capture_output=True, encoding="utf-8", timeout=20)
    return done.returncode, done.stdout, done.stderr


@pytest.mark.parametrize("arguments", [["--version"], ["-platform", "nowhere", "--version"]])
def test_version(tmp_path, arguments):
    assert run(tmp_path, *arguments) == (0, f"kova-alarm {VERSION}\n", "")


@pytest.mark.parametrize("variables, usage", [
    ({}, "Usage"), ({"LANG": "C.UTF-8"}, "Usage"), ({"LANG": "ja_JP.UTF-8"}, "使い方"), ({"LANG": "ja"}, "使い方"),
    ({"LANG": "jam_JM"}, "Usage"), ({"LANG": "ja_JP.UTF-8", "LC_MESSAGES": "en_US.UTF-8"}, "Usage"),
    ({"LANG": "de_DE", "LC_MESSAGES": "ja_JP"}, "使い方"), ({"LC_ALL": "C", "LC_MESSAGES": "ja_JP"}, "Usage"),
    ({"LC_ALL": "", "LANG": "ja_JP.UTF-8"}, "使い方"), ({"LC_CTYPE": "ja_JP.UTF-8"}, "Usage")])
def test_help_is_in_the_language_of_the_locale(tmp_path, variables, usage):
    status, out, err = run(tmp_path, "--help", **variables)
    assert (status, err) == (0, "") and out.startswith(f"{usage}: kova-alarm [")
    assert all(f"  {option} " in out for option in ("--help", "--start-at-login", "--version"))


@pytest.mark.parametrize("arguments", [["--nonsense"], ["alarm"], ["-x"], [""], ["-reverse", "alarm"],
                                       ["-style=fusion", "fusion"], ["--platform", "nowhere", "--quiet=1"]])
def test_unknown_arguments_are_rejected(tmp_path, arguments):
    error = f"kova-alarm: unknown argument '{arguments[-1]}'; see kova-alarm --help\n"
    assert run(tmp_path, *arguments, LANG="ja_JP.UTF-8") == (2, "", error)


@pytest.mark.parametrize("arguments", [["-platform", "nowhere"], ["--platform", "nowhere", "-title", "--clock"]])
def test_qt_options_are_passed_on(tmp_path, arguments):
    status, _, err = run(tmp_path, *arguments)
    assert status != 2 and 'Could not find the Qt platform plugin "nowhere"' in err


@pytest.mark.parametrize("portal, result", [
    ("portal", (0, "", "")),
    ("portal+deny", (1, "", "kova-alarm: cannot enable start at login: permission denied\n"))])
def test_in_a_sandbox_the_portal_is_asked_for_the_start_at_login(session, portal, result):
    session.start("session-bus", portal)
    assert run(session.folder, "--start-at-login", env=session.env | {"container": "flatpak"}) == result
    session[portal].wait_for_call("RequestBackground", autostart=True)
