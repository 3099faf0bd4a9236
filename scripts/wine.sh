#!/usr/bin/env bash
# Runs a Windows program through Wine, with a private prefix unless WINEPREFIX names one.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export WINEPREFIX=${WINEPREFIX:-$root/build/wine}
export WINEDEBUG=${WINEDEBUG:--all}
mkdir -p "$WINEPREFIX"
exec /usr/lib/wine/wine64 "$@"
