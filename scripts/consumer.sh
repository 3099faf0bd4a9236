#!/usr/bin/env bash
# Builds somebody else's project with the library, shared and static, on Linux and for Windows: with the library's
# sources inside of it, and against an installation that was moved, by find_package and by pkg-config.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
require "${build_packages[@]}" "${windows_packages[@]}" pkg-config
begin_wine
scratch=$(mktemp -d)
trap 'end_wine; rm -rf "$scratch"' EXIT

build_quietly release zel
cmake --install build/release --prefix "$scratch/program" >/dev/null
mv "$scratch/program" "$scratch/moved"
"$scratch/moved/bin/zel" --version

# Runs a program, which finds the shared library in one of two folders.
try() {
  local name=$1 program=$2 installed=$3
  printf '%-32s ' "$name"
  if [ -f "$program.exe" ]; then
    WINEPATH="$installed/bin;$(windows_libraries)" scripts/wine.sh "$program.exe" tests/consumer/consumer.cpp
  else
    LD_LIBRARY_PATH=$installed/lib "$program" tests/consumer/consumer.cpp
  fi
}

consume() {
  local platform=$1 kind=$2 name="$1, $2" here=$scratch/$1-$2
  local compiler=g++ static=() flags
  local options=(-G Ninja -DCMAKE_BUILD_TYPE=Debug)
  if [ "$platform" = Windows ]; then
    compiler=x86_64-w64-mingw32-g++-posix
    options+=(-DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-toolchain.cmake")
  fi
  [ "$kind" = shared ] || static=(--static)

  cmake -S tests/consumer -B "$here/inside" "${options[@]}" -DBVSYSTEM_SOURCE="$root" -DBVSYSTEM_INSTALL=ON \
    -DCMAKE_INSTALL_LIBDIR=lib -DBUILD_SHARED_LIBS="$([ "$kind" = shared ] && echo ON || echo OFF)" >/dev/null
  cmake --build "$here/inside" >/dev/null
  cmake --install "$here/inside" --prefix "$here/new" >/dev/null
  mv "$here/new" "$here/installed"
  local lib=$here/installed/lib
  try "$name, inside" "$here/inside/consumer" "$here/installed"

  cmake -S tests/consumer -B "$here/package" "${options[@]}" -DBvSystem_DIR="$lib/cmake/BvSystem" >/dev/null
  cmake --build "$here/package" >/dev/null
  try "$name, find_package" "$here/package/consumer" "$here/installed"

  read -ra flags < <(PKG_CONFIG_PATH=$lib/pkgconfig pkg-config "${static[@]}" --cflags --libs bvsystem)
  "$compiler" -std=c++17 tests/consumer/consumer.cpp "${flags[@]}" -o "$here/consumer"
  try "$name, pkg-config" "$here/consumer" "$here/installed"
}

for platform in Linux Windows; do
  consume "$platform" shared
  consume "$platform" static
done
