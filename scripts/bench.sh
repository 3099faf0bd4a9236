#!/usr/bin/env bash
# Measures the hot jobs, each beside the least that its own rules cost (`..._limit_...`) and beside peers
# (`..._peer_...`), interleaved in one process. Further arguments go to the benchmark program, for instance --benchmark_filter=mount.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
require "${build_packages[@]}" libbenchmark-dev libconfig++-dev libtomlplusplus-dev libstb-dev libnoise-dev
[ -f build/bench/build.ninja ] || cmake --preset release -B build/bench -DBVSYSTEM_BENCH=ON >/dev/null
cmake --build build/bench --target bench >/dev/null
build/bench/bin/bench --benchmark_enable_random_interleaving=true --benchmark_repetitions=9 \
  --benchmark_min_time=0.05 --benchmark_report_aggregates_only=true "$@" 2>&1 | grep -vE '_(mean|stddev|cv)'
