#!/usr/bin/env python3
"""Compares the starts of several builds: python3 tests/bench/start.py BUILD_FOLDER...

Each build's StartUp is run in turn, so that all meet the same load; the figures are medians. Processor time is that of
the whole run, which ends a second after the first paint.
"""
import os
import re
import statistics
import subprocess
import sys
import time

ROUNDS = 31
FIGURES = ("first paint ms", "processor ms", "resident kB", "a second later kB")
TOLD = re.compile(rb"first paint after ([0-9.]+) ms, (\d+) kB resident, a second later (\d+) kB")


def start(build):
    program = os.path.join(build, "tests", "endtoend", "StartUp")
    environment = dict(os.environ, QT_QPA_PLATFORM=os.environ.get("QT_QPA_PLATFORM", "offscreen"))
    with subprocess.Popen(
        [program, str(time.monotonic_ns() // 1000)], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, env=environment
    ) as process:
        told = process.stdout.read()
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
    match = TOLD.search(told)
    if process.returncode != 0 or not match:
        sys.exit(f"{program}: {told.decode()!r}, exit code {process.returncode}")
    paint, then, later = (float(s) for s in match.groups())
    return paint, (usage.ru_utime + usage.ru_stime) * 1000, then, later


def main():
    builds = sys.argv[1:]
    if not builds:
        sys.exit(__doc__)
    runs = {build: [] for build in builds}
    for _ in range(ROUNDS):
        for build in builds:
            runs[build].append(start(build))
    for build in builds:
        medians = [statistics.median(column) for column in zip(*runs[build])]
        print(build + ": " + ", ".join(f"{name} {value:.1f}" for name, value in zip(FIGURES, medians)))


if __name__ == "__main__":
    main()
