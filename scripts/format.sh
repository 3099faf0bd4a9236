#!/usr/bin/env bash
# Formats the C++ sources; with --check, tells which are not formatted and changes nothing.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
require "${clang_packages[@]}"
mode=(-i)
[ "${1:-}" != --check ] || mode=(--dry-run --Werror)
git ls-files --cached --others --exclude-standard '*.h' '*.cpp' | xargs clang-format "${mode[@]}"
