#!/usr/bin/env python3
"""Runs the measurements of rows.py and prints them as a table; scripts/bench builds them first.

The variants of a group run in one process, in repetitions that are shuffled among each other; a ratio is the
median of the ratios of the repetitions, with the quartiles beside it."""

import argparse
import datetime
import json
import math
import os
import pathlib
import platform
import re
import statistics
import subprocess
import sys

from rows import ROWS, Figure, Growth, Ratio

FACTORS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}


class Runs:
    """Results by program, group and variant; every group runs once."""

    def __init__(self, folder, repetitions, seconds):
        self.folder = folder
        self.repetitions = repetitions
        self.seconds = seconds
        self.groups = {}

    def of(self, program, group):
        if (program, group) not in self.groups:
            self.groups[program, group] = self._run(program, group)
        return self.groups[program, group]

    def _run(self, program, group):
        command = [self.folder / f"{program}_bench", f"--benchmark_filter=^{re.escape(group)}/",
                   f"--benchmark_repetitions={self.repetitions}", f"--benchmark_min_time={self.seconds}",
                   "--benchmark_enable_random_interleaving=true", "--benchmark_format=json"]
        done = subprocess.run(command, capture_output=True, text=True)
        if done.returncode != 0:
            sys.exit(f"{program}_bench ended with {done.returncode}:\n{done.stdout}{done.stderr}")
        variants = {}
        for run in json.loads(done.stdout)["benchmarks"]:
            if run["run_type"] != "iteration":
                continue
            variant = run["run_name"].split("/")[1]
            variants.setdefault(variant, []).append(run)
        if not variants:
            sys.exit(f"{program}_bench has no group {group}")
        return variants


class Unavailable(Exception):
    """A variant says that it can't be measured here, and why."""


def values(runs, counter=None):
    """One number a repetition: nanoseconds, or the counter's."""
    ordered = sorted(runs, key=lambda run: run["repetition_index"])
    for run in ordered:
        if run.get("error_occurred"):
            raise Unavailable(run["error_message"])
    if counter:
        return [run[counter] for run in ordered]
    return [run["real_time"] * FACTORS[run["time_unit"]] for run in ordered]


def shown_time(nanoseconds):
    for unit, factor in (("s", 1e9), ("ms", 1e6), ("µs", 1e3)):
        if nanoseconds >= factor:
            return f"{nanoseconds / factor:.3g} {unit}"
    return f"{nanoseconds:.3g} ns"


def shown(value, unit):
    return shown_time(value) if unit == "time" else f"{value:.4g} {unit}"


def spread(numbers):
    if len(numbers) < 4:
        return ""
    low, _, high = statistics.quantiles(numbers, n=4)
    return f" ({low:.2f} to {high:.2f})"


def verdict(fits):
    return "yes" if fits else "no"


def ratio_row(row, group):
    ours = values(group[row.ours], row.counter)
    baseline = values(group[row.baseline], row.counter)
    ratios = [mine / other for mine, other in zip(ours, baseline)]
    if row.times_faster:
        ratios = [1 / ratio for ratio in ratios]
    ratio = statistics.median(ratios)
    goal, met = "none", "-"
    if row.times_faster:
        goal, met = f"≥ {row.times_faster:g} times faster", verdict(ratio >= row.times_faster)
    elif row.at_most:
        goal, met = f"≤ {row.at_most:g}", verdict(ratio <= row.at_most)
    return {"ours": shown(statistics.median(ours), row.unit),
            "baseline": f"{shown(statistics.median(baseline), row.unit)}, {row.says}",
            "ratio": f"{ratio:.2f}{spread(ratios)}", "goal": goal, "met": met,
            "numbers": {"ours": ours, "baseline": baseline, "ratios": ratios}}


def figure_row(row, group):
    ours = values(group[row.ours], row.counter)
    figure = statistics.median(ours)
    return {"ours": shown(figure, row.unit), "baseline": "", "ratio": "", "goal": f"≤ {row.at_most:g} {row.unit}",
            "met": verdict(figure <= row.at_most), "numbers": {"ours": ours}}


def growth_row(row, group):
    points = []
    for variant, runs in sorted(group.items(), key=lambda item: int(item[0])):
        size = int(variant)
        points.append((size, statistics.median(values(runs)) * (size if row.per_item else 1)))
    slope = statistics.linear_regression([math.log(size) for size, _ in points],
                                         [math.log(time) for _, time in points]).slope
    first, last = points[0], points[-1]
    goal, met = ("none", "-") if row.at_most is None else (f"≤ {row.at_most:g}", verdict(slope <= row.at_most))
    return {"ours": f"{shown_time(first[1])} for {first[0]:,}, {shown_time(last[1])} for {last[0]:,}",
            "baseline": "", "ratio": f"slope {slope:.2f}", "goal": goal, "met": met, "numbers": {"points": points}}


KINDS = {Ratio: ratio_row, Figure: figure_row, Growth: growth_row}


def measured(row, runs):
    group = runs.of(row.program, row.group)
    try:
        return {"what": row.what, **KINDS[type(row)](row, group)}
    except Unavailable as reason:
        return {"what": row.what, "ours": "", "baseline": "", "ratio": "", "goal": "",
                "met": f"left out: {reason}", "numbers": {}}


def processor():
    for line in pathlib.Path("/proc/cpuinfo").read_text().splitlines():
        if line.startswith("model name"):
            return line.split(":", 1)[1].strip()
    return platform.machine()


def circumstances():
    compiler = subprocess.run(["c++", "--version"], capture_output=True, text=True).stdout.splitlines()[0]
    return {"date": datetime.date.today().isoformat(), "processor": processor(),
            "cores": os.cpu_count(), "kernel": platform.release(), "compiler": compiler}


COLUMNS = ("what", "ours", "baseline", "ratio", "goal", "met")


def main():
    parser = argparse.ArgumentParser(prog="scripts/bench", description=__doc__)
    parser.add_argument("--quick", action="store_true", help="run each once, to see that it runs; says nothing of speed")
    parser.add_argument("--only", default="", help="rows whose text or group this expression fits")
    parser.add_argument("--repetitions", type=int, default=9)
    parser.add_argument("--json", default="build/bench/results.json", help="where the results go, all numbers with them")
    parser.add_argument("--programs", default="build/bench/measurements", help=argparse.SUPPRESS)
    options = parser.parse_args()

    runs = Runs(pathlib.Path(options.programs).absolute(), 1 if options.quick else options.repetitions,
                0.001 if options.quick else 0.1)
    print("| " + " | ".join(COLUMNS) + " |\n" + "|---" * len(COLUMNS) + "|")
    results = []
    for row in ROWS:
        if re.search(options.only, f"{row.group} {row.what}"):
            results.append(measured(row, runs))
            print("| " + " | ".join(results[-1][column] for column in COLUMNS) + " |", flush=True)
    if options.quick:
        print("Each ran once; the figures say nothing.")
        return
    where = circumstances()
    pathlib.Path(options.json).write_text(json.dumps({"circumstances": where, "rows": results}, indent=1,
                                                     ensure_ascii=False))
    print("\n" + ", ".join(f"{key}: {value}" for key, value in where.items()))


if __name__ == "__main__":
    main()
