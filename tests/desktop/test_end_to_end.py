"""The application end to end, from adding a group to the silence after its alarm, and its menu."""

import json
import signal
import subprocess

import dbus
import pytest

import sound
from groups import group
from session import ASSISTED, wait_until


def silent(recording):
    quiet = 2 * sound.RATE
    return len(recording.samples()) > quiet and not sound.sounding(recording.samples()[-quiet:])


def add_group(session):
    for step in [
        ("press", "アラーム追加"), ("set", "時", "6"), ("press", "分"), ("press", "45"), ("press", "開始"),
        ("write", "ラベル", "walk"), ("toggle", "水"), ("toggle", "月"), ("set", "回数", "2"), ("set", "間隔", "3"),
        ("press", "Wake-up Pulse"), ("set", "音量", "0.5"), ("toggle", "最終アラームで読み上げ"),
        ("write", "最終アラーム メッセージ", "get up"), ("set", "TTS音量", "0.25"),
    ]:
        session.assist(*step)
    assert {"dialog\t新規アラーム\t\t\tmodal", "combo box\t分\t\t45", "spin button\t回数\t\t2回", "heading\tサウンド\t\t",
            "check box\t月\t\t\tchecked", "check box\t火\t\t", "radio button\tWake-up Pulse\t\t\tchecked",
            "slider\t音量\t\t0.5 of 0 to 1", "text\tラベル\t例: 朝のアラーム\twalk", "list item\t6:45\t\t",
            "list item\t6:48\t最終アラーム\t", "push button\tアラーム追加\t\t\tdisabled"} <= set(session.assist("list"))
    session.assist("try", "アラーム追加")
    session.assist("press", "保存")
    wait_until(session.list_file.exists)
    [added] = json.loads(session.list_file.read_text())
    assert {"targetHour": 6, "targetMinute": 45, "startBefore": False, "label": "walk", "repeatDays": [3, 1],
            "alarmCount": 2, "intervalMinutes": 3, "soundName": "wakeup_pulse", "volume": 0.5, "ttsEnabled": False,
            "ttsLastEnabled": True, "ttsLastMessage": "get up", "ttsVolume": 0.25}.items() <= added.items()
    session["logind"].wait_for_call("Inhibit", why="KOVA Alarm active — preventing sleep")


def change_group(session):
    for step in [("press", "6:45 walk"), ("write", "ラベル", "run"), ("press", "保存"), ("toggle", "6:45 run")]:
        session.assist(*step)
    assert {"list item\t6:45 run\t\t", "check box\t6:45 run\t\t", "push button\t6:45 run\t月・水 2回 / 3分間隔\t",
            "push button\t複製 6:45 run\t\t"} <= set(session.assist("list"))
    for step in [("toggle", "6:45 run"), ("press", "編集"), ("try", "0件を削除"), ("toggle", "選択 6:45 run")]:
        session.assist(*step)
    assert "check box\t選択 6:45 run\t\t\tchecked" in session.assist("list")
    session.assist("press", "1件を削除")
    assert "dialog\t削除確認\t1件のアラームを削除しますか？\t\tmodal" in session.assist("list")
    session.assist("press", "キャンセル")
    session.assist("press", "完了")


def test_a_group_is_created_edited_and_stopped_by_an_assistive_tool(session):
    session.start_all("display", "accessibility")
    program = session.run("06:40:00", ASSISTED)
    add_group(session)
    change_group(session)
    session.clock.set("06:47:58.5")
    with session.record() as recording:
        program.wait_for("[Scheduler] FIRE: run alarm #2")
        wait_until(lambda: sound.sounding(recording.samples()))
        assert "alert\t6:48\trun アラーム 2 / 2\t\tmodal" in session.assist("list")
        session.assist("press", "停止")
        wait_until(lambda: silent(recording), 10, 0.1)
    assert not any(line.startswith("alert") for line in session.assist("list"))
    program.end()


# In D-Bus menus "_" marks the mnemonic and "__" is an underscore. GNOME converts only one of them.
GROUPS = [f"{hour}:05  g__{hour} ＆ co" for hour in range(5)]
COMMANDS = ["---", "ウィンドウを表示", "終了"]


@pytest.mark.parametrize("count, labels", [
    (0, ["アラームなし", "---", *COMMANDS]),
    (5, ["有効: 4 / 5", "---", *GROUPS, "---", "スリープ防止中", *COMMANDS]),
    (7, ["有効: 6 / 7", "---", *GROUPS, "他 2件...", "---", "スリープ防止中", *COMMANDS])])
def test_the_menu_summarises_and_quits(session, count, labels):
    session.start("session-bus", "system-bus", "logind", "menu-bar", "display")
    session.save(*[group(f"{hour}:05", label=f"g_{hour} & co", isEnabled=hour != 1) for hour in range(count)])
    program = session.run("05:30:00")
    owner = session["menu-bar"].wait_for_call("Register")["owner"]
    bus = dbus.bus.BusConnection(session.env["DBUS_SESSION_BUS_ADDRESS"])
    properties = dbus.Interface(bus.get_object(owner, "/StatusNotifierItem"), dbus.PROPERTIES_IFACE)
    assert properties.Get("org.kde.StatusNotifierItem", "Title") == "KOVA"
    path = properties.Get("org.kde.StatusNotifierItem", "Menu")
    menu = dbus.Interface(bus.get_object(owner, path), "com.canonical.dbusmenu")
    _, (_, _, children) = menu.GetLayout(0, -1, dbus.Array(signature="s"))
    numbers, entries, _ = zip(*(child for child in children if child[1].get("visible", True)))
    assert [entry.get("label", "---") for entry in entries] == ["KOVA アラーム", "---", *labels]
    assert not entries[0]["enabled"]
    if count > 0:
        rows = entries[4:9]
        assert not any(row.get("toggle-type") for row in rows)  # the icon shows the state
        assert [row["icon-data"] == rows[0]["icon-data"] for row in rows] == [True, False, True, True, True]
    # The application may exit before it replies.
    menu.Event(numbers[-1], "clicked", dbus.Int32(0), dbus.UInt32(0), ignore_reply=True)
    assert program.wait() == 0
    assert ("[PowerManager] Sleep prevention OFF" in program.texts()) == (count > 0)


@pytest.mark.parametrize("service, env", [("notifications", {}), ("portal", {"container": "flatpak"})])
def test_a_closed_window_stops_the_alarm_and_is_shown_again(session, service, env):
    session.start("session-bus", "sound", "display", "menu-bar", service)
    session.save(group(soundName="wakeup_pulse"))
    session.run("06:59:57", env)
    session["menu-bar"].wait_for_call("Register")
    with session.record() as recording:
        wait_until(lambda: sound.sounding(recording.samples()))
        assert session["display"].close_windows() == 1
        wait_until(lambda: silent(recording), 10, 0.1)
    assert session["display"].close_windows() == 0
    session[service].signal(signal.SIGUSR1)  # a click on the notification
    wait_until(session["display"].close_windows)
    wait_until(lambda: not session["display"].close_windows())
    second = session.launch("07:01:00", env, stderr=subprocess.STDOUT)
    assert second.wait() == 0 and second.texts() == []
    wait_until(session["display"].close_windows)


def test_a_second_start_warns_of_an_unresponsive_first(session):
    session.start("session-bus", "display", "accessibility")
    program = session.run("05:30:00")
    program.signal(signal.SIGSTOP)
    second = session.launch("05:30:00", ASSISTED, stderr=subprocess.STDOUT)
    second.wait_for("kova-alarm: already running, but unresponsive")
    wait_until(lambda: "KOVA Alarm はすでに起動していますが、応答がありません。" in str(session.assist("list")))
    session.assist("press", "OK")
    assert second.wait() == 1
