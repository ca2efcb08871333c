#!/usr/bin/env bash
# Both programs as a user or a script starts them, on the server in DISPLAY, which has 640 by 480 pixels:
#
#   tests/with_xvfb.sh 640x480x24 tests/programs_test.sh FRAMEREEL RECORD DEMO_SCENE
#
# shellcheck disable=SC2016 # what commands expand is theirs
set -euo pipefail
export FRAMEREEL=$1 RECORD=$2 SCENE=$3
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
export XDG_DATA_HOME=$folder # where a recording is kept that cannot be saved in its place
mkfifo ready keys shown

# answers STATUS WIDTH OUTPUT ERRORS COMMAND: the command of bash leaves a whole a.gif of that width, or none for 0. OUTPUT
# and ERRORS are patterns.
answers() {
  local status=0 width=0
  bash -c "$5" >output 2>errors || status=$?
  if [ "$(tail -c 1 a.gif 2>&1)" = ';' ]; then width=$(od -An -tu2 --endian=little -j6 -N2 a.gif | xargs); fi
  rm -f a.gif
  # shellcheck disable=SC2053 # patterns
  [[ $status == "$1" && $width == "$2" && $(<output) == $3 && $(<errors) == $4 ]] && return
  printf '%s: status %s, width %s, "%s", "%s"\n' "$5" "$status" "$width" "$(<output)" "$(<errors)" >&2
  exit 1
}

says='framereel: '
answers 0 0 'Usage: framereel*--help*--version*' '' '$FRAMEREEL --help'
answers 0 0 'framereel 1.23' '' '$FRAMEREEL --version'
answers 2 0 '' "${says}it takes no arguments but --help and --version" '$FRAMEREEL ""'
answers 1 0 '' "${says}standard output cannot be written to" '$FRAMEREEL --version >&-'
answers 1 0 '' "${says}there is no display that could be recorded" 'env -u DISPLAY $FRAMEREEL'
answers 1 0 '' "${says}this is a Wayland session*; log in to an X11 (Xorg) session" \
  'unset DISPLAY; WAYLAND_DISPLAY=wayland-0 $FRAMEREEL'

says='framereel-record: '
answers 0 150 '' '' '$SCENE --ready-fd 5 5>ready & read < ready
  $RECORD --area "100,50 300x200" --fps=20 --ticks=10 --size=25 --quiet a.gif; status=$?; kill $!; exit $status'
answers 0 0 'framereel-record 1.23' '' '$RECORD --version'
answers 0 640 '' '' '$RECORD --ticks=2 --delay=25 --quiet - | cat >a.gif'
answers 0 640 '' '' 'exec $RECORD --ticks=2 a.gif <&- >&- 2>&-'
answers 2 0 '' "$says--fps takes a number from 0.2 to 40, not \"50\"" '$RECORD --fps=50 a.gif'
answers 0 0 1 '' '$RECORD --ticks=1 --quiet --no-loop --owner=Ada - | grep -av NETSCAPE | grep -ac "Created by Ada, using"'
answers 1 0 '' "${says}there is no display to record: DISPLAY is not set" 'env -u DISPLAY $RECORD a.gif'
answers 1 0 '' "${says}there is no display to record: \"none\", as DISPLAY names it*" 'DISPLAY=none $RECORD a.gif'
export WAYLAND_DISPLAY=wayland-0
answers 1 0 '' "${says}there is no display to record in this Wayland session; *" 'env -u DISPLAY $RECORD a.gif'
answers 0 640 '' "${says}this is a Wayland session, which does not show*" '$RECORD --ticks=1 --quiet a.gif'
unset WAYLAND_DISPLAY
answers 1 640 '' "${says}standard output cannot be written to" '$RECORD --ticks=2 --stats --quiet a.gif >/dev/full'
answers 1 0 '' "${says}standard output cannot be written to" '$RECORD --help >/dev/full'
answers 1 0 '' "${says}standard output cannot be written to; give a FILE or redirect it" '$RECORD - >&-'
answers 1 0 "${says}standard output is a terminal; give a FILE or redirect it*" '' 'script -qec "$RECORD -" /dev/null'
answers 1 0 '' "${says}cannot write /dev/full: No space left on device; the animation is kept as $folder/framereel/*.gif" \
  '$RECORD --ticks=1 --quiet /dev/full'
# The pipe has nobody at its other end by the time of the save: `true` never reads, and wait is for its end.
answers 1 0 '' "${says}cannot write standard output: Broken pipe; the animation is kept as $folder/framereel/*-2.gif" \
  'exec 3> >(true); wait $!; $RECORD --ticks=1 --quiet - >&3'

# begins SIGNALS OPTION...: a recording on a terminal of its own, up to its first frame. It shows what it does on 3, and
# takes keys on 4.
begins() {
  env "$1" script -qec "echo \$\$ .; exec \$RECORD ${*:2} a.gif" /dev/null <keys >shown &
  exec 4>keys 3<shown
  read -r process _ <&3
  read -rd , _ <&3 # "1 frame,"
  export process
}

# Ctrl+C, and what tells programs to end, save what there is, but for signals that the caller ignores.
for end in 'printf \\x03 >&4' 'kill -TERM $process' 'kill -HUP $process'; do
  begins --default-signal --delay=5000
  answers 0 640 '*a.gif: 1 frame, *' '' "[ ! -e a.gif ] || exit 9; $end; cat <&3"
  wait $!
done
begins --ignore-signal=HUP --delay=2000 --ticks=1
answers 0 640 '*0:01*a.gif: 1 frame, *' '' 'kill -HUP $process; cat <&3'
