#!/usr/bin/env bash
# Measures the hot jobs beside the least that their own rules cost and beside peers, all interleaved in one process,
# and prints the medians of nine runs as one table; docs/benchmarks.md explains it. With --quick first, it is the
# medians of three and the main rows, in under two minutes. Other arguments go to the benchmark program, for instance
# --benchmark_filter=^load. With --portable [FILTER], it is the library beside itself in plain C++, as compilers get it that
# are neither GCC nor clang. With --smoke alone it measures little, once and without installing peers: whether the
# program still works, and where it writes.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
require "${build_packages[@]}" libbenchmark-dev python3

# The release build, which other scripts make as well.
build_bench() {
  cmake --preset release -DBVSYSTEM_BENCH=ON >/dev/null
  build_quietly release bench zel >&2
}

if [ "${1:-}" = --smoke ]; then
  build_bench
  exec build/release/bin/bench --benchmark_filter='^(load|save)/' --benchmark_min_time=0.01
fi

if [ "${1:-}" = --portable ]; then
  build_bench
  cmake --preset portable -B build/portable-release -DCMAKE_BUILD_TYPE=Release >/dev/null
  cmake --build build/portable-release --target BvSystem >/dev/null
  [ ! -w /dev/shm ] || export TMPDIR=/dev/shm
  exec python3 bench/portable.py build/release/bin/bench build/portable-release/src "${2:-}"
fi

runs=(--benchmark_repetitions=9 --benchmark_min_time=0.05)
if [ "${1:-}" = --quick ]; then
  shift
  # Without the worst cases, and the peer that takes a second to mount 100,000 entries.
  left_out='worst|equal|deep|many|physfs/100000|read_archived_peer_physfs'
  runs=(--benchmark_repetitions=3 --benchmark_min_time=0.02 --benchmark_filter="-$left_out")
fi

# Peers may be missing: their rows are, then.
for peer in libphysfs-dev libzip-dev libstb-dev libsdl2-dev libsdl2-image-dev libconfig++-dev libtomlplusplus-dev \
  libnoise-dev zlib1g-dev zip unzip p7zip-full; do
  (require "$peer") >/dev/null 2>&1 || echo "not measured beside $peer, which cannot be installed" >&2
done

build_bench
# Files in memory, where there are such: disks differ, and would drown what is measured.
[ ! -w /dev/shm ] || export TMPDIR=/dev/shm
build/release/bin/bench --benchmark_enable_random_interleaving=true "${runs[@]}" \
  --benchmark_report_aggregates_only=true \
  --benchmark_out=build/release/times.json --benchmark_out_format=json "$@" >/dev/null
python3 bench/table.py build/release/times.json
if [ $# -eq 0 ]; then
  require time
  echo
  python3 bench/commands.py build/release/bin
fi
