#!/bin/sh
# Runs a command with a window manager, a compositor or both on the server of with_xvfb.sh, and answers its status:
#
#   tests/with_xvfb.sh WIDTHxHEIGHTxDEPTH tests/with_desktop.sh "PROGRAM [PROGRAM]" COMMAND [ARGUMENT...]
#
# The programs are openbox and picom, in this order, or xfwm4, which is both; picom-whole is a picom that paints the whole
# screen whenever a part of it changes. The command starts once they are at work, but has to wait for xfwm4 itself, and
# finds their names in FRAMEREEL_DESKTOP. They end with the server. Their own settings are left aside. One that does not
# start is status 125, with what it said.
set -eu

folder=${FRAMEREEL_XVFB_FOLDER:?"is set by with_xvfb.sh"}
programs=$1
shift

start_openbox() {
  mkfifo "$folder/ready"
  # It holds the pipe open itself, so that its end is the end of the pipe, and writes to it once it has taken over.
  HOME=$folder XDG_CONFIG_HOME=$folder XDG_CACHE_HOME=$folder \
    openbox --startup "sh -c 'echo started >\"$folder/ready\"'" 3>"$folder/ready" >"$folder/said" 2>&1 </dev/null &
  read -r _ <"$folder/ready"
}

# It goes into the background when it is at work.
start_picom() {
  picom --backend xrender --config /dev/null -b --log-file "$folder/said" "$@" </dev/null >/dev/null 2>&1
}

# Its settings come by a bus of its own, whose programs outlast the server: they get no folder to write to.
start_xfwm4() {
  HOME=/dev/null XDG_CONFIG_HOME=/dev/null XDG_CACHE_HOME=/dev/null XDG_RUNTIME_DIR=/dev/null NO_AT_BRIDGE=1 \
    dbus-run-session xfwm4 --compositor=on >"$folder/said" 2>&1 </dev/null &
}

for program in $programs; do
  case $program in
    picom-whole) start_picom --no-use-damage && continue ;;
    *) "start_$program" && continue ;;
  esac
  echo "$0: $program did not start:" >&2
  cat "$folder/said" >&2 || true
  exit 125
done
FRAMEREEL_DESKTOP=$programs exec "$@"
