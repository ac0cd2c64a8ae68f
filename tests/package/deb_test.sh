#!/usr/bin/env bash
# Packs a build as a Debian package (cpack -G DEB), installs it into this machine with dpkg,
# builds and runs the consumer program against /usr through find_package and through pkg-config,
# checks that GDB loads the debugger views by itself, and removes the package again. Needs root;
# scripts/test.sh runs it after the default suite.
#   deb_test.sh BUILD_DIR SOURCE_DIR
set -euo pipefail
build=$(cd "$1" && pwd) source=$(cd "$2" && pwd)
# One run at a time on a machine: another run's removal would pull the package from under this one.
exec 9>"${TMPDIR:-/tmp}/zt_deb_test.lock"
flock 9
work=$(mktemp -d)
trap 'dpkg -P libzt >/dev/null 2>&1 || true; rm -rf "$work"' EXIT

rm -rf "$build/packages"
if ! out=$(cd "$build" && cpack -G DEB 2>&1); then
  echo "$out" >&2
  exit 1
fi
deb=$(find "$build/packages" -maxdepth 1 -name 'libzt_*.deb' | head -n 1)
dpkg -i "$deb" >/dev/null

# Nothing points at the package: both routes must find it under /usr on their own.
cmake -S "$source/tests/install/consumer" -B "$work/cmake" -G Ninja >/dev/null
cmake --build "$work/cmake" >/dev/null
"$work/cmake/consumer"
echo "find_package consumer against /usr: ok"

read -r -a pc_flags <<<"$(pkg-config --cflags --libs zt)"
c++ -std=c++17 "$source/tests/install/consumer/main.cpp" "${pc_flags[@]}" -o "$work/pc_consumer"
"$work/pc_consumer"
echo "pkg-config consumer against /usr: ok"

"$source/tests/gdb/gdb_test.sh" "$source" c++ "" --system
dpkg -P libzt >/dev/null
[ ! -e /usr/include/zt/zt.h ] || { echo "the package left its headers behind" >&2; exit 1; }
echo "Debian package: ok ($(basename "$deb"))"
