#!/usr/bin/env bash
# Installs the Debian 12 packages that Framereel is built, run, tested, measured and packed with, as far as they are
# missing:
#
#   packaging/install-dependencies.sh [build] [screen] [test] [bench] [deb]
#
# Without a set: build, which is all that building and running the programs takes. screen: a private X server to run
# them on; test includes it. It asks no questions, and needs root or sudo only when something is missing; when nothing is,
# it needs no network either.
set -euo pipefail

build=(g++ cmake ninja-build pkg-config libx11-dev libx11-xcb-dev libxcb1-dev libxext-dev libxfixes-dev
  libxdamage-dev libxi-dev libxkbcommon-dev libxrandr-dev libsm-dev libfreetype-dev libfontconfig-dev libpixman-1-dev fonts-dejavu-core)
screen=(xvfb)
test=("${screen[@]}" libgtest-dev libgif-dev libxrender-dev libxtst-dev openbox picom xfwm4 dbus-daemon xclip
  mandoc)
bench=("${screen[@]}" libbenchmark-dev libgif-dev libcgif-dev gifsicle ffmpeg)
deb=(dpkg-dev)

wanted=()
for set in "${@:-build}"; do
  case $set in
    build) wanted+=("${build[@]}") ;;
    screen) wanted+=("${screen[@]}") ;;
    test) wanted+=("${test[@]}") ;;
    bench) wanted+=("${bench[@]}") ;;
    deb) wanted+=("${deb[@]}") ;;
    *)
      echo "$0: there is no set \"$set\"; build, screen, test, bench and deb are known" >&2
      exit 2
      ;;
  esac
done

missing=()
for package in "${wanted[@]}"; do
  # shellcheck disable=SC2016 # the format is dpkg-query's
  state=$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null || true)
  # A library that stands there for several architectures answers once for each.
  case $state in installed*) ;; *) missing+=("$package") ;; esac
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  if ! command -v sudo >/dev/null; then
    echo "$0: these packages are missing, and only root can install them: ${missing[*]}" >&2
    exit 1
  fi
  as_root=(sudo)
fi

echo "Installing ${missing[*]}"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
apt_get() { "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq --yes "$@" >"$log" 2>&1 </dev/null; }
if ! apt_get update || ! apt_get install --no-install-recommends "${missing[@]}"; then
  cat "$log" >&2
  echo "$0: could not install ${missing[*]}" >&2
  exit 1
fi
