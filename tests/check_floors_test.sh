#!/usr/bin/env bash
# Checks that check_floors.sh finds what it is there for, in a small tree of its own, and nothing else. That it passes a
# tree in order, ours tells.
set -euo pipefail
check=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)/check_floors.sh
tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT

# put FILE INCLUDE...
put() {
  local file=$tree/$1
  shift
  mkdir -p "$(dirname "$file")"
  printf '#include %s\n' "$@" >"$file"
}

mkdir -p "$tree/tests"
cat >"$tree/tests/floors.txt" <<'TABLE'
# From the bottom up.
1 win32/x11
1 win32/memory
2 win32 . pixels drawing windows
3 core
4 gif
4 toolkit views controls
5 recorder
6 record
TABLE
# Nothing is wrong with these,
put src/win32/x11/screen.cpp '"win32/pixels/display.h"' '"win32/x11/x11_display.h"' '<X11/Xlib.h>'
put src/win32/windows/tree.h '"win32/win32_types.h"'
put src/win32/windows/tree.cpp '"win32/windows/tree.h"' '"win32/drawing/pens.h"'
put src/gif/inner/packer.cpp '"gif/stream.h"' '"core/list.h"'
put src/toolkit/controls/box.h '"toolkit/views/view.h"'
put src/toolkit/controls/box.cpp '"toolkit/controls/box.h"'
put tools/record/main.cpp '"recorder/grab.h"'
# but with these.
put src/win32/memory/screen.cpp '"win32/win32_types.h"' '"win32/x11/x11_display.h"'
put src/win32/drawing/pens.h '"win32/windows/tree.h"' '"win32/stray/a.h"'
put src/toolkit/views/lost.cpp '"core/list.h"'
put src/gif/upward.cpp '"recorder/grab.h"' '"toolkit/views/view.h"' '"view.h"'
put src/recorder/stray.cpp '<X11/Xlib.h>'
put src/toolkit/loose.h '"core/list.h"'
put src/win32/windows/frame.h '"win32/windows/menu_bar.h"'
put src/win32/windows/menu_bar.cpp '"win32/windows/caption.h"'
put src/win32/windows/caption.h '"win32/windows/frame.h"'
expected='circle: win32/windows/caption win32/windows/frame win32/windows/menu_bar
circle: win32/drawing/pens win32/windows/tree
src/gif/upward.cpp:1: gif includes upward: "recorder/grab.h"
src/gif/upward.cpp:2: gif includes upward: "toolkit/views/view.h"
src/gif/upward.cpp:3: "view.h" is in no folder with a floor or room
src/recorder/stray.cpp:1:#include <X11/Xlib.h>: X11 outside its rooms
src/toolkit/loose.h:1: the folder has no floor or room
src/toolkit/views/lost.cpp: has no header of its own
src/win32/drawing/pens.h:1: win32/drawing includes upward: "win32/windows/tree.h"
src/win32/drawing/pens.h:2: "win32/stray/a.h" is in no folder with a floor or room
src/win32/memory/screen.cpp:1: win32/memory includes upward: "win32/win32_types.h"
src/win32/memory/screen.cpp:2: win32/memory includes upward: "win32/x11/x11_display.h"'
if found=$("$check" "$tree"); then
  echo "a tree with faults was passed" >&2
  exit 1
fi
diff <(sort <<<"$expected") <(sort <<<"$found")
