#!/usr/bin/env bash
# Builds the library and runs the demo programs in examples/.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh

zt_need_packages "${ZT_BUILD_PACKAGES[@]}"
cmake --preset default >/dev/null
cmake --build --preset default --target zt_demo_arrays zt_demo_tour
echo
echo "== examples/arrays"
build/default/examples/zt_demo_arrays
echo
echo "== examples/tour"
build/default/examples/zt_demo_tour
