#!/usr/bin/env bash
# Runs each fuzz target, or the one named, for so many seconds: fuzz.sh SECONDS [TARGET]. A find stays as a file
# under build/fuzz/finds/.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
seconds=${1:?usage: fuzz.sh SECONDS [TARGET]}
require "${build_packages[@]}" "${clang_packages[@]}" libclang-rt-14-dev
build_quietly fuzz

mkdir -p build/fuzz/finds
for source in "fuzz/seeds/"${2:-*}; do
  target=$(basename "$source")
  corpus=build/fuzz/corpus/$target
  mkdir -p "$corpus"
  echo "=== $target"
  "build/fuzz/bin/fuzz_$target" -max_total_time="$seconds" -rss_limit_mb=512 -timeout=5 -max_len=4096 \
    -print_final_stats=1 -artifact_prefix="build/fuzz/finds/$target-" "$corpus" "$source" 2>&1 |
    grep -E '^(==|stat::(number|average)|SUMMARY|Done)|ERROR|artifact'
done
