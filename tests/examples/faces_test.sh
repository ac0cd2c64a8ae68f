#!/usr/bin/env bash
# Runs the faces demo on its sample drawings (Euler's formula holds on every part, the SVG is
# well-formed XML) and on malformed files (a message naming the line, exit code 1).
#   faces_test.sh FACES_PROGRAM DATA_DIR [EMULATOR]
set -uo pipefail
program=$1 data=$2 emulator=${3:-}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { echo "FAIL: $*"; exit 1; }
run() { $emulator "$program" "$@" 2>&1 | tr -d '\r'; }

for sample in "" "$data/grid.txt" "$data/wheel.txt"; do
  out=$(run $sample --svg "$work/out.svg") || fail "${sample:-built-in}: exit code $?: $out"
  grep -q "holds on every part" <<<"$out" || fail "${sample:-built-in}: $out"
  xmllint --noout "$work/out.svg" || fail "${sample:-built-in}: the SVG is not well-formed"
done

check_error() {  # check_error LINE EXPECTED_MESSAGE < file contents
  cat >"$work/bad.txt"
  out=$(run "$work/bad.txt" --svg "$work/bad.svg")
  code=$?
  [ $code -eq 1 ] || fail "malformed input: exit code $code: $out"
  grep -qF "bad.txt:$1: $2" <<<"$out" || fail "malformed input: unexpected message: $out"
}
printf 'point a 0 0\npoint b 1 x\n' | check_error 2 "expected: point ID X Y"
printf 'point a 0 0\npoint b 1 1\nedge a c\n' | check_error 3 "unknown point 'c'"
printf '# one\n\nnode a 0 0\n' | check_error 3 "unknown line kind 'node'"
printf 'point a 0 0\npoint b 1 1\nedge a b\nedge b a\n' | check_error 4 "edge b-a is repeated"
printf 'point a 0 0\npoint b 0 0\n' | check_error 2 "another point stands at this place"
echo "faces: samples and malformed inputs behave"
