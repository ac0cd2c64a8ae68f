#!/usr/bin/env bash
# Builds tests/gdb/views.cpp without optimisation, stops GDB in it and compares what `print`
# shows for each object with tests/gdb/expected.txt (addresses written as 0xADDR). The printers
# must come from the auto-load directory, as a user's GDB finds them.
#   gdb_test.sh SOURCE_DIR CXX CXX_FLAGS BUILD_DIR   installs BUILD_DIR into a temporary prefix
#   gdb_test.sh SOURCE_DIR CXX CXX_FLAGS --system    uses the library installed under /usr
set -euo pipefail
source=$1 cxx=$2 flags=$3 from=$4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

gdb_options=(-batch -nx -iex "set debuginfod enabled off")
compile=()
if [ "$from" != --system ]; then
  prefix=$work/prefix
  cmake --install "$from" --prefix "$prefix" >/dev/null
  libdir=$(dirname "$(find "$prefix" -name 'libzt.so' | head -n 1)")
  compile=(-I"$prefix/include" -L"$libdir" -Wl,-rpath,"$libdir")
  # A private prefix is not among GDB's trusted auto-load directories: name it.
  gdb_options+=(-iex "add-auto-load-scripts-directory $prefix/share/gdb/auto-load"
    -iex "add-auto-load-safe-path $prefix/share/gdb/auto-load")
fi
read -r -a extra <<<"$flags"
"$cxx" -std=c++17 -g -O0 "${extra[@]}" "${compile[@]}" "$source/tests/gdb/views.cpp" -lzt \
  -o "$work/views"

commands=(-ex "break Stop" -ex run -ex up)
for name in array ids fixed dlist xlist owning queue base narrow wide bits grid stream blocks \
  some graph; do
  commands+=(-ex "print $name")
done
gdb "${gdb_options[@]}" "${commands[@]}" "$work/views" </dev/null >"$work/out" 2>&1 || true
grep '^\$' "$work/out" | sed -E 's/0x[0-9a-f]{4,}/0xADDR/g' >"$work/shown" || true
if ! diff -u "$source/tests/gdb/expected.txt" "$work/shown"; then
  echo "--- GDB's whole output:"
  cat "$work/out"
  exit 1
fi
echo "gdb views: ok"
