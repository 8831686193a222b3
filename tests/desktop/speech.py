"""speech-dispatcher with espeak-ng, private to a session."""

import time
from pathlib import Path

from process import Process

CONFIG = """LogLevel 2
LogDir "{folder}"
DefaultLanguage "en"
DefaultRate 20
AudioOutputMethod "pulse"
AddModule "espeak-ng" "sd_espeak-ng" "espeak-ng.conf"
DefaultModule espeak-ng
"""


class SpeechService(Process):
    def __init__(self, folder, runtime, env):
        config = Path(folder, "speech")
        (config / "modules").mkdir(parents=True, exist_ok=True)
        (config / "clients").mkdir(exist_ok=True)
        (config / "speechd.conf").write_text(CONFIG.format(folder=config))
        (config / "modules/espeak-ng.conf").write_text("Debug 0\n")
        self._socket = Path(runtime, "speech-dispatcher/speechd.sock")
        self._socket.parent.mkdir(mode=0o700, exist_ok=True)
        self._socket.unlink(missing_ok=True)
        super().__init__(["speech-dispatcher", "--run-single", "--timeout", "0", "--config-dir", config,
                          "--log-dir", config, "--pid-file", config / "pid",
                          "--communication-method", "unix_socket", "--socket-path", self._socket], env)
        deadline = time.monotonic() + 20
        while not self._socket.exists():
            if time.monotonic() > deadline or not self.is_running():
                raise AssertionError("the speech service does not start")
            time.sleep(0.02)
