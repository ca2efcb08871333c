#!/bin/sh
# Runs a command with a window manager, a compositor or both on the X server of DISPLAY, and answers its status:
#
#   tests/with_desktop.sh "PROGRAM [PROGRAM]" COMMAND [ARGUMENT...]
#
# The programs are openbox and picom, in this order. The command starts once they are at work; they end with this
# script. Their own settings are left aside. One that does not start is status 125, with what it said.
set -eu

if [ $# -lt 2 ]; then
  echo "usage: $0 \"openbox|picom|openbox picom\" COMMAND [ARGUMENT...]" >&2
  exit 2
fi
programs=$1
shift

folder=$(mktemp -d "${TMPDIR:-/tmp}/framereel-desktop.XXXXXX")
started=
# shellcheck disable=SC2317 # the traps call it
finish() {
  for process in $started; do kill "$process" 2>/dev/null || true; done
  rm -rf "$folder"
}
trap finish EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

fail() {
  echo "$0: $1 did not start:" >&2
  cat "$folder/log" >&2
  exit 125
}

start_openbox() {
  mkfifo "$folder/ready"
  # It holds the pipe open itself, so that its end is the end of the pipe, and writes to it once it has taken over.
  HOME=$folder XDG_CONFIG_HOME=$folder XDG_CACHE_HOME=$folder \
    openbox --startup "sh -c 'echo started >\"$folder/ready\"'" 3>"$folder/ready" >"$folder/log" 2>&1 </dev/null &
  started="$started $!"
  read -r _ <"$folder/ready" || fail openbox
}

start_picom() {
  # Goes into the background when it is at work.
  : >"$folder/picom.conf"
  picom --backend xrender --config "$folder/picom.conf" -b --write-pid-path "$folder/picom.pid" \
    --log-file "$folder/log" </dev/null >/dev/null 2>&1 || fail picom
  started="$started $(cat "$folder/picom.pid")"
}

for program in $programs; do
  case $program in
    openbox) start_openbox ;;
    picom) start_picom ;;
    *) echo "$0: there is no desktop \"$program\"" >&2 && exit 2 ;;
  esac
done

status=0
"$@" || status=$?
exit "$status"
