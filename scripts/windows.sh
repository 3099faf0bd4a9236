#!/usr/bin/env bash
# Builds BvSystem.dll with MinGW-w64 and runs the same tests through Wine.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
require "${build_packages[@]}" "${windows_packages[@]}"

WINEPREFIX=$(mktemp -d) # a machine of its own for every run
export WINEPREFIX WINEDEBUG=-all
cleanup() {
  /usr/lib/wine/wineserver64 --kill 2>/dev/null || true
  rm -rf "$WINEPREFIX"
}
trap cleanup EXIT

build windows
scripts/wine.sh wineboot --init >/dev/null 2>&1 # after the build: an idle Wine ends, and is slow to start again
# Wine sometimes does not end a process whose test has passed: such a test is tried once more.
ctest --preset windows --parallel "$(nproc)" --repeat after-timeout:2
