#!/usr/bin/env bash
# Builds the library and runs its tests on this machine. Takes another preset as argument: asan, clang, release, and
# tsan for the tests of threads alone.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
require "${build_packages[@]}"
preset=${1:-dev}
case $preset in
  clang) require "${clang_packages[@]}" ;;
  asan | tsan) require "${sanitizer_packages[@]}" ;;
esac
build "$preset"
ctest --preset "$preset" --parallel "$(nproc)"
