#!/usr/bin/env bash
# scripts/layers.sh and scripts/compilers.sh take the sources as they are, and name what they refuse wherever it is
# planted.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
copy=$(mktemp -d)
trap 'rm -rf "$copy"' EXIT
cp -r include src docs tools tests examples fuzz "$copy"

scripts/layers.sh "$copy"
for planted in 'src/core/numbers.cpp "file/names.h"' 'src/archive/table.h <zel/file.h>' \
  'include/zel/verbose.h <zel/archive.h>' 'src/image/bmp.cpp "script/tree.h"' \
  'src/image/tga.cpp "platform/platform.h"' 'src/platform/platform.h <zel/api.h>'; do
  read -r file include <<<"$planted"
  echo "#include $include" >>"$copy/$file"
  if message=$(scripts/layers.sh "$copy" 2>&1) || [[ $message != *"$file"* ]]; then
    echo "An include of $include in $file was not named: $message" >&2
    exit 1
  fi
  cp "$file" "$copy/$file"
done
echo '// Nothing.' >"$copy/include/zel/new.h"
echo '#include <zel/api.h>' >>"$copy/include/zel/new.h"
if scripts/layers.sh "$copy" 2>/dev/null; then
  echo "A public header without a room was taken." >&2
  exit 1
fi

scripts/compilers.sh "$copy"
for planted in 'src/math/timer.cpp int bits = __builtin_ctz(8);' 'include/zel/timer.h long double seconds;' \
  'tests/support/clock.h #pragma GCC poison gets' 'tools/zel/archive/list.cpp auto left = stream->_cnt;'; do
  read -r file form <<<"$planted"
  echo "$form" >>"$copy/$file"
  if message=$(scripts/compilers.sh "$copy" 2>&1) || [[ $message != "$file"* ]]; then
    echo "The form $form in $file was not named: $message" >&2
    exit 1
  fi
  cp "$file" "$copy/$file"
done
