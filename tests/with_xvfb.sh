#!/bin/sh
# Runs a command on a private X server without a monitor, and answers the command's status:
#
#   tests/with_xvfb.sh WIDTHxHEIGHTxDEPTH COMMAND [ARGUMENT...]
#
# The command finds the server in DISPLAY, and a folder for its lifetime in FRAMEREEL_XVFB_FOLDER. FRAMEREEL_XVFB_ARGS
# holds further arguments for the server, separated by spaces ("-extension MIT-SHM" refuses shared memory). The server
# takes a free display number by itself, listens on this machine only, keeps its state between clients, and ends with
# this script, even when that is killed outright. A server that does not start is status 125, with what it said.
set -eu
screen=$1
shift

folder=$(mktemp -d "${TMPDIR:-/tmp}/framereel-x.XXXXXX")
trap 'kill "${server-}" 2>/dev/null && wait "$server" || true; rm -rf "$folder"' EXIT
trap 'exit 1' HUP INT TERM
mkfifo "$folder/number"
# In a session of its own: Ctrl+C is for the command, which may have something to save while the server still stands.
# shellcheck disable=SC2086 # a list of words
setsid setpriv --pdeathsig TERM Xvfb -displayfd 3 -screen 0 "$screen" -nolisten tcp -noreset ${FRAMEREEL_XVFB_ARGS-} \
  3>"$folder/number" >"$folder/log" 2>&1 </dev/null &
server=$!

# The server writes its number once it takes connections; the end of the pipe without one means that it has ended.
if ! read -r number <"$folder/number"; then
  echo "$0: Xvfb did not start with $screen ${FRAMEREEL_XVFB_ARGS-}:" >&2
  cat "$folder/log" >&2
  exit 125
fi

# The private server has nothing to do with the session that this is started from, which is not to end with the command.
unset SESSION_MANAGER WAYLAND_DISPLAY
status=0
DISPLAY=":$number" FRAMEREEL_XVFB_FOLDER=$folder "$@" || status=$?
exit "$status"
