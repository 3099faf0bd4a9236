#!/usr/bin/env bash
# scripts/layers.sh takes the library as it is, and names an include that points up wherever one is planted.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
copy=$(mktemp -d)
trap 'rm -rf "$copy"' EXIT
cp -r include src docs "$copy"

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
