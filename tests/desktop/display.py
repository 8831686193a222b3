"""A virtual display, its contents and its mouse."""

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
import Xlib.XK

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
        self._client = Xlib.display.Display(self.name)

    def click(self, x, y, button=1):
        self.press(x, y, button)
        self.release(button)

    def press(self, x, y, button=1):
        self._send(Xlib.X.MotionNotify, x=int(x), y=int(y))
        self._send(Xlib.X.ButtonPress, button)

    def release(self, button=1):
        self._send(Xlib.X.ButtonRelease, button)

    def type(self, *keys):
        """Presses keys by their X11 names."""
        for key in keys:
            code = self._client.keysym_to_keycode(Xlib.XK.string_to_keysym(key))
            self._send(Xlib.X.KeyPress, code)
            self._send(Xlib.X.KeyRelease, code)

    def _send(self, event, detail=0, **position):
        self._client.xtest_fake_input(event, detail, **position)
        self._client.sync()

    def grab(self):
        """Keeps the server from serving other clients."""
        self._client.grab_server()
        self._client.sync()

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

    def close_windows(self):
        """Asks every window to close, as a title bar does. Returns the number of windows."""
        protocols, delete = self._client.intern_atom("WM_PROTOCOLS"), self._client.intern_atom("WM_DELETE_WINDOW")
        windows = list(filter(_is_closable, self._client.screen().root.query_tree().children))
        for window in windows:
            window.send_event(Xlib.protocol.event.ClientMessage(
                window=window, client_type=protocols, data=(32, [delete, Xlib.X.CurrentTime, 0, 0, 0])))
        self._client.sync()
        return len(windows)


def _is_closable(window):
    try:
        return window.get_attributes().map_state == Xlib.X.IsViewable and window.get_wm_protocols()
    except Xlib.error.BadWindow:  # destroyed meanwhile
        return False
