#!/bin/sh
# Runs a command on a private X server without a monitor, and answers the command's status:
#
#   tests/with_xvfb.sh WIDTHxHEIGHTxDEPTH COMMAND [ARGUMENT...]
#
# The command finds the server in DISPLAY, and a folder for its lifetime in FRAMEREEL_XVFB_FOLDER. FRAMEREEL_XVFB_ARGS
# holds further arguments for the server, separated by spaces ("-extension MIT-SHM" refuses shared memory). The server
# takes a free display number by itself, listens on this machine only, keeps its state between clients, and ends with
# this script. A server that does not start is status 125, with what it said.
set -eu

if [ $# -lt 2 ]; then
  echo "usage: $0 WIDTHxHEIGHTxDEPTH COMMAND [ARGUMENT...]" >&2
  exit 2
fi
screen=$1
shift

folder=$(mktemp -d "${TMPDIR:-/tmp}/framereel-x.XXXXXX")
server=
# shellcheck disable=SC2317 # the traps call it
finish() {
  if [ -n "$server" ]; then
    kill "$server" 2>/dev/null || true
    wait "$server" 2>/dev/null || true
  fi
  rm -rf "$folder"
}
trap finish EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

# Where the system can do it, the server also ends when this script is killed outright.
with_parent=
if setpriv --pdeathsig TERM true 2>/dev/null; then with_parent="setpriv --pdeathsig TERM"; fi

mkfifo "$folder/number"
# In a session of its own: Ctrl+C is for the command, which may have something to save while the server still stands.
# shellcheck disable=SC2086 # both variables are lists of words
setsid $with_parent Xvfb -displayfd 3 -screen 0 "$screen" -nolisten tcp -noreset ${FRAMEREEL_XVFB_ARGS-} \
  3>"$folder/number" >"$folder/log" 2>&1 </dev/null &
server=$!

# The server writes its number once it takes connections; the end of the pipe without one means that it has ended.
if ! read -r number <"$folder/number"; then
  echo "$0: Xvfb did not start with $screen ${FRAMEREEL_XVFB_ARGS-}:" >&2
  cat "$folder/log" >&2
  exit 125
fi

# The desktop that this may have been started on is not to end with the command.
unset SESSION_MANAGER
status=0
unset WAYLAND_DISPLAY # the private server has nothing to do with the session that it is started from
DISPLAY=":$number" FRAMEREEL_XVFB_FOLDER=$folder "$@" || status=$?
exit "$status"
