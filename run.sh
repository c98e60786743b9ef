#!/bin/bash
# SPDX-License-Identifier: MIT
# Sets everything up, then hands its arguments to the program modrift:
#   ./run.sh                                 renders the example loop
#   ./run.sh render in.wav -o out.wav        renders your own recording
#   ./run.sh --help                          tells the rest
# Results land in the folder from which you call it. With nothing left to set up it starts at once.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/scripts/common.sh"

"$root/scripts/setup" build
lock_build
# The tests need packages of their own; where ./test.sh has been before, they stay switched on.
! needs_configure release || configure release -DMODRIFT_TESTS=OFF -DMODRIFT_BENCH=OFF
build release plugin/all cli/all presets/all example/all
"$root/scripts/presets" || true  # it has said why; sound needs none of them
unlock_build

MODRIFT_COMMAND=$0 exec "$root/build/release/bin/modrift" "$@"
