#!/usr/bin/env bash
# Checks that no file includes one of a higher floor or of a later room, that no modules include each other in a circle,
# that each module in a room has a header of its own, and that X11 stays in its rooms:
#
#   tests/check_floors.sh [ROOT]
#
# ROOT is a source tree, by default the one that this script stands in; its tests/floors.txt names the floors and rooms.
# Each finding is a line; none is status 0.
set -euo pipefail
cd "${1:-$(dirname "${BASH_SOURCE[0]}")/..}"

# The table of floors and rooms, without its comments.
floors=$(grep -v '^#' tests/floors.txt)
# What the displays may know of win32.
contract='win32/pixels/exhaustion.h win32/pixels/display.h win32/pixels/display_windows.h win32/pixels/surface.h win32/pixels/region.h win32/pixels/pixels.h win32/pixels/utf8.h'
x11_rooms='^(src/win32/x11/|tests/x11/|tools/demo_scene\.cpp:)'

# includes_in WHAT FOLDER...: the #include lines of all sources whose name begins with WHAT.
includes_in() {
  local what=$1
  shift
  grep -rHnE --include='*.cpp' --include='*.h' "^[[:space:]]*#[[:space:]]*include[[:space:]]*$what" "$@" || true
}

# misplaced LIST...: what in the list of "FILE:LINE:#include" lines goes up, or stands where the table has no place.
misplaced() {
  awk -v floors="$floors" -v contract="$contract" '
    BEGIN {
      lines = split(floors, line, "\n")
      for (i = 1; i <= lines; i++) {
        words = split(line[i], word, " ")
        if (words > 2) has_rooms[word[2]] = 1
        for (r = 3; r <= words || r == 3; r++) {
          place = words < 3 || word[r] == "." ? word[2] : word[2] "/" word[r]
          floor_of[place] = word[1]
          folder_of[place] = word[2]
          order_of[place] = r
        }
      }
      count = split(contract, words_of)
      for (i = 1; i <= count; i++) in_contract[words_of[i]] = 1
    }
    # The room around the file, which is the innermost folder that has a place; "" when there is none.
    function room(path,  inner, at) {
      at = path
      for (inner = 0; sub("/[^/]*$", "", at); inner++) {
        if (at in floor_of) return inner && at in has_rooms ? "" : at
        if (at in has_rooms) return ""
      }
      return ""
    }
    function may_include(mine, other) {
      if (mine == other || floor_of[other] < floor_of[mine]) return 1
      return folder_of[mine] == folder_of[other] && order_of[other] < order_of[mine]
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
      if (mine == "" && from ~ "/") print where "the folder has no floor or room"
      else if (other == "") print where "\"" to "\" is in no folder with a floor or room"
      else if (mine == "" || may_include(mine, other)) next
      else if (floor_of[mine] == 1 && to in in_contract) next
      else print where mine " includes upward: \"" to "\""
    }'
}

# circles: each circle of modules in the list, named by its modules. A module is a header and a source of one name.
circles() {
  sed -E 's,^(src|tools)/([^:]*)\.(cpp|h):[0-9]+:[^"]*"([^"]*)\.(cpp|h)".*,\2 \4,' |
    awk '$1 != $2' | sort -u |
    { LC_ALL=C tsort 2>&1 >/dev/null || true; } |
    awk '
      / input contains a loop:$/ { printf "%scircle:", found++ ? "\n" : ""; next }
      { printf " %s", $2 }
      END { if (found) print "" }'
}

# headless: the sources in rooms that have no header of their own name. Those of win32 may answer for the calls alone,
# which the headers at its root declare.
headless() {
  local number folder rooms room source
  while read -r number folder rooms; do
    [ "$folder" != win32 ] || continue
    for room in $rooms; do
      for source in "src/$folder/$room"/*.cpp; do
        [ ! -e "$source" ] || [ -e "${source%.cpp}.h" ] || echo "${source/\/.\///}: has no header of its own"
      done
    done
  done <<<"$floors"
}

ours=$(includes_in '"' src tools)
x11=$(includes_in '<(X11|xcb)/' src tools tests |
  { grep -vE "$x11_rooms" || true; } | sed 's/$/: X11 outside its rooms/')
found=$(printf '%s\n' "$(misplaced <<<"$ours")" "$(circles <<<"$ours")" "$(headless)" "$x11" | sed '/^$/d')

[ -z "$found" ] && exit 0
printf '%s\n' "$found"
exit 1
