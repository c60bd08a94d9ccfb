#!/usr/bin/env bash
# Takes docs/window.png of the demo under a virtual display.
# usage: docs/screenshot.sh [FILE]   (after a release build, for example by ./run --demo)
set -euo pipefail
cd "$(dirname "$0")/.."

source tools/packages.sh
tools/install-packages "a virtual display for the screenshot" "${screenshot_packages[@]}"

scratch=$(mktemp -d)
export HOME=$scratch XDG_DATA_HOME=$scratch XDG_RUNTIME_DIR=$scratch
export DISPLAY=:93
Xvfb "$DISPLAY" -screen 0 1000x680x24 >/dev/null 2>&1 &
display=$!
trap 'kill $display; rm -rf "$scratch"' EXIT
sleep 1

click() { xdotool mousemove "$1" "$2" click 1; sleep "${3:-2}"; }

build/release/bin/homewarden --demo >/dev/null 2>&1 &
program=$!
sleep 4
xdotool search --name 'Homewarden - Demo' windowmove 0 0
click 80 240 1  # Living Room
click 543 120   # its ceiling light
click 350 290   # its reading lamp
xdotool mousemove 411 271 mousedown 1 mousemove 411 283 mousemove 411 305 mouseup 1 # ... darker
sleep 7
xdotool mousemove 900 600
sleep 1
import -window root -crop 960x640+0+0 +repage "${1:-docs/window.png}"
kill "$program"
wait "$program" || true
