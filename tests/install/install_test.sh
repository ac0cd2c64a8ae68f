#!/usr/bin/env bash
# Installs the built library into a temporary prefix, then builds and runs a client against it
# twice: through the CMake package and through pkg-config.
#   install_test.sh BUILD_DIR SOURCE_DIR CXX CXX_FLAGS
set -euo pipefail
build=$1 source=$2 cxx=$3 flags=${4:-}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/prefix" >/dev/null

cmake -S "$source/tests/install/consumer" -B "$work/cmake" -G Ninja \
  -DCMAKE_PREFIX_PATH="$work/prefix" -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_CXX_FLAGS="$flags" >/dev/null
cmake --build "$work/cmake" >/dev/null
"$work/cmake/consumer"
echo "find_package consumer: ok"

export PKG_CONFIG_PATH="$work/prefix/lib/pkgconfig"
read -r -a pc_flags <<<"$(pkg-config --cflags --libs zt)"
read -r -a extra <<<"$flags"
"$cxx" -std=c++17 "${extra[@]}" "$source/tests/install/consumer/main.cpp" "${pc_flags[@]}" \
  -Wl,-rpath,"$work/prefix/lib" -o "$work/pc_consumer"
"$work/pc_consumer"
echo "pkg-config consumer: ok"
