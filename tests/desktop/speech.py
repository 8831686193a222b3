"""speech-dispatcher with espeak-ng, private to a session."""

from pathlib import Path

import numpy

import sound
from process import Process, wait_until

CONFIG = """LogLevel 2
LogDir "{folder}"
DefaultLanguage "en"
DefaultRate 20
AudioOutputMethod "pulse"
AddModule "espeak-ng" "sd_espeak-ng" "espeak-ng.conf"
"""
GENERIC = """GenericExecuteSynth "printf %s \\'$DATA\\' >>{folder}/received; {command} {folder}/tone.wav"
GenericLanguage "ja" "ja" "utf-8"
AddVoice "ja" "FEMALE1" "tone"
"""
TONE = 880  # Hz, the sound of the generic module


class SpeechService(Process):
    def __init__(self, folder, runtime, env, *options):
        """With "generic" there is a module with a Japanese voice, whose command fails with "failing"; with
        "configured", eSpeak is configured for Japanese."""
        config = self._config = Path(folder, "speech")
        (config / "modules").mkdir(parents=True, exist_ok=True)
        (config / "clients").mkdir(exist_ok=True)
        extra = 'LanguageDefaultModule "ja" "espeak-ng"\n' if "configured" in options else ""
        if "generic" in options:
            extra += 'AddModule "tone" "sd_generic" "tone.conf"\n'
            command = "false" if "failing" in options else "paplay"
            (config / "modules/tone.conf").write_text(GENERIC.format(folder=config, command=command))
            sound.write(config / "tone.wav", numpy.sin(numpy.arange(sound.RATE) * 2 * numpy.pi * TONE / sound.RATE))
        (config / "speechd.conf").write_text(CONFIG.format(folder=config) + extra + "DefaultModule espeak-ng\n")
        (config / "modules/espeak-ng.conf").write_text("Debug 0\n")
        self._socket = Path(runtime, "speech-dispatcher/speechd.sock")
        self._socket.parent.mkdir(mode=0o700, exist_ok=True)
        self._socket.unlink(missing_ok=True)
        super().__init__(["speech-dispatcher", "--run-single", "--timeout", "0", "--config-dir", config,
                          "--log-dir", config, "--pid-file", config / "pid",
                          "--communication-method", "unix_socket", "--socket-path", self._socket], env)
        wait_until(self._socket.exists, 20)

    def received(self):
        """What the generic module has been given to speak."""
        file = self._config / "received"
        return file.read_text() if file.exists() else ""
