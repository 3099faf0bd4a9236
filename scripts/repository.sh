#!/usr/bin/env bash
# Refuses files of more than 256 KiB in the repository, and remembers how the checkout is. With --unchanged, refuses
# a checkout that is not as it was then: what builds, tests or measures writes below build/ alone.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

large=$(git ls-files -z | xargs --null stat --format='%s %n' | awk '$1 > 256 * 1024')
if [ -n "$large" ]; then
  printf 'Files of more than 256 KiB:\n%s\n' "$large" >&2
  exit 1
fi

state() {
  git status --porcelain --untracked-files=all
  git diff HEAD | sha256sum
}
mkdir -p build
if [ "${1:-}" != --unchanged ]; then
  state >build/checkout
elif ! state | diff build/checkout - >&2; then
  echo "The checkout has changed." >&2
  exit 1
fi
