#!/usr/bin/env bash
# Measures the hot jobs beside the least that their own rules cost and beside peers, all interleaved in one process,
# and prints the medians of nine runs as one table; docs/benchmarks.md explains it. Arguments go to the benchmark
# program, for instance --benchmark_filter=^load.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
require "${build_packages[@]}" libbenchmark-dev python3

# Peers may be missing: their rows are, then.
for peer in libphysfs-dev libzip-dev libstb-dev libsdl2-dev libsdl2-image-dev libconfig++-dev libtomlplusplus-dev \
  libnoise-dev zlib1g-dev; do
  (require "$peer") >/dev/null 2>&1 || echo "not measured beside $peer, which cannot be installed" >&2
done

[ -f build/bench/build.ninja ] ||
  cmake --preset release -B build/bench -DBVSYSTEM_BENCH=ON -DBVSYSTEM_TESTS=OFF -DBVSYSTEM_EXAMPLES=OFF >/dev/null
echo "Building bench" >&2
cmake --build build/bench --target bench >/dev/null
# Files in memory, where there are such: disks differ, and would drown what is measured.
[ ! -w /dev/shm ] || export TMPDIR=/dev/shm
build/bench/bin/bench --benchmark_enable_random_interleaving=true --benchmark_repetitions=9 \
  --benchmark_min_time=0.05 --benchmark_report_aggregates_only=true \
  --benchmark_out=build/bench/times.json --benchmark_out_format=json "$@" >/dev/null
python3 bench/table.py build/bench/times.json
