#!/usr/bin/env bash
# Builds and runs the consumer program in a client project that pulls the source tree in with
# add_subdirectory. Unoptimised, to keep the second compile of the library short; zt's own tests
# and demos must stay out of a client's build.
#   subdirectory_test.sh SOURCE_DIR CXX CXX_FLAGS
set -euo pipefail
source=$1 cxx=$2 flags=${3:-}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake -S "$source/tests/install/subdirectory" -B "$work" -G Ninja -DZT_SOURCE_DIR="$source" \
  -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_CXX_FLAGS="$flags" -DCMAKE_BUILD_TYPE=Debug >/dev/null
if [ -d "$work/zt/tests" ] || [ -d "$work/zt/examples" ]; then
  echo "zt added its tests or demos to the client's build" >&2
  exit 1
fi
cmake --build "$work" --target consumer -j 2 >/dev/null
"$work/consumer"
echo "add_subdirectory consumer: ok"
