"""The program's wall clock, which can be set while it runs."""

import time
from datetime import datetime
from pathlib import Path
from zoneinfo import ZoneInfo

ZONE = "Asia/Tokyo"
MONDAY = "2026-01-05"


class Clock:
    def __init__(self, folder):
        self._file = Path(folder, "clock")
        self._offset = 0.0
        self.env = {
            "LD_PRELOAD": str(next(Path("/usr/lib").glob("*/faketime/libfaketimeMT.so.1"))),
            "FAKETIME_TIMESTAMP_FILE": str(self._file),
            "FAKETIME_NO_CACHE": "1",
            "FAKETIME_DONT_FAKE_MONOTONIC": "1",
            "FAKETIME_DONT_RESET": "1",
            "NO_FAKE_STAT": "1",  # otherwise every start scans the fonts again, since their caches seem out of date
            "FAKETIME_FORCE_MONOTONIC_FIX": "0",  # otherwise timed waits on the monotonic clock return immediately
            "TZ": ZONE,
        }
        self.set("06:30:00")

    def set(self, time_of_day, day=MONDAY):
        """Sets the clock, for instance to "06:59:58.5" in Tokyo."""
        self._offset += self.seconds_to(time_of_day, day)
        self._file.with_suffix(".new").write_text(f"{self._offset:+.6f}\n")
        self._file.with_suffix(".new").replace(self._file)

    def set_before(self, minute):
        """Sets the clock to 0.8 s before that minute after 7:00."""
        self.set("{:02d}:{:02d}:59.2".format(*divmod(7 * 60 + minute - 1, 60)))

    def fixed_env(self, time_of_day):
        """Returns the environment for a clock that is not set again, which needs no file."""
        self.set(time_of_day)
        env = {key: value for key, value in self.env.items() if key != "FAKETIME_TIMESTAMP_FILE"}
        return env | {"FAKETIME": f"{self._offset:+.6f}"}

    def seconds_to(self, time_of_day, day=MONDAY):
        """Returns the seconds until that time."""
        whole, _, fraction = time_of_day.partition(".")
        shown = datetime.fromisoformat(f"{day} {whole}").replace(tzinfo=ZoneInfo(ZONE)).timestamp()
        return shown + float(f"0.{fraction or 0}") - time.time() - self._offset

    def text(self, when=None):
        """Returns the time now, or at a monotonic time: "07:00:00.012"."""
        real = time.time() + ((when or time.monotonic()) - time.monotonic())
        return datetime.fromtimestamp(real + self._offset, ZoneInfo(ZONE)).strftime("%H:%M:%S.%f")[:-3]
