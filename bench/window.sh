#!/usr/bin/env bash
# Memory of the window after all panels have been opened, and what wakes it while nobody does
# anything, with the demo house on a virtual display.
# usage: bench/window.sh [IDLE_SECONDS]   (after a release build)
set -euo pipefail
cd "$(dirname "$0")/.."

source tools/packages.sh
tools/install-packages "a virtual display for the measurement" "${screenshot_packages[@]}" strace

export HOMEWARDEN_PATH=$PWD/build/release/bin/homewarden PYTHONPATH=tests/window
exec /usr/bin/python3 -B -W ignore bench/window.py "$@"
