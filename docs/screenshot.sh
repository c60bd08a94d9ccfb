#!/usr/bin/env bash
# Takes the pictures of the window in docs/, light and dark, and the animated one of the demo, under
# a virtual display.
# usage: docs/screenshot.sh [stills|animation]   (after a release build, for example by ./run --demo)
set -euo pipefail
cd "$(dirname "$0")/.."

source tools/packages.sh
tools/install-packages "a virtual display for the pictures" "${screenshot_packages[@]}"

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export HOMEWARDEN_PATH=$PWD/build/release/bin/homewarden PYTHONPATH=tests/window
for what in ${1:-stills animation}; do
  /usr/bin/python3 -B -W ignore docs/screenshot.py "$what" "$scratch"
done
rm -f "$scratch"/frame-*
mv "$scratch"/* docs/
