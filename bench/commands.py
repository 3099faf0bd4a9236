#!/usr/bin/env python3
"""Measures the program's commands beside those of other archivers, and prints one Markdown table.

Takes the directory of `zel`. Packs, checks, unpacks and lists a few thousand generated files in a temporary directory, in
interleaved rounds. Each number is the median of its rounds; a ratio below 1 means that `zel` needs less.
"""

import os
import random
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

from table import print_score, time_text

ROUNDS = 5
FILES = 3000
FILES_A_DIRECTORY = 40
MEDIAN_SIZE = 8192  # half the files are smaller; they have three times as much on average
SPREAD = 1.5  # of the sizes' logarithm

# What is called in a directory with the folder `files`; the archives are there once they were packed.
COMMANDS = {
    "pack": {
        "zel": "zel pack files a.bva",
        "tar": "tar cf a.tar files",
        "zip": "zip -0 -q -r a.zip files",
        "7z": "7z a -mx0 -bso0 -bsp0 a.7z files",
    },
    "verify": {"zel": "zel verify a.bva", "zip": "unzip -tqq a.zip", "7z": "7z t -bso0 -bsp0 a.7z"},
    "extract": {
        "zel": "zel extract a.bva out",
        "tar": "tar xf a.tar -C out",
        "zip": "unzip -qq a.zip -d out",
        "7z": "7z x -bso0 -bsp0 -oout a.7z",
    },
    "list": {"zel": "zel list a.bva", "tar": "tar tf a.tar", "zip": "unzip -l a.zip", "7z": "7z l a.7z"},
}
ARCHIVES = {"zel": "a.bva", "tar": "a.tar", "zip": "a.zip", "7z": "a.7z"}
PEERS = {"tar": ["tar"], "zip": ["zip", "unzip"], "7z": ["7z"]}  # and the programs that each is made of
MEASURES = {
    "wall time": lambda seconds: time_text(seconds * 1e9),
    "processor time": lambda seconds: time_text(seconds * 1e9),
    "peak memory": lambda kibibytes: f"{kibibytes / 1024:.3g} MiB",
}


def write_files(directory):
    """The same files every time."""
    source = random.Random(44)
    for index in range(FILES):
        number = index // FILES_A_DIRECTORY
        folder = os.path.join(directory, f"part{number % 5}", f"level{number}")
        os.makedirs(folder, exist_ok=True)
        size = 1 + int(MEDIAN_SIZE * source.lognormvariate(0, SPREAD))  # no file is empty
        with open(os.path.join(folder, f"texture_{index:04}.bin"), "wb") as file:
            file.write(source.randbytes(size))


def measure(command):
    """One run: wall time and processor time in seconds, and peak memory in KiB.

    The memory is what `time` saw: a child of this process would begin with the memory of the interpreter.
    """
    start = time.perf_counter()
    child = subprocess.Popen(
        ["time", "--quiet", "--format=%M", "--output=memory"] + command.split(), stdout=subprocess.DEVNULL
    )
    _, status, usage = os.wait4(child.pid, 0)
    wall = time.perf_counter() - start
    child.returncode = os.waitstatus_to_exitcode(status)
    if child.returncode != 0:
        sys.exit(f"failed: {command}")
    with open("memory", encoding="ascii") as file:
        return wall, usage.ru_utime + usage.ru_stime, int(file.read())


def clear(job, program):
    """Takes away what an earlier run has made."""
    if job == "pack" and os.path.exists(ARCHIVES[program]):
        os.remove(ARCHIVES[program])
    if job == "extract":
        shutil.rmtree("out", ignore_errors=True)
        os.mkdir("out")


def medians():
    """For each job and program, the median of each measure."""
    programs = ["zel"] + [peer for peer in PEERS if all(shutil.which(tool) for tool in PEERS[peer])]
    runs = {}
    for _ in range(ROUNDS):
        for job, commands in COMMANDS.items():
            for program in programs:
                if program in commands:
                    clear(job, program)
                    runs.setdefault((job, program), []).append(measure(commands[program]))
    return {key: [statistics.median(values) for values in zip(*its_runs)] for key, its_runs in runs.items()}


def print_table(found):
    print("| job | zel | " + " | ".join(f"{peer} | ratio" for peer in PEERS) + " |")
    print("|---|---|" + "---|---|" * len(PEERS))
    best = []
    for job in COMMANDS:
        for index, (measure_name, text) in enumerate(MEASURES.items()):
            ours = found[job, "zel"][index]
            peers = [found[job, peer][index] if (job, peer) in found else None for peer in PEERS]
            cells = [f"{job}, {measure_name}", text(ours)]
            for peer in peers:
                cells += [text(peer), f"{ours / peer:.2f}"] if peer else ["", ""]
            print("| " + " | ".join(cells) + " |")
            best += [ours / min(filter(None, peers))] if any(peers) else []
    print_score(best)


def main():
    os.environ["PATH"] = os.path.abspath(sys.argv[1]) + os.pathsep + os.environ["PATH"]
    with tempfile.TemporaryDirectory(prefix="bvsystem-commands-") as directory:
        os.chdir(directory)
        write_files("files")
        found = medians()
        os.chdir("/")
    print_table(found)


if __name__ == "__main__":
    main()
