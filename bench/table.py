#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Prints Google Benchmark's results as a table, each job beside its bare loop."""
import json
import sys


def medians(paths):
    found = {}
    for path in paths:
        with open(path, encoding="utf-8") as file:
            for run in json.load(file)["benchmarks"]:
                if run.get("aggregate_name") == "median":
                    job, size = run["run_name"].rsplit("/", 1)
                    found[job, int(size)] = run
    return found


def held(run):
    return f", {run['held'] / 1e6:.1f} MB held" if "held" in run else ""


def speed(run):
    if "bytes_per_second" in run:
        return f"{run['bytes_per_second'] / 1e6:.0f} MB/s"
    if "items_per_second" in run:
        return f"{run['items_per_second'] / 1e6:.1f} M sites/s"
    return ""


def main():
    runs = medians(sys.argv[1:])
    print(f"{'job':<30}{'size':>10}{'ms CPU':>11}{'bare ms':>10}{'ratio':>8}   speed")
    for (job, size), run in runs.items():
        if job.endswith(":bare"):
            continue
        bare = runs.get((job + ":bare", size))
        beside = f"{bare['cpu_time']:>10.3f}{run['cpu_time'] / bare['cpu_time']:>8.2f}" if bare else " " * 18
        print(f"{job:<30}{size:>10,}{run['cpu_time']:>11.3f}{beside}   {speed(run)}{held(run)}")


main()
