#!/usr/bin/env bash
# Runs cppcheck over all that is not a test, and clang-tidy over the library, the program and the examples.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
require "${build_packages[@]}" clang clang-tidy cppcheck
cppcheck --quiet --error-exitcode=1 --enable=warning,performance,portability,style --std=c++20 \
  --suppressions-list=<(grep -v '^#' .cppcheck-suppressions) -DZEL_API= -I include -I src -I tools/zel \
  bench examples fuzz include src tools
[ -f build/tidy/build.ninja ] ||
  cmake --preset clang -B build/tidy -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON >/dev/null
git ls-files 'src/*.cpp' 'tools/*.cpp' 'examples/*.cpp' | grep -v windows |
  xargs --max-args=4 --max-procs="$(nproc)" clang-tidy -p build/tidy --quiet 2> >(grep -v "warnings generated" >&2)
