#!/usr/bin/env python3
"""Turns Google Benchmark's JSON into one Markdown table: each job beside its limit and its best peer.

A name is JOB, JOB_limit_WHAT or JOB_peer_WHO, with /ARGUMENT behind it; a limit or a peer without an argument stands
beside every argument of its job. Times are medians; a ratio below 1 means that the library is faster.
"""

import json
import re
import sys

DRAW = 0.05  # the part of a peer's time by which ours may differ from it in a draw
DRIFT = 1.15  # wall time over processor time, from which on a machine was busy with something else


def medians(runs):
    """Benchmark names and their medians, in nanoseconds of wall time and of processor time."""
    nanoseconds = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}
    result = {}
    for run in runs:
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


def print_score(ratios):
    """How many rows beat the best peer, given ours over the peer's."""
    won = sum(ratio < 1 - DRAW for ratio in ratios)
    lost = sum(ratio > 1 + DRAW for ratio in ratios)
    print(
        f"\nAgainst the best peer: {won} rows won, {len(ratios) - won - lost} drawn (within {DRAW:.0%}), {lost} lost."
    )


def print_table(times):
    print("| job | ours | limit | ratio | best peer | ratio |")
    print("|---|---|---|---|---|---|")
    ratios = []
    for name, (wall, _, _) in sorted(times.items()):
        job, kind, _, argument = split(name)
        if kind != "ours":
            continue
        cells = [f"{job} {argument}".strip(), time_text(wall)]
        limit, peer = (beside(times, job, other, argument) for other in ("limit", "peer"))
        for other in (limit, peer):
            cells += [f"{time_text(other[0])}, {other[1]}", f"{wall / other[0]:.2f}"] if other else ["", ""]
        print("| " + " | ".join(cells) + " |")
        if peer:
            ratios.append(wall / peer[0])
    print_score(ratios)


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


def print_note(context):
    if context.get("library_build_type") == "debug":
        print(
            '\nnote: "Library was built as DEBUG" is about Google Benchmark, which Debian builds without NDEBUG. What'
            " is measured is a release build.",
            file=sys.stderr,
        )


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
    with open(sys.argv[1], encoding="utf-8") as file:
        report = json.load(file)
    times = medians(report["benchmarks"])
    print_table(times)
    print_growth(times)
    print_note(report["context"])
    print_warning(times)


if __name__ == "__main__":
    main()
