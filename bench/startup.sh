#!/usr/bin/env bash
# Time from the start of the process to the first paint of the main window, and peak memory, of the
# demo under a virtual display; several runs, since machines are noisy.
# usage: bench/startup.sh [RUNS [DEVICES]]   (after a release build; DEVICES in rooms of 50 instead
# of the demo's own)
set -euo pipefail
cd "$(dirname "$0")/.."

source tools/packages.sh
tools/install-packages "a virtual display for the measurement" "${screenshot_packages[@]}"

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export XDG_DATA_HOME=$scratch HOME=$scratch
if [ "${2:-0}" -gt 0 ]; then
  mkdir -p "$scratch/homewarden-demo"
  awk -v devices="$2" 'BEGIN {
    for (i = 0; i < devices; ++i) {
      if (i % 50 == 0) printf "Room %d~~~\r\n", i / 50 + 1
      printf "Room %d~Lamp %d~%c~%d\r\n", i / 50 + 1, i + 1, 65 + i / 16 % 16, i % 16 + 1
    }
  }' >"$scratch/homewarden-demo/rmlst.hwd"
fi
for run in $(seq "${1:-5}"); do
  echo "run $run:" $(timeout -s TERM 8 xvfb-run -a -s "-screen 0 1400x1000x24" \
    build/release/bin/homewarden --demo --report-start 2>/dev/null | grep -E 'first paint|peak')
done
