#!/usr/bin/env bash
# Builds the benchmarks and prints their table. Arguments go to them: ./bench.sh --benchmark_filter=Lzw
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

"$here/packaging/install-dependencies.sh" build test bench
"$here/packaging/build.sh" release framereel_bench
exec "$here/build/release/bench/framereel_bench" "$@"
