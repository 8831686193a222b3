"""A child process whose output is read line by line with a deadline."""

import ctypes
import os
import selectors
import signal
import subprocess
import time

PR_SET_PDEATHSIG = 1
_libc = ctypes.CDLL(None)


def _prepare_child():
    """Ends the child with this process, and undoes what a shell sets for background jobs and nohup."""
    _libc.prctl(PR_SET_PDEATHSIG, signal.SIGKILL)
    for number in (signal.SIGINT, signal.SIGQUIT, signal.SIGHUP):
        signal.signal(number, signal.SIG_DFL)


class Line(str):
    """A line of output and the monotonic time at which it was read."""

    def __new__(cls, text, when):
        self = super().__new__(cls, text)
        self.when = when
        return self


class Process:
    def __init__(self, command, env, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, **options):
        self.started = time.monotonic()
        self.popen = subprocess.Popen(
            command, env=env, stdin=subprocess.DEVNULL, stdout=stdout, stderr=stderr,
            start_new_session=True, preexec_fn=_prepare_child, **options)
        self.pid = self.popen.pid
        self._lines = []
        self._next = 0  # the first line that no wait has skipped
        self._rest = b""
        if self.popen.stdout:
            self._selector = selectors.DefaultSelector()
            self._selector.register(self.popen.stdout, selectors.EVENT_READ)

    def texts(self):
        self._read(0)
        return self._lines[:]

    def wait_for(self, wanted, timeout=10):
        """Returns the next line that equals `wanted`, starts with it if it ends with "…", or satisfies it as a
        function. Skips the lines before it, so that waits follow the order of the output."""
        deadline = time.monotonic() + timeout
        while True:
            while self._next < len(self._lines):
                line = self._lines[self._next]
                self._next += 1
                if _matches(line, wanted):
                    return line
            left = deadline - time.monotonic()
            if left <= 0 or not self._read(left):
                when = f"within {timeout} s" if left <= 0 else "before the end"
                raise AssertionError(f"no {wanted!r} {when} of the output: {self.texts()}")

    def _read(self, timeout):
        """Returns False at the end of the output."""
        if not self._selector.select(timeout):
            return True
        when = time.monotonic()
        data = os.read(self.popen.stdout.fileno(), 1 << 16)
        *whole, self._rest = (self._rest + data).split(b"\n")
        self._lines += [Line(text.decode(), when) for text in whole]
        return bool(data)

    def signal(self, number):
        self.popen.send_signal(number)

    def wait(self, timeout=10):
        """Returns the exit status; negative for a signal."""
        return self.popen.wait(timeout)

    def kill(self):
        self.popen.kill()
        self.popen.wait()

    def is_running(self):
        return self.popen.poll() is None


def _matches(text, wanted):
    if callable(wanted):
        return wanted(text)
    return text.startswith(wanted[:-1]) if wanted.endswith("…") else text == wanted


def wait_until(condition, timeout=10, step=0.01):
    """Polls a condition that no event reports."""
    deadline = time.monotonic() + timeout
    while not condition():
        if time.monotonic() > deadline:
            raise AssertionError("timeout")
        time.sleep(step)
