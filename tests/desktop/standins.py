"""Stand-ins for services of the desktop: standins.py SERVICE [option]... serves it on the bus that the
environment names and prints every call as one JSON line, after a first line "ready". SIGUSR1 is a click on the
last notification."""

import json
import os
import signal
import sys

import dbus
import dbus.service
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib


def record(event, **values):
    print(json.dumps({"event": event, **values}), flush=True)


def watch_client(bus, name, gone):
    watch = bus.watch_name_owner(name, lambda owner: (watch.cancel(), gone()) if not owner else None)


class Notifications(dbus.service.Object):
    name, path = "org.freedesktop.Notifications", "/org/freedesktop/Notifications"
    last = 0

    @dbus.service.method(name, in_signature="susssasa{sv}i", out_signature="u")
    def Notify(self, app, replaces, icon, summary, body, actions, hints, timeout):
        record("Notify", app=app, replaces=replaces, summary=summary, body=body, actions=actions,
             hints={key: str(value) for key, value in hints.items()}, timeout=timeout)
        Notifications.last += 1
        return Notifications.last

    @dbus.service.signal(name, signature="us")
    def ActivationToken(self, number, token):
        pass

    @dbus.service.signal(name, signature="us")
    def ActionInvoked(self, number, action):
        pass

    def click(self):
        self.ActivationToken(self.last, "token")
        self.ActionInvoked(self.last, "default")
        return True

    @dbus.service.method(name, out_signature="as")
    def GetCapabilities(self):
        return ["body"] + (["body-markup"] if "markup" in sys.argv else [])


class Logind(dbus.service.Object):
    name, path = "org.freedesktop.login1", "/org/freedesktop/login1"

    @dbus.service.method(name + ".Manager", in_signature="ssss", out_signature="h")
    def Inhibit(self, what, who, why, mode):
        ours, theirs = os.pipe()
        lock = {"what": what, "who": who, "why": why, "mode": mode}
        record("Inhibit", **lock)
        GLib.io_add_watch(ours, GLib.IO_HUP, lambda *_: (os.close(ours), record("released", **lock)) and False)
        descriptor = dbus.types.UnixFd(theirs)
        os.close(theirs)
        return descriptor


class Portal(dbus.service.Object):
    name, path = "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop"
    locks = 0

    @dbus.service.method("org.freedesktop.portal.Inhibit", in_signature="sua{sv}", out_signature="o",
                         sender_keyword="sender", connection_keyword="bus")
    def Inhibit(self, window, flags, options, sender, bus):
        Portal.locks += 1
        lock = {"flags": flags, "why": options["reason"]}
        record("Inhibit", **lock)
        request = Request(bus, f"/org/freedesktop/portal/desktop/request/{Portal.locks}", lock)
        watch_client(bus, sender, request.end)
        return request.path

    @dbus.service.method("org.freedesktop.portal.Background", in_signature="sa{sv}", out_signature="o",
                         connection_keyword="bus")
    def RequestBackground(self, window, options, bus):
        record("RequestBackground", autostart=options["autostart"])
        request = Request(bus, "/org/freedesktop/portal/desktop/request/background", {})
        granted = dbus.Dictionary({"autostart": "deny" not in sys.argv}, signature="sv")
        GLib.idle_add(request.Response, dbus.UInt32(0), granted)
        return request.path

    @dbus.service.method("org.freedesktop.portal.Notification", in_signature="sa{sv}")
    def AddNotification(self, identifier, notification):
        record("AddNotification", id=identifier, **notification)
        # An unrelated dictionary precedes the token.
        token = dbus.Dictionary({"activation-token": "token"}, signature="sv")
        self.clicked = identifier, notification["default-action"], [{"a": "b"}, token]

    @dbus.service.signal("org.freedesktop.portal.Notification", signature="ssav")
    def ActionInvoked(self, identifier, action, parameters):
        pass

    def click(self):
        self.ActionInvoked(*self.clicked)
        return True

    @dbus.service.method(dbus.PROPERTIES_IFACE, in_signature="ss", out_signature="v")
    def Get(self, interface, key):
        return {("org.freedesktop.portal.Notification", "version"): dbus.UInt32(2)}[interface, key]


class Request(dbus.service.Object):
    def __init__(self, bus, path, lock):
        super().__init__(bus, path)
        self.path, self.lock = path, lock

    @dbus.service.signal("org.freedesktop.portal.Request", signature="ua{sv}")
    def Response(self, status, results):
        pass

    @dbus.service.method("org.freedesktop.portal.Request")
    def Close(self):
        record("Close", **self.lock)
        self.end()

    def end(self):
        if self.lock:
            record("released", **self.lock)
            self.lock = None
            self.remove_from_connection()


class SessionManager(dbus.service.Object):
    name, path = "org.gnome.SessionManager", "/org/gnome/SessionManager"
    locks = {}

    @dbus.service.method(name, in_signature="susu", out_signature="u", sender_keyword="sender",
                         connection_keyword="bus")
    def Inhibit(self, app, window, why, flags, sender, bus):
        cookie = len(self.locks) + 1
        self.locks[cookie] = {"why": why, "flags": flags}
        record("Inhibit", **self.locks[cookie])
        watch_client(bus, sender, lambda: self.end(cookie))
        return cookie

    @dbus.service.method(name, in_signature="u")
    def Uninhibit(self, cookie):
        self.end(cookie)

    def end(self, cookie):
        if self.locks.get(cookie):
            record("released", **self.locks[cookie])
            self.locks[cookie] = None


class PowerManagement(SessionManager):
    name, path = "org.freedesktop.PowerManagement", "/org/freedesktop/PowerManagement/Inhibit"

    @dbus.service.method(name + ".Inhibit", in_signature="ss", out_signature="u", sender_keyword="sender",
                         connection_keyword="bus")
    def Inhibit(self, app, why, sender, bus):
        return SessionManager.Inhibit(self, app, 0, why, None, sender, bus)

    @dbus.service.method(name + ".Inhibit", in_signature="u")
    def UnInhibit(self, cookie):
        self.end(cookie)


class MenuBar(dbus.service.Object):
    name, path = "org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher"

    @dbus.service.method(name, in_signature="s", sender_keyword="sender")
    def RegisterStatusNotifierItem(self, item, sender):
        record("Register", item=str(item), owner=str(sender))

    @dbus.service.method(dbus.INTROSPECTABLE_IFACE, out_signature="s")
    def Introspect(self):
        return f"""<node><interface name="{self.name}">
          <method name="RegisterStatusNotifierItem"><arg name="item" type="s" direction="in"/></method>
          <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
        </interface></node>"""

    @dbus.service.method(dbus.PROPERTIES_IFACE, in_signature="ss", out_signature="v")
    def Get(self, interface, key):
        return {"IsStatusNotifierHostRegistered": True}[key]


if __name__ == "__main__":
    DBusGMainLoop(set_as_default=True)
    service = {"notifications": Notifications, "logind": Logind, "portal": Portal,
               "session-manager": SessionManager, "power-management": PowerManagement, "menu-bar": MenuBar}[sys.argv[1]]
    bus = dbus.SystemBus() if service is Logind else dbus.SessionBus()
    owned = dbus.service.BusName(service.name, bus, do_not_queue=True)
    served = service(bus, service.path)
    GLib.unix_signal_add(GLib.PRIORITY_DEFAULT, signal.SIGUSR1, getattr(served, "click", bool))
    print("ready", flush=True)
    GLib.MainLoop().run()
