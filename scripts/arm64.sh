#!/usr/bin/env bash
# Builds the library for 64-bit ARM Linux and runs its tests through qemu.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
require "${build_packages[@]}" "${arm64_packages[@]}"

# Debian's libjpeg for that processor. It is unpacked, not installed: this machine stays one of its own kind.
fetch_libjpeg() {
  local root=$1 state
  state=$(mktemp -d)
  mkdir -p "$state"/{lists,cache/archives}/partial
  local apt=(apt-get -qq -o APT::Architecture=arm64 -o APT::Architectures::=arm64 -o APT::Sandbox::User=root
    -o Dir::State::lists="$state/lists" -o Dir::Cache="$state/cache")
  "${apt[@]}" update
  (cd "$state" && "${apt[@]}" download libjpeg62-turbo libjpeg62-turbo-dev)
  for package in "$state"/*.deb; do
    dpkg -x "$package" "$root.new"
  done
  mv "$root.new" "$root"
  rm -rf "$state"
}

[ -d build/arm64-root ] || fetch_libjpeg build/arm64-root
build arm64
ctest --preset arm64 --parallel "$(nproc)"
