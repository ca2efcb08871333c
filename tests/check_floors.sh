#!/usr/bin/env bash
# Checks that no file includes one of a higher floor, and that X11 stays in its rooms:
#
#   tests/check_floors.sh [ROOT]
#
# ROOT is a source tree, by default the one that this script stands in. Each finding is a line; none is status 0.
set -euo pipefail
cd "${1:-$(dirname "${BASH_SOURCE[0]}")/..}"

# From the bottom up. Folders of one floor don't know each other, and a folder below them is on their floor unless it
# has its own line. The displays stand below win32, whose contract they implement on its plain pixels.
floors='
0 resources
1 win32/x11
1 win32/memory
2 win32
3 core
4 platform
5 gif
5 toolkit
6 recorder
7 area
8 app
9 record
'
contract='win32/pixels/display.h win32/pixels/display_windows.h win32/pixels/surface.h win32/pixels/region.h win32/pixels/pixels.h'
x11_rooms='^(src/win32/x11/|tests/x11/|tools/demo_scene\.cpp:)'

# includes_in WHAT FOLDER...: the #include lines of all sources whose name begins with WHAT.
includes_in() {
  local what=$1
  shift
  grep -rHnE --include='*.cpp' --include='*.h' "^[[:space:]]*#[[:space:]]*include[[:space:]]*$what" "$@" || true
}

upward=$(includes_in '"' src tools |
  awk -v floors="$floors" -v contract="$contract" '
    BEGIN {
      count = split(floors, words)
      for (i = 1; i < count; i += 2) floor_of[words[i + 1]] = words[i]
      count = split(contract, words)
      for (i = 1; i <= count; i++) in_contract[words[i]] = 1
    }
    # The innermost folder around the file that has a floor; "" for a file at the top.
    function room(path) {
      while (sub("/[^/]*$", "", path)) if (path in floor_of) return path
      return ""
    }
    {
      split($0, parts, ":")
      from = parts[1]
      sub("^(src|tools)/", "", from)
      split($0, quoted, "\"")
      to = quoted[2]
      mine = room(from)
      other = room(to)
      where = parts[1] ":" parts[2] ": "
      if (mine == "" && from ~ "/") print where "the folder has no floor"
      else if (other == "") print where "\"" to "\" is in no folder with a floor"
      else if (mine == "" || mine == other || floor_of[other] < floor_of[mine]) next
      else if (floor_of[mine] == 1 && to in in_contract) next
      else print where mine " includes upward: \"" to "\""
    }')

x11=$(includes_in '<(X11|xcb)/' src tools tests |
  { grep -vE "$x11_rooms" || true; } | sed 's/$/: X11 outside its rooms/')

[ -z "$upward$x11" ] && exit 0
printf '%s\n' "$upward" "$x11" | sed '/^$/d'
exit 1
