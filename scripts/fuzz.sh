#!/usr/bin/env bash
# Runs each fuzz target, or the one named, for so many seconds, as many side by side as there are processors:
# fuzz.sh SECONDS [TARGET]. A find ends the run; its file stays under build/fuzz/finds/. What the targets learn
# stays under build/fuzz/corpus/.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
seconds=${1:?usage: fuzz.sh SECONDS [TARGET]}
require "${build_packages[@]}" "${sanitizer_packages[@]}"
build_quietly fuzz

fuzz() {
  local seconds=$1 target=$2 log=build/fuzz/$2.log
  mkdir -p build/fuzz/finds "build/fuzz/corpus/$target"
  if ! build/asan/bin/fuzz_"$target" -max_total_time="$seconds" -rss_limit_mb=512 -timeout=5 -max_len=4096 \
    -print_final_stats=1 -artifact_prefix="build/fuzz/finds/$target-" \
    "build/fuzz/corpus/$target" "fuzz/seeds/$target" >"$log" 2>&1; then
    tail -n 60 "$log"
    return 1
  fi
  awk -v target="$target" '/number_of_executed_units/ { runs = $2 } /average_exec_per_sec/ { rate = $2 }
    /^#.* corp: / { match($0, /corp: [0-9]+/); corpus = substr($0, RSTART + 6, RLENGTH - 6) }
    END { printf "%-8s %9d inputs, %6d a second, %5d kept\n", target, runs, rate, corpus }' "$log"
}
export -f fuzz
basename --multiple fuzz/seeds/${2:-*} |
  xargs --max-args=1 --max-procs="$(nproc)" bash -c 'fuzz "$@"' fuzz "$seconds"
