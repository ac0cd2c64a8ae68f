#!/usr/bin/env bash
# Installs the built library into a temporary prefix, then builds and runs a client against it
# twice: through the CMake package and through pkg-config.
#   install_test.sh BUILD_DIR SOURCE_DIR CXX CXX_FLAGS [TOOLCHAIN_FILE EMULATOR]
# A cross build passes its toolchain file and the emulator that runs its programs; a Windows
# client finds zt.dll next to itself, so the installed DLL is copied there.
set -euo pipefail
build=$1 source=$2 cxx=$3 flags=${4:-} toolchain=${5:-} emulator=${6:-}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/prefix" >/dev/null

# run PROGRAM: runs a client program built in PROGRAM's folder.
run() {
  local program=$1
  [ -f "$program.exe" ] && program=$program.exe
  if [ -d "$work/prefix/bin" ]; then
    cp "$work/prefix/bin/"*.dll "$(dirname "$program")/" 2>/dev/null || true
  fi
  if [ -n "$emulator" ]; then "$emulator" "$program"; else "$program"; fi
}

if [ -n "$toolchain" ]; then
  compiler=(-DCMAKE_TOOLCHAIN_FILE="$toolchain")
else
  compiler=(-DCMAKE_CXX_COMPILER="$cxx")
fi
cmake -S "$source/tests/install/consumer" -B "$work/cmake" -G Ninja \
  -DCMAKE_PREFIX_PATH="$work/prefix" "${compiler[@]}" -DCMAKE_CXX_FLAGS="$flags" >/dev/null
cmake --build "$work/cmake" >/dev/null
run "$work/cmake/consumer"
echo "find_package consumer: ok"

export PKG_CONFIG_PATH="$work/prefix/lib/pkgconfig"
read -r -a pc_flags <<<"$(pkg-config --cflags --libs zt)"
read -r -a extra <<<"$flags"
if [ -n "$toolchain" ]; then
  # The compiler's runtime linked in, as the toolchain file does, and zt from its DLL: -static
  # would refuse the import library, and -static-libstdc++ turns static linking off again.
  link=(-static-libgcc -Wl,-Bstatic)
else
  link=(-Wl,-rpath,"$work/prefix/lib")
fi
"$cxx" -std=c++17 "${extra[@]}" "$source/tests/install/consumer/main.cpp" "${pc_flags[@]}" \
  "${link[@]}" -o "$work/pc_consumer"
run "$work/pc_consumer"
echo "pkg-config consumer: ok"
