#!/usr/bin/env python3
"""Measures the library's own jobs with two builds of the library in turn, and prints one Markdown table.

Takes the benchmark program, the folder of the other library, and a filter for the jobs. Each time is the least of its
rounds, as what disturbs one only adds to it; a ratio above 1 is what the other library costs.
"""

import json
import os
import subprocess
import sys

from table import split, time_text

ROUNDS = 5


def measure(program, library, job_filter):
    """Benchmark names and their processor times, in nanoseconds, with the library in that folder or the program's own."""
    environment = dict(os.environ, **({"LD_LIBRARY_PATH": library} if library else {}))
    arguments = [f"--benchmark_filter={job_filter}", "--benchmark_min_time=0.03", "--benchmark_format=json"]
    done = subprocess.run([program, *arguments], env=environment, stdout=subprocess.PIPE, check=True)
    nanoseconds = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}
    return {run["name"]: run["cpu_time"] * nanoseconds[run["time_unit"]] for run in json.loads(done.stdout)["benchmarks"]}


def own_jobs(program):
    """The names of all benchmarks that are no limit and no peer, as a filter."""
    listed = subprocess.run([program, "--benchmark_list_tests"], stdout=subprocess.PIPE, check=True, text=True)
    return [name for name in listed.stdout.split() if split(name)[1] == "ours"]


def main():
    program, library, wanted = sys.argv[1:4]
    job_filter = wanted or "^(" + "|".join(own_jobs(program)) + ")$"
    rounds = {"default": [], "plain": []}
    for number in range(ROUNDS):
        order = [("default", ""), ("plain", library)]
        for name, folder in order if number % 2 == 0 else reversed(order):
            rounds[name].append(measure(program, folder, job_filter))
    print("| job | default | plain C++ | ratio |")
    print("|---|---|---|---|")
    for name in sorted(rounds["default"][0]):
        default, plain = (min(times[name] for times in rounds[build]) for build in ("default", "plain"))
        print(f"| {name.replace('/', ' ')} | {time_text(default)} | {time_text(plain)} | {plain / default:.2f} |")


if __name__ == "__main__":
    main()
