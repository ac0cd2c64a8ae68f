#!/usr/bin/env bash
# Checks formatting (clang-format) and runs clang-tidy over the library's sources with the
# project's configurations. Needs a configured default build for the compile commands.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh

zt_need_packages "${ZT_BUILD_PACKAGES[@]}" clang-format clang-tidy
[ -f build/default/compile_commands.json ] || cmake --preset default >/dev/null

mapfile -t files < <(git ls-files '*.h' '*.cpp')
clang-format --dry-run --Werror "${files[@]}"
# Files named *_windows.cpp are built only for Windows, where the Windows headers exist.
mapfile -t sources < <(git ls-files 'zt/*.cpp' 'tests/*.cpp' 'examples/*.cpp' |
  grep -v '_windows\.cpp$')
if ! out=$(clang-tidy -p build/default --quiet --warnings-as-errors='*' "${sources[@]}" 2>&1); then
  echo "$out" | grep -v -E '^[0-9]+ warnings? (and [0-9]+ errors? )?generated\.$'
  exit 1
fi
echo "lint: clean"
