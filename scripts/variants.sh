#!/usr/bin/env bash
# Runs the tests with libraries that are made otherwise: in plain C++, with the other C runtime of Windows, by another
# compiler. The test programs are those of the presets dev and windows.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
require "${build_packages[@]}" "${windows_packages[@]}" clang

build_quietly dev
build_quietly portable
tests=$root/build/dev/bin/tests
export LD_LIBRARY_PATH=$root/build/portable/src
[[ $(ldd "$tests") == *"$LD_LIBRARY_PATH"* ]] # or another library would be tested
echo "portable:"
(cd build/dev/tests/scratch && "$tests" --gtest_brief=1)
unset LD_LIBRARY_PATH

build_quietly windows
begin_wine
trap end_wine EXIT
# With two C runtimes in one process, the tests see the standard output and the descriptors of their own alone.
declare -A left_out=([windows-ucrt]=-QueryTest.TheDumpGoesToTheLog*:ParserTest.BlocksMayBeNested*:FileTest.AssignmentTakes*)
for variant in windows-portable windows-ucrt windows-clang; do
  build_quietly "$variant"
  programs=build/$variant/tests
  mkdir -p "$programs"
  cp build/windows/bin/* "$programs"
  cp build/"$variant"/bin/BvSystem.dll "$programs"
  echo "$variant:"
  (cd "$programs" && "$root/scripts/wine.sh" ./tests.exe --gtest_brief=1 --gtest_filter="${left_out[$variant]:-*}")
done
