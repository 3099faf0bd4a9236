#!/usr/bin/env bash
# Tells which functions of the library hold an atomic operation of the processor. None may: the library's objects
# belong to one thread at a time, and what threads share is set up before they start (docs/architecture.md).
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
require "${build_packages[@]}" binutils
[ "$(uname -m)" = x86_64 ] || exit 0 # the instructions sought are this processor's
build_quietly release BvSystem

library=build/release/src/libBvSystem.so
code=$(objdump --disassemble --demangle --no-show-raw-insn "$library")
grep -q '<Zel::File::read(void\*, int)' <<<"$code" # it is the library's code, and can be read
if found=$(awk '/^[0-9a-f]+ <.*>:$/ { place = $0 } /[ \t]lock |[ \t]xchg .*\(/ { print place, $0; found = 1 }
  END { exit !found }' <<<"$code"); then
  echo "$found" >&2
  exit 1
fi
echo "no atomic operation in $library"
