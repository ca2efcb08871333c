#!/usr/bin/env bash
# The program's answers to its command line and to a display that is not there:
#
#   tests/app/command_line_test.sh PROGRAM
set -euo pipefail
program=$1
unset DISPLAY WAYLAND_DISPLAY
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

# answers STATUS OUTPUT ERRORS COMMAND...: OUTPUT and ERRORS are patterns.
answers() {
  local status=0 output errors
  "${@:4}" >"$folder/output" 2>"$folder/errors" || status=$?
  output=$(<"$folder/output")
  errors=$(<"$folder/errors")
  # shellcheck disable=SC2053 # patterns
  [[ $status == "$1" && $output == $2 && $errors == $3 ]] && return
  printf '%s: status %s, "%s", "%s"\n' "${*:4}" "$status" "$output" "$errors" >&2
  exit 1
}

answers 0 'Usage: framereel*--help*--version*' '' "$program" --help
answers 0 'framereel 1.23' '' "$program" --version
answers 2 '' 'framereel: it takes no arguments but --help and --version' "$program" --display :0
answers 2 '' 'framereel: it takes no arguments but --help and --version' "$program" ''
answers 1 '' 'framereel: standard output cannot be written to' bash -c '"$0" --help >/dev/full' "$program"
answers 1 '' 'framereel: standard output cannot be written to' bash -c '"$0" --version >&-' "$program"
answers 1 '' 'framereel: there is no display that could be recorded' "$program"
WAYLAND_DISPLAY=wayland-0 answers 1 '' 'framereel: this is a Wayland session*; log in to an X11 (Xorg) session' "$program"
