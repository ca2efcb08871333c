#!/usr/bin/env bash
# Checks that check_floors.sh finds what it is there for, in a small tree of its own, and nothing else.
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
put src/win32/x11/screen.cpp '"win32/pixels/display.h"' '"win32/x11/x11_display.h"' '<X11/Xlib.h>'
put src/win32/pixels/display.h '"win32/pixels/surface.h"' '<vector>'
put src/gif/stream.cpp '"core/list.h"'
put src/toolkit/controls/box.cpp '"toolkit/views.h"' '"core/list.h"'
put tools/record/main.cpp '"record/options.h"' '"area/area.h"'
put tools/demo_scene.cpp '<X11/Xlib.h>'
if ! found=$("$check" "$tree"); then
  printf 'a tree in order was found fault with:\n%s\n' "$found" >&2
  exit 1
fi

put src/win32/memory/screen.cpp '"win32/win32.h"' '"win32/x11/x11_display.h"'
put src/gif/upward.cpp '"recorder/grab.h"' '"toolkit/views.h"' '"area.h"'
put src/recorder/stray.cpp '<X11/Xlib.h>' '"record/options.h"'
put src/new/room.cpp '"win32/win32.h"'
expected='src/gif/upward.cpp:1: gif includes upward: "recorder/grab.h"
src/gif/upward.cpp:2: gif includes upward: "toolkit/views.h"
src/gif/upward.cpp:3: "area.h" is in no folder with a floor
src/new/room.cpp:1: the folder has no floor
src/recorder/stray.cpp:1:#include <X11/Xlib.h>: X11 outside its rooms
src/recorder/stray.cpp:2: recorder includes upward: "record/options.h"
src/win32/memory/screen.cpp:1: win32/memory includes upward: "win32/win32.h"
src/win32/memory/screen.cpp:2: win32/memory includes upward: "win32/x11/x11_display.h"'
if found=$("$check" "$tree"); then
  echo "a tree with faults was passed" >&2
  exit 1
fi
diff <(sort <<<"$expected") <(sort <<<"$found")
