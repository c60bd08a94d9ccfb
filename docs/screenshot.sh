#!/usr/bin/env bash
# Takes the pictures of the window in docs/ of the demo under a virtual display.
# usage: docs/screenshot.sh   (after a release build, for example by ./run --demo)
set -euo pipefail
cd "$(dirname "$0")/.."

source tools/packages.sh
tools/install-packages "a virtual display for the screenshot" "${screenshot_packages[@]}"

scratch=$(mktemp -d)
export HOME=$scratch XDG_DATA_HOME=$scratch XDG_RUNTIME_DIR=$scratch
export DISPLAY=:93
Xvfb "$DISPLAY" -screen 0 1120x720x24 >/dev/null 2>&1 &
display=$!
trap 'kill $display; rm -rf "$scratch"' EXIT
sleep 1

click() { xdotool mousemove "$1" "$2" click 1; sleep "${3:-2}"; }
take() {
  sleep 1
  import -window root +repage "docs/$1.png"
}

build/release/bin/homewarden --demo >/dev/null 2>&1 &
program=$!
sleep 5
xdotool search --name 'Homewarden - Demo' windowmove 0 0 windowsize 1120 720
sleep 1
click 80 440 1   # Living Room
click 590 200   # its ceiling light
xdotool mousemove 930 344 mousedown 1 mousemove 960 344 mousemove 985 344 mouseup 1 # its reading lamp
sleep 6
click 392 500 4  # table lamp
xdotool mousemove 700 640
take window
click 100 116 1  # Home
xdotool mousemove 700 640
take home
click 100 152 1  # Events
click 500 330 1
xdotool mousemove 700 690
take events
kill "$program"
wait "$program" || true
