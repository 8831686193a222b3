"""The program as a person uses it, from adding a group to the silence after its alarm, and its menu."""

import json
import signal
import subprocess

import dbus
import pytest

import sound
from display import close_windows
from groups import group
from session import ASSISTED, until


def test_a_group_is_added_rings_and_is_stopped(session):
    session.start_all()
    session.start("display", "accessibility")
    session.save(b"[{}]")
    program = session.run("06:50:00", ASSISTED)
    session.assist("press", "アラーム追加")
    session.assist("write", "ラベル", "walk")
    session.assist("press", "保存")
    aside = session.list_file.with_name(f"{session.list_file.name}.unreadable")
    until(lambda: aside.exists() and session.list_file.exists())
    assert aside.read_bytes() == b"[{}]"
    [added] = json.loads(session.list_file.read_text())
    assert (added["label"], added["targetHour"], added["alarmCount"]) == ("walk", 7, 3)
    session["logind"].wait_for_call("Inhibit", why="KOVA Alarm active — preventing sleep")

    session.clock.set("06:59:58.5")
    with session.record() as recording:
        program.wait_for("[Scheduler] FIRE: walk alarm #3")
        until(lambda: sound.sounding(recording.samples()))
        # A screen reader speaks what takes the focus.
        assert "alert\t7:00\twalk アラーム 3 / 3\tfocused" in session.assist("tell")
        session.assist("press", "停止")
        quiet = 2 * sound.RATE
        until(lambda: len(recording.samples()) > quiet and not sound.sounding(recording.samples()[-quiet:]), 10, 0.1)
    assert not any(line.startswith("alert") for line in session.assist("tell"))
    program.end()


def menu_of(session, registered):
    bus = dbus.bus.BusConnection(session["session-bus"].address)
    item = bus.get_object(registered["owner"], registered["item"] if registered["item"].startswith("/")
                          else "/StatusNotifierItem")
    properties = dbus.Interface(item, dbus.PROPERTIES_IFACE)
    path = properties.Get("org.kde.StatusNotifierItem", "Menu")
    return dbus.Interface(bus.get_object(registered["owner"], path), "com.canonical.dbusmenu"), properties


def entries(menu):
    _, (_, _, children) = menu.GetLayout(0, -1, dbus.Array(signature="s"))
    return [(int(child[0]), str(child[1].get("label", "---" if child[1].get("type") == "separator" else "")),
             bool(child[1].get("enabled", True)), child[1].get("toggle-state"))
            for child in children if child[1].get("visible", True)]


@pytest.mark.parametrize("count", [0, 7])
def test_the_menu_summarises_and_quits(session, count):
    session.start("session-bus", "system-bus", "logind", "menu-bar")
    session.start("display")
    session.save(*[group(f"{hour}:05", label=f"g_{hour} & co", isEnabled=hour != 1) for hour in range(count)])
    program = session.run("05:30:00")
    registered = session["menu-bar"].wait_for_call("Register", 10)
    menu, properties = menu_of(session, registered)
    assert properties.Get("org.kde.StatusNotifierItem", "Title") == "KOVA"
    shown = entries(menu)
    labels = [label for _, label, *_ in shown]
    assert labels[:2] == ["KOVA アラーム", "---"]
    if count == 0:
        assert labels[2:] == ["アラームなし", "---", "---", "ウィンドウを表示", "終了"]
    else:
        assert labels[2] == "有効: 6 / 7" and labels[3] == "---"
        # On the bus "_" is the mark of a mnemonic; the one in front keeps the toolkit from marking the "&".
        assert labels[4:9] == [f"_{hour}:05  g__{hour} & co" for hour in range(5)]
        assert [state for *_, state in shown[4:9]] == [1, 0, 1, 1, 1]
        assert labels[9:] == ["他 2件...", "---", "スリープ防止中", "---", "ウィンドウを表示", "終了"]
    assert [enabled for _, label, enabled, _ in shown if label == "KOVA アラーム"] == [False]
    quit_entry = next(number for number, label, *_ in shown if label == "終了")
    # It need not answer before it is gone.
    menu.Event(quit_entry, "clicked", dbus.Int32(0), dbus.UInt32(0), ignore_reply=True)
    assert program.wait() == 0
    assert ("[PowerManager] Sleep prevention OFF" in program.texts()) == (count > 0)


@pytest.mark.parametrize("service, env", [("notifications", {}), ("portal", {"container": "flatpak"})])
def test_a_closed_window_is_silent_and_comes_back_by_the_notification(session, service, env):
    session.start("session-bus", "sound", "display", "menu-bar", service)
    session.save(group(soundName="wakeup_pulse"))
    session.run("06:59:57", env)
    session["menu-bar"].wait_for_call("Register")
    with session.record() as recording:
        until(lambda: sound.sounding(recording.samples()))
        assert close_windows(session.env["DISPLAY"]) == 1
        quiet = 2 * sound.RATE
        until(lambda: not sound.sounding(recording.samples()[-quiet:]), 10, 0.1)
    assert close_windows(session.env["DISPLAY"]) == 0
    session[service].signal(signal.SIGUSR1)
    until(lambda: close_windows(session.env["DISPLAY"]))


def test_a_second_start_shows_the_window_of_the_first(session):
    session.start("session-bus", "display")
    session.save(group("12:00"))
    before = session.list_file.read_bytes()
    program = session.run("05:30:00")
    second = session.launch("05:30:00", stderr=subprocess.STDOUT)
    assert second.wait() == 0 and second.texts() == []
    assert session.list_file.read_bytes() == before and program.is_running()
    program.end()


def test_a_second_start_tells_that_the_first_does_not_answer(session):
    session.start("session-bus", "display", "accessibility")
    program = session.run("05:30:00")
    program.signal(signal.SIGSTOP)
    second = session.launch("05:30:00", ASSISTED, stderr=subprocess.STDOUT)
    second.wait_for("kova-alarm: already running, but it does not answer")
    until(lambda: "KOVA Alarm はすでに起動していますが、応答がありません。" in str(session.assist("tell")))
    session.assist("press", "OK")
    assert second.wait() == 1
