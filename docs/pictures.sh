#!/usr/bin/env bash
# Draws the pictures of the README anew, from a release build on a private X server without a window manager:
#
#   docs/pictures.sh [panel] [menu] [save]
#
# Without a name: all. Needs xterm, xdotool and ImageMagick besides what the tests need. Nothing of the user's settings
# or of his home directory is seen: the program's home is the folder below.
set -euo pipefail

cd "$(dirname "$0")/.."
if [ -z "${FRAMEREEL_XVFB_FOLDER-}" ]; then exec tests/with_xvfb.sh 640x440x24 docs/pictures.sh "$@"; fi
program=$PWD/build/release/framereel docs=$PWD/docs home=${TMPDIR:-/tmp}/ada

mkdir "$home" # and not one that is there
started=()
finish() {
  kill "${started[@]}" 2>/dev/null || true
  wait # the program keeps what is unsaved, in its home
  rm -rf "$home"
}
trap finish EXIT
unset XDG_DATA_HOME XDG_CONFIG_HOME
export HOME=$home
cd "$home"
mkdir lessons talks
touch clip.gif lesson-1.gif
printf 'Recording Area:20,60 352x204\r\n' >Settings.prf

# A terminal with something to look at. Its own settings are given, whatever the desktop's are.
cat >shown <<'EOF'
printf '\033[?25l\n  \033[1m$ cmake --build build\033[0m\n'
for step in 1 2 3 4 5 6 7; do printf '  [%d/7] Building CXX object\n' $step; done
printf '\n  \033[32mDone.\033[0m\n'; sleep 1000
EOF
xterm -fa 'DejaVu Sans Mono' -fs 10 -bg '#101820' -fg '#d0d8e0' +sb -b 0 -geometry 44x12+20+60 -e sh shown &
started+=($!)
xdotool search --sync --onlyvisible --class xterm >/dev/null

"$program" &
started+=($!)
xdotool search --sync --onlyvisible --name '^Framereel$' >/dev/null
sleep 5 # it slides in

# Places are those of the panel's left upper corner, 425,5.
click() {
  xdotool mousemove "$1" "$2" sleep 0.2 click 1 sleep 0.4
}
take() { # NAME WIDTHxHEIGHT+LEFT+TOP
  import -silent -window root -crop "$2" +repage +dither -colors 64 -strip "PNG8:$docs/$1.png"
}

panel() {
  click 437 178 # Show Area
  click 450 69  # Start
  xdotool mousemove 639 439 sleep 1
  take panel 640x440+0+0
  click 551 69 # Stop
  sleep 1
  click 437 178
}

menu() {
  click 440 38
  xdotool mousemove 450 84 sleep 0.3
  take menu 220x160+420+0
  xdotool key Escape Escape
}

save() {
  xdotool key ctrl+s sleep 1
  xdotool type lesson-2
  sleep 0.5
  take save 640x440+0+0
  xdotool key Escape
}

for picture in "${@:-panel menu save}"; do
  for name in $picture; do "$name"; done
done
