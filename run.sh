#!/usr/bin/env bash
# Builds what is needed and runs it:
#
#   ./run.sh                     the program; without a display, as --demo
#   ./run.sh --demo              five seconds of the screen into demo.gif; without a display, of a small moving scene
#   ./run.sh [options] FILE.gif  whatever framereel-record is asked for; see ./run.sh --help
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$here/build/release
record=$build/tools/framereel-record

"$here/packaging/install-dependencies.sh" build
if [ $# -eq 0 ] && [ -n "${DISPLAY-}" ]; then
  "$here/packaging/build.sh" release framereel
  exec "$build/framereel"
elif [ $# -gt 0 ] && [ "$1" != --demo ]; then
  "$here/packaging/build.sh" release framereel-record
  exec "$record" "$@"
fi

if [ -n "${DISPLAY-}" ]; then
  "$here/packaging/build.sh" release framereel-record
  echo "Recording five seconds of the display $DISPLAY"
  "$record" --seconds 5 --fps 10 "$here/demo.gif"
else
  "$here/packaging/install-dependencies.sh" screen
  "$here/packaging/build.sh" release framereel-record framereel-demo-scene
  echo "There is no display: recording five seconds of a moving scene on a screen of its own"
  "$here/tests/with_xvfb.sh" 640x480x24 \
    "$here/bench/with_scene.sh" "$build/tools/framereel-demo-scene" "$record" --seconds 5 --fps 20 "$here/demo.gif"
fi
echo "The recording is in $here/demo.gif"
