#!/usr/bin/env bash
# Measures the hot jobs beside the least that their own rules cost and beside peers, all interleaved in one process,
# and prints the medians of nine runs as one table; docs/benchmarks.md explains it. Arguments go to the benchmark
# program, for instance --benchmark_filter=^load. With --smoke alone it measures little, once and without installing
# peers: whether the program still works, and where it writes.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
require "${build_packages[@]}" libbenchmark-dev python3

# The release build, which other scripts make as well.
build_bench() {
  cmake --preset release -DBVSYSTEM_BENCH=ON >/dev/null
  build_quietly release bench >&2
}

if [ "${1:-}" = --smoke ]; then
  build_bench
  exec build/release/bin/bench --benchmark_filter='^(load|save)/' --benchmark_min_time=0.01
fi

# Peers may be missing: their rows are, then.
for peer in libphysfs-dev libzip-dev libstb-dev libsdl2-dev libsdl2-image-dev libconfig++-dev libtomlplusplus-dev \
  libnoise-dev zlib1g-dev; do
  (require "$peer") >/dev/null 2>&1 || echo "not measured beside $peer, which cannot be installed" >&2
done

build_bench
# Files in memory, where there are such: disks differ, and would drown what is measured.
[ ! -w /dev/shm ] || export TMPDIR=/dev/shm
build/release/bin/bench --benchmark_enable_random_interleaving=true --benchmark_repetitions=9 \
  --benchmark_min_time=0.05 --benchmark_report_aggregates_only=true \
  --benchmark_out=build/release/times.json --benchmark_out_format=json "$@" >/dev/null
python3 bench/table.py build/release/times.json
