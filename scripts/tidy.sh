#!/usr/bin/env bash
# Runs cppcheck over all that is not a test, and clang-tidy over everything; with --quick, over the library, the program
# and the examples.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
require "${build_packages[@]}" "${windows_packages[@]}" libbenchmark-dev clang clang-tidy cppcheck
cppcheck --quiet --error-exitcode=1 --enable=warning,performance,portability,style --std=c++20 \
  --suppressions-list=<(grep -v '^#' .cppcheck-suppressions) -DZEL_API= -I include -I src -I tools/zel \
  bench examples fuzz include src tools
[ -f build/tidy/build.ninja ] ||
  cmake --preset clang -B build/tidy -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON -DBVSYSTEM_BENCH=ON -DBVSYSTEM_FUZZ=ON \
    >/dev/null
run_tidy() {
  xargs --max-args=4 --max-procs="$(nproc)" "$@" 2> >(grep -v "warnings generated" >&2)
}
git ls-files 'src/*.cpp' 'tools/*.cpp' 'examples/*.cpp' | grep -v windows | run_tidy clang-tidy -p build/tidy --quiet

# What is Windows' own, with the headers of MinGW. Their macros hold small suffixes and hand out handles as numbers.
headers=$(x86_64-w64-mingw32-g++-posix -print-file-name=include/c++)
git ls-files '*windows*.cpp' | run_tidy sh -c 'exec clang-tidy --quiet \
  --checks=-readability-uppercase-literal-suffix,-performance-no-int-to-ptr "$@" -- --target=x86_64-w64-mingw32 \
  -std=c++20 -isystem "$0" -isystem "$0/x86_64-w64-mingw32" -isystem /usr/src/googletest/googletest/include -isystem \
  /usr/src/googletest/googlemock/include -isystem build/host-headers \
  -I include -I src -I src/platform/windows -I tools/zel -I tests' "$headers"

[ "${1:-}" != --quick ] || exit 0
# What is no product: quickly, without the analyzer and what is about speed, numbers that a test chose, or short tables.
git ls-files 'tests/*.cpp' 'bench/*.cpp' 'fuzz/*.cpp' | grep -v -e windows -e consumer | run_tidy clang-tidy -p build/tidy \
  --quiet --checks=-clang-analyzer-*,-performance-*,-cert-*,-bugprone-implicit-widening*,-bugprone-narrowing*,\
-bugprone-incorrect-roundings,-bugprone-misplaced-widening-cast,-readability-isolate-declaration,\
-readability-uppercase-literal-suffix,-readability-inconsistent-declaration-parameter-name
