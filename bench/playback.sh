#!/usr/bin/env bash
# Records five seconds of a moving scene on a private screen at several rates, and tells beside the time that it took
# for how long the files play, by both rules for delays.
#
#   bench/playback.sh BUILDFOLDER
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$(cd "$1" && pwd)
out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT

cat >"$out/inside" <<'INSIDE'
set -euo pipefail
build=$1 out=$2
# Answers how long the recording took, and for how long its file plays.
record() {
  local figures
  figures=$("$build/tools/framereel-record" --quiet --stats --seconds 5 --fps "$1" --delays "$2" "$out/a.gif")
  echo "$(sed 's/.*"seconds":\([0-9.]*\).*/\1/' <<<"$figures") $("$build/bench/play_time" "$out/a.gif")"
}
printf '%-12s %10s %10s %14s %10s\n' "frames a s" "took, s" "plays, s" "measured: took" "plays, s"
for fps in 0.2 5 10 20 33 40; do
  # shellcheck disable=SC2046 # two words each
  printf '%-12s %10s %10s %14s %10s\n' "$fps" $(record "$fps" true) $(record "$fps" measured)
done
INSIDE

"$here/../tests/with_xvfb.sh" 640x480x24 "$here/../tests/with_scene.sh" "$build/tools/framereel-demo-scene" \
  bash "$out/inside" "$build" "$out"
