#!/usr/bin/env bash
# Installs the library into a scratch directory and builds somebody else's project against it: with CMake's
# find_package, and with pkg-config.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
require "${build_packages[@]}" pkg-config
build_quietly release

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cmake --install build/release --prefix "$scratch/installed" >/dev/null
mv "$scratch/installed" "$scratch/moved" # an installation may be moved
"$scratch/moved/bin/zel" --version

cmake -S tests/consumer -B "$scratch/cmake" -G Ninja -DCMAKE_PREFIX_PATH="$scratch/moved" >/dev/null
cmake --build "$scratch/cmake" >/dev/null
"$scratch/cmake/consumer" tests/consumer/consumer.cpp

pc_dir=$(dirname "$(find "$scratch/moved" -name bvsystem.pc)")
read -ra flags < <(PKG_CONFIG_PATH=$pc_dir pkg-config --cflags --libs bvsystem)
g++ -std=c++17 tests/consumer/consumer.cpp "${flags[@]}" -o "$scratch/consumer"
LD_LIBRARY_PATH=$(dirname "$pc_dir") "$scratch/consumer" tests/consumer/consumer.cpp
