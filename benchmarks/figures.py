"""Measures the application and prints a table: figures.py [figure]... [--real] [--record | --values]

  units    the scheduler's tick, encoding and decoding of the saved list (kova-benchmarks)
  start    exec to the scheduler's start and to the first frame, with 20 and 10,000 groups
  click    a click to the first frame that shows its result, with 20 and 10,000 groups
  ring     minute boundary to the FIRE line, the notification, the sound server's stream and the first sample
  gaps     silence in 54 s of sound while all cores are busy
  faults   the longest iteration of the main thread's event loop while services, files or the player fail
  kills    1,000 kills during repeated saves, and the list that each next start finds
  idle     memory, wake-ups and CPU time with the window shown and closed
  soak     three simulated days with 500 groups: missing and unexpected rings, memory after each day (kova-soak)
  others   exec to window, memory, wake-ups and minute to sound of other alarm clocks, if they are installed

With --real an alarm rings in each of the next 20 minutes of the real clock; otherwise the application is started
20 times just before a minute of a shifted clock. --record also replaces the table of results in README.md; it needs an
idle machine and a commit without changes. --values prints the values as JSON and measures each figure 5 times."""

import json
import os
import re
import statistics
import subprocess
import sys
import time
from datetime import date
from pathlib import Path

import numpy

ROOT = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(ROOT / "tests/desktop"))

import faults  # noqa: E402
import others  # noqa: E402
import sound  # noqa: E402
from display import Display  # noqa: E402
from groups import bookmark, group  # noqa: E402
from process import Process  # noqa: E402
from session import PROGRAM, Program, Session, wait_until  # noqa: E402
from witnesses import Witnesses  # noqa: E402

VALUES_ONLY = "--values" in sys.argv
TIMES = 5 if VALUES_ONLY else 20
FRAMES = {"QT_LOGGING_RULES": "qt.scenegraph.time.renderloop.debug=true", "QT_FORCE_STDERR_LOGGING": "1"}
BARE_WINDOW = PROGRAM.with_name("kova-bare-window")


table = ["| figure | median | maximum | runs |", "|---|---|---|---|"]


def row(what, values, unit="ms"):
    if VALUES_ONLY:
        print(json.dumps({"what": what, "values": list(values), "unit": unit}), flush=True)
        return
    median, maximum = (f"{number:.3g} {unit}".strip() for number in (statistics.median(values), max(values)))
    table.append(f"| {what} | {median} | {maximum} | {len(values)} |")
    print(table[-1], flush=True)


def units():
    output = subprocess.run([PROGRAM.with_name("kova-benchmarks"), "--benchmark_format=json",
                             "--benchmark_repetitions=3"], check=True, capture_output=True).stdout
    runs = {}
    for run in json.loads(output)["benchmarks"]:
        if run["run_type"] == "iteration":
            runs.setdefault(run["run_name"], []).append(run)
    for name, repeated in runs.items():
        row(name, [run["cpu_time"] for run in repeated], repeated[0]["time_unit"] + " of CPU time")


def many(count):
    return (group("12:00", label=f"アラーム {i}") for i in range(count))


def start():
    for count in (20, 10_000):
        start_with(count)


def start_with(count):
    """Warm starts; the first one is discarded."""
    session, to_scheduler, to_frame, to_bare_frame = Session(), [], [], []
    try:
        session.start_all(without=["sound", "speech"])
        session.start("display")
        session.save(*many(count))
        env = session.env | FRAMES
        for turn in range(TIMES + 1):
            program = Program([PROGRAM], env, stderr=subprocess.STDOUT)
            times = {}
            for _ in range(2):
                line = program.wait_for(lambda text: "Started" in text or "renderloop" in text)
                times["scheduler" if "Started" in line else "frame"] = (line.when - program.started) * 1000
            program.end()
            bare = Process([BARE_WINDOW], env, stderr=subprocess.STDOUT)
            frame = bare.wait_for(lambda text: "renderloop" in text)
            bare.kill()
            if turn > 0:
                to_scheduler.append(times["scheduler"])
                to_frame.append(times["frame"])
                to_bare_frame.append((frame.when - bare.started) * 1000)
    finally:
        session.close()
    row(f"exec to \"[Scheduler] Started\", {count:,} groups", to_scheduler)
    row(f"exec to the first frame, {count:,} groups", to_frame)
    if count == 20:
        row("exec to the first frame of a bare Qt Quick window", to_bare_frame)
        row("the ratio of the two", [one / other for one, other in zip(to_frame, to_bare_frame)], "")


def click():
    toggles = [statistics.median(click_with(count)) for count in (20, 10_000)]
    row("the ratio of the two switches", [toggles[1] / toggles[0]], "")


def click_with(count, report=True):
    """Clicks the first card's switch and the card. The time starts at the release, after the press has been drawn.
    Returns the times of the switch."""
    session, to_toggle, to_editor = Session(), [], []
    try:
        session.start_all(without=["sound", "speech"])
        display = session.services["display"] = Display(session.folder, session.env, (460, 640))
        session.save(*many(count))
        program = Program([PROGRAM], session.env | {"DISPLAY": display.name, "QT_QPA_PLATFORM": "xcb"})
        program.wait_for("[Scheduler] Started")
        display.wait_until_still(1)
        switch = {"at": (395, 110), "seen": display.watch(380, 100, 31, 20)}
        card = {"at": (60, 100), "seen": display.watch(16, 10, 60, 28)}  # the title, which the editor dims

        def measure(target, values):
            display.press(*target["at"])
            display.wait_until_still()
            before, begin = target["seen"](), time.monotonic()
            display.release()
            while target["seen"]() == before:
                if time.monotonic() > begin + 5:
                    raise AssertionError("the click has no visible result")
            values.append((time.monotonic() - begin) * 1000)
            display.wait_until_still()

        for _ in range(TIMES):
            saved = session.list_file.read_bytes()
            measure(switch, to_toggle)
            wait_until(lambda: session.list_file.read_bytes() != saved)
        for _ in range(TIMES):
            measure(card, to_editor)
            display.click(5, 300)  # beside the panel
            display.wait_until_still()
        program.end()
    finally:
        session.close()
    if report:
        row(f"the switch of one of {count:,} groups, click to frame", to_toggle)
        row(f"opening the editor, {count:,} groups, click to the first frame", to_editor)
    return to_toggle


def long_m4a(session):
    """Returns the fields of a custom sound of 5 MB."""
    path = session.folder / "long.m4a"
    subprocess.run(["ffmpeg", "-v", "error", "-stream_loop", "-1", "-i", ROOT / "resources/Sounds/wakeup_pulse.mp3",
                    "-t", "320", "-b:a", "128k", path], check=True)
    return {"customSoundPath": bookmark(path), "customSoundName": path.name}


def ring(real=False):
    ring_with(lambda session: {}, real, ("the FIRE line", "Notify on the session bus",
                                         "the sound server's new stream", "the first audible sample"))
    if not real:
        ring_with(long_m4a, real, [*[None] * 3, "the first audible sample of an M4A of 5 MB"])


def ring_with(custom, real, names):
    figures = [[] for _ in names]
    session = Session()
    session.start_all(without=["speech"])
    session.start("display")

    def measure(program, witnesses, boundary):
        fired = program.wait_for("[Scheduler] FIRE…", 90)
        stream = witnesses.server.wait_for(lambda text: "'new' on sink-input" in text)
        witnesses.listen(1)
        moments = (fired.when, witnesses.notify(), stream.when, witnesses.first_sample(boundary))
        for values, moment in zip(figures, moments):
            values.append((moment - boundary) * 1000)

    try:
        if real:
            first = time.localtime(time.time() + 60)
            session.save(group(f"{first.tm_hour}:{first.tm_min}", alarmCount=TIMES))
            program = Program([PROGRAM], session.env | {"TZ": os.environ.get("TZ", "")})
            witnesses = Witnesses(session)
            for _ in range(TIMES):
                boundary = (time.time() // 60 + 1) * 60
                measure(program, witnesses, boundary - time.time() + time.monotonic())
        else:
            session.save(group(**custom(session)))
            for _ in range(TIMES):
                witnesses = Witnesses(session)
                program = Program([PROGRAM], session.env | session.clock.fixed_env("06:59:58.5"))
                boundary = time.monotonic() + session.clock.seconds_to("07:00:00")
                measure(program, witnesses, boundary)
                program.end()
                witnesses.close()
    finally:
        session.close()
    for what, values in zip(names, figures):
        if what:
            row(f"minute boundary to {what}", values)


def gaps():
    """Plays a tone without silence, so that silence recorded at the sink is a gap."""
    session = Session()
    session.start("sound")
    tone = session.folder / "tone.wav"
    sound.write(tone, 0.5 * numpy.sign(numpy.sin(2 * numpy.pi * 441 * numpy.arange(sound.RATE) / sound.RATE + 0.01)))
    session.save(group(customSoundPath=bookmark(tone), customSoundName=tone.name))
    loops = [Process(["/bin/sh", "-c", "while :; do :; done"], session.env) for _ in range(6)]
    try:
        with session.record() as recording:
            session.run().wait_for("[Scheduler] FIRE…", 30)
            time.sleep(54)
        heard = numpy.flatnonzero(abs(recording.samples()) > 0.01)
        if len(heard) < 50 * sound.RATE:
            sys.exit("figures: less than 50 s of sound were recorded")
        missing = numpy.diff(heard) - 1
        row("a gap in 54 s of sound, six busy loops", [*(missing[missing > 44] / sound.RATE * 1000), 0])
    finally:
        for process in loops:
            process.kill()
        session.close()


def kills():
    done = subprocess.run([PROGRAM.parent / "kova-kills"], stdout=subprocess.PIPE, text=True)
    if done.returncode != 0:
        sys.exit("figures: a kill lost a saved list")
    row(done.stdout.strip(), [0], "lost")


def memory(pid, key):
    """Returns MB over all mappings. Pages of a program just linked count as private until they are written back."""
    return int(re.search(rf"^{key}:\s+(\d+)", Path(f"/proc/{pid}/smaps_rollup").read_text(), re.M)[1]) / 1024


def threads(pid):
    """Returns the context switches and the CPU seconds so far of each thread."""
    result = {}
    for task in Path(f"/proc/{pid}/task").iterdir():
        switches = sum(map(int, re.findall(r"ctxt_switches:\s+(\d+)", (task / "status").read_text())))
        result[task.name] = (switches, int((task / "schedstat").read_text().split()[0]) / 1e9)
    return result


def activity(pid, duration=30):
    """Returns the wake-ups per second and the CPU time in %, without threads that end meanwhile."""
    before = threads(pid)
    time.sleep(duration)
    switches = seconds = 0
    for thread, now in threads(pid).items():
        old = before.get(thread, (0, 0))
        switches += now[0] - old[0]
        seconds += now[1] - old[1]
    return switches / duration, seconds / duration * 100


def idle():
    os.sync()
    session = Session()
    try:
        session.start_all()
        session.start("display", "menu-bar")  # with an item in the menu bar, closing hides the window
        session.save(*many(20))
        program = Program([PROGRAM], session.env | {"TZ": "UTC"})
        program.wait_for("[Scheduler] Started")
        for state in ("window shown", "window closed"):
            if state == "window closed":
                session["display"].close_windows()
            time.sleep(10)
            wake_ups, cpu_time = activity(program.pid)
            row(f"resident memory, idle, 20 groups, {state}", [memory(program.pid, "Rss")], "MB")
            row(f"private memory, idle, 20 groups, {state}", [memory(program.pid, "Private_Dirty")], "MB")
            row(f"wake-ups, idle, {state}", [wake_ups], "per second")
            row(f"CPU time, idle, {state}", [cpu_time], "%")
    finally:
        session.close()


def soak():
    run = subprocess.run([PROGRAM.with_name("kova-soak")], stdout=subprocess.PIPE)
    for day in map(json.loads, run.stdout.splitlines()):
        row("resident memory after day {day} of 500 groups, {expected} rings, {missing} missing, "
            "{unexpected} unexpected".format_map(day), [day["rss"] / 1024], "MB")
        if day["day"] > 1:
            row("growth since day 1", [day["growth"]], "KB")
    if run.returncode != 0:
        sys.exit("figures: kova-soak failed")


def record():
    """Replaces the results in README.md by the table."""
    commit = subprocess.run(["git", "rev-parse", "--short", "HEAD"], cwd=ROOT, stdout=subprocess.PIPE, text=True)
    model = re.search(r"model name\s*: (.*)", Path("/proc/cpuinfo").read_text())
    heading = f"{os.cpu_count()} × {model[1] if model else 'CPU'}, {date.today()}, commit {commit.stdout.strip()}"
    readme = ROOT / "benchmarks/README.md"
    text = readme.read_text()
    begin = text.index("## Results\n") + len("## Results\n")
    readme.write_text(text[:begin] + f"\n`scripts/bench --record` on {heading}:\n\n" + "\n".join(table) + "\n")


def wait_until_idle():
    """Waits until the load of the build has faded. Exits if the machine stays busy."""
    deadline = time.monotonic() + 180
    while os.getloadavg()[0] > 0.5:
        if time.monotonic() > deadline:
            sys.exit("figures: --record needs an idle machine")
        time.sleep(1)


def main():
    figures = {"units": units, "start": start, "click": click, "ring": lambda: ring("--real" in sys.argv), "gaps": gaps,
               "faults": lambda: faults.measure(row), "kills": kills, "idle": idle, "soak": soak,
               "others": lambda: others.measure(row, memory, activity, TIMES)}
    wanted = [word for word in sys.argv[1:] if not word.startswith("--")] or figures
    if "--record" in sys.argv:
        if subprocess.run(["git", "status", "--porcelain"], cwd=ROOT, capture_output=True).stdout:
            sys.exit("figures: --record needs a commit without changes")
        wait_until_idle()
    if not VALUES_ONLY:
        print("\n".join(table))
    for figure in wanted:
        figures[figure]()
    if "--record" in sys.argv:
        record()


if __name__ == "__main__":
    main()
