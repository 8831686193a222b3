"""A virtual display, its contents and its mouse."""

import ctypes
import mmap
import os
import struct
import time
import zlib
from pathlib import Path

import Xlib.display
import Xlib.error
import Xlib.protocol.event
import Xlib.X

from process import Process


class Display(Process):
    def __init__(self, folder, env, size=(1000, 800)):
        reading, writing = os.pipe()
        super().__init__(
            ["Xvfb", "-noreset", "-nocursor", "-displayfd", str(writing), "-screen", "0", f"{size[0]}x{size[1]}x24", "-nolisten", "tcp",
             "-fbdir", str(folder)], env, pass_fds=[writing])
        os.close(writing)
        with os.fdopen(reading) as number:
            self.name = f":{number.readline().strip()}"
        self._screen = Path(folder, "Xvfb_screen0")
        self._x11 = ctypes.CDLL("libX11.so.6")
        self._xtst = ctypes.CDLL("libXtst.so.6")
        self._x11.XOpenDisplay.restype = ctypes.c_void_p
        self._connection = ctypes.c_void_p(self._x11.XOpenDisplay(self.name.encode()))

    def click(self, x, y, button=1):
        self.press(x, y, button)
        self.release(button)

    def press(self, x, y, button=1):
        self._xtst.XTestFakeMotionEvent(self._connection, -1, int(x), int(y), 0)
        self._button(button, 1)

    def release(self, button=1):
        self._button(button, 0)

    def type(self, *keys):
        """Presses keys by their X11 names."""
        for key in keys:
            code = self._x11.XKeysymToKeycode(self._connection, self._x11.XStringToKeysym(key.encode()))
            for is_press in (1, 0):
                self._xtst.XTestFakeKeyEvent(self._connection, code, is_press, 0)
        self._x11.XSync(self._connection, 0)

    def _button(self, button, is_press):
        self._xtst.XTestFakeButtonEvent(self._connection, button, is_press, 0)
        self._x11.XSync(self._connection, 0)

    def grab(self):
        """Keeps the server from serving other clients."""
        self._x11.XGrabServer(self._connection)
        self._x11.XSync(self._connection, 0)

    def watch(self, left, top, width, height):
        """Returns a function that reads the rows of a rectangle, four bytes (BGRX) per pixel, fast enough for polling."""
        with self._screen.open("rb") as file:
            memory = mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ)
        header = struct.unpack(">25I", memory[:100])
        first = header[0] + header[19] * 12 + top * header[12] + left * 4
        lines = [slice(first + y * header[12], first + y * header[12] + width * 4) for y in range(height)]
        return lambda: [memory[line] for line in lines]

    def wait_until_still(self, seconds=0.4, timeout=10):
        """Waits until the screen has not changed for that time."""
        deadline = time.monotonic() + timeout
        last, since = None, time.monotonic()
        while time.monotonic() - since < seconds and time.monotonic() < deadline:
            shown = zlib.crc32(self._screen.read_bytes())
            if shown != last:
                last, since = shown, time.monotonic()
            time.sleep(0.05)


def close_windows(name):
    """Asks every window to close, as a title bar does. Returns the number of windows."""
    display = Xlib.display.Display(name)
    protocols, delete = display.intern_atom("WM_PROTOCOLS"), display.intern_atom("WM_DELETE_WINDOW")

    def is_closable(window):
        try:
            return window.get_attributes().map_state == Xlib.X.IsViewable and window.get_wm_protocols()
        except Xlib.error.BadWindow:  # destroyed meanwhile
            return False

    windows = list(filter(is_closable, display.screen().root.query_tree().children))
    for window in windows:
        window.send_event(Xlib.protocol.event.ClientMessage(
            window=window, client_type=protocols, data=(32, [delete, Xlib.X.CurrentTime, 0, 0, 0])))
    display.sync()
    return len(windows)
