#!/usr/bin/env bash
# Runs clang-tidy over the library, the program and the examples.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
require "${build_packages[@]}" clang clang-tidy
[ -f build/clang/compile_commands.json ] || cmake --preset clang >/dev/null
git ls-files 'src/*.cpp' 'tools/*.cpp' 'examples/*.cpp' | grep -v windows |
  xargs --max-args=4 --max-procs="$(nproc)" clang-tidy -p build/clang --quiet 2> >(grep -v "warnings generated" >&2)
