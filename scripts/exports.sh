#!/usr/bin/env bash
# Compares what the libraries export with the lists in tests/exports, and the binary interface on Linux with the one
# described there. With --update, writes them anew: a name that goes, or changes, breaks the programs that use it.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
require "${build_packages[@]}" "${windows_packages[@]}" abigail-tools
build_quietly dev
build_quietly windows

now=$(mktemp -d)
trap 'rm -rf "$now"' EXIT
library=build/dev/src/libBvSystem.so
nm --dynamic --defined-only --demangle "$library" | cut -d' ' -f3- | sort -u >"$now/linux.txt"
x86_64-w64-mingw32-objdump --private-headers build/windows/bin/BvSystem.dll |
  awk '/^\[Ordinal\/Name Pointer\]/ { names = 1; next } NF == 0 { names = 0 } names { print $NF }' |
  c++filt | sort -u >"$now/windows.txt"
describe() {
  abidw --no-corpus-path --no-comp-dir-path --drop-private-types --headers-dir include \
    --exported-interfaces-only --no-show-locs "$library"
}

if [ "${1:-}" = --update ]; then
  mkdir -p tests/exports
  cp "$now"/*.txt tests/exports
  describe | gzip -9 --no-name >tests/exports/linux.abi.gz
  exit
fi
diff -u tests/exports/linux.txt "$now/linux.txt"
diff -u tests/exports/windows.txt "$now/windows.txt"
gunzip --stdout tests/exports/linux.abi.gz >"$now/promised.abi"
describe >"$now/linux.abi"
abidiff --no-default-suppression "$now/promised.abi" "$now/linux.abi"
