#!/usr/bin/env bash
# Records the README's moving picture, docs/demo.gif: the program at work on a private screen, recorded by
# framereel-record. Needs xdotool and x11-apps beside what tests need, and the programs built in build/release:
#
#   docs/demo.sh
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$here/../build/release

if [ -z "${FRAMEREEL_XVFB_FOLDER-}" ]; then
  exec "$here/../tests/with_xvfb.sh" 632x440x24 "$0"
fi

# The user: goes to a place in a straight line, clicks, or draws from there to another. As a mouse does, in steps, which
# are what xeyes looks for.
x=300 y=330
go() {
  local fromX=$x fromY=$y step steps=${3:-20} nextX nextY
  for ((step = 1; step <= steps; step++)); do
    nextX=$((fromX + ($1 - fromX) * step / steps)) nextY=$((fromY + ($2 - fromY) * step / steps))
    xdotool mousemove_relative -- $((nextX - x)) $((nextY - y))
    x=$nextX y=$nextY
    sleep 0.025
  done
  sleep 0.2
}
click() {
  go "$@"
  xdotool mousedown 1
  sleep 0.15
  xdotool mouseup 1
  sleep 0.4
}

processes=()
# shellcheck disable=SC2317 # the trap calls it
finish() {
  kill "${processes[@]}" 2>/dev/null || true
  wait
}
trap finish EXIT
export HOME=$FRAMEREEL_XVFB_FOLDER XDG_CONFIG_HOME='' XDG_DATA_HOME=''
cd "$HOME"
# A tenth of a second from frame to frame, which the panel has at hand.
printf 'Frame Delay:100\r\n' >Settings.prf
xsetroot -solid '#336699'
xdotool mousemove "$x" "$y"
xeyes -geometry 220x140+90+90 &
processes+=($!)
"$build/framereel" 2>/dev/null &
processes+=($!)
xdotool search --sync --onlyvisible --name '^Framereel$' >/dev/null
sleep 6 # the panel has slid in, and the splash is gone

"$build/tools/framereel-record" --quiet --fps 10 "$here/demo.gif" &
recorder=$!
sleep 0.7
click 565 178 # Select Area
go 70 70
xdotool mousedown 1
go 330 250 30
xdotool mouseup 1
sleep 0.5
click 442 69 15 # Start
sleep 3.2 # 3, 2, 1; eyes that move would paint over them
go 60 120 15
go 200 60 12
go 340 140 15
go 240 300 12
click 542 69 15 # Stop
sleep 1.5
kill -TERM "$recorder"
wait "$recorder"
ls -l "$here/demo.gif"
