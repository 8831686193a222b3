"""Compares this checkout with another revision: compare.py REVISION [figure]...

Both programs are measured alternately by this checkout's figures.py, so that both meet the same conditions. Prints the
medians, their ratio and the spread of the revision's values; marks figures that are more than 10 % worse."""

import json
import os
import statistics
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
ROUNDS = 4
WORSE = 1.1


def build(revision):
    """Builds the revision in its own work tree and returns its program."""
    commit = subprocess.run(["git", "rev-parse", "--short", f"{revision}^{{commit}}"], cwd=ROOT, check=True,
                            capture_output=True, text=True).stdout.strip()
    tree = ROOT / "build/against" / commit
    if not tree.exists():
        subprocess.run(["git", "worktree", "add", "--detach", tree, commit], cwd=ROOT, check=True)
    subprocess.run([tree / "scripts/setup", "build", "bench"], check=True)
    subprocess.run([tree / "scripts/build", "release", "kova-alarm", "benchmarks/all"], check=True,
                   stdout=subprocess.DEVNULL)
    return tree / "build/release/kova-alarm"


def measure(program, figure):
    """Returns the values of each row of the figure; none for those that the program does not have."""
    done = subprocess.run(["/usr/bin/python3", ROOT / "benchmarks/figures.py", "--values", figure],
                          env=os.environ | {"KOVA_PROGRAM": str(program)}, stdout=subprocess.PIPE, text=True)
    return {row["what"]: row for row in map(json.loads, done.stdout.splitlines())}


def spread(values):
    return f"{min(values):.3g}–{max(values):.3g}"


def compare(figure, programs):
    rows = {}
    for _ in range(ROUNDS):
        for side, program in enumerate(programs):
            for what, row in measure(program, figure).items():
                sides = rows.setdefault(what, (row["unit"], [], []))
                sides[1 + side].extend(row["values"])
    for what, (unit, before, now) in rows.items():
        if not before or not now:
            print(f"| {what} | {'–' if not before else ''} | {'–' if not now else ''} | | | |", flush=True)
            continue
        old, new = statistics.median(before), statistics.median(now)
        ratio = new / old if old else 1.0 if new == old else float("inf")
        print(f"| {what} | {old:.3g} {unit} | {new:.3g} {unit} | {ratio:.2f} | {spread(before)} | {spread(now)} "
              f"|{' worse' if ratio > WORSE else ''} |", flush=True)


revision, *figures = sys.argv[1:]
programs = (build(revision), ROOT / "build/release/kova-alarm")
print(f"| figure | {revision} | this checkout | ratio | spread of {revision} | spread of this checkout | |")
print("|---|---|---|---|---|---|---|", flush=True)
for figure in figures or ["units", "start", "click", "ring", "gaps", "faults", "idle"]:
    compare(figure, programs)
