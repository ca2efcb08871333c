#!/usr/bin/env bash
# Draws the icon's pictures anew after a change of framereel.svg: the PNG files here, which are installed, and the PAM
# files that the build puts into the program (src/resources/icon/). Needs librsvg2-bin and imagemagick; nothing else
# that is built here does.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

for side in 16 24 32 48 64 128 256; do
  rsvg-convert --width "$side" --height "$side" framereel.svg --output "framereel-$side.png"
done
for side in 16 32 48 64; do
  convert "framereel-$side.png" -strip -type TrueColorAlpha -depth 8 "../../src/resources/icon/$side.pam"
done
