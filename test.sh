#!/usr/bin/env bash
# Builds everything and runs all tests; says how they went, and everything about one that fails:
#
#   ./test.sh               as it is meant to run
#   ./test.sh --sanitizers  under AddressSanitizer and UndefinedBehaviorSanitizer
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

preset=release
parts=(-DFRAMEREEL_TESTS=ON -DFRAMEREEL_BENCH=ON)
case ${1-} in
  "") ;;
  --sanitizers)
    preset=sanitizers
    parts=(-DFRAMEREEL_TESTS=ON)
    ;;
  *)
    echo "usage: $0 [--sanitizers]" >&2
    exit 2
    ;;
esac

packaging/install-dependencies.sh build test bench
packaging/build.sh "$preset" "${parts[@]}"

log=build/$preset-tests.log
if ! ctest --preset "$preset" --parallel 2 >"$log" 2>&1 </dev/null; then
  cat "$log" >&2
  exit 1
fi
grep 'tests passed' "$log"
