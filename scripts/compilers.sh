#!/usr/bin/env bash
# Names each form that only some compilers or C libraries know, outside the places that keep a portable one beside it:
# src/core/compiler.h, src/platform and zel/api.h. With a directory, looks at the checkout there.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "${1:-.}"

forms='__(builtin_|attribute__|extension__|restrict|forceinline|declspec|int128|typeof|GNUC__|clang__|GLIBC__)'
forms+='|_MSC_VER|vector_size|#pragma +[^o ]|_IO_read|->_(ptr|cnt|flag)\b|\blong double\b|\?:'
! grep -rnE --include='*.h' --include='*.cpp' "$forms" include src tools tests examples fuzz |
  grep -vE '^(src/core/compiler\.h|src/platform/.*|include/zel/api\.h):' >&2
