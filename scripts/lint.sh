#!/usr/bin/env bash
# Checks formatting (clang-format) and runs clang-tidy over the library's sources with the
# project's configurations. Needs a configured default build for the compile commands.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh

zt_need_packages "${ZT_BUILD_PACKAGES[@]}" clang-format clang-tidy
[ -f build/default/compile_commands.json ] || cmake --preset default >/dev/null

mapfile -t files < <(git ls-files '*.h' '*.cpp' '*.inc')
clang-format --dry-run --Werror "${files[@]}"
# Files named *_windows.cpp are built only for Windows, where the Windows headers exist.
mapfile -t sources < <(git ls-files 'zt/*.cpp' 'tests/*.cpp' 'examples/*.cpp' 'bench/*.cpp' \
  'fuzz/*.cpp' | grep -v '_windows\.cpp$')
# Both cores: the analysis of the test files dominates the time.
if ! out=$(printf '%s\n' "${sources[@]}" |
  xargs -P 2 -n 4 clang-tidy -p build/default --quiet --warnings-as-errors='*' 2>&1); then
  echo "$out" | grep -E '(error|warning):' | sort -u
  exit 1
fi
echo "lint: clean"
