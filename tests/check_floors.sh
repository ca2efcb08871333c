#!/usr/bin/env bash
# Checks that no file includes one of a higher floor or of a later room, that no modules include each other in a circle,
# that each module has a header of its own, and that X11 stays in its rooms:
#
#   tests/check_floors.sh [ROOT]
#
# ROOT is a source tree, by default the one that this script stands in; its tests/floors.txt names the floors and rooms.
# Each finding is a line; none is status 0.
set -euo pipefail
cd "${1:-$(dirname "${BASH_SOURCE[0]}")/..}"

# What the displays may know of win32.
contract='^src/win32/(x11|memory)/.*"win32/pixels/(exhaustion|display|display_windows|surface|region|pixels|utf8)\.h"'
x11_rooms='^(src/win32/x11/|tests/x11/|tools/demo_scene\.cpp:)'

# includes WHAT FOLDER...: the #include lines of all sources whose name begins with WHAT, as FILE:LINE:#include.
includes() {
  grep -rHnE --include='*.cpp' --include='*.h' "^[[:space:]]*#[[:space:]]*include[[:space:]]*$1" "${@:2}" || true
}

# misplaced: what among such lines goes up, or stands where the table of floors and rooms has no place.
misplaced() {
  awk -F '[:"]' '
    BEGIN { floor["main"] = 99 }
    NR == FNR && !/^#/ {
      words = split($0, word, " ")
      if (words > 2) has_rooms[word[2]]
      for (r = 3; r <= words || r == 3; r++) {
        room = words < 3 || word[r] == "." ? word[2] : word[2] "/" word[r]
        floor[room] = word[1]
        folder[room] = word[2]
        order[room] = r
      }
    }
    function room_of(path) {
      sub("/[^/]*$", "", path)
      if (path in floor) return path
      while (sub("/[^/]*$", "", path)) if (path in floor && !(path in has_rooms)) return path
      return "nowhere"
    }
    NR > FNR {
      from = $1
      sub("^(src|tools)/", "", from)
      mine = from ~ "/" ? room_of(from) : "main"
      other = room_of($4)
      known = mine in floor && other in floor
      if (known && (mine == other || floor[other] < floor[mine])) next
      if (known && folder[mine] == folder[other] && order[other] < order[mine]) next
      print $1 ":" $2 ": " mine " may not include \"" $4 "\" of " other
    }' tests/floors.txt -
}

# circles: the modules among such lines that include each other in a circle. A module is a header and a source of one name.
circles() {
  sed -E 's,^(src|tools)/([^:]*)\.(cpp|h):[0-9]+:[^"]*"([^"]*)\.(cpp|h)".*,\2 \4,' |
    awk '$1 != $2' | sort -u |
    { LC_ALL=C tsort 2>&1 >/dev/null || true; } |
    sed -n '/contains a loop:$/!s/^tsort: /in a circle: /p'
}

# headless: the sources that have no header of their own name. Those of win32 may answer for the calls alone, which the
# headers at its root declare.
headless() {
  find src tools/record -name '*.cpp' ! -name main.cpp ! -path 'src/win32/*' | while read -r source; do
    [ -e "${source%.cpp}.h" ] || echo "$source: has no header of its own"
  done
}

ours=$(includes '"' src tools)
x11=$(includes '<(X11|xcb)/' src tools tests | sed -E "\,$x11_rooms,d; s/$/: X11 outside its rooms/")
found=$(grep -vE "$contract" <<<"$ours" | misplaced && circles <<<"$ours" && headless && echo "$x11")
[ -z "$found" ] && exit 0
printf '%s\n' "$found"
exit 1
