#!/usr/bin/env bash
# Builds BvSystem.dll with MinGW-w64 and runs the same tests through Wine.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
require "${build_packages[@]}" "${windows_packages[@]}"

build windows
begin_wine # after the build: an idle Wine ends, and is slow to start again
trap end_wine EXIT
# Wine sometimes does not end a process whose test has passed: such a test is tried once more.
ctest --preset windows --parallel "$(nproc)" --repeat after-timeout:2
