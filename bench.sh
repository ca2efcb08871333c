#!/usr/bin/env bash
# Builds the benchmarks and prints their tables: the stages of a frame, an unchanged frame beside a bare read of the
# screen, what recordings weigh, the compressor beside others, and live recordings by the command and by the program.
# Arguments go to the compressor's benchmark.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$here/build/release

"$here/packaging/install-dependencies.sh" build test bench
"$here/packaging/build.sh" release engine_bench scene_player program_bench size_bench lzw_bench framereel-record

"$here/tests/with_xvfb.sh" 1920x1080x24 "$build/bench/engine_bench"
echo
"$build/bench/size_bench"
echo
"$build/bench/lzw_bench" "$@"
echo
"$here/bench/live.sh" "$build"
