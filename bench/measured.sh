#!/usr/bin/env bash
# Measures recordings as their users have them, on private screens, and prints them as Markdown: what they cost and
# weigh and for how long they play, beside gifsicle and ffmpeg where these are installed.
#
#   bench/measured.sh BUILDFOLDER
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$(cd "$1" && pwd)
seconds=5
contents=([0]="scrolling text" [1]="dragged window" [2]="caret" [4]="panned photograph") # by scene_player's KIND
out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT

play() {
  coproc PLAYER { exec "$build/bench/scene_player" "$1" 1280 720 60; }
  read -r _ <&"${PLAYER[0]}"
}
stop() { kill "$PLAYER_PID" && wait "$PLAYER_PID" 2>/dev/null || true; }

# Runs a command while the scene KIND moves.
beside() {
  play "$1"
  "${@:2}"
  stop
}

record() { "$build/tools/framereel-record" --quiet --stats --no-cursor --seconds "$seconds" "$@"; }
figure() { sed "s/.*\"$1\":\([0-9.]*\).*/\1/"; } # of --stats
plays() { "$build/bench/play_time" "$1"; }
row() { printf '| %s | %s | %s | %s | %s | %s | %s |\n' "$@"; }

# NAME CONTENT [OPTION...]: a row of the command.
row_of_command() {
  local figures
  figures=$(record --area "0,0 1280x720" --fps 40 "${@:3}" "$out/$1.gif")
  row "$2" "$1" "$(figure lost_ticks <<<"$figures")" "$(figure seconds <<<"$figures")" "$(plays "$out/$1.gif")" \
    "$(figure cpu_seconds <<<"$figures")" "$(stat -c %s "$out/$1.gif")"
}

row_of_program() {
  row "$1" "framereel, with its window" $(cd "$out" && "$build/bench/program_bench" 1280 720 "$seconds")
}

row_of_gifsicle() {
  local TIMEFORMAT='%U %S' used
  used=$({ time gifsicle --no-comments -O2 "$out/framereel-record.gif" -o "$out/optimised.gif"; } 2>&1)
  row "$1" "the first by gifsicle -O2" - - "$(plays "$out/optimised.gif")" "$(awk '{print $1 + $2}' <<<"$used")" \
    "$(stat -c %s "$out/optimised.gif")"
}

row_of_ffmpeg() {
  local TIMEFORMAT='%R %U %S' used
  used=$({ time ffmpeg -loglevel error -nostdin -y -f x11grab -draw_mouse 0 -framerate 40 -video_size 1280x720 \
    -i "$DISPLAY" -frames:v $((40 * seconds)) -pix_fmt rgb8 "$out/ffmpeg.gif"; } 2>&1)
  row "$1" ffmpeg - "${used%% *}" "$(plays "$out/ffmpeg.gif")" "$(awk '{print $2 + $3}' <<<"$used")" \
    "$(stat -c %s "$out/ffmpeg.gif")"
}

rows_of_contents() {
  local kind
  row content recorder "lost ticks" "took, s" "plays, s" "processor, s" bytes
  row --- --- ---: ---: ---: ---: ---:
  for kind in "${!contents[@]}"; do
    local content=${contents[$kind]}
    beside "$kind" row_of_command framereel-record "$content"
    beside "$kind" row_of_command "framereel-record --smallest" "$content" --smallest
    ! command -v gifsicle >/dev/null || row_of_gifsicle "$content"
    beside "$kind" row_of_program "$content"
    ! command -v ffmpeg >/dev/null || beside "$kind" row_of_ffmpeg "$content"
  done
}

rows_of_rates() {
  local fps true measured
  printf '| frames a second | took, s | plays, s | by --delays measured: took, s | plays, s |\n'
  printf '|---:|---:|---:|---:|---:|\n'
  for fps in 0.2 5 10 20 33 40; do
    true=$(record --fps "$fps" "$out/true.gif" | figure seconds)
    measured=$(record --fps "$fps" --delays measured "$out/measured.gif" | figure seconds)
    printf '| %s | %s | %s | %s | %s |\n' "$fps" "$true" "$(plays "$out/true.gif")" "$measured" \
      "$(plays "$out/measured.gif")"
  done
}

case ${2-} in
contents) rows_of_contents ;;
rates) rows_of_rates ;;
*)
  cat <<TEXT
# Measured

By \`./bench.sh\`, $(date +%Y-%m-%d), on $(nproc) cores of $(sed -n 's/^model name[^:]*: //p;T;q' /proc/cpuinfo).

$seconds seconds of 1280x720 at 40 frames a second; the X server's own time is not counted:

TEXT
  "$here/../tests/with_xvfb.sh" 1280x720x24 "$0" "$build" contents
  printf '\nThe demo at several rates, by both rules for delays:\n\n'
  "$here/../tests/with_xvfb.sh" 640x480x24 "$here/with_scene.sh" "$build/tools/framereel-demo-scene" \
    "$0" "$build" rates
  ;;
esac
