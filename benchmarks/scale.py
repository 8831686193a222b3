"""Measures how the application scales with the length of the list, prints a table and draws docs/scaling.svg."""

import json
import statistics
import subprocess
import sys
import time

import matplotlib

import figures

COUNTS = (20, 100, 1_000, 10_000, 100_000)


def ticks():
    """Returns the CPU time in µs of a tick in second 0 without a due alarm."""
    command = [figures.PROGRAM.with_name("kova-benchmarks"), "--benchmark_format=json",
               "--benchmark_filter=tickInSecond0NoneDue"]
    runs = json.loads(subprocess.run(command, check=True, capture_output=True).stdout)["benchmarks"]
    return {int(run["run_name"].split("/")[1]): run["cpu_time"] for run in runs}


def start_and_memory(count):
    """Returns the time in ms to the first frame and the private memory in MB 10 s later."""
    session, to_frame = figures.Session(), []
    try:
        session.start_all(without=["sound", "speech"])
        session.start("display")
        session.save(*figures.many(count))
        for _ in range(5):
            program = figures.Program([figures.PROGRAM], session.env | figures.FRAMES, stderr=subprocess.STDOUT)
            frame = program.wait_for(lambda text: "renderloop" in text, 60)
            to_frame.append((frame.when - program.started) * 1000)
            if len(to_frame) == 5:
                time.sleep(10)
                private = figures.memory(program.pid, "Private_Dirty")
            program.end()
    finally:
        session.close()
    return statistics.median(to_frame), private


def draw(rows, path):
    matplotlib.use("svg")
    matplotlib.rcParams["svg.hashsalt"] = "kova-alarm"  # the same file for the same figures
    from matplotlib import pyplot
    _, axes = pyplot.subplots(2, 2, figsize=(9, 6), layout="constrained")
    titles = ("tick in second 0 (µs)", "switch, click to frame (ms)", "exec to first frame (ms)", "private memory (MB)")
    for column, (axis, title) in enumerate(zip(axes.flat, titles)):
        axis.plot(COUNTS, [row[column] for row in rows], marker="o", color="#ff6b35")
        axis.set(title=title, xscale="log", xlabel="groups")
        axis.set_yscale("log") if column == 0 else axis.set_ylim(bottom=0)
        axis.grid(alpha=0.3)
    pyplot.savefig(path, metadata={"Date": None})


def main():
    tick = ticks()
    rows = []
    print("| groups | tick in second 0 | switch, click to frame | exec to first frame | private memory |")
    print("|---|---|---|---|---|", flush=True)
    for count in COUNTS:
        toggle = statistics.median(figures.click_with(count, report=False))
        rows.append((tick[count], toggle, *start_and_memory(count)))
        print("| {:,} | {:.3g} µs | {:.3g} ms | {:.3g} ms | {:.3g} MB |".format(count, *rows[-1]), flush=True)
    draw(rows, figures.ROOT / "docs/scaling.svg")


if __name__ == "__main__":
    sys.exit(main())
