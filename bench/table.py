#!/usr/bin/env python3
"""Turns Google Benchmark's JSON into one Markdown table: each job beside its limit and its best peer.

A name is JOB, JOB_limit_WHAT or JOB_peer_WHO, with /ARGUMENT behind it; a limit or a peer without an argument stands
beside every argument of its job. Times are medians; a ratio below 1 means that the library is faster.
"""

import json
import re
import sys

DRIFT = 1.15  # wall time over processor time, from which on a machine was busy with something else


def medians(path):
    """Benchmark names and their medians, in nanoseconds of wall time and of processor time."""
    nanoseconds = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}
    result = {}
    with open(path, encoding="utf-8") as file:
        for run in json.load(file)["benchmarks"]:
            if run.get("aggregate_name") == "median":
                unit = nanoseconds[run["time_unit"]]
                result[run["run_name"]] = (run["real_time"] * unit, run["cpu_time"] * unit, run)
    return result


def split(name):
    """("load", "peer", "sdl2 image", "bmp") for "load_peer_sdl2_image/bmp"."""
    job, _, argument = name.partition("/")
    parts = re.fullmatch(r"(.+?)_(limit|peer)_(.+)", job)
    if parts is None:
        return job, "ours", "", argument
    return parts[1], parts[2], parts[3].replace("_", " "), argument


def time_text(nanoseconds):
    for unit, size in (("s", 1e9), ("ms", 1e6), ("us", 1e3)):
        if nanoseconds >= size:
            return f"{nanoseconds / size:.3g} {unit}"
    return f"{nanoseconds:.3g} ns"


def beside(times, job, kind, argument):
    """The fastest limit or peer of a job: its time and its name, or None."""
    found = []
    for name, (wall, _, _) in times.items():
        its_job, its_kind, what, its_argument = split(name)
        if (its_job, its_kind) == (job, kind) and its_argument in (argument, ""):
            found.append((wall, what))
    return min(found, default=None)


def print_table(times):
    print("| job | ours | limit | ratio | best peer | ratio |")
    print("|---|---|---|---|---|---|")
    for name, (wall, _, _) in sorted(times.items()):
        job, kind, _, argument = split(name)
        if kind != "ours":
            continue
        cells = [f"{job} {argument}".strip(), time_text(wall)]
        for other in (beside(times, job, "limit", argument), beside(times, job, "peer", argument)):
            cells += [f"{time_text(other[0])}, {other[1]}", f"{wall / other[0]:.2f}"] if other else ["", ""]
        print("| " + " | ".join(cells) + " |")


def print_growth(times):
    """What an item or a byte costs in the largest case, beside the smallest."""
    jobs = {}
    for name, (wall, _, run) in times.items():
        job, kind, _, argument = split(name)
        rate = run.get("items_per_second", run.get("bytes_per_second"))
        if kind == "ours" and argument.isdigit() and rate:
            jobs.setdefault(job, {})[int(argument)] = 1 / rate
    growth = {job: costs for job, costs in jobs.items() if len(costs) > 1}
    if growth:
        print("\n| job | from | to | cost of one grows by |")
        print("|---|---|---|---|")
    for job, costs in sorted(growth.items()):
        first, last = min(costs), max(costs)
        print(f"| {job} | {first} | {last} | {costs[last] / costs[first]:.2f} |")


def print_warning(times):
    busy = [name for name, (wall, processor, _) in times.items() if wall > DRIFT * processor]
    if busy:
        print(
            f"\nwarning: wall and processor time drift apart in {len(busy)} of {len(times)} jobs: this machine is"
            " busy with something else, or the jobs wait for its disk. Trust no ratio below until they agree: "
            + ", ".join(sorted(busy)[:5]),
            file=sys.stderr,
        )


def main():
    times = medians(sys.argv[1])
    print_table(times)
    print_growth(times)
    print_warning(times)


if __name__ == "__main__":
    main()
