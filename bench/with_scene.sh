#!/usr/bin/env bash
# Runs a command while the demo scene moves on the display, from its first picture on:
#
#   bench/with_scene.sh SCENE_PROGRAM COMMAND [ARGUMENT...]
#
# The status is the command's. The scene, and the command when this script is told to end, are ended by their numbers.
set -euo pipefail

scene_program=$1
shift
folder=$(mktemp -d)
scene=
command=
# shellcheck disable=SC2317 # the traps call it
finish() {
  for process in $command $scene; do
    kill "$process" 2>/dev/null || true
    wait "$process" 2>/dev/null || true
  done
  rm -rf "$folder"
}
trap finish EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

mkfifo "$folder/ready"
"$scene_program" --ready-fd 3 3>"$folder/ready" </dev/null &
scene=$!
# One byte comes with the first picture; the pipe's end without it means that the scene has failed.
if ! read -r -N 1 _ <"$folder/ready"; then
  echo "$0: the scene did not start" >&2
  exit 1
fi

status=0
"$@" &
command=$!
wait "$command" || status=$?
command=
exit "$status"
