#!/usr/bin/env bash
# Builds the library and runs the demo programs in examples/ with their defaults.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh

zt_need_packages "${ZT_BUILD_PACKAGES[@]}"
cmake --preset default >/dev/null
demos=(arrays tour faces events)
cmake --build --preset default --target "${demos[@]/#/zt_demo_}"
for demo in "${demos[@]}"; do
  echo
  echo "== examples/$demo"
  case $demo in
    faces) build/default/examples/zt_demo_faces --svg build/default/faces.svg ;;
    *) "build/default/examples/zt_demo_$demo" ;;
  esac
done
