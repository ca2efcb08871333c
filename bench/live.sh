#!/usr/bin/env bash
# Records 1280x720 at 40 frames a second for ten seconds while a scene runs on a private screen, and tells ticks, frames
# and processor time; beside it ffmpeg, where it is installed, with the same rectangle and rate. Then the program with
# its window does the same, counting down first.
#
#   bench/live.sh BUILDFOLDER
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$(cd "$1" && pwd)
out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT

cat >"$out/inside" <<'INSIDE'
set -euo pipefail
build=$1 out=$2 kind=$3
play() {
  coproc PLAYER { exec "$build/bench/scene_player" "$kind" 1280 720 30; }
  read -r _ <&"${PLAYER[0]}"
}
stop() { kill "$PLAYER_PID" && wait "$PLAYER_PID" 2>/dev/null || true; }
play
"$build/tools/framereel-record" --stats --no-cursor --area "0,0 1280x720" --fps 40 --ticks 400 "$out/ours.gif"
stop
if command -v ffmpeg >/dev/null; then
  play
  TIMEFORMAT='ffmpeg: %U s user, %S s system, %R s in all'
  time ffmpeg -loglevel error -nostdin -y -f x11grab -draw_mouse 0 -framerate 40 -video_size 1280x720 -i "$DISPLAY" \
    -frames:v 400 -pix_fmt rgb8 "$out/theirs.gif"
  stop
  stat -c '%n %s bytes' "$out/ours.gif" "$out/theirs.gif" | sed 's|.*/||'
fi
cd "$out" # no settings are there
for size in "640 480" "1280 720"; do
  play
  # shellcheck disable=SC2086 # two arguments
  "$build/bench/program_bench" $size
  stop
done
INSIDE

for kind in 0 1; do
  [ "$kind" -eq 0 ] && echo "scrolling text" || echo "dragged window"
  "$here/../tests/with_xvfb.sh" 1280x720x24 bash "$out/inside" "$build" "$out" "$kind"
done
