#!/usr/bin/env bash
# Builds framereel-record where needed and runs it:
#
#   ./run.sh                     five seconds of the screen into demo.gif; without a display, of a small moving scene
#   ./run.sh [options] FILE.gif  whatever framereel-record is asked for; see ./run.sh --help
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
record=$here/build/release/tools/framereel-record
scene=$here/build/release/tools/framereel-demo-scene

"$here/packaging/install-dependencies.sh" build test bench
"$here/packaging/build.sh" release framereel-record framereel-demo-scene

if [ $# -gt 0 ]; then
  exec "$record" "$@"
fi

if [ -n "${DISPLAY-}" ]; then
  echo "Recording five seconds of the display $DISPLAY"
  "$record" --seconds 5 --fps 10 "$here/demo.gif"
else
  echo "There is no display: recording five seconds of a moving scene on a screen of its own"
  "$here/tests/with_xvfb.sh" 640x480x24 \
    "$here/tests/with_scene.sh" "$scene" "$record" --seconds 5 --fps 20 "$here/demo.gif"
fi
echo "The recording is in $here/demo.gif"
