#!/usr/bin/env bash
# Holds what is written by hand beside the programs to what they say: the man page and the completions of each shell
# have every option of --help, which fits 80 columns, and the man pages are without faults.
#
#   tests/packaging/documents_test.sh PROGRAM...
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
failed=0

# has WHAT: the options on standard input are all those of the program's help.
has() {
  local missing
  missing=$(comm -13 <(sort -u) "$wanted" | xargs)
  [ -z "$missing" ] && return
  echo "$program: $1 lacks $missing"
  failed=1
}

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
wanted=$folder/wanted
# shellcheck source=packaging/completions/framereel.bash
source packaging/completions/framereel.bash
for path in "$@"; do
  program=${path##*/}
  "$path" --help | sed -nE 's/^ +((-[a-z], )?--[a-z-]+).*/\1/p' | sed 's/, /\n/' | sort -u >"$wanted"
  if "$path" --help | grep -E '.{80}'; then echo "$program: a line of its help is too long" && failed=1; fi
  has "the man page" < <(grep '^\.It Fl' "docs/man/$program.1" | grep -oE 'Fl -?[a-z-]+' | sed 's/Fl /-/')
  has "fish" < <(grep -oE -- ' -[sl] [a-z-]+' "packaging/completions/$program.fish" | sed 's/ -s /-/; s/ -l /--/')
  COMP_WORDS=("$program" -) COMP_CWORD=1
  "_${program//-/_}"
  has "bash" < <(printf '%s\n' "${COMPREPLY[@]}")
  has "zsh" < <(sed -n "/^  $program)/,/;;/{/^  $program)/d;p}" packaging/completions/_framereel |
    sed 's/\[[^]]*]//g; s/([^)]*)//g' | grep -oE "['\"{,]--?[a-z][a-z-]*" | tr -d "'\"{,")
done
mandoc -T lint -W warning docs/man/* || failed=1
exit $failed
