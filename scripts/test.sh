#!/usr/bin/env bash
# Builds the library and runs its tests on this machine. Takes another preset as argument: asan, clang, release.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
require "${build_packages[@]}"
preset=${1:-dev}
[ "$preset" != clang ] || require "${clang_packages[@]}"
build_and_test "$preset"
