#!/usr/bin/env bash
# Tells how much of src/ the tests run on this machine, file by file; build/coverage/report.html shows each line.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
require "${build_packages[@]}" gcovr
[ -f build/coverage/build.ninja ] ||
  cmake --preset dev -B build/coverage -DCMAKE_CXX_FLAGS="--coverage -fprofile-update=atomic" \
    -DBVSYSTEM_EXAMPLES=OFF >/dev/null
echo "Building coverage"
cmake --build build/coverage >/dev/null
find build/coverage -name '*.gcda' -delete
ctest --test-dir build/coverage --parallel "$(nproc)" --output-on-failure >/dev/null
gcovr --root . --filter src/ --exclude-throw-branches --exclude-unreachable-branches --fail-under-line 97 \
  --txt --print-summary --html-details build/coverage/report.html build/coverage
