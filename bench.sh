#!/usr/bin/env bash
# Builds the benchmarks and prints their tables: the stages of a frame, ticks in which little is drawn beside a bare
# read of the screen, what recordings weigh, the compressor beside others, and live recordings by the command and by the
# program beside other recorders. The last one becomes docs/MEASURED.md. Arguments go to the compressor's benchmark.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$here/build/release

"$here/packaging/install-dependencies.sh" build bench
"$here/packaging/build.sh" release -DFRAMEREEL_BENCH=ON engine_bench scene_player program_bench size_bench lzw_bench \
  play_time framereel-record framereel-demo-scene

"$here/tests/with_xvfb.sh" 1920x1080x24 "$build/bench/engine_bench"
echo
"$build/bench/size_bench"
echo
"$build/bench/lzw_bench" "$@"
echo
"$here/bench/measured.sh" "$build" | tee "$here/docs/MEASURED.md"
