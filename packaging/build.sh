#!/usr/bin/env bash
# Builds with one of the presets of CMakePresets.json, and says something only when it fails:
#
#   packaging/build.sh PRESET [TARGET...]
#
# The folder is build/PRESET. FRAMEREEL_JOBS is the number of compilers at a time, by default one for each processor.
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

[ -f "build/$preset/build.ninja" ] || quietly cmake --preset "$preset"
jobs=${FRAMEREEL_JOBS:-$(nproc)}
quietly cmake --build --preset "$preset" --parallel "$jobs" ${1:+--target "$@"}
