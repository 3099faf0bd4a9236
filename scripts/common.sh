# What the scripts share; sourced, not run. Sets `root`, the checkout.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"

build_packages=(cmake ninja-build g++ libgtest-dev libgmock-dev libcli11-dev nlohmann-json3-dev
  libjpeg62-turbo-dev locales) # a test makes a locale of its own from the sources of locales
clang_packages=(clang clang-format)
sanitizer_packages=(clang libclang-rt-14-dev)
windows_packages=(g++-mingw-w64-x86-64-posix wine wine64 googletest)
arm64_packages=(g++-aarch64-linux-gnu qemu-user googletest)

# Installs the Debian packages that are missing, or says in one line what to install.
require() {
  local missing=() as_root=()
  for package in "$@"; do
    dpkg-query --show --showformat='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
      missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  if [ "$(id -u)" -ne 0 ]; then
    if ! sudo -n true 2>/dev/null; then
      echo "Please install: sudo apt-get install ${missing[*]}" >&2
      exit 1
    fi
    as_root=(sudo)
  fi
  echo "Installing ${missing[*]}"
  "${as_root[@]}" apt-get update -qq
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# Configures a preset and builds the given targets (all, without any).
build() {
  local preset=$1
  shift
  [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset" ${1+--target "$@"}
}

# The same, showing what the compiler says only when it fails.
build_quietly() {
  local log
  log=$(mktemp)
  echo "Building $*"
  if ! build "$@" >"$log" 2>&1; then
    cat "$log" >&2
    rm -f "$log"
    exit 1
  fi
  rm -f "$log"
}

# A Windows machine of its own for this run, which ends with it.
begin_wine() {
  WINEPREFIX=$(mktemp -d)
  export WINEPREFIX WINEDEBUG=-all
  scripts/wine.sh wineboot --init >/dev/null 2>&1
}
end_wine() {
  /usr/lib/wine/wineserver64 --kill 2>/dev/null || true
  rm -rf "$WINEPREFIX"
}

# Where the compiler for Windows keeps its libraries for programs to load, as WINEPATH takes them.
windows_libraries() {
  local library path
  for library in libstdc++-6.dll libwinpthread-1.dll; do
    path=$(x86_64-w64-mingw32-g++-posix -print-file-name=$library)
    printf '%s;' "$(dirname "$path")"
  done
}
