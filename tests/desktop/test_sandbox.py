"""The application uses no network, writes nothing but its list, and reads no file of the user but the chosen sound.
The system calls of a whole run are checked."""

import re
import sys

import sound
from groups import custom
from process import Process
from session import ASSISTED, PROGRAM, ROOT, wait_until

SOUNDS = ROOT / "resources/Sounds"

WATCHED = ("socket,execve,execveat,open,openat,openat2,creat,truncate,rename,renameat,renameat2,link,linkat,symlink,"
           "symlinkat,unlink,unlinkat,mkdir,mkdirat,rmdir,mknod,mknodat,chmod,fchmodat,chown,fchownat,lchown,"
           "utimensat,setxattr")


def watching(log):
    """Runs a program and logs its successful calls, with the path behind each descriptor."""
    return ["/usr/bin/strace", "-D", "-f", "-q", "-z", "-y", "--seccomp-bpf", "-o", log, "-e", f"trace={WATCHED}"]


def has_ended(process, log):
    return log.exists() and re.search(rf"^{process.pid} +\+\+\+ exited", log.read_text(), re.M)


def paths(call):
    """What a call opened, or the names that it changed."""
    opened = re.search(r" = \d+<(.*)>(\(deleted\))?$", call)
    if opened:
        return [opened[1]]
    return [name if name.startswith("/") else f"{folder}/{name}"
            for folder, name in re.findall(r'(?:<([^>]*)>, )?"((?:[^"\\]|\\.)*)"', call)]


def violations(log, program, writable, readable):
    found, begun = [], {}
    _, _, run = log.read_text().partition(f'execve("{program}"')
    for line in run.splitlines()[1:]:
        thread, call = line.split(maxsplit=1)
        if call.endswith("<unfinished ...>"):  # interrupted by the call of another thread
            begun[thread] = call.removesuffix("<unfinished ...>")
            continue
        call = re.sub(r"^<\.\.\. \w+ resumed>", lambda _: begun.pop(thread), call)
        if not is_allowed(call, writable, readable):
            found.append(call)
    return found


def is_allowed(call, writable, readable):
    if call.startswith(("+++", "---")):
        return True  # a thread's end, a signal
    if call.startswith("socket("):
        return call.startswith("socket(AF_UNIX,")
    reads = call.startswith("open") and not re.search("O_WRONLY|O_RDWR|O_CREAT|O_TRUNC", call)
    if call.startswith("exec"):
        return bool(re.match(r'execve\("/proc/\d+/fd/\d+"', call))  # the player, which was opened before
    return all(
        re.fullmatch("|".join(readable + writable if reads else writable), path) for path in paths(call))


def test_a_run_accesses_nothing_else(session):
    log, own = session.folder / "calls", session.folder / "music/own.wav"
    own.parent.mkdir()
    sound.write(own, sound.read(SOUNDS / "wakeup_pulse.mp3")[:sound.RATE])
    session.start_all()
    session.start("display", "accessibility")
    session.save(custom(own, label="x", ttsLastEnabled=True, ttsLastMessage="wake up"))
    # Each reading of a clock that can be set opens a file.
    fixed = session.clock.fixed_env("06:59:45") | {"FAKETIME_TIMESTAMP_FILE": None}
    program = session.run("06:59:45", fixed | ASSISTED, watching(log))
    session.assist("press", "アラーム追加")
    session.assist("press", "Wake-up Pulse 試聴")
    session.assist("press", "保存")
    program.wait_for("[TTSPlayer] speaking…", 30)
    session.assist("press", "停止")
    program.end()
    wait_until(lambda: has_ended(program, log))
    for needed in (own, "/Sounds/wakeup_pulse.mp3", f"{session.list_file}~"):  # otherwise the run was not traced
        assert str(needed) in log.read_text()

    home, runtime = re.escape(str(session.folder)), re.escape(str(session.runtime))
    writable = [
        rf"{home}/config/kova-alarm(/.*)?",
        rf"{runtime}/(\.\w{{6}}(/s)?|kova-alarm-\w+)",  # the socket for a second start
        rf"(/var|{home})/cache/fontconfig(/.*)?",  # the font library's
        r"/proc/self/fd/\d+",  # its own unnamed file, to be linked
        r".*/pipe:\[\d+\]|pipe:\[\d+\]",  # its own standard output, reopened
        "/dev/null",  # the player's standard streams
        r"/dev/shm/((sem\.)?faketime_\w+|sem\.\w{6})",  # the clock of this test
    ]
    readable = [
        r"/usr/(lib|libexec/kova-alarm|share|local/share/fonts)(/.*)?",
        r"/etc/(ld\.so\.cache|locale\.alias|localtime|machine-id|nsswitch\.conf|passwd|(fonts|pulse|X11)/.*)",
        r"/sys/devices/system/cpu/.*", r"/proc/((self|\d+)/.*|filesystems|stat)", r"/dev/(urandom|null|shm)",
        rf"{home}/config/pulse/cookie", rf"{runtime}/pulse",
        rf"{re.escape(str(SOUNDS))}(/\w+\.mp3)?", rf"{re.escape(str(PROGRAM.parent))}/kova-alarm-(player|ffmpeg\.so)",
        re.escape(str(own)),
        "/tmp",  # named in the player's confinement
    ]
    assert violations(log, PROGRAM, writable, readable) == []


def test_violations_are_detected(tmp_path):
    log, own = tmp_path / "calls", tmp_path / "own"
    operations = ["open('own', 'w')", "open('own')", "os.rename('own', 'other')", "open('other')",
             "socket.socket(socket.AF_INET)", "os.execv('/bin/true', ['true'])"]
    script = "import os, socket; os.chdir(os.environ['HOME']); " + "; ".join(operations)
    process = Process([*watching(log), sys.executable, "-I", "-c", script], {"HOME": str(tmp_path)})
    wait_until(lambda: has_ended(process, log))
    seen = violations(log, sys.executable, [re.escape(str(own))], ["/(usr|etc|proc)/.*"])
    assert [re.search(r"\w+", call)[0] for call in seen] == [
        "rename", "openat", "socket", "execve"], seen
