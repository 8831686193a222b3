"""The application uses no network, writes nothing but its list, and reads no file of the user but the chosen sound.
The system calls of a whole run are checked."""

import re

import sound
from groups import custom
from session import ASSISTED, PROGRAM, ROOT, wait_until

SOUNDS = ROOT / "resources/Sounds"

WATCHED = ("socket,execve,execveat,open,openat,openat2,creat,truncate,rename,renameat,renameat2,link,linkat,symlink,"
           "symlinkat,unlink,unlinkat,mkdir,mkdirat,rmdir,mknod,mknodat,chmod,fchmodat,chown,fchownat,lchown,"
           "utimensat,setxattr")


def watching(log):
    """Runs a program and logs the successful calls of each thread, with the path behind each descriptor."""
    return ["/usr/bin/strace", "-D", "-ff", "-q", "-z", "-y", "--seccomp-bpf", "-o", log, "-e", f"trace={WATCHED}"]


def paths(call):
    """What a call opened, or the names that it changed."""
    opened = re.search(r" = \d+<(.*)>(\(deleted\))?$", call)
    if opened:
        return [opened[1]]
    return [name if name.startswith("/") else f"{folder}/{name}"
            for folder, name in re.findall(r'(?:<([^>]*)>, )?"((?:[^"\\]|\\.)*)"', call)]


def violations(log, program, writable, readable):
    found = []
    for file in log.parent.glob(f"{log.name}.*"):
        before, started, run = file.read_text().partition(f'execve("{program}"')
        calls = run.splitlines()[1:] if started else before.splitlines()
        found += [call for call in calls if not is_allowed(call, writable, readable)]
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
    session.start_all("display", "accessibility")
    session.save(custom(own, label="x", ttsLastEnabled=True, ttsLastMessage="wake up"))
    # Each reading of a clock that can be set opens a file.
    fixed = session.clock.fixed_env("06:59:45") | {"FAKETIME_TIMESTAMP_FILE": None}
    program = session.run("06:59:45", fixed | ASSISTED, watching(log))
    for name in ("アラーム追加", "Wake-up Pulse 試聴", "保存"):
        session.assist("press", name)
    program.wait_for("[TTSPlayer] speaking…", 30)
    session.assist("press", "停止")
    program.end()
    wait_until(lambda: "+++ exited" in log.with_suffix(f".{program.pid}").read_text())
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
        re.escape(str(own)),
        r"/usr/(lib|libexec/kova-alarm|share|local/share/fonts)(/.*)?",
        r"/etc/(ld\.so\.cache|locale\.alias|localtime|machine-id|nsswitch\.conf|passwd|(fonts|pulse|X11)/.*)",
        r"/sys/devices/system/cpu/.*", r"/proc/((self|\d+)/.*|filesystems|stat)", r"/dev/(urandom|null|shm)",
        rf"{home}/config/pulse/cookie", rf"{runtime}/pulse",
        rf"{re.escape(str(SOUNDS))}(/\w+\.mp3)?", rf"{re.escape(str(PROGRAM.parent))}/kova-alarm-(player|ffmpeg\.so)",
        "/tmp",  # named in the player's confinement
    ]
    assert violations(log, PROGRAM, writable, readable) == []
    # What is not permitted is found: without the first entries, the list and the sound.
    found = "".join(violations(log, PROGRAM, writable[1:], readable[1:]))
    assert f"{session.list_file}~" in found and str(own) in found
    assert not is_allowed("socket(AF_INET, SOCK_STREAM, IPPROTO_IP) = 3", writable, readable)
    assert not is_allowed('execve("/usr/bin/true", ["true"], 0x7ff) = 0', writable, readable)
