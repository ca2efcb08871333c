#!/usr/bin/env bash
# Builds a package of both programs for this system, build/framereel_VERSION_ARCH.deb, and looks at it with lintian where
# that is installed:
#
#   packaging/deb.sh
#
# What is in it is what `cmake --install` installs, as Debian wants it. The version is that of CMakeLists.txt; what the
# programs need of the system is asked of dpkg-shlibdeps.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$here/.."

packaging/install-dependencies.sh build deb
build=build/package
log=$PWD/build/package.log
mkdir -p build
quietly() {
  if ! "$@" >"$log" 2>&1 </dev/null; then
    cat "$log" >&2
    exit 1
  fi
}
quietly cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
  -DFRAMEREEL_TESTS=OFF -DFRAMEREEL_BENCH=OFF -DFRAMEREEL_ZSH_COMPLETIONS=share/zsh/vendor-completions
quietly cmake --build "$build" --parallel "${FRAMEREEL_JOBS:-$(nproc)}" --target framereel framereel-record

cached() { sed -n "s/^$1:[A-Z]*=//p" "$build/CMakeCache.txt"; }
version=$(cached CMAKE_PROJECT_VERSION)
date=$(cached FRAMEREEL_RELEASE_DATE)
architecture=$(dpkg --print-architecture)
# Whoever builds it; the names are those of Debian's own tools.
maintainer="${DEBFULLNAME:-The Framereel authors} <${DEBEMAIL:-authors@framereel.invalid}>"
file=$PWD/build/framereel_${version}_$architecture.deb

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
root=$work/debian/framereel
doc=$root/usr/share/doc/framereel
umask 022
DESTDIR=$root quietly cmake --install "$build" --strip

rm "$doc/LICENSE" # it is in the copyright file
{
  printf 'Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/\nUpstream-Name: Framereel\n\n'
  printf 'Files: *\nCopyright: %s\nLicense: Expat\n' "$(sed -n 's/^Copyright (c) //p' LICENSE)"
  sed -e '1,/^Copyright/d' LICENSE | sed -e '1{/^$/d}' -e 's/^$/./' -e 's/^/ /'
} >"$doc/copyright"
{
  printf 'framereel (%s) stable; urgency=low\n\n  * Version %s.\n\n' "$version" "$version"
  printf ' -- %s  %s\n' "$maintainer" "$(date --utc --rfc-email --date="$date")"
} | gzip -9n >"$doc/changelog.gz"
find "$root/usr/share/man" -type f -exec gzip -9n {} +

# dpkg-shlibdeps reads a source package's control file, of which there is none.
printf 'Source: framereel\n\nPackage: framereel\nArchitecture: any\n' >"$work/debian/control"
depends=$(cd "$work" && dpkg-shlibdeps -O "$root"/usr/bin/* 2>"$log" | sed -n 's/^shlibs:Depends=//p')
mkdir "$root/DEBIAN"
cat >"$root/DEBIAN/control" <<END
Package: framereel
Version: $version
Architecture: $architecture
Maintainer: $maintainer
Installed-Size: $(du -sk --exclude=DEBIAN "$root" | cut -f1)
Depends: $depends
Recommends: fonts-dejavu-core | fonts-liberation2
Section: video
Priority: optional
Description: record a rectangle of the screen into an animated GIF
 Framereel records a rectangle of an X11 screen, of any colour depth, straight
 into an animated GIF. Every frame is compared with the last, cut to the
 rectangle that changed, compressed and kept in memory: when the recording
 stops, the animation is finished.
 .
 The package has a program with a window, framereel, and a command for scripts,
 framereel-record.
END
(cd "$root" && find usr -type f -print0 | LC_ALL=C sort -z | xargs -0 md5sum) >"$root/DEBIAN/md5sums"

SOURCE_DATE_EPOCH=$(date --utc --date="$date" +%s) dpkg-deb --root-owner-group --build "$root" "$file" >"$log"
if command -v lintian >/dev/null; then
  options=()
  [ "$(id -u)" -ne 0 ] || options=(--allow-root)
  lintian "${options[@]}" --fail-on error --info "$file"
fi
echo "The package is $file"
