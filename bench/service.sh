#!/usr/bin/env bash
# The background service as a process of its own, beside cm11-emulator: memory after an hour that
# passes in a minute, what it takes when nothing happens, its start, and how long nobody has the
# house while window and service change over. Needs no packages beyond those of the build.
# usage: bench/service.sh [STARTS] [HAND-OVERS]   (after a release build; 20 and 5 are the default)
set -euo pipefail
cd "$(dirname "$0")/.."
export HOMEWARDEN_PATH=$PWD/build/release/bin/homewarden
export WARDENGINE_PATH=$PWD/build/release/bin/wardengine
export CM11_EMULATOR_PATH=$PWD/build/release/bin/cm11-emulator
exec /usr/bin/python3 -B bench/service_figures.py "$@"
