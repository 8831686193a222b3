"""Private message buses and stand-ins for their services."""

import json
import sys
from pathlib import Path

from process import Process

CONFIG = """<busconfig>
  <type>{type}</type>
  <listen>unix:path={socket}</listen>
  <policy context="default">
    <allow user="*"/><allow own="*"/>
    <allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/>
  </policy>
</busconfig>
"""


class Bus(Process):
    """A dbus-daemon that activates no services."""

    def __init__(self, kind, folder, env):
        config = Path(folder, f"{kind}-bus.conf")
        config.write_text(CONFIG.format(type=kind, socket=f"{folder}/{kind}-bus"))
        Path(folder, f"{kind}-bus").unlink(missing_ok=True)
        super().__init__(["dbus-daemon", f"--config-file={config}", "--nofork", "--print-address=1"], env)
        self.wait_for("unix:…")


class StandIn(Process):
    """A stand-in for a service of the desktop that records calls (standins.py)."""

    def __init__(self, service, env, *options):
        script = Path(__file__).with_name("standins.py")
        super().__init__([sys.executable, script, service, *options], env, stderr=None)
        self.wait_for("ready")

    def wait_for_call(self, event, timeout=10, **values):
        """Returns the next call of that name with these values."""
        def is_wanted(line):
            call = json.loads(line)
            return call["event"] == event and values.items() <= call.items()
        return json.loads(self.wait_for(is_wanted, timeout))

    def calls(self, event):
        return [call for call in map(json.loads, self.texts()[1:]) if call["event"] == event]
