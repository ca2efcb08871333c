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
  mkdir -p "$(dirname "$file")"
  printf '#include %s\n' "${@:2}" >"$file"
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
put src/win32/windows/tree.cpp '"win32/windows/tree.h"' '"win32/drawing/pens.h"' '"win32/win32_types.h"'
put src/gif/inner/packer.h '"gif/stream.h"' '"core/list.h"'
put tools/record/main.cpp '"recorder/grab.h"'
# but with these.
put src/win32/memory/screen.cpp '"win32/win32_types.h"' '"win32/x11/x11_display.h"'
put src/win32/drawing/pens.h '"win32/windows/tree.h"' '"win32/stray/a.h"'
put src/gif/upward.cpp '"recorder/grab.h"' '"toolkit/views/view.h"' '<X11/Xlib.h>'
put src/toolkit/loose.h '"core/list.h"'
expected='in a circle: win32/drawing/pens
in a circle: win32/windows/tree
src/gif/upward.cpp: has no header of its own
src/gif/upward.cpp:1: gif may not include "recorder/grab.h" of recorder
src/gif/upward.cpp:2: gif may not include "toolkit/views/view.h" of toolkit/views
src/gif/upward.cpp:3:#include <X11/Xlib.h>: X11 outside its rooms
src/toolkit/loose.h:1: nowhere may not include "core/list.h" of core
src/win32/drawing/pens.h:1: win32/drawing may not include "win32/windows/tree.h" of win32/windows
src/win32/drawing/pens.h:2: win32/drawing may not include "win32/stray/a.h" of nowhere
src/win32/memory/screen.cpp:1: win32/memory may not include "win32/win32_types.h" of win32
src/win32/memory/screen.cpp:2: win32/memory may not include "win32/x11/x11_display.h" of win32/x11'
diff <(LC_ALL=C sort <<<"$expected") <("$check" "$tree" | LC_ALL=C sort)
! "$check" "$tree" >/dev/null
