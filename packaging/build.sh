#!/usr/bin/env bash
# Builds with one of the presets of CMakePresets.json, and says something only when it fails:
#
#   packaging/build.sh PRESET [-DFRAMEREEL_TESTS=ON] [-DFRAMEREEL_BENCH=ON] [TARGET...]
#
# The folder is build/PRESET. The programs alone are built for who does not ask for more; what was asked for once stays
# with the folder. FRAMEREEL_JOBS is the number of compilers at a time, by default one for each processor.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

preset=$1
shift
log=build/$preset.log
mkdir -p build
quietly() {
  if ! "$@" >"$log" 2>&1 </dev/null; then
    cat "$log" >&2
    exit 1
  fi
}

options=()
while [[ ${1-} == -D* ]]; do
  options+=("$1")
  shift
done
if [ ! -f "build/$preset/build.ninja" ]; then
  options=(-DFRAMEREEL_TESTS=OFF -DFRAMEREEL_BENCH=OFF "${options[@]}")
fi
[ ${#options[@]} -eq 0 ] || quietly cmake --preset "$preset" "${options[@]}"
jobs=${FRAMEREEL_JOBS:-$(nproc)}
quietly cmake --build --preset "$preset" --parallel "$jobs" ${1:+--target "$@"}
