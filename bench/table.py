#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Prints Google Benchmark's results as a table.

    table.py RESULT...                              each job beside its bare loop, and what the clock says
    table.py --then RESULT... --now RESULT...       each job beside itself in an older state, medians of all rounds;
                                                    of jobs with threads of their own by the clock
"""
import json
import statistics
import sys


# A job with threads of its own has its time measured over all of them, and says so in its name.
def has_threads(run):
    return run["run_name"].endswith("/process_time")


def name_of(run):
    return run["run_name"].removesuffix("/process_time")


def medians(paths):
    found = {}
    for path in paths:
        with open(path, encoding="utf-8") as file:
            for run in json.load(file)["benchmarks"]:
                if run.get("aggregate_name") == "median":
                    job, size = name_of(run).rsplit("/", 1)
                    found[job, int(size)] = run
    return found


def held(run):
    return f", {run['held'] / 1e6:.1f} MB held" if "held" in run else ""


# By the clock where a job has threads of its own.
def speed(run):
    shared = run["cpu_time"] / run["real_time"] if has_threads(run) else 1
    if "bytes_per_second" in run:
        return f"{run['bytes_per_second'] * shared / 1e6:.0f} MB/s"
    if "items_per_second" in run:
        return f"{run['items_per_second'] * shared / 1e6:.1f} M sites/s"
    return ""


def beside_bare_loops(paths):
    # In the order of the jobs, not of the runs, which is random.
    runs = dict(sorted(medians(paths).items(), key=lambda one: (one[0][0], one[0][1])))
    print(f"{'job':<30}{'size':>10}{'ms CPU':>11}{'bare ms':>10}{'ratio':>8}{'ms':>11}   speed")
    for (job, size), run in runs.items():
        if job.endswith(":bare"):
            continue
        bare = runs.get((job + ":bare", size))
        beside = f"{bare['cpu_time']:>10.3f}{run['cpu_time'] / bare['cpu_time']:>8.2f}" if bare else " " * 18
        print(f"{job:<30}{size:>10,}{run['cpu_time']:>11.3f}{beside}{run['real_time']:>11.3f}   {speed(run)}{held(run)}")


def rounds(paths):
    found = {}
    for path in paths:
        with open(path, encoding="utf-8") as file:
            for run in json.load(file)["benchmarks"]:
                if run["run_type"] == "iteration":
                    time = run["real_time" if has_threads(run) else "cpu_time"]
                    found.setdefault(name_of(run), []).append(time)
    return {name: statistics.median(times) for name, times in found.items()}


def then_and_now(old_paths, new_paths):
    old, new = rounds(old_paths), rounds(new_paths)
    print(f"{'job':<30}{'size':>10}{'then, ms':>11}{'now, ms':>10}{'ratio':>8}")
    for name, time in new.items():
        if name in old:
            job, size = name.rsplit("/", 1)
            print(f"{job:<30}{int(size):>10,}{old[name]:>11.3f}{time:>10.3f}{time / old[name]:>8.2f}")


def main():
    paths = sys.argv[1:]
    if paths[:1] == ["--then"]:
        now = paths.index("--now")
        then_and_now(paths[1:now], paths[now + 1:])
    else:
        beside_bare_loops(paths)


main()
